#include "document_inquiry.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "sales/sale_reports.h"
#include "schema/creation.h"
#include "schema/inquiry_filter.h"
#include "schema/lookups.h"
#include "store/database.h"
#include "store/schema_objects.h"
#include "store/store_error.h"

namespace tallora::sales {
namespace {

using store::Database;

// The query is dropped under its own spelling, errors ignored: it is not there on first use.
void replaceQuery(Database& db, const QString& dropName, const QString& name, const QString& sql) {
    try {
        store::dropQuery(db, dropName);
    } catch (const store::StoreError&) {
    }
    store::createQuery(db, name, sql);
}

}  // namespace

const DocumentInquiryKind& documentInquiry(DocType type) {
    static const std::array<DocumentInquiryKind, 4> kinds{{
        {DocType::Presupuesto, "FormConsDOCS_Pre", "SelPress", "selPress", 6844, "Facturacion"},
        {DocType::Borrador, "FormConsDOCS_Bor", "SelBor", "selBor", 6847, "Facturacion"},
        {DocType::Proforma, "FormConsDOCS_Pro", "SelPro", "selPro", 6846, "facturacion"},
        {DocType::Albaran, "FormConsDOCS_Alb", "SelAlb", "selAlb", 7016, "facturacion"},
    }};
    for (const DocumentInquiryKind& kind : kinds)
        if (kind.type == type) return kind;
    throw std::invalid_argument("invoices have no document inquiry");
}

QString documentSelectionSql(const WorkingContext& ctx, DocType type, const DocumentFilter& f) {
    QStringList conditions;
    if (f.client) conditions << QStringLiteral("Client = %1").arg(*f.client);
    conditions << QStringLiteral("%1 <> 0").arg(docInfo(type).column);
    schema::appendDateRange(conditions, ctx, f.from, f.to, QStringLiteral("Fecha"));
    return QStringLiteral("select * from documentos") + schema::whereClause(conditions) +
           QStringLiteral(" order by Fecha asc, Id asc");
}

std::vector<DocumentRow> Busca_Documents(const WorkingContext& ctx, DocType type,
                                         const DocumentFilter& filter) {
    const DocumentInquiryKind& kind = documentInquiry(type);
    Database db = Database::open(ctx.companyFile(schema::db::Fact));
    replaceQuery(db, kind.dropName, kind.query, documentSelectionSql(ctx, type, filter));
    db.attach(ctx.exerciseFile(schema::db::Gest), QStringLiteral("gest"));
    auto st = db.prepare(QStringLiteral("select q.Id, q.Fecha, c.nom, q.%1 from %2 q left join "
                                        "gest.clients c on c.client = q.Client "
                                        "order by q.Fecha asc, q.Id asc")
                             .arg(docInfo(type).column, kind.query));
    std::vector<DocumentRow> rows;
    while (st.next())
        rows.push_back(
            {st.int64(0), st.date(1), st.isNull(2) ? QString() : st.text(2), st.int64(3)});
    return rows;
}

report::ReportResult Imprimeix_Documents(const WorkingContext& ctx, Dialogs& dialogs,
                                         report::ReportJob& job, report::ReportOutput* output,
                                         DocType type, const DocumentFilter& filter,
                                         const report::PrintRequest& request,
                                         const QDate& printDate) {
    Busca_Documents(ctx, type, filter);
    {
        Database db = Database::open(ctx.companyFile(schema::db::Fact));
        QString sql = documentSelectionSql(ctx, type, filter);
        sql.replace(QStringLiteral("select *"),
                    QStringLiteral("select *, %1 as Numero").arg(docInfo(type).column));
        replaceQuery(db, QStringLiteral("seldocs"), QStringLiteral("SelDocs"), sql);
    }
    return report::runReport(
        ctx, dialogs, job, output, request, Missatge(ctx, 816), [&](report::ReportJob& j) {
            fillSalesList(j, ctx, printDate);
            j.ReportFileName = report::reportFile(ctx, QStringLiteral("llisdocs.rpt"));
            j.DataFiles[0] = ctx.companyFile(schema::db::Fact);
            j.DataFiles[1] = ctx.exerciseFile(schema::db::Gest);
        });
}

}  // namespace tallora::sales
