// documents, document-remove and print-document: the document inquiries' search and
// deletion (one for the four types that are not invoices), and a document printed to PDF
// as the sales screen prints it once opened.
#include "commands.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "inquiry_options.h"
#include "master/customers.h"
#include "master_common.h"
#include "report/report_job.h"
#include "sales/billing_document.h"
#include "sales/document_inquiry.h"
#include "sales/document_printing.h"
#include "sales/sale_change.h"
#include "schema/inquiry_filter.h"

namespace tallora::cli {

sales::DocType documentTypeArgument(const QString& text);

namespace {

// The four inquiries have no invoices: those are the sales inquiry's.
sales::DocType inquiryTypeArgument(const QString& text) {
    const sales::DocType type = documentTypeArgument(text);
    if (type == sales::DocType::Factura)
        throw UsageError{QStringLiteral("invoices are found with the command sales")};
    return type;
}

// The document of `number` in a search of its type without filters.
std::optional<sales::DocumentRow> findDocument(const WorkingContext& ctx, sales::DocType type,
                                               std::int64_t number) {
    sales::DocumentFilter all;
    for (const sales::DocumentRow& row : sales::Busca_Documents(ctx, type, all))
        if (row.number == number && row.fecha.year() == ctx.Exercici.toInt()) return row;
    // A document of the exercise whose date fell in another year.
    for (const sales::DocumentRow& row : sales::Busca_Documents(ctx, type, all))
        if (row.number == number) return row;
    return std::nullopt;
}

}  // namespace

int documentsCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const sales::DocType type = inquiryTypeArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w, Needs::Billing, o.command)) return kRefused;
    sales::DocumentFilter filter;
    if (o.given(QStringLiteral("customer"))) {
        const auto customer = master::customerByName(s.ctx, o.value(QStringLiteral("customer")));
        if (!customer)
            return noSuchRecord(s, QStringLiteral("customer"), o.value(QStringLiteral("customer")));
        filter.client = customer->client.toLongLong();
    }
    const int year = s.ctx.Exercici.toInt();
    filter.from = dateOption(o, QStringLiteral("from"), QDate(year, 1, 1));
    filter.to = dateOption(o, QStringLiteral("to"), QDate(year, 12, 31));
    const auto rows = sales::Busca_Documents(s.ctx, type, filter);
    if (rows.empty()) s.out << Missatge(s.ctx, 811) << '\n';
    for (const sales::DocumentRow& r : rows)
        s.out << r.id << '\t' << r.fecha.toString(QStringLiteral("dd/MM/yyyy")) << '\t' << r.cliente
              << '\t' << r.number << '\n';
    s.out << Missatge(s.ctx, 807) << '\t' << rows.size() << '\n';
    return s.finish(true);
}

int documentRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const sales::DocType type = inquiryTypeArgument(o.arguments[2]);
    const QString number = numberArgument(o.arguments[3]);
    if (!enterMasterFiles(s, w, Needs::Billing, o.command)) return kRefused;
    const auto row = findDocument(s.ctx, type, number.toLongLong());
    if (!row) return noSuchRecord(s, sales::docInfo(type).word, number);
    if (s.dialogs.yesNo(schema::deleteQuestion(s.ctx, row->number, row->cliente)) !=
        Dialogs::Answer::Yes)
        return kRefused;
    return s.finish(sales::Esborra_Document(s.ctx, type, row->number, row->id) == 1);
}

int printDocumentCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const sales::DocType type = documentTypeArgument(o.arguments[2]);
    const QString number = numberArgument(o.arguments[3]);
    const QString pdf = o.value(QStringLiteral("pdf"));
    if (pdf.isEmpty()) throw UsageError{QStringLiteral("give --pdf FILE")};
    if (!enterMasterFiles(s, w, Needs::Billing, o.command)) return kRefused;
    // The document is opened first, so that detalle_temp and the entry hold it.
    std::optional<sales::SaleEntry> entry;
    sales::RateCaptions captions = sales::rateCaptions(s.ctx, s.ctx.TipusIVA, s.ctx.TipusRE);
    if (type == sales::DocType::Factura) {
        const auto loaded = sales::Modifica_Venda(s.ctx, number);
        if (loaded) {
            entry = loaded->entry;
            captions = sales::rateCaptions(s.ctx, loaded->Tiva, loaded->Tre);
        }
    } else {
        entry = sales::openDocument(s.ctx, type, number.toLongLong());
    }
    if (!entry) return noSuchRecord(s, sales::docInfo(type).word, number);
    report::ReportJob job;
    const report::ReportResult result =
        sales::Imprimeix_Document(s.ctx, s.dialogs, job, nullptr, number.toLongLong(), type, *entry,
                                  captions, {report::Destination::File, pdf});
    if (result.ok()) s.out << pdf << '\t' << result.pages << '\n';
    return s.finish(result.ok());
}

}  // namespace tallora::cli
