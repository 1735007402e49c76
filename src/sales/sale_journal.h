#pragma once
// The on-screen journal of the sales screen (ListRegistres): a running log of what was saved
// since the screen opened. The logic gives the rows; the screen paints them by kind.
#include "sale_entry.h"

#include "context/day_log.h"
#include "context/fwd.h"

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <vector>

namespace tallora::sales {

// The day log's rows and kinds are those of every posting screen.
namespace journal = ::tallora::journal;
using ::tallora::JournalRow;
using ::tallora::journalTitle;
using ::tallora::modifyCaption;

// The document type of the entry as the journal names it and reopens it.
struct JournalType {
    QString caption = QStringLiteral("(Factura)");
    QString modifyKind = journal::Modificar;
};

// The journal's caption and "modificar" kind of a document type.
JournalType journalType(DocType type);

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
