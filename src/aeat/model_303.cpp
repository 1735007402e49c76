// Modelo 303: the quarterly (or monthly) VAT return, from the VAT register's lines.
//
// Accrued: each sales line by its rate (4, 5, 10 and 21 %) and its surcharge (0,5, 1,4, 1,75
// and 5,2 %); intra-community acquisitions (purchases classified so) are accrued at the rate
// they were entered with and deducted again. A sales line at 0 % is no accrual: an
// intra-community delivery goes to [59], a sale to the Canary Islands to [60] as an export,
// any other is exempt and has no box of its own here. A rate the form has no box for is left
// out and named in the warnings.
// Deductible: current purchases [28]/[29], investment goods (group 20) [30]/[31], purchases
// from the Canary Islands as imports [32]-[35], intra-community [36]-[39].
// [65] is 100 % (the whole return goes to the State); [67] (earlier compensations) and [70]
// (an earlier return's result, for a complementary one) are typed.
#include "context/messages.h"
#include "context/working_context.h"
#include "fixed_record.h"
#include "models.h"
#include "vat_register.h"

#include <array>

namespace tallora::aeat {
namespace {

Money pct(double v) {
    return Money::fromDouble(v);
}

struct RateBoxes {
    double rate;
    const char *base, *quota;
};
// Boxes of the general regime's rates and of the surcharges.
constexpr std::array<RateBoxes, 4> kRates{
    {{4, "01", "03"}, {5, "153", "155"}, {10, "04", "06"}, {21, "07", "09"}}};
constexpr std::array<RateBoxes, 4> kSurcharges{
    {{1.75, "156", "158"}, {0.5, "16", "18"}, {1.4, "19", "21"}, {5.2, "22", "24"}}};

struct Sums {
    Money base, quota;
};

QString rateNumber(const char* quota) {
    // The rate's box sits between base and quota.
    const int q = QString::fromLatin1(quota).toInt();
    return QString::number(q - 1).rightJustified(2, u'0');
}

}  // namespace

ModelFigures compute303(const WorkingContext& ctx, const TaxPeriod& p, const TypedBoxes& t) {
    ModelFigures f;
    f.model = Model::M303;
    f.period = p;
    const auto issued = issuedLines(ctx, p.fromMonth, p.toMonth);
    const auto received = receivedLines(ctx, p.fromMonth, p.toMonth);

    std::array<Sums, 4> rates{}, surcharges{};
    Sums intraAcquired, current, investment, imports, importsInvestment, intra, intraInvestment;
    Money deliveries, exports;
    QStringList unknownRates;
    for (const RegisterLine& l : issued) {
        if (l.rate == Money{}) {
            if (l.territory == Territory::IntraCommunity) deliveries += l.base;
            if (l.territory == Territory::Canarias) exports += l.base;
        } else {
            bool placed = false;
            for (std::size_t i = 0; i < kRates.size(); ++i)
                if (l.rate == pct(kRates[i].rate)) {
                    rates[i].base += l.base;
                    rates[i].quota += l.quota;
                    placed = true;
                }
            if (!placed) unknownRates << l.rate.format(2, ctx.decimalMark());
        }
        if (l.surcharge != Money{}) {
            bool placed = false;
            for (std::size_t i = 0; i < kSurcharges.size(); ++i)
                if (l.surchargeRate == pct(kSurcharges[i].rate)) {
                    surcharges[i].base += l.base;
                    surcharges[i].quota += l.surcharge;
                    placed = true;
                }
            if (!placed) unknownRates << l.surchargeRate.format(2, ctx.decimalMark());
        }
    }
    for (const RegisterLine& l : received) {
        Sums* s = &current;
        if (l.territory == Territory::IntraCommunity) {
            intraAcquired.base += l.base;
            intraAcquired.quota += l.quota;
            s = l.investment() ? &intraInvestment : &intra;
        } else if (l.territory == Territory::Canarias) {
            s = l.investment() ? &importsInvestment : &imports;
        } else if (l.investment()) {
            s = &investment;
        }
        s->base += l.base;
        s->quota += l.quota;
    }
    unknownRates.removeDuplicates();
    for (const QString& r : unknownRates)
        f.warnings << fixedText(ctx, "Tipo sin casilla en el modelo, no incluido: %1 %",
                                "Tipus sense casella al model, no inclòs: %1 %")
                          .arg(r);

    BoxAdder b(f);
    b.section("IVA devengado", "IVA meritat");
    Money accrued;
    for (std::size_t i = 0; i < kRates.size(); ++i) {
        const QString rate = QString::number(kRates[i].rate);
        b.amount(kRates[i].base, "Base imponible", "Base imposable", rates[i].base);
        f.boxes.back().spanish += QStringLiteral(" %1 %").arg(rate);
        f.boxes.back().catalan += QStringLiteral(" %1 %").arg(rate);
        b.rate(rateNumber(kRates[i].quota).toLatin1().constData(), "Tipo", "Tipus",
               rates[i].base == Money{} ? Money{} : pct(kRates[i].rate));
        b.amount(kRates[i].quota, "Cuota", "Quota", rates[i].quota);
        accrued += rates[i].quota;
    }
    b.amount("10", "Adquisiciones intracomunitarias: base", "Adquisicions intracomunitàries: base",
             intraAcquired.base)
        .amount("11", "Adquisiciones intracomunitarias: cuota",
                "Adquisicions intracomunitàries: quota", intraAcquired.quota);
    accrued += intraAcquired.quota;
    b.section("Recargo de equivalencia", "Recàrrec d'equivalència");
    for (std::size_t i = 0; i < kSurcharges.size(); ++i) {
        const QString rate = QString::number(kSurcharges[i].rate).replace(u'.', u',');
        b.amount(kSurcharges[i].base, "Base imponible", "Base imposable", surcharges[i].base);
        f.boxes.back().spanish += QStringLiteral(" %1 %").arg(rate);
        f.boxes.back().catalan += QStringLiteral(" %1 %").arg(rate);
        b.rate(rateNumber(kSurcharges[i].quota).toLatin1().constData(), "Tipo", "Tipus",
               surcharges[i].base == Money{} ? Money{} : pct(kSurcharges[i].rate));
        b.amount(kSurcharges[i].quota, "Cuota", "Quota", surcharges[i].quota);
        accrued += surcharges[i].quota;
    }
    b.amount("27", "Total cuota devengada", "Total quota meritada", accrued);

    b.section("IVA deducible", "IVA deduïble");
    const auto pair = [&](const char* base, const char* quota, const char* es, const char* ca,
                          const Sums& s) {
        b.amount(base, (QByteArray(es) + ": base").constData(),
                 (QByteArray(ca) + ": base").constData(), s.base)
            .amount(quota, (QByteArray(es) + ": cuota").constData(),
                    (QByteArray(ca) + ": quota").constData(), s.quota);
    };
    pair("28", "29", "Operaciones interiores corrientes", "Operacions interiors corrents", current);
    pair("30", "31", "Operaciones interiores con bienes de inversión",
         "Operacions interiors amb béns d'inversió", investment);
    pair("32", "33", "Importaciones de bienes corrientes", "Importacions de béns corrents",
         imports);
    pair("34", "35", "Importaciones de bienes de inversión", "Importacions de béns d'inversió",
         importsInvestment);
    pair("36", "37", "Adquisiciones intracomunitarias de bienes corrientes",
         "Adquisicions intracomunitàries de béns corrents", intra);
    pair("38", "39", "Adquisiciones intracomunitarias de bienes de inversión",
         "Adquisicions intracomunitàries de béns d'inversió", intraInvestment);
    const Money deductible = current.quota + investment.quota + imports.quota +
                             importsInvestment.quota + intra.quota + intraInvestment.quota;
    b.amount("45", "Total a deducir", "Total a deduir", deductible);
    const Money result = accrued - deductible;
    b.amount("46", "Resultado régimen general", "Resultat règim general", result);

    b.section("Información adicional y resultado", "Informació addicional i resultat");
    b.amount("59", "Entregas intracomunitarias de bienes y servicios",
             "Lliuraments intracomunitaris de béns i serveis", deliveries)
        .amount("60", "Exportaciones y operaciones asimiladas",
                "Exportacions i operacions assimilades", exports)
        .amount("64", "Suma de resultados", "Suma de resultats", result)
        .rate("65", "% atribuible a la Administración del Estado",
              "% atribuïble a l'Administració de l'Estat", pct(100))
        .amount("66", "Atribuible a la Administración del Estado",
                "Atribuïble a l'Administració de l'Estat", result)
        .typed("67", "Cuotas a compensar de periodos anteriores",
               "Quotes a compensar de períodes anteriors", t);
    const Money r69 = result - f.value(QStringLiteral("67"));
    b.amount("69", "Resultado", "Resultat", r69)
        .typed("70", "A deducir (declaración anterior)", "A deduir (declaració anterior)", t);
    const Money r71 = r69 - f.value(QStringLiteral("70"));
    b.amount("71", "Resultado de la liquidación", "Resultat de la liquidació", r71);
    const bool yearEnd = p.toMonth == 12;
    f.declarationType = r71 > Money{}    ? QStringLiteral("I")
                        : r71 == Money{} ? QStringLiteral("N")
                        : yearEnd        ? QStringLiteral("D")
                                         : QStringLiteral("C");
    return f;
}

QByteArray file303(const WorkingContext& ctx, const ModelFigures& f) {
    // Page 01: 1581 positions; the boxes from [150] at 130 to [46] at 940–956 follow one
    // another without gaps: a base (17), a rate (5), a quota (17), or a lone amount (17).
    FixedRecord p1 = designPage(QStringLiteral("30301000"), 1581);
    declarantFields(p1, ctx, f, 80);
    p1.text(113, 1, QStringLiteral("2"));  // not under the cash criterion
    struct Slot {
        const char* box;
        int length;
    };
    // [150]–[152] (0 %) and the boxes the program never fills are written as zeros.
    const Slot fields[] = {
        {"150", 17}, {"151", 5},  {"152", 17}, {"01", 17}, {"02", 5},  {"03", 17}, {"153", 17},
        {"154", 5},  {"155", 17}, {"04", 17},  {"05", 5},  {"06", 17}, {"07", 17}, {"08", 5},
        {"09", 17},  {"10", 17},  {"11", 17},  {"12", 17}, {"13", 17}, {"14", 17}, {"15", 17},
        {"156", 17}, {"157", 5},  {"158", 17}, {"16", 17}, {"17", 5},  {"18", 17}, {"19", 17},
        {"20", 5},   {"21", 17},  {"22", 17},  {"23", 5},  {"24", 17}, {"25", 17}, {"26", 17},
        {"27", 17},  {"28", 17},  {"29", 17},  {"30", 17}, {"31", 17}, {"32", 17}, {"33", 17},
        {"34", 17},  {"35", 17},  {"36", 17},  {"37", 17}, {"38", 17}, {"39", 17}, {"40", 17},
        {"41", 17},  {"42", 17},  {"43", 17},  {"44", 17}, {"45", 17}, {"46", 17}};
    int at = 130;
    for (const Slot& s : fields) {
        const Money v = f.value(QString::fromLatin1(s.box));
        if (s.length == 5)
            p1.number(at, 5, cents(v));  // a rate: two decimals, "02100"
        else
            p1.signedAmount(at, 17, v);
        at += s.length;
    }

    // Page 03: the boxes whose places this layout knows; the rest stays as zeros up to [71].
    FixedRecord p3 = designPage(QStringLiteral("30303000"), 402);
    p3.number(12, 379, 0);
    p3.signedAmount(12, 17, f.value(QStringLiteral("59")));
    p3.signedAmount(29, 17, f.value(QStringLiteral("60")));
    p3.signedAmount(323, 17, f.value(QStringLiteral("69")));
    p3.signedAmount(374, 17, f.value(QStringLiteral("71")));
    return designFile(QStringLiteral("303"), f.period, p1.latin1() + p3.latin1());
}

}  // namespace tallora::aeat
