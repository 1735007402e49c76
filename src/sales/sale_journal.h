#pragma once
// The on-screen journal of the sales screen (ListRegistres): a running log of what was saved
// since the screen opened. The logic gives the rows; the screen paints them by kind.
#include "sale_entry.h"

#include "context/fwd.h"

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <vector>

namespace tallora::sales {

// Row kinds, as Escriu_Diari knows them.
namespace journal {
inline const QString Titol = QStringLiteral("titol");
inline const QString Desc = QStringLiteral("desc");
inline const QString Blank = QStringLiteral("blank");
inline const QString Final = QStringLiteral("final");
inline const QString Start = QStringLiteral("START");
inline const QString ImportVermell = QStringLiteral("IMPORT_VERMELL");  // negative or zero
inline const QString ImportVerd = QStringLiteral("IMPORT_VERD");        // positive
inline const QString ResultadoSI = QStringLiteral("resultadoSI");
inline const QString ResultadoNO = QStringLiteral("resultadoNO");
inline const QString Modificar = QStringLiteral("modificar");
}  // namespace journal

struct JournalRow {
    QString kind;
    QString text;
    // The invoice number behind a "modificar" row; 0 elsewhere.
    std::int64_t number = 0;
    // A "modificar" kind: a double click reopens the document.
    bool opensChange() const;
};

// The document type of the entry as the journal names it and reopens it.
struct JournalType {
    QString caption = QStringLiteral("(Factura)");
    QString modifyKind = journal::Modificar;
};

// The kinds that reopen a document, with the text of their row.
QString modifyCaption(const QString& kind);

// The title written when the screen opens: message 614, then the date and the time.
std::vector<JournalRow> journalTitle(const WorkingContext& ctx, const QDateTime& now);

struct JournalPosting {
    std::int64_t ordre = 0;
    int affected = 0;
    bool change = false;          // a posted sale saved again (message 651)
    bool classification = false;  // the classification option is on
    JournalType type;
};

// Diari_Apunt: the rows of one posting.
std::vector<JournalRow> Diari_Apunt(const WorkingContext& ctx, const SaleEntry& entry,
                                    const JournalPosting& posting);

}  // namespace tallora::sales
