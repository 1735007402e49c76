// The statement's double-entry line (Mes_EXTRACTO) and the two printed treasury lists: the
// statement and the other movements, rendered to PDF and read back as text.
#include "treasury/treasury_reports.h"
#include "../report/report_fixture.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "portfolio_fixture.h"
#include "report/report_helpers.h"
#include "treasury/account_statement.h"
#include "treasury/movement_entry.h"
#include "treasury/other_movements.h"

#include <QRegularExpression>

using namespace tallora;
using namespace tallora::treasury;
using namespace tallora::testing;

namespace {

class TreasuryReports : public PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        f.ctx.resourcesDir = sourcePath(QStringLiteral("resources/"));
        f.ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        exec(tesorer(), "delete from entidades");
        exec(tesorer(),
             "insert into entidades (Id, Grup, entidad, Saldo) values "
             "(1, 570, 'Caja', 1000000), (2, 572, 'Banco Norte', 250000)");
        exec(comptes(),
             "insert into Otras (Grup, NomGrup, Compte, NomCompte) values "
             "(170, 'Deudas a largo plazo', 5, 'Préstamo ICO')");
        client = customer(QStringLiteral("Bar Neptuno"));
        provider = supplier(QStringLiteral("Olis del Camp"));
    }

    std::int64_t movement(const QString& values) {
        store::Database db = store::Database::open(tesorer());
        db.execute(QStringLiteral("insert into movimientos (data, entidad, cliente, proveedor, "
                                  "FrasOut, FrasIn, Supl, concepto, D, H) values (%1)")
                       .arg(values));
        return db.lastInsertId();
    }

    std::int64_t other(std::int64_t saleTes, std::int64_t saleOtra, std::int64_t entraTes,
                       std::int64_t entraOtra, const QString& importe, const QDate& date,
                       const QString& concepto) {
        OtherMovement e;
        e.data = date;
        e.concepto = concepto;
        e.importe = importe;
        e.saleTesoreria = saleTes;
        e.saleOtra = saleOtra;
        e.entraTesoreria = entraTes;
        e.entraOtra = entraOtra;
        return postOtherMovement(f.ctx, dialogs, e).asiento;
    }

    report::PrintRequest toFile(const QString& name) const {
        return {report::Destination::File, f.unit.filePath(name)};
    }

    std::int64_t client = 0, provider = 0;
    report::ReportJob job;
};

}  // namespace

TEST_F(TreasuryReports, ACollectionDebitsTheAccountAndCreditsTheCustomer) {
    const auto id = movement(QStringLiteral("'2026-03-02', 2, %1, 0, 4, 0, 0, 'Cobro fra. 4', "
                                            "1234500, 0")
                                 .arg(client));
    const auto e = Mes_EXTRACTO(f.ctx, id);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->id, QString::number(id));
    EXPECT_EQ(e->fecha, "02/03/2026");
    EXPECT_EQ(e->descripcio, "Cobro fra. 4");
    EXPECT_EQ(e->debe, "123,45");
    EXPECT_EQ(e->haber, "123,45");
    EXPECT_EQ(e->cuentaDebe, "(57.2)  Banco Norte");
    EXPECT_EQ(e->cuentaHaber, QStringLiteral("  (430.%1)  Bar Neptuno").arg(client));
}

TEST_F(TreasuryReports, APaymentAndAReturnPutTheAccountOnTheCredit) {
    const auto paid = movement(
        QStringLiteral("'2026-03-02', 1, 0, %1, 0, 9, 0, 'Pago fra. 9', 0, 50000").arg(provider));
    auto e = Mes_EXTRACTO(f.ctx, paid);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->debe, "5,00");
    EXPECT_EQ(e->cuentaDebe, QStringLiteral("  (400.%1)  Olis del Camp").arg(provider));
    EXPECT_EQ(e->cuentaHaber, "(57.1)  Caja");
    // A returned collection takes the money out: the customer is debited again.
    const auto back = movement(QStringLiteral("'2026-03-09', 2, %1, 0, 4, 0, 0, "
                                              "'Devolución n/fra. 4', 0, 1234500")
                                   .arg(client));
    e = Mes_EXTRACTO(f.ctx, back);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->cuentaDebe, QStringLiteral("  (430.%1)  Bar Neptuno").arg(client));
    EXPECT_EQ(e->cuentaHaber, "(57.2)  Banco Norte");
}

