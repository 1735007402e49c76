// The tax agency's files read back by position: the wrapper and the pages of the 303 and 111,
// the records of the 347 and 349, against the layouts (lengths, padding, signs, implied
// decimals); the 347's thresholds, credit notes, cash and quarters; and the fixed-position
// writer's own rules.
#include "../books/books_fixture.h"
#include "aeat/fixed_record.h"
#include "aeat/model_figures.h"

#include <QMap>

using namespace tallora;
using namespace tallora::aeat;
using namespace tallora::testing;

namespace {

// Positions are 1-based and inclusive, as the layouts give them.
QString at(const QString& text, int from, int to) {
    return text.mid(from - 1, to - from + 1);
}

class AeatFiles : public BooksData {
protected:
    void SetUp() override {
        BooksData::SetUp();
        f.ctx.Exercici = QStringLiteral("2026");
        f.ctx.EmpresaNom = QStringLiteral("Ferretería Àvila S.L.");
        f.ctx.EmpresaNIF = QStringLiteral("B64717838");
    }

    void customer(int id, const char* name, const char* nif, const char* cp = "08001") {
        customerNames_[id] = QString::fromUtf8(name);
        exec(gest(), QStringLiteral("insert into Clients (client, nom, NIF, cp) values (%1, '%2', "
                                    "'%3', '%4')")
                         .arg(id)
                         .arg(QLatin1String(name), QLatin1String(nif), QLatin1String(cp)));
    }
    void supplier(int id, const char* name, const char* nif, const char* cp = "46001") {
        supplierNames_[id] = QString::fromUtf8(name);
        exec(gest(), QStringLiteral("insert into Proveidors (proveidor, nom, nif, cp) values "
                                    "(%1, '%2', '%3', '%4')")
                         .arg(id)
                         .arg(QLatin1String(name), QLatin1String(nif), QLatin1String(cp)));
    }
    // A sale of `client` at 21 %: total = base + quota, amounts in cents.
    void saleTo(int ordre, int client, const char* date, qint64 baseCents,
                const char* clasificacion = "", qint64 rate = 210000) {
        const qint64 base = baseCents * 100, quota = base * rate / 1000000;
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, Client, NomClient, "
                                       "Descripcio, TOTAL, Base1, TIva1, Iva1, Clasificacion) "
                                       "values (%1, '%2', %3, '%9', 'F-%1', %4, %5, %8, %6, "
                                       "'%7')")
                            .arg(ordre)
                            .arg(QLatin1String(date))
                            .arg(client)
                            .arg(base + quota)
                            .arg(base)
                            .arg(quota)
                            .arg(QLatin1String(clasificacion))
                            .arg(rate)
                            .arg(customerNames_.value(client)));
    }
    void purchaseFrom(int ordre, int supplierId, const char* date, qint64 baseCents,
                      qint64 retencioCents = 0, const char* clasificacion = "") {
        const qint64 base = baseCents * 100, quota = base * 21 / 100, ret = retencioCents * 100;
        exec(frasIn(), QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, NomProveidor, "
                                      "descripcio, Grup, TOTAL, Base1, TipusIva1, Iva1, "
                                      "Retencio, BaseIRPF, TipusIRPF, Clasificacion) values (%1, "
                                      "'%2', %3, '%11', 'C-%1', 62, %4, %5, 210000, %6, %7, "
                                      "%8, %9, '%10')")
                           .arg(ordre)
                           .arg(QLatin1String(date))
                           .arg(supplierId)
                           .arg(base + quota - ret)
                           .arg(base)
                           .arg(quota)
                           .arg(ret)
                           .arg(ret ? base : 0)
                           .arg(ret ? 150000 : 0)
                           .arg(QLatin1String(clasificacion))
                           .arg(supplierNames_.value(supplierId)));
    }

    QMap<int, QString> customerNames_, supplierNames_;

    ModelFigures figures(Model m, const char* period, const TypedBoxes& typed = {}) {
        return computeModel(f.ctx, m, *taxPeriod(2026, QString::fromLatin1(period)), typed);
    }
    QString file(const ModelFigures& figures) {
        return QString::fromLatin1(modelFile(f.ctx, figures));
    }
    static QStringList records(const QString& file) {
        QStringList lines = file.split(QStringLiteral("\r\n"));
        EXPECT_EQ(lines.takeLast(), QString());
        return lines;
    }
};

}  // namespace

