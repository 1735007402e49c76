// The portfolio screen's logic: the party lists, the rows of each tab in both orders, the
// totals still due, and taking a receipt out by hand.
#include "treasury/portfolio.h"
#include "context/messages.h"
#include "portfolio_fixture.h"

#include <QFile>

using namespace tallora;
using namespace tallora::treasury;
using tallora::testing::ReceiptRow;

namespace {

// "id|party|data|vencimiento|factura|total|pendiente" of each row.
QStringList texts(const std::vector<Recibo>& rows) {
    QStringList out;
    for (const Recibo& r : rows)
        out << QStringList{QString::number(r.id),
                           r.party,
                           r.data,
                           r.vencimiento,
                           r.factura,
                           r.total,
                           r.pendiente}
                   .join(u'|');
    return out;
}

QStringList names(const std::vector<Party>& parties) {
    QStringList out;
    for (const Party& p : parties) out << QStringLiteral("%1 %2").arg(p.number).arg(p.nom);
    return out;
}

class Portfolio : public tallora::testing::PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        ferreteria = customer(QStringLiteral("Ferretería Núñez S.A."));
        bar = customer(QStringLiteral("Bar Centre"));
        olis = supplier(QStringLiteral("Olis del Camp"));
        paper = supplier(QStringLiteral("Paperera Vic"));
    }

    // Three receipts of the customers (one of 2025), two of the suppliers.
    void someReceipts() {
        r1 = receipt({"Out", ferreteria, QDate(2026, 2, 10), QDate(2026, 4, 10), "2026", "F-12",
                      12345000, 0, 12, 0});
        r2 = receipt({"Out", bar, QDate(2025, 12, 20), std::nullopt, "2025", "F-2025/88", 500000,
                      125000, 88, 0});
        r3 = receipt({"Out", ferreteria, QDate(2026, 1, 5), QDate(2026, 3, 1), "2026", "F-3",
                      1000000, 1000000 - 1, 3, 0});
        p1 = receipt({"In", olis, QDate(2026, 3, 1), QDate(2026, 3, 31), "2026", "A-77 B", 2420000,
                      0, 0, 7});
        p2 = receipt({"In", paper, QDate(2026, 1, 15), std::nullopt, "2026", "889", 605000,
                      605000 / 2, 0, 2});
    }

    std::int64_t ferreteria = 0, bar = 0, olis = 0, paper = 0;
    std::int64_t r1 = 0, r2 = 0, r3 = 0, p1 = 0, p2 = 0;
};

}  // namespace

TEST_F(Portfolio, AnEmptyTableShowsTotalsZeroAndNoRow) {
    EXPECT_TRUE(Llista_Recibos(f.ctx, {Tab::Clientes, std::nullopt, Orden::Fecha}).empty());
    EXPECT_TRUE(
        Llista_Recibos(f.ctx, {Tab::Proveedores, std::nullopt, Orden::Vencimiento}).empty());
    const Totals t = Totales(f.ctx);
    EXPECT_EQ(t.txtCobrar, QStringLiteral("0"));
    EXPECT_EQ(t.txtPagar, QStringLiteral("0"));
}

TEST_F(Portfolio, OneDirectionWithRowsAndTheOtherWithout) {
    receipt({"In", olis, QDate(2026, 3, 1), std::nullopt, "2026", "A-1", 100000, 100000, 0, 1});
    const Totals t = Totales(f.ctx);
    // Rows that balance show the amount, not "0": only no row at all gives "0".
    EXPECT_EQ(t.txtPagar, QStringLiteral("0,00"));
    EXPECT_EQ(t.txtCobrar, QStringLiteral("0"));
}

