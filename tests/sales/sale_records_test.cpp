// The VERI*FACTU records of the sales: an alta for every invoice posted, a correction for a
// change, an anulación for a deletion, all in one chain and in the sale's own transaction.
#include "sales/billing_document.h"
#include "sales/billing_lines.h"
#include "sales/document_numbers.h"
#include "sales/sale_change.h"
#include "sales/sale_inquiry.h"
#include "sales/sale_posting.h"
#include "sales_fixture.h"
#include "verifactu/chain_check.h"
#include "verifactu/record_file.h"
#include "verifactu/record_xml.h"
#include "verifactu/stored_records.h"

#include <QDir>
#include <QFile>
#include <QTimeZone>

namespace tallora::testing {
namespace {

using sales::DocType;

class SaleRecordsTest : public SalesData {
protected:
    void SetUp() override {
        SalesData::SetUp();
        f.ctx.EmpresaNIF = "B64717838";
        f.ctx.EmpresaNom = "Suministros Vic SL";
        f.ctx.EmpresaCP = "08500";
        // A winter instant, one second more at every record.
        f.ctx.clock = [this] {
            return QDateTime(QDate(2026, 3, 15), QTime(9, 30), Qt::UTC).addSecs(ticks++);
        };
    }

    QString recordsFile() const { return f.company + verifactu::kRecordsFile; }

    std::int64_t post(SaleEntry e, double rate = 21) {
        sales::Reparteix_Total(f.ctx, e, rate, e.reEnabled);
        const auto account = sales::Verifica_compte_venda(f.ctx, e.txtTipus);
        const auto r = sales::GrabaApunt(f.ctx, e, *account);
        EXPECT_TRUE(r.ok()) << r.error.toStdString();
        return r.ordre;
    }

    sales::PostingResult change(std::int64_t number, const std::function<void(SaleEntry&)>& edit) {
        auto loaded = sales::Modifica_Venda(f.ctx, QString::number(number));
        EXPECT_TRUE(loaded);
        if (!loaded) return {};
        edit(loaded->entry);
        const auto account = sales::Verifica_compte_venda(f.ctx, loaded->entry.txtTipus);
        return sales::GrabaApunt(f.ctx, loaded->entry, *account);
    }

    std::vector<verifactu::StoredRecord> records() const {
        std::vector<verifactu::StoredRecord> out;
        verifactu::forEachRecord(recordsFile(), [&](const verifactu::StoredRecord& r) {
            out.push_back(r);
            return true;
        });
        return out;
    }

    // kind, type, number, date, total, exercise and sale of each record, one a line.
    QStringList summary() const {
        QStringList out;
        for (const auto& r : records())
            out << QStringList{r.alta ? (r.subsanacion ? "alta-S" : "alta") : "anulacion",
                               r.tipoFactura,
                               r.numSerie,
                               r.fecha,
                               r.importeTotal,
                               r.ejercicio,
                               QString::number(r.ordre)}
                       .join(u'|');
        return out;
    }

    verifactu::InvoiceRecord parsed(std::size_t index) const {
        const auto all = records();
        EXPECT_LT(index, all.size());
        if (index >= all.size()) return {};
        const auto r = verifactu::parseRecordXml(all[index].xml);
        EXPECT_TRUE(r);
        return r ? *r : verifactu::InvoiceRecord{};
    }

