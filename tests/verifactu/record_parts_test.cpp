// The pieces of a record: the time with Madrid's or the Canaries' offset whatever the
// machine's zone, the tax numbers' check characters, the XML read back, the QR's address.
#include "verifactu/qr_address.h"
#include "verifactu/record_time.h"
#include "verifactu/record_xml.h"
#include "verifactu/system_identity.h"
#include "verifactu/tax_id.h"

#include "context/working_context.h"

#include <QTimeZone>

#include <gtest/gtest.h>

namespace tallora::verifactu {
namespace {

QDateTime utc(int y, int mo, int d, int h, int mi, int s = 0) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::UTC);
}

TEST(RecordTime, WinterInMadridIsOneHourAheadOfUtc) {
    EXPECT_EQ(recordTimestamp(utc(2026, 1, 15, 18, 20, 30), false), "2026-01-15T19:20:30+01:00");
}

TEST(RecordTime, SummerInMadridIsTwoHoursAhead) {
    EXPECT_EQ(recordTimestamp(utc(2026, 7, 1, 8, 0), false), "2026-07-01T10:00:00+02:00");
}

TEST(RecordTime, TheChangeOfTimeHappensAtOneUtcOnTheLastSundays) {
    // 29 March 2026 and 25 October 2026 are the last Sundays.
    EXPECT_EQ(recordTimestamp(utc(2026, 3, 29, 0, 59, 59), false), "2026-03-29T01:59:59+01:00");
    EXPECT_EQ(recordTimestamp(utc(2026, 3, 29, 1, 0), false), "2026-03-29T03:00:00+02:00");
    EXPECT_EQ(recordTimestamp(utc(2026, 10, 25, 0, 59), false), "2026-10-25T02:59:00+02:00");
    EXPECT_EQ(recordTimestamp(utc(2026, 10, 25, 1, 0), false), "2026-10-25T02:00:00+01:00");
}

TEST(RecordTime, TheCanariesAreAnHourBehindMadrid) {
    EXPECT_EQ(recordTimestamp(utc(2026, 1, 15, 18, 20, 30), true), "2026-01-15T18:20:30+00:00");
    EXPECT_EQ(recordTimestamp(utc(2026, 7, 1, 8, 0), true), "2026-07-01T09:00:00+01:00");
}

TEST(RecordTime, TheMachinesZoneDoesNotCount) {
    // An instant given in a far zone is the same instant.
    const QDateTime far(QDate(2026, 7, 2), QTime(0, 0), QTimeZone("Pacific/Kiritimati"));
    ASSERT_TRUE(far.isValid());
    EXPECT_EQ(recordTimestamp(far, false), "2026-07-01T12:00:00+02:00");
}

TEST(RecordTime, CanaryPostcodes) {
    EXPECT_TRUE(isCanaryPostcode("35001"));
    EXPECT_TRUE(isCanaryPostcode(" 38400"));
    EXPECT_FALSE(isCanaryPostcode("08001"));
    EXPECT_FALSE(isCanaryPostcode("3500"));
    EXPECT_FALSE(isCanaryPostcode(""));
}

TEST(TaxId, TheValidNumbersPass) {
    for (const char* id :
         {"54362315K", "11111111H", "X2482300W", "X1111111G", "X5253868R", "L1111111G", "M1234567L",
          "B64717838", "A11111119", "J99216582", "A13585625", "B58378431"})
        EXPECT_TRUE(validSpanishTaxId(id)) << id;
}

TEST(TaxId, TheInvalidNumbersFail) {
    for (const char* id : {"54362315Z", "11111111T", "X2482300A", "X1111111A", "A11111118",
                           "B64717839", "J99216583", "L1111111C", "O1234567L", "", "1234"})
        EXPECT_FALSE(validSpanishTaxId(id)) << id;
}

TEST(TaxId, BlanksHyphensAndALeadingEsAreIgnored) {
    EXPECT_EQ(normalisedTaxId("es b-64717838"), "B64717838");
    EXPECT_TRUE(validSpanishTaxId("ES54362315K"));
    EXPECT_TRUE(validSpanishTaxId("54.362.315-k"));
    EXPECT_EQ(normalisedTaxId("FR12345678901"), "FR12345678901");
}