TEST(FixedRecordTest, TextGoesInCapitalsWithoutAccentsButKeepsNAndC) {
    EXPECT_EQ(agencyText(QStringLiteral("Ferretería Àvila, Muñoz i Façanes")),
              QStringLiteral("FERRETERIA AVILA, MUÑOZ I FAÇANES"));
    FixedRecord r(20);
    r.text(3, 6, QStringLiteral("añadido largo"));
    EXPECT_EQ(r.line(), QStringLiteral("  AÑADID            "));
    EXPECT_EQ(r.latin1().size(), 20);
    EXPECT_EQ(r.latin1().at(3), '\xD1');  // Ñ in ISO-8859-1
}

TEST(FixedRecordTest, NumbersAndAmountsArePaddedWithTheirSigns) {
    FixedRecord r(60);
    r.number(1, 5, 42)
        .signedAmount(6, 17, Money::fromUnits(-1234567))    // -123,4567 → -123,46
        .amountWithSign(23, 24, 15, Money::fromUnits(-50))  // -0,005 → -0,01
        .amount(39, 13, Money::fromUnits(300506000));
    EXPECT_EQ(at(r.line(), 1, 5), QStringLiteral("00042"));
    EXPECT_EQ(at(r.line(), 6, 22), QStringLiteral("N0000000000012346"));
    EXPECT_EQ(at(r.line(), 23, 38), QStringLiteral("N000000000000001"));
    EXPECT_EQ(at(r.line(), 39, 51), QStringLiteral("0000003005060"));
    EXPECT_THROW(r.number(1, 2, 123), std::overflow_error);
    EXPECT_THROW(r.text(59, 5, QStringLiteral("x")), std::out_of_range);
}

TEST(TaxPeriodTest, QuartersMonthsAndTheYear) {
    EXPECT_EQ(taxPeriod(2026, QStringLiteral("3t"))->fromMonth, 7);
    EXPECT_EQ(taxPeriod(2026, QStringLiteral("3T"))->last(), QDate(2026, 9, 30));
    EXPECT_EQ(taxPeriod(2028, QStringLiteral("2"))->code, QStringLiteral("02"));
    EXPECT_EQ(taxPeriod(2028, QStringLiteral("02"))->last(), QDate(2028, 2, 29));
    EXPECT_EQ(taxPeriod(2026, QStringLiteral("0A"))->toMonth, 12);
    EXPECT_FALSE(taxPeriod(2026, QStringLiteral("5T")));
    EXPECT_FALSE(taxPeriod(2026, QStringLiteral("13")));
}

