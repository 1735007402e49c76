#include "purchase_validation.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "schema/lookups.h"

namespace tallora::purchases {
namespace {

Verdict refused(Dialogs& dialogs, const QString& text, EntryField focus) {
    dialogs.information(text);
    return {false, focus, false, std::nullopt};
}

// An amount field as the check leaves it: sanitised, and "0" when blank.
void sanitiseAmount(QString& text) {
    Neteja_Text(text);
    if (text.isEmpty()) text = QStringLiteral("0");
}

bool differenceAccepted(const WorkingContext& ctx, Dialogs& dialogs, const PurchaseEntry& e,
                        Money difference, Money sum) {
    const QString text =
        Missatge(ctx, 644) + Format_Import(ctx, difference) + QStringLiteral("\n") +
        Missatge(ctx, 645) + Format_Import(ctx, sum) + QStringLiteral("\n") + Missatge(ctx, 646) +
        e.txtTotal + QStringLiteral("\n") + QStringLiteral("IVA NO APLICABLE = ") + e.txtexempta +
        QStringLiteral("\n\n") + Missatge(ctx, 647) + QStringLiteral("\n\n") + Missatge(ctx, 648);
    return dialogs.yesNo(text) == Dialogs::Answer::Yes;
}

}  // namespace

bool balanceCheck(const WorkingContext& ctx, Dialogs& dialogs, PurchaseEntry& e) {
    const bool tickets = isTickets(ctx);
    e.txtexempta = QStringLiteral("0");
    Money sum;
    for (std::size_t i = 0; i < 4; ++i) {
        sanitiseAmount(e.txtBase[i]);
        sanitiseAmount(e.txtIVA[i]);
        sum += amountOf(ctx, e.txtBase[i]) + amountOf(ctx, e.txtIVA[i]);
    }
    for (QString* amount : {&e.txtBaseIRPF, &e.txtTipus, &e.txtRetencio}) sanitiseAmount(*amount);
    // With no base typed the withholding takes no part in the comparison.
    if (sum == Money{})
        sum = amountOf(ctx, e.txtTotal);
    else
        sum -= amountOf(ctx, e.txtRetencio);
    sanitiseAmount(e.txtTotal);
    const Money total = amountOf(ctx, e.txtTotal);
    // One-sided on purpose: a negative total goes to the question below, whatever the sign.
    if (total > Money{} && sum > total) {
        dialogs.information(Missatge(ctx, 923) + QStringLiteral("\n\n") + Missatge(ctx, 6755) +
                            Format_Import(ctx, total) + QStringLiteral("\n") + Missatge(ctx, 6756) +
                            Format_Import(ctx, sum) + QStringLiteral("\n\n") + Missatge(ctx, 6757));
        return false;
    }
    const Money cent = Money::fromUnits(100);
    const Money d = sum - total;
    const bool centim = d == cent || d == -cent;
    if (sum != total) {
        const Money difference = total - sum;
        e.txtexempta = Format_Import(ctx, difference);
        // A rounding cent of the split, or a shop's ticket, is taken as exempt silently.
        if (!tickets && !centim && !differenceAccepted(ctx, dialogs, e, difference, sum)) {
            e.txtexempta = QStringLiteral("0");
            return false;
        }
    }
    if (sum == total && tickets)
        e.txtexempta = Format_Import(ctx, sum + amountOf(ctx, e.txtRetencio));
    return true;
}

Verdict Verifica_Apunt(const WorkingContext& ctx, Dialogs& dialogs, PurchaseEntry& e,
                       const VerifyOptions& options) {
    if (Taula_Grup(e.group).isEmpty())
        return refused(dialogs, Missatge(ctx, 6632), EntryField::ComboOP);
    if (e.txtDia.trimmed().isEmpty())
        return refused(dialogs, Missatge(ctx, 635), EntryField::txtDia);
    bool numeric = false;
    const int day = e.txtDia.trimmed().toInt(&numeric);
    if (!numeric || day >= 32) return refused(dialogs, Missatge(ctx, 636), EntryField::txtDia);
    const auto date = Valida_Data(ctx, e.txtDia, e.txtMes);
    if (!date) return refused(dialogs, Missatge(ctx, 637), EntryField::txtDia);
    e.lblFecha = date->toString(QStringLiteral("dd/MM/yyyy"));
    if (Mes_Bloquejat(ctx, date->month()))
        return refused(dialogs, Missatge(ctx, 622), EntryField::txtMes);
    if (e.txtProveidor.isEmpty() || e.txtProveidor != e.listProvText)
        return refused(dialogs, Missatge(ctx, 720), EntryField::txtProveidor);
    if (!Verifica_Proveidor(ctx, e.txtProveidor))
        return refused(dialogs, Missatge(ctx, 721), EntryField::txtProveidor);
    if (e.txtDespesa.isEmpty() || e.txtDespesa.toUpper() != e.listDespesesText)
        return refused(dialogs, Missatge(ctx, 722), EntryField::txtDespesa);
    auto account = Verifica_compte_Despesa(ctx, e.group, e.txtDespesa);
    if (!account) return refused(dialogs, Missatge(ctx, 723), EntryField::txtDespesa);
    if (amountOf(ctx, e.txtTotal) == Money{})
        return refused(dialogs, Missatge(ctx, 643), EntryField::txtTotal);
    // The description is compared without its series: an entry with a series is never found.
    if (e.isNew() &&
        !schema::Nova_FrasIN(ctx, e.txtTotal, e.txtdescripcio,
                             e.supplierNumber ? QString::number(*e.supplierNumber) : QString())) {
        dialogs.beep();
        if (dialogs.yesNo(Missatge(ctx, 6753)) != Dialogs::Answer::Yes)
            return {false, EntryField::txtTotal, false, std::nullopt};
    }
    // The first save of an entry with IVA only opens the panel, so the amounts are seen.
    if (!isTickets(ctx) && !options.panelOpen)
        return {false, EntryField::txtBase, true, std::nullopt};
    if (!balanceCheck(ctx, dialogs, e)) return {false, EntryField::txtBase, false, std::nullopt};
    if (options.classification && e.clasificacion.left(5) == QStringLiteral("Selec"))
        e.clasificacion.clear();
    return {true, EntryField::None, false, std::move(account)};
}

}  // namespace tallora::purchases
