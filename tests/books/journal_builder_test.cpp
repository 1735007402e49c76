// The journal builders: one row per rate, the numbering of each side, where Debe, Haber,
// TOTAL and the expense family fall, the sales' six-character description, the rebuild,
// and a fault that keeps the rows built.
#include "books/journal_builder.h"
#include "books_fixture.h"

using namespace tallora;
using namespace tallora::books;
using namespace tallora::testing;

namespace {

class Journal : public BooksData {};

}  // namespace

TEST_F(Journal, ASaleOfThreeRatesNumbersEachRowWithDebeFirstAndTotalLast) {
    exec(gest(), "insert into Clients (client, nom, nif) values (1, 'Bar Centre', 'B11111111')");
    sale(1, "2026-01-10", "F-1", 1000000, {0, 0, 0});  // no rate: the row before
    sale(2, "2026-01-20", "F-2", 3640000, {1000000, 1000000, 1000000});
    Genera_Diari_Vendes(f.ctx);
    EXPECT_EQ(diari("D",
                    "Ordre, OrdreGRAL, OrdreIVAr, Apunt, nif, Debe, TOTAL, BaseIVA, "
                    "TipusIVA, IVA, TipusREC, REC"),
              (QStringList{"1|1|0|1|B11111111|1000000|1000000|1000000|0|0|0|0",
                           "2|2|1|2|B11111111|3640000|0|1000000|210000|210000|52000|52000",
                           "2|2|2|3|B11111111|0|0|1000000|100000|100000|0|0",
                           "2|2|3|4|B11111111|0|3640000|1000000|40000|40000|0|0"}));
}

TEST_F(Journal, ASaleOfTheSecondRateOnlyHasDebeAndTotalOnItsOneRow) {
    sale(1, "2026-01-10", "F-1", 1100000, {0, 1000000, 0});
    Genera_Diari_Vendes(f.ctx);
    EXPECT_EQ(diari("D", "OrdreIVAr, Debe, TOTAL, BaseIVA, TipusIVA"),
              QStringList{"1|1100000|1100000|1000000|100000"});
}

TEST_F(Journal, ASaleWithoutVatShowsItsAmountBeforeWithholdingAsBase) {
    sale(1, "2026-01-10", "F-1", 850000, {0, 0, 0}, 150000, 1000000);
    Genera_Diari_Vendes(f.ctx);
    EXPECT_EQ(diari("D", "OrdreIVAr, BaseIVA, TipusIVA, TOTAL, BaseRET, TipusRET, RET"),
              QStringList{"0|1000000|0|850000|1000000|150000|150000"});
}

TEST_F(Journal, ASalesDescriptionKeepsItsLastSixCharactersAndItsNumberAllDigits) {
    sale(1, "2026-01-10", "123456", 100, {0, 0, 0});
    sale(2, "2026-01-11", "A/2026-0042", 100, {0, 0, 0});
    sale(3, "2026-01-12", "1234567", 100, {0, 0, 0});
    Genera_Diari_Vendes(f.ctx);
    EXPECT_EQ(diari("D", "descripcio, num_fra"),
              (QStringList{"123456|123456", "6-0042|20260042", "234567|1234567"}));
}

TEST_F(Journal, APurchaseKeepsOneVatNumberAndPutsHaberTotalAndFamilyOnItsFirstRow) {
    exec(gest(), "insert into Proveidors (proveidor, nom, nif) values (1, 'Olis', 'B22222222')");
    purchase(1, "2026-02-01", 62, 2420000, {0, 1000000, 1000000, 0});
    purchase(2, "2026-02-02", 20, 1210000, {1000000, 0, 0, 0});
    purchase(3, "2026-02-03", 64, 500000, {0, 0, 0, 0}, 100000);
    Genera_Diari_Compres(f.ctx);
    EXPECT_EQ(diari("H",
                    "Ordre, OrdreGRAL, OrdreIVAs, Apunt, nif, Haber, TOTAL, SERVEIS, "
                    "INVERSIONS, PERSONAL, BaseIVA, RET"),
              (QStringList{"1|1|1|1|B22222222|2420000|2420000|2000000|0|0|1000000|0",
                           "1|1|1|2|B22222222|0|0|0|0|0|1000000|0",
                           "2|2|2|3|B22222222|1210000|1210000|0|1000000|0|1000000|0",
                           // No rate: in the journal, outside the VAT book.
                           "3|3|0|4|B22222222|500000|500000|0|0|600000|0|100000"}));
}

TEST_F(Journal, AnEarlierDateTakesItsPlaceAndEachSideIsRebuiltFromOne) {
    purchase(1, "2026-03-01", 60, 121, {100, 0, 0, 0});
    purchase(2, "2026-03-05", 60, 121, {100, 0, 0, 0});
    sale(1, "2026-03-01", "F-1", 121, {100, 0, 0});
    Genera_Diari_Compres(f.ctx);
    Genera_Diari_Vendes(f.ctx);
    const QStringList once = diari("H", "Ordre, OrdreGRAL, OrdreIVAs");
    Genera_Diari_Compres(f.ctx);
    EXPECT_EQ(diari("H", "Ordre, OrdreGRAL, OrdreIVAs"), once);
    EXPECT_EQ(diari("D", "Ordre, OrdreGRAL"), QStringList{"1|1"});
    // Posted later, dated earlier: every later invoice moves down one.
    purchase(3, "2026-02-01", 60, 121, {100, 0, 0, 0});
    Genera_Diari_Compres(f.ctx);
    EXPECT_EQ(diari("H", "Ordre, OrdreGRAL, OrdreIVAs"), (QStringList{"3|1|1", "1|2|2", "2|3|3"}));
    EXPECT_EQ(diari("D", "Ordre, OrdreGRAL"), QStringList{"1|1"});
}

TEST_F(Journal, AFaultEndsTheRunAtThatInvoiceKeepingTheRowsBuilt) {
    sale(1, "2026-01-10", "F-1", 121, {100, 0, 0});
    sale(2, "2026-01-11", "F-2", 0, {100, -100, 0});  // bases that cancel each other
    sale(3, "2026-01-12", "F-3", 121, {100, 0, 0});
    Genera_Diari_Vendes(f.ctx);
    // Its rows were saved before the bases summed to nothing; the third is never reached.
    EXPECT_EQ(diari("D", "Ordre"), (QStringList{"1", "2", "2"}));
    // A null amount stops a purchase run in the same way.
    purchase(1, "2026-01-10", 60, 121, {100, 0, 0, 0});
    purchase(2, "2026-01-11", 60, 121, {100, 0, 0, 0});
    exec(frasIn(), "update FrasIN set Iva2 = null where Ordre = 2");
    Genera_Diari_Compres(f.ctx);
    EXPECT_EQ(diari("H", "Ordre"), QStringList{"1"});
}
