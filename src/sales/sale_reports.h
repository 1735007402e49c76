#pragma once
// Imprimeix_Llista of the sales inquiry: the sales list (llisvend.rpt, or llisven2.rpt for a
// shop's exercise). It runs the search first, so that the view SelFras the layout reads is
// the search on the screen.
//
// Formulas: Nom, lbl_titulo (6510), lbl_fecha (the print date), txtbase1..3 (the exercise's
// sales rates + " %", not for TICKETS), lbl_tit_ordre (6117 in capitals), lbl_tit_fecha
// (6118), lbl_tit_razon_social (6511), lbl_tit_cuota (6512), lbl_tit_retencion (6513),
// lbl_pagina (6113).
#include "sale_inquiry.h"

#include "context/fwd.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>

namespace tallora::sales {

void fillSalesList(report::ReportJob& job, const WorkingContext& ctx, const QDate& printDate);

// Window title message 816.
report::ReportResult Imprimeix_Llista(const WorkingContext& ctx, Dialogs& dialogs,
                                      report::ReportJob& job, report::ReportOutput* output,
                                      const SaleFilter& filter, const report::PrintRequest& request,
                                      const QDate& printDate);

}  // namespace tallora::sales
