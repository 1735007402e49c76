#include "vat_book_queries.h"

#include "context/working_context.h"
#include "report/report_helpers.h"
#include "schema/creation.h"
#include "store/database.h"
#include "store/schema_objects.h"
#include "store/store_error.h"

#include <QStringList>

namespace tallora::books {
namespace {

QString dateLiteral(const QDate& d) {
    return store::quoteLiteral(d.toString(QStringLiteral("yyyy-MM-dd")));
}

QString between(const WorkingContext& ctx, int from, int to) {
    const auto [first, last] = periodLimits(ctx, from, to);
    return QStringLiteral("data between %1 AND %2").arg(dateLiteral(first), dateLiteral(last));
}

QString like(const QString& column, const QString& text, bool negated = false) {
    return QStringLiteral(" and %1 %2like %3")
        .arg(column, negated ? QStringLiteral("not ") : QString(),
             store::quoteLiteral(u'%' + text + u'%'));
}

// The series and class conditions both books share.
QString seriesConditions(const QString& serie, const QString& clasificacion) {
    const QString normals = QStringLiteral("NORMALS");
    QString sql;
    if (serie == normals)
        sql += like(QStringLiteral("descripcio"), QStringLiteral("/Abon"), true) +
               like(QStringLiteral("descripcio"), QStringLiteral("/Rect"), true);
    else if (!serie.isEmpty())
        sql += like(QStringLiteral("descripcio"), serie);
    if (clasificacion == normals)
        sql += like(QStringLiteral("Clasificacion"), QStringLiteral("Factura"), true);
    else if (!clasificacion.isEmpty())
        sql += like(QStringLiteral("Clasificacion"), clasificacion);
    return sql;
}

// Drops the view under the name it may have been made with (absence ignored), then makes it.
bool replaceView(const QString& path, const QString& oldName, const QString& name,
                 const QString& sql) {
    try {
        store::Database db = store::Database::open(path);
        try {
            store::dropQuery(db, oldName);
        } catch (const store::StoreError&) {
        }
        store::createQuery(db, name, sql);
        return true;
    } catch (const store::StoreError&) {
        return false;
    }
}

// A configured rate as the SQL compares it with a Currency column.
QString rateValue(const QString& text) {
    return QStringLiteral("round(cast(%1 as real) * 10000)").arg(store::quoteLiteral(text));
}

// One pass over the view, grouped by rate in ascending order, stands for a query per
// configured rate and one for the rest: each configured rate takes its group, and the
// difference line the first other non-zero rate when its base is not zero. Rows at rate 0
// (exempt, or a sale without VAT lines) fall in no line unless a configured rate is 0.
template <std::size_t N, typename Summary>
Summary summarise(const WorkingContext& ctx, const QString& view, bool surcharge,
                  const std::array<QString, N>& texts, const std::array<double, N>& values) {
    Summary summary;
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Llibre));
    std::array<std::optional<Money>, N> configured;
    for (std::size_t i = 0; i < N; ++i) {
        // The rate as the SQL reads its text.
        store::Statement rate = db.prepare(QStringLiteral("select ") + rateValue(texts[i]));
        if (rate.next() && !rate.isNull(0)) configured[i] = rate.money(0);
        summary.rates[i] = RateSums{Money::fromDouble(values[i]), {}, {}, {}};
    }
    store::Statement st =
        db.prepare(QStringLiteral("select tipusIVA, sum(baseIVA), sum(IVA), %1 from %2 "
                                  "where tipusIVA is not null group by tipusiva order by tipusiva")
                       .arg(surcharge ? QStringLiteral("sum(REC)") : QStringLiteral("0"), view));
    bool otherSeen = false;
    while (st.next()) {
        RateSums s;
        s.rate = st.money(0);
        s.base = st.isNull(1) ? Money{} : st.money(1);
        s.quota = st.isNull(2) ? Money{} : st.money(2);
        s.surcharge = st.isNull(3) ? Money{} : st.money(3);
        bool matched = false;
        for (std::size_t i = 0; i < N; ++i) {
            if (configured[i] != s.rate) continue;
            summary.rates[i] = s;
            matched = true;
        }
        // Only the first other rate is read, and shown when its base is not zero.
        if (!matched && s.rate != Money{} && !otherSeen) {
            otherSeen = true;
            if (s.base != Money{}) summary.difference = s;
        }
    }
    return summary;
}

// A configured rate as the footer prints it: the plain number with the decimal comma.
QString plainRate(const WorkingContext& ctx, double rate) {
    return QString::number(rate, 'g', 15).replace(u'.', ctx.decimalMark());
}

QString amount(const WorkingContext& ctx, Money m) {
    return m.format(2, ctx.decimalMark());
}

// "name1='value '", the form the footers' amounts take.
QString footer(const QString& name, std::size_t i, const QString& value) {
    return QStringLiteral("%1%2='%3'").arg(name).arg(i).arg(value);
}

}  // namespace

SeriesFilter seriesFilter(Series series) {
    switch (series) {
        case Series::All:
            return {{}, {}, 6170};
        case Series::Normal:
            return {QStringLiteral("NORMALS"), QStringLiteral("NORMALS"), 6171};
        case Series::CreditNotes:
            return {QStringLiteral("/Abon"), {}, 6172};
        case Series::Rectifying:
            return {QStringLiteral("/Rect"), {}, 6173};
        case Series::Intra:
            return {{}, QStringLiteral("ntra"), 6863};
        case Series::Canarias:
            return {{}, QStringLiteral("can"), 6864};
    }
    return {};
}

