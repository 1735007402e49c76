#pragma once
// Verifica_Apunt of the purchases screen: the check of an entry before it is written, step
// by step, each step stopping at the first fault with its message and the field the focus
// goes to. The check also fixes the amounts it reads (empty becomes "0") and works out the
// exempt amount (txtexempta), which is never typed.
#include "purchase_entry.h"

#include "context/fwd.h"

#include <optional>

namespace tallora::purchases {

// The fields a refusal sends the focus to.
enum class EntryField {
    None,
    ComboOP,
    txtDia,
    txtMes,
    txtProveidor,
    txtDespesa,
    txtTotal,
    txtBase
};

struct Verdict {
    bool ok = false;
    EntryField focus = EntryField::None;
    // Set when the IVA panel was closed: the screen opens it and the next attempt goes on.
    bool openPanel = false;
    // The account of txtDespesa, filled once the account step has passed.
    std::optional<ExpenseAccount> account;
};

struct VerifyOptions {
    // PanelIVA is open, so the user has seen the amounts.
    bool panelOpen = true;
    // The classification option (intra.cfg) is on.
    bool classification = false;
};

Verdict Verifica_Apunt(const WorkingContext& ctx, Dialogs& dialogs, PurchaseEntry& entry,
                       const VerifyOptions& options);

// Steps 10 to 16 alone: the bases and quotas less the withholding against the total. Sets
// txtexempta; false when refused (message 923) or when the user declines the difference.
bool balanceCheck(const WorkingContext& ctx, Dialogs& dialogs, PurchaseEntry& entry);

}  // namespace tallora::purchases
