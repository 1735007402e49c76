// Modelo 130: the self-employed's payment on account of income tax for a quarter, from the
// year's beginning to the quarter's end: income less expenses as the operating statement
// counts them ([01]–[03]), 20 % of a positive net ([04]), less the earlier quarters' payments
// of the year ([05], each quarter's own [07] when positive, worked out the same way) and the
// withholdings suffered on the sales ([06]). The agricultural section is not filled; [13],
// [15], [16] and [18] are typed.
#include "books/operating_statement.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "models.h"
#include "schema/creation.h"
#include "store/database.h"
#include "vat_register.h"

#include <array>

namespace tallora::aeat {
namespace {

struct Quarter {
    Money income, expenses, net, tax, earlier, withheld, result;
};

// The withholdings suffered on the sales, month by month.
std::array<Money, 12> withheldByMonth(const WorkingContext& ctx, int year) {
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::FrasOut));
    store::Statement st = db.prepare(
        QStringLiteral("select cast(strftime('%m', data) as integer), coalesce(sum(Retencio), 0) "
                       "from FrasOut where data between ? and ? group by 1"));
    st.bind(1, QDate(year, 1, 1)).bind(2, QDate(year, 12, 31));
    std::array<Money, 12> months{};
    while (st.next()) {
        const int m = st.int32(0);
        if (m >= 1 && m <= 12) months[static_cast<std::size_t>(m - 1)] = st.money(1);
    }
    return months;
}

// The figures from January to `toMonth`, out of the year's monthly ones.
Quarter quarter(const books::OperatingTotals& year, const std::array<Money, 12>& withheld,
                int toMonth, Money earlier) {
    Quarter q;
    for (std::size_t m = 0; m < static_cast<std::size_t>(toMonth); ++m) {
        q.income += year.income[m];
        q.expenses += year.expenses[m];
        q.withheld += withheld[m];
    }
    q.net = q.income - q.expenses;
    // 20 %, to the cent, half away from zero.
    const std::int64_t u = q.net.units() > 0 ? q.net.units() : 0;
    q.tax = Money::fromUnits((u * 20 / 100 + 50) / 100 * 100);
    q.earlier = earlier;
    q.result = q.tax - q.earlier - q.withheld;
    return q;
}

}  // namespace

ModelFigures compute130(const WorkingContext& ctx, const TaxPeriod& p, const TypedBoxes& t) {
    ModelFigures f;
    f.model = Model::M130;
    f.period = p;
    // One build of the statement and one read of the withholdings serve every quarter.
    const books::OperatingTotals year = books::buildOperatingStatement(ctx, 1, p.toMonth);
    const std::array<Money, 12> withheld = withheldByMonth(ctx, p.year);
    Money earlier;
    const int lastQuarter = (p.toMonth + 2) / 3;
    for (int q = 1; q < lastQuarter; ++q) {
        const Quarter before = quarter(year, withheld, 3 * q, earlier);
        if (before.result > Money{}) earlier += before.result;
    }
    const Quarter q = quarter(year, withheld, p.toMonth, earlier);
    if (legalPerson(ctx.EmpresaNIF))
        f.warnings << fixedText(ctx,
                                "El modelo 130 es de personas físicas: la empresa tiene un NIF "
                                "de persona jurídica.",
                                "El model 130 és de persones físiques: l'empresa té un NIF de "
                                "persona jurídica.");
    BoxAdder b(f);
    b.section("Actividades económicas en estimación directa",
              "Activitats econòmiques en estimació directa")
        .amount("01", "Ingresos computables del año", "Ingressos computables de l'any", q.income)
        .amount("02", "Gastos fiscalmente deducibles", "Despeses fiscalment deduïbles", q.expenses)
        .amount("03", "Rendimiento neto", "Rendiment net", q.net)
        .amount("04", "20 % del rendimiento neto", "20 % del rendiment net", q.tax)
        .amount("05", "Pagos fraccionados de trimestres anteriores",
                "Pagaments fraccionats de trimestres anteriors", q.earlier)
        .amount("06", "Retenciones e ingresos a cuenta", "Retencions i ingressos a compte",
                q.withheld)
        .amount("07", "Pago fraccionado previo del trimestre",
                "Pagament fraccionat previ del trimestre", q.result);
    b.section("Total liquidación", "Total liquidació")
        .amount("12", "Suma de pagos fraccionados previos", "Suma de pagaments fraccionats previs",
                q.result)
        .typed("13", "Minoración por rendimientos bajos", "Minoració per rendiments baixos", t);
    const Money r14 = q.result - f.value(QStringLiteral("13"));
    b.amount("14", "Diferencia", "Diferència", r14)
        .typed("15", "Resultados negativos de trimestres anteriores",
               "Resultats negatius de trimestres anteriors", t)
        .typed("16", "Deducción por adquisición de vivienda habitual",
               "Deducció per adquisició d'habitatge habitual", t);
    const Money r17 = r14 - f.value(QStringLiteral("15")) - f.value(QStringLiteral("16"));
    b.amount("17", "Total", "Total", r17)
        .typed("18", "A deducir (declaración anterior)", "A deduir (declaració anterior)", t);
    const Money r19 = r17 - f.value(QStringLiteral("18"));
    b.amount("19", "Resultado de la declaración", "Resultat de la declaració", r19);
    f.declarationType = r19 > Money{}    ? QStringLiteral("I")
                        : r19 == Money{} ? QStringLiteral("N")
                                         : QStringLiteral("B");
    return f;
}

}  // namespace tallora::aeat
