// post-provision, post-disbursement, change-provision, provisions and provision-remove: the
// screen of provisions and disbursements and its inquiry, through their logic.
#include "commands.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "entry_common.h"
#include "inquiry_options.h"
#include "master_common.h"
#include "purchases/provision_entry.h"
#include "purchases/provision_inquiry.h"
#include "purchases/provision_posting.h"

#include <optional>

namespace tallora::cli {
namespace {

using purchases::ProvisionEntry;

void checkWords(const CliOptions& o) {
    checkDayMonth(o);
    if (o.given(QStringLiteral("total")))
        amountArgument(QStringLiteral("total"), o.value(QStringLiteral("total")));
    if (o.given(QStringLiteral("kind")))
        choiceArgument(QStringLiteral("kind"), o.value(QStringLiteral("kind")),
                       {"provision", "disbursement"});
    if (o.given(QStringLiteral("customer")) && o.given(QStringLiteral("supplier")))
        throw UsageError{QStringLiteral("--customer and --supplier exclude each other")};
}

bool enterProvisions(Session& s, const CliOptions& o, const ExerciseWords& w) {
    if (!enterPostingScreen(s, w)) return false;
    return !o.given(QStringLiteral("treasury-account")) ||
           needsTreasury(s, QStringLiteral("--treasury-account"));
}

// ListClients after Tria_Tipus: the party found without regard to case gives the row's text
// (the name in capitals) and number; a name the list lacks is refused by the check (638).
void takeParty(const WorkingContext& ctx, const QString& typed, ProvisionEntry& e) {
    e.txtClient = typed;
    e.listClientsText.clear();
    e.partyNumber.reset();
    for (const purchases::PartyItem& item : purchases::partyList(ctx, e.suplido))
        if (item.text.compare(typed, Qt::CaseInsensitive) == 0) {
            e.txtClient = e.listClientsText = item.text;
            e.partyNumber = item.number;
            return;
        }
}

int post(Session& s, const CliOptions& o, ProvisionEntry& e) {
    EntryDialogs dialogs(s.dialogs);
    const bool kindChanged = o.given(QStringLiteral("kind")) &&
                             (o.value(QStringLiteral("kind")) == u"disbursement") != e.suplido;
    if (kindChanged) e.suplido = !e.suplido;
    // A party named for the other kind of entry is a usage fault, as the screen's list
    // holds only customers for a provision and only suppliers for a disbursement.
    if (o.given(QString::fromLatin1(e.suplido ? "customer" : "supplier")))
        throw UsageError{e.suplido ? QStringLiteral("a disbursement is paid to a --supplier")
                                   : QStringLiteral("a provision is received from a --customer")};
    takeText(o, "day", e.txtDia);
    takeText(o, "month", e.txtMes);
    if (!dateChecked(s.ctx, dialogs, e.txtDia, e.txtMes, e.lblFecha)) return kRefused;
    const QString party = QString::fromLatin1(e.suplido ? "supplier" : "customer");
    if (o.given(party))
        takeParty(s.ctx, o.value(party), e);
    else if (kindChanged)
        takeParty(s.ctx, e.txtClient, e);  // the list changed under the name
    takeText(o, "description", e.txtdescripcio);
    if (o.given(QStringLiteral("total")))
        e.txtTotal = fieldAmount(s.ctx, o.value(QStringLiteral("total")));
    if (!takeTreasuryAccount(s, o, e.entitat, e.entitatId)) return kRefused;
    if (purchases::Verifica_Suplido(s.ctx, dialogs, e) != purchases::ProvisionField::None)
        return kRefused;
    const bool change = !e.isNew();
    const purchases::ProvisionResult result = purchases::GrabaApunt(s.ctx, e);
    if (!result.error.isEmpty()) s.err << result.error << '\n';
    printJournal(s, purchases::Diari_Suplido(s.ctx, e, result, change));
    return s.finish(result.ok());
}

int postNew(Session& s, const CliOptions& o, bool suplido) {
    const ExerciseWords w = exerciseWords(o);
    checkWords(o);
    if (!enterProvisions(s, o, w)) return kRefused;
    ProvisionEntry e;
    e.suplido = suplido;
    e.txtdescripcio = QStringLiteral("-");
    offerOpenMonth(s.ctx, o, e.txtMes);
    return post(s, o, e);
}

}  // namespace

int postProvisionCommand(Session& s, const CliOptions& o) {
    return postNew(s, o, false);
}

int postDisbursementCommand(Session& s, const CliOptions& o) {
    return postNew(s, o, true);
}

int changeProvisionCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    checkWords(o);
    if (!enterProvisions(s, o, w)) return kRefused;
    auto e = purchases::Modifica_Suplido(s.ctx, number);
    if (!e) return noSuchRecord(s, QStringLiteral("provision or disbursement"), number);
    return post(s, o, *e);
}

int provisionsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    purchases::ProvisionFilter filter;
    takeText(o, "party", filter.party);
    if (o.given(QStringLiteral("kind")))
        filter.suplido = choiceArgument(QStringLiteral("kind"), o.value(QStringLiteral("kind")),
                                        {"provision", "disbursement"}) == 1;
    if (o.given(QStringLiteral("order")))
        filter.order = static_cast<purchases::ProvisionOrder>(
            choiceArgument(QStringLiteral("order"), o.value(QStringLiteral("order")),
                           {"date", "kind", "party", "amount"}));
    if (!enterMasterFiles(s, w)) return kRefused;
    filter.range = dateAmountFilter(s.ctx, o);
    const purchases::ProvisionSearch search = purchases::Buscar_Suplidos(s.ctx, filter);
    for (const purchases::ProvisionRow& r : search.rows)
        s.out << r.ordre << '\t' << r.data.toString(QStringLiteral("dd/MM/yyyy")) << '\t'
              << r.nomProveidor << '\t' << r.nomTipus << '\t' << r.descripcio << '\t'
              << Format_Import(s.ctx, r.total) << '\n';
    printInquiryTotals(s, search.total, search.rows.size());
    return s.finish(true);
}

int provisionRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    const auto e = purchases::Modifica_Suplido(s.ctx, number);
    if (!e) return noSuchRecord(s, QStringLiteral("provision or disbursement"), number);
    const std::int64_t ordre = number.toLongLong();
    if (s.dialogs.yesNo(Missatge(s.ctx, 815) + QStringLiteral("\n(") + number +
                        QStringLiteral(") ") + e->txtdescripcio) != Dialogs::Answer::Yes)
        return kRefused;
    return s.finish(purchases::Esborra_Suplido(s.ctx, ordre));
}

}  // namespace tallora::cli
