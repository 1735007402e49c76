// Collection and payment runs: the draft, the refusals and the run written in one piece.
#include "treasury/runs.h"
#include "context/messages.h"
#include "portfolio_fixture.h"

using namespace tallora;
using namespace tallora::treasury;
using namespace tallora::testing;

namespace {

class Runs : public PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        proveidor = supplier("Suministros Lledó");
        client = customer("Bar Neptuno");
        exec(tesorer(), "insert into entidades (Id, Grup, entidad) values (3, 572, 'Banco Norte')");
    }

    // A purchase of the exercise, not yet paid, and its receipt; gives the receipt's Id.
    std::int64_t purchase(std::int64_t ordre, std::int64_t total, std::int64_t paid = 0,
                          const QString& ejercicio = "2026") {
        exec(frasIn(), QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, NomProveidor, "
                                      "TOTAL, descripcio, Pagada, Marca) values (%1, '2026-03-02', "
                                      "%2, 'Suministros Lledó', %3, 'Fra. %1', 0, 0)")
                           .arg(ordre)
                           .arg(proveidor)
                           .arg(total));
        return receipt({.inOut = "In",
                        .party = proveidor,
                        .data = QDate(2026, 3, 2),
                        .vencimiento = std::nullopt,
                        .ejercicio = ejercicio,
                        .factura = QStringLiteral("Fra. %1").arg(ordre),
                        .total = total,
                        .pendiente = paid,
                        .frasIn = ordre});
    }

    std::int64_t sale(std::int64_t ordre, std::int64_t total, const QString& factura) {
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, Client, Total, "
                                       "Descripcio, Cobrada, Marca) values (%1, '2026-04-01', %2, "
                                       "%3, '%4', 0, 0)")
                            .arg(ordre)
                            .arg(client)
                            .arg(total)
                            .arg(factura));
        return receipt({.inOut = "Out",
                        .party = client,
                        .data = QDate(2026, 4, 1),
                        .vencimiento = std::nullopt,
                        .factura = factura,
                        .total = total,
                        .frasOut = ordre});
    }

    QStringList receiptRows() const {
        return rows(cartera(), "select Id, Borrador, Temporal, Pendiente from cartera order by Id");
    }
    QStringList movements() const {
        return rows(tesorer(),
                    "select data, entidad, cliente, proveedor, FrasIn, FrasOut, "
                    "concepto, D, H from movimientos order by Id");
    }
    QStringList purchaseFlags() const {
        return rows(frasIn(), "select Ordre, Pagada, Marca from FrasIN order by Ordre");
    }

    RunOutcome pay(const QDate& date = QDate(2026, 5, 10)) {
        return Contabilizar(f.ctx, dialogs, kPayments, 3, date);
    }

    std::int64_t proveidor = 0, client = 0;
};

}  // namespace

TEST_F(Runs, ZeroOnAReceiptOf100With30PaidPutsTheRestInTheDraft) {
    const auto id = purchase(1, 1000000, 300000);
    const auto r = Passa_Recibo(f.ctx, dialogs, kPayments, id, "0");
    ASSERT_TRUE(r);
    EXPECT_TRUE(r->moved);
    EXPECT_EQ(r->field, "0,00");
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|s|700000|300000").arg(id)});
    const auto draft = draftReceipts(f.ctx, kPayments);
    ASSERT_EQ(draft.size(), 1u);
    EXPECT_EQ(draft[0].amount, "70,00");
    EXPECT_EQ(draft[0].total, "100,00");
    EXPECT_EQ(draftTotal(f.ctx, kPayments), std::optional<QString>("70,00"));
    EXPECT_TRUE(openReceipts(f.ctx, kPayments).empty());
    // A blank or negative amount also means all that is due.
    Treu_Recibo(f.ctx, id);
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|n|0|300000").arg(id)});
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kPayments, id, "-5")->moved);
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|s|700000|300000").arg(id)});
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(Runs, MoreThanIsDueIsRefusedAndTheFieldShowsWhatIsDue) {
    const auto id = purchase(1, 1000000, 300000);
    const auto r = Passa_Recibo(f.ctx, dialogs, kPayments, id, "80");
    ASSERT_TRUE(r);
    EXPECT_FALSE(r->moved);
    EXPECT_EQ(r->field, "70,00");
    EXPECT_EQ(shown(), QStringList{"S:" + Missatge(f.ctx, 6729)});
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|n|0|300000").arg(id)});
    // The collection side says it with its own message.
    const auto c = sale(5, 500000, "Fra. 5");
    EXPECT_FALSE(Passa_Recibo(f.ctx, dialogs, kCollections, c, "50,01")->moved);
    EXPECT_EQ(shown().last(), "S:" + Missatge(f.ctx, 6702));
    EXPECT_FALSE(Passa_Recibo(f.ctx, dialogs, kPayments, 999, "1"));
}

