#include "operating_statement.h"

#include "book_formulas.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"
#include "vat_books.h"

#include <array>
#include <map>
#include <vector>

namespace tallora::books {
namespace {

using store::Database;

const QStringList kTables{"explota", "COMPTES", "GransGrups", "RESULTATS"};

// The families that take part, in their order, with their place and side.
struct Family {
    const char* table;
    const char* situacio;
    const char* vod;
};
constexpr Family kFamilies[] = {{"Ingresos", "A", "0"}, {"Compres", "B", "1"},
                                {"Serveis", "C", "1"},  {"Personal", "D", "1"},
                                {"Tributs", "E", "1"},  {"Amortitzacions", "F", "1"}};

QString monthColumn(int m) {
    return QStringLiteral("\"%1\"").arg(m, 2, 10, QLatin1Char('0'));
}

void makeTables(const WorkingContext& ctx) {
    const QString path = ctx.exerciseFile(schema::db::Explota);
    schema::createTables(path, schema::db::Explota, kTables);
    {
        Database db = Database::open(path);
        for (const QString& table : kTables)
            db.execute(QStringLiteral("drop table %1").arg(store::quoteIdentifier(table)));
    }
    schema::createTables(path, schema::db::Explota, kTables);
}

// Net amounts of one side by account name and month, for the months of the period.
std::map<QString, std::array<Money, 12>> monthly(const WorkingContext& ctx, Database& db,
                                                 const QString& table, const QString& amount,
                                                 int from, int to) {
    const int year = ctx.Exercici.toInt();
    auto st = db.prepare(QStringLiteral("select NomCompte, cast(strftime('%m', data) as integer), "
                                        "sum(%1) from %2 where data between ? and ? "
                                        "group by NomCompte, 2")
                             .arg(amount, table));
    st.bind(1, QDate(year, from, 1)).bind(2, QDate(year, to, 1).addMonths(1).addDays(-1));
    std::map<QString, std::array<Money, 12>> sums;
    while (st.next()) {
        const int m = st.int32(1);
        if (m < 1 || m > 12 || st.isNull(0)) continue;
        sums[st.text(0).toCaseFolded()][static_cast<std::size_t>(m - 1)] = st.money(2);
    }
    return sums;
}

struct Account {
    std::int64_t grup = 0, compte = 0;
    QString nomGrup, nomCompte, tipus;
};

// The accounts of the families on one side, by name across families, with their own numbers
// (COMPTES numbers its rows itself: two families may share an account number).
std::vector<Account> accountsOf(Database& db, const char* situacio, bool equal) {
    QStringList families;
    for (const Family& f : kFamilies)
        families << QStringLiteral(
                        "select Grup, NomGrup, Compte, NomCompte, Tipus, '%1' as s "
                        "from comptes.%2")
                        .arg(QLatin1String(f.situacio), QLatin1String(f.table));
    auto st = db.prepare(QStringLiteral("select Grup, NomGrup, Compte, NomCompte, Tipus from (%1) "
                                        "where s %2 ? order by NomCompte asc")
                             .arg(families.join(QStringLiteral(" union all ")),
                                  equal ? QStringLiteral("=") : QStringLiteral("<>")));
    st.bind(1, QString::fromLatin1(situacio));
    std::vector<Account> accounts;
    while (st.next())
        accounts.push_back({st.int64(0), st.int64(2), st.text(1), st.text(3), st.text(4)});
    return accounts;
}

// One row of explota: the months of the period from `sums`, the others left at 0.
std::array<Money, 12> writeAccount(Database& db, const Account& a,
                                   const std::map<QString, std::array<Money, 12>>& sums, int from,
                                   int to) {
    std::array<Money, 12> months{};
    if (const auto it = sums.find(a.nomCompte.toCaseFolded()); it != sums.end())
        months = it->second;
    for (int m = 1; m <= 12; ++m)
        if (m < from || m > to) months[static_cast<std::size_t>(m - 1)] = Money{};
    Money total;
    for (const Money& v : months) total += v;
    QStringList columns{"Grup", "NomGrup", "Compte", "NomCompte", "Tipus"};
    for (int m = 1; m <= 12; ++m) columns << monthColumn(m);
    columns << QStringLiteral("TOTAL");
    auto st = db.prepare(
        QStringLiteral("insert into explota (%1) values (%2)")
            .arg(columns.join(QStringLiteral(", ")),
                 QStringList(columns.size(), QStringLiteral("?")).join(QStringLiteral(", "))));
    int n = 0;
    st.bind(++n, a.grup);
    st.bind(++n, a.nomGrup);
    st.bind(++n, a.compte);
    st.bind(++n, a.nomCompte);
    st.bind(++n, a.tipus);
    for (int m = 1; m <= 12; ++m) {
        // Months outside the period keep the column's default.
        if (m < from || m > to)
            st.bind(++n, Money{});
        else
            st.bind(++n, months[static_cast<std::size_t>(m - 1)]);
    }
    st.bind(++n, total);
    st.execute();
    return months;
}

}  // namespace

void normaliseExempt(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    if (ctx.ModeExercici == QStringLiteral("TICKETS"))
        db.execute(
            QStringLiteral("update FrasIN set Exempta = coalesce(TOTAL, 0) + "
                           "coalesce(Retencio, 0)"));
    else
        db.execute(QStringLiteral(
            "update FrasIN set Exempta = (coalesce(TOTAL, 0) + coalesce(Retencio, 0)) - "
            "(coalesce(Base1, 0) + coalesce(Base2, 0) + coalesce(Base3, 0) + coalesce(Base4, 0) + "
            "coalesce(Iva1, 0) + coalesce(Iva2, 0) + coalesce(Iva3, 0) + coalesce(Iva4, 0))"));
    tx.commit();
}

OperatingTotals Genera_Explota(const WorkingContext& ctx, int from, int to) {
    Database db = Database::open(ctx.exerciseFile(schema::db::Explota));
    db.attach(ctx.exerciseFile(schema::db::Comptes), QStringLiteral("comptes"));
    db.attach(ctx.exerciseFile(schema::db::FrasOut), QStringLiteral("fout"));
    db.attach(ctx.exerciseFile(schema::db::FrasIn), QStringLiteral("fin"));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    db.prepare(QStringLiteral("insert into GransGrups (NomGrup, VoD) values (?, '0'), (?, '1')"))
        .bind(1, Missatge(ctx, 6140))
        .bind(2, Missatge(ctx, 6141))
        .execute();
    for (const Family& f : kFamilies)
        db.prepare(QStringLiteral("insert into COMPTES (Grup, NomGrup, NomCompte, Tipus, situacio, "
                                  "VoD) select Grup, NomGrup, NomCompte, Tipus, ?, ? from "
                                  "comptes.%1 order by NomCompte asc")
                       .arg(QString::fromLatin1(f.table)))
            .bind(1, QString::fromLatin1(f.situacio))
            .bind(2, QString::fromLatin1(f.vod))
            .execute();

    const auto income = monthly(ctx, db, QStringLiteral("fout.FrasOUT"),
                                QStringLiteral("coalesce(TOTAL, 0) - coalesce(Iva1, 0) - "
                                               "coalesce(Iva2, 0) - coalesce(Iva3, 0) - "
                                               "coalesce(RE1, 0) - coalesce(RE2, 0) - "
                                               "coalesce(RE3, 0) + coalesce(Retencio, 0)"),
                                from, to);
    const auto expenses = monthly(ctx, db, QStringLiteral("fin.FrasIN"),
                                  QStringLiteral("coalesce(Base1, 0) + coalesce(Base2, 0) + "
                                                 "coalesce(Base3, 0) + coalesce(Exempta, 0) + "
                                                 "coalesce(Base4, 0)"),
                                  from, to);
    OperatingTotals totals;
    std::array<Money, 12>&incomeSum = totals.income, &expenseSum = totals.expenses;
    for (const Account& a : accountsOf(db, "A", true)) {
        const auto months = writeAccount(db, a, income, from, to);
        for (std::size_t m = 0; m < 12; ++m) incomeSum[m] += months[m];
    }
    const std::vector<Account> costs = accountsOf(db, "A", false);
    for (const Account& a : costs) {
        const auto months = writeAccount(db, a, expenses, from, to);
        for (std::size_t m = 0; m < 12; ++m) expenseSum[m] += months[m];
    }
    // The income enters the result with the first expense account.
    std::array<Money, 12> results{};
    if (!costs.empty())
        for (std::size_t m = 0; m < 12; ++m) results[m] = incomeSum[m] - expenseSum[m];
    QStringList columns;
    for (int m = 1; m <= 12; ++m) columns << monthColumn(m);
    columns << QStringLiteral("TOTAL");
    for (int m = 1; m <= 12; ++m) columns << QStringLiteral("AC%1").arg(m, 2, 10, QLatin1Char('0'));
    auto st = db.prepare(
        QStringLiteral("insert into RESULTATS (%1) values (%2)")
            .arg(columns.join(QStringLiteral(", ")),
                 QStringList(columns.size(), QStringLiteral("?")).join(QStringLiteral(", "))));
    int n = 0;
    Money total;
    for (const Money& r : results) {
        st.bind(++n, r);
        total += r;
    }
    st.bind(++n, total);
    Money cumulated;
    for (const Money& r : results) {
        cumulated += r;
        st.bind(++n, cumulated);
    }
    st.execute();
    tx.commit();
    return totals;
}

OperatingTotals buildOperatingStatement(const WorkingContext& ctx, int from, int to) {
    makeTables(ctx);
    normaliseExempt(ctx);
    return Genera_Explota(ctx, from, to);
}

bool prepareOperatingStatement(const WorkingContext& ctx, Dialogs& dialogs,
                               const OperatingRequest& r) {
    if (!checkPeriod(ctx, dialogs, r.fromMonth, r.toMonth)) return false;
    buildOperatingStatement(ctx, r.fromMonth, r.toMonth);
    return true;
}

void fillOperatingStatement(report::ReportJob& job, const WorkingContext& ctx,
                            const OperatingRequest& r) {
    const int level = r.level < 1 || r.level > 3 ? 1 : r.level;
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("explota%1.rpt").arg(level));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Explota);
    Formulas f(job, ctx);
    f.text("Nom", ctx.EmpresaNom)
        .text("Nif", ctx.EmpresaNIF)
        .text("Exercici", Missatge(ctx, 6143) + ctx.Exercici);
    // Written with a blank after the opening quote, as it always has been.
    report::appendFormula(
        job, QStringLiteral("Titol= ' ") + Missatge(ctx, 6144) + u' ' + Missatge(ctx, 6145) + u' ' +
                 Missatge(ctx, 5000 + r.fromMonth).toUpper() + u' ' + Missatge(ctx, 6146) + u' ' +
                 Missatge(ctx, 5000 + r.toMonth).toUpper() + u'\'');
    f.message("lbl_titulo", 6148)
        .text("lbl_fecha", printDate(r.printDate))
        .message("lbl_ene", 6149)
        .message("lbl_may", 6150)
        .message("lbl_sep", 6151)
        .message("lbl_dic", 6152)
        .message("lbl_resultado", 6153)
        .message("lbl_acumulado", 6154)
        .message("lbl_pagina", 6113);
    // The results' row comes as formulas, as a footer's row is explota's last: res01..res12,
    // resTOTAL and ac01..ac12, in the money format.
    Database db = Database::open(ctx.exerciseFile(schema::db::Explota));
    QStringList columns;
    for (int m = 1; m <= 12; ++m) columns << monthColumn(m);
    columns << QStringLiteral("TOTAL");
    for (int m = 1; m <= 12; ++m) columns << QStringLiteral("AC%1").arg(m, 2, 10, QLatin1Char('0'));
    auto st = db.prepare(QStringLiteral("select %1 from RESULTATS").arg(columns.join(u',')));
    if (!st.next()) return;
    for (int i = 0; i < 25; ++i) {
        const QString name = i < 12 ? QStringLiteral("res%1").arg(i + 1, 2, 10, QLatin1Char('0'))
                             : i == 12
                                 ? QStringLiteral("resTOTAL")
                                 : QStringLiteral("ac%1").arg(i - 12, 2, 10, QLatin1Char('0'));
        report::appendFormula(job, report::textFormula(name, Format_Import(ctx, st.money(i))));
    }
}