TEST(TaxId, AWarningOnlyForASpanishNumberThatFailsItsCheck) {
    WorkingContext ctx;
    EXPECT_EQ(taxIdWarning(ctx, ""), "");
    EXPECT_EQ(taxIdWarning(ctx, "B64717838"), "");
    EXPECT_EQ(taxIdWarning(ctx, "DE123456789"), "") << "a foreign VAT number";
    EXPECT_TRUE(taxIdWarning(ctx, "B64717839").contains("B64717839"));
    EXPECT_TRUE(taxIdWarning(ctx, "1234").contains("1234")) << "too short to be any number";
    ctx.setIdioma("cat");
    EXPECT_TRUE(taxIdWarning(ctx, "54362315Z").startsWith("Atenció"));
}

TEST(Declaration, NamesTheSystemItsModesTheProducerAndTheLaw) {
    WorkingContext ctx;
    const QString text = declarationOfConformity(ctx);
    const SystemIdentity id = programIdentity({});
    for (const char* part :
         {"Nombre del sistema: Tallora 5", "Código identificador: T5", "Versión: ",
          "Solo puede funcionar como VERI*FACTU: Sí", "varios obligados tributarios: Sí",
          "Productor: ", "Dirección: ", "29.2.j)", "Real Decreto 1007/2023", "Orden HAC/1177/2024"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(part))) << part;
    EXPECT_TRUE(text.contains("Versión: " + id.version));
    ctx.setIdioma("cat");
    EXPECT_TRUE(declarationOfConformity(ctx).contains("Reial Decret 1007/2023"));
}

TEST(RecordXml, AnAltaReadsBackWithEveryValue) {
    InvoiceRecord r;
    r.id = {"B64717838", "12/Abon", "15-03-2026"};
    r.nombreEmisor = "Ferretería & Cía <Vic>";
    r.subsanacion = true;
    r.tipoFactura = "R1";
    r.tipoRectificativa = "I";
    r.descripcion = "Ventas";
    r.destinatario = Recipient{"Dupont SARL", "", "FR", "02", "FR12345678901"};
    r.desglose = {{"18", "S1", "", "21.00", "-100.00", "-21.00", "5.20", "-5.20"},
                  {"01", "", "E5", "", "50.00", "", "", ""}};
    r.cuotaTotal = "-26.20";
    r.importeTotal = "-76.20";
    r.anterior = ChainLink{{"B64717838", "11", "14-03-2026"}, QString(64, u'C')};
    r.fechaHora = "2026-03-15T10:00:00+01:00";
    r.huella = computeHuella(r);
    const QString xml = recordXml(r, programIdentity("inst-1"));
    EXPECT_TRUE(xml.startsWith("<sf:RegistroAlta><sf:IDVersion>1.0</sf:IDVersion>"));
    EXPECT_TRUE(xml.contains("Ferretería &amp; Cía &lt;Vic"));
    const auto back = parseRecordXml(xml);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->id, r.id);
    EXPECT_EQ(back->nombreEmisor, r.nombreEmisor);
    EXPECT_TRUE(back->subsanacion);
    EXPECT_EQ(back->tipoFactura, "R1");
    EXPECT_EQ(back->tipoRectificativa, "I");
    ASSERT_TRUE(back->destinatario);
    EXPECT_EQ(back->destinatario->id, "FR12345678901");
    EXPECT_EQ(back->destinatario->idType, "02");
    ASSERT_EQ(back->desglose.size(), 2u);
    EXPECT_EQ(back->desglose[0].claveRegimen, "18");
    EXPECT_EQ(back->desglose[0].cuotaRecargo, "-5.20");
    EXPECT_EQ(back->desglose[1].exenta, "E5");
    EXPECT_EQ(back->cuotaTotal, "-26.20");
    EXPECT_EQ(back->importeTotal, "-76.20");
    ASSERT_TRUE(back->anterior);
    EXPECT_EQ(back->anterior->id.numSerie, "11");
    EXPECT_EQ(back->anterior->huella, QString(64, u'C'));
    EXPECT_EQ(back->fechaHora, r.fechaHora);
    EXPECT_EQ(back->huella, r.huella);
    EXPECT_EQ(computeHuella(*back), r.huella);
    // The check's own reading finds the same values by their tags.
    const auto quick = chainFields(xml);
    ASSERT_TRUE(quick);
    EXPECT_EQ(quick->id, r.id);
    EXPECT_TRUE(quick->subsanacion);
    EXPECT_EQ(quick->tipoFactura, "R1");
    EXPECT_EQ(quick->cuotaTotal, "-26.20");
    EXPECT_EQ(quick->importeTotal, "-76.20");
    ASSERT_TRUE(quick->anterior);
    EXPECT_EQ(quick->anterior->id.numSerie, "11");
    EXPECT_EQ(quick->anterior->huella, QString(64, u'C'));
    EXPECT_EQ(quick->huella, r.huella);
    EXPECT_EQ(computeHuella(*quick), r.huella);
}