std::pair<QDate, QDate> periodLimits(const WorkingContext& ctx, int from, int to) {
    const int year = ctx.Exercici.toInt();
    const QDate last(year, to, 1);
    return {QDate(year, from, 1), QDate(year, to, last.daysInMonth())};
}

bool Genera_SelIVAr(const WorkingContext& ctx, int from, int to, const QString& serie,
                    const QString& clasificacion, bool irpf) {
    QString sql = QStringLiteral("Select * from Diari where ") + between(ctx, from, to) +
                  QStringLiteral(" AND Debe_Haber='D' ");
    sql += seriesConditions(serie, {});
    if (irpf) sql += QStringLiteral(" and ret <>0 ");
    sql += seriesConditions({}, clasificacion);
    return replaceView(ctx.exerciseFile(schema::db::Llibre), QStringLiteral("selIVAr"),
                       QStringLiteral("SelIVAr"), sql);
}

bool Genera_SelIVAs(const WorkingContext& ctx, int from, int to, bool nomesIva, bool inversions,
                    const QString& serie, const QString& clasificacion, bool irpf) {
    QString filters;
    if (nomesIva) filters += QStringLiteral(" and OrdreIVAs <> 0");
    if (inversions) {
        if (ctx.ModeExercici == QStringLiteral("TICKETS")) filters.clear();
        filters += QStringLiteral(" and Grup=20 ");
    }
    filters += seriesConditions(serie, clasificacion);
    if (irpf) filters += QStringLiteral(" and ret <>0 ");
    const QString sql = QStringLiteral("Select * from Diari where ") + between(ctx, from, to) +
                        QStringLiteral(" AND Debe_Haber='H'") + filters +
                        QStringLiteral(" order by data asc, descripcio asc, apunt asc");
    return replaceView(ctx.exerciseFile(schema::db::Llibre), QStringLiteral("selIVAs"),
                       QStringLiteral("SelIVAs"), sql);
}

bool Genera_SelFras_Suplidos(const WorkingContext& ctx, int from, int to) {
    const QString sql = QStringLiteral("Select * from Suplidos where ") + between(ctx, from, to) +
                        QStringLiteral("  order by data asc, descripcio asc, Ordre asc");
    return replaceView(ctx.exerciseFile(schema::db::Supl), QStringLiteral("SelFras"),
                       QStringLiteral("SelFras"), sql);
}

SalesSummary salesSummary(const WorkingContext& ctx) {
    return summarise<3, SalesSummary>(ctx, QStringLiteral("selIVAr"), true, ctx.TipusIVAText,
                                      ctx.TipusIVA);
}

PurchasesSummary purchasesSummary(const WorkingContext& ctx) {
    return summarise<4, PurchasesSummary>(ctx, QStringLiteral("selIVAs"), false, ctx.TipusIVAsText,
                                          ctx.TipusIVAs);
}

void Resum_IVAr(const WorkingContext& ctx, report::ReportJob& job) {
    const SalesSummary s = salesSummary(ctx);
    for (std::size_t i = 0; i < s.rates.size(); ++i) {
        const std::size_t n = i + 1;
        report::appendFormula(
            job, footer(QStringLiteral("base"), n, amount(ctx, s.rates[i].base) + u' '));
        report::appendFormula(
            job, footer(QStringLiteral("iva"), n, amount(ctx, s.rates[i].quota) + u' '));
        report::appendFormula(job, footer(QStringLiteral("ivar"), n,
                                          plainRate(ctx, ctx.TipusIVA[i]) + QStringLiteral(" %")));
        report::appendFormula(job, footer(QStringLiteral("rer"), n,
                                          plainRate(ctx, ctx.TipusRE[i]) + QStringLiteral(" %")));
        report::appendFormula(
            job, footer(QStringLiteral("rec"), n, amount(ctx, s.rates[i].surcharge) + u' '));
    }
    if (const auto& d = s.difference) {
        report::appendFormula(job, footer(QStringLiteral("base"), 4, amount(ctx, d->base) + u' '));
        report::appendFormula(job, QStringLiteral("ivar4='dif %'"));
        report::appendFormula(job, footer(QStringLiteral("iva"), 4, amount(ctx, d->quota) + u' '));
        report::appendFormula(job,
                              footer(QStringLiteral("rec"), 4, amount(ctx, d->surcharge) + u' '));
        report::appendFormula(job, QStringLiteral("rer4='dif %'"));
    }
}

void Resum_IVAs(const WorkingContext& ctx, report::ReportJob& job) {
    const PurchasesSummary s = purchasesSummary(ctx);
    for (std::size_t i = 0; i < s.rates.size(); ++i) {
        const std::size_t n = i + 1;
        report::appendFormula(job, footer(QStringLiteral("txtbase"), n,
                                          plainRate(ctx, ctx.TipusIVAs[i]) + QStringLiteral(" %")));
        report::appendFormula(
            job, footer(QStringLiteral("base"), n, amount(ctx, s.rates[i].base) + u' '));
        report::appendFormula(
            job, footer(QStringLiteral("quota"), n, amount(ctx, s.rates[i].quota) + u' '));
    }
    if (const auto& d = s.difference) {
        report::appendFormula(job, QStringLiteral("txtbase5='dif. %'"));
        report::appendFormula(job, footer(QStringLiteral("base"), 5, amount(ctx, d->base) + u' '));
        report::appendFormula(job,
                              footer(QStringLiteral("quota"), 5, amount(ctx, d->quota) + u' '));
    }
}

}  // namespace tallora::books