report::ReportResult launchOperatingStatement(const WorkingContext& ctx, Dialogs& dialogs,
                                              report::ReportJob& job, report::ReportOutput* output,
                                              const OperatingRequest& r) {
    if (!prepareOperatingStatement(ctx, dialogs, r))
        return {report::ReportResult::Status::Cancelled, {}, 0};
    return report::runReport(ctx, dialogs, job, output, r.print, Missatge(ctx, 6147),
                             [&](report::ReportJob& j) { fillOperatingStatement(j, ctx, r); });
}

QStringList operatingStatementRows(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::Explota));
    const QChar mark = ctx.decimalMark();
    QStringList columns;
    for (int m = 1; m <= 12; ++m) columns << monthColumn(m);
    columns << QStringLiteral("TOTAL");
    QStringList lines{
        QStringLiteral("NomGrup\tTipus\tNomCompte\t01\t02\t03\t04\t05\t06\t07\t08\t"
                       "09\t10\t11\t12\tTOTAL")};
    auto st = db.prepare(QStringLiteral("select NomGrup, Tipus, NomCompte, %1 from explota "
                                        "order by Ordre")
                             .arg(columns.join(QStringLiteral(", "))));
    while (st.next()) {
        QStringList cells{st.text(0), st.text(1), st.text(2)};
        for (int i = 3; i < 16; ++i) cells << st.money(i).format(2, mark);
        lines << cells.join(u'\t');
    }
    st.reset();
    QStringList accumulated;
    for (int m = 1; m <= 12; ++m)
        accumulated << QStringLiteral("AC%1").arg(m, 2, 10, QLatin1Char('0'));
    auto r = db.prepare(
        QStringLiteral("select %1, %2 from RESULTATS")
            .arg(columns.join(QStringLiteral(", ")), accumulated.join(QStringLiteral(", "))));
    if (r.next()) {
        QStringList result{Missatge(ctx, 6153)}, cumulated{Missatge(ctx, 6154)};
        for (int i = 0; i < 13; ++i) result << r.money(i).format(2, mark);
        for (int i = 13; i < 25; ++i) cumulated << r.money(i).format(2, mark);
        lines << result.join(u'\t') << cumulated.join(u'\t');
    }
    return lines;
}

}  // namespace tallora::books
