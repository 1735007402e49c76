#pragma once
// The books of the books dialog's "gastos", "ingresos" and "Suplidos" tabs and the
// counterparty declaration of its "informes" tab: each checks the period, rebuilds what it
// prints from, fills the report job and starts it. The dialog and the companion both launch
// them from here.
//
// The order of a launch: the period check (6142, nothing rebuilt when refused); progress 10;
// the journal (progress 20; a failure is silent and the book prints what the journal holds);
// the stored query (progress 60); then the common report launch (report_helpers.h runReport:
// printer check, file, data, formulas with the summary, title, destination, margins; progress
// 95; start; progress 0).
//
// Layouts, on the view each reads, and the formulas they are given:
//   llibrei1.rpt  SelIVAr   the sales book; the six lbl_bar_/lbl_titulo_gral texts of the
//                           VAT columns, then the common ones, then Resum_IVAr's footer
//   llibrer1.rpt  SelIVAr   the sales with withholding, by customer (OpLibroIRPF)
//   llibrei2.rpt  SelIVAr   the sales book of a TICKETS exercise, without footer summary
//   llibred1.rpt  SelIVAs   the purchases book with the expense families; Resum_IVAs
//   llibred3.rpt  SelIVAs   the same for a TICKETS exercise
//   llibrem2.rpt  SelIVAs   the purchases in the VAT book (Opct2) and the investments (Opct3)
//   llibrer2.rpt  SelIVAs   the purchases with withholding, by supplier (OpIRPFpro)
//   llibre_s.rpt  SelFras   the provisions and disbursements (Supl.mdb)
//   500000.rpt    Sel347    the customers and suppliers whose year passes the threshold
// Common formulas: Nom, NIF, lbl_ejercicio (6143 + year), periode (" 6156  6145 FROM 6146 TO
// - series"), lbl_fecha (the print date), lbl_pagina (6113), and the column captions; besides
// them every book with sums carried at a page's foot is given lbl_acumulado (6154) to name
// them, the purchases book lbl_pagina (6113) for its page numbers, and the provisions book
// lbl_bar_nombre (6137) for its name column.
#include "vat_book_queries.h"

#include "context/fwd.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>
#include <QString>

#include <functional>

namespace tallora::books {

// The purchases book's options: Opct1, Opct2, Opct3, OpIRPFpro.
enum class PurchasesBook { General, VatOnly, Investments, Withholding };

// Every book launched here, as the dialog's buttons and options and the companion name them.
enum class Book {
    Sales,                 // btn_llibre_IVAr
    SalesWithholding,      // btn_llibre_IVAr with OpLibroIRPF
    Purchases,             // btnIVAs_simpli with Opct1
    PurchasesVat,          // Opct2
    Investments,           // Opct3
    PurchasesWithholding,  // OpIRPFpro
    Provisions,            // btnSuplidos
    Declaration,           // btn500
};

struct BookRequest {
    int fromMonth = 1, toMonth = 12;  // OpInici/OpFinal and their siblings
    Series series = Series::All;
    bool irpf = false;  // OpLibroIRPF of the sales book
    QDate printDate;    // data_fecha_impresion
    report::PrintRequest print;
    // Prog: 10 at the start, 20 after the journal (books that rebuild one), 60 after the
    // query, 95 when the report starts, 0 at the end.
    std::function<void(int)> progress;
};

// Message 6142 with the stop icon and false when the first month is after the last.
bool checkPeriod(const WorkingContext& ctx, Dialogs& dialogs, int fromMonth, int toMonth);

// The text of `periode`: " Periodo:  DESDE ENERO HASTA MARZO - Todas las facturas"; without
// a series label for the provisions book.
QString periodText(const WorkingContext& ctx, int fromMonth, int toMonth, int seriesLabel = 0);

// The layout each book uses in this exercise.
QString salesBookLayout(const WorkingContext& ctx, bool irpf);
QString purchasesBookLayout(const WorkingContext& ctx, PurchasesBook book);

// The job's layout, data files and formulas (summaries included) once the data are built.
void fillSalesBook(report::ReportJob& job, const WorkingContext& ctx, const BookRequest& request);
void fillPurchasesBook(report::ReportJob& job, const WorkingContext& ctx, PurchasesBook book,
                       const BookRequest& request);
void fillProvisionsBook(report::ReportJob& job, const WorkingContext& ctx,
                        const BookRequest& request);
void fillDeclaration(report::ReportJob& job, const WorkingContext& ctx, const QDate& printDate);

// The period check and the rebuild of what `book` prints from; false when the period is
// refused, with nothing rebuilt. `request.irpf` is taken from the book for the sales ones.
bool prepareBook(const WorkingContext& ctx, Dialogs& dialogs, Book book, BookRequest request);
// prepareBook, then the report; a refused period comes back Cancelled.
report::ReportResult launchBook(const WorkingContext& ctx, Dialogs& dialogs, report::ReportJob& job,
                                report::ReportOutput* output, Book book, BookRequest request);

// The book's rows as they stand in its view, in the printed order, as tab-separated lines:
// the column names first, then one line a row with dates dd/mm/yyyy and amounts as printed.
QStringList bookRows(const WorkingContext& ctx, Book book);
// The footer summary the book is given, one "name<TAB>value" line a formula; none for a book
// without summary or in a TICKETS exercise.
QStringList bookSummary(const WorkingContext& ctx, Book book);

}  // namespace tallora::books
