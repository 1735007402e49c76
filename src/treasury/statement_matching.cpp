#include "statement_matching.h"

#include "account_statement.h"
#include "banking/account_numbers.h"
#include "banking/bank_file.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "names_by_id.h"
#include "runs.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <cstdlib>
#include <map>
#include <set>
#include <tuple>

namespace tallora::treasury {
namespace {

using schema::db::Cartera;
using schema::db::Comptes;
using schema::db::Gest;
using schema::db::Tesorer;

// How far a receipt's date may stand from the line's operation date.
constexpr int kDateWindow = 15;

// A collection `m` that has not come back: no later return of the same invoice and amount
// stands on its account.
const QString kNotReturned = QStringLiteral(
    "not exists (select 1 from main.movimientos r where r.entidad = m.entidad "
    "and r.FrasOut = m.FrasOut and r.H = m.D and r.Id > m.Id and r.concepto like 'Devoluc%')");

// Lower case without accents: the bank writes capitals without them, the user types both.
QString folded(const QString& text) {
    QString out;
    for (const QChar c : text.normalized(QString::NormalizationForm_D))
        if (c.category() != QChar::Mark_NonSpacing) out += c;
    return out.toLower();
}

// A text as invoice numbers are compared: capitals without accents, blanks, dots or hyphens.
QString comparable(const QString& text) {
    return compactCode(folded(text));
}

// The invoice of a receipt or a collection as a bank line would carry it: without the
// "N/Fra." a collection's concept and a returned receipt's text start with. Too short a
// number would be found in any reference, so it names nothing.
QString invoiceText(QString factura) {
    factura = factura.trimmed();
    while (factura.startsWith(QLatin1String("N/Fra."), Qt::CaseInsensitive) ||
           factura.startsWith(QLatin1String("S/Fra."), Qt::CaseInsensitive))
        factura = factura.mid(6).trimmed();
    const QString text = comparable(factura);
    return text.size() >= 3 ? text : QString();
}

// The line's own texts, each compared on its own.
QStringList lineTexts(const banking::N43Movement& line) {
    QStringList texts;
    for (const QString& t :
         QStringList{line.document, line.reference1, line.reference2} + line.concepts) {
        const QString c = comparable(t);
        if (!c.isEmpty()) texts << c;
    }
    return texts;
}

// The invoice stands whole in one of the texts: "F101" is in "REMF101" but not in "F1012".
bool names(const QStringList& texts, const QString& invoice) {
    if (invoice.isEmpty()) return false;
    const auto digitAt = [](const QString& t, qsizetype i) {
        return i >= 0 && i < t.size() && t.at(i).isDigit();
    };
    for (const QString& t : texts)
        for (qsizetype at = t.indexOf(invoice); at >= 0; at = t.indexOf(invoice, at + 1))
            if (!digitAt(t, at - 1) && !digitAt(t, at + invoice.size())) return true;
    return false;
}

struct OpenReceipt {
    std::int64_t id = 0, party = 0;
    bool collection = true;
    QString factura, invoice;
    Money due;
    QDate date;
    bool used = false;
};

struct Collection {
    std::int64_t id = 0, party = 0;
    QString concepto, invoice;
    Money amount;
    QDate date;
    bool used = false;
};

// Every open receipt of the company outside a run's draft, of every exercise as the runs
// show them.
std::vector<OpenReceipt> portfolio(const WorkingContext& ctx) {
    store::Database db = store::Database::open(ctx.companyFile(Cartera));
    store::Statement st = db.prepare(QStringLiteral(
        "select Id, In_Out = 'Out', cliente, proveedor, Factura, Total - Pendiente, data, "
        "Vencimiento from cartera where Borrador = 'n' order by Id"));
    std::vector<OpenReceipt> out;
    while (st.next()) {
        OpenReceipt r;
        r.id = st.int64(0);
        r.collection = st.int64(1) != 0;
        r.party = st.int64(r.collection ? 2 : 3);
        r.factura = st.text(4);
        r.invoice = invoiceText(r.factura);
        r.due = st.money(5);
        r.date = st.isNull(7) ? st.date(6) : st.date(7);
        out.push_back(r);
    }
    return out;
}

// The account's collections of an invoice that have not come back.
std::vector<Collection> collections(const WorkingContext& ctx, std::int64_t account) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    store::Statement st = db.prepare(
        QStringLiteral("select m.Id, m.cliente, m.concepto, m.D, m.data from main.movimientos m "
                       "where m.entidad = ? and m.FrasOut <> 0 and m.D > 0 "
                       "and coalesce(m.concepto, '') not like 'Devoluc%' and ") +
        kNotReturned + QStringLiteral(" order by m.Id"));
    st.bind(1, account);
    std::vector<Collection> out;
    while (st.next()) {
        Collection c;
        c.id = st.int64(0);
        c.party = st.int64(1);
        c.concepto = st.text(2);
        c.invoice = invoiceText(c.concepto);
        c.amount = st.money(3);
        c.date = st.date(4);
        out.push_back(c);
    }
    return out;
}

QSet<QString> recordedKeys(store::Database& db, const QString& alias, const QString& number) {
    store::Statement st =
        db.prepare(QStringLiteral("select Clave from %1ApuntesBanco where Cuenta = ?").arg(alias));
    st.bind(1, number);
    QSet<QString> keys;
    while (st.next()) keys.insert(st.text(0));
    return keys;
}

// What earlier imports recorded of the account; a company without the file has none.
QSet<QString> importedKeys(std::optional<store::Database>& bank, const QString& number) {
    return bank ? recordedKeys(*bank, QString(), number) : QSet<QString>{};
}

// Of the candidates: one whose invoice the line names, then the nearest date, then the
// oldest row.
template <typename Row>
Row* choose(const std::vector<Row*>& candidates, const QDate& date, const QStringList& texts) {
    const auto rank = [&](const Row* r) {
        return std::tuple(!names(texts, r->invoice), std::abs(r->date.daysTo(date)), r->id);
    };
    Row* best = nullptr;
    for (Row* r : candidates)
        if (!best || rank(r) < rank(best)) best = r;
    return best;
}

Money magnitude(Money amount) {
    return amount < Money{} ? -amount : amount;
}

bool writes(LineKind kind) {
    return kind == LineKind::Receipt || kind == LineKind::Payment || kind == LineKind::Returned ||
           kind == LineKind::Other || kind == LineKind::Remittance;
}

// A SEPA file sent from the account, which the bank shows as one line of its total.
struct SentFile {
    std::int64_t id = 0;
    bool collections = true;
    QDate bankDate;
    Money total;
    bool used = false;
};

// The files sent from `treasuryAccount` whose line has not been imported yet.
std::vector<SentFile> sentFiles(const WorkingContext& ctx, std::optional<store::Database>& bank,
                                std::int64_t treasuryAccount) {
    std::vector<SentFile> out;
    if (!bank) return out;
    store::Statement st = bank->prepare(QStringLiteral(
        "select Id, Tipo, FechaCargo, Total from Remesas r where Entidad = ? and Ejercicio = ? and "
        "not exists (select 1 from ApuntesBanco a where a.Tipo = 'S' and a.Movimiento = r.Id) "
        "order by Id"));
    st.bind(1, treasuryAccount).bind(2, static_cast<std::int64_t>(ctx.Exercici.toLongLong()));
    while (st.next())
        out.push_back({st.int64(0), st.text(1) == QLatin1String("C"), st.date(2), st.money(3)});
    return out;
}

// The line as a message names it: its number in the file, date and amount.
QString lineLabel(const WorkingContext& ctx, const banking::N43Movement& line) {
    return QStringLiteral("%1 (%2, %3)")
        .arg(line.line)
        .arg(Format_Data(line.operationDate), Format_Import(ctx, line.amount));
}

// The concept of an other movement: what the bank says of the line, as the entry screen
// would store it.
QString otherConcept(const WorkingContext& ctx, const banking::N43Movement& line) {
    QString text = line.concepts.join(u' ').simplified();
    for (const QString& t : {line.reference2, line.reference1, line.document})
        if (text.isEmpty()) text = t.simplified();
    if (text.isEmpty()) text = fixedText(ctx, "Apunte bancario", "Apunt bancari");
    Neteja_Text(text);
    return text.left(schema::kConceptLength);
}

bool draftPending(store::Database& db, const RunSide& side) {
    store::Statement st = db.prepare(
        QStringLiteral("select count(*) from cartera.cartera where In_Out = ? and Borrador = 's'"));
    st.bind(1, QString::fromLatin1(side.inOut));
    return st.next() && st.int64(0) > 0;
}

QString draftMessage(const WorkingContext& ctx, const RunSide& side) {
    return side.debit ? fixedText(ctx,
                                  "El borrador de cobros tiene recibos: vacíelo antes de "
                                  "importar el extracto.",
                                  "L'esborrany de cobraments té rebuts: buideu-lo abans "
                                  "d'importar l'extracte.")
                      : fixedText(ctx,
                                  "El borrador de pagos tiene facturas: vacíelo antes de "
                                  "importar el extracto.",
                                  "L'esborrany de pagaments té factures: buideu-lo abans "
                                  "d'importar l'extracte.");
}

// The lines of one side through the run's own settlement, one run per operation date, so
// that each movement carries its line's date. Gives each line's movement in `movementOf`.
void settleLines(const WorkingContext& ctx, store::Database& db, const RunSide& side,
                 const QString& invoices, std::int64_t account,
                 const std::vector<LineProposal>& accepted, const std::vector<std::size_t>& lines,
                 std::vector<std::int64_t>& movementOf) {
    std::map<QDate, std::vector<std::size_t>> byDate;
    for (std::size_t i : lines) byDate[accepted[i].line.operationDate].push_back(i);
    store::Statement draft = db.prepare(QStringLiteral(
        "update cartera.cartera set Borrador = 's', Temporal = ? where Id = ? and In_Out = ? "
        "and Borrador = 'n' and Total - Pendiente = ?"));
    for (const auto& [date, group] : byDate) {
        for (std::size_t i : group) {
            const Money amount = magnitude(accepted[i].line.amount);
            draft.reset();
            draft.bind(1, amount).bind(2, accepted[i].receipt);
            draft.bind(3, QString::fromLatin1(side.inOut)).bind(4, amount);
            if (draft.execute() != 1)
                throw store::StoreError(
                    fixedText(ctx,
                              "El recibo %1 ya no está pendiente por el importe de la línea "
                              "%2: vuelva a leer el extracto.",
                              "El rebut %1 ja no està pendent per l'import de la línia %2: "
                              "torneu a llegir l'extracte.")
                        .arg(accepted[i].receipt)
                        .arg(lineLabel(ctx, accepted[i].line)));
        }
        QHash<std::int64_t, std::int64_t> made;
        for (const Settlement& s : settleDraft(db, side, account, date, invoices))
            made.insert(s.receipt, s.movement);
        for (std::size_t i : group) movementOf[i] = made.value(accepted[i].receipt);
        // The draft held these receipts and nothing else, or the run settled more than the
        // statement says.
        if (made.size() != static_cast<qsizetype>(group.size()))
            throw store::StoreError(fixedText(
                ctx, "El borrador ha cambiado durante la importación; vuelva a intentarlo.",
                "L'esborrany ha canviat durant la importació; torneu-ho a provar."));
    }
}

}  // namespace