TEST_F(Portfolio, TheCustomersTabByDateShowsEveryExerciseWithNamesAndAmounts) {
    someReceipts();
    EXPECT_EQ(
        texts(Llista_Recibos(f.ctx, {Tab::Clientes, std::nullopt, Orden::Fecha})),
        (QStringList{
            QStringLiteral("%1|Bar Centre|20/12/2025||F-2025/88|50,00|12,50").arg(r2),
            QStringLiteral("%1|Ferretería Núñez S.A.|05/01/2026|01/03/2026|F-3|100,00|100,00")
                .arg(r3),
            QStringLiteral("%1|Ferretería Núñez S.A.|10/02/2026|10/04/2026|F-12|1.234,50|0,00")
                .arg(r1),
        }));
}

TEST_F(Portfolio, TheSuppliersTabShowsOnlyPaymentsDue) {
    someReceipts();
    EXPECT_EQ(
        texts(Llista_Recibos(f.ctx, {Tab::Proveedores, std::nullopt, Orden::Fecha})),
        (QStringList{
            QStringLiteral("%1|Paperera Vic|15/01/2026||889|60,50|30,25").arg(p2),
            QStringLiteral("%1|Olis del Camp|01/03/2026|31/03/2026|A-77 B|242,00|0,00").arg(p1),
        }));
}

TEST_F(Portfolio, TheDueDateOrderPutsRowsWithoutOneFirstAndTiesByNumber) {
    someReceipts();
    const std::int64_t r4 =
        receipt({"Out", bar, QDate(2026, 1, 1), QDate(2026, 3, 1), "2026", "F-1", 10000, 0, 1, 0});
    const std::int64_t r5 =
        receipt({"Out", bar, QDate(2026, 1, 2), std::nullopt, "2026", "F-2", 10000, 0, 2, 0});
    QStringList ids;
    for (const Recibo& r : Llista_Recibos(f.ctx, {Tab::Clientes, std::nullopt, Orden::Vencimiento}))
        ids << QString::number(r.id);
    EXPECT_EQ(ids, (QStringList{QString::number(r2), QString::number(r5), QString::number(r3),
                                QString::number(r4), QString::number(r1)}));
    // By date the same rows come as their invoices were dated.
    ids.clear();
    for (const Recibo& r : Llista_Recibos(f.ctx, {Tab::Clientes, std::nullopt, Orden::Fecha}))
        ids << QString::number(r.id);
    EXPECT_EQ(ids, (QStringList{QString::number(r2), QString::number(r4), QString::number(r5),
                                QString::number(r3), QString::number(r1)}));
}

TEST_F(Portfolio, AChosenPartyKeepsItsRowsAndLeavesTheTotalsAlone) {
    someReceipts();
    const Totals all = Totales(f.ctx);
    // 1.234,50 + 50,00 - 12,50 + 100,00 - 99,9999; 242,00 + 60,50 - 30,25.
    EXPECT_EQ(all.txtCobrar, QStringLiteral("1.272,00"));
    EXPECT_EQ(all.txtPagar, QStringLiteral("272,25"));
    QStringList ids;
    for (const Recibo& r : Llista_Recibos(f.ctx, {Tab::Clientes, ferreteria, Orden::Fecha}))
        ids << QString::number(r.id);
    EXPECT_EQ(ids, (QStringList{QString::number(r3), QString::number(r1)}));
    EXPECT_EQ(Llista_Recibos(f.ctx, {Tab::Proveedores, paper, Orden::Fecha}).size(), 1u);
    // A customer's number on the suppliers' tab is another party.
    EXPECT_TRUE(Llista_Recibos(f.ctx, {Tab::Proveedores, bar + 100, Orden::Fecha}).empty());
    const Totals after = Totales(f.ctx);
    EXPECT_EQ(after.txtCobrar, all.txtCobrar);
    EXPECT_EQ(after.txtPagar, all.txtPagar);
}

TEST_F(Portfolio, AmountsFollowTheCurrencyAndTheDecimalMark) {
    someReceipts();
    f.ctx.Decimal = 46;
    EXPECT_EQ(Totales(f.ctx).txtCobrar, QStringLiteral("1,272.00"));
    f.ctx.Moneda = QStringLiteral("Ptes.");
    const auto rows = Llista_Recibos(f.ctx, {Tab::Clientes, bar, Orden::Fecha});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].total, QStringLiteral("50"));
    EXPECT_EQ(rows[0].pendiente, QStringLiteral("13"));
}