TEST_F(TreasuryReports, AnOtherMovementDebitsWhereTheMoneyEntersWithTheAccountsGroup) {
    other(0, 5, 2, 0, "3000", QDate(2026, 4, 1), "Préstamo recibido");
    const QString id = rows(tesorer(), "select Id from movimientos").first();
    auto e = Mes_EXTRACTO(f.ctx, id.toLongLong());
    ASSERT_TRUE(e);
    EXPECT_EQ(e->cuentaDebe, "  (57.2)  Banco Norte");
    EXPECT_EQ(e->cuentaHaber, QString::fromUtf8("  (170.5)  Préstamo ICO"));
    EXPECT_EQ(e->debe, "3.000,00");

    // Between two treasury accounts each movement shows the whole entry the same way.
    other(1, 0, 2, 0, "10", QDate(2026, 4, 2), "Ingreso en banco");
    for (const QString& m : rows(tesorer(),
                                 "select Id from movimientos where concepto = "
                                 "'Ingreso en banco'")) {
        e = Mes_EXTRACTO(f.ctx, m.toLongLong());
        ASSERT_TRUE(e);
        EXPECT_EQ(e->cuentaDebe, "  (57.2)  Banco Norte");
        EXPECT_EQ(e->cuentaHaber, "  (57.1)  Caja");
    }
}

TEST_F(TreasuryReports, AProvisionNamesNoAccountAndAMissingMovementNothing) {
    const auto id = movement(QStringLiteral("'2026-03-02', 1, %1, 0, 0, 0, 3, 'Provisión', "
                                            "100000, 0")
                                 .arg(client));
    // A provision's movement carries its customer: it reads as a collection.
    EXPECT_EQ(Mes_EXTRACTO(f.ctx, id)->cuentaDebe, "(57.1)  Caja");
    const auto bare = movement("'2026-03-02', 1, 0, 0, 0, 0, 3, 'Suplido', 0, 100000");
    const auto e = Mes_EXTRACTO(f.ctx, bare);
    ASSERT_TRUE(e);
    EXPECT_TRUE(e->cuentaDebe.isEmpty());
    EXPECT_TRUE(e->cuentaHaber.isEmpty());
    EXPECT_EQ(e->debe, "10,00");
    EXPECT_FALSE(Mes_EXTRACTO(f.ctx, 999));
}

TEST_F(TreasuryReports, TheStatementJobFollowsItsContract) {
    fillStatementReport(job, f.ctx, 2, QDate(2026, 5, 31));
    EXPECT_EQ(job.ReportFileName, sourcePath(QStringLiteral("resources/reports/extracto.rpt")));
    EXPECT_EQ(job.DataFiles[0], tesorer());
    EXPECT_EQ(formulasOf(job), (QStringList{
                                   "Nom= 'Comercial Brenwick S.L.'",
                                   "lbl_titulo= 'Consulta extracto de cuentas: Banco Norte'",
                                   "lbl_fecha= '31/05/2026'",
                                   "lbl_tit_ordre= 'ID'",
                                   "lbl_tit_fecha= 'FECHA'",
                                   "lbl_tit_concepto= 'Concepto'",
                                   "lbl_tit_entradas= 'Entradas'",
                                   "lbl_tit_salidas= 'Salidas'",
                                   "lbl_tit_saldo= 'SALDO'",
                                   "lbl_saldo= '25,00'",
                                   "lbl_tit_contrapartida= 'CONTRAPARTIDA'",
                                   "lbl_saldo_inicial= 'Saldo Inicial...'",
                                   QString::fromUtf8("lbl_pagina= 'Página'"),
                               }));
}