    int ticks = 0;
};

TEST_F(SaleRecordsTest, APostedSaleLeavesItsAltaWithTheFieldsOfTheSale) {
    SaleEntry e = reEntry("121,00");
    e.txtdescripcio = "F-7";
    post(e);
    EXPECT_EQ(summary(), QStringList{"alta|F1|F-7|15-03-2026|121.00|2026|1"});
    const auto r = parsed(0);
    EXPECT_EQ(r.id.emisor, "B64717838");
    EXPECT_EQ(r.nombreEmisor, "Suministros Vic SL");
    EXPECT_FALSE(r.subsanacion);
    EXPECT_EQ(r.descripcion, "Ventas mercaderias");
    ASSERT_TRUE(r.destinatario);
    EXPECT_EQ(r.destinatario->nombre, "Colmado Ruiz");
    EXPECT_EQ(r.destinatario->nif, "22222222J");
    ASSERT_EQ(r.desglose.size(), 1u);
    const auto& line = r.desglose[0];
    // 121,00 at 21 % with recargo 5,2: base 95,88, IVA 20,13, RE 4,99.
    EXPECT_EQ(line.claveRegimen, "18");
    EXPECT_EQ(line.calificacion, "S1");
    EXPECT_EQ(line.tipoImpositivo, "21.00");
    EXPECT_EQ(line.base, "95.88");
    EXPECT_EQ(line.cuota, "20.13");
    EXPECT_EQ(line.tipoRecargo, "5.20");
    EXPECT_EQ(line.cuotaRecargo, "4.99");
    EXPECT_EQ(r.cuotaTotal, "25.12");
    EXPECT_EQ(r.importeTotal, "121.00");
    EXPECT_FALSE(r.anterior) << "the first record of the chain";
    EXPECT_EQ(r.fechaHora, "2026-03-15T10:30:00+01:00");
    EXPECT_EQ(r.huella, verifactu::computeHuella(r));
}

TEST_F(SaleRecordsTest, PostedChangedAndDeletedGivesAltaCorrectionAndAnulacionChained) {
    const auto n = post(entry("121,00"));
    const auto changed = change(n, [](SaleEntry& e) {
        e.txtTotal = "242,00";
        e.txtBase = {"200,00", "0", "0"};
        e.txtIVA = {"42,00", "0", "0"};
    });
    ASSERT_TRUE(changed.ok()) << changed.error.toStdString();
    ASSERT_TRUE(sales::Esborra_Venda(f.ctx, n));
    EXPECT_EQ(summary(), (QStringList{"alta|F1|F-1|15-03-2026|121.00|2026|1",
                                      "alta-S|F1|F-1|15-03-2026|242.00|2026|1",
                                      "anulacion||F-1|15-03-2026||2026|1"}));
    const auto first = parsed(0), second = parsed(1), third = parsed(2);
    ASSERT_TRUE(second.anterior && third.anterior);
    EXPECT_EQ(second.anterior->huella, first.huella);
    EXPECT_EQ(second.anterior->id, first.id);
    EXPECT_EQ(third.anterior->huella, second.huella);
    EXPECT_EQ(third.kind, verifactu::RecordKind::Anulacion);
    EXPECT_EQ(third.fechaHora, "2026-03-15T10:30:02+01:00");
    const auto check = verifactu::checkChain(recordsFile());
    EXPECT_EQ(check.records, 3);
    EXPECT_FALSE(check.broken);
}

TEST_F(SaleRecordsTest, ANewNumberOrDateCancelsTheOldRecordBeforeTheNewAlta) {
    const auto n = post(entry("121,00"));
    ASSERT_TRUE(change(n, [](SaleEntry& e) {
                    e.lblFecha = "16/03/2026";
                    e.txtDia = "16";
                }).ok());
    EXPECT_EQ(summary(), (QStringList{"alta|F1|F-1|15-03-2026|121.00|2026|1",
                                      "anulacion||F-1|15-03-2026||2026|1",
                                      "alta|F1|F-1|16-03-2026|121.00|2026|1"}));
}

TEST_F(SaleRecordsTest, ACreditNoteIsR1AndATicketF2WithoutRecipient) {
    SaleEntry credit = entry("-121,00");
    credit.cmbSerie = "/Abon";
    post(credit);
    f.ctx.ModeExercici = "TICKETS";
    SaleEntry ticket = entry("12,10");
    ticket.txtdescripcio = "T-1";
    post(ticket);
    SaleEntry ticketCredit = entry("-12,10");
    ticketCredit.txtdescripcio = "T-2";
    ticketCredit.cmbSerie = "/Rect";
    post(ticketCredit);
    EXPECT_EQ(summary(), (QStringList{"alta|R1|F-1/Abon|15-03-2026|-121.00|2026|1",
                                      "alta|F2|T-1|15-03-2026|12.10|2026|2",
                                      "alta|R5|T-2/Rect|15-03-2026|-12.10|2026|3"}));
    EXPECT_EQ(parsed(0).tipoRectificativa, "I");
    EXPECT_TRUE(parsed(0).destinatario);
    EXPECT_FALSE(parsed(1).destinatario) << "a simplified invoice names no customer";
    EXPECT_FALSE(parsed(2).destinatario);
}

TEST_F(SaleRecordsTest, WithholdingIsNotPartOfTheTotalAndExemptGoesApart) {
    SaleEntry e = entry("106,00");
    e.txtBase = {"100,00", "0", "0"};
    e.txtIVA = {"21,00", "0", "0"};
    e.txtBaseIRPF = "100,00";
    e.Text1 = "15";
    e.txtRetencio = "15,00";
    e.txtTotal = "106,00";
    const auto account = sales::Verifica_compte_venda(f.ctx, e.txtTipus);
    ASSERT_TRUE(sales::GrabaApunt(f.ctx, e, *account).ok());
    auto r = parsed(0);
    EXPECT_EQ(r.importeTotal, "121.00");
    EXPECT_EQ(r.cuotaTotal, "21.00");
    ASSERT_EQ(r.desglose.size(), 1u);

    SaleEntry x = entry("131,00");
    x.txtdescripcio = "F-2";
    x.txtBase = {"100,00", "0", "0"};
    x.txtIVA = {"21,00", "0", "0"};
    ASSERT_TRUE(sales::GrabaApunt(f.ctx, x, *account).ok());
    r = parsed(1);
    ASSERT_EQ(r.desglose.size(), 2u);
    EXPECT_EQ(r.desglose[1].exenta, "E1");
    EXPECT_EQ(r.desglose[1].base, "10.00");
    EXPECT_EQ(r.importeTotal, "131.00");
}

TEST_F(SaleRecordsTest, AnIntraCommunityCustomerGoesByItsVatNumberAndIsExempt) {
    exec(gest(),
         "insert into Clients (client, nom, NIF, RE) values (3, 'Dupont SARL', "
         "'FR 12345678901', 0)");
    SaleEntry e = entry("500,00");
    e.txtClient = e.listClientsText = "Dupont SARL";
    e.clientNumber = 3;
    e.rebutNif = "FR 12345678901";
    e.clasificacion = "Factura Intracomunitaria";
    post(e, 0);
    const auto r = parsed(0);
    ASSERT_TRUE(r.destinatario);
    EXPECT_TRUE(r.destinatario->nif.isEmpty());
    EXPECT_EQ(r.destinatario->codigoPais, "FR");
    EXPECT_EQ(r.destinatario->idType, "02");
    EXPECT_EQ(r.destinatario->id, "FR12345678901");
    ASSERT_FALSE(r.desglose.empty());
    for (const auto& line : r.desglose) EXPECT_EQ(line.exenta, "E5");
    EXPECT_EQ(r.cuotaTotal, "0.00");
}

TEST_F(SaleRecordsTest, AFaultBetweenTheSaleAndItsRecordLeavesNeither) {
    post(entry("121,00"));
    verifactu::ensureRecordsFile(recordsFile());
    exec(recordsFile(),
         "create trigger fault before insert on Registros "
         "begin select raise(abort, 'disk full'); end");
    SaleEntry e = entry("50,00");
    e.txtdescripcio = "F-2";
    sales::Reparteix_Total(f.ctx, e, 21, false);
    const auto r = sales::GrabaApunt(f.ctx, e, ventas());
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.error.contains("disk full")) << r.error.toStdString();
    EXPECT_EQ(rows(frasOut(), "select Ordre from FrasOut"), QStringList{"1"});
    EXPECT_EQ(records().size(), 1u);

