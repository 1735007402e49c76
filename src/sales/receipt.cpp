#include "receipt.h"

#include "context/working_context.h"
#include "report/report_helpers.h"
#include "schema/creation.h"
#include "schema/inquiry_filter.h"
#include "store/database.h"
#include "verifactu/sale_qr.h"

namespace tallora::sales {

std::optional<ReceiptFrameTexts> Mostra_Rebut(const WorkingContext& ctx,
                                              const QString& customerName,
                                              const QString& txtdescripcio, const QDate& date) {
    auto db = store::Database::open(ctx.exerciseFile(schema::db::Gest));
    auto st = db.prepare(QStringLiteral("select * from clients where nom=?"));
    st.bind(1, customerName);
    if (!st.next()) return std::nullopt;
    const auto field = [&st](const char* name) {
        return st.text(st.columnIndex(QString::fromLatin1(name)));
    };
    ReceiptFrameTexts texts;
    texts.title = QStringLiteral("RECIBO: ") +
                  (txtdescripcio == u"-" ? QStringLiteral("NUEVO RECIBO") : txtdescripcio);
    texts.lbl_rebut_client = field("client") + QStringLiteral("  ") + field("nom");
    texts.lbl_rebut_domicili = field("direccio");
    texts.lbl_rebut_poblacio = field("poblacio");
    texts.lbl_rebut_nif = field("NIF");
    texts.lbl_rebut_data = QStringLiteral("FECHA: ") + date.toString(QStringLiteral("dd/MM/yyyy"));
    return texts;
}

void Prepara_SelFras(const WorkingContext& ctx, std::int32_t number) {
    auto db = store::Database::open(ctx.exerciseFile(schema::db::FrasOut));
    // The number is an integer: it reaches the view's text as digits only.
    schema::replaceSelFras(db, QStringLiteral("select * from frasout where Ordre=%1 "
                                              "order by Ordre desc limit 1")
                                   .arg(number));
}

report::ReportResult Imprimeix_Rebut(const WorkingContext& ctx, Dialogs& dialogs,
                                     report::ReportJob& job, report::ReportOutput* output,
                                     std::int32_t number,
                                     const report::PrintCapabilities& capabilities) {
    Prepara_SelFras(ctx, number);
    if (!report::Hi_Ha_Impressora(ctx, dialogs, capabilities))
        return {report::ReportResult::Status::Cancelled, {}, 0};
    report::Neteja_Informe(job);
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("recibo.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::FrasOut);
    // Paper with a printed header of its own gets the four formulas empty.
    const bool header = ctx.DocsFactura;
    job.Formulas[0] =
        report::textFormula(QStringLiteral("nom"), header ? ctx.EmpresaNom : QString());
    job.Formulas[1] =
        report::textFormula(QStringLiteral("nif"), header ? ctx.EmpresaNIF : QString());
    job.Formulas[2] = report::textFormula(
        QStringLiteral("pob"), header ? ctx.EmpresaCP + u'-' + ctx.EmpresaPoblacio : QString());
    job.Formulas[3] =
        report::textFormula(QStringLiteral("dom"), header ? ctx.EmpresaDomicili : QString());
    job.Formulas[4] =
        report::textFormula(QStringLiteral("qr_verifactu"), verifactu::saleQrAddress(ctx, number));
    job.WindowTitle = QStringLiteral("RECIBO");
    job.Destination = report::Destination::Printer;
    report::Marges_Informe(job, ctx);
    return job.Action(ctx, dialogs, output);
}

}  // namespace tallora::sales
