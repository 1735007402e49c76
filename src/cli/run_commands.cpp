// Collection and payment runs, the draft they share with the screens, the account statement
// and its two undo actions: the screens' logic, driven from the command line.
#include "account_words.h"
#include "banking/account_numbers.h"
#include "banking/bank_file.h"
#include "commands.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "entry_common.h"
#include "inquiry_options.h"
#include "master_common.h"
#include "treasury/account_statement.h"
#include "treasury/other_movements.h"
#include "treasury/remittance.h"
#include "treasury/runs.h"

#include <algorithm>
#include <functional>

namespace tallora::cli {
namespace {

// A treasury account by its number, as treasury-accounts lists it.
std::optional<std::int64_t> treasuryAccount(Session& s, const QString& number) {
    if (!accountListed(s, treasury::treasuryAccountItems(s.ctx), number,
                       QStringLiteral("treasury account")))
        return std::nullopt;
    return number.toLongLong();
}

// RECEIPT or RECEIPT:AMOUNT
struct ReceiptWord {
    QString id;
    QString amount;
};
ReceiptWord receiptWord(const QString& word) {
    const qsizetype colon = word.indexOf(u':');
    ReceiptWord r{numberArgument(colon < 0 ? word : word.left(colon)), {}};
    if (colon >= 0)
        r.amount = amountArgument(QStringLiteral("amount of receipt ") + r.id, word.mid(colon + 1));
    return r;
}

void printSettlements(Session& s, const std::vector<treasury::Settlement>& settlements) {
    for (const treasury::Settlement& st : settlements)
        s.out << st.movement << '\t' << st.receipt << '\t' << st.concepto << '\t'
              << Format_Import(s.ctx, st.amount) << '\t'
              << (st.settled ? QStringLiteral("settled") : QStringLiteral("partial")) << '\n';
}

void printRows(Session& s, const std::vector<treasury::RunRow>& rows) {
    for (const auto& r : rows)
        s.out << r.id << '\t' << r.data << '\t' << r.factura << '\t' << r.total << '\t' << r.amount
              << '\n';
}

// What a run command does once its receipts are in the draft: the plain run, or the run sent
// to the bank as a file. `takeBack` empties the draft of what the command put in it.
using RunFinish = std::function<int(Session&, std::optional<std::int64_t> account,
                                    const QDate& date, const std::function<void()>& takeBack)>;

int plainRun(Session& s, const treasury::RunSide& side, std::optional<std::int64_t> entitat,
             const QDate& date, const std::function<void()>& takeBack) {
    const treasury::RunOutcome outcome =
        treasury::Contabilizar(s.ctx, s.dialogs, side, entitat, date);
    if (outcome.refusal) takeBack();
    if (outcome.refusal == treasury::RunRefusal::EmptyDraft)
        return s.refuse(QStringLiteral("the draft is empty: name the receipts to settle"));
    printSettlements(s, outcome.settlements);
    return s.finish(!outcome.refusal);
}

int run(Session& s, const CliOptions& o, const treasury::RunSide& side, const RunFinish& finish) {
    const ExerciseWords w = exerciseWords(o);
    std::vector<ReceiptWord> receipts;
    QStringList named;
    for (qsizetype i = 2; i < o.arguments.size(); ++i) {
        receipts.push_back(receiptWord(o.arguments[i]));
        if (named.contains(receipts.back().id))
            throw UsageError{QStringLiteral("receipt %1 is named twice").arg(receipts.back().id)};
        named << receipts.back().id;
    }
    const QString account = o.given(QStringLiteral("account"))
                                ? numberArgument(o.value(QStringLiteral("account")))
                                : QString();
    const QDate date = exerciseDate(w, o, QStringLiteral("date"));
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    loadMonthLock(s.ctx);
    std::optional<std::int64_t> entitat;
    if (!account.isEmpty() && !(entitat = treasuryAccount(s, account))) return kRefused;

    // Each receipt given goes to the draft as the screen's arrow puts it there; the run then
    // settles the whole draft, what the screens left in it included. A refused command takes
    // its own receipts back out, so that nothing it named waits in the draft to be paid later.
    std::vector<std::int64_t> passed;
    const auto takeBack = [&] {
        for (std::int64_t id : passed) treasury::Treu_Recibo(s.ctx, id);
    };
    const auto open = treasury::openReceipts(s.ctx, side);
    for (const ReceiptWord& r : receipts) {
        const std::int64_t id = r.id.toLongLong();
        if (std::none_of(open.begin(), open.end(),
                         [&](const treasury::RunRow& row) { return row.id == id; })) {
            takeBack();
            return s.refuse(QStringLiteral("no open receipt %1 to %2")
                                .arg(r.id, side.debit ? "collect" : "pay"));
        }
        const auto moved =
            treasury::Passa_Recibo(s.ctx, s.dialogs, side, id,
                                   r.amount.isEmpty() ? QString() : fieldAmount(s.ctx, r.amount));
        if (!moved || !moved->moved) {
            takeBack();
            return s.finish(false);
        }
        passed.push_back(id);
    }
    return finish(s, entitat, date, takeBack);
}

const treasury::RunSide& sideArgument(const QString& word) {
    return choiceArgument(QStringLiteral("side"), word, {"collections", "payments"}) == 0
               ? treasury::kCollections
               : treasury::kPayments;
}

void printStatement(Session& s, const std::vector<treasury::StatementLine>& lines) {
    for (const auto& l : lines)
        s.out << (l.id ? QString::number(*l.id) : QString()) << '\t' << l.data << '\t' << l.concepto
              << '\t' << l.contrapartida << '\t' << l.debe << '\t' << l.haber << '\t' << l.saldo
              << '\n';
}

}  // namespace

int collectionRunCommand(Session& s, const CliOptions& o) {
    return run(s, o, treasury::kCollections,
               [](Session& s, auto account, const QDate& date, const auto& takeBack) {
                   return plainRun(s, treasury::kCollections, account, date, takeBack);
               });
}
int paymentRunCommand(Session& s, const CliOptions& o) {
    return run(s, o, treasury::kPayments,
               [](Session& s, auto account, const QDate& date, const auto& takeBack) {
                   return plainRun(s, treasury::kPayments, account, date, takeBack);
               });
}

// The run with its SEPA file: the bank's date (collection or execution), the file written.
int remittanceCommand(Session& s, const CliOptions& o, const treasury::RunSide& side,
                      const QString& bankDateOption) {
    const ExerciseWords w = exerciseWords(o);
    const QString path = o.value(QStringLiteral("out"));
    if (path.isEmpty()) throw UsageError{QStringLiteral("--out FILE is needed")};
    const QDate bankDate = o.given(bankDateOption) ? dateOption(o, bankDateOption, QDate())
                                                   : exerciseDate(w, o, QStringLiteral("date"));
    return run(s, o, side, [&](Session& s, auto account, const QDate& date, const auto& takeBack) {
        const treasury::RemittanceOutcome out = treasury::Contabilizar_Remesa(
            s.ctx, s.dialogs, side, account, date, bankDate, [&] { return path; });
        if (out.refusal || out.stopped) takeBack();
        if (out.refusal == treasury::RunRefusal::EmptyDraft)
            return s.refuse(QStringLiteral("the draft is empty: name the receipts to settle"));
        if (out.refusal || out.stopped) return s.finish(false);
        printSettlements(s, out.settlements);
        s.out << "remittance\t" << out.remesa << '\t' << out.count << '\t'
              << Format_Import(s.ctx, out.total) << '\t' << path << '\n';
        return s.finish(true);
    });
}

int sepaDebitCommand(Session& s, const CliOptions& o) {
    return remittanceCommand(s, o, treasury::kCollections, QStringLiteral("collection-date"));
}
int sepaTransferCommand(Session& s, const CliOptions& o) {
    return remittanceCommand(s, o, treasury::kPayments, QStringLiteral("execution-date"));
}

int sepaRunsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    for (const treasury::RemittanceRecord& r : treasury::remittances(s.ctx))
        s.out << r.id << '\t' << (r.collections ? "debit" : "transfer") << '\t'
              << Format_Data(r.date) << '\t' << Format_Data(r.bankDate) << '\t' << r.format << '\t'
              << r.count << '\t' << Format_Import(s.ctx, r.total) << '\n';
    return s.finish(true);
}

