#pragma once
// Writing records into the issuer's chain, inside the transaction of the sale's own rows:
// no invoice without its record, no record without its invoice.
//
// Each record links to the previous record of the same issuer (its IDFactura and hash), and
// every row of the file also carries a seal: SHA-256 over the previous row's seal and the
// row's number, exercise, sale number and XML. The hash covers what the AEAT asks; the seal covers
// every character stored, so that the chain check finds any change.
#include "invoice_record.h"
#include "sale_record.h"

#include "context/fwd.h"
#include "store/database.h"

#include <cstdint>

namespace tallora::verifactu {

// Where a record comes from: the exercise and number of the sale.
struct SaleKey {
    QString ejercicio;
    std::int64_t ordre = 0;
};

// The records table as a posting's connection names it.
inline const QString kAttachedRecords = QStringLiteral("verifactu.Registros");

// The last record of a sale: an alta or an anulación, the invoice it names, its total.
struct LastRecord {
    bool alta = false;
    InvoiceId id;
    QString importeTotal;
};

// `table` is the records table as `db` names it ("Registros" on the file's own connection).
std::optional<LastRecord> lastRecordOf(store::Database& db, const QString& table,
                                       const SaleKey& key);

// Chains, stamps, hashes and stores `record` through the attached record file; fills its
// link, time and hash.
void appendRecord(const WorkingContext& ctx, store::Database& db, InvoiceRecord& record,
                  const SaleKey& key);

// After FrasOut row `ordre` of the open exercise was inserted or changed: its alta, marked
// as a correction when the invoice was recorded before. A change of number or date first
// cancels the record of the old one. Does nothing unless the record file is attached.
// `table` is the sales table as `db` names it: FrasOUT.mdb is a posting's main file, an
// import's attached one.
void recordSale(const WorkingContext& ctx, store::Database& db, std::int64_t ordre,
                const QString& table = kPostingSales);

// Before FrasOut row `ordre` is deleted: the anulación of its last alta. An invoice that was
// never recorded here leaves nothing. Does nothing unless the record file is attached.
void recordDeletion(const WorkingContext& ctx, store::Database& db, std::int64_t ordre);

// The seal of a row, from the previous row's seal.
QString rowSeal(const QString& previousSeal, std::int64_t id, const QString& ejercicio,
                std::int64_t ordre, const QString& xml);

}  // namespace tallora::verifactu