TEST_F(AeatFiles, The303FileCarriesItsWrapperAndTheBoxesAtTheirPlaces) {
    customer(1, "Bar Centre", "B58378431");
    sale(1, "2026-01-10", "F-1", 0, {100000000, 20000000, 5000000});  // 10.000, 2.000, 500
    purchase(1, "2026-02-01", 60, 0, {30000000, 0, 0, 0});            // 3.000 at 21 %
    purchase(2, "2026-02-02", 20, 0, {10000000, 0, 0, 0});            // investment 1.000
    const ModelFigures fig =
        figures(Model::M303, "1T", {{QStringLiteral("67"), Money::fromUnits(1000000)}});
    EXPECT_EQ(fig.value("07"), Money::fromUnits(100000000));
    EXPECT_EQ(fig.value("09"), Money::fromUnits(21000000));
    EXPECT_EQ(fig.value("22"), Money::fromUnits(100000000));  // recargo 5,2 % on the first base
    EXPECT_EQ(fig.value("24"), Money::fromUnits(5200000));
    // 2.100 + 200 + 20 + 520 accrued; 630 + 210 deductible.
    EXPECT_EQ(fig.value("27"), Money::fromUnits(28400000));
    EXPECT_EQ(fig.value("29"), Money::fromUnits(6300000));
    EXPECT_EQ(fig.value("31"), Money::fromUnits(2100000));
    EXPECT_EQ(fig.value("45"), Money::fromUnits(8400000));
    EXPECT_EQ(fig.value("46"), Money::fromUnits(20000000));
    EXPECT_EQ(fig.value("69"), Money::fromUnits(19000000));  // less the typed 100 of [67]
    EXPECT_EQ(fig.declarationType, QStringLiteral("I"));
    EXPECT_TRUE(fig.warnings.isEmpty()) << fig.warnings.join(u'\n').toStdString();

    const QString all = file(fig);
    EXPECT_EQ(at(all, 1, 17), QStringLiteral("<T303020261T0000>"));
    EXPECT_EQ(at(all, 18, 22), QStringLiteral("<AUX>"));
    EXPECT_EQ(at(all, 23, 92), QString(70, u' '));
    EXPECT_EQ(at(all, 93, 96), QStringLiteral("0500"));
    EXPECT_EQ(at(all, 323, 328), QStringLiteral("</AUX>"));
    const QString p1 = all.mid(328, 1581);
    EXPECT_EQ(at(p1, 1, 11), QStringLiteral("<T30301000>"));
    EXPECT_EQ(at(p1, 13, 13), QStringLiteral("I"));
    EXPECT_EQ(at(p1, 14, 22), QStringLiteral("B64717838"));
    EXPECT_EQ(at(p1, 23, 102), QStringLiteral("FERRETERIA AVILA S.L.").leftJustified(80));
    EXPECT_EQ(at(p1, 103, 108), QStringLiteral("20261T"));
    EXPECT_EQ(at(p1, 169, 185), QStringLiteral("00000000000050000"));  // [01] 500,00
    EXPECT_EQ(at(p1, 186, 190), QStringLiteral("00400"));              // [02] 4 %
    EXPECT_EQ(at(p1, 191, 207), QStringLiteral("00000000000002000"));  // [03] 20,00
    EXPECT_EQ(at(p1, 247, 263), QStringLiteral("00000000000200000"));  // [04]
    EXPECT_EQ(at(p1, 264, 268), QStringLiteral("01000"));
    EXPECT_EQ(at(p1, 286, 302), QStringLiteral("00000000001000000"));  // [07]
    EXPECT_EQ(at(p1, 303, 307), QStringLiteral("02100"));
    EXPECT_EQ(at(p1, 308, 324), QStringLiteral("00000000000210000"));  // [09]
    EXPECT_EQ(at(p1, 544, 560), QStringLiteral("00000000001000000"));  // [22]
    EXPECT_EQ(at(p1, 561, 565), QStringLiteral("00520"));              // [23] 5,2 %
    EXPECT_EQ(at(p1, 566, 582), QStringLiteral("00000000000052000"));  // [24]
    EXPECT_EQ(at(p1, 617, 633), QStringLiteral("00000000000284000"));  // [27]
    EXPECT_EQ(at(p1, 634, 650), QStringLiteral("00000000000300000"));  // [28]
    EXPECT_EQ(at(p1, 651, 667), QStringLiteral("00000000000063000"));  // [29]
    EXPECT_EQ(at(p1, 923, 939), QStringLiteral("00000000000084000"));  // [45]
    EXPECT_EQ(at(p1, 940, 956), QStringLiteral("00000000000200000"));  // [46]
    EXPECT_EQ(at(p1, 1570, 1581), QStringLiteral("</T30301000>"));
    const QString p3 = all.mid(328 + 1581, 402);
    EXPECT_EQ(at(p3, 1, 11), QStringLiteral("<T30303000>"));
    EXPECT_EQ(at(p3, 323, 339), QStringLiteral("00000000000190000"));  // [69]
    EXPECT_EQ(at(p3, 374, 390), QStringLiteral("00000000000190000"));  // [71]
    EXPECT_EQ(all.mid(328 + 1581 + 402), QStringLiteral("</T303020261T0000>"));
}

TEST_F(AeatFiles, ANegativeResultIsCompensatedAndCarriesItsSign) {
    purchase(1, "2026-04-01", 60, 0, {10000000, 0, 0, 0});
    const ModelFigures q2 = figures(Model::M303, "2T");
    EXPECT_EQ(q2.value("71"), Money::fromUnits(-2100000));
    EXPECT_EQ(q2.declarationType, QStringLiteral("C"));
    const QString p1 = file(q2).mid(328, 1581);
    EXPECT_EQ(at(p1, 940, 956), QStringLiteral("N0000000000021000"));
    // In the last period of the year a negative result may be refunded.
    purchase(2, "2026-12-01", 60, 0, {10000000, 0, 0, 0});
    EXPECT_EQ(figures(Model::M303, "12").declarationType, QStringLiteral("D"));
}

