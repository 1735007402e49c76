#include "runs.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"

namespace tallora::treasury {

const RunSide kCollections{"Out",        "cliente",    "FrasOut",      "FrasOUT.mdb",
                           "FrasOut",    "Cobrada",    true,           6706,
                           6707,         6708,         6711,           6709,
                           6710,         6712,         6714,           6715,
                           6716,         6702,         6703,           "FormCarteraCobrar",
                           "CmbClients", "FechaCobro", "CarteraCobra", true};
const RunSide kPayments{"In",
                        "proveedor",
                        "FrasIn",
                        "FrasIN.mdb",
                        "FrasIn",
                        "Pagada",
                        false,
                        6720,
                        6722,
                        6725,
                        6718,
                        6724,
                        6719,
                        6727,
                        6723,
                        6721,
                        6726,
                        6729,
                        6728,
                        "FormCarteraPagar",
                        "CmbProveidors",
                        "FechaPago",
                        "CarteraPaga",
                        false};

namespace {

using schema::db::Cartera;
using schema::db::Tesorer;

QString inOut(const RunSide& side) {
    return QString::fromLatin1(side.inOut);
}

store::Database openCartera(const WorkingContext& ctx) {
    return store::Database::open(ctx.companyFile(Cartera));
}

// The movement's concept: a collection keeps an invoice text that already says "N/Fra.",
// a payment always says whose invoice it was.
QString runConcept(const RunSide& side, const QString& factura) {
    const QString text = side.debit && factura.startsWith(QStringLiteral("N/Fra."))
                             ? factura
                             : QLatin1String(side.debit ? "N/Fra. " : "S/Fra. ") + factura;
    return text.left(schema::kConceptLength);
}

std::vector<RunRow> rows(const WorkingContext& ctx, const QString& sql, const RunSide& side,
                         std::optional<std::int64_t> party, bool draft) {
    store::Database db = openCartera(ctx);
    store::Statement st = db.prepare(sql);
    st.bind(1, inOut(side));
    if (party) st.bind(2, *party);
    std::vector<RunRow> out;
    while (st.next()) {
        const Money total = st.money(3);
        out.push_back({st.int64(0), Format_Data(st.date(1)), st.text(2), Format_Import(ctx, total),
                       Format_Import(ctx, draft ? st.money(5) : total - st.money(4))});
    }
    return out;
}

}  // namespace

std::vector<RunRow> openReceipts(const WorkingContext& ctx, const RunSide& side,
                                 std::optional<std::int64_t> party) {
    QString sql = QStringLiteral(
        "select Id, data, Factura, Total, Pendiente, Temporal from cartera "
        "where In_Out = ? and Borrador = 'n'");
    if (party) sql += QStringLiteral(" and %1 = ?").arg(QLatin1String(side.party));
    sql += QStringLiteral(" order by data asc, Id asc");
    return rows(ctx, sql, side, party, false);
}

std::vector<RunRow> draftReceipts(const WorkingContext& ctx, const RunSide& side) {
    return rows(ctx,
                QStringLiteral("select Id, data, Factura, Total, Pendiente, Temporal from cartera "
                               "where In_Out = ? and Borrador = 's' order by data asc, Id asc"),
                side, std::nullopt, true);
}

std::optional<QString> draftTotal(const WorkingContext& ctx, const RunSide& side) {
    store::Database db = openCartera(ctx);
    store::Statement st = db.prepare(
        QStringLiteral("select sum(Temporal) from cartera where In_Out = ? and Borrador = 's'"));
    st.bind(1, inOut(side));
    if (!st.next() || st.isNull(0)) return std::nullopt;
    return Format_Import(ctx, st.money(0));
}

std::optional<PassResult> Passa_Recibo(const WorkingContext& ctx, Dialogs& dialogs,
                                       const RunSide& side, std::int64_t id, const QString& typed) {
    store::Database db = openCartera(ctx);
    Money resta;
    {
        store::Statement st =
            db.prepare(QStringLiteral("select Total, Pendiente from cartera where Id = ?"));
        st.bind(1, id);
        if (!st.next()) return std::nullopt;
        resta = st.money(0) - st.money(1);
    }
    // The field takes digits and the decimal mark only; what cannot be read counts as blank.
    Money amount = Money::parse(typed.trimmed(), QChar(ctx.Decimal)).value_or(Money{});
    // The field's amount as it shows it, to the cent, is what is compared and drafted.
    amount = Money::parse(Format_Import(ctx, amount), QChar(ctx.Decimal)).value_or(amount);
    if (amount > Money{}) {
        if (amount > resta) {
            dialogs.stop(Missatge(ctx, side.excess));
            return PassResult{false, Format_Import(ctx, resta)};
        }
        resta = amount;
    }
    db.prepare(QStringLiteral("update cartera set Borrador = 's', Temporal = ? where Id = ?"))
        .bind(1, resta)
        .bind(2, id)
        .execute();
    return PassResult{true, Format_Import(ctx, Money{})};
}

void Treu_Recibo(const WorkingContext& ctx, std::int64_t id) {
    openCartera(ctx)
        .prepare(QStringLiteral("update cartera set Borrador = 'n', Temporal = 0 where Id = ?"))
        .bind(1, id)
        .execute();
}

void Passa_Tots(const WorkingContext& ctx, const RunSide& side) {
    openCartera(ctx)
        .prepare(QStringLiteral("update cartera set Borrador = 's', Temporal = Total - Pendiente "
                                "where Borrador = 'n' and In_Out = ?"))
        .bind(1, inOut(side))
        .execute();
}

void Buida_Borrador(const WorkingContext& ctx, const RunSide& side) {
    openCartera(ctx)
        .prepare(QStringLiteral("update cartera set Borrador = 'n', Temporal = 0 where In_Out = ?"))
        .bind(1, inOut(side))
        .execute();
}

std::optional<RunRefusal> checkRun(const WorkingContext& ctx, Dialogs& dialogs, const RunSide& side,
                                   std::optional<std::int64_t> account, const QDate& date) {
    // One sum rather than the draft's rows formatted for a list.
    if (!draftTotal(ctx, side)) return RunRefusal::EmptyDraft;
    if (!account) {
        dialogs.stop(Missatge(ctx, side.noAccount));
        return RunRefusal::NoAccount;
    }
    if (!Verifica_Mes(ctx, dialogs, date.month())) return RunRefusal::MonthLocked;
    return std::nullopt;
}

RunOutcome Contabilizar(const WorkingContext& ctx, Dialogs& dialogs, const RunSide& side,
                        std::optional<std::int64_t> account, const QDate& date) {
    if (const auto refusal = checkRun(ctx, dialogs, side, account, date)) return {refusal, {}};
    return {std::nullopt, postRun(ctx, side, *account, date)};
}

store::Database openRun(const WorkingContext& ctx, const RunSide& side) {
    store::Database db = store::Database::open(ctx.exerciseFile(Tesorer));
    db.attach(ctx.companyFile(Cartera), QStringLiteral("cartera"));
    db.attach(ctx.exerciseFile(QString::fromLatin1(side.invoiceFile)), QStringLiteral("fras"));
    return db;
}

std::vector<Settlement> postRun(const WorkingContext& ctx, const RunSide& side,
                                std::int64_t account, const QDate& date) {
    store::Database db = openRun(ctx, side);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    std::vector<Settlement> settlements = settleDraft(db, side, account, date);
    tx.commit();
    return settlements;
}

std::vector<Settlement> settleDraft(store::Database& db, const RunSide& side, std::int64_t account,
                                    const QDate& date, const QString& invoices) {
    const QString party = QString::fromLatin1(side.party);
    const QString invoice = QString::fromLatin1(side.invoice);
    store::Statement draft = db.prepare(
        QStringLiteral("select Id, %1, %2, Factura, Total, Pendiente, Temporal from "
                       "cartera.cartera where Borrador = 's' and In_Out = ? order by Id desc")
            .arg(party, invoice));
    draft.bind(1, inOut(side));
    store::Statement movement = db.prepare(
        QStringLiteral("insert into main.movimientos (data, entidad, %1, %2, concepto, D, H) "
                       "values (?, ?, ?, ?, ?, ?, ?)")
            .arg(party, invoice));
    store::Statement settledFlag = db.prepare(
        QStringLiteral("update %1.%2 set %3 = -1, Marca = -1 where Ordre = ?")
            .arg(invoices, QLatin1String(side.invoiceTable), QLatin1String(side.settledFlag)));
    store::Statement partialFlag =
        db.prepare(QStringLiteral("update %1.%2 set Marca = -1 where Ordre = ?")
                       .arg(invoices, QLatin1String(side.invoiceTable)));
    store::Statement leave = db.prepare(QStringLiteral("delete from cartera.cartera where Id = ?"));
    store::Statement keep = db.prepare(QStringLiteral(
        "update cartera.cartera set Borrador = 'n', Temporal = 0, Pendiente = ? where Id = ?"));

    std::vector<Settlement> settlements;
    while (draft.next()) {
        Settlement s;
        s.receipt = draft.int64(0);
        const std::int64_t ordre = draft.int64(2);
        s.amount = draft.money(6);
        s.concepto = runConcept(side, draft.text(3));
        const Money nou = draft.money(5) + s.amount;
        movement.reset();
        movement.bind(1, date).bind(2, account).bind(3, draft.int64(1)).bind(4, ordre);
        movement.bind(5, s.concepto);
        movement.bind(6, side.debit ? s.amount : Money{}).bind(7, side.debit ? Money{} : s.amount);
        movement.execute();
        s.movement = db.lastInsertId();
        // Exactly the total: a remainder of a rounding keeps the receipt open.
        s.settled = nou == draft.money(4);
        store::Statement& flag = s.settled ? settledFlag : partialFlag;
        flag.reset();
        flag.bind(1, ordre).execute();
        if (s.settled) {
            leave.reset();
            leave.bind(1, s.receipt).execute();
        } else {
            keep.reset();
            keep.bind(1, nou).bind(2, s.receipt).execute();
        }
        settlements.push_back(s);
    }
    return settlements;
}

}  // namespace tallora::treasury