std::vector<QString> statementLineKeys(const banking::N43Account& account) {
    std::vector<QString> keys;
    QHash<QString, int> seen;
    const QString date = QStringLiteral("yyyyMMdd");
    for (const banking::N43Movement& m : account.movements) {
        const QString base = QStringList{account.number(),
                                         m.operationDate.toString(date),
                                         m.valueDate.toString(date),
                                         m.amount.toPlainText(2),
                                         m.commonConcept,
                                         m.ownConcept,
                                         m.document,
                                         m.reference1,
                                         m.reference2}
                                 .join(u'|');
        keys.push_back(base + u'|' + QString::number(++seen[base]));
    }
    return keys;
}

std::optional<AccountItem> bankChargesAccount(const WorkingContext& ctx) {
    store::Database db = store::Database::open(ctx.exerciseFile(Comptes));
    if (!store::tableExists(db, QStringLiteral("Otras"))) return std::nullopt;
    store::Statement st = db.prepare(QStringLiteral(
        "select Compte, NomCompte, Grup from Otras order by NomCompte asc, Compte asc"));
    std::optional<AccountItem> best;
    int bestScore = 0;
    while (st.next()) {
        const QString name = folded(st.text(1));
        // "bancario", "bancàries" … say what the account is for; a bare "banc" may be a loan.
        int score = name.contains(QLatin1String("bancari")) ? 2
                    : name.contains(QLatin1String("banc"))  ? 1
                                                            : 0;
        if (score > 0 && QString::number(st.int64(2)).startsWith(QLatin1String("62"))) ++score;
        if (score > bestScore) {
            bestScore = score;
            best = AccountItem{st.int64(0), st.text(1).toUpper()};
        }
    }
    return best;
}

