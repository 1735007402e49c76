#include "purchase_journal.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"

namespace tallora::purchases {

std::vector<JournalRow> Diari_Apunt(const WorkingContext& ctx, const PurchaseEntry& e,
                                    const JournalPosting& p) {
    JournalRows rows;
    rows.add(journal::Start, Missatge(ctx, p.change ? 651 : 649));
    rows.add(journal::Desc, Missatge(ctx, 650) + e.lblFecha);
    rows.add(journal::Desc, e.txtProveidor);
    rows.add(journal::Desc, e.txtDespesa);
    rows.add(journal::Desc, QStringLiteral("Descrip.: ") + e.txtdescripcio + e.cmbSerie);
    if (p.classification && !e.clasificacion.isEmpty()) rows.add(journal::Desc, e.clasificacion);
    rows.settledBy(ctx, e.entitat);
    for (std::size_t i = 0; i < 4; ++i) {
        const Money base = amountOf(ctx, e.txtBase[i]);
        if (base == Money{}) continue;
        rows.amount(QStringLiteral("BASE: ") + QString::number(ctx.TipusIVAs[i]) +
                        QStringLiteral(" % ") + Format_Import(ctx, base),
                    base);
        const Money iva = amountOf(ctx, e.txtIVA[i]);
        rows.amount(QStringLiteral("IVA: ") + Format_Import(ctx, iva), iva);
        rows.add(journal::Blank);
    }
    rows.closingAmounts(ctx, amountOf(ctx, e.txtexempta), amountOf(ctx, e.txtBaseIRPF), e.txtTipus,
                        amountOf(ctx, e.txtRetencio), amountOf(ctx, e.txtTotal));
    rows.result(ctx, p.affected, p.ordre);
    return rows.take();
}

}  // namespace tallora::purchases
