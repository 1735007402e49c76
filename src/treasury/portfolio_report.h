#pragma once
// The printed list of the portfolio (Imprimeix_Recibos): every receipt of one direction, or
// of one party, from the company's cartera.mdb with the party's name from gest.mdb.
//
// Layouts: teso_cli_2.rpt / teso_pro_2.rpt, or, grouped by party (OpGrupo), teso_cli_3.rpt /
// teso_pro_3.rpt. DataFiles(0) is ..\cartera.mdb, DataFiles(1) gest.mdb. Formulas:
//   lbl_titulo (6680 ": " 6688 or 6689), Nom (company name), lbl_fecha (print date),
//   lbl_tit_ordre (6117), lbl_tit_fecha (6118), lbl_tit_razon_social (6511),
//   lbl_tipo ('FACTURA'), lbl_pagado (6691), lbl_pagina (6113), lbl_saldoneto (6694),
//   lbl_acuenta (6693), lbl_res_tit (6913), lbl_tit_vencimiento (6998).
// Sort field "+{cartera.data}" (OpFecha) or "+{cartera.vencimiento}" (OpVencimiento), then
// "+{cartera.Id}"; the selection keeps the direction of the tab and, when one is chosen, the
// party.
#include "context/fwd.h"
#include "portfolio.h"
#include "report/report_job.h"

#include <QDate>
#include <QString>

namespace tallora::treasury {

struct PortfolioPrint {
    PortfolioFilter filter;
    bool grupo = false;  // OpGrupo
    QDate printDate;
    int destination = report::Destination::Window;
    QString printFileName;  // with Destination::File, Xlsx and Csv
};

// ReportFileName, DataFiles, Formulas, SortFields and SelectionFormula of the list, on a
// job that Neteja_Informe has emptied.
void fillPortfolioReport(report::ReportJob& job, const WorkingContext& ctx,
                         const PortfolioPrint& print);

// The question 6687 with the tab's name; on Yes Hi_Ha_Impressora, Neteja_Informe, the job,
// its window title, destination and margins, and Action. Cancelled on No or without a
// printer. Saved as a spreadsheet (Destination::Xlsx, Csv), the list is neither asked about
// nor needs a printer: the file chosen is the user's answer.
report::ReportResult Imprimeix_Recibos(const WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       const PortfolioPrint& print);

}  // namespace tallora::treasury
