// post-sale and change-sale: the sales screen's fields given as options, typed into the
// entry in the screen's order, then verified, written and journalled by the screen's logic.
#include "commands.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "entry_common.h"
#include "master/accounts.h"
#include "master/customers.h"
#include "master_common.h"
#include "sales/sale_change.h"
#include "sales/sale_entry.h"
#include "sales/sale_journal.h"
#include "sales/sale_posting.h"
#include "sales/sale_validation.h"

#include <optional>

namespace tallora::cli {
namespace {

using sales::SaleEntry;

// Every word checked before anything is opened.
void checkWords(const CliOptions& o) {
    QStringList amounts{"total", "irpf-base", "irpf-amount"};
    for (std::size_t i = 0; i < 3; ++i)
        amounts << optionName("base", i) << optionName("iva", i) << optionName("re", i);
    checkPostingWords(o, amounts);
}

// What an exercise, a company or the billing module leave out of the screen.
bool fieldsExist(Session& s, const CliOptions& o) {
    const WorkingContext& ctx = s.ctx;
    // With the billing module a sale is a document with its lines, which are not typed here.
    if (ctx.Facturacio) {
        s.refuse(QStringLiteral("%1: with the billing module the sales are billing documents "
                                "with their lines, which the companion does not enter")
                     .arg(o.command));
        return false;
    }
    // A shop's takings have no customer, no split, no amounts panel and no withholding.
    QStringList hidden{"customer", "rate", "irpf-base", "irpf-percent", "irpf-amount"};
    for (std::size_t i = 0; i < 3; ++i)
        hidden << optionName("base", i) << optionName("iva", i) << optionName("re", i);
    return postingOptionsExist(s, o, hidden);
}

// The customer taken from the list: the name found without regard to case gives the row's
// own name, its number and its recargo. A name the list lacks is left for the validation
// to refuse (640), as on the screen.
void takeCustomer(const WorkingContext& ctx, const QString& typed, SaleEntry& e) {
    const auto customer = master::customerByName(ctx, typed);
    e.txtClient = e.listClientsText = customer ? customer->nom : typed;
    e.clientNumber.reset();
    if (customer) e.clientNumber = customer->client.toLongLong();
    // As the screen takes a customer: Activa_RE, then a posted sale's quotas and total follow.
    sales::Activa_RE(e, customer && customer->re);
    if (!e.isNew()) sales::Recalcula_Apunt(ctx, e, e.reEnabled);
}

// The sales account from ListVendes; an unknown name is refused by the validation (642).
void takeAccount(const WorkingContext& ctx, const QString& typed, SaleEntry& e) {
    e.txtTipus = e.listVendesText = typed;
    for (const master::AccountItem& item : master::accountList(ctx, master::Family::Ingresos))
        if (item.nomCompte.compare(typed, Qt::CaseInsensitive) == 0) {
            e.txtTipus = e.listVendesText = item.nomCompte;
            return;
        }
}

// IRPF and the amounts panel. A new entry is split by the rate first (leaving CmbIva); a base
// typed afterwards takes its quotas as leaving txtBase(i) does, and a quota typed overrides.
bool takeAmounts(Session& s, const CliOptions& o, SaleEntry& e) {
    const WorkingContext& ctx = s.ctx;
    if (o.given(QStringLiteral("total")))
        e.txtTotal = fieldAmount(ctx, o.value(QStringLiteral("total")));
    const bool irpfBase = o.given(QStringLiteral("irpf-base"));
    const bool irpfPercent = o.given(QStringLiteral("irpf-percent"));
    if (irpfBase) e.txtBaseIRPF = fieldAmount(ctx, o.value(QStringLiteral("irpf-base")));
    if (irpfPercent) e.Text1 = percentField(ctx, o.value(QStringLiteral("irpf-percent")));
    if (e.isNew()) {
        const auto rate = isTickets(ctx)
                              ? std::optional<double>(0.0)
                              : splitRate(s, o, {ctx.TipusIVA.begin(), ctx.TipusIVA.end()},
                                          anyBaseTyped(o, 3), QStringLiteral("rate"));
        if (!rate) return false;
        sales::Reparteix_Total(ctx, e, *rate, e.reEnabled);
    } else if (irpfBase || irpfPercent) {
        // A change of Text1 or of the base recomputes the amount withheld.
        e.txtRetencio = sales::irpfOf(ctx, e.txtBaseIRPF, e.Text1);
    }
    if (o.given(QStringLiteral("irpf-amount")))
        e.txtRetencio = fieldAmount(ctx, o.value(QStringLiteral("irpf-amount")));
    for (std::size_t i = 0; i < 3; ++i) {
        const QString base = optionName("base", i);
        if (!o.given(base)) continue;
        e.txtBase[i] = fieldAmount(ctx, o.value(base));
        sales::baseTyped(ctx, e, static_cast<int>(i));
    }
    for (std::size_t i = 0; i < 3; ++i) {
        const QString iva = optionName("iva", i);
        const QString re = optionName("re", i);
        if (o.given(iva)) e.txtIVA[i] = fieldAmount(ctx, o.value(iva));
        if (!o.given(re)) continue;
        // The recargo fields show only for a customer with recargo.
        if (!e.reEnabled) {
            s.refuse(QStringLiteral("--%1: the customer \"%2\" has no recargo de equivalencia")
                         .arg(re, e.txtClient));
            return false;
        }
        e.txtRE[i] = fieldAmount(ctx, o.value(re));
    }
    return true;
}

bool takeTreasury(Session& s, const CliOptions& o, SaleEntry& e) {
    if (!takeTreasuryAccount(s, o, e.entitat, e.entitatId)) return false;
    if (o.given(QStringLiteral("due"))) e.venciment = dueArgument(o.value(QStringLiteral("due")));
    return true;
}

void takeTexts(const Session& s, const CliOptions& o, SaleEntry& e) {
    takeText(o, "description", e.txtdescripcio);
    takeText(o, "series", e.cmbSerie);
    if (o.given(QStringLiteral("classification"))) e.clasificacion = classificationText(s.ctx, o);
    for (std::size_t i = 0; i < e.concepte.size(); ++i)
        if (o.given(optionName("concept", i))) e.concepte[i] = o.value(optionName("concept", i));
}

void printSaleJournal(Session& s, const SaleEntry& e, const sales::PostingResult& result) {
    sales::JournalPosting posting;
    posting.ordre = result.ordre;
    posting.affected = result.affected;
    posting.change = !e.isNew();
    posting.classification = s.ctx.Intra;
    printJournal(s, sales::Diari_Apunt(s.ctx, e, posting));
}

// The entry typed, verified and written: the screen's steps in its order.
int post(Session& s, const CliOptions& o, SaleEntry& e) {
    EntryDialogs dialogs(s.dialogs);
    takeText(o, "day", e.txtDia);
    takeText(o, "month", e.txtMes);
    if (!dateChecked(s.ctx, dialogs, e.txtDia, e.txtMes, e.lblFecha)) return kRefused;
    if (o.given(QStringLiteral("customer")))
        takeCustomer(s.ctx, o.value(QStringLiteral("customer")), e);
    if (o.given(QStringLiteral("account")))
        takeAccount(s.ctx, o.value(QStringLiteral("account")), e);
    takeTexts(s, o, e);
    if (!takeAmounts(s, o, e) || !takeTreasury(s, o, e)) return kRefused;

    sales::VerifyOptions options;
    options.classification = s.ctx.Intra;
    const sales::Verdict verdict = sales::Verifica_Apunt(s.ctx, dialogs, e, options);
    if (!verdict.ok) return kRefused;
    const sales::PostingResult result = sales::GrabaApunt(s.ctx, e, *verdict.account);
    if (!result.error.isEmpty()) s.err << result.error << '\n';
    printSaleJournal(s, e, result);
    return s.finish(result.ok());
}

bool enterSales(Session& s, const CliOptions& o, const ExerciseWords& w) {
    return enterPostingScreen(s, w) && fieldsExist(s, o);
}

}  // namespace

int postSaleCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    checkWords(o);
    if (!enterSales(s, o, w)) return kRefused;
    SaleEntry e;
    e.txtdescripcio = QStringLiteral("-");
    e.venciment = QDate::currentDate();
    offerOpenMonth(s.ctx, o, e.txtMes);
    return post(s, o, e);
}

int changeSaleCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    checkWords(o);
    if (!enterSales(s, o, w)) return kRefused;
    auto loaded = sales::Modifica_Venda(s.ctx, number);
    if (!loaded) return noSuchRecord(s, QStringLiteral("sale"), number);
    // A sale settled in a collection run hides the treasury frame: its money rows stay.
    if (loaded->settled &&
        refusedForSettled(
            s, o, QStringLiteral("the sale %1 was settled in a collection run").arg(number)))
        return kRefused;
    SaleEntry& e = loaded->entry;
    e.reEnabled = sales::Client_RE(s.ctx, e.txtClient);
    return post(s, o, e);
}

}  // namespace tallora::cli
