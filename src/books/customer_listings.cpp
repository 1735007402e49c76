#include "customer_listings.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_helpers.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::books {
namespace {

using report::ReportJob;

// The formulas both lists share; `titol` is 6101 or 6111.
void fillListing(ReportJob& job, const WorkingContext& ctx, ListingKind kind,
                 const QDate& printDate, const QString& prefix, int titol) {
    const bool domicile = kind == ListingKind::Domicile;
    job.ReportFileName = report::reportFile(
        ctx, prefix + (domicile ? QStringLiteral("_dom.rpt") : QStringLiteral("_con.rpt")));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Gest);
    int i = 0;
    job.Formulas[i++] = report::textFormula(QStringLiteral("Nom"), ctx.EmpresaNom);
    job.Formulas[i++] = report::textFormula(QStringLiteral("lbl_codigo"), Missatge(ctx, 6100));
    job.Formulas[i++] = report::textFormula(QStringLiteral("lbl_titulo"), Missatge(ctx, titol));
    job.Formulas[i++] =
        report::textFormula(QStringLiteral("lbl_razon_social"), Missatge(ctx, 6104));
    job.Formulas[i++] = report::textFormula(QStringLiteral("lbl_fecha"),
                                            printDate.toString(QStringLiteral("dd/MM/yyyy")));
    job.Formulas[i++] = report::textFormula(QStringLiteral("lbl_pagina"), Missatge(ctx, 6113));
    if (domicile) {
        job.Formulas[i++] =
            report::textFormula(QStringLiteral("lbl_domicilio"), Missatge(ctx, 6102));
        job.Formulas[i++] =
            report::textFormula(QStringLiteral("lbl_poblacion"), Missatge(ctx, 6103));
    } else {
        job.Formulas[i++] = report::textFormula(QStringLiteral("lbl_email"), Missatge(ctx, 6107));
        job.Formulas[i++] =
            report::textFormula(QStringLiteral("lbl_telefono"), Missatge(ctx, 6108));
        job.Formulas[i++] =
            report::textFormula(QStringLiteral("lbl_titulo_gral"), Missatge(ctx, 6112));
    }
}

using Fill = void (*)(ReportJob&, const WorkingContext&, ListingKind, const QDate&);

report::ReportResult launch(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                            report::ReportOutput* output, const ListingRequest& request, Fill fill,
                            int titol) {
    const QString title = request.kind == ListingKind::Domicile
                              ? Missatge(ctx, titol)
                              : Missatge(ctx, 6112) + QStringLiteral(" - ") + Missatge(ctx, titol);
    return report::runReport(ctx, dialogs, job, output,
                             {request.destination, request.printFileName}, title,
                             [&](ReportJob& j) { fill(j, ctx, request.kind, request.printDate); });
}

std::vector<PartyItem> parties(const WorkingContext& ctx, const QString& sql) {
    std::vector<PartyItem> items;
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Gest));
    store::Statement st = db.prepare(sql);
    while (st.next()) items.push_back({st.isNull(0) ? QString() : st.text(0), st.int64(1)});
    return items;
}

}  // namespace

std::vector<PartyItem> OMPLE_LLISTA_Clients(const WorkingContext& ctx) {
    return parties(ctx, QStringLiteral("select nom, client from clients order by client asc"));
}

std::vector<PartyItem> OMPLE_LLISTA_Proveidors(const WorkingContext& ctx) {
    return parties(ctx, QStringLiteral("select nom, proveidor from proveidors order by nom asc"));
}

void fillCustomerListing(ReportJob& job, const WorkingContext& ctx, ListingKind kind,
                         const QDate& printDate) {
    fillListing(job, ctx, kind, printDate, QStringLiteral("cli"), 6101);
}

void fillSupplierListing(ReportJob& job, const WorkingContext& ctx, ListingKind kind,
                         const QDate& printDate) {
    fillListing(job, ctx, kind, printDate, QStringLiteral("pro"), 6111);
}

report::ReportResult btnLListatClients(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                                       report::ReportOutput* output,
                                       const ListingRequest& request) {
    return launch(ctx, dialogs, job, output, request, fillCustomerListing, 6101);
}

report::ReportResult btnLListatProv(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                                    report::ReportOutput* output, const ListingRequest& request) {
    return launch(ctx, dialogs, job, output, request, fillSupplierListing, 6111);
}

}  // namespace tallora::books
