#include "commands.h"
#include "context/common_helpers.h"
#include "context/working_context.h"
#include "master/price_references.h"
#include "master_common.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::cli {
namespace {

using master::PriceReference;

void takeFields(const Session& s, const CliOptions& o, PriceReference& r) {
    takeText(o, "code", r.referencia);
    takeText(o, "description", r.descripcion);
    if (o.given(QStringLiteral("price")))
        r.precio = fieldAmount(s.ctx, o.value(QStringLiteral("price")));
}

// References belong to the company, not to one exercise.
int noSuchReference(Session& s, const QString& code) {
    return s.refuse(QStringLiteral("the company has no price reference \"%1\"").arg(code));
}

}  // namespace

int referencesCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w, Needs::Billing, o.command)) return kRefused;
    // The screen's list with description and price, in one read.
    store::Database db = store::Database::open(s.ctx.companyFile(schema::db::Fact));
    store::Statement st = db.prepare(QStringLiteral(
        "select Referencia, Descripcion, Precio from referencias order by Referencia asc, Id asc"));
    while (st.next())
        s.out << st.text(0) << '\t' << st.text(1) << '\t' << Format_Import(s.ctx, st.money(2))
              << '\n';
    return s.finish(true);
}

int referenceAddCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    amountArgument(QStringLiteral("price"), o.value(QStringLiteral("price")));
    if (!enterMasterFiles(s, w, Needs::Billing, o.command)) return kRefused;
    PriceReference r;
    takeFields(s, o, r);
    return outcomeCode(s, master::saveReference(s.ctx, s.dialogs, r, true));
}

int referenceChangeCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString code = o.arguments[2];
    amountArgument(QStringLiteral("price"), o.value(QStringLiteral("price")));
    if (!enterMasterFiles(s, w, Needs::Billing, o.command)) return kRefused;
    auto r = master::referenceByCode(s.ctx, code);
    if (!r) return noSuchReference(s, code);
    takeFields(s, o, *r);
    return outcomeCode(s, master::saveReference(s.ctx, s.dialogs, *r, false));
}

int referenceRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString code = o.arguments[2];
    if (!enterMasterFiles(s, w, Needs::Billing, o.command)) return kRefused;
    const auto r = master::referenceByCode(s.ctx, code);
    if (!r) return noSuchReference(s, code);
    return outcomeCode(s, master::deleteReference(s.ctx, s.dialogs, r->id));
}

}  // namespace tallora::cli