TEST_F(Runs, FortyThenThirtyInTwoRunsSettleTheReceiptOnlyAtTheSecond) {
    const auto id = purchase(1, 1000000, 300000);
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kPayments, id, "40")->moved);
    RunOutcome first = pay();
    ASSERT_FALSE(first.refusal);
    ASSERT_EQ(first.settlements.size(), 1u);
    EXPECT_FALSE(first.settlements[0].settled);
    // A partial settlement marks the invoice but does not settle it.
    EXPECT_EQ(purchaseFlags(), QStringList{"1|0|-1"});
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|n|0|700000").arg(id)});
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kPayments, id, "30")->moved);
    RunOutcome second = pay(QDate(2026, 6, 1));
    ASSERT_EQ(second.settlements.size(), 1u);
    EXPECT_TRUE(second.settlements[0].settled);
    EXPECT_EQ(purchaseFlags(), QStringList{"1|-1|-1"});
    EXPECT_TRUE(receiptRows().isEmpty());
    EXPECT_EQ(movements(),
              (QStringList{
                  QStringLiteral("2026-05-10|3|0|%1|1|0|S/Fra. Fra. 1|0|400000").arg(proveidor),
                  QStringLiteral("2026-06-01|3|0|%1|1|0|S/Fra. Fra. 1|0|300000").arg(proveidor)}));
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(Runs, ATypedAmountIsTakenToTheCentAsTheFieldShowsIt) {
    const auto id = purchase(1, 1000000);
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kPayments, id, "30,005")->moved);
    EXPECT_EQ(draftReceipts(f.ctx, kPayments)[0].amount, "30,01");
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|s|300100|0").arg(id)});
    Treu_Recibo(f.ctx, id);
    // Rounded first, so that what shows as due is never refused.
    exec(cartera(), "update cartera set Pendiente = 300000");
    EXPECT_TRUE(Passa_Recibo(f.ctx, dialogs, kPayments, id, "70,004")->moved);
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(Runs, ARoundingRemainderKeepsTheReceiptOpen) {
    const auto id = purchase(1, 1000050);  // 100,005
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kPayments, id, "100,00")->moved);
    RunOutcome run = pay();
    ASSERT_EQ(run.settlements.size(), 1u);
    EXPECT_FALSE(run.settlements[0].settled);
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|n|0|1000000").arg(id)});
    EXPECT_EQ(purchaseFlags(), QStringList{"1|0|-1"});
}

TEST_F(Runs, ACollectionRunDebitsTheAccountAndKeepsAConceptThatSaysItsInvoice) {
    const auto a = sale(1, 1210000, "N/Fra. 2026/1");
    const auto b = sale(2, 500000, "Fra. 2");
    Passa_Tots(f.ctx, kCollections);
    EXPECT_EQ(draftTotal(f.ctx, kCollections), std::optional<QString>("171,00"));
    RunOutcome run = Contabilizar(f.ctx, dialogs, kCollections, 3, QDate(2026, 5, 10));
    ASSERT_EQ(run.settlements.size(), 2u);
    // Most recent receipt first.
    EXPECT_EQ(run.settlements[0].receipt, b);
    EXPECT_EQ(run.settlements[1].receipt, a);
    EXPECT_EQ(
        movements(),
        (QStringList{QStringLiteral("2026-05-10|3|%1|0|0|2|N/Fra. Fra. 2|500000|0").arg(client),
                     QStringLiteral("2026-05-10|3|%1|0|0|1|N/Fra. 2026/1|1210000|0").arg(client)}));
    EXPECT_EQ(rows(frasOut(), "select Ordre, Cobrada, Marca from FrasOut order by Ordre"),
              (QStringList{"1|-1|-1", "2|-1|-1"}));
    EXPECT_TRUE(receiptRows().isEmpty());
}

TEST_F(Runs, EachSideKeepsItsOwnDraftAndAllIgnoresTheParty) {
    const auto p = purchase(1, 100000);
    const auto other = supplier("Otro");
    const auto q = receipt({.inOut = "In",
                            .party = other,
                            .data = QDate(2026, 1, 5),
                            .vencimiento = std::nullopt,
                            .factura = "X",
                            .total = 50000,
                            .pendiente = 10000,
                            .frasIn = 9});
    const auto c = sale(1, 200000, "Fra. 1");
    ASSERT_EQ(openReceipts(f.ctx, kPayments, proveidor).size(), 1u);
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kCollections, c, "")->moved);
    Passa_Tots(f.ctx, kPayments);
    EXPECT_EQ(receiptRows(), (QStringList{QStringLiteral("%1|s|100000|0").arg(p),
                                          QStringLiteral("%1|s|40000|10000").arg(q),
                                          QStringLiteral("%1|s|200000|0").arg(c)}));
    Buida_Borrador(f.ctx, kPayments);
    EXPECT_EQ(receiptRows(),
              (QStringList{QStringLiteral("%1|n|0|0").arg(p), QStringLiteral("%1|n|0|10000").arg(q),
                           QStringLiteral("%1|s|200000|0").arg(c)}));
    EXPECT_FALSE(draftTotal(f.ctx, kPayments));
    // The open list: by date, what is left to settle.
    const auto open = openReceipts(f.ctx, kPayments);
    ASSERT_EQ(open.size(), 2u);
    EXPECT_EQ(open[0].id, q);
    EXPECT_EQ(open[0].data, "05/01/2026");
    EXPECT_EQ(open[0].amount, "4,00");
}

