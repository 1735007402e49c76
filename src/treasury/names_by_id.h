#pragma once
// A whole table's names by number, read in one statement, for lists that name many rows.
#include "context/fwd.h"

#include <QHash>
#include <QString>

#include <cstdint>

namespace tallora::treasury {

// `sql` selects a number and a name from the exercise's `file`; a missing name is empty.
QHash<std::int64_t, QString> namesById(const WorkingContext& ctx, const QString& file,
                                       const QString& sql);

}  // namespace tallora::treasury
