#include "commands.h"
#include "context/common_helpers.h"
#include "context/working_context.h"
#include "master/treasury_accounts.h"
#include "master_common.h"
#include "schema/creation.h"
#include "store/database.h"

#include <QRegularExpression>

#include <optional>

namespace tallora::cli {
namespace {

using master::OtherAccount;
using master::TreasuryAccount;

// The two entries of the group list, in its order.
const QStringList& treasuryKinds() {
    static const QStringList kinds{"cash", "bank"};
    return kinds;
}
// The entries of the asset/liability list and what each stores; "none" is no selection.
const QStringList& otherKinds() {
    static const QStringList kinds{"asset", "liability", "none"};
    return kinds;
}
const QStringList& otherTipus() {
    static const QStringList tipus{"A", "P", ""};
    return tipus;
}

// The group number is a Long of the table; blank is allowed, it is saved as 0.
QString groupArgument(const QString& text) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{0,9}$"));
    if (!digits.match(text).hasMatch())
        throw UsageError{QStringLiteral("--group: \"%1\" is not a group number").arg(text)};
    return text;
}

void checkTreasuryFields(const CliOptions& o) {
    if (o.given(QStringLiteral("kind")))
        choiceArgument(QStringLiteral("kind"), o.value(QStringLiteral("kind")), treasuryKinds());
    amountArgument(QStringLiteral("balance"), o.value(QStringLiteral("balance")));
}

void takeTreasuryFields(const Session& s, const CliOptions& o, TreasuryAccount& t) {
    takeText(o, "name", t.entidad);
    takeText(o, "ccc", t.ccc);
    if (o.given(QStringLiteral("kind")))
        t.grup = choiceArgument(QStringLiteral("kind"), o.value(QStringLiteral("kind")),
                                treasuryKinds()) == 0
                     ? master::kGrupCaja
                     : master::kGrupBancos;
    if (o.given(QStringLiteral("balance")))
        t.saldo = fieldAmount(s.ctx, o.value(QStringLiteral("balance")));
}

void checkOtherFields(const CliOptions& o) {
    if (o.given(QStringLiteral("kind")))
        choiceArgument(QStringLiteral("kind"), o.value(QStringLiteral("kind")), otherKinds());
    groupArgument(o.value(QStringLiteral("group")));
    amountArgument(QStringLiteral("balance"), o.value(QStringLiteral("balance")));
}

void takeOtherFields(const Session& s, const CliOptions& o, OtherAccount& a) {
    takeText(o, "name", a.nomCompte);
    takeText(o, "group", a.grup);
    takeText(o, "group-name", a.nomGrup);
    if (o.given(QStringLiteral("kind")))
        a.tipus = otherTipus()[choiceArgument(QStringLiteral("kind"),
                                              o.value(QStringLiteral("kind")), otherKinds())];
    if (o.given(QStringLiteral("balance")))
        a.saldo = fieldAmount(s.ctx, o.value(QStringLiteral("balance")));
}

// The name as the save stored it. A new name is unique, so it finds the row just written.
QString stored(QString name) {
    return Neteja_Text(name);
}

QString otherKindWord(const QString& tipus) {
    const qsizetype at = otherTipus().indexOf(tipus);
    return at >= 0 && at < 2 ? otherKinds()[at] : QString();
}

}  // namespace

// ---- cash boxes and banks -----------------------------------------------------------------

int treasuryAccountsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    // The screen's list with number, group, account number and balance, in one read.
    store::Database db = store::Database::open(s.ctx.exerciseFile(schema::db::Tesorer));
    store::Statement st = db.prepare(QStringLiteral(
        "select Id, Grup, entidad, ccc, saldo from entidades order by entidad asc, Id asc"));
    while (st.next()) {
        // The screen shows 570 as cash and any other group as banks.
        const QString kind = treasuryKinds()[st.int32(1) == master::kGrupCaja ? 0 : 1];
        s.out << st.text(0) << '\t' << kind << '\t' << st.text(2) << '\t' << st.text(3) << '\t'
              << Format_Import(s.ctx, st.money(4)) << '\n';
    }
    return s.finish(true);
}

int treasuryAccountAddCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    checkTreasuryFields(o);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    TreasuryAccount t;
    takeTreasuryFields(s, o, t);
    const master::Outcome outcome = master::saveTreasuryAccount(s.ctx, s.dialogs, t, true);
    if (outcome.done()) {
        const auto saved = t.id.isEmpty() ? master::treasuryAccountByName(s.ctx, stored(t.entidad))
                                          : std::optional<TreasuryAccount>(t);
        if (saved) s.out << saved->id << '\n';
    }
    return outcomeCode(s, outcome);
}

int treasuryAccountChangeCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    checkTreasuryFields(o);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    auto t = master::treasuryAccountById(s.ctx, number);
    if (!t) return noSuchRecord(s, QStringLiteral("treasury account"), number);
    takeTreasuryFields(s, o, *t);
    return outcomeCode(s, master::saveTreasuryAccount(s.ctx, s.dialogs, *t, false));
}

int treasuryAccountRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (!master::treasuryAccountById(s.ctx, number))
        return noSuchRecord(s, QStringLiteral("treasury account"), number);
    return outcomeCode(s, master::deleteTreasuryAccount(s.ctx, s.dialogs, number));
}

// ---- other balance-sheet accounts ---------------------------------------------------------

int otherAccountsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    store::Database db = store::Database::open(s.ctx.exerciseFile(schema::db::Comptes));
    store::Statement st = db.prepare(
        QStringLiteral("select Compte, Grup, NomGrup, NomCompte, Saldo, Tipus from Otras "
                       "order by NomCompte asc, Compte asc"));
    while (st.next()) {
        s.out << st.text(0) << '\t' << st.text(1) << '\t' << st.text(2) << '\t' << st.text(3)
              << '\t' << Format_Import(s.ctx, st.money(4)) << '\t' << otherKindWord(st.text(5))
              << '\n';
    }
    return s.finish(true);
}

int otherAccountAddCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    checkOtherFields(o);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    OtherAccount a;
    takeOtherFields(s, o, a);
    const master::Outcome outcome = master::saveOtherAccount(s.ctx, s.dialogs, a, true);
    if (outcome.done()) {
        const auto saved = a.compte.isEmpty()
                               ? master::otherAccountByName(s.ctx, stored(a.nomCompte))
                               : std::optional<OtherAccount>(a);
        if (saved) s.out << saved->compte << '\n';
    }
    return outcomeCode(s, outcome);
}

int otherAccountChangeCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    checkOtherFields(o);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    auto a = master::otherAccountByNumber(s.ctx, number);
    if (!a) return noSuchRecord(s, QStringLiteral("other account"), number);
    takeOtherFields(s, o, *a);
    return outcomeCode(s, master::saveOtherAccount(s.ctx, s.dialogs, *a, false));
}

int otherAccountRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (!master::otherAccountByNumber(s.ctx, number))
        return noSuchRecord(s, QStringLiteral("other account"), number);
    return outcomeCode(s, master::deleteOtherAccount(s.ctx, s.dialogs, number));
}

}  // namespace tallora::cli