TEST_F(Runs, ARunIsRefusedWithoutADraftAnAccountOrAnOpenMonth) {
    EXPECT_EQ(pay().refusal, RunRefusal::EmptyDraft);
    EXPECT_TRUE(shown().isEmpty());
    const auto id = purchase(1, 100000);
    Passa_Recibo(f.ctx, dialogs, kPayments, id, "0");
    EXPECT_EQ(Contabilizar(f.ctx, dialogs, kPayments, std::nullopt, QDate(2026, 5, 1)).refusal,
              RunRefusal::NoAccount);
    EXPECT_EQ(shown(), QStringList{"S:" + Missatge(f.ctx, 6728)});
    f.ctx.chkmesos[4] = 1;  // May
    EXPECT_EQ(pay().refusal, RunRefusal::MonthLocked);
    EXPECT_EQ(shown().last(), "S:" + Missatge(f.ctx, 622));
    EXPECT_TRUE(movements().isEmpty());
    EXPECT_EQ(receiptRows(), QStringList{QStringLiteral("%1|s|100000|0").arg(id)});
}

TEST_F(Runs, AnotherExercisesReceiptMarksTheInvoiceOfTheSameNumberInTheOpenExercise) {
    // The 2025 receipt of invoice 7 is paid in 2026: the number is looked for in 2026's file.
    purchase(7, 200000);
    exec(cartera(), "delete from cartera");
    const auto old = receipt({.inOut = "In",
                              .party = proveidor,
                              .data = QDate(2025, 11, 3),
                              .vencimiento = std::nullopt,
                              .ejercicio = "2025",
                              .factura = "Fra. 2025/7",
                              .total = 80000,
                              .frasIn = 7});
    Passa_Recibo(f.ctx, dialogs, kPayments, old, "0");
    pay();
    EXPECT_EQ(purchaseFlags(), QStringList{"7|-1|-1"});
    EXPECT_TRUE(receiptRows().isEmpty());
    // An invoice number the open exercise lacks: the update finds nothing, the run goes on.
    const auto lost = receipt({.inOut = "In",
                               .party = proveidor,
                               .data = QDate(2025, 12, 1),
                               .vencimiento = std::nullopt,
                               .ejercicio = "2025",
                               .factura = "Fra. 2025/8",
                               .total = 1000,
                               .frasIn = 8});
    Passa_Recibo(f.ctx, dialogs, kPayments, lost, "0");
    EXPECT_EQ(pay().settlements.size(), 1u);
    EXPECT_EQ(movements().size(), 2);
}

TEST_F(Runs, AFaultInTheThirdSettlementLeavesEverythingAsBeforeTheRun) {
    for (int i = 1; i <= 5; ++i) purchase(i, 100000 * i, i == 2 ? 50000 : 0);
    Passa_Tots(f.ctx, kPayments);
    // A partial one among them.
    const auto draft = draftReceipts(f.ctx, kPayments);
    Treu_Recibo(f.ctx, draft[3].id);
    Passa_Recibo(f.ctx, dialogs, kPayments, draft[3].id, "1");
    exec(tesorer(),
         "insert into movimientos (data, entidad, concepto, D, H) values "
         "('2026-01-02', 3, 'Apertura', 10000, 0)");
    exec(tesorer(),
         "create trigger fault before insert on movimientos "
         "when (select count(*) from movimientos) >= 3 "
         "begin select raise(abort, 'disk full'); end");
    const QStringList receiptsBefore = receiptRows(), movementsBefore = movements(),
                      flagsBefore = purchaseFlags();
    EXPECT_THROW(pay(), store::StoreError);
    EXPECT_EQ(receiptRows(), receiptsBefore);
    EXPECT_EQ(movements(), movementsBefore);
    EXPECT_EQ(purchaseFlags(), flagsBefore);
    // Pressing again, with the fault gone, does the whole run.
    exec(tesorer(), "drop trigger fault");
    EXPECT_EQ(pay().settlements.size(), 5u);
    EXPECT_EQ(movements().size(), 6);
    EXPECT_EQ(receiptRows().size(), 1);  // the partial one stays open
}
