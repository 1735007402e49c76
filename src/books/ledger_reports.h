#pragma once
// btnMajorPro of the books dialog's "listados" tab, shared with the companion: the extracts
// of expenses (OpExt1), sales (OpExt2), suppliers (OpExt3) and customers (OpExt4). Suppliers
// and customers print either their ledger with running balance (OpProMayor, OpCliMayor),
// built in mayor only with treasury control (without it the ledger prints what mayor holds),
// or the list of their invoices.
//
// Layouts, on what each reads, and the formulas beyond Nom, lbl_titulo (6124; 6115 for the
// expenses), lbl_fecha and lbl_pagina:
//   majorcl2.rpt  mayor of tesorer.mdb   both ledgers: lbl_debe, lbl_haber, lbl_tit_orden,
//                                        lbl_tit_fecha, lbl_tit_naturalesa, lbl_tit_facturas,
//                                        lbl_tit_num_facturas
//   majorcli.rpt  SelFras of FrasOUT.mdb the customers' invoices: lbl_titulo_gral (6133) and
//                                        the titles above
//   majorpro.rpt  SelFras of FrasIN.mdb  the suppliers' invoices: lbl_titulo_gral (6128) and
//                                        the titles of the expense lists
//   majordes.rpt  SelFras of FrasIN.mdb  every purchase by expense account (6116)
//   majorven.rpt  SelFras of FrasOUT.mdb every sale by income account (6125)
#include "context/fwd.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace tallora::books {

enum class Extract { Expenses, Sales, Suppliers, Customers };

struct LedgerRequest {
    Extract extract = Extract::Expenses;
    // OpCliMayor / OpProMayor: the ledger rather than the list of invoices.
    bool ledger = true;
    // CmbClients / CmbProveidors: one party, or every one.
    std::optional<std::int64_t> party;
    QDate printDate;
    report::PrintRequest print;
};

// Builds what the extract prints from: mayor (a ledger, with treasury control) or SelFras.
void prepareLedger(const WorkingContext& ctx, const LedgerRequest& request);

// The job's layout, data file and formulas once the data are built.
void fillLedger(report::ReportJob& job, const WorkingContext& ctx, const LedgerRequest& request);

// prepareLedger, then the common report launch.
report::ReportResult launchLedger(const WorkingContext& ctx, Dialogs& dialogs,
                                  report::ReportJob& job, report::ReportOutput* output,
                                  const LedgerRequest& request);

// What the extract prints, one row a line, tab-separated, after a heading line: the rows of
// mayor, or the invoices of SelFras. For the companion's --text.
QStringList ledgerRows(const WorkingContext& ctx, const LedgerRequest& request);

}  // namespace tallora::books
