// Modelo 111: the withholdings the business made on its purchases (professionals' invoices)
// in the quarter or month, all as income from economic activities ([07]–[09]). The program
// cannot tell a rent's withholding, which belongs to the 115, from a professional's: a
// purchase with a withholding counts here whatever it is for.
#include "context/working_context.h"
#include "fixed_record.h"
#include "models.h"
#include "schema/creation.h"
#include "store/database.h"

#include <set>

namespace tallora::aeat {

ModelFigures compute111(const WorkingContext& ctx, const TaxPeriod& p, const TypedBoxes& t) {
    ModelFigures f;
    f.model = Model::M111;
    f.period = p;
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::FrasIn));
    db.attach(ctx.exerciseFile(schema::db::Gest), QStringLiteral("gest"));
    store::Statement st = db.prepare(QStringLiteral(
        "select f.Proveidor, (select nif from gest.Proveidors where proveidor = f.Proveidor "
        "limit 1), coalesce(f.BaseIRPF, 0), coalesce(f.Retencio, 0) from FrasIN f "
        "where coalesce(f.Retencio, 0) <> 0 and f.data between ? and ?"));
    st.bind(1, p.first()).bind(2, p.last());
    std::set<QString> payees;
    Money bases, withheld;
    while (st.next()) {
        const QString nif = st.isNull(1) ? QString() : st.text(1).trimmed().toUpper();
        payees.insert(nif.isEmpty() ? QStringLiteral("#") + QString::number(st.int64(0)) : nif);
        bases += st.money(2);
        withheld += st.money(3);
    }
    BoxAdder b(f);
    b.section("Rendimientos de actividades económicas", "Rendiments d'activitats econòmiques")
        .count("07", "Número de perceptores", "Nombre de perceptors",
               static_cast<qint64>(payees.size()))
        .amount("08", "Importe de las percepciones", "Import de les percepcions", bases)
        .amount("09", "Importe de las retenciones", "Import de les retencions", withheld);
    b.section("Total liquidación", "Total liquidació")
        .amount("28", "Suma de retenciones", "Suma de retencions", withheld)
        .typed("29", "Resultado a ingresar de anteriores declaraciones",
               "Resultat a ingressar de declaracions anteriors", t);
    const Money result = withheld - f.value(QStringLiteral("29"));
    b.amount("30", "Resultado a ingresar", "Resultat a ingressar", result);
    f.declarationType = result == Money{} ? QStringLiteral("N") : QStringLiteral("I");
    return f;
}

QByteArray file111(const WorkingContext& ctx, const ModelFigures& f) {
    FixedRecord p = designPage(QStringLiteral("11101000"), 1000);
    declarantFields(p, ctx, f, 60);
    // Nine kinds of income, each a count of payees (8) and two amounts (17): [01] at 109.
    for (int kind = 0; kind < 9; ++kind) {
        const int at = 109 + 42 * kind;
        p.number(at, 8, 0);
        p.signedAmount(at + 8, 17, Money{});
        p.signedAmount(at + 25, 17, Money{});
    }
    p.number(193, 8, f.value(QStringLiteral("07")).units() / Money::kScale);
    p.signedAmount(201, 17, f.value(QStringLiteral("08")));
    p.signedAmount(218, 17, f.value(QStringLiteral("09")));
    p.signedAmount(487, 17, f.value(QStringLiteral("28")));
    p.signedAmount(504, 17, f.value(QStringLiteral("29")));
    p.signedAmount(521, 17, f.value(QStringLiteral("30")));
    return designFile(QStringLiteral("111"), f.period, p.latin1());
}

}  // namespace tallora::aeat
