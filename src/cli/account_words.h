#pragma once
// An account named on the command line by the number its list prints.
#include "session.h"
#include "treasury/other_movements.h"

#include <QString>

#include <vector>

namespace tallora::cli {

// True when `number` is blank or one of `list`'s; otherwise the refusal that the exercise has
// no `what` of that number, and false.
bool accountListed(Session& s, const std::vector<treasury::AccountItem>& list,
                   const QString& number, const QString& what);

}  // namespace tallora::cli
