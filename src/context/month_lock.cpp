#include "month_lock.h"

#include "dialogs.h"
#include "messages.h"
#include "notation.h"
#include "working_context.h"

namespace tallora {

QString blocksFile(const WorkingContext& ctx) {
    return ctx.exerciseFile(ctx.Exercici + QStringLiteral("blocks.DAT"));
}

std::array<int, 12> readMonthLock(const QString& path) {
    std::array<int, 12> months{};
    const auto content = readTextFile(path);
    if (!content) return months;
    NotationReader reader(*content);
    for (int& month : months) {
        const auto item = reader.next();
        if (!item) break;
        month = item->toNumber().value_or(0) == 1 ? 1 : 0;
    }
    return months;
}

bool writeMonthLock(const QString& path, const std::array<int, 12>& months) {
    NotationWriter w;
    for (int month : months) w.number(std::int64_t{month}).endLine();
    return writeTextFile(path, w.result());
}

void loadMonthLock(WorkingContext& ctx) { ctx.chkmesos = readMonthLock(blocksFile(ctx)); }

bool saveMonthLock(const WorkingContext& ctx) {
    return writeMonthLock(blocksFile(ctx), ctx.chkmesos);
}

bool Mes_Bloquejat(const WorkingContext& ctx, int month) {
    return month >= 1 && month <= 12 && ctx.chkmesos[month - 1] == 1;
}

std::optional<int> Mes_Per_Defecte(const WorkingContext& ctx) {
    int open = 0;
    int last = 0;
    for (int month = 1; month <= 12; ++month) {
        if (Mes_Bloquejat(ctx, month)) continue;
        ++open;
        last = month;
    }
    if (open != 1) return std::nullopt;
    return last;
}

bool Verifica_Mes(const WorkingContext& ctx, Dialogs& dialogs, int month) {
    if (!Mes_Bloquejat(ctx, month)) return true;
    dialogs.stop(Missatge(ctx, 622));
    return false;
}

}  // namespace tallora
