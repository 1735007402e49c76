// The hash of a record: the AEAT's own vectors and further ones, reproduced by the program's
// record code (the text it builds from a record, not a text typed here).
#include "verifactu/invoice_record.h"

#include <gtest/gtest.h>

namespace tallora::verifactu {
namespace {

InvoiceRecord alta(const QString& emisor, const QString& numero, const QString& fecha,
                   const QString& tipo, const QString& cuota, const QString& total,
                   const QString& previous, const QString& time) {
    InvoiceRecord r;
    r.id = {emisor, numero, fecha};
    r.tipoFactura = tipo;
    r.cuotaTotal = cuota;
    r.importeTotal = total;
    if (!previous.isEmpty()) r.anterior = ChainLink{{emisor, "X", "01-01-2024"}, previous};
    r.fechaHora = time;
    return r;
}

TEST(RecordHash, TheFirstAltaOfTheAeatVectors) {
    const InvoiceRecord r = alta("89890001K", "12345678/G33", "01-01-2024", "F1", "12.35", "123.45",
                                 "", "2024-01-01T19:20:30+01:00");
    EXPECT_EQ(hashText(r),
              "IDEmisorFactura=89890001K&NumSerieFactura=12345678/G33&FechaExpedicionFactura="
              "01-01-2024&TipoFactura=F1&CuotaTotal=12.35&ImporteTotal=123.45&Huella=&"
              "FechaHoraHusoGenRegistro=2024-01-01T19:20:30+01:00");
    EXPECT_EQ(computeHuella(r), "3C464DAF61ACB827C65FDA19F352A4E3BDC2C640E9E9FC4CC058073F38F12F60");
}

TEST(RecordHash, TheChainedAltaOfTheAeatVectors) {
    const InvoiceRecord r = alta("89890001K", "12345679/G34", "01-01-2024", "F1", "12.35", "123.45",
                                 "3C464DAF61ACB827C65FDA19F352A4E3BDC2C640E9E9FC4CC058073F38F12F60",
                                 "2024-01-01T19:20:35+01:00");
    EXPECT_EQ(computeHuella(r), "F7B94CFD8924EDFF273501B01EE5153E4CE8F259766F88CF6ACB8935802A2B97");
}

TEST(RecordHash, TheChainedAnulacionOfTheAeatVectors) {
    InvoiceRecord r;
    r.kind = RecordKind::Anulacion;
    r.id = {"89890001K", "12345679/G34", "01-01-2024"};
    r.anterior =
        ChainLink{r.id, "F7B94CFD8924EDFF273501B01EE5153E4CE8F259766F88CF6ACB8935802A2B97"};
    r.fechaHora = "2024-01-01T19:20:40+01:00";
    EXPECT_EQ(hashText(r),
              "IDEmisorFacturaAnulada=89890001K&NumSerieFacturaAnulada=12345679/G34&"
              "FechaExpedicionFacturaAnulada=01-01-2024&Huella=F7B94CFD8924EDFF273501B01EE5153E4"
              "CE8F259766F88CF6ACB8935802A2B97&FechaHoraHusoGenRegistro=2024-01-01T19:20:40+01:00");
    EXPECT_EQ(computeHuella(r), "177547C0D57AC74748561D054A9CEC14B4C4EA23D1BEFD6F2E69E3A388F90C68");
}

TEST(RecordHash, TheFurtherVectorsOfSimplifiedInvoices) {
    EXPECT_EQ(computeHuella(alta("A00000000", "PRUEBA-0001", "01-06-2025", "F2", "2.10", "12.10",
                                 "", "2025-06-01T10:20:30+02:00")),
              "F223F0A84F7D0C701C13C97CF10A1628FF9E46A003DDAEF3A804FBD799D82070");
    EXPECT_EQ(computeHuella(alta("A00000000", "PRUEBA-0002", "02-06-2025", "F2", "21.00", "121.00",
                                 QString(64, u'A'), "2025-06-02T20:30:40+02:00")),
              "4566062C5A5D7DA4E0E876C0994071CD807962629F8D3C1F33B91EDAA65B2BA1");
}

TEST(RecordHash, AnAmountIsHashedAsItIsWritten) {
    const auto with = [](const QString& cuota) {
        return computeHuella(alta("89890001K", "1", "01-01-2024", "F1", cuota, "123.45", "",
                                  "2024-01-01T19:20:30+01:00"));
    };
    EXPECT_NE(with("12.35"), with("12.350"));
    EXPECT_NE(with("12.35"), with("12.4"));
}

TEST(RecordHash, SurroundingBlanksOfAValueAreNotHashed) {
    InvoiceRecord r = alta("89890001K", "12345678/G33", "01-01-2024", "F1", "12.35", "123.45", "",
                           "2024-01-01T19:20:30+01:00");
    r.id.numSerie = "  12345678/G33 ";
    EXPECT_EQ(computeHuella(r), "3C464DAF61ACB827C65FDA19F352A4E3BDC2C640E9E9FC4CC058073F38F12F60");
}

}  // namespace
}  // namespace tallora::verifactu
