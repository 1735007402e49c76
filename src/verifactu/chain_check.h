#pragma once
// The check of a record file: every hash recomputed, every link followed, every seal taken
// again, every stored column compared with the record's XML. It stops at the first break.
#include "context/fwd.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tallora::verifactu {

enum class BreakKind {
    Unreadable,  // the XML is not a record
    Columns,     // a stored column differs from the XML
    Link,        // the record does not point at the previous record of its issuer
    Hash,        // the hash is not the one of the record's values
    Seal,        // the row's seal does not follow from the previous row
};

struct ChainBreak {
    std::int64_t id = 0;
    BreakKind kind = BreakKind::Hash;
};

struct ChainCheck {
    int records = 0;  // records checked, the broken one included
    std::optional<ChainBreak> broken;
};

ChainCheck checkChain(const QString& path);

// The reason of a break in the user's language.
QString breakText(const WorkingContext& ctx, const ChainBreak& broken);

}  // namespace tallora::verifactu
