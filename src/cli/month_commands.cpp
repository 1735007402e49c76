#include "commands.h"
#include "context/messages.h"
#include "context/month_lock.h"

#include <QDir>

namespace tallora::cli {
namespace {

// Month arguments start at the third word: NIF8, year, then the months.
std::vector<int> monthArguments(const CliOptions& o) {
    std::vector<int> months;
    for (qsizetype i = 2; i < o.arguments.size(); ++i)
        months.push_back(monthArgument(o.arguments[i]));
    return months;
}

int setMonths(Session& s, const CliOptions& o, int value) {
    const QString year = yearArgument(o.arguments[1]);
    const std::vector<int> months = monthArguments(o);
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    loadMonthLock(s.ctx);
    for (int month : months) s.ctx.chkmesos[month - 1] = value;
    if (!saveMonthLock(s.ctx))
        return s.refuse(
            QStringLiteral("cannot write %1").arg(QDir::toNativeSeparators(blocksFile(s.ctx))));
    return s.finish(true);
}

}  // namespace

int monthsCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    loadMonthLock(s.ctx);
    for (int month = 1; month <= 12; ++month) {
        s.out << month << '\t' << Missatge(s.ctx, 5000 + month) << '\t'
              << (Mes_Bloquejat(s.ctx, month) ? "locked" : "open") << '\n';
    }
    return s.finish(true);
}

int monthLockCommand(Session& s, const CliOptions& o) {
    return setMonths(s, o, 1);
}

int monthUnlockCommand(Session& s, const CliOptions& o) {
    return setMonths(s, o, 0);
}

}  // namespace tallora::cli
