#pragma once
// The registro de alta of a posted sale, made from its FrasOut row as it stands after the
// posting: the record says what the books say.
#include "invoice_record.h"

#include "context/fwd.h"
#include "context/money.h"
#include "store/database.h"

#include <cstdint>
#include <optional>

namespace tallora::verifactu {

// The sales table as a posting's connection names it (FrasOUT.mdb is its main file).
inline const QString kPostingSales = QStringLiteral("main.FrasOut");

// The alta of sale `ordre` of the open exercise, read through `db` from `table`, without its
// chain, time and hash; nothing when the row is not there.
std::optional<InvoiceRecord> saleRecord(const WorkingContext& ctx, store::Database& db,
                                        std::int64_t ordre, const QString& table = kPostingSales);

// The AEAT's form of the company's tax number: 9 characters, zero-filled on the left.
QString issuerTaxId(const WorkingContext& ctx);

// An amount as records write it: two decimals and a point ("12.10", "-3.00").
QString recordAmount(const Money& amount);

}  // namespace tallora::verifactu
