// sales, sale-remove and sale-to-portfolio: the sales inquiry's search with its filters and
// orders, the deletion of a sale with its money rows, and a sale put back in the portfolio,
// through FormConsOUT's logic and questions.
#include "commands.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "inquiry_options.h"
#include "master_common.h"
#include "sales/sale_change.h"
#include "sales/sale_inquiry.h"
#include "treasury/add_cartera.h"

namespace tallora::cli {
namespace {

sales::SaleOrder orderArgument(const CliOptions& o) {
    if (!o.given(QStringLiteral("order"))) return sales::SaleOrder::Id;
    return static_cast<sales::SaleOrder>(
        choiceArgument(QStringLiteral("order"), o.value(QStringLiteral("order")),
                       {"id", "date", "account", "customer", "amount"}));
}

// The sale of `number` with its description, or a refusal.
std::optional<QString> saleDescription(Session& s, const QString& number) {
    const auto loaded = sales::Modifica_Venda(s.ctx, number);
    if (!loaded) {
        noSuchRecord(s, QStringLiteral("sale"), number);
        return std::nullopt;
    }
    return loaded->entry.txtdescripcio;
}

}  // namespace

int salesCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    sales::SaleFilter filter;
    filter.order = orderArgument(o);
    takeText(o, "customer", filter.customer);
    takeText(o, "account", filter.account);
    if (!enterMasterFiles(s, w)) return kRefused;
    filter.range = dateAmountFilter(s.ctx, o);
    const sales::SaleSearch search = sales::Busca_Vendes(s.ctx, filter);
    for (const sales::SaleRow& r : search.rows)
        s.out << r.ordre << '\t' << r.data.toString(QStringLiteral("dd/MM/yyyy")) << '\t'
              << r.nomClient << '\t' << r.nomCompte << '\t' << r.descripcio << '\t'
              << Format_Import(s.ctx, r.total) << '\n';
    printInquiryTotals(s, search.total, search.rows.size());
    return s.finish(true);
}

int saleRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    const auto description = saleDescription(s, number);
    if (!description) return kRefused;
    const std::int64_t ordre = number.toLongLong();
    if (s.dialogs.yesNo(schema::deleteQuestion(s.ctx, ordre, *description)) != Dialogs::Answer::Yes)
        return kRefused;
    return s.finish(sales::Esborra_Venda(s.ctx, ordre));
}

int saleToPortfolioCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (isTickets(s.ctx))
        return s.refuse(QStringLiteral("an exercise of kind TICKETS has no receipts to collect"));
    if (!saleDescription(s, number)) return kRefused;
    return s.finish(treasury::AddCartera_Venda(s.ctx, s.dialogs, number));
}

}  // namespace tallora::cli