// The creditor suffix and the file versions; prints the creditor identifier they make.
int sepaSettingsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const bool versions = o.given(QStringLiteral("versions"));
    const bool current =
        versions && choiceArgument(QStringLiteral("versions"), o.value(QStringLiteral("versions")),
                                   {"classic", "current"}) == 1;
    const QString suffix = o.value(QStringLiteral("suffix")).trimmed().toUpper();
    if (o.given(QStringLiteral("suffix")) &&
        (suffix.size() != 3 ||
         !std::all_of(suffix.begin(), suffix.end(), [](QChar c) { return c.isLetterOrNumber(); })))
        throw UsageError{QStringLiteral("--suffix: three letters or digits")};
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (versions || o.given(QStringLiteral("suffix")))
        banking::setBankSettings(
            s.ctx, o.given(QStringLiteral("suffix")) ? suffix : banking::creditorSuffix(s.ctx),
            versions ? current : banking::currentSepaVersions(s.ctx));
    const bool now = banking::currentSepaVersions(s.ctx);
    s.out << banking::creditorIdentifier(s.ctx.EmpresaNIF, banking::creditorSuffix(s.ctx)) << '\t'
          << banking::sepaMessageName(
                 banking::SepaKind::DirectDebit,
                 now ? banking::SepaVersion::Current : banking::SepaVersion::Classic)
          << '\t'
          << banking::sepaMessageName(
                 banking::SepaKind::Transfer,
                 now ? banking::SepaVersion::Current : banking::SepaVersion::Classic)
          << '\n';
    return s.finish(true);
}

int sepaFileCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (!treasury::rewriteRemittance(s.ctx, number.toLongLong(), o.arguments[3]))
        return s.refuse(QStringLiteral("no remittance %1").arg(number));
    return s.finish(true);
}

int draftCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const treasury::RunSide& side = sideArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (o.flags.contains(QStringLiteral("empty"))) treasury::Buida_Borrador(s.ctx, side);
    if (o.flags.contains(QStringLiteral("open"))) {
        printRows(s, treasury::openReceipts(s.ctx, side));
        return s.finish(true);
    }
    printRows(s, treasury::draftReceipts(s.ctx, side));
    s.out << Missatge(s.ctx, side.totalLabel) << '\t'
          << treasury::draftTotal(s.ctx, side).value_or(QStringLiteral("0")) << '\n';
    return s.finish(true);
}

int statementCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString account = o.arguments.size() > 2 ? numberArgument(o.arguments[2]) : QString();
    const int year = w.year.toInt();
    const QDate from = dateOption(o, QStringLiteral("from"), QDate(year, 1, 1));
    const QDate to = dateOption(o, QStringLiteral("to"), QDate(year, 12, 31));
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    std::optional<std::int64_t> entitat;
    if (!account.isEmpty() && !(entitat = treasuryAccount(s, account))) return kRefused;
    printStatement(s, treasury::Busca_Extracto(s.ctx, entitat, from, to));
    return s.finish(true);
}

int movementRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    const auto line = treasury::movementLine(s.ctx, number.toLongLong());
    if (!line) return noSuchRecord(s, QStringLiteral("movement"), number);
    if (s.dialogs.yesNo(treasury::deleteMovementQuestion(s.ctx, *line)) != Dialogs::Answer::Yes)
        return kRefused;
    return s.finish(treasury::deleteMovement(s.ctx, s.dialogs, number.toLongLong()));
}

int returnReceiptCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    const QDate date = exerciseDate(w, o, QStringLiteral("date"));
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    const auto line = treasury::movementLine(s.ctx, number.toLongLong());
    if (!line) return noSuchRecord(s, QStringLiteral("movement"), number);
    if (s.dialogs.yesNo(treasury::returnReceiptQuestion(s.ctx, *line)) != Dialogs::Answer::Yes)
        return kRefused;
    const auto made = treasury::returnReceipt(s.ctx, number.toLongLong(), date);
    if (!made)
        return s.refuse(
            QStringLiteral("movement %1 is no collection or payment of an invoice that can "
                           "come back (a return is never returned)")
                .arg(number));
    s.out << *made << '\n';
    return s.finish(true);
}

}  // namespace tallora::cli
