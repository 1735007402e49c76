#pragma once
// The company's bank file, banco.mdb beside cartera.mdb: what the exercise files have no
// place for. It is company-level, so that it passes from one exercise to the next with the
// customers and suppliers it refers to by number, as cartera.mdb and fact.mdb do.
//   Mandatos          a customer's SEPA direct-debit mandate (one per customer)
//   CuentasProveedor  a supplier's IBAN, which the supplier file has no field for
//   Remesas           each run sent to the bank, with the whole file it was written as
//   ApuntesBanco      each bank statement line imported, so that none is imported twice
//   Ajustes           the creditor suffix and the versions of the files
#include "context/fwd.h"
#include "store/database.h"

#include <QDate>
#include <QHash>
#include <QString>

#include <cstdint>
#include <optional>

namespace tallora::banking {

inline const QString kBankFile = QStringLiteral("banco.mdb");
// The file's alias on the connection of an operation that writes it with other files.
inline const QString kBankAlias = QStringLiteral("banco");

QString bankPath(const WorkingContext& ctx);
// Makes the file with its tables when missing, and any table missing from it.
void ensureBankFile(const QString& path);
// Opens the file, making it first.
store::Database openBankFile(const WorkingContext& ctx);
// Opens the file when the company has one: reads of a company without it find nothing.
std::optional<store::Database> openExistingBankFile(const WorkingContext& ctx);
// Attaches the file (made first) to `db` as kBankAlias; before a transaction begins.
void attachBankFile(const WorkingContext& ctx, store::Database& db);

struct Mandate {
    QString reference;  // ≤ 35 characters, unique for the company
    QDate signedOn;
    bool recurrent = false;  // a first collection went already (RCUR), or not yet (FRST)
};
// The customer's mandate; nothing when it has none or the file does not exist.
std::optional<Mandate> mandateOf(const WorkingContext& ctx, std::int64_t client);
// Every customer's mandate, for a run that reads many.
QHash<std::int64_t, Mandate> mandatesByClient(const WorkingContext& ctx);
// Writes (or, with nothing, removes) the customer's mandate through `db`, which has the
// bank file attached as kBankAlias, inside the caller's transaction.
void storeMandate(store::Database& db, std::int64_t client, const std::optional<Mandate>& mandate);

// A supplier's IBAN (and BIC, optional); empty when none.
struct SupplierAccount {
    QString iban, bic;
};
SupplierAccount supplierAccountOf(const WorkingContext& ctx, std::int64_t supplier);
QHash<std::int64_t, SupplierAccount> supplierAccounts(const WorkingContext& ctx);
void storeSupplierAccount(store::Database& db, std::int64_t supplier,
                          const SupplierAccount& account);

// Settings: the creditor identifier's suffix ("000" unless set) and the file versions.
QString creditorSuffix(const WorkingContext& ctx);
bool currentSepaVersions(const WorkingContext& ctx);  // .08 and .09 instead of .02 and .03
void setBankSettings(const WorkingContext& ctx, const QString& suffix, bool currentVersions);

}  // namespace tallora::banking
