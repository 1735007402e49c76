// Other movements: the entry screen and its inquiry from the command line.
#include "account_words.h"
#include "commands.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "entry_common.h"
#include "inquiry_options.h"
#include "master_common.h"
#include "treasury/other_movements.h"

#include <algorithm>

namespace tallora::cli {
namespace {

// The four account options: each side takes a treasury account or an other account, by the
// number their lists print.
struct SideWords {
    QString fromTreasury, fromOther, toTreasury, toOther;
};
SideWords sideWords(const CliOptions& o) {
    SideWords w;
    const auto take = [&](const char* option, QString& field) {
        if (o.given(QString::fromLatin1(option)))
            field = numberArgument(o.value(QString::fromLatin1(option)));
    };
    take("from-treasury", w.fromTreasury);
    take("from-other", w.fromOther);
    take("to-treasury", w.toTreasury);
    take("to-other", w.toOther);
    if (!w.fromTreasury.isEmpty() && !w.fromOther.isEmpty())
        throw UsageError{
            QStringLiteral("--from-treasury and --from-other: the money leaves one account")};
    if (!w.toTreasury.isEmpty() && !w.toOther.isEmpty())
        throw UsageError{
            QStringLiteral("--to-treasury and --to-other: the money enters one account")};
    return w;
}

// The options given over the fields of `e`; a side given replaces both of its accounts.
bool takeFields(Session& s, const CliOptions& o, const SideWords& w, treasury::OtherMovement& e) {
    const auto treasuryAccounts = treasury::treasuryAccountItems(s.ctx);
    const auto otherAccounts = treasury::otherAccountItems(s.ctx);
    const QString t = QStringLiteral("treasury account"), a = QStringLiteral("other account");
    if (!accountListed(s, treasuryAccounts, w.fromTreasury, t) ||
        !accountListed(s, otherAccounts, w.fromOther, a) ||
        !accountListed(s, treasuryAccounts, w.toTreasury, t) ||
        !accountListed(s, otherAccounts, w.toOther, a))
        return false;
    if (!w.fromTreasury.isEmpty() || !w.fromOther.isEmpty()) {
        e.saleTesoreria = w.fromTreasury.toLongLong();
        e.saleOtra = w.fromOther.toLongLong();
    }
    if (!w.toTreasury.isEmpty() || !w.toOther.isEmpty()) {
        e.entraTesoreria = w.toTreasury.toLongLong();
        e.entraOtra = w.toOther.toLongLong();
    }
    takeText(o, "concept", e.concepto);
    if (o.given(QStringLiteral("amount")))
        e.importe = fieldAmount(s.ctx, o.value(QStringLiteral("amount")));
    return true;
}

int post(Session& s, const CliOptions& o, std::optional<QString> number) {
    const ExerciseWords w = exerciseWords(o);
    const SideWords sides = sideWords(o);
    amountArgument(QStringLiteral("amount"), o.value(QStringLiteral("amount")));
    const QDate date = exerciseDate(w, o, QStringLiteral("date"));
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    loadMonthLock(s.ctx);
    treasury::OtherMovement e;
    if (number) {
        const auto loaded = treasury::loadOtherMovement(s.ctx, number->toLongLong());
        if (!loaded) return noSuchRecord(s, QStringLiteral("other movement"), *number);
        e = *loaded;
    }
    // A new entry takes the date field's default; a change keeps its date unless told.
    if (!number || o.given(QStringLiteral("date"))) e.data = date;
    if (!takeFields(s, o, sides, e)) return kRefused;
    EntryDialogs faults(s.dialogs);
    const treasury::OtherPosting p = treasury::postOtherMovement(s.ctx, faults, e);
    if (p.refused) return s.finish(false);
    s.out << p.asiento << '\n';
    return s.finish(true);
}

}  // namespace

int otherMovementAddCommand(Session& s, const CliOptions& o) {
    return post(s, o, std::nullopt);
}

int otherMovementChangeCommand(Session& s, const CliOptions& o) {
    return post(s, o, numberArgument(o.arguments[2]));
}

int otherMovementRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    const auto e = treasury::loadOtherMovement(s.ctx, number.toLongLong());
    if (!e) return noSuchRecord(s, QStringLiteral("other movement"), number);
    if (s.dialogs.yesNo(treasury::deleteOtherQuestion(s.ctx, number.toLongLong(), e->concepto)) !=
        Dialogs::Answer::Yes)
        return kRefused;
    treasury::deleteOtherMovement(s.ctx, number.toLongLong());
    return s.finish(true);
}

int otherMovementsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString account = o.given(QStringLiteral("account"))
                                ? numberArgument(o.value(QStringLiteral("account")))
                                : QString();
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    treasury::OtherFilter filter{dateAmountFilter(s.ctx, o), std::nullopt};
    if (!account.isEmpty()) {
        if (!accountListed(s, treasury::otherAccountItems(s.ctx), account,
                           QStringLiteral("other account")))
            return kRefused;
        filter.cuenta = account.toLongLong();
    }
    for (const auto& r : treasury::searchOtherMovements(s.ctx, filter))
        s.out << r.asiento << '\t' << r.data << '\t' << r.concepto << '\t' << r.importe << '\t'
              << r.entra << '\t' << r.sale << '\n';
    return s.finish(true);
}

}  // namespace tallora::cli
