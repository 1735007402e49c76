// Putting a sale or a purchase back into the portfolio: the question, the movements and
// receipts deleted, the new receipt, the notice, and all or nothing when a step fails.
#include "treasury/add_cartera.h"
#include "context/messages.h"
#include "portfolio_fixture.h"

#include <QFile>

using namespace tallora;
using namespace tallora::treasury;
using tallora::testing::ReceiptRow;

namespace {

const char* kCartera =
    "select data, cliente, proveedor, In_Out, Ejercicio, Factura, Total, Pendiente, Temporal, "
    "Borrador, FrasOut, FrasIn, Vencimiento from cartera order by Id";

class AddCartera : public tallora::testing::PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        client = customer(QStringLiteral("Bar Centre"));
        proveidor = supplier(QStringLiteral("Olis del Camp"));
        // Sale 5, collected in part through the cash box, the rest still due; sale 6 paid.
        exec(frasOut(),
             "insert into FrasOut (Ordre, data, Client, NomClient, TOTAL, Descripcio, Cobrada, "
             "Marca) values (5, '2026-02-14', 1, 'Bar Centre', 3630000, 'F-2026/5', -1, 1), "
             "(6, '2026-02-20', 1, 'Bar Centre', 100000, 'F-2026/6', -1, 0)");
        // Purchase 5 of the supplier, paid.
        exec(frasIn(),
             "insert into FrasIN (Ordre, data, Proveidor, NomProveidor, TOTAL, descripcio, Pagada, "
             "Marca, Periode) values (5, '2026-03-02', 1, 'Olis del Camp', 1210000, 'A-77 B', -1, "
             "1, '1T')");
        exec(tesorer(),
             "insert into movimientos (data, entidad, cliente, proveedor, FrasOut, FrasIn, "
             "concepto, D, H) values ('2026-02-14', 1, 1, 0, 5, 0, 'Cobro F-2026/5', 1000000, 0), "
             "('2026-02-20', 1, 1, 0, 6, 0, 'Cobro F-2026/6', 100000, 0), "
             "('2026-03-02', 1, 0, 1, 0, 5, 'Pago A-77 B', 0, 1210000)");
        receipt({"Out", client, QDate(2026, 2, 14), QDate(2026, 3, 14), "2026", "F-2026/5", 3630000,
                 1000000, 5, 0});
    }

    QStringList movements() const {
        return rows(tesorer(), "select FrasOut, FrasIn, D, H from movimientos order by Id");
    }
    QStringList receipts() const { return rows(cartera(), kCartera); }

    std::int64_t client = 0, proveidor = 0;
};

}  // namespace

TEST_F(AddCartera, ABlankZeroOrWrongNumberDoesNothingAndAsksNothing) {
    const QStringList before = receipts();
    for (const char* ordre : {"", "  ", "0", "x5"}) {
        EXPECT_FALSE(AddCartera_Venda(f.ctx, dialogs, QString::fromLatin1(ordre))) << ordre;
        EXPECT_FALSE(AddCartera_Compra(f.ctx, dialogs, QString::fromLatin1(ordre))) << ordre;
    }
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(receipts(), before);
    EXPECT_EQ(movements().size(), 3);
}

TEST_F(AddCartera, ASaleInATicketsExerciseIsNeverAdded) {
    f.ctx.ModeExercici = QStringLiteral("TICKETS");
    EXPECT_FALSE(AddCartera_Venda(f.ctx, dialogs, QStringLiteral("6")));
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(movements().size(), 3);
    // Purchases are not bound to the kind of exercise.
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(AddCartera_Compra(f.ctx, dialogs, QStringLiteral("5")));
}

TEST_F(AddCartera, NoLeavesEverythingAsItWas) {
    const QStringList before = receipts();
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_FALSE(AddCartera_Venda(f.ctx, dialogs, QStringLiteral("5")));
    EXPECT_EQ(shown(), QStringList{QStringLiteral("Q:") + Missatge(f.ctx, 6869)});
    EXPECT_EQ(receipts(), before);
    EXPECT_EQ(movements().size(), 3);
}

