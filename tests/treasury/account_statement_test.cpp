// The account statement: running balance, opening line, date filters, deletion and returns.
#include "treasury/account_statement.h"
#include "context/messages.h"
#include "portfolio_fixture.h"
#include "treasury/other_movements.h"
#include "treasury/runs.h"

using namespace tallora;
using namespace tallora::treasury;
using namespace tallora::testing;

namespace {

class Statement : public PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        exec(tesorer(), "delete from entidades");  // the cash account every exercise starts with
        exec(tesorer(),
             "insert into entidades (Id, Grup, entidad, Saldo) values (1, 570, 'Caja', 1000000)");
        exec(tesorer(),
             "insert into entidades (Id, Grup, entidad, Saldo) values (2, 572, 'Banco Norte', 0)");
        client = customer("Bar Neptuno");
    }

    std::int64_t movement(const QString& date, std::int64_t entidad, const QString& concepto,
                          std::int64_t d, std::int64_t h, const QString& extra = {}) {
        store::Database db = store::Database::open(tesorer());
        db.execute(
            QStringLiteral("insert into movimientos (data, entidad, concepto, D, H%1) values "
                           "('%2', %3, '%4', %5, %6%7)")
                .arg(extra.isEmpty() ? QString() : ", " + extra.section('=', 0, 0))
                .arg(date)
                .arg(entidad)
                .arg(concepto)
                .arg(d)
                .arg(h)
                .arg(extra.isEmpty() ? QString() : ", " + extra.section('=', 1)));
        return db.lastInsertId();
    }

    // A sale of 100 collected in two runs of 60 and 40 on the bank; gives the receipt.
    std::int64_t collectedInParts(const QString& first) {
        exec(frasOut(),
             QStringLiteral("insert into FrasOut (Ordre, data, Client, Total, Descripcio, "
                            "Cobrada, Marca) values (4, '2026-02-01', %1, 1000000, "
                            "'Fra. 4', 0, 0)")
                 .arg(client));
        const auto id = receipt({.inOut = "Out",
                                 .party = client,
                                 .data = QDate(2026, 2, 1),
                                 .vencimiento = std::nullopt,
                                 .factura = "Fra. 4",
                                 .total = 1000000,
                                 .frasOut = 4});
        Passa_Recibo(f.ctx, dialogs, kCollections, id, first);
        Contabilizar(f.ctx, dialogs, kCollections, 2, QDate(2026, 3, 1));
        return id;
    }

    QStringList lines(std::optional<std::int64_t> account, QDate from = QDate(2026, 1, 1),
                      QDate to = QDate(2026, 12, 31)) {
        QStringList out;
        for (const StatementLine& l : Busca_Extracto(f.ctx, account, from, to))
            out << QStringList{l.id ? QString::number(*l.id) : "-",
                               l.data,
                               l.concepto,
                               l.contrapartida,
                               l.debe,
                               l.haber,
                               l.saldo}
                       .join('|');
        return out;
    }

    std::int64_t client = 0;
};

}  // namespace

TEST_F(Statement, AnAccountWithoutMovementsShowsNoLineAtAll) {
    movement("2026-01-10", 2, "Otro banco", 50000, 0);
    EXPECT_TRUE(lines(1).isEmpty());
}

TEST_F(Statement, TheBalanceRunsFromTheOpeningBalanceAndHidesZeroAmounts) {
    const auto a = movement("2026-02-01", 1, "Venta mostrador", 200000, 0);
    const auto b = movement("2026-01-15", 1, "Gasolina", 0, 5000);  // 0,50
    movement("2026-01-20", 2, "Otro banco", 50000, 0);
    EXPECT_EQ(lines(1),
              (QStringList{"-||Saldo Inicial...||||100,00",
                           QStringLiteral("%1|15/01/2026|Gasolina||||99,50").arg(b),
                           QStringLiteral("%1|01/02/2026|Venta mostrador||20,00||119,50").arg(a)}));
}

TEST_F(Statement, HalfAEuroComingInMovesTheBalanceWithABlankCell) {
    const auto m = movement("2026-01-15", 1, "Redondeo", 5000, 0);
    EXPECT_EQ(lines(1), (QStringList{"-||Saldo Inicial...||||100,00",
                                     QStringLiteral("%1|15/01/2026|Redondeo||||100,50").arg(m)}));
}

