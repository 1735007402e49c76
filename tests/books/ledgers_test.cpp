// The customer and supplier ledgers built in mayor: opening rows, invoices, movements, the
// running balance by account, and the stored queries of the invoice lists.
#include "books/ledgers.h"
#include "books/ledger_reports.h"
#include "books_fixture.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace tallora;
using namespace tallora::books;

namespace tallora {
// Readable failures for texts.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}
}  // namespace tallora

namespace {

class LedgersTest : public tallora::testing::BooksData {
protected:
    void SetUp() override {
        BooksData::SetUp();
        f.ctx.Tesoreria = true;
        exec(gest(),
             "insert into Clients (client, nom, saldo) values (1, 'Bar Centre', 1000000), "
             "(2, 'Colmado Ruiz', 0), (3, 'Sin Movimientos', 250000)");
        exec(gest(),
             "insert into Proveidors (proveidor, nom, saldo) values "
             "(1, 'Maderas Vic', -500000)");
        exec(tesorer(),
             "insert into entidades (Id, Grup, entidad) values (2, 572, 'Banco Sabadell')");
    }
    // Date, account, name, counter-account, document, D, H, balance in ten-thousandths.
    QStringList mayor() const {
        return rows(tesorer(),
                    "select data, cuenta, nombrecuenta, contrapartida, documento, D, H, "
                    "saldo from mayor order by Id");
    }
    void invoiceOut(int ordre, const char* date, int client, const char* name, std::int64_t total) {
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, Client, NomClient, "
                                       "Descripcio, Grup, Compte, NomCompte, TOTAL) values (%1, "
                                       "'%2', %3, '%4', 'F-%1', 700, 7000001, 'Ventas', %5)")
                            .arg(ordre)
                            .arg(QLatin1String(date))
                            .arg(client)
                            .arg(QLatin1String(name))
                            .arg(total));
    }
    void movement(const char* date, int cliente, int proveedor, const char* concepto,
                  std::int64_t d, std::int64_t h) {
        exec(tesorer(),
             QStringLiteral("insert into movimientos (data, entidad, cliente, proveedor, "
                            "concepto, D, H) values ('%1', 2, %2, %3, '%4', %5, %6)")
                 .arg(QLatin1String(date))
                 .arg(cliente)
                 .arg(proveedor)
                 .arg(QString::fromUtf8(concepto))
                 .arg(d)
                 .arg(h));
    }
};

}  // namespace

TEST_F(LedgersTest, ACustomerWithoutMovementsHasItsOpeningRowWithItsBalance) {
    Genera_Mayor_Clients(f.ctx, 3);
    EXPECT_EQ(mayor(), QStringList{"2026-01-01|3|Sin Movimientos|-|Saldo inicial ...|0|0|250000"});
}

TEST_F(LedgersTest, OpeningOfHundredAndAnInvoiceOfFiftyCollectedEndsAtHundred) {
    invoiceOut(1, "2026-03-10", 1, "Bar Centre", 500000);
    // The collection enters the bank's account in D and falls on the customer's H.
    movement("2026-03-20", 1, 0, "N/Fra. F-1", 500000, 0);
    Genera_Mayor_Clients(f.ctx, 1);
    EXPECT_EQ(
        mayor(),
        (QStringList{"2026-01-01|1|Bar Centre|-|Saldo inicial ...|0|0|1000000",
                     "2026-03-10|1|Bar Centre|700.7000001 - Ventas|N/fra. F-1|500000|0|1500000",
                     "2026-03-20|1|Bar Centre|57.2 - Banco Sabadell|Pag. N/Fra. F-1|0|500000|"
                     "1000000"}));
}

TEST_F(LedgersTest, AReturnKeepsItsTextAndAnyOtherMovementIsAPayment) {
    movement("2026-04-01", 2, 0, "Devolución recibo F-9", 0, 300000);
    movement("2026-04-02", 2, 0, "devolución en minúsculas", 100000, 0);
    Genera_Mayor_Clients(f.ctx, 2);
    const QStringList rows = mayor();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_TRUE(rows[1].contains("|Devolución recibo F-9|300000|0|300000"))
        << rows[1].toStdString();
    EXPECT_TRUE(rows[2].contains("|Pag. devolución en minúsculas|0|100000|200000"))
        << rows[2].toStdString();
}

