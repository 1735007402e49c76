// A run sent to the bank as a SEPA file: what goes and what cannot, the file valid against
// its schema with the run's total as its control sum, the mandates turned recurrent, the
// record the file can be written again from, and nothing written when anything fails.
#include "treasury/remittance.h"

#include "../banking/sepa_schema.h"
#include "banking/bank_file.h"
#include "portfolio_fixture.h"

#include <QDomDocument>
#include <QTemporaryDir>

using namespace tallora;
using namespace tallora::treasury;
using namespace tallora::testing;

namespace {

class Remittances : public PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        f.ctx.EmpresaNIF = QStringLiteral("B85626240");
        f.ctx.Exercici = QStringLiteral("2026");
        exec(tesorer(),
             "insert into entidades (Id, Grup, entidad, ccc) values "
             "(3, 572, 'Banco Norte', '21000418450200051332'), "
             "(4, 572, 'Sin cuenta', '')");
        neptuno = customer("Bar Neptuno");
        lledo = customer("Ferretería Lledó");
        nadal = customer("Sin Mandato");
        commercial(neptuno, "12341234161234567890");
        commercial(lledo, "21053014113400002160");
        commercial(nadal, "21000418450200051332");
        mandate(neptuno, "NEPTUNO-1", false);
        mandate(lledo, "LLEDO-1", true);
        proveidor = supplier("Suministros Ávila");
    }

    void commercial(std::int64_t client, const QString& ccc) {
        store::Database d = store::Database::open(fact());
        d.prepare(QStringLiteral("insert into comercial_clientes (Client, FormaPago, Entidad, ccc) "
                                 "values (?, 'Recibo', 'Banco', ?)"))
            .bind(1, client)
            .bind(2, ccc)
            .execute();
    }

    void mandate(std::int64_t client, const QString& reference, bool recurrent) {
        store::Database d = store::Database::open(tesorer());
        banking::attachBankFile(f.ctx, d);
        banking::storeMandate(d, client, banking::Mandate{reference, QDate(2025, 3, 1), recurrent});
    }

    std::int64_t sale(std::int64_t ordre, std::int64_t client, std::int64_t total,
                      std::int64_t temporal) {
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, Client, Total, "
                                       "Descripcio, Cobrada, Marca) values (%1, '2026-04-01', %2, "
                                       "%3, 'F-%1', 0, 0)")
                            .arg(ordre)
                            .arg(client)
                            .arg(total));
        const std::int64_t id = receipt({.inOut = "Out",
                                         .party = client,
                                         .data = QDate(2026, 4, 1),
                                         .vencimiento = std::nullopt,
                                         .factura = QStringLiteral("F-%1").arg(ordre),
                                         .total = total,
                                         .frasOut = ordre});
        exec(cartera(),
             QStringLiteral("update cartera set Borrador = 's', Temporal = %1 where Id = %2")
                 .arg(temporal)
                 .arg(id));
        return id;
    }

    RemittanceOutcome send(std::int64_t account = 3) {
        return Contabilizar_Remesa(f.ctx, dialogs, kCollections, account, QDate(2026, 5, 10),
                                   QDate(2026, 5, 15), [this] {
                                       ++asked;
                                       return path();
                                   });
    }

    QString path() const { return dir.filePath(QStringLiteral("remesa.xml")); }
    QByteArray written() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir dir;
    int asked = 0;  // times the file's place was asked
    std::int64_t neptuno = 0, lledo = 0, nadal = 0, proveidor = 0;
};

QStringList texts(const QByteArray& xml, const char* tag) {
    QDomDocument dom;
    dom.setContent(xml, true);
    QStringList out;
    const QDomNodeList nodes = dom.elementsByTagName(QString::fromLatin1(tag));
    for (int i = 0; i < nodes.size(); ++i) out << nodes.item(i).toElement().text();
    return out;
}

}  // namespace