TEST_F(AeatFiles, The111AddsUpTheWithholdingsOfThePeriodsPurchases) {
    supplier(1, "Gestoria Pla", "54362315K");
    supplier(2, "Arquitecte Vidal", "11111111H");
    purchaseFrom(1, 1, "2026-01-15", 100000, 15000);  // 1.000 withheld 150
    purchaseFrom(2, 1, "2026-02-15", 50000, 7500);
    purchaseFrom(3, 2, "2026-03-15", 200000, 30000);
    purchaseFrom(4, 2, "2026-04-01", 200000, 30000);  // next quarter
    purchaseFrom(5, 2, "2026-03-20", 80000);          // no withholding
    const ModelFigures fig = figures(Model::M111, "1T");
    EXPECT_EQ(fig.value("07"), Money::fromUnits(2 * Money::kScale));
    EXPECT_EQ(fig.value("08"), Money::fromUnits(35000000));
    EXPECT_EQ(fig.value("09"), Money::fromUnits(5250000));
    EXPECT_EQ(fig.value("30"), Money::fromUnits(5250000));
    const QString all = file(fig);
    EXPECT_EQ(at(all, 1, 17), QStringLiteral("<T111020261T0000>"));
    const QString p = all.mid(328, 1000);
    EXPECT_EQ(at(p, 1, 11), QStringLiteral("<T11101000>"));
    EXPECT_EQ(at(p, 13, 13), QStringLiteral("I"));
    EXPECT_EQ(at(p, 14, 22), QStringLiteral("B64717838"));
    EXPECT_EQ(at(p, 103, 108), QStringLiteral("20261T"));
    EXPECT_EQ(at(p, 109, 116), QStringLiteral("00000000"));
    EXPECT_EQ(at(p, 193, 200), QStringLiteral("00000002"));
    EXPECT_EQ(at(p, 201, 217), QStringLiteral("00000000000350000"));
    EXPECT_EQ(at(p, 218, 234), QStringLiteral("00000000000052500"));
    EXPECT_EQ(at(p, 487, 503), QStringLiteral("00000000000052500"));
    EXPECT_EQ(at(p, 521, 537), QStringLiteral("00000000000052500"));
    EXPECT_EQ(at(p, 989, 1000), QStringLiteral("</T11101000>"));
    EXPECT_EQ(all.size(), 328 + 1000 + 18);
}