TEST_F(Portfolio, APartyThatIsNoLongerThereShowsNoName) {
    receipt({"Out", 999, QDate(2026, 5, 1), std::nullopt, "2026", "F-9", 10000, 0, 9, 0});
    const auto rows = Llista_Recibos(f.ctx, {Tab::Clientes, std::nullopt, Orden::Fecha});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].party, QString());
}

TEST_F(Portfolio, ThePartyListsAreInDescendingOrderOfName) {
    customer(QStringLiteral("Ángel Pérez"));
    EXPECT_EQ(names(OMPLE_LLISTA_Clients(f.ctx)),
              (QStringList{QStringLiteral("%1 Ferretería Núñez S.A.").arg(ferreteria),
                           QStringLiteral("%1 Bar Centre").arg(bar),
                           QStringLiteral("%1 Ángel Pérez").arg(bar + 1)}));
    EXPECT_EQ(names(OMPLE_LLISTA_Proveidors(f.ctx)),
              (QStringList{QStringLiteral("%1 Paperera Vic").arg(paper),
                           QStringLiteral("%1 Olis del Camp").arg(olis)}));
}

TEST_F(Portfolio, AMissingPortfolioIsAnErrorOfTheStore) {
    ASSERT_TRUE(QFile::remove(cartera()));
    EXPECT_THROW(Llista_Recibos(f.ctx, {}), store::StoreError);
    EXPECT_THROW(Totales(f.ctx), store::StoreError);
}

TEST_F(Portfolio, TakingAReceiptOutAsksNamingItAndDeletesOnlyOnYes) {
    someReceipts();
    exec(frasOut(),
         "insert into FrasOut (Ordre, data, Client, NomClient, TOTAL, Descripcio, Cobrada) "
         "values (12, '2026-02-10', 1, 'Ferretería Núñez S.A.', 12345000, 'F-12', 0)");
    const auto listed = Llista_Recibos(f.ctx, {Tab::Clientes, ferreteria, Orden::Fecha});
    const Recibo& r = listed.back();
    ASSERT_EQ(r.id, r1);
    const QString question = Missatge(f.ctx, 6686) + QStringLiteral(
                                                         "\n(%1) Ferretería Núñez S.A. "
                                                         "Factura: F-12 Total: 1.234,50")
                                                         .arg(r1);
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_FALSE(Treu_Recibo(f.ctx, dialogs, r));
    EXPECT_EQ(shown(), QStringList{QStringLiteral("Q:") + question});
    EXPECT_EQ(rows(cartera(), "select count(*) from cartera"), QStringList{"5"});

    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(Treu_Recibo(f.ctx, dialogs, r));
    // The invoice is neither paid nor in the portfolio, and has no movement.
    EXPECT_EQ(rows(cartera(), "select count(*) from cartera where FrasOut = 12"), QStringList{"0"});
    EXPECT_EQ(rows(cartera(), "select count(*) from cartera"), QStringList{"4"});
    EXPECT_EQ(rows(frasOut(), "select Cobrada from FrasOut where Ordre = 12"), QStringList{"0"});
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"0"});
    EXPECT_EQ(dialogs.shown().size(), 2u);
}

TEST_F(Portfolio, AFailureTakingAReceiptOutShowsItsDescription) {
    someReceipts();
    const auto listed = Llista_Recibos(f.ctx, {Tab::Proveedores, std::nullopt, Orden::Fecha});
    exec(cartera(),
         "create trigger keep before delete on cartera begin "
         "select raise(abort, 'el rebut està bloquejat'); end");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_FALSE(Treu_Recibo(f.ctx, dialogs, listed.front()));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown()[1].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_TRUE(dialogs.shown()[1].text.contains(QStringLiteral("el rebut està bloquejat")));
    EXPECT_EQ(rows(cartera(), "select count(*) from cartera"), QStringList{"5"});
}