TEST_F(Remittances, TheDraftGoesAsAValidFileWhoseControlSumIsTheRunsTotal) {
    sale(1, neptuno, 1210000, 1210000);
    sale(2, lledo, 500000, 200000);  // a part of the receipt
    const RemittanceOutcome out = send();
    ASSERT_FALSE(out.refusal);
    ASSERT_FALSE(out.stopped);
    EXPECT_EQ(out.count, 2);
    EXPECT_EQ(out.total, Money::fromUnits(1410000));
    const QByteArray xml = written();
    EXPECT_EQ(sepaSchemaErrors(xml, QStringLiteral("pain.008.001.02")), QString())
        << xml.constData();
    EXPECT_EQ(texts(xml, "CtrlSum").first(), QStringLiteral("141.00"));
    // The run's movements add up to the same total.
    EXPECT_EQ(rows(tesorer(), "select sum(D) from movimientos"), QStringList{"1410000"});
    EXPECT_EQ(texts(xml, "SeqTp"), (QStringList{"FRST", "RCUR"}));
    EXPECT_EQ(texts(xml, "MndtId"), (QStringList{"NEPTUNO-1", "LLEDO-1"}));
    EXPECT_EQ(texts(xml, "ReqdColltnDt"), (QStringList{"2026-05-15", "2026-05-15"}));
    EXPECT_TRUE(texts(xml, "Id").contains("ES77000B85626240"));
    // The company's account heads each block, then its debtors'.
    EXPECT_EQ(texts(xml, "IBAN"),
              (QStringList{"ES9121000418450200051332", "ES7712341234161234567890",
                           "ES9121000418450200051332", "ES0521053014113400002160"}));
    // The first collection made the mandate recurrent: the next run sends it RCUR.
    EXPECT_EQ(banking::mandateOf(f.ctx, neptuno)->recurrent, true);
    // The partly collected receipt stays open with what was collected.
    EXPECT_EQ(rows(cartera(), "select Factura, Pendiente, Borrador from cartera order by Id"),
              QStringList{"F-2|200000|n"});
}

TEST_F(Remittances, TheFileIsWrittenAgainFromTheRunsRecord) {
    sale(1, neptuno, 1210000, 1210000);
    const RemittanceOutcome out = send();
    ASSERT_GT(out.remesa, 0);
    const QByteArray first = written();
    QFile::remove(path());
    const auto list = remittances(f.ctx);
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].id, out.remesa);
    EXPECT_TRUE(list[0].collections);
    EXPECT_EQ(list[0].format, QStringLiteral("pain.008.001.02"));
    EXPECT_EQ(list[0].count, 1);
    EXPECT_EQ(list[0].total, Money::fromUnits(1210000));
    EXPECT_EQ(list[0].bankDate, QDate(2026, 5, 15));
    ASSERT_TRUE(rewriteRemittance(f.ctx, out.remesa, path()));
    EXPECT_EQ(written(), first);
    EXPECT_FALSE(rewriteRemittance(f.ctx, out.remesa + 1, path()));
}

TEST_F(Remittances, ReceiptsThatCannotGoAreListedFirstAndGoBackToTheOpenList) {
    sale(1, neptuno, 1210000, 1210000);
    const std::int64_t without = sale(2, nadal, 300000, 300000);
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const RemittanceOutcome out = send();
    ASSERT_FALSE(out.stopped);
    ASSERT_EQ(shown().size(), 1);
    EXPECT_TRUE(shown()[0].startsWith("Q:")) << shown()[0].toStdString();
    EXPECT_TRUE(shown()[0].contains("F-2")) << shown()[0].toStdString();
    EXPECT_TRUE(shown()[0].contains("Sin Mandato"));
    EXPECT_TRUE(shown()[0].contains("sin mandato SEPA"));
    EXPECT_EQ(out.count, 1);
    EXPECT_EQ(rows(cartera(), "select Id, Borrador, Temporal from cartera order by Id"),
              QStringList{QString::number(without) + "|n|0"});
    EXPECT_EQ(texts(written(), "EndToEndId").size(), 1);
}

TEST_F(Remittances, NoToTheListWritesNothing) {
    sale(1, neptuno, 1210000, 1210000);
    sale(2, nadal, 300000, 300000);
    dialogs.setNextAnswer(Dialogs::Answer::No);
    const QStringList before = rows(cartera(), "select * from cartera order by Id");
    const RemittanceOutcome out = send();
    EXPECT_TRUE(out.stopped);
    EXPECT_EQ(rows(cartera(), "select * from cartera order by Id"), before);
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"0"});
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_TRUE(remittances(f.ctx).empty());
    EXPECT_EQ(asked, 0) << "the file is asked for only once the list is accepted";
}

