#pragma once
// Imprimir of the two inquiries: the purchases list (llisdesp.rpt, or llisdes2.rpt for a
// shop's exercise) and the list of provisions and disbursements (llissupl.rpt). Each runs
// its search first, so that the view SelFras the layout reads is the search on the screen.
//
// Formulas of the purchases list: Nom, lbl_titulo (6636), lbl_fecha (the print date),
// txtbase1..4 (the exercise's purchase rates + " %", not for TICKETS), lbl_tit_ordre (6117),
// lbl_tit_fecha (6118), lbl_tit_razon_social (6511), lbl_tit_cuota (6512),
// lbl_tit_retencion (6513), lbl_pagina (6113), lbl_ejercicio (the exercise).
// Of the provisions list: Nom, lbl_titulo (6516), lbl_fecha, lbl_tit_ordre, lbl_tit_fecha,
// lbl_tit_razon_social, lbl_tipo (6515), lbl_pagina.
#include "provision_inquiry.h"
#include "purchase_inquiry.h"

#include "context/fwd.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>

namespace tallora::purchases {

void fillPurchaseList(report::ReportJob& job, const WorkingContext& ctx, const QDate& printDate);
void fillProvisionList(report::ReportJob& job, const WorkingContext& ctx, const QDate& printDate);

// Window title message 924.
report::ReportResult Imprimir_Compres(const WorkingContext& ctx, Dialogs& dialogs,
                                      report::ReportJob& job, report::ReportOutput* output,
                                      const PurchaseFilter& filter,
                                      const report::PrintRequest& request, const QDate& printDate);
// Window title message 6500.
report::ReportResult Imprimir_Suplidos(const WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       const ProvisionFilter& filter,
                                       const report::PrintRequest& request, const QDate& printDate);

}  // namespace tallora::purchases
