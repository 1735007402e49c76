// Modelo 349: the intra-community operations of the period, from the VAT register's lines
// classified as intra-community: the sales as deliveries (key E), the purchases as
// acquisitions (key A), the taxable bases added up by operator and key. The operator is named
// by the intra-community tax number kept as the customer's or supplier's tax number; one that
// does not start with its country's two letters is named in the warnings, as the agency would
// refuse it.
#include "context/messages.h"
#include "context/working_context.h"
#include "fixed_record.h"
#include "models.h"
#include "vat_register.h"

#include <map>

namespace tallora::aeat {
namespace {

struct Operator {
    QString nif, name;
    Money base;
};

bool withCountry(const QString& nif) {
    return nif.size() > 2 && nif.at(0).isLetter() && nif.at(1).isLetter();
}

}  // namespace

ModelFigures compute349(const WorkingContext& ctx, const TaxPeriod& p) {
    ModelFigures f;
    f.model = Model::M349;
    f.period = p;
    std::map<std::pair<QChar, QString>, Operator> operators;
    const auto add = [&](const std::vector<RegisterLine>& lines, QChar key) {
        for (const RegisterLine& l : lines) {
            if (l.territory != Territory::IntraCommunity) continue;
            Operator& o = operators[{key, l.nif}];
            o.nif = l.nif;
            if (o.name.isEmpty()) o.name = l.name;
            o.base += l.base;
        }
    };
    add(issuedLines(ctx, p.fromMonth, p.toMonth), u'E');
    add(receivedLines(ctx, p.fromMonth, p.toMonth), u'A');
    report::Sheet& s = f.parties;
    s.name = QStringLiteral("349");
    s.headings = {{fixedText(ctx, "NIF-IVA", "NIF-IVA"), fixedText(ctx, "Nombre", "Nom"),
                   fixedText(ctx, "Clave", "Clau"),
                   fixedText(ctx, "Base imponible", "Base imposable")}};
    Money total;
    for (const auto& [id, o] : operators) {
        if (!withCountry(o.nif))
            f.warnings << fixedText(ctx, "NIF-IVA sin código de país: %1 (%2)",
                                    "NIF-IVA sense codi de país: %1 (%2)")
                              .arg(o.nif, o.name);
        s.rows.push_back({o.nif, o.name, QString(id.first), o.base});
        total += o.base;
    }
    s.widths = {16, 40, 6, 14};
    BoxAdder b(f);
    b.section("Resumen de la declaración", "Resum de la declaració")
        .count("01", "Número total de operadores intracomunitarios",
               "Nombre total d'operadors intracomunitaris", static_cast<qint64>(s.rows.size()))
        .amount("02", "Importe de las operaciones intracomunitarias",
                "Import de les operacions intracomunitàries", total);
    return f;
}

QByteArray file349(const WorkingContext& ctx, const ModelFigures& f) {
    const QString model = QStringLiteral("349");
    FixedRecord head = declarationRecord(ctx, model, f.period.year);
    head.text(136, 2, f.period.code)
        .number(138, 9, static_cast<qint64>(f.parties.rows.size()))
        .amount(147, 15, f.value(QStringLiteral("02")))
        .number(162, 9, 0)
        .amount(171, 15, Money{});
    QByteArray out = head.latin1() + "\r\n";
    for (const report::SheetRow& row : f.parties.rows) {
        const QString nif = std::get<QString>(row[0]);
        const bool country = withCountry(nif);
        FixedRecord r = partyRecord(ctx, model, f.period.year);
        r.text(76, 2, country ? nif.left(2) : QString())
            .text(78, 15, country ? nif.mid(2) : nif)
            .text(93, 40, std::get<QString>(row[1]))
            .text(133, 1, std::get<QString>(row[2]))
            .amount(134, 13, std::get<Money>(row[3]));
        out += r.latin1() + "\r\n";
    }
    return out;
}

}  // namespace tallora::aeat
