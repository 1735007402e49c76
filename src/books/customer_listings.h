#pragma once
// The customer and supplier lists of the listings tab (btnLListatClients, btnLListatProv):
// by domicile (Opclidom, OpProdom) or by contacts, read from gest.mdb of the exercise.
//
// Layouts and their formulas:
//   cli_dom.rpt, pro_dom.rpt   lbl_domicilio (6102), lbl_poblacion (6103)
//   cli_con.rpt, pro_con.rpt   lbl_email (6107), lbl_telefono (6108), lbl_titulo_gral (6112)
//   all four                   Nom (company name), lbl_codigo (6100), lbl_titulo (6101 for
//                              customers, 6111 for suppliers), lbl_razon_social (6104),
//                              lbl_fecha (the print date, dd/mm/yyyy), lbl_pagina (6113)
#include "context/fwd.h"
#include "report/report_job.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <vector>

namespace tallora::books {

enum class ListingKind {
    Domicile,  // Opclidom / OpProdom
    Contacts,  // Opclicon / OpProCon
};

struct ListingRequest {
    ListingKind kind = ListingKind::Domicile;
    QDate printDate;  // data_fecha_impresion
    // OpWindow (Destination::Window), OPprinter (Destination::Printer), or a PDF file.
    int destination = report::Destination::Window;
    QString printFileName;  // with Destination::File
};

// A name of the extracts' lists (CmbClients, CmbProveidors) and its number.
struct PartyItem {
    QString nom;
    std::int64_t number = 0;
};
// The customers by number and the suppliers by name, as the listings tab offers them.
std::vector<PartyItem> OMPLE_LLISTA_Clients(const WorkingContext& ctx);
std::vector<PartyItem> OMPLE_LLISTA_Proveidors(const WorkingContext& ctx);

// ReportFileName, DataFiles and Formulas of the customers' list, on a job that
// Neteja_Informe has emptied.
void fillCustomerListing(report::ReportJob& job, const WorkingContext& ctx, ListingKind kind,
                         const QDate& printDate);
// The same for the suppliers' list.
void fillSupplierListing(report::ReportJob& job, const WorkingContext& ctx, ListingKind kind,
                         const QDate& printDate);

// The whole launch, in the order every report follows: Hi_Ha_Impressora; Neteja_Informe;
// the report file, data file and formulas; WindowTitle; Destination; Marges_Informe;
// Action. `job` is the report job of the shell. With no printer nothing runs and the
// result is Cancelled.
report::ReportResult btnLListatClients(const WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       const ListingRequest& request);
report::ReportResult btnLListatProv(const WorkingContext& ctx, Dialogs& dialogs,
                                    report::ReportJob& job, report::ReportOutput* output,
                                    const ListingRequest& request);

}  // namespace tallora::books