TEST_F(Statement, DeletingAnOtherMovementTakesBothItsMovements) {
    OtherMovement e;
    e.data = QDate(2026, 3, 15);
    e.concepto = "Traspaso";
    e.importe = "10";
    e.saleTesoreria = 2;
    e.entraTesoreria = 1;
    postOtherMovement(f.ctx, dialogs, e);
    ASSERT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"2"});
    const QString first = rows(tesorer(), "select min(Id) from movimientos").first();
    EXPECT_TRUE(deleteMovement(f.ctx, dialogs, first.toLongLong()));
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"0"});
    EXPECT_EQ(rows(tesorer(), "select count(*) from otros_movimientos"), QStringList{"0"});
    // The line the questions name.
    EXPECT_FALSE(movementLine(f.ctx, first.toLongLong()));
}

TEST_F(Statement, AFilterFromALaterDateKeepsTheEarlierMovementsInTheBalance) {
    movement("2026-01-15", 1, "Gasolina", 0, 100000);
    const auto b = movement("2026-03-01", 1, "Cobro", 300000, 0);
    EXPECT_EQ(lines(1, QDate(2026, 2, 1)),
              (QStringList{"-||Saldo Inicial...||||100,00",
                           QStringLiteral("%1|01/03/2026|Cobro||30,00||120,00").arg(b)}));
    // The printed statement reads the view of the last search.
    EXPECT_EQ(rows(tesorer(), "select Id from Selmovimientos_extracto"),
              QStringList{QString::number(b)});
    EXPECT_EQ(lines(1, QDate(2026, 1, 1), QDate(2026, 1, 31)).size(), 2);
    EXPECT_EQ(lines(1, QDate(2026, 4, 1)), QStringList{});
}

TEST_F(Statement, WithoutAnAccountEveryMovementShowsWithOneBalanceAcrossThem) {
    movement("2026-01-10", 2, "Banco", 50000, 0);
    movement("2026-01-11", 1, "Caja", 0, 20000);
    const QStringList all = lines(std::nullopt);
    ASSERT_EQ(all.size(), 3);
    EXPECT_TRUE(all[0].endsWith("|0,00"));
    EXPECT_TRUE(all[2].endsWith("|3,00"));
}

TEST_F(Statement, TheCounterpartNamesTheCustomerOrTheOtherAccount) {
    exec(comptes(),
         "insert into Otras (Compte, Grup, NomGrup, NomCompte) values (11, 170, 'Deudas', "
         "'Préstamo BBV')");
    OtherMovement e;
    e.data = QDate(2026, 3, 15);
    e.concepto = "Cuota";
    e.importe = "10";
    e.saleTesoreria = 1;
    e.entraOtra = 11;
    postOtherMovement(f.ctx, dialogs, e);
    OtherMovement transfer = e;
    transfer.entraOtra = 0;
    transfer.entraTesoreria = 2;
    postOtherMovement(f.ctx, dialogs, transfer);
    movement("2026-03-16", 1, "N/Fra. 1", 10000, 0, QStringLiteral("cliente=%1").arg(client));
    const QStringList shown = lines(1);
    ASSERT_EQ(shown.size(), 4);
    EXPECT_EQ(shown[1].section('|', 3, 3), "Préstamo BBV");
    EXPECT_EQ(shown[2].section('|', 3, 3), "");
    EXPECT_EQ(shown[3].section('|', 3, 3), "Bar Neptuno");
}

TEST_F(Statement, DeletingOneOfThePartialCollectionsDeletesThemAll) {
    const auto id = collectedInParts("60");
    Passa_Recibo(f.ctx, dialogs, kCollections, id, "0");
    Contabilizar(f.ctx, dialogs, kCollections, 2, QDate(2026, 4, 1));
    ASSERT_EQ(rows(tesorer(), "select count(*) from movimientos where FrasOut = 4"),
              QStringList{"2"});
    ASSERT_EQ(rows(frasOut(), "select Cobrada from FrasOut"), QStringList{"-1"});
    const QString first = rows(tesorer(), "select min(Id) from movimientos").first();
    dialogs.setNextAnswer(Dialogs::Answer::Yes);  // back into the portfolio
    EXPECT_TRUE(deleteMovement(f.ctx, dialogs, first.toLongLong()));
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"0"});
    EXPECT_EQ(rows(frasOut(), "select Cobrada from FrasOut"), QStringList{"0"});
    EXPECT_EQ(rows(cartera(), "select FrasOut, Total, Pendiente from cartera"),
              QStringList{"4|1000000|0"});
    EXPECT_EQ(shown(), (QStringList{"Q:" + Missatge(f.ctx, 6869), "I:" + Missatge(f.ctx, 6870)}));
}