TEST_F(AddCartera, ASaleLosesItsMovementsAndGetsOneFreshReceipt) {
    f.ctx.Exercici = QStringLiteral("2026");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(AddCartera_Venda(f.ctx, dialogs, QStringLiteral(" 5 ")));
    EXPECT_EQ(shown(), (QStringList{QStringLiteral("Q:") + Missatge(f.ctx, 6869),
                                    QStringLiteral("I:") + Missatge(f.ctx, 6870)}));
    // Only the movement of sale 5 went; the purchase of the same number keeps its own.
    EXPECT_EQ(movements(), (QStringList{"6|0|100000|0", "0|5|0|1210000"}));
    // The partly settled receipt is replaced by one with nothing settled and no due date.
    EXPECT_EQ(receipts(),
              (QStringList{"2026-02-14|1|0|Out|2026|F-2026/5|3630000|0|0|n|5|0|<null>"}));
    // The invoice itself keeps its flags.
    EXPECT_EQ(rows(frasOut(), "select Cobrada, Marca from FrasOut where Ordre = 5"),
              QStringList{"-1|1"});
}

TEST_F(AddCartera, APurchaseTheSameWithItsSupplier) {
    f.ctx.Exercici = QStringLiteral("2026");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(AddCartera_Compra(f.ctx, dialogs, QStringLiteral("5")));
    EXPECT_EQ(shown(), (QStringList{QStringLiteral("Q:") + Missatge(f.ctx, 6871),
                                    QStringLiteral("I:") + Missatge(f.ctx, 6870)}));
    EXPECT_EQ(movements(), (QStringList{"5|0|1000000|0", "6|0|100000|0"}));
    EXPECT_EQ(receipts(),
              (QStringList{"2026-02-14|1|0|Out|2026|F-2026/5|3630000|1000000|0|n|5|0|2026-03-14",
                           "2026-03-02|0|1|In|2026|A-77 B|1210000|0|0|n|0|5|<null>"}));
    EXPECT_EQ(rows(frasIn(), "select Pagada, Marca from FrasIN where Ordre = 5"),
              QStringList{"-1|1"});
}

TEST_F(AddCartera, AReceiptOfAnotherExerciseWithTheSameNumberStays) {
    f.ctx.Exercici = QStringLiteral("2026");
    exec(cartera(), "insert into cartera (data, cliente, In_Out, Ejercicio, Factura, Total, "
                    "FrasOut) values ('2025-12-01', 1, 'Out', '2025', 'F-2025/5', 50000, 5)");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(AddCartera_Venda(f.ctx, dialogs, QStringLiteral("5")));
    EXPECT_EQ(rows(cartera(), "select Ejercicio, Factura from cartera where FrasOut = 5 "
                              "order by Ejercicio"),
              (QStringList{"2025|F-2025/5", "2026|F-2026/5"}));
}

TEST_F(AddCartera, TheReceiptTakesTheExerciseOpen) {
    f.ctx.Exercici = QStringLiteral("2027");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_TRUE(AddCartera_Venda(f.ctx, dialogs, QStringLiteral("6")));
    EXPECT_EQ(receipts().last(), "2026-02-20|1|0|Out|2027|F-2026/6|100000|0|0|n|6|0|<null>");
}

TEST_F(AddCartera, AnInvoiceThatIsNotThereChangesNothing) {
    const QStringList before = receipts();
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_FALSE(AddCartera_Compra(f.ctx, dialogs, QStringLiteral("6")));
    EXPECT_EQ(shown(), (QStringList{QStringLiteral("Q:") + Missatge(f.ctx, 6871),
                                    QStringLiteral("S:") + Missatge(f.ctx, 811)}));
    EXPECT_EQ(receipts(), before);
    EXPECT_EQ(movements().size(), 3);
}

TEST_F(AddCartera, AFailureAfterTheDeletesLeavesEveryFileAsItWas) {
    const QStringList before = receipts();
    exec(cartera(),
         "create trigger full before insert on cartera begin "
         "select raise(abort, 'no queda espai'); end");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_FALSE(AddCartera_Venda(f.ctx, dialogs, QStringLiteral("5")));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown()[1].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_TRUE(dialogs.shown()[1].text.contains(QStringLiteral("no queda espai")));
    // Neither the movement nor the old receipt went.
    EXPECT_EQ(movements().size(), 3);
    EXPECT_EQ(receipts(), before);
}

TEST_F(AddCartera, AMissingPortfolioFileTouchesNoMovement) {
    ASSERT_TRUE(QFile::remove(cartera()));
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    EXPECT_FALSE(AddCartera_Compra(f.ctx, dialogs, QStringLiteral("5")));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown()[1].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_EQ(movements().size(), 3);
    EXPECT_FALSE(QFile::exists(cartera()));
}