TEST_F(AeatFiles, The347DeclaresWhoPassesTheThresholdWithTheQuartersAndTheCash) {
    customer(1, "Just Above", "B58378431", "08001");
    customer(2, "Just Below", "A13585625", "17001");
    customer(3, "Cash Only Below", "J99216582", "25001");
    supplier(1, "Netted Below", "B64717838", "46001");
    supplier(2, "Above With Credit Note", "A11111119", "43001");
    // 3.005,07 in two quarters (bases chosen so that base + 21 % is exact).
    saleTo(1, 1, "2026-02-01", 124400);  // 1.505,24
    saleTo(2, 1, "2026-05-01", 123953);  // 1.499,8313 → 3.005,0713 in the year
    saleTo(3, 2, "2026-03-01", 248352);  // 3.005,0592: not above
    saleTo(4, 3, "2026-07-01", 100000);  // 1.210,00
    // An invoice of the year before, in the same files, is not this year's.
    saleTo(5, 2, "2025-12-31", 100000);
    purchaseFrom(1, 1, "2026-01-10", 300000);   // 3.630,00
    purchaseFrom(2, 1, "2026-11-10", -100000);  // credit note -1.210,00 → 2.420,00
    purchaseFrom(3, 2, "2026-04-10", 400000);   // 4.840,00
    purchaseFrom(4, 2, "2026-10-10", -50000);   // -605,00 → 4.235,00
    // Cash: 6.000,01 from customer 1, 6.000,00 from customer 3, through a cash account.
    exec(tesorer(),
         "insert into entidades (Id, Grup, entidad) values (91, 570, 'Caja'), "
         "(92, 572, 'Banco')");
    exec(tesorer(),
         "insert into movimientos (data, entidad, cliente, D, H) values "
         "('2026-02-01', 91, 1, 50000000, 0), ('2026-05-01', 91, 1, 10000100, 0), "
         "('2026-07-01', 91, 3, 60000000, 0), ('2026-07-02', 92, 3, 90000000, 0)");

    const ModelFigures fig = figures(Model::M347, "0A");
    QStringList declared;
    for (const auto& row : fig.parties.rows) declared << std::get<QString>(row[1]);
    EXPECT_EQ(declared, (QStringList{"Above With Credit Note", "Just Above"}));
    EXPECT_EQ(fig.value("01"), Money::fromUnits(2 * Money::kScale));
    EXPECT_EQ(fig.value("02"), Money::fromUnits(30050713 + 42350000));

    const QStringList recs = records(file(fig));
    ASSERT_EQ(recs.size(), 3);
    for (const QString& r : recs) EXPECT_EQ(r.size(), 500);
    const QString& head = recs[0];
    EXPECT_EQ(at(head, 1, 8), QStringLiteral("13472026"));
    EXPECT_EQ(at(head, 9, 17), QStringLiteral("B64717838"));
    EXPECT_EQ(at(head, 18, 57), QStringLiteral("FERRETERIA AVILA S.L.").leftJustified(40));
    EXPECT_EQ(at(head, 58, 58), QStringLiteral("T"));
    EXPECT_EQ(at(head, 108, 120), QStringLiteral("3472026000001"));
    EXPECT_EQ(at(head, 121, 135), QStringLiteral("  0000000000000"));
    EXPECT_EQ(at(head, 136, 144), QStringLiteral("000000002"));
    EXPECT_EQ(at(head, 145, 160), QStringLiteral(" 000000000724007"));

    const QString& above = recs[2];  // key B after key A
    EXPECT_EQ(at(above, 1, 17), QStringLiteral("23472026B64717838"));
    EXPECT_EQ(at(above, 18, 26), QStringLiteral("B58378431"));
    EXPECT_EQ(at(above, 36, 75), QStringLiteral("JUST ABOVE").leftJustified(40));
    EXPECT_EQ(at(above, 76, 78), QStringLiteral("D08"));
    EXPECT_EQ(at(above, 82, 82), QStringLiteral("B"));
    EXPECT_EQ(at(above, 83, 98), QStringLiteral(" 000000000300507"));
    EXPECT_EQ(at(above, 101, 115), QStringLiteral("000000000600001"));  // cash 6.000,01
    EXPECT_EQ(at(above, 132, 135), QStringLiteral("2026"));
    EXPECT_EQ(at(above, 136, 151), QStringLiteral(" 000000000150524"));
    EXPECT_EQ(at(above, 168, 183), QStringLiteral(" 000000000149983"));
    EXPECT_EQ(at(above, 200, 215), QStringLiteral(" 000000000000000"));
    EXPECT_EQ(at(above, 232, 247), QStringLiteral(" 000000000000000"));

    const QString& credit = recs[1];
    EXPECT_EQ(at(credit, 82, 82), QStringLiteral("A"));
    EXPECT_EQ(at(credit, 77, 78), QStringLiteral("43"));
    EXPECT_EQ(at(credit, 83, 98), QStringLiteral(" 000000000423500"));
    EXPECT_EQ(at(credit, 101, 115), QString(15, u'0'));
    EXPECT_EQ(at(credit, 132, 135), QStringLiteral("0000"));
    EXPECT_EQ(at(credit, 232, 247), QStringLiteral("N000000000060500"));
    // The quarters add up to the year.
    for (const QString& r : recs.mid(1)) {
        qint64 sum = 0;
        for (int q = 0; q < 4; ++q) {
            const int p = 136 + 32 * q;
            const qint64 v = at(r, p + 1, p + 15).toLongLong();
            sum += at(r, p, p) == u"N" ? -v : v;
        }
        EXPECT_EQ(sum, at(r, 84, 98).toLongLong() * (at(r, 83, 83) == u"N" ? -1 : 1));
    }
}

