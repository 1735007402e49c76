#include "commands.h"
#include "context/messages.h"
#include "master_common.h"
#include "treasury/portfolio.h"

#include <algorithm>

namespace tallora::cli {

// The portfolio screen as text: the receipts of one direction (and party) in the order
// asked, then the two totals still due, which cover every party and direction.
int portfolioCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    treasury::PortfolioFilter filter;
    if (o.flags.contains(QStringLiteral("suppliers"))) filter.tab = treasury::Tab::Proveedores;
    if (o.given(QStringLiteral("order")) &&
        choiceArgument(QStringLiteral("order"), o.value(QStringLiteral("order")),
                       {"date", "due"}) == 1)
        filter.orden = treasury::Orden::Vencimiento;
    const bool customers = filter.tab == treasury::Tab::Clientes;
    QString party;
    if (o.given(QStringLiteral("party"))) party = numberArgument(o.value(QStringLiteral("party")));
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (!party.isEmpty()) {
        const auto parties = customers ? treasury::OMPLE_LLISTA_Clients(s.ctx)
                                       : treasury::OMPLE_LLISTA_Proveidors(s.ctx);
        filter.party = party.toLongLong();
        if (std::none_of(parties.begin(), parties.end(),
                         [&](const treasury::Party& p) { return p.number == *filter.party; }))
            return noSuchRecord(
                s, customers ? QStringLiteral("customer") : QStringLiteral("supplier"), party);
    }
    for (const treasury::Recibo& r : treasury::Llista_Recibos(s.ctx, filter))
        s.out << r.id << '\t' << r.party << '\t' << r.data << '\t' << r.vencimiento << '\t'
              << r.factura << '\t' << r.total << '\t' << r.pendiente << '\n';
    const treasury::Totals totals = treasury::Totales(s.ctx);
    s.out << Missatge(s.ctx, 6681) << '\t' << totals.txtCobrar << '\n'
          << Missatge(s.ctx, 6682) << '\t' << totals.txtPagar << '\n';
    return s.finish(true);
}

}  // namespace tallora::cli
