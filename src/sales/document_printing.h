#pragma once
// Printing a billing document: the template, the formulas that carry every printed text and
// amount, and the job that reads the lines from detalle_temp of the company's fact.mdb.
//
// The print runs while the document is still in hand, right after it was saved or opened
// (detalle_temp and the entry hold it). It goes to the printer, with the copies of
// fact_mod.cfg, or to a PDF file (destination 2), which documentFileName names.
#include "context/fwd.h"
#include "document_type.h"
#include "report/report_helpers.h"
#include "sale_entry.h"

#include <QString>

#include <array>
#include <cstdint>

namespace tallora::sales {

// Nom_Plantilla: the template's file and the copies to print. The first f0*.rpt by name
// (the program folder's own first, then the installed ones) is the default; a template
// named in fact_mod.cfg wins; empty or zero copies are 1.
struct DocumentTemplate {
    QString file;  // full path; empty when no template is found
    int copies = 1;
};
DocumentTemplate Nom_Plantilla(const WorkingContext& ctx);

// The rate captions of the amounts panel, lbliva(i) and lblRE(i): "21 %", "5,2 %".
struct RateCaptions {
    std::array<QString, 3> iva, re;
};
RateCaptions rateCaptions(const WorkingContext& ctx, const std::array<double, 3>& iva,
                          const std::array<double, 3>& re);

// The 71 formulas of document `number` of `type` for the entry in hand, in their indexes.
// Index 51, which the contract leaves free, carries lbl_end_exenta: the base of the lines at
// IVA 0, so that a document's summary adds up to its total.
std::array<QString, 71> documentFormulas(const WorkingContext& ctx, std::int64_t number,
                                         DocType type, const SaleEntry& entry,
                                         const RateCaptions& captions);

// Imprimeix_Document: the job filled (template, fact.mdb, formulas, copies) and run.
report::ReportResult Imprimeix_Document(const WorkingContext& ctx, Dialogs& dialogs,
                                        report::ReportJob& job, report::ReportOutput* output,
                                        std::int64_t number, DocType type, const SaleEntry& entry,
                                        const RateCaptions& captions,
                                        const report::PrintRequest& request);

// "Factura 12 - Comercial Pérez.pdf": type, number and customer, with the characters a file
// name cannot hold left out.
QString documentFileName(const WorkingContext& ctx, DocType type, std::int64_t number,
                         const QString& customer);

}  // namespace tallora::sales
