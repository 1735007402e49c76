#pragma once
// btnSaldos of the books dialog's "informes" tab, shared with the companion: the summary of
// balances, one line for each large group of accounts, each recomputed from the operational
// tables by its own query into the work table saldos of saldos.mdb, in a fixed order that is
// the order of the print. Lines keep their group number; the two lines of 473 and of 554 stay
// apart and only the totals merge them, counting each number's difference once.
//
// Layout saldos.rpt on saldos, with the formulas Nom, lbl_titulo ("Informe de saldos"),
// lbl_fecha, lbl_cuenta, lbl_tit_concepto, lbl_tit_entradas, lbl_tit_salidas, lbl_pagina,
// lbl_ejercici, D_TOTAL and H_TOTAL.
#include "context/fwd.h"
#include "context/money.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>
#include <QStringList>

#include <optional>

namespace tallora::books {

struct TrialBalanceTotals {
    Money debit, credit;  // D_TOTAL, H_TOTAL
};

// Genera_Saldos: message 6979 and nothing built without treasury control.
std::optional<TrialBalanceTotals> Genera_Saldos(const WorkingContext& ctx, Dialogs& dialogs);

void fillTrialBalance(report::ReportJob& job, const WorkingContext& ctx,
                      const TrialBalanceTotals& totals, const QDate& printDate);

report::ReportResult launchTrialBalance(const WorkingContext& ctx, Dialogs& dialogs,
                                        report::ReportJob& job, report::ReportOutput* output,
                                        const QDate& printDate, const report::PrintRequest& print);

// The lines of saldos as built (number, description, debit, credit; a side without an amount
// blank), then the two totals.
QStringList trialBalanceRows(const WorkingContext& ctx, const TrialBalanceTotals& totals);

}  // namespace tallora::books
