#include "trial_balance.h"

#include "book_formulas.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::books {
namespace {

using store::Database;

enum class Side { Debit, Credit };

// The common rounding to cents, half away from zero, before a line's sign is tested.
Money cents(Money m) {
    const std::int64_t u = m.units();
    const std::int64_t r = u >= 0 ? (u + 50) / 100 : -((-u + 50) / 100);
    return Money::fromUnits(r * 100);
}

class Lines {
public:
    explicit Lines(Database& db) : db_(db) {}

    // A line: the positive amount on its natural side, a negative one on the other, in
    // absolute value; zero with no amount at all. `negative` overrides the other side.
    void place(std::int64_t number, const QString& description, Money x, Side natural,
               std::optional<Side> negative = std::nullopt) {
        x = cents(x);
        if (x == Money{}) {
            plain(number, description);
            return;
        }
        const Side other = natural == Side::Debit ? Side::Credit : Side::Debit;
        const Side side = x > Money{} ? natural : negative.value_or(other);
        const Money amount = x > Money{} ? x : -x;
        db_.prepare(
               QStringLiteral("insert into saldos (Cuenta, Descripcion, %1) values (?, ?, ?)")
                   .arg(side == Side::Debit ? QStringLiteral("SaldoD") : QStringLiteral("SaldoH")))
            .bind(1, number)
            .bind(2, description)
            .bind(3, amount)
            .execute();
    }
    void plain(std::int64_t number, const QString& description) {
        db_.prepare(QStringLiteral("insert into saldos (Cuenta, Descripcion) values (?, ?)"))
            .bind(1, number)
            .bind(2, description)
            .execute();
    }

private:
    Database& db_;
};

// The sums of one row of `sql`, null as 0.
std::vector<Money> sums(Database& db, const QString& sql) {
    auto st = db.prepare(sql);
    std::vector<Money> values;
    if (!st.next()) return values;
    for (int i = 0; i < st.columnCount(); ++i)
        values.push_back(st.isNull(i) ? Money{} : st.money(i));
    return values;
}

// Total plus withholding less the four IVA sums of the purchases of a group.
Money purchases(Database& db, const QString& where) {
    const auto v = sums(db, QStringLiteral("select sum(total), sum(Iva1), sum(Iva2), sum(Iva3), "
                                           "sum(Iva4), sum(Retencio) from fin.FrasIN ") +
                                where);
    return v[0] + v[5] - v[1] - v[2] - v[3] - v[4];
}

Database openSaldos(const WorkingContext& ctx) {
    // The file is made when absent; the table is dropped and made anew at every run.
    const QString path = ctx.exerciseFile(schema::db::Saldos);
    const QStringList table{QStringLiteral("saldos")};
    schema::createTables(path, schema::db::Saldos, table);
    Database::open(path).execute(QStringLiteral("drop table saldos"));
    schema::createTables(path, schema::db::Saldos, table);
    Database db = Database::open(path);
    db.attach(ctx.companyFile(schema::db::Cartera), QStringLiteral("cartera"));
    db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("tesorer"));
    db.attach(ctx.exerciseFile(schema::db::FrasIn), QStringLiteral("fin"));
    db.attach(ctx.exerciseFile(schema::db::FrasOut), QStringLiteral("fout"));
    db.attach(ctx.exerciseFile(schema::db::Supl), QStringLiteral("supl"));
    db.attach(ctx.exerciseFile(schema::db::Comptes), QStringLiteral("comptes"));
    return db;
}

void otherAccounts(Database& db, Lines& lines) {
    auto accounts = db.prepare(QStringLiteral(
        "select o.Grup, o.NomGrup, o.Tipus, coalesce(o.Saldo, 0) + "
        "coalesce((select sum(Importe) from tesorer.otros_movimientos where cta_entra_otra = "
        "o.Compte), 0) - coalesce((select sum(Importe) from tesorer.otros_movimientos where "
        "cta_sale_otra = o.Compte), 0) from comptes.otras o order by o.Compte asc"));
    struct Other {
        std::int64_t grup;
        QString nomGrup, tipus;
        Money x;
    };
    std::vector<Other> others;
    while (accounts.next())
        others.push_back(
            {accounts.int64(0), accounts.text(1), accounts.text(2), accounts.money(3)});
    accounts.reset();
    for (const Other& o : others) {
        if (o.tipus == u"A")
            lines.place(o.grup, o.nomGrup, o.x, Side::Debit);
        else if (o.tipus == u"P")
            lines.place(o.grup, o.nomGrup, o.x, Side::Credit);
        else
            lines.plain(o.grup, o.nomGrup);
    }
}

TrialBalanceTotals totalsOf(Database& db) {
    auto st =
        db.prepare(QStringLiteral("select sum(SaldoD), sum(SaldoH) from saldos group by Cuenta"));
    TrialBalanceTotals t;
    while (st.next()) {
        const Money d = st.isNull(0) ? Money{} : st.money(0);
        const Money h = st.isNull(1) ? Money{} : st.money(1);
        if (d > h) t.debit += d - h;
        if (h > d) t.credit += h - d;
    }
    return t;
}

}  // namespace

