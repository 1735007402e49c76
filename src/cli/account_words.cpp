#include "account_words.h"

#include "master_common.h"

#include <algorithm>

namespace tallora::cli {

bool accountListed(Session& s, const std::vector<treasury::AccountItem>& list,
                   const QString& number, const QString& what) {
    if (number.isEmpty()) return true;
    const std::int64_t id = number.toLongLong();
    if (std::any_of(list.begin(), list.end(),
                    [&](const treasury::AccountItem& a) { return a.id == id; }))
        return true;
    noSuchRecord(s, what, number);
    return false;
}

}  // namespace tallora::cli