TEST(RecordXml, TheChecksReadingUnescapesAndRefusesARecordWithoutItsTags) {
    InvoiceRecord r;
    r.id = {"B64717838", "A&B<1>", "15-03-2026"};
    r.tipoFactura = "F1";
    r.cuotaTotal = "1.00";
    r.importeTotal = "2.00";
    r.fechaHora = "2026-03-15T10:00:00+01:00";
    r.huella = computeHuella(r);
    const QString xml = recordXml(r, programIdentity("x"));
    const auto quick = chainFields(xml);
    ASSERT_TRUE(quick);
    EXPECT_EQ(quick->id.numSerie, "A&B<1>");
    EXPECT_FALSE(quick->anterior);
    EXPECT_FALSE(chainFields(QString(xml).replace("<sf:PrimerRegistro>S</sf:PrimerRegistro>", "")));
    EXPECT_FALSE(chainFields(QString(xml).replace("ImporteTotal", "Importe")));
    EXPECT_FALSE(chainFields("<sf:Otro/>"));
}

TEST(RecordXml, TheFirstRecordSaysSoAndAnAnulacionNamesTheCancelledInvoice) {
    InvoiceRecord r;
    r.kind = RecordKind::Anulacion;
    r.id = {"B64717838", "7", "01-02-2026"};
    r.fechaHora = "2026-02-01T10:00:00+01:00";
    r.huella = computeHuella(r);
    const QString xml = recordXml(r, programIdentity("inst-1"));
    EXPECT_TRUE(xml.contains("<sf:PrimerRegistro>S</sf:PrimerRegistro>"));
    EXPECT_TRUE(xml.contains("<sf:NumSerieFacturaAnulada>7</sf:NumSerieFacturaAnulada>"));
    const auto back = parseRecordXml(xml);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->kind, RecordKind::Anulacion);
    EXPECT_EQ(back->id, r.id);
    EXPECT_FALSE(back->anterior);
}

TEST(RecordXml, ATextThatIsNotARecordIsRefused) {
    EXPECT_FALSE(parseRecordXml("<sf:Otra><sf:Huella>x</sf:Huella></sf:Otra>"));
    EXPECT_FALSE(parseRecordXml("<sf:RegistroAlta><sf:IDVersion>"));
    EXPECT_FALSE(parseRecordXml(""));
}

TEST(QrAddress, TheAeatExample) {
    EXPECT_EQ(qrAddress({"A86018322", "FACT001", "01-10-2025"}, "100.23", Environment::Production),
              "https://www2.agenciatributaria.gob.es/wlpl/TIKE-CONT/ValidarQR?nif=A86018322&"
              "numserie=FACT001&fecha=01-10-2025&importe=100.23");
}

TEST(QrAddress, ValuesAreUrlEncodedAndTheTestServiceHasItsOwnHost) {
    EXPECT_EQ(qrAddress({"89890001K", "12345678&G33", "01-01-2024"}, "123.45", Environment::Test),
              "https://prewww2.aeat.es/wlpl/TIKE-CONT/ValidarQR?nif=89890001K&"
              "numserie=12345678%26G33&fecha=01-01-2024&importe=123.45");
    EXPECT_TRUE(
        qrAddress({"B64717838", "12/Abon+1", "01-01-2024"}, "-1.00", Environment::Production)
            .contains("numserie=12%2FAbon%2B1&"));
}

}  // namespace
}  // namespace tallora::verifactu