    // Nor a deletion whose anulación cannot be written.
    EXPECT_THROW(sales::Esborra_Venda(f.ctx, 1), store::StoreError);
    EXPECT_EQ(rows(frasOut(), "select Ordre from FrasOut"), QStringList{"1"});
}

TEST_F(SaleRecordsTest, ARecordIsNeverChangedNorDeleted) {
    post(entry("121,00"));
    EXPECT_THROW(exec(recordsFile(), "update Registros set ImporteTotal = '1.00'"),
                 store::StoreError);
    EXPECT_THROW(exec(recordsFile(), "delete from Registros"), store::StoreError);
    EXPECT_EQ(records().size(), 1u);
}

TEST_F(SaleRecordsTest, OneFlippedCharacterAnywhereIsFoundInItsRecord) {
    for (int i = 0; i < 3; ++i) {
        SaleEntry e = entry("121,00");
        e.txtdescripcio = "F-" + QString::number(i + 1);
        post(e);
    }
    ASSERT_FALSE(verifactu::checkChain(recordsFile()).broken);
    // The middle record with one character changed: the second of a column, the kind, or a
    // letter of the description inside the XML, which the AEAT's hash does not cover.
    const auto flipSecond = [](const QString& c) {
        return c + " = substr(" + c + ", 1, 1) || (case when substr(" + c +
               ", 2, 1) = '7' "
               "then '8' else '7' end) || substr(" +
               c + ", 3)";
    };
    std::vector<std::pair<QString, QString>> changes;
    for (const QString column : {"Emisor", "NumSerie", "Fecha", "ImporteTotal", "FechaHora",
                                 "Huella", "Xml", "Sello", "Ejercicio", "Ordre"})
        changes.emplace_back(column, flipSecond(column));
    changes.emplace_back("Clase", "Clase = 'N'");
    changes.emplace_back("Descripcion",
                         "Xml = replace(Xml, 'Ventas mercaderias', 'Ventas mercaderiaz')");
    for (const auto& [name, assignment] : changes) {
        const QString copy = f.unit.filePath("copy-" + name + ".mdb");
        ASSERT_TRUE(QFile::copy(recordsFile(), copy));
        exec(copy, "drop trigger RegistrosInalterables");
        exec(copy, "update Registros set " + assignment + " where Id = 2");
        const auto check = verifactu::checkChain(copy);
        ASSERT_TRUE(check.broken) << name.toStdString();
        EXPECT_EQ(check.broken->id, 2) << name.toStdString();
    }
}

TEST_F(SaleRecordsTest, AQuoteLeavesNoRecordUntilItIsTurnedIntoAnInvoice) {
    f.ctx.Facturacio = true;
    schema::upgradeBilling(f.ctx);
    SaleEntry q = entry("0");
    q.txtdescripcio = "-";
    q.billing.type = DocType::Presupuesto;
    sales::clearLines(f.ctx);
    sales::LineFields line;
    line.cantidad = "2";
    line.concepto = "Tablero";
    line.precio = "25";
    line.iva = "21";
    sales::saveLine(f.ctx, q, line);
    sales::sumLines(f.ctx, q, false);
    const auto saved = sales::GrabaApunt(f.ctx, q, ventas());
    ASSERT_TRUE(saved.ok()) << saved.error.toStdString();
    EXPECT_TRUE(records().empty());

    auto e = sales::openDocument(f.ctx, DocType::Presupuesto, saved.ordre);
    ASSERT_TRUE(e);
    e->billing.type = DocType::Factura;
    sales::sumLines(f.ctx, *e, false);
    const auto invoice = sales::GrabaApunt(f.ctx, *e, ventas());
    ASSERT_TRUE(invoice.ok()) << invoice.error.toStdString();
    EXPECT_EQ(summary(), QStringList{"alta|F1|1|15-03-2026|60.50|2026|1"});
}

TEST_F(SaleRecordsTest, ACompanyWithRecordsOffWritesNone) {
    verifactu::setRecordsEnabled(f.ctx, false);
    post(entry("121,00"));
    EXPECT_TRUE(records().empty());
    verifactu::setRecordsEnabled(f.ctx, true);
    SaleEntry e = entry("10,00");
    e.txtdescripcio = "F-2";
    post(e);
    EXPECT_EQ(records().size(), 1u);
}

TEST_F(SaleRecordsTest, TheChainRunsAcrossExercisesOfTheCompany) {
    post(entry("121,00"));
    const QString next = f.company + "2027/";
    QDir().mkpath(next);
    schema::createExerciseDatabases(next);
    f.ctx.Directori = next;
    f.ctx.Exercici = "2027";
    schema::Actualitza_Bases(f.ctx);
    exec(next + schema::db::Comptes,
         "insert into Ingresos (Grup, NomGrup, Compte, NomCompte) "
         "values (700, 'Ventas', 7000001, 'Ventas mercaderias')");
    exec(next + schema::db::Gest,
         "insert into Clients (client, nom, NIF, RE) values "
         "(1, 'Ferreteria Puig', 'B11111111', 0)");
    SaleEntry e = entry("10,00");
    e.lblFecha = "02/01/2027";
    post(e);
    EXPECT_EQ(summary(), (QStringList{"alta|F1|F-1|15-03-2026|121.00|2026|1",
                                      "alta|F1|F-1|02-01-2027|10.00|2027|1"}));
    ASSERT_TRUE(parsed(1).anterior);
    EXPECT_EQ(parsed(1).anterior->huella, parsed(0).huella);
}

}  // namespace
}  // namespace tallora::testing
