#include "purchase_reports.h"

#include "purchase_entry.h"

#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"

namespace tallora::purchases {
namespace {

using report::textFormula;

QString date(const QDate& d) {
    return d.toString(QStringLiteral("dd/MM/yyyy"));
}

}  // namespace

void fillPurchaseList(report::ReportJob& job, const WorkingContext& ctx, const QDate& printDate) {
    const bool tickets = isTickets(ctx);
    job.ReportFileName = report::reportFile(
        ctx, tickets ? QStringLiteral("llisdes2.rpt") : QStringLiteral("llisdesp.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::FrasIn);
    int i = 0;
    job.Formulas[i++] = textFormula(QStringLiteral("Nom"), ctx.EmpresaNom);
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_titulo"), Missatge(ctx, 6636));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_fecha"), date(printDate));
    if (!tickets)
        for (std::size_t slot = 0; slot < 4; ++slot)
            job.Formulas[i++] =
                textFormula(QStringLiteral("txtbase%1").arg(slot + 1),
                            rateText(ctx, ctx.TipusIVAs[slot]) + QStringLiteral(" %"));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_ordre"), Missatge(ctx, 6117));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_fecha"), Missatge(ctx, 6118));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_razon_social"), Missatge(ctx, 6511));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_cuota"), Missatge(ctx, 6512));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_retencion"), Missatge(ctx, 6513));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_pagina"), Missatge(ctx, 6113));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_ejercicio"), ctx.Exercici);
}

void fillProvisionList(report::ReportJob& job, const WorkingContext& ctx, const QDate& printDate) {
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("llissupl.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Supl);
    int i = 0;
    job.Formulas[i++] = textFormula(QStringLiteral("Nom"), ctx.EmpresaNom);
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_titulo"), Missatge(ctx, 6516));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_fecha"), date(printDate));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_ordre"), Missatge(ctx, 6117));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_fecha"), Missatge(ctx, 6118));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tit_razon_social"), Missatge(ctx, 6511));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_tipo"), Missatge(ctx, 6515));
    job.Formulas[i++] = textFormula(QStringLiteral("lbl_pagina"), Missatge(ctx, 6113));
}

report::ReportResult Imprimir_Compres(const WorkingContext& ctx, Dialogs& dialogs,
                                      report::ReportJob& job, report::ReportOutput* output,
                                      const PurchaseFilter& filter,
                                      const report::PrintRequest& request, const QDate& printDate) {
    Buscar(ctx, filter);
    return report::runReport(ctx, dialogs, job, output, request, Missatge(ctx, 924),
                             [&](report::ReportJob& j) { fillPurchaseList(j, ctx, printDate); });
}

report::ReportResult Imprimir_Suplidos(const WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       const ProvisionFilter& filter,
                                       const report::PrintRequest& request,
                                       const QDate& printDate) {
    Buscar_Suplidos(ctx, filter);
    return report::runReport(ctx, dialogs, job, output, request, Missatge(ctx, 6500),
                             [&](report::ReportJob& j) { fillProvisionList(j, ctx, printDate); });
}

}  // namespace tallora::purchases
