#include "commands.h"
#include "context/working_context.h"
#include "master/accounts.h"
#include "master_common.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::cli {
namespace {

using master::Account;
using master::Family;

// The family is named by its table, as the chart keeps it.
Family familyArgument(const QString& text) {
    if (const auto f = master::familyByTable(text)) return *f;
    QStringList tables;
    for (const Family f : master::kFamilies) tables << master::familyTable(f);
    throw UsageError{QStringLiteral("\"%1\" is not a family of accounts: %2")
                         .arg(text, tables.join(QStringLiteral(", ")))};
}

void takeFields(const CliOptions& o, Account& a) {
    takeText(o, "name", a.nomCompte);
    takeText(o, "class", a.tipus);
}

}  // namespace

int accountsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const Family f = familyArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    // The list of the screen with the number and class of each account, in one read.
    store::Database db = store::Database::open(s.ctx.exerciseFile(schema::db::Comptes));
    store::Statement st = db.prepare(QStringLiteral("select Compte, NomCompte, Tipus from %1 "
                                                    "order by NomCompte asc, Compte asc")
                                         .arg(store::quoteIdentifier(master::familyTable(f))));
    while (st.next()) s.out << st.text(0) << '\t' << st.text(1) << '\t' << st.text(2) << '\n';
    return s.finish(true);
}

int accountAddCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const Family f = familyArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    Account a;
    a.grup = QString::number(master::familyGrup(f));
    takeFields(o, a);
    const master::Outcome outcome = master::saveAccount(s.ctx, s.dialogs, f, a, true);
    if (outcome.done()) s.out << a.compte << '\n';
    return outcomeCode(s, outcome);
}

int accountChangeCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const Family f = familyArgument(o.arguments[2]);
    const QString number = numberArgument(o.arguments[3]);
    if (!enterMasterFiles(s, w)) return kRefused;
    auto a = master::accountByNumber(s.ctx, f, number.toInt());
    if (!a) return noSuchRecord(s, master::familyTable(f) + QStringLiteral(" account"), number);
    takeFields(o, *a);
    return outcomeCode(s, master::saveAccount(s.ctx, s.dialogs, f, *a, false));
}

int accountRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const Family f = familyArgument(o.arguments[2]);
    const QString number = numberArgument(o.arguments[3]);
    if (!enterMasterFiles(s, w)) return kRefused;
    if (!master::accountByNumber(s.ctx, f, number.toInt()))
        return noSuchRecord(s, master::familyTable(f) + QStringLiteral(" account"), number);
    return outcomeCode(s, master::deleteAccount(s.ctx, s.dialogs, f, number.toInt()));
}

}  // namespace tallora::cli
