#include "commands.h"
#include "context/common_helpers.h"
#include "context/working_context.h"
#include "master/suppliers.h"
#include "master_common.h"
#include "schema/creation.h"
#include "store/database.h"

#include <utility>
#include <vector>

namespace tallora::cli {
namespace {

using master::Supplier;

const std::vector<std::pair<const char*, QString Supplier::*>>& textFields() {
    static const std::vector<std::pair<const char*, QString Supplier::*>> fields{
        {"name", &Supplier::nom},       {"address", &Supplier::direccio},
        {"town", &Supplier::poblacio},  {"province", &Supplier::provincia},
        {"postal-code", &Supplier::cp}, {"nif", &Supplier::nif},
        {"phone", &Supplier::telefon},  {"fax", &Supplier::fax},
        {"email", &Supplier::email},    {"web", &Supplier::web}};
    return fields;
}

void takeFields(const Session& s, const CliOptions& o, Supplier& p) {
    for (const auto& [option, field] : textFields()) takeText(o, option, p.*field);
    if (o.given(QStringLiteral("balance")))
        p.saldo = fieldAmount(s.ctx, o.value(QStringLiteral("balance")));
}

// The balance field shows only with treasury.
bool fieldsExist(Session& s, const CliOptions& o) {
    return !o.given(QStringLiteral("balance")) || needsTreasury(s, QStringLiteral("--balance"));
}

}  // namespace

int suppliersCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w)) return kRefused;
    // Every row with its number and fields, in the order of the screen's list, in one read.
    store::Database db = store::Database::open(s.ctx.exerciseFile(schema::db::Gest));
    store::Statement st = db.prepare(
        QStringLiteral("select proveidor, nom, nif, direccio, poblacio, provincia, cp, telefon, "
                       "fax, email, web") +
        (s.ctx.Tesoreria ? QStringLiteral(", saldo") : QStringLiteral(", 0")) +
        QStringLiteral(" from Proveidors order by nom asc, proveidor asc"));
    while (st.next()) {
        for (int column = 0; column < 11; ++column) s.out << st.text(column) << '\t';
        s.out << (s.ctx.Tesoreria ? Format_Import(s.ctx, st.money(11)) : QString()) << '\n';
    }
    return s.finish(true);
}

int supplierAddCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    amountArgument(QStringLiteral("balance"), o.value(QStringLiteral("balance")));
    if (!enterMasterFiles(s, w) || !fieldsExist(s, o)) return kRefused;
    Supplier p;
    takeFields(s, o, p);
    const master::Outcome outcome = master::saveSupplier(s.ctx, s.dialogs, p, true);
    if (outcome.done()) s.out << p.proveidor << '\n';
    return outcomeCode(s, outcome);
}

int supplierChangeCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    amountArgument(QStringLiteral("balance"), o.value(QStringLiteral("balance")));
    if (!enterMasterFiles(s, w) || !fieldsExist(s, o)) return kRefused;
    auto p = master::supplierByNumber(s.ctx, number);
    if (!p) return noSuchRecord(s, QStringLiteral("supplier"), number);
    takeFields(s, o, *p);
    return outcomeCode(s, master::saveSupplier(s.ctx, s.dialogs, *p, false));
}

int supplierRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    if (!master::supplierByNumber(s.ctx, number))
        return noSuchRecord(s, QStringLiteral("supplier"), number);
    return outcomeCode(s, master::deleteSupplier(s.ctx, s.dialogs, number));
}

}  // namespace tallora::cli