std::vector<LineProposal> proposeMatches(const WorkingContext& ctx,
                                         const banking::N43Account& account,
                                         std::int64_t treasuryAccount) {
    const std::vector<QString> keys = statementLineKeys(account);
    std::optional<store::Database> bank = banking::openExistingBankFile(ctx);
    const QSet<QString> imported = importedKeys(bank, account.number());
    std::vector<OpenReceipt> receipts = portfolio(ctx);
    std::vector<Collection> collected = collections(ctx, treasuryAccount);
    std::vector<SentFile> files = sentFiles(ctx, bank, treasuryAccount);
    const QHash<std::int64_t, QString> clients =
        namesById(ctx, Gest, QStringLiteral("select Client, nom from Clients"));
    const QHash<std::int64_t, QString> suppliers =
        namesById(ctx, Gest, QStringLiteral("select Proveidor, nom from Proveidors"));
    std::optional<AccountItem> charges;  // read when a charge first asks for it
    bool chargesRead = false;

    std::vector<LineProposal> out;
    for (std::size_t i = 0; i < account.movements.size(); ++i) {
        const banking::N43Movement& line = account.movements[i];
        LineProposal p;
        p.line = line;
        p.key = keys[i];
        const Money amount = magnitude(line.amount);
        const QStringList texts = lineTexts(line);
        const bool credit = line.amount > Money{};
        const auto file = std::find_if(files.begin(), files.end(), [&](const SentFile& f) {
            return !f.used && f.collections == credit && f.total == amount &&
                   std::abs(f.bankDate.daysTo(line.operationDate)) <= kDateWindow;
        });
        if (imported.contains(p.key)) {
            p.kind = LineKind::Imported;
        } else if (line.amount == Money{}) {
            p.kind = LineKind::NoAmount;
        } else if (file != files.end()) {
            file->used = true;
            p.kind = LineKind::Remittance;
            p.receipt = file->id;
            p.factura = fixedText(ctx, "Fichero SEPA %1", "Fitxer SEPA %1").arg(file->id);
        } else if (!credit && line.commonConcept == QLatin1String("14")) {
            std::vector<Collection*> candidates;
            for (Collection& c : collected)
                if (!c.used && c.amount == amount && c.date.isValid() &&
                    c.date <= line.operationDate)
                    candidates.push_back(&c);
            if (Collection* c = choose(candidates, line.operationDate, texts)) {
                c->used = true;
                p.kind = LineKind::Returned;
                p.movement = c->id;
                p.party = clients.value(c->party);
                p.factura = c->concepto;
            }
        } else {
            std::vector<OpenReceipt*> candidates;
            for (OpenReceipt& r : receipts)
                if (!r.used && r.collection == credit && r.due == amount && r.date.isValid() &&
                    std::abs(r.date.daysTo(line.operationDate)) <= kDateWindow)
                    candidates.push_back(&r);
            if (OpenReceipt* r = choose(candidates, line.operationDate, texts)) {
                r->used = true;
                p.kind = credit ? LineKind::Receipt : LineKind::Payment;
                p.receipt = r->id;
                p.party = (credit ? clients : suppliers).value(r->party);
                p.factura = r->factura;
            }
        }
        if (p.kind == LineKind::Other && !credit && line.commonConcept == QLatin1String("17")) {
            if (!chargesRead) charges = bankChargesAccount(ctx);
            chargesRead = true;
            if (charges) {
                p.otherAccount = charges->id;
                p.otherAccountName = charges->name;
            }
        }
        out.push_back(p);
    }
    return out;
}

