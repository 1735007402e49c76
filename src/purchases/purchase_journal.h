#pragma once
// Escriu_Diari of the purchases screen: the rows of one posting in the day log.
#include "purchase_entry.h"

#include "context/day_log.h"
#include "context/fwd.h"

#include <cstdint>
#include <vector>

namespace tallora::purchases {

struct JournalPosting {
    std::int64_t ordre = 0;
    int affected = 0;
    bool change = false;          // a posted entry saved again (message 651)
    bool classification = false;  // the classification option is on
};

std::vector<JournalRow> Diari_Apunt(const WorkingContext& ctx, const PurchaseEntry& entry,
                                    const JournalPosting& posting);

}  // namespace tallora::purchases
