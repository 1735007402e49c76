#pragma once
// The printed treasury lists: the account statement (extracto.rpt, on the view
// Selmovimientos_extracto of tesorer.mdb) and the list of other movements (llisotro.rpt, on
// the view SelOtros_movimientos, the account names joined from entidades and Otras). Each
// runs its screen's search first, so that the view the layout reads is what the screen shows.
//
// Formulas of the statement: Nom, lbl_titulo (6745 + ": " + the account's name), lbl_fecha
// (the print date), lbl_tit_ordre ('ID'), lbl_tit_fecha (820), lbl_tit_concepto (6741),
// lbl_tit_entradas (6747), lbl_tit_salidas (6748), lbl_tit_saldo ('SALDO'), lbl_saldo (the
// opening balance), and lbl_tit_contrapartida, lbl_saldo_inicial and lbl_pagina (6113) for
// the rest of the page.
// Of the other movements: Nom, lbl_titulo (6744), lbl_fecha, lbl_tit_ordre (6117),
// lbl_tit_fecha (6118), lbl_tit_concepto (6741), lbl_tit_entra ('ENTRA (D)'),
// lbl_tit_sale (6743), lbl_tit_importe (6742), lbl_pagina (6113).
#include "other_movements.h"

#include "context/fwd.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>

#include <cstdint>
#include <optional>

namespace tallora::treasury {

void fillStatementReport(report::ReportJob& job, const WorkingContext& ctx,
                         std::optional<std::int64_t> entidad, const QDate& printDate);
void fillOtherMovementsList(report::ReportJob& job, const WorkingContext& ctx,
                            const QDate& printDate);

// The statement of `entidad` (of every account without one) between the two dates; window
// title message 6745.
report::ReportResult Imprimir_Extracto(const WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       std::optional<std::int64_t> entidad, const QDate& from,
                                       const QDate& to, const report::PrintRequest& request,
                                       const QDate& printDate);
// The other movements the filter keeps; window title message 6744.
report::ReportResult Imprimir_Otros(const WorkingContext& ctx, Dialogs& dialogs,
                                    report::ReportJob& job, report::ReportOutput* output,
                                    const OtherFilter& filter, const report::PrintRequest& request,
                                    const QDate& printDate);

}  // namespace tallora::treasury
