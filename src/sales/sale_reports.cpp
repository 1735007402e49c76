#include "sale_reports.h"

#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"

namespace tallora::sales {

void fillSalesList(report::ReportJob& job, const WorkingContext& ctx, const QDate& printDate) {
    using report::textFormula;
    const bool tickets = isTickets(ctx);
    job.ReportFileName = report::reportFile(
        ctx, tickets ? QStringLiteral("llisven2.rpt") : QStringLiteral("llisvend.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::FrasOut);
    int i = 0;
    job.Formulas[i++] = textFormula(QStringLiteral("Nom"), ctx.EmpresaNom);
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_titulo"), Missatge(ctx, 6510));
    job.Formulas[i++] =
        textFormula(QStringLiteral("lbl_fecha"), printDate.toString(QStringLiteral("dd/MM/yyyy")));
    if (!tickets)
        for (std::size_t slot = 0; slot < 3; ++slot)
            job.Formulas[i++] =
                QStringLiteral("txtbase%1='%2 %'")
                    .arg(slot + 1)
                    .arg(QString::number(ctx.TipusIVA[slot]).replace(u'.', ctx.decimalMark()));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_ordre"), Missatge(ctx, 6117).toUpper());
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_fecha"), Missatge(ctx, 6118));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_razon_social"), Missatge(ctx, 6511));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_cuota"), Missatge(ctx, 6512));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_retencion"), Missatge(ctx, 6513));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_pagina"), Missatge(ctx, 6113));
}

report::ReportResult Imprimeix_Llista(const WorkingContext& ctx, Dialogs& dialogs,
                                      report::ReportJob& job, report::ReportOutput* output,
                                      const SaleFilter& filter, const report::PrintRequest& request,
                                      const QDate& printDate) {
    Busca_Vendes(ctx, filter);
    return report::runReport(ctx, dialogs, job, output, request, Missatge(ctx, 816),
                             [&](report::ReportJob& j) { fillSalesList(j, ctx, printDate); });
}

}  // namespace tallora::sales
