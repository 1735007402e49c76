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

namespace tallora::aeat {
namespace {

struct Quarter {
    Money income, expenses, net, tax, earlier, withheld, result;
};

Money withheldUntil(const WorkingContext& ctx, const QDate& last) {
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::FrasOut));
    store::Statement st = db.prepare(
        QStringLiteral("select coalesce(sum(Retencio), 0) from FrasOut where data between ? "
                       "and ?"));
    st.bind(1, QDate(last.year(), 1, 1)).bind(2, last);
    return st.next() ? st.money(0) : Money{};
}

Quarter quarter(const WorkingContext& ctx, int year, int toMonth, Money earlier) {
    Quarter q;
    const books::OperatingTotals t = books::buildOperatingStatement(ctx, 1, toMonth);
    q.income = t.income;
    q.expenses = t.expenses;
    q.net = q.income - q.expenses;
    // 20 %, to the cent, half away from zero.
    const std::int64_t u = q.net.units() > 0 ? q.net.units() : 0;
    q.tax = Money::fromUnits((u * 20 / 100 + 50) / 100 * 100);
    q.earlier = earlier;
    q.withheld = withheldUntil(ctx, QDate(year, toMonth, 1).addMonths(1).addDays(-1));
    q.result = q.tax - q.earlier - q.withheld;
    return q;
}

}  // namespace

ModelFigures compute130(const WorkingContext& ctx, const TaxPeriod& p, const TypedBoxes& t) {
    ModelFigures f;
    f.model = Model::M130;
    f.period = p;
    Money earlier;
    const int lastQuarter = (p.toMonth + 2) / 3;
    for (int q = 1; q < lastQuarter; ++q) {
        const Quarter before = quarter(ctx, p.year, 3 * q, earlier);
        if (before.result > Money{}) earlier += before.result;
    }
    const Quarter q = quarter(ctx, p.year, p.toMonth, earlier);
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
