#pragma once
// The month lock of the open exercise: which months refuse new entries.
//
// The twelve values live in the working context (chkmesos) from the opening of the
// exercise to the closing of the shell; this file reads and writes <year>blocks.DAT and
// answers the two questions the posting screens ask.
#include "fwd.h"

#include <QString>

#include <array>
#include <optional>

namespace tallora {

// <exercise folder>/<year>blocks.DAT
QString blocksFile(const WorkingContext& ctx);

// Twelve lines of 0 or 1, January first. A missing file, or a value that cannot be read,
// leaves the month open; reading stops without harm at the end of the file.
std::array<int, 12> readMonthLock(const QString& path);
bool writeMonthLock(const QString& path, const std::array<int, 12>& months);

// Reads the file of the open exercise into ctx.chkmesos.
void loadMonthLock(WorkingContext& ctx);
// Writes ctx.chkmesos to the file of the open exercise.
bool saveMonthLock(const WorkingContext& ctx);

// True when the month (1 to 12) is locked. Months outside 1..12 are never locked.
bool Mes_Bloquejat(const WorkingContext& ctx, int month);
// The month a new entry gets on its own: the one open month when exactly one is open.
std::optional<int> Mes_Per_Defecte(const WorkingContext& ctx);
// The check of a posting: a locked month shows message 622 and gives false.
bool Verifica_Mes(const WorkingContext& ctx, Dialogs& dialogs, int month);

}  // namespace tallora
