#pragma once
// One VERI*FACTU invoicing record, alta or anulación, with the values exactly as the record
// writes them: amounts as text with two decimals and a point, dates dd-mm-yyyy. The hash is
// taken over those texts, so the same texts go into the XML and into the hash.
#include <QString>

#include <optional>
#include <vector>

namespace tallora::verifactu {

enum class RecordKind { Alta, Anulacion };

// IDFactura: issuer's tax number, number with its series as printed, date of issue.
struct InvoiceId {
    QString emisor;
    QString numSerie;
    QString fecha;  // dd-mm-yyyy
    bool operator==(const InvoiceId&) const = default;
};

// Encadenamiento's RegistroAnterior: the previous record of the issuer's chain.
struct ChainLink {
    InvoiceId id;
    QString huella;
};

// IDDestinatario: a Spanish tax number, or a foreign identifier (IDOtro).
struct Recipient {
    QString nombre;
    QString nif;         // set for a Spanish tax number
    QString codigoPais;  // IDOtro otherwise
    QString idType;      // "02" NIF-IVA, "06" other, "07" not registered
    QString id;
};

// DetalleDesglose. Either `calificacion` (S1 …) with a rate and quota, or `exenta` (E1 …).
struct BreakdownLine {
    QString claveRegimen = QStringLiteral("01");
    QString calificacion;
    QString exenta;
    QString tipoImpositivo;
    QString base;
    QString cuota;
    QString tipoRecargo;
    QString cuotaRecargo;
};

struct InvoiceRecord {
    RecordKind kind = RecordKind::Alta;
    InvoiceId id;
    QString nombreEmisor;
    bool subsanacion = false;
    QString tipoFactura;        // F1, F2, R1, R5
    QString tipoRectificativa;  // "I" with an R type
    QString descripcion;
    std::optional<Recipient> destinatario;
    std::vector<BreakdownLine> desglose;
    QString cuotaTotal;
    QString importeTotal;
    std::optional<ChainLink> anterior;  // none: the first record of the chain
    QString fechaHora;                  // FechaHoraHusoGenRegistro
    QString huella;
};

// The text the hash is taken over: name=value pairs joined by '&', values trimmed.
QString hashText(const InvoiceRecord& record);
// SHA-256 of hashText in 64 uppercase hexadecimal characters.
QString computeHuella(const InvoiceRecord& record);
// SHA-256 of any UTF-8 text, uppercase hexadecimal.
QString sha256Hex(const QString& text);

}  // namespace tallora::verifactu
