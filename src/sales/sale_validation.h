#pragma once
// Verifica_Apunt: the whole check of a sale before it is written, step by step, each step
// stopping at the first fault with its message and the field the focus goes to. The check
// also fixes the amounts it reads (empty becomes "0") and works out the exempt difference.
#include "sale_entry.h"

#include "context/fwd.h"

#include <optional>

namespace tallora::sales {

// The fields a refusal sends the focus to.
enum class EntryField { None, txtDia, txtMes, txtClient, txtTipus, txtTotal, txtBase };

struct Verdict {
    bool ok = false;
    EntryField focus = EntryField::None;
    // Set when the amounts panel was closed: the screen opens it and the next attempt goes on.
    bool openPanel = false;
    // The account of txtTipus, filled once the account step has passed.
    std::optional<SalesAccount> account;
};

struct VerifyOptions {
    // PanelIVA is open, so the user has seen the amounts.
    bool panelOpen = true;
    // The document in hand is an invoice (always so without the billing option).
    bool invoice = true;
    // The classification option (intra.cfg) is on.
    bool classification = false;
};

Verdict Verifica_Apunt(const WorkingContext& ctx, Dialogs& dialogs, SaleEntry& entry,
                       const VerifyOptions& options);

// The balance check alone: the nine amounts against the total and the withholding. Sets
// entry.Exempta; false when refused (message 923) or when the user declines the difference.
bool balanceCheck(const WorkingContext& ctx, Dialogs& dialogs, SaleEntry& entry);

}  // namespace tallora::sales
