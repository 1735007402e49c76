#pragma once
// btnPiG of the books dialog's "informes" tab, shared with the companion: the operating
// statement month by month, built afresh in explota.mdb from the invoices of the period.
//
// Tables of explota.mdb, dropped and made anew at each run: GransGrups (the two sides),
// COMPTES (the accounts that take part, with their family's place), explota (one row an
// account in the order income accounts by name, then expense accounts by name; one column a
// month; the months outside the period keep the column's default, 0) and RESULTATS (each
// month's result, the total and the cumulated values). Investments and other accounts are no
// income or expense and stay out. The account is linked by name, as the invoices keep it.
// COMPTES numbers its rows itself (its Compte counts), as families may share an account
// number; explota keeps each account's own number.
//
// The figures come from one grouped query a side, not one a month and account: the same sums.
// A sale counts its total less IVA and recargo, plus its withholding; a purchase its bases and
// exempt part. The result enters with the first expense account: without any, it stays 0.
//
// Layouts explota1.rpt (by account), explota2.rpt (by type), explota3.rpt (by group), on
// explota joined to COMPTES by name; the results come as the formulas res01..res12, resTOTAL
// and ac01..ac12 besides those of the statement.
#include "context/fwd.h"
#include "context/money.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>
#include <QStringList>

#include <array>

namespace tallora::books {

// The one place where a statement rewrites bookkeeping data: every purchase's Exempta made
// the part of its total no base and no IVA explains (in a shop's exercise, the whole total
// before withholding). In one transaction.
void normaliseExempt(const WorkingContext& ctx);

// The income and the expenses of each month of the statement's period, as its accounts add
// them up; the months outside the period are 0.
struct OperatingTotals {
    std::array<Money, 12> income{}, expenses{};
};

// Genera_Explota for the months `fromMonth` to `toMonth` (1 to 12), after the tables are made.
OperatingTotals Genera_Explota(const WorkingContext& ctx, int fromMonth, int toMonth);

// The tables, the normalising and the build, without the period check: the figures the
// statement prints, also read by the self-employed's quarterly payment (modelo 130).
OperatingTotals buildOperatingStatement(const WorkingContext& ctx, int fromMonth, int toMonth);

struct OperatingRequest {
    int level = 1;  // OpE1, OpE2, OpE3
    int fromMonth = 1, toMonth = 12;
    QDate printDate;
    report::PrintRequest print;
};

// The period check (6142), the tables, the normalising, the build: false when refused.
bool prepareOperatingStatement(const WorkingContext& ctx, Dialogs& dialogs,
                               const OperatingRequest& request);

void fillOperatingStatement(report::ReportJob& job, const WorkingContext& ctx,
                            const OperatingRequest& request);

report::ReportResult launchOperatingStatement(const WorkingContext& ctx, Dialogs& dialogs,
                                              report::ReportJob& job, report::ReportOutput* output,
                                              const OperatingRequest& request);

// explota's rows (account and the thirteen amounts), then RESULTATS' two lines.
QStringList operatingStatementRows(const WorkingContext& ctx);

}  // namespace tallora::books