TEST_F(TreasuryReports, ThePrintedStatementIsTheSearchWithItsBalance) {
    movement(
        QStringLiteral("'2026-01-20', 2, %1, 0, 4, 0, 0, 'Cobro fra. 4', 1234500, 0").arg(client));
    movement("'2026-02-03', 2, 0, 0, 0, 0, 0, 'Comisión', 0, 5000");
    movement("'2026-02-10', 1, 0, 0, 0, 0, 0, 'Caja', 99990000, 0");
    for (int i = 0; i < 80; ++i)
        movement(QStringLiteral("'2026-03-%1', 2, 0, 0, 0, 0, 0, 'Transferencia %2', 100000, 0")
                     .arg(1 + i % 28, 2, 10, QChar(u'0'))
                     .arg(i + 1));
    dialogs.clear();
    const report::PrintRequest request = toFile("extracto.pdf");
    const auto r = Imprimir_Extracto(f.ctx, dialogs, job, nullptr, 2, QDate(2026, 2, 1),
                                     QDate(2026, 12, 31), request, QDate(2026, 5, 31));
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    const QStringList pages = pdfPages(request.printFileName);
    ASSERT_EQ(pages.size(), 2);
    const QString all = pages.join(u'\n');
    EXPECT_TRUE(all.contains("Consulta extracto de cuentas: Banco Norte"));
    // The opening balance as stored; the first line printed already counts January.
    EXPECT_TRUE(all.contains(QRegularExpression("Saldo Inicial\\.\\.\\.\\s+25,00")));
    EXPECT_TRUE(all.contains(
        QRegularExpression(QString::fromUtf8("02/2026\\s+Comisión\\s+0,50\\s+147,95"))))
        << all.toStdString();
    EXPECT_FALSE(all.contains("Cobro fra. 4"));
    EXPECT_FALSE(all.contains("Caja"));
    // Totals of the rows printed, and the last balance: 147,95 + 80 × 10.
    EXPECT_TRUE(all.contains(QRegularExpression("800,00\\s+0,50\\s+947,95"))) << all.toStdString();
    EXPECT_TRUE(pages[1].contains(QString::fromUtf8("Página 2 de 2")));
}

TEST_F(TreasuryReports, TheOtherMovementsListNamesBothSidesOfEachEntry) {
    other(0, 5, 2, 0, "3000", QDate(2026, 4, 1), QString::fromUtf8("Préstamo recibido"));
    other(1, 0, 2, 0, "10", QDate(2026, 4, 2), "Ingreso en banco");
    other(2, 0, 0, 5, "250,5", QDate(2026, 5, 2), "Cuota marzo");
    fillOtherMovementsList(job, f.ctx, QDate(2026, 5, 31));
    EXPECT_EQ(job.ReportFileName, sourcePath(QStringLiteral("resources/reports/llisotro.rpt")));
    EXPECT_EQ(job.DataFiles[0], tesorer());
    EXPECT_EQ(job.DataFiles[1], comptes());
    EXPECT_EQ(formulasOf(job).mid(0, 2),
              (QStringList{"Nom= 'Comercial Brenwick S.L.'",
                           "lbl_titulo= 'Consulta Otros movimientos contables'"}));

    report::Neteja_Informe(job);
    OtherFilter filter;
    filter.dates = {QDate(2026, 1, 1), QDate(2026, 12, 31), QStringLiteral(">="),
                    QStringLiteral("10")};
    const report::PrintRequest request = toFile("otros.pdf");
    const auto r =
        Imprimir_Otros(f.ctx, dialogs, job, nullptr, filter, request, QDate(2026, 5, 31));
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    const QStringList pages = pdfPages(request.printFileName);
    ASSERT_EQ(pages.size(), 1);
    const QString page = pages.first();
    EXPECT_TRUE(page.contains(QRegularExpression(QString::fromUtf8(
        "1\\s+01/04/2026\\s+Préstamo recibido\\s+Banco Norte\\s+Préstamo ICO\\s+3\\.000,00"))))
        << page.toStdString();
    EXPECT_TRUE(page.contains(
        QRegularExpression("2\\s+02/04/2026\\s+Ingreso en banco\\s+Banco Norte\\s+Caja\\s+10,00")));
    EXPECT_TRUE(page.contains(QRegularExpression(QString::fromUtf8(
        "3\\s+02/05/2026\\s+Cuota marzo\\s+Préstamo ICO\\s+Banco Norte\\s+250,50"))));
    EXPECT_TRUE(page.contains(QRegularExpression("3\\.260,50")));

    // The filter of the screen is the filter of the list.
    filter.cuenta = 5;
    filter.dates.import = QStringLiteral("300");
    Imprimir_Otros(f.ctx, dialogs, job, nullptr, filter, request, QDate(2026, 5, 31));
    const QString only = pdfPages(request.printFileName).join(u'\n');
    EXPECT_TRUE(only.contains(QString::fromUtf8("Préstamo recibido")));
    EXPECT_FALSE(only.contains("Cuota marzo"));
}
