#include "sale_journal.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"

namespace tallora::sales {
namespace {

QString rateCaption(double rate) {
    return QString::number(rate) + QStringLiteral(" %");
}

}  // namespace

JournalType journalType(DocType type) {
    return {docInfo(type).journalText, docInfo(type).journalKind};
}

std::vector<JournalRow> Diari_Apunt(const WorkingContext& ctx, const SaleEntry& e,
                                    const JournalPosting& p) {
    JournalRows rows;
    rows.add(journal::Start, Missatge(ctx, p.change ? 651 : 649));
    rows.add(journal::Desc, Missatge(ctx, 650) + e.lblFecha);
    rows.add(journal::Desc, e.txtClient);
    if (e.rebut) {
        for (const QString& line : {e.rebutDomicili, e.rebutPoblacio, e.rebutNif})
            rows.add(journal::Desc, line);
        for (const QString& line : e.concepte)
            if (!line.isEmpty()) rows.add(journal::Desc, line);
    }
    rows.add(journal::Desc, e.txtTipus);
    rows.add(journal::Desc, QStringLiteral("Descrip.: ") + e.txtdescripcio + e.cmbSerie);
    if (p.classification && !e.clasificacion.isEmpty()) rows.add(journal::Desc, e.clasificacion);
    rows.add(journal::Desc, p.type.caption);
    if (p.type.modifyKind == journal::Modificar && e.entitat != QStringLiteral("Marca") &&
        !e.rebut)
        rows.add(journal::Desc, e.entitat.isEmpty() ? Missatge(ctx, 6676)
                                                    : Missatge(ctx, 6677) + e.entitat);
    const std::array<double, 3>& rates = e.postedRates ? *e.postedRates : ctx.TipusIVA;
    for (std::size_t i = 0; i < 3; ++i) {
        const Money base = amountOf(ctx, e.txtBase[i]);
        if (base == Money{}) continue;
        rows.amount(QStringLiteral("BASE: ") + rateCaption(rates[i]) + QStringLiteral(" ") +
                        Format_Import(ctx, base),
                    base);
        const Money iva = amountOf(ctx, e.txtIVA[i]);
        rows.amount(QStringLiteral("IVA: ") + Format_Import(ctx, iva), iva);
        const Money re = amountOf(ctx, e.txtRE[i]);
        if (re != Money{}) rows.amount(QStringLiteral("R.E. ") + Format_Import(ctx, re), re);
        rows.add(journal::Blank);
    }
    rows.closingAmounts(ctx, e.Exempta, amountOf(ctx, e.txtBaseIRPF), e.Text1,
                        amountOf(ctx, e.txtRetencio), amountOf(ctx, e.txtTotal));
    rows.result(ctx, p.affected, p.ordre, p.type.modifyKind);
    return rows.take();
}

}  // namespace tallora::sales