std::optional<TrialBalanceTotals> Genera_Saldos(const WorkingContext& ctx, Dialogs& dialogs) {
    if (!ctx.Tesoreria) {
        dialogs.stop(Missatge(ctx, 6979));
        return std::nullopt;
    }
    Database db = openSaldos(ctx);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    Lines lines(db);
    const auto m = [&](int n) { return Missatge(ctx, n); };
    auto v = sums(db, QStringLiteral("select sum(total), sum(Pendiente) from cartera.Cartera "
                                     "where cliente <> 0"));
    lines.place(430, m(6952), v[0] - v[1], Side::Debit);
    v = sums(db, QStringLiteral("select sum(total), sum(Pendiente) from cartera.Cartera "
                                "where proveedor <> 0"));
    lines.place(400, m(6953), v[0] - v[1], Side::Credit);
    const Money accounts = sums(db, QStringLiteral("select sum(saldo) from tesorer.entidades"))[0];
    v = sums(db, QStringLiteral("select sum(D), sum(H) from tesorer.movimientos"));
    lines.place(570, m(6954), accounts + v[0] - v[1], Side::Debit);
    const std::pair<int, int> groups[] = {
        {600, 6955}, {620, 6956}, {630, 6957}, {640, 6958}, {680, 6959}};
    for (const auto& [number, message] : groups)
        lines.place(number, m(message),
                    purchases(db, QStringLiteral("where grup = %1").arg(number / 10)), Side::Debit);
    v = sums(db, QStringLiteral("select sum(total), sum(Iva1), sum(Iva2), sum(Iva3), sum(RE1), "
                                "sum(RE2), sum(RE3), sum(Retencio) from fout.FrasOUT"));
    lines.place(700, m(6960), v[0] - v[1] - v[2] - v[3] - v[4] - v[5] - v[6] + v[7], Side::Credit);
    v = sums(db,
             QStringLiteral("select sum(Iva1), sum(Iva2), sum(Iva3), sum(Iva4) from fin.FrasIN"));
    lines.place(472, m(6961), v[0] + v[1] + v[2] + v[3], Side::Debit);
    v = sums(db, QStringLiteral("select sum(Iva1), sum(Iva2), sum(Iva3), sum(RE1), sum(RE2), "
                                "sum(RE3) from fout.FrasOUT"));
    lines.place(477, m(6962), v[0] + v[1] + v[2] + v[3] + v[4] + v[5], Side::Credit);
    otherAccounts(db, lines);
    lines.place(473, m(6964), sums(db, QStringLiteral("select sum(Retencio) from fin.FrasIN"))[0],
                Side::Credit);
    lines.place(473, m(6964), sums(db, QStringLiteral("select sum(Retencio) from fout.FrasOUT"))[0],
                Side::Debit);
    lines.place(200, m(6984), purchases(db, QStringLiteral("where grup = 20")), Side::Debit);
    // The provisions received stay on the debit side whatever their sign.
    lines.place(
        554, m(6988),
        sums(db, QStringLiteral("select sum(total) from supl.Suplidos where Tipus = 'S'"))[0],
        Side::Debit, Side::Debit);
    lines.place(
        554, m(6988),
        sums(db, QStringLiteral("select sum(total) from supl.Suplidos where Tipus = 'P'"))[0],
        Side::Credit);
    const TrialBalanceTotals totals = totalsOf(db);
    tx.commit();
    return totals;
}

void fillTrialBalance(report::ReportJob& job, const WorkingContext& ctx,
                      const TrialBalanceTotals& totals, const QDate& date) {
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("saldos.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Saldos);
    Formulas f(job, ctx);
    f.text("Nom", ctx.EmpresaNom)
        .text("lbl_titulo", QStringLiteral("Informe de saldos"))
        .text("lbl_fecha", printDate(date))
        .message("lbl_cuenta", 6965)
        .message("lbl_tit_concepto", 6966)
        .message("lbl_tit_entradas", 6967)
        .message("lbl_tit_salidas", 6968)
        .message("lbl_pagina", 6113)
        .text("lbl_ejercici", Missatge(ctx, 6969) + u' ' + ctx.Exercici)
        .text("D_TOTAL", Format_Import(ctx, totals.debit))
        .text("H_TOTAL", Format_Import(ctx, totals.credit));
}

report::ReportResult launchTrialBalance(const WorkingContext& ctx, Dialogs& dialogs,
                                        report::ReportJob& job, report::ReportOutput* output,
                                        const QDate& printDate, const report::PrintRequest& print) {
    const auto totals = Genera_Saldos(ctx, dialogs);
    if (!totals) return {report::ReportResult::Status::Cancelled, {}, 0};
    return report::runReport(
        ctx, dialogs, job, output, print, QStringLiteral("Informe de saldos"),
        [&](report::ReportJob& j) { fillTrialBalance(j, ctx, *totals, printDate); });
}

QStringList trialBalanceRows(const WorkingContext& ctx, const TrialBalanceTotals& totals) {
    QStringList lines{QStringLiteral("Cuenta\tDescripcion\tSaldoD\tSaldoH")};
    Database db = Database::open(ctx.exerciseFile(schema::db::Saldos));
    auto st =
        db.prepare(QStringLiteral("select Cuenta, Descripcion, SaldoD, SaldoH from saldos "
                                  "order by Id"));
    const QChar mark = ctx.decimalMark();
    // As printed: a side without an amount is blank.
    const auto amount = [&](int i) {
        return st.isNull(i) || st.money(i) == Money{} ? QString() : st.money(i).format(2, mark);
    };
    while (st.next())
        lines << QStringList{st.text(0), st.text(1), amount(2), amount(3)}.join(u'\t');
    lines << QStringLiteral("D_TOTAL\t%1").arg(Format_Import(ctx, totals.debit))
          << QStringLiteral("H_TOTAL\t%1").arg(Format_Import(ctx, totals.credit));
    return lines;
}

}  // namespace tallora::books
