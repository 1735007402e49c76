#pragma once
// The inquiries of the billing documents that are not invoices (quotes, drafts, proformas,
// delivery notes): one search, one deletion and one list for the four, told apart by the
// table of differences below.
//
// The search is kept as the type's stored query in the company's fact.mdb. It is not limited
// to the open exercise: fact.mdb serves every exercise of the company, so a search with both
// dates at their defaults shows other years' documents too, as it always has.
#include "context/fwd.h"
#include "document_type.h"
#include "report/report_helpers.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::sales {

struct DocumentInquiryKind {
    DocType type;
    QString form;      // FormConsDOCS_Pre, _Bor, _Pro, _Alb
    QString query;     // the stored query it is kept as
    QString dropName;  // the name it is dropped under
    int title;         // the caption's message
    QString help;      // F1's topic
};

// The table of differences; only the four types other than an invoice have one.
const DocumentInquiryKind& documentInquiry(DocType type);

struct DocumentFilter {
    std::optional<std::int64_t> client;  // CmbClients' item data; none for any customer
    QDate from, to;                      // Dtdata1, Dtdata2
};

// The select of the stored query for `filter`.
QString documentSelectionSql(const WorkingContext& ctx, DocType type, const DocumentFilter& filter);

struct DocumentRow {
    std::int64_t id = 0;
    QDate fecha;
    QString cliente;  // the name looked up by Client; empty when the customer is gone
    std::int64_t number = 0;
};

// Busca_Documents: the stored query made anew for `filter`, then read in its order.
std::vector<DocumentRow> Busca_Documents(const WorkingContext& ctx, DocType type,
                                         const DocumentFilter& filter);

// "Imprimir": the search, then the list of the documents found, with the formulas of the
// sales list. The list reads its own view SelDocs, a copy of the search whose number column
// is called Numero, so that one layout serves the four types.
report::ReportResult Imprimeix_Documents(const WorkingContext& ctx, Dialogs& dialogs,
                                         report::ReportJob& job, report::ReportOutput* output,
                                         DocType type, const DocumentFilter& filter,
                                         const report::PrintRequest& request,
                                         const QDate& printDate);

}  // namespace tallora::sales