TEST_F(AeatFiles, CashAboveTheLimitIsDeclaredEvenBelowTheOperationsThreshold) {
    customer(1, "Pays Cash", "B58378431");
    saleTo(1, 1, "2026-02-01", 100000);
    exec(tesorer(), "insert into entidades (Id, Grup, entidad) values (91, 570, 'Caja')");
    exec(tesorer(),
         "insert into movimientos (data, entidad, cliente, D, H) values "
         "('2026-02-01', 91, 1, 60000100, 0)");
    const ModelFigures fig = figures(Model::M347, "0A");
    ASSERT_EQ(fig.parties.rows.size(), 1u);
    EXPECT_EQ(std::get<Money>(fig.parties.rows[0][9]), Money::fromUnits(60000100));
}

TEST_F(AeatFiles, IntraCommunityOperationsGoToThe349AndNotToThe347) {
    customer(1, "Client de Lyon", "FR12345678901");
    customer(2, "Kunde", "DE123456789");
    supplier(1, "Fournisseur", "FR98765432109");
    saleTo(1, 1, "2026-01-10", 500000, "Factura Intracomunitaria");
    saleTo(2, 1, "2026-02-10", 250000, "Factura Intracomunitaria");
    saleTo(3, 2, "2026-04-10", 999900, "Factura Intracomunitaria");  // next quarter
    purchaseFrom(1, 1, "2026-03-10", 400000, 0, "Factura Intracomunitaria");
    const ModelFigures fig = figures(Model::M349, "1T");
    EXPECT_EQ(fig.value("01"), Money::fromUnits(2 * Money::kScale));
    EXPECT_EQ(fig.value("02"), Money::fromUnits(1150000 * 100));
    const QStringList recs = records(file(fig));
    ASSERT_EQ(recs.size(), 3);
    EXPECT_EQ(at(recs[0], 1, 8), QStringLiteral("13492026"));
    EXPECT_EQ(at(recs[0], 108, 120), QStringLiteral("3492026000001"));
    EXPECT_EQ(at(recs[0], 136, 137), QStringLiteral("1T"));
    EXPECT_EQ(at(recs[0], 138, 146), QStringLiteral("000000002"));
    EXPECT_EQ(at(recs[0], 147, 161), QStringLiteral("000000001150000"));
    // Acquisitions (A) sort before deliveries (E).
    EXPECT_EQ(at(recs[1], 76, 92), QStringLiteral("FR98765432109").leftJustified(17));
    EXPECT_EQ(at(recs[1], 133, 133), QStringLiteral("A"));
    EXPECT_EQ(at(recs[1], 134, 146), QStringLiteral("0000000400000"));
    EXPECT_EQ(at(recs[2], 76, 77), QStringLiteral("FR"));
    EXPECT_EQ(at(recs[2], 78, 92), QStringLiteral("12345678901").leftJustified(15));
    EXPECT_EQ(at(recs[2], 93, 132), QStringLiteral("CLIENT DE LYON").leftJustified(40));
    EXPECT_EQ(at(recs[2], 133, 133), QStringLiteral("E"));
    EXPECT_EQ(at(recs[2], 134, 146), QStringLiteral("0000000750000"));
    // Not in the 347, though above its threshold.
    EXPECT_TRUE(figures(Model::M347, "0A").parties.rows.empty());
}

TEST_F(AeatFiles, DeliveriesAndExportsAtNoRateFillTheirOwnBoxes) {
    customer(1, "Client de Lyon", "FR12345678901");
    saleTo(1, 1, "2026-01-10", 500000, "Factura Intracomunitaria", 0);
    saleTo(2, 1, "2026-01-11", 70000, "Factura a Canarias", 0);
    saleTo(3, 1, "2026-01-12", 10000, "", 0);  // exempt: no box, no accrual
    const ModelFigures fig = figures(Model::M303, "1T");
    EXPECT_EQ(fig.value("59"), Money::fromUnits(50000000));
    EXPECT_EQ(fig.value("60"), Money::fromUnits(7000000));
    EXPECT_EQ(fig.value("27"), Money{});
    const QString p3 = file(fig).mid(328 + 1581, 402);
    EXPECT_EQ(at(p3, 12, 28), QStringLiteral("00000000000500000"));
    EXPECT_EQ(at(p3, 29, 45), QStringLiteral("00000000000070000"));
}
