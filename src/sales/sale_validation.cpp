#include "sale_validation.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "schema/lookups.h"

namespace tallora::sales {
namespace {

Verdict refused(Dialogs& dialogs, const QString& text, EntryField focus) {
    dialogs.information(text);
    return {false, focus, false, std::nullopt};
}

QString customerNumberText(const WorkingContext& ctx, const SaleEntry& e) {
    if (isTickets(ctx)) return QStringLiteral("0");
    return e.clientNumber ? QString::number(*e.clientNumber) : QString();
}

// Refused when the nine amounts less the withholding pass a positive total.
bool overTotal(const WorkingContext& ctx, Dialogs& dialogs, Money total, Money sum) {
    const QChar mark = ctx.decimalMark();
    dialogs.information(Missatge(ctx, 923) + QStringLiteral("\n\n") + Missatge(ctx, 6755) +
                        Format_Import(ctx, total) + QStringLiteral("\n") + Missatge(ctx, 6756) +
                        sum.format(2, mark) + QStringLiteral("\n\n") + Missatge(ctx, 6757));
    return false;
}

bool differenceAccepted(const WorkingContext& ctx, Dialogs& dialogs, Money exempt, Money sum,
                        Money total) {
    const QString text = Missatge(ctx, 644) + Format_Import(ctx, exempt) + QStringLiteral("\n") +
                         Missatge(ctx, 645) + QStringLiteral(" = ") +
                         sum.format(2, ctx.decimalMark()) + QStringLiteral("\n") +
                         Missatge(ctx, 646) + Format_Import(ctx, total) + QStringLiteral("\n") +
                         QStringLiteral("NO APLICABLE IVA = ") + Format_Import(ctx, exempt) +
                         QStringLiteral("\n\n") + Missatge(ctx, 647) + QStringLiteral("\n\n") +
                         Missatge(ctx, 648);
    return dialogs.yesNo(text) == Dialogs::Answer::Yes;
}

}  // namespace

bool balanceCheck(const WorkingContext& ctx, Dialogs& dialogs, SaleEntry& e) {
    const bool tickets = isTickets(ctx);
    Money sum;
    for (int i = 0; i < 3; ++i)
        sum += amountOf(ctx, e.txtBase[i]) + amountOf(ctx, e.txtIVA[i]) + amountOf(ctx, e.txtRE[i]);
    const Money total = amountOf(ctx, e.txtTotal);
    const Money withholding = amountOf(ctx, e.txtRetencio);
    Money remembered;
    if (sum == Money{}) {
        // No taxed base: the sum only decides the route below, hence an addition.
        sum = amountOf(ctx, e.txtBaseIRPF) + withholding;
    } else {
        remembered = sum;
        sum -= withholding;
    }
    const Money zero;
    if (!tickets && remembered != zero && total > zero && sum > total)
        return overTotal(ctx, dialogs, total, sum);

    e.Exempta = {};
    const Money cent = Money::fromUnits(100);
    const Money difference = sum - total;
    const bool oneCent = difference == cent || difference == -cent;
    // A credit note (negative total) may differ by any amount without a question.
    if (!tickets && remembered != zero && sum != zero && sum != total && !oneCent &&
        total >= zero) {
        e.Exempta = total - sum;
        if (!differenceAccepted(ctx, dialogs, e.Exempta, sum, total)) {
            e.Exempta = {};
            return false;
        }
    } else if (!tickets && sum != total && total < zero) {
        e.Exempta = total - sum;
    } else if (oneCent && !tickets && sum != total) {
        e.Exempta = total - sum;
    } else if (sum == zero && total != zero) {
        e.Exempta = total - sum;
    } else if (remembered == zero && total != zero && sum != zero) {
        e.Exempta = total + withholding;
    }
    return true;
}

Verdict Verifica_Apunt(const WorkingContext& ctx, Dialogs& dialogs, SaleEntry& e,
                       const VerifyOptions& options) {
    const bool tickets = isTickets(ctx);
    if (e.txtDia.trimmed().isEmpty())
        return refused(dialogs, Missatge(ctx, 635), EntryField::txtDia);
    bool numeric = false;
    const int day = e.txtDia.trimmed().toInt(&numeric);
    if (!numeric || day >= 32) return refused(dialogs, Missatge(ctx, 636), EntryField::txtDia);
    const auto date = Valida_Data(ctx, e.txtDia, e.txtMes);
    if (!date) return refused(dialogs, Missatge(ctx, 637), EntryField::txtDia);
    e.lblFecha = date->toString(QStringLiteral("dd/MM/yyyy"));
    if (Mes_Bloquejat(ctx, date->month())) {
        if (e.isNew()) e.txtMes.clear();
        return refused(dialogs, Missatge(ctx, 622), EntryField::txtMes);
    }
    if (tickets) {
        e.txtClient = Missatge(ctx, 639);
    } else {
        if (e.txtClient.isEmpty() || e.txtClient != e.listClientsText)
            return refused(dialogs, Missatge(ctx, 638), EntryField::txtClient);
        if (!Verifica_Client(ctx, e.txtClient))
            return refused(dialogs, Missatge(ctx, 640), EntryField::txtClient);
    }
    if (e.txtTipus.isEmpty() || e.txtTipus.toUpper() != e.listVendesText.toUpper())
        return refused(dialogs, Missatge(ctx, 641), EntryField::txtTipus);
    auto account = Verifica_compte_venda(ctx, e.txtTipus);
    // The focus goes to the customer on purpose: the account list follows from it.
    if (!account) return refused(dialogs, Missatge(ctx, 642), EntryField::txtClient);
    if (amountOf(ctx, e.txtTotal) == Money{})
        return refused(dialogs, Missatge(ctx, 643), EntryField::txtTotal);
    if (e.isNew() && options.invoice &&
        !schema::Nova_FrasOUT(ctx, e.txtTotal, e.txtdescripcio, customerNumberText(ctx, e))) {
        dialogs.beep();
        if (dialogs.yesNo(Missatge(ctx, 6754)) != Dialogs::Answer::Yes)
            return {false, EntryField::txtTotal, false, std::nullopt};
    }
    if (!tickets && !options.panelOpen) return {false, EntryField::txtBase, true, std::nullopt};
    for (QString* amount : {&e.txtBaseIRPF, &e.Text1, &e.txtRetencio, &e.txtBase[0], &e.txtBase[1],
                            &e.txtBase[2], &e.txtIVA[0], &e.txtIVA[1], &e.txtIVA[2], &e.txtRE[0],
                            &e.txtRE[1], &e.txtRE[2]}) {
        Neteja_Text(*amount);
        if (amount->isEmpty()) *amount = QStringLiteral("0");
    }
    if (!balanceCheck(ctx, dialogs, e)) return {false, EntryField::txtBase, false, std::nullopt};
    if (options.classification && e.clasificacion.left(5) == QStringLiteral("Selec"))
        e.clasificacion.clear();
    return {true, EntryField::None, false, std::move(account)};
}

}  // namespace tallora::sales
