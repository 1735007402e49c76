#include "portfolio_report.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_helpers.h"
#include "schema/creation.h"

namespace tallora::treasury {
namespace {

// 6688 "Clientes" or 6689 "Proveedores".
QString tabName(const WorkingContext& ctx, Tab tab) {
    return Missatge(ctx, tab == Tab::Clientes ? 6688 : 6689);
}

}  // namespace

void fillPortfolioReport(report::ReportJob& job, const WorkingContext& ctx,
                         const PortfolioPrint& print) {
    const bool customers = print.filter.tab == Tab::Clientes;
    job.ReportFileName =
        report::reportFile(ctx, QStringLiteral("teso_%1_%2.rpt")
                                    .arg(customers ? QStringLiteral("cli") : QStringLiteral("pro"))
                                    .arg(print.grupo ? 3 : 2));
    job.DataFiles[0] = ctx.companyFile(schema::db::Cartera);
    job.DataFiles[1] = ctx.exerciseFile(schema::db::Gest);
    const std::pair<const char*, QString> formulas[] = {
        {"lbl_titulo", Missatge(ctx, 6680) + QStringLiteral(": ") + tabName(ctx, print.filter.tab)},
        {"Nom", ctx.EmpresaNom},
        {"lbl_fecha", print.printDate.toString(QStringLiteral("dd/MM/yyyy"))},
        {"lbl_tit_ordre", Missatge(ctx, 6117)},
        {"lbl_tit_fecha", Missatge(ctx, 6118)},
        {"lbl_tit_razon_social", Missatge(ctx, 6511)},
        {"lbl_tipo", QStringLiteral("FACTURA")},
        {"lbl_pagado", Missatge(ctx, 6691)},
        {"lbl_pagina", Missatge(ctx, 6113)},
        {"lbl_saldoneto", Missatge(ctx, 6694)},
        {"lbl_acuenta", Missatge(ctx, 6693)},
        {"lbl_res_tit", Missatge(ctx, 6913)},
        {"lbl_tit_vencimiento", Missatge(ctx, 6998)},
    };
    int i = 0;
    for (const auto& [name, value] : formulas)
        job.Formulas[i++] = report::textFormula(QString::fromLatin1(name), value);
    // Ties keep the order of the table, as the grid's do.
    job.SortFields = {print.filter.orden == Orden::Fecha ? QStringLiteral("+{cartera.data}")
                                                         : QStringLiteral("+{cartera.vencimiento}"),
                      QStringLiteral("+{cartera.Id}")};
    job.SelectionFormula = customers ? QStringLiteral("{cartera.In_Out} = 'Out'")
                                     : QStringLiteral("{cartera.In_Out} = 'In'");
    if (print.filter.party)
        job.SelectionFormula +=
            QStringLiteral(" and {cartera.%1} = %2")
                .arg(customers ? QStringLiteral("cliente") : QStringLiteral("proveedor"))
                .arg(*print.filter.party);
}

report::ReportResult Imprimeix_Recibos(const WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       const PortfolioPrint& print) {
    const report::ReportResult cancelled{report::ReportResult::Status::Cancelled, {}, 0};
    if (!report::Destination::isSpreadsheet(print.destination)) {
        if (dialogs.yesNo(Missatge(ctx, 6687) + tabName(ctx, print.filter.tab)) !=
            Dialogs::Answer::Yes)
            return cancelled;
        if (!report::Hi_Ha_Impressora(ctx, dialogs)) return cancelled;
    }
    report::Neteja_Informe(job);
    fillPortfolioReport(job, ctx, print);
    job.WindowTitle = Missatge(ctx, 6680) + QStringLiteral(": ") + tabName(ctx, print.filter.tab);
    job.Destination = print.destination;
    job.PrintFileName = print.printFileName;
    report::Marges_Informe(job, ctx);
    const report::ReportResult result = job.Action(ctx, dialogs, output);
    // The order is this list's own: the next report of the shared job must not inherit it.
    job.SortFields.clear();
    return result;
}

}  // namespace tallora::treasury