ImportResult importMatches(const WorkingContext& ctx, Dialogs& dialogs,
                           const banking::N43Account& account, std::int64_t treasuryAccount,
                           const std::vector<LineProposal>& accepted) {
    ImportResult out;
    const auto refuse = [&](ImportRefusal why, const QString& text) {
        if (!text.isEmpty()) dialogs.stop(text);
        out.refusal = why;
        return out;
    };
    for (const LineProposal& p : accepted)
        if (p.kind == LineKind::Other && p.otherAccount == 0)
            return refuse(ImportRefusal::OtherWithoutAccount,
                          fixedText(ctx,
                                    "La línea %1 del extracto no tiene cuenta: indique a qué "
                                    "cuenta va antes de importar.",
                                    "La línia %1 de l'extracte no té compte: indiqueu a quin "
                                    "compte va abans d'importar.")
                              .arg(lineLabel(ctx, p.line)));
    std::set<int> months;
    for (const LineProposal& p : accepted) {
        if (!writes(p.kind)) continue;
        if (p.line.operationDate.year() != ctx.Exercici.toInt())
            return refuse(ImportRefusal::OutsideExercise,
                          fixedText(ctx,
                                    "La línea %1 del extracto no es del ejercicio %2: no se "
                                    "puede importar en él.",
                                    "La línia %1 de l'extracte no és de l'exercici %2: no s'hi "
                                    "pot importar.")
                              .arg(lineLabel(ctx, p.line), ctx.Exercici));
        months.insert(p.line.operationDate.month());
    }
    for (int month : months)
        if (!Verifica_Mes(ctx, dialogs, month)) return refuse(ImportRefusal::MonthLocked, {});

    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    db.attach(ctx.companyFile(Cartera), QStringLiteral("cartera"));
    db.attach(ctx.exerciseFile(schema::db::FrasOut), kSalesInvoices);
    db.attach(ctx.exerciseFile(schema::db::FrasIn), kPurchaseInvoices);
    banking::attachBankFile(ctx, db);
    const RunSide* pending = nullptr;
    {
        store::Transaction tx(db, store::Transaction::Kind::Immediate);
        // Keys recorded meanwhile, and a line accepted twice, are written once.
        QSet<QString> recorded =
            recordedKeys(db, banking::kBankAlias + QLatin1Char('.'), account.number());
        std::vector<std::size_t> receipts, payments, returns, others, sent;
        for (std::size_t i = 0; i < accepted.size(); ++i) {
            const LineProposal& p = accepted[i];
            if (!writes(p.kind) || recorded.contains(p.key)) {
                ++out.skipped;
                continue;
            }
            recorded.insert(p.key);
            (p.kind == LineKind::Receipt      ? receipts
             : p.kind == LineKind::Payment    ? payments
             : p.kind == LineKind::Returned   ? returns
             : p.kind == LineKind::Remittance ? sent
                                              : others)
                .push_back(i);
        }
        if (!receipts.empty() && draftPending(db, kCollections)) pending = &kCollections;
        if (!pending && !payments.empty() && draftPending(db, kPayments)) pending = &kPayments;
        if (!pending) {
            std::vector<std::int64_t> movementOf(accepted.size(), 0);
            settleLines(ctx, db, kCollections, kSalesInvoices, treasuryAccount, accepted, receipts,
                        movementOf);
            settleLines(ctx, db, kPayments, kPurchaseInvoices, treasuryAccount, accepted, payments,
                        movementOf);
            // The collection proposed, still on this account for the line's amount, and not
            // returned since.
            store::Statement stillCollected = db.prepare(
                QStringLiteral("select count(*) from main.movimientos m where m.Id = ? and "
                               "m.entidad = ? and m.FrasOut <> 0 and m.D = ? and ") +
                kNotReturned);
            for (std::size_t i : returns) {
                const LineProposal& p = accepted[i];
                stillCollected.reset();
                stillCollected.bind(1, p.movement).bind(2, treasuryAccount);
                stillCollected.bind(3, magnitude(p.line.amount));
                const bool same = stillCollected.next() && stillCollected.int64(0) == 1;
                stillCollected.reset();
                const std::optional<std::int64_t> made =
                    same ? writeReturn(db, ctx, p.movement, p.line.operationDate) : std::nullopt;
                if (!made)
                    throw store::StoreError(
                        fixedText(ctx,
                                  "El cobro %1 ya no se puede devolver con la línea %2: "
                                  "vuelva a leer el extracto.",
                                  "El cobrament %1 ja no es pot retornar amb la línia %2: "
                                  "torneu a llegir l'extracte.")
                            .arg(p.movement)
                            .arg(lineLabel(ctx, p.line)));
                movementOf[i] = *made;
            }
            store::Statement otherMovement = db.prepare(QStringLiteral(
                "select Id from main.movimientos where Otros = ? and entidad = ? order by Id"));
            for (std::size_t i : others) {
                const LineProposal& p = accepted[i];
                OtherMovement e;
                e.data = p.line.operationDate;
                e.concepto = otherConcept(ctx, p.line);
                // Money out of the bank enters the other account, money in leaves it.
                if (p.line.amount < Money{}) {
                    e.saleTesoreria = treasuryAccount;
                    e.entraOtra = p.otherAccount;
                } else {
                    e.saleOtra = p.otherAccount;
                    e.entraTesoreria = treasuryAccount;
                }
                const std::int64_t asiento = writeOtherMovement(db, e, magnitude(p.line.amount));
                otherMovement.reset();
                otherMovement.bind(1, asiento).bind(2, treasuryAccount);
                if (!otherMovement.next())
                    throw store::StoreError(
                        QStringLiteral("no movement for entry %1").arg(asiento));
                movementOf[i] = otherMovement.int64(0);
                otherMovement.reset();
            }
            store::Statement record = db.prepare(QStringLiteral(
                "insert into banco.ApuntesBanco (Cuenta, Clave, Ejercicio, Entidad, Fecha, "
                "Importe, Tipo, Movimiento) values (?, ?, ?, ?, ?, ?, ?, ?)"));
            // A file's line moves nothing: its run wrote the movements; the line keeps the file.
            for (std::size_t i : sent) movementOf[i] = accepted[i].receipt;
            for (std::size_t i = 0; i < accepted.size(); ++i) {
                if (movementOf[i] == 0) continue;
                const LineProposal& p = accepted[i];
                const char* tipo = p.kind == LineKind::Returned     ? "D"
                                   : p.kind == LineKind::Other      ? "O"
                                   : p.kind == LineKind::Remittance ? "S"
                                                                    : "R";
                record.reset();
                record.bind(1, account.number()).bind(2, p.key);
                record.bind(3, static_cast<std::int64_t>(ctx.Exercici.toLongLong()));
                record.bind(4, treasuryAccount).bind(5, p.line.operationDate);
                record.bind(6, p.line.amount).bind(7, tipo).bind(8, movementOf[i]);
                record.execute();
            }
            tx.commit();
            out.receipts = static_cast<int>(receipts.size());
            out.payments = static_cast<int>(payments.size());
            out.returned = static_cast<int>(returns.size());
            out.others = static_cast<int>(others.size());
            out.remittances = static_cast<int>(sent.size());
        }
    }
    if (pending) {
        out = ImportResult{};
        return refuse(ImportRefusal::DraftPending, draftMessage(ctx, *pending));
    }
    return out;
}

