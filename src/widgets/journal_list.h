#pragma once
// The on-screen day log (ListRegistres) of the posting screens: each row painted by its kind,
// and the rows that reopen an entry underlined, holding the entry's number.
#include "context/day_log.h"

#include <cstdint>
#include <optional>

class QListWidget;
class QWidget;

namespace tallora::ui {

// The list, named ListRegistres; it takes the focus only by a click.
QListWidget* journalList(QWidget* parent);
// Escriu_Diari: appends `row` and scrolls to it.
void writeJournalRow(QListWidget* list, const JournalRow& row);
// The number behind the current row when it is one that reopens an entry.
std::optional<std::int64_t> reopenNumber(const QListWidget* list);
// The kind of that row ("modificar", "Bor-modificar" ...), telling what the number is of.
QString reopenKind(const QListWidget* list);

}  // namespace tallora::ui
