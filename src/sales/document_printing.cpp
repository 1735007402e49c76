#include "document_printing.h"

#include "context/billing_files.h"
#include "context/common_helpers.h"
#include "context/entry_fields.h"
#include "context/file_tree.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_job.h"
#include "schema/creation.h"
#include "store/database.h"
#include "verifactu/sale_qr.h"

#include <QDir>
#include <QRegularExpression>

namespace tallora::sales {
namespace {

using store::Database;

QString formula(const QString& name, const QString& value) {
    return name + QStringLiteral("= '") + value + u'\'';
}

// Formulas 17 to 35 and 50 keep a blank before the closing quote.
QString spaced(const QString& name, const QString& value) {
    return name + QStringLiteral("= '") + value + QStringLiteral(" '");
}

// The first f0*.rpt of a folder by name, or nothing.
QString firstTemplate(const QString& folder) {
    if (folder.isEmpty()) return {};
    const QStringList found = QDir(folder).entryList({QStringLiteral("f0*.rpt")}, QDir::Files,
                                                     QDir::Name | QDir::IgnoreCase);
    return found.isEmpty() ? QString() : found.first();
}

QString dateText(const QDate& date) {
    return date.isValid() ? date.toString(QStringLiteral("dd/MM/yyyy")) : QString();
}

// Formules_Client: formulas 40 to 45 for the customer of that number and that name.
void customerFormulas(const WorkingContext& ctx, std::int64_t client, const QString& name,
                      std::array<QString, 71>& f) {
    Database db = Database::open(ctx.exerciseFile(schema::db::Gest));
    auto st =
        db.prepare(QStringLiteral("select nom, direccio, cp, poblacio, provincia, NIF, "
                                  "telefon from clients where client = ? and nom = ?"));
    st.bind(1, client).bind(2, name);
    if (!st.next()) return;
    f[40] = formula(QStringLiteral("lbl_nom_client"), st.text(0));
    f[41] = formula(QStringLiteral("lbl_dir_client"), st.text(1));
    f[42] =
        formula(QStringLiteral("lbl_pob_client"), st.text(2) + QStringLiteral(" - ") + st.text(3));
    f[43] = formula(QStringLiteral("lbl_prov_client"), st.text(4));
    f[44] = formula(QStringLiteral("lbl_numnif_client"), st.text(5));
    f[45] = formula(QStringLiteral("lbl_tel_client"), st.text(6));
}

// Formules_Document: formulas 37 to 39 and 46 to 49 from the header row, then the customer's.
void headerFormulas(const WorkingContext& ctx, std::int64_t number, DocType type,
                    const SaleEntry& e, std::array<QString, 71>& f) {
    Database db = Database::open(ctx.companyFile(schema::db::Fact));
    auto st = db.prepare(QStringLiteral("select Fecha, Client, Vencimiento, FormaPago, Entidad, "
                                        "ccc from documentos where %1 = ? and Ejercicio = ?")
                             .arg(docInfo(type).column));
    st.bind(1, number).bind(2, std::int64_t{ctx.Exercici.toLongLong()});
    if (!st.next()) return;
    f[37] = formula(QStringLiteral("lbl_num_doc"), QString::number(number));
    f[38] = formula(QStringLiteral("lbl_doc_fecha"), dateText(st.date(0)));
    f[39] = formula(QStringLiteral("lbl_num_cliente"), QString::number(st.int64(1)));
    f[46] = formula(QStringLiteral("lbl_ven_client"), dateText(st.date(2)));
    f[47] = formula(QStringLiteral("lbl_forma_client"), st.text(3));
    f[48] = formula(QStringLiteral("lbl_ent_client"), st.text(4));
    f[49] = formula(QStringLiteral("lbl_cuen_client"), st.text(5));
    const std::int64_t client = st.int64(1);
    st.reset();
    customerFormulas(ctx, client, e.txtClient, f);
}

// Formules_Empresa: fact_da.tos when it exists, otherwise the four of the company's data.
void companyFormulas(const WorkingContext& ctx, std::array<QString, 71>& f) {
    const auto data = settings::readFiscalData(ctx.companyFolder());
    if (!data) {
        f[0] = formula(QStringLiteral("nom_empresa"), ctx.EmpresaNom);
        f[1] = formula(QStringLiteral("dir_empresa"), ctx.EmpresaDomicili);
        f[2] = formula(QStringLiteral("pob_empresa"),
                       ctx.EmpresaCP + QStringLiteral(" - ") + ctx.EmpresaPoblacio);
        f[3] = formula(QStringLiteral("nif_empresa"), ctx.EmpresaNIF);
        return;
    }
    f[0] = formula(QStringLiteral("nom_empresa"), data->nomEmpresa);
    f[1] = formula(QStringLiteral("dir_empresa"), data->domicili);
    f[2] =
        formula(QStringLiteral("pob_empresa"), data->cp + QStringLiteral(" - ") + data->poblacio);
    f[3] = formula(QStringLiteral("nif_empresa"), data->nif);
    f[55] = formula(QStringLiteral("com_empresa"), data->nomComercial);
    f[56] = formula(QStringLiteral("tel_empresa"), data->telefon);
    f[57] = formula(QStringLiteral("fax_empresa"), data->fax);
    f[58] = formula(QStringLiteral("txt_empresa"), data->text);
}

}  // namespace

DocumentTemplate Nom_Plantilla(const WorkingContext& ctx) {
    DocumentTemplate t;
    QString name = firstTemplate(ctx.programDir);
    if (name.isEmpty())
        name = firstTemplate(withTrailingSlash(ctx.resourcesDir) + QStringLiteral("reports"));
    const settings::FactMod mod = settings::readFactMod(ctx.companyFolder());
    if (!mod.model.trimmed().isEmpty()) name = mod.model.trimmed();
    t.copies = mod.copies > 0 ? mod.copies : 1;
    if (!name.isEmpty()) t.file = report::reportFile(ctx, name);
    return t;
}

RateCaptions rateCaptions(const WorkingContext& ctx, const std::array<double, 3>& iva,
                          const std::array<double, 3>& re) {
    const auto caption = [&](double rate) {
        return QString::number(rate).replace(u'.', ctx.decimalMark()) + QStringLiteral(" %");
    };
    RateCaptions c;
    for (std::size_t i = 0; i < 3; ++i) {
        c.iva[i] = caption(iva[i]);
        c.re[i] = caption(re[i]);
    }
    return c;
}

std::array<QString, 71> documentFormulas(const WorkingContext& ctx, std::int64_t number,
                                         DocType type, const SaleEntry& e,
                                         const RateCaptions& captions) {
    std::array<QString, 71> f;
    const DocTypeInfo& info = docInfo(type);
    f[16] = formula(QStringLiteral("lbl_factura"), Missatge(ctx, info.numberLabel));
    if (type == DocType::Factura)
        f[36] = QStringLiteral("lbl_tipus_doc= 'Factura'");
    else if (type == DocType::Proforma)
        f[36] = QStringLiteral("lbl_tipus_doc= 'Proforma'");
    else
        f[36] = formula(QStringLiteral("lbl_tipus_doc"), Missatge(ctx, info.titleMessage));
    headerFormulas(ctx, number, type, e, f);

    f[17] = spaced(QStringLiteral("lbl_end_irpf1"), e.txtBaseIRPF);
    f[18] = spaced(QStringLiteral("lbl_end_irpf2"), e.Text1);
    f[19] = spaced(QStringLiteral("lbl_end_irpf3"), e.txtRetencio);
    for (std::size_t i = 0; i < 3; ++i) {
        const QString prefix = QStringLiteral("lbl_end_iva%1").arg(i + 1);
        const std::size_t at = 20 + 5 * i;
        f[at] = spaced(prefix + u'a', e.txtBase[i]);
        f[at + 1] = spaced(prefix + u'b', captions.iva[i]);
        f[at + 2] = spaced(prefix + u'c', e.txtIVA[i]);
        f[at + 3] = spaced(prefix + u'd', captions.re[i]);
        f[at + 4] = spaced(prefix + u'e', e.txtRE[i]);
    }
    f[35] = spaced(QStringLiteral("lbl_end_total"), e.txtTotal + u' ' + ctx.Moneda);
    // Of our own: the base of the lines at IVA 0, the part of the total no rate row shows.
    Money exempt = amountOf(ctx, e.txtTotal) + amountOf(ctx, e.txtRetencio);
    for (std::size_t i = 0; i < 3; ++i)
        exempt -=
            amountOf(ctx, e.txtBase[i]) + amountOf(ctx, e.txtIVA[i]) + amountOf(ctx, e.txtRE[i]);
    f[51] = spaced(QStringLiteral("lbl_end_exenta"), Format_Import(ctx, exempt));

    companyFormulas(ctx, f);

    static const std::pair<int, const char*> labels[] = {
        {4, "lbl_fecha"},        {5, "lbl_nif_cliente"},  {6, "lbl_telefono_cliente"},
        {8, "lbl_bar_concepto"}, {9, "lbl_bar_unidades"}, {10, "lbl_bar_precio"},
        {11, "lbl_bar_dto"},     {12, "lbl_bar_importe"}, {13, "lbl_formadepago"},
        {14, "lbl_entidad"},     {15, "lbl_pagina"}};
    static const int messages[] = {6893, 6894, 6895, 6897, 6898, 6899,
                                   6900, 6901, 6902, 6904, 6905};
    for (std::size_t i = 0; i < std::size(labels); ++i)
        f[labels[i].first] =
            formula(QString::fromLatin1(labels[i].second), Missatge(ctx, messages[i]));
    // Written without its equals sign, as it always has been; lbl_factura of index 16 wins.
    f[7] = QStringLiteral("lbl_factura '") + Missatge(ctx, 6906) + u'\'';
    f[50] = spaced(QStringLiteral("lbl_vencimiento"), Missatge(ctx, 6910));
    // Of our own: an invoice's VERI*FACTU code, the address of its record.
    if (type == DocType::Factura)
        f[60] = formula(QStringLiteral("qr_verifactu"), verifactu::saleQrAddress(ctx, number));
    return f;
}

report::ReportResult Imprimeix_Document(const WorkingContext& ctx, Dialogs& dialogs,
                                        report::ReportJob& job, report::ReportOutput* output,
                                        std::int64_t number, DocType type, const SaleEntry& entry,
                                        const RateCaptions& captions,
                                        const report::PrintRequest& request) {
    const DocumentTemplate t = Nom_Plantilla(ctx);
    return report::runReport(ctx, dialogs, job, output, request, Missatge(ctx, 816),
                             [&](report::ReportJob& j) {
                                 j.DataFiles[0] = ctx.companyFile(schema::db::Fact);
                                 j.ReportFileName = t.file;
                                 j.Formulas = documentFormulas(ctx, number, type, entry, captions);
                                 j.CopiesToPrinter = t.copies;
                             });
}

QString documentFileName(const WorkingContext& ctx, DocType type, std::int64_t number,
                         const QString& customer) {
    const DocTypeInfo& info = docInfo(type);
    const QString word = type == DocType::Factura    ? QStringLiteral("Factura")
                         : type == DocType::Proforma ? QStringLiteral("Proforma")
                                                     : Missatge(ctx, info.titleMessage);
    QString name = word + u' ' + QString::number(number);
    if (!customer.trimmed().isEmpty()) name += QStringLiteral(" - ") + customer.trimmed();
    static const QRegularExpression unsafe(QStringLiteral("[/\\\\:*?\"<>|\\x00-\\x1f]"));
    name.remove(unsafe);
    return name + QStringLiteral(".pdf");
}

}  // namespace tallora::sales
