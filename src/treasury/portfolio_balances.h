#pragma once
// The running balances of customers and suppliers recalculated from the portfolio, as the
// creation of an exercise does after carrying gest.mdb over.
#include "context/fwd.h"

#include <QString>

namespace tallora::treasury {

// For each customer of `gestPath` with receipts in `carteraPath`: saldo + sum(Total) -
// sum(Pendiente) of its rows, rounded as the amount field shows it. Customers without
// receipts keep their balance. Throws store::StoreError on failure.
void Saldo_Clients(const WorkingContext& ctx, const QString& gestPath, const QString& carteraPath);
// The same for suppliers and their payments due.
void Saldo_Proveidors(const WorkingContext& ctx, const QString& gestPath,
                      const QString& carteraPath);

}  // namespace tallora::treasury
