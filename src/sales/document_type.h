#pragma once
// The five kinds of billing document and what tells them apart: the column that holds the
// number in documentos and detalle (and the counter in Numeracion_Documentos), the word the
// print takes, the journal's caption and its "modificar" kind, the messages of the printed
// number and title, and the option of the sales screen.
#include <QString>

#include <array>
#include <optional>

namespace tallora::sales {

enum class DocType { Factura, Borrador, Presupuesto, Proforma, Albaran };

struct DocTypeInfo {
    DocType type;
    QString column;       // documentos, detalle and Numeracion_Documentos
    QString printType;    // Imprimeix_Document's type; empty for an invoice
    QString journalText;  // Diari_Apunt's type row
    QString journalKind;  // the "modificar" kind of its last journal row
    int numberLabel;      // message of lbl_factura
    int titleMessage;     // message of lbl_tipus_doc; 0 for the literal words
    QString option;       // the screen's option
    QString word;         // the companion's name of the type
};

const DocTypeInfo& docInfo(DocType type);

// The five in the screen's order: invoice, draft, quote, proforma, delivery note.
const std::array<DocType, 5>& allDocTypes();

// The four that are not invoices, in the order Graba_Document tests the loaded type.
const std::array<DocType, 4>& otherDocTypes();

// A type by its column, print type, journal kind or companion word, without regard to case;
// an empty text is an invoice (Imprimeix_Document's empty type).
std::optional<DocType> docTypeFrom(const QString& name);

}  // namespace tallora::sales
