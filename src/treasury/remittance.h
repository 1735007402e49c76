#pragma once
// A run sent to the bank as a SEPA file: the draft of the collection screen as a direct-debit
// remittance (pain.008), that of the payment screen as a transfer order (pain.001).
//
// What goes: a collection receipt whose customer has a mandate (banco.mdb) and a valid
// account in its commercial data; a payment whose supplier has an IBAN (banco.mdb). The
// others are listed first, and the user either takes them out of the draft (back to the open
// list) or stops. Debits are grouped by sequence: a customer's first collection goes as FRST
// and turns its mandate recurrent in the same transaction.
//
// The file is written only with the run: the movements, the portfolio, the invoices' flags,
// the record in Remesas (with the whole file) and the file itself commit together or not at
// all, so a run never reaches the bank twice, and a lost file is written again from its record.
#include "runs.h"

#include "banking/sepa_document.h"

#include <QString>

#include <functional>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::treasury {

// A receipt of the draft that cannot go in the file, and why.
struct RemittanceGap {
    std::int64_t receipt = 0;
    QString factura;
    QString party;
    QString reason;
};

struct RemittancePlan {
    banking::SepaDocument document;
    std::vector<std::int64_t> receipts;  // those that go, in the file's order
    std::vector<RemittanceGap> gaps;
    std::vector<std::int64_t> firstMandates;  // customers whose first collection this is
    QString refusal;  // why no file can be made at all (the account has no IBAN …); else empty
};

// The file the draft of `side` would make on treasury account `account`, for the bank to
// execute on `bankDate`.
RemittancePlan planRemittance(const WorkingContext& ctx, const RunSide& side, std::int64_t account,
                              const QDate& bankDate);

struct RemittanceOutcome {
    std::optional<RunRefusal> refusal;  // the run's own refusals
    bool stopped = false;               // no file possible, or the user kept the gaps
    std::vector<Settlement> settlements;
    std::int64_t remesa = 0;  // the record in Remesas
    Money total;
    int count = 0;
};

// btnContabilizar with the SEPA file: checkRun's checks, then the plan; a refusal of the plan
// is shown (stop icon); gaps are listed with a Yes/No question (No stops, nothing written).
// Only then is `askPath` asked where the file goes (an empty answer stops). Then, in one
// transaction: the gaps back to the open list, the run, the mandates, the record, and the
// file written.
RemittanceOutcome Contabilizar_Remesa(const WorkingContext& ctx, Dialogs& dialogs,
                                      const RunSide& side, std::optional<std::int64_t> account,
                                      const QDate& date, const QDate& bankDate,
                                      const std::function<QString()>& askPath);

// The runs sent as files, newest first.
struct RemittanceRecord {
    std::int64_t id = 0;
    bool collections = true;
    QDate date, bankDate;
    QString format;
    int count = 0;
    Money total;
};
std::vector<RemittanceRecord> remittances(const WorkingContext& ctx);
// Writes the file of a recorded run again, as it was first written; false when no run has
// that number.
bool rewriteRemittance(const WorkingContext& ctx, std::int64_t remesa, const QString& path);

}  // namespace tallora::treasury