TEST_F(Statement, DeletingAProvisionsMovementLeavesTheMovement) {
    exec(supl(), "insert into Suplidos (Ordre, data) values (3, '2026-01-05')");
    const auto m = movement("2026-01-05", 1, "Suplido", 0, 10000, "Supl=3");
    EXPECT_TRUE(deleteMovement(f.ctx, dialogs, m));
    EXPECT_EQ(rows(supl(), "select count(*) from Suplidos"), QStringList{"0"});
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"1"});
    EXPECT_FALSE(deleteMovement(f.ctx, dialogs, 999));
}

TEST_F(Statement, ReturningAFullyCollectedReceiptMakesANewOneAndTheContraryMovement) {
    exec(frasOut(),
         QStringLiteral("insert into FrasOut (Ordre, data, Client, Total, Descripcio, Cobrada, "
                        "Marca) values (4, '2026-02-01', %1, 1000000, 'Fra. 4', 0, 0)")
             .arg(client));
    const auto id = receipt({.inOut = "Out",
                             .party = client,
                             .data = QDate(2026, 2, 1),
                             .vencimiento = std::nullopt,
                             .factura = "Fra. 4",
                             .total = 1000000,
                             .frasOut = 4});
    Passa_Recibo(f.ctx, dialogs, kCollections, id, "0");
    const auto run = Contabilizar(f.ctx, dialogs, kCollections, 2, QDate(2026, 3, 1));
    ASSERT_TRUE(rows(cartera(), "select * from cartera").isEmpty());
    const auto back = returnReceipt(f.ctx, run.settlements[0].movement, QDate(2026, 3, 20));
    ASSERT_TRUE(back);
    EXPECT_EQ(rows(frasOut(), "select Cobrada, Marca from FrasOut"), QStringList{"0|-1"});
    EXPECT_EQ(rows(cartera(),
                   "select data, cliente, In_Out, Ejercicio, Factura, Total, Pendiente, FrasOut "
                   "from cartera"),
              QStringList{
                  QStringLiteral("2026-03-20|%1|Out|2026|N/Fra. Fra. 4|1000000|0|4").arg(client)});
    EXPECT_EQ(
        rows(tesorer(),
             QStringLiteral("select data, entidad, cliente, FrasOut, concepto, D, H from "
                            "movimientos where Id = %1")
                 .arg(*back)),
        QStringList{QStringLiteral("2026-03-20|2|%1|4|Devolución n/fra. N/Fra. Fra. 4|0|1000000")
                        .arg(client)});
    // A return cannot be returned.
    EXPECT_FALSE(returnReceipt(f.ctx, *back, QDate(2026, 3, 21)));
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"2"});
}

TEST_F(Statement, ReturningAPartialCollectionLowersWhatWasSettledAndKeepsTheTotal) {
    collectedInParts("60");
    ASSERT_EQ(rows(cartera(), "select Total, Pendiente from cartera"),
              QStringList{"1000000|600000"});
    const QString m = rows(tesorer(), "select Id from movimientos").first();
    ASSERT_TRUE(returnReceipt(f.ctx, m.toLongLong(), QDate(2026, 3, 5)));
    EXPECT_EQ(rows(cartera(), "select Total, Pendiente from cartera"), QStringList{"1000000|0"});
    EXPECT_EQ(rows(tesorer(), "select D, H from movimientos order by Id"),
              (QStringList{"600000|0", "0|600000"}));
}

TEST_F(Statement, AMovementOfNoInvoiceIsNotReturned) {
    const auto m = movement("2026-01-05", 1, "Venta", 10000, 0);
    EXPECT_FALSE(returnReceipt(f.ctx, m, QDate(2026, 1, 6)));
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"1"});
    const auto shown = movementLine(f.ctx, m);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->data, "05/01/2026");
    EXPECT_EQ(shown->debe, "1,00");
    EXPECT_EQ(shown->haber, "");
    StatementLine line{m, "05/01/2026", "Venta", "Bar", "", "", ""};
    EXPECT_EQ(deleteMovementQuestion(f.ctx, line),
              Missatge(f.ctx, 815) + QStringLiteral("\nID: %1\nDe: Bar\nConcep: Venta").arg(m));
    EXPECT_EQ(returnReceiptQuestion(f.ctx, line),
              Missatge(f.ctx, 6987) + QStringLiteral("\nID: %1\nDe: Bar\nConcep: Venta").arg(m));
}