TEST_F(LedgersTest, RowsOfOneDateKeepTheirOrderOfInsertion) {
    // A collection and an invoice of the opening day: opening, invoice, movement.
    movement("2026-01-01", 2, 0, "Cobro", 200000, 0);
    invoiceOut(1, "2026-01-01", 2, "Colmado Ruiz", 200000);
    Genera_Mayor_Clients(f.ctx, 2);
    const QStringList rows = mayor();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_TRUE(rows[0].contains("Saldo inicial"));
    EXPECT_TRUE(rows[1].contains("N/fra. F-1") && rows[1].endsWith("|200000"));
    EXPECT_TRUE(rows[2].contains("Pag. Cobro") && rows[2].endsWith("|0"));
}

TEST_F(LedgersTest, EveryCustomerWithoutAChoiceEachWithItsOwnBalance) {
    invoiceOut(1, "2026-02-01", 1, "Bar Centre", 100000);
    invoiceOut(2, "2026-02-01", 2, "Colmado Ruiz", 300000);
    Genera_Mayor_Clients(f.ctx, std::nullopt);
    EXPECT_EQ(rows(tesorer(), "select cuenta, saldo from mayor order by cuenta, data, Id"),
              (QStringList{"1|1000000", "1|1100000", "2|0", "2|300000", "3|250000"}));
}

TEST_F(LedgersTest, ASuppliersBalanceGoesNegativeAsTheDebtGrows) {
    exec(frasIn(),
         "insert into FrasIN (Ordre, data, Proveidor, NomProveidor, Descripcio, Grup, "
         "Compte, NomCompte, TOTAL) values (1, '2026-05-02', 1, 'Maderas Vic', 'A-77', "
         "600, 6000001, 'Compras', 1210000)");
    movement("2026-05-30", 0, 1, "Devolución", 0, 1210000);
    Genera_Mayor_Proveidors(f.ctx, 1);
    EXPECT_EQ(mayor(),
              (QStringList{"2026-01-01|1|Maderas Vic|-|Saldo inicial ...|0|0|-500000",
                           "2026-05-02|1|Maderas Vic|600.6000001 - Compras|A-77|0|1210000|-1710000",
                           "2026-05-30|1|Maderas Vic|57.2 - Banco Sabadell|Pag. Devolución|1210000|"
                           "0|-500000"}));
}

TEST_F(LedgersTest, ANewRunEmptiesTheTableFirst) {
    Genera_Mayor_Clients(f.ctx, std::nullopt);
    ASSERT_EQ(mayor().size(), 3);
    Genera_Mayor_Clients(f.ctx, 3);
    EXPECT_EQ(mayor().size(), 1);
}

TEST_F(LedgersTest, TheInvoiceListsReadTheirPartysInvoices) {
    invoiceOut(1, "2026-02-01", 1, "Bar Centre", 100000);
    invoiceOut(2, "2026-02-01", 2, "Colmado Ruiz", 300000);
    Filtra_FrasOUT(f.ctx, 2);
    EXPECT_EQ(rows(frasOut(), "select Ordre from SelFras"), QStringList{"2"});
    Filtra_FrasOUT(f.ctx, std::nullopt);
    EXPECT_EQ(rows(frasOut(), "select Ordre from SelFras order by Ordre"), (QStringList{"1", "2"}));
    Filtra_FrasIN(f.ctx, 1);
    EXPECT_TRUE(rows(frasIn(), "select Ordre from SelFras").isEmpty());
}

TEST_F(LedgersTest, WithoutTreasuryTheLedgerIsNotRebuiltAndTheLastOnePrints) {
    Genera_Mayor_Clients(f.ctx, 3);
    invoiceOut(1, "2026-02-01", 3, "Sin Movimientos", 100000);
    f.ctx.Tesoreria = false;
    LedgerRequest r;
    r.extract = Extract::Customers;
    r.ledger = true;
    const QStringList rows = ledgerRows(f.ctx, r);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_TRUE(rows[1].startsWith("3\tSin Movimientos\t01/01/2026\t-\tSaldo inicial ..."))
        << rows[1].toStdString();
    // With treasury the same request rebuilds it, the invoice included.
    f.ctx.Tesoreria = true;
    EXPECT_EQ(ledgerRows(f.ctx, r).size(), 5);
}
