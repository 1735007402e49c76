#include "treasury_reports.h"

#include "account_statement.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/lookups.h"

#include <utility>

namespace tallora::treasury {
namespace {

using Formula = std::pair<const char*, QString>;

void setFormulas(report::ReportJob& job, std::initializer_list<Formula> formulas) {
    int i = 0;
    for (const auto& [name, value] : formulas)
        job.Formulas[i++] = report::textFormula(QString::fromLatin1(name), value);
}

}  // namespace

void fillStatementReport(report::ReportJob& job, const WorkingContext& ctx,
                         std::optional<std::int64_t> entidad, const QDate& printDate) {
    const QString id = entidad ? QString::number(*entidad) : QString();
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("extracto.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Tesorer);
    setFormulas(job, {
                         {"Nom", ctx.EmpresaNom},
                         {"lbl_titulo", Missatge(ctx, 6745) + QStringLiteral(": ") +
                                            (entidad ? schema::Nom_Entitat(ctx, id) : QString())},
                         {"lbl_fecha", Format_Data(printDate)},
                         {"lbl_tit_ordre", QStringLiteral("ID")},
                         {"lbl_tit_fecha", Missatge(ctx, 820)},
                         {"lbl_tit_concepto", Missatge(ctx, 6741)},
                         {"lbl_tit_entradas", Missatge(ctx, 6747)},
                         {"lbl_tit_salidas", Missatge(ctx, 6748)},
                         {"lbl_tit_saldo", QStringLiteral("SALDO")},
                         {"lbl_saldo",
                          Format_Import(ctx, entidad ? schema::Saldo_Entitat(ctx, id) : Money{})},
                         {"lbl_tit_contrapartida", QStringLiteral("CONTRAPARTIDA")},
                         {"lbl_saldo_inicial", QStringLiteral("Saldo Inicial...")},
                         {"lbl_pagina", Missatge(ctx, 6113)},
                     });
}

void fillOtherMovementsList(report::ReportJob& job, const WorkingContext& ctx,
                            const QDate& printDate) {
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("llisotro.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Tesorer);
    job.DataFiles[1] = ctx.exerciseFile(schema::db::Comptes);
    setFormulas(job, {
                         {"Nom", ctx.EmpresaNom},
                         {"lbl_titulo", Missatge(ctx, 6744)},
                         {"lbl_fecha", Format_Data(printDate)},
                         {"lbl_tit_ordre", Missatge(ctx, 6117)},
                         {"lbl_tit_fecha", Missatge(ctx, 6118)},
                         {"lbl_tit_concepto", Missatge(ctx, 6741)},
                         {"lbl_tit_entra", QStringLiteral("ENTRA (D)")},
                         {"lbl_tit_sale", Missatge(ctx, 6743)},
                         {"lbl_tit_importe", Missatge(ctx, 6742)},
                         {"lbl_pagina", Missatge(ctx, 6113)},
                     });
}

report::ReportResult Imprimir_Extracto(const WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       std::optional<std::int64_t> entidad, const QDate& from,
                                       const QDate& to, const report::PrintRequest& request,
                                       const QDate& printDate) {
    Busca_Extracto(ctx, entidad, from, to);
    return report::runReport(
        ctx, dialogs, job, output, request, Missatge(ctx, 6745),
        [&](report::ReportJob& j) { fillStatementReport(j, ctx, entidad, printDate); });
}

report::ReportResult Imprimir_Otros(const WorkingContext& ctx, Dialogs& dialogs,
                                    report::ReportJob& job, report::ReportOutput* output,
                                    const OtherFilter& filter, const report::PrintRequest& request,
                                    const QDate& printDate) {
    searchOtherMovements(ctx, filter);
    return report::runReport(
        ctx, dialogs, job, output, request, Missatge(ctx, 6744),
        [&](report::ReportJob& j) { fillOtherMovementsList(j, ctx, printDate); });
}

}  // namespace tallora::treasury
