#pragma once
// The ledgers of the books dialog's "listados" tab: a customer's or a supplier's account with
// its running balance, built in the work table mayor of tesorer.mdb from the opening balance,
// the invoices and the treasury movements; and the plain lists of invoices, read through the
// stored query SelFras.
//
// Rows go into mayor in the order opening rows, invoices, movements, so that two rows of one
// date keep that order by Id. The balance runs by account in the order account, date, Id:
// balance + D - H, so a supplier's balance goes negative as the debt grows.
//
// A build runs in one transaction: a fault leaves mayor as the last run left it.
#include "context/fwd.h"

#include <cstdint>
#include <optional>

namespace tallora::books {

// Genera_Mayor_Clients: every customer, or only `client`.
void Genera_Mayor_Clients(const WorkingContext& ctx, std::optional<std::int64_t> client);
// Genera_Mayor_Proveidors: every supplier, or only `proveidor`.
void Genera_Mayor_Proveidors(const WorkingContext& ctx, std::optional<std::int64_t> proveidor);

// Filtra_FrasOUT / Filtra_FrasIN: SelFras of the sales or purchases, for one party or all.
void Filtra_FrasOUT(const WorkingContext& ctx, std::optional<std::int64_t> client);
void Filtra_FrasIN(const WorkingContext& ctx, std::optional<std::int64_t> proveidor);

}  // namespace tallora::books