TEST_F(Remittances, AnAccountWithoutIbanIsRefusedBeforeAnythingIsWritten) {
    sale(1, neptuno, 1210000, 1210000);
    const RemittanceOutcome out = send(4);
    EXPECT_TRUE(out.stopped);
    ASSERT_EQ(shown().size(), 1);
    EXPECT_TRUE(shown()[0].startsWith("S:Sin cuenta: ")) << shown()[0].toStdString();
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"0"});
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(Remittances, AFileThatCannotBeWrittenUndoesTheWholeRun) {
    sale(1, neptuno, 1210000, 1210000);
    const QStringList before = rows(cartera(), "select * from cartera order by Id");
    EXPECT_THROW(
        Contabilizar_Remesa(f.ctx, dialogs, kCollections, 3, QDate(2026, 5, 10), QDate(2026, 5, 15),
                            [this] { return dir.filePath("no/such/folder/r.xml"); }),
        store::StoreError);
    EXPECT_EQ(rows(cartera(), "select * from cartera order by Id"), before);
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"0"});
    EXPECT_TRUE(remittances(f.ctx).empty());
    EXPECT_FALSE(banking::mandateOf(f.ctx, neptuno)->recurrent);
}

TEST_F(Remittances, APaymentRunGoesAsATransferToSuppliersWithAnIban) {
    {
        store::Database d = store::Database::open(tesorer());
        banking::attachBankFile(f.ctx, d);
        banking::storeSupplierAccount(d, proveidor, {"DE89 3704 0044 0532 0130 00", "COBADEFFXXX"});
    }
    exec(frasIn(),
         QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, TOTAL, descripcio, "
                        "Pagada, Marca) values (7, '2026-03-02', %1, 2500000, 'A-7', 0, 0)")
             .arg(proveidor));
    const std::int64_t id = receipt({.inOut = "In",
                                     .party = proveidor,
                                     .data = QDate(2026, 3, 2),
                                     .vencimiento = std::nullopt,
                                     .factura = "A-7",
                                     .total = 2500000,
                                     .frasIn = 7});
    exec(cartera(),
         QStringLiteral("update cartera set Borrador = 's', Temporal = 2500000 where Id = %1")
             .arg(id));
    const RemittanceOutcome out =
        Contabilizar_Remesa(f.ctx, dialogs, kPayments, 3, QDate(2026, 5, 10), QDate(2026, 5, 12),
                            [this] { return path(); });
    ASSERT_FALSE(out.stopped);
    const QByteArray xml = written();
    EXPECT_EQ(sepaSchemaErrors(xml, QStringLiteral("pain.001.001.03")), QString())
        << xml.constData();
    EXPECT_EQ(texts(xml, "CtrlSum").first(), QStringLiteral("250.00"));
    EXPECT_EQ(texts(xml, "ReqdExctnDt"), QStringList{"2026-05-12"});
    EXPECT_EQ(texts(xml, "Id").first(), QStringLiteral("B85626240000"));
    EXPECT_EQ(rows(tesorer(), "select proveedor, H, concepto from movimientos"),
              QStringList{QString::number(proveidor) + "|2500000|S/Fra. A-7"});
    EXPECT_EQ(rows(frasIn(), "select Pagada from FrasIN"), QStringList{"-1"});
}

TEST_F(Remittances, TheCurrentVersionsAreASetting) {
    banking::setBankSettings(f.ctx, QStringLiteral("001"), true);
    sale(1, neptuno, 1210000, 1210000);
    send();
    const QByteArray xml = written();
    EXPECT_TRUE(xml.contains("urn:iso:std:iso:20022:tech:xsd:pain.008.001.08"));
    EXPECT_TRUE(texts(xml, "Id").contains("ES77001B85626240"));
    EXPECT_EQ(remittances(f.ctx)[0].format, QStringLiteral("pain.008.001.08"));
}
