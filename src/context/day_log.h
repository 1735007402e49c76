#pragma once
// The on-screen day log of the posting screens (ListRegistres): a running record of what was
// saved since the screen opened. The logic of each screen gives the rows; the screen paints
// them by kind, and a "modificar" row reopens the entry whose number it holds.
#include "fwd.h"
#include "money.h"

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <vector>

namespace tallora {

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
    // The number behind a "modificar" row; 0 elsewhere.
    std::int64_t number = 0;
    // A "modificar" kind: a double click reopens the entry.
    bool opensChange() const;
};

// The kinds that reopen an entry, with the text of their row; empty for any other kind.
QString modifyCaption(const QString& kind);

// The title written when a posting screen opens: message 614, then the date and the time.
std::vector<JournalRow> journalTitle(const WorkingContext& ctx, const QDateTime& now);

// Builds the rows of one posting.
class JournalRows {
public:
    void add(const QString& kind, const QString& text = {}) { rows_.push_back({kind, text, 0}); }
    // An amount row: green when positive, red otherwise.
    void amount(const QString& text, Money value) {
        add(value > Money{} ? journal::ImportVerd : journal::ImportVermell, text);
    }
    void push(JournalRow row) { rows_.push_back(std::move(row)); }
    // With treasury control, who settled the entry: message 6677 and the account, or 6676
    // when none (pending).
    void settledBy(const WorkingContext& ctx, const QString& account);
    // The closing amounts of a posting: the exempt base and the withholding when not zero,
    // then the total.
    void closingAmounts(const WorkingContext& ctx, Money exempt, Money irpfBase,
                        const QString& irpfPercent, Money withholding, Money total);
    // The close of a posting: on one row written, the row that reopens entry `number` (of
    // kind `modifyKind`) and message 654; otherwise messages 655 and 656.
    void result(const WorkingContext& ctx, int affected, std::int64_t number,
                const QString& modifyKind = journal::Modificar);
    std::vector<JournalRow> take() { return std::move(rows_); }

private:
    std::vector<JournalRow> rows_;
};

}  // namespace tallora