const banking::N43Account* statementAccountFor(const WorkingContext& ctx,
                                               const banking::N43File& file,
                                               std::int64_t treasuryAccount) {
    const auto fields = treasuryAccountFields(ctx, treasuryAccount);
    QString ccc = fields ? fields->ccc : QString();
    if (const auto iban = banking::ibanOfAccount(ccc);
        iban && iban->startsWith(QLatin1String("ES")))
        ccc = iban->mid(4);
    // The statement names the account without the CCC's two check digits.
    const QString number = ccc.size() == 20 ? ccc.left(8) + ccc.mid(10) : QString();
    for (const banking::N43Account& a : file.accounts)
        if (!number.isEmpty() && a.number() == number) return &a;
    // An account without its number takes the file's only account; one with it, only its own.
    return number.isEmpty() && file.accounts.size() == 1 ? &file.accounts.front() : nullptr;
}

QString kindText(const WorkingContext& ctx, LineKind kind) {
    switch (kind) {
        case LineKind::Receipt:
            return fixedText(ctx, "Cobro de recibo", "Cobrament de rebut");
        case LineKind::Payment:
            return fixedText(ctx, "Pago de factura", "Pagament de factura");
        case LineKind::Returned:
            return fixedText(ctx, "Recibo devuelto", "Rebut retornat");
        case LineKind::Remittance:
            return fixedText(ctx, "Remesa ya contabilizada", "Remesa ja comptabilitzada");
        case LineKind::Other:
            return fixedText(ctx, "Otro movimiento", "Altre moviment");
        case LineKind::Imported:
            return fixedText(ctx, "Ya importado", "Ja importat");
        case LineKind::NoAmount:
            return fixedText(ctx, "Sin importe", "Sense import");
    }
    return {};
}

}  // namespace tallora::treasury
