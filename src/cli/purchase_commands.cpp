// post-purchase, change-purchase, purchases and purchase-remove: the purchases screen's
// fields given as options, typed into the entry in the screen's order, then verified,
// written and journalled by the screen's logic; the inquiry's filters and deletion.
#include "commands.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "entry_common.h"
#include "inquiry_options.h"
#include "master/accounts.h"
#include "master/suppliers.h"
#include "master_common.h"
#include "purchases/purchase_change.h"
#include "purchases/purchase_entry.h"
#include "purchases/purchase_inquiry.h"
#include "purchases/purchase_journal.h"
#include "purchases/purchase_posting.h"
#include "purchases/purchase_validation.h"

#include <optional>

namespace tallora::cli {
namespace {

using purchases::PurchaseEntry;

// The expense group named by its table, as the chart keeps it (Compres, Serveis ...).
int groupArgument(const QString& text) {
    QStringList tables;
    for (std::size_t i = 0; i < purchases::kExpenseGroups.size(); ++i) {
        const QString table = purchases::Taula_Grup(static_cast<int>(i));
        if (table.compare(text, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
        tables << table;
    }
    throw UsageError{QStringLiteral("--group: \"%1\" is not an expense group: %2")
                         .arg(text, tables.join(QStringLiteral(", ")))};
}

void checkWords(const CliOptions& o) {
    if (o.given(QStringLiteral("group"))) groupArgument(o.value(QStringLiteral("group")));
    QStringList amounts{"total", "irpf-base"};
    for (std::size_t i = 0; i < 4; ++i) amounts << optionName("base", i) << optionName("iva", i);
    checkPostingWords(o, amounts);
}

// What the company or a shop's exercise leave out of the screen.
bool fieldsExist(Session& s, const CliOptions& o) {
    // A shop's expenses are not split by IVA: no rate and no IVA panel.
    QStringList hidden{"rate"};
    for (std::size_t i = 0; i < 4; ++i) hidden << optionName("base", i) << optionName("iva", i);
    return postingOptionsExist(s, o, hidden);
}

// ListProv: the supplier found without regard to case gives the row's text (the name in
// capitals) and number; a name the list lacks is left for the check to refuse (721).
void takeSupplier(const WorkingContext& ctx, const QString& typed, PurchaseEntry& e) {
    const auto supplier = master::supplierByName(ctx, typed);
    e.txtProveidor = e.listProvText = supplier ? supplier->nom.toUpper() : typed;
    e.supplierNumber.reset();
    if (supplier) e.supplierNumber = supplier->proveidor.toLongLong();
}

// ListDespeses of the group: the account's name in capitals; an unknown name is refused by
// the check (723).
void takeAccount(const WorkingContext& ctx, const QString& typed, PurchaseEntry& e) {
    e.txtDespesa = e.listDespesesText = typed.toUpper();
    const auto family = master::familyByTable(purchases::Taula_Grup(e.group));
    if (!family) return;
    for (const master::AccountItem& item : master::accountList(ctx, *family))
        if (item.nomCompte.compare(typed, Qt::CaseInsensitive) == 0)
            e.txtDespesa = e.listDespesesText = item.nomCompte.toUpper();
}

// Total, withholding and the IVA panel, in the screen's order: a new entry is split by the
// rate once the withholding is in (leaving txtRetencio); a base typed then takes its quota
// as leaving txtBase(i) does, and a quota typed overrides.
bool takeAmounts(Session& s, const CliOptions& o, PurchaseEntry& e) {
    const WorkingContext& ctx = s.ctx;
    if (o.given(QStringLiteral("total")))
        e.txtTotal = fieldAmount(ctx, o.value(QStringLiteral("total")));
    const bool irpfBase = o.given(QStringLiteral("irpf-base"));
    const bool irpfPercent = o.given(QStringLiteral("irpf-percent"));
    if (irpfBase) e.txtBaseIRPF = fieldAmount(ctx, o.value(QStringLiteral("irpf-base")));
    if (irpfPercent) e.txtTipus = percentField(ctx, o.value(QStringLiteral("irpf-percent")));
    if (irpfBase || irpfPercent) purchases::Calcula_Retencio(ctx, e, std::nullopt);
    if (e.isNew() && !isTickets(ctx)) {
        const auto rate = splitRate(s, o, {ctx.TipusIVAs.begin(), ctx.TipusIVAs.end()},
                                    anyBaseTyped(o, 4), QStringLiteral("purchase rate"));
        if (!rate) return false;
        purchases::Calcula_Bases(ctx, e, *rate);
    }
    for (std::size_t i = 0; i < 4; ++i) {
        const QString base = optionName("base", i);
        if (!o.given(base)) continue;
        e.txtBase[i] = fieldAmount(ctx, o.value(base));
        purchases::baseLeft(ctx, e, static_cast<int>(i));
    }
    for (std::size_t i = 0; i < 4; ++i)
        if (o.given(optionName("iva", i)))
            e.txtIVA[i] = fieldAmount(ctx, o.value(optionName("iva", i)));
    return true;
}

void printPurchaseJournal(Session& s, const PurchaseEntry& e,
                          const purchases::PostingResult& result) {
    purchases::JournalPosting posting;
    posting.ordre = result.ordre;
    posting.affected = result.affected;
    posting.change = !e.isNew();
    posting.classification = s.ctx.Intra;
    printJournal(s, purchases::Diari_Apunt(s.ctx, e, posting));
}

int post(Session& s, const CliOptions& o, PurchaseEntry& e) {
    EntryDialogs dialogs(s.dialogs);
    if (o.given(QStringLiteral("group"))) e.group = groupArgument(o.value(QStringLiteral("group")));
    takeText(o, "day", e.txtDia);
    takeText(o, "month", e.txtMes);
    if (!dateChecked(s.ctx, dialogs, e.txtDia, e.txtMes, e.lblFecha)) return kRefused;
    if (o.given(QStringLiteral("supplier")))
        takeSupplier(s.ctx, o.value(QStringLiteral("supplier")), e);
    if (o.given(QStringLiteral("account")))
        takeAccount(s.ctx, o.value(QStringLiteral("account")), e);
    takeText(o, "description", e.txtdescripcio);
    takeText(o, "series", e.cmbSerie);
    if (o.given(QStringLiteral("classification"))) e.clasificacion = classificationText(s.ctx, o);
    if (!takeAmounts(s, o, e) || !takeTreasuryAccount(s, o, e.entitat, e.entitatId))
        return kRefused;
    if (o.given(QStringLiteral("due"))) e.venciment = dueArgument(o.value(QStringLiteral("due")));

    purchases::VerifyOptions options;
    options.classification = s.ctx.Intra;
    const purchases::Verdict verdict = purchases::Verifica_Apunt(s.ctx, dialogs, e, options);
    if (!verdict.ok) return kRefused;
    const purchases::PostingResult result = purchases::GrabaApunt(s.ctx, e, *verdict.account);
    if (!result.error.isEmpty()) s.err << result.error << '\n';
    printPurchaseJournal(s, e, result);
    return s.finish(result.ok());
}

bool enterPurchases(Session& s, const CliOptions& o, const ExerciseWords& w) {
    return enterPostingScreen(s, w) && fieldsExist(s, o);
}

purchases::PurchaseOrder orderArgument(const CliOptions& o) {
    if (!o.given(QStringLiteral("order"))) return purchases::PurchaseOrder::Id;
    return static_cast<purchases::PurchaseOrder>(
        choiceArgument(QStringLiteral("order"), o.value(QStringLiteral("order")),
                       {"id", "date", "account", "supplier", "amount"}));
}

}  // namespace

int postPurchaseCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    checkWords(o);
    if (!enterPurchases(s, o, w)) return kRefused;
    PurchaseEntry e;
    e.txtdescripcio = QStringLiteral("-");
    e.venciment = QDate::currentDate();
    offerOpenMonth(s.ctx, o, e.txtMes);
    return post(s, o, e);
}

int changePurchaseCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    checkWords(o);
    if (!enterPurchases(s, o, w)) return kRefused;
    auto loaded = purchases::Modifica_Compra(s.ctx, number);
    if (!loaded) return noSuchRecord(s, QStringLiteral("purchase"), number);
    // An entry settled in a payment run has its treasury frame disabled: its money rows stay.
    if (loaded->settled &&
        refusedForSettled(
            s, o, QStringLiteral("the purchase %1 was settled in a payment run").arg(number)))
        return kRefused;
    return post(s, o, loaded->entry);
}

int purchasesCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    purchases::PurchaseFilter filter;
    filter.order = orderArgument(o);
    takeText(o, "supplier", filter.supplier);
    takeText(o, "account", filter.account);
    if (!enterMasterFiles(s, w)) return kRefused;
    filter.range = dateAmountFilter(s.ctx, o);
    const purchases::PurchaseSearch search = purchases::Buscar(s.ctx, filter);
    for (const purchases::PurchaseRow& r : search.rows)
        s.out << r.ordre << '\t' << r.data.toString(QStringLiteral("dd/MM/yyyy")) << '\t'
              << r.nomProveidor << '\t' << r.nomCompte << '\t' << r.descripcio << '\t'
              << Format_Import(s.ctx, r.total) << '\n';
    printInquiryTotals(s, search.total, search.rows.size());
    return s.finish(true);
}

int purchaseRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    const auto detail = purchases::Modifica_Compra(s.ctx, number);
    if (!detail) return noSuchRecord(s, QStringLiteral("purchase"), number);
    const std::int64_t ordre = number.toLongLong();
    if (s.dialogs.yesNo(purchases::deleteQuestion(s.ctx, ordre, detail->entry.txtdescripcio)) !=
        Dialogs::Answer::Yes)
        return kRefused;
    return s.finish(purchases::Esborra_Compra(s.ctx, ordre));
}

}  // namespace tallora::cli
