#include "settings_actions.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/list_files.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master/chart_template.h"
#include "sales/document_numbers.h"
#include "schema/upgrades.h"
#include "store/store_error.h"


namespace tallora::shell {
namespace {

bool confirmed(const WorkingContext& ctx, Dialogs& dialogs, int question) {
    return dialogs.yesNo(Missatge(ctx, question)) == Dialogs::Answer::Yes;
}

}  // namespace

bool companyOpen(const WorkingContext& ctx) {
    return !ctx.Directori.isEmpty() && !ctx.Exercici.isEmpty();
}

bool Aplica_FormatoNums(WorkingContext& ctx, Dialogs& dialogs, bool coma) {
    if (!confirmed(ctx, dialogs, 6806)) return false;
    ctx.Decimal = coma ? 44 : 46;
    settings::writeDecimal(ctx.programDir, ctx.Decimal);
    return true;
}

QString decimalSample(int decimal) {
    return decimal == 46 ? QStringLiteral("123,456.78") : QStringLiteral("123.456,78");
}

bool Aplica_Idioma(WorkingContext& ctx, Dialogs& dialogs, bool catala) {
    if (!confirmed(ctx, dialogs, 6805)) return false;
    ctx.setIdioma(catala ? QStringLiteral("cat") : QStringLiteral("esp"));
    settings::writeIdioma(ctx.programDir, ctx.Idioma);
    master::swapChartTemplate(ctx.programDir, ctx.Idioma);
    return true;
}

bool Aplica_Pantallas(WorkingContext& ctx, Dialogs& dialogs, bool maximizar) {
    if (!confirmed(ctx, dialogs, 6807)) return false;
    ctx.PantallaMax = maximizar;
    settings::writePantallaMax(ctx.programDir, maximizar);
    return true;
}

bool Aplica_Facturacion(WorkingContext& ctx, Dialogs& dialogs, const settings::FactMod& value) {
    if (!companyOpen(ctx) || !confirmed(ctx, dialogs, 6808)) return false;
    ctx.Facturacio = value.Facturacio;
    if (ctx.Facturacio) schema::upgradeBilling(ctx);
    settings::writeFactMod(ctx.companyFolder(), value);
    return true;
}

std::optional<DocumentNumbers> nextDocumentNumbers(const WorkingContext& ctx) {
    if (!companyOpen(ctx) || !ctx.Facturacio) return std::nullopt;
    try {
        const auto next = [&](const QString& kind) {
            return QString::number(sales::Seguent_Document(ctx, kind));
        };
        return DocumentNumbers{next(sales::kinds::Presupuesto), next(sales::kinds::Proforma),
                               next(sales::kinds::FrasOut), next(sales::kinds::Albaran)};
    } catch (const store::StoreError&) {
        return std::nullopt;
    }
}

bool Aplica_Numeracion(const WorkingContext& ctx, Dialogs& dialogs, const QString& facturas,
                       const QString& presupuestos, const QString& proformas) {
    if (!companyOpen(ctx) || !confirmed(ctx, dialogs, 6809)) return false;
    for (const QString* text : {&facturas, &presupuestos, &proformas}) {
        if (!Es_Numeric(ctx, *text) || *text == QStringLiteral("-")) {
            dialogs.stop(QStringLiteral("Error"), QStringLiteral("Error"));
            return false;
        }
    }
    // Read as Es_Numeric read it, with the program's decimal mark: with the comma,
    // "1.000" is a thousand, not one.
    const auto less1 = [&](const QString& text) {
        return Money::parse(text, ctx.decimalMark()).value_or(Money{}).units() / Money::kScale - 1;
    };
    try {
        sales::setDocumentCounter(ctx, sales::kinds::FrasOut, less1(facturas));
        sales::setDocumentCounter(ctx, sales::kinds::Presupuesto, less1(presupuestos));
        sales::setDocumentCounter(ctx, sales::kinds::Proforma, less1(proformas));
    } catch (const store::StoreError&) {
        // Errors ignored: without the billing database there is nothing to number.
    }
    return true;
}

settings::FiscalData fiscalDataFor(const WorkingContext& ctx) {
    if (companyOpen(ctx))
        if (auto data = settings::readFiscalData(ctx.companyFolder())) return *data;
    settings::FiscalData data;
    data.nomEmpresa = ctx.EmpresaNom;
    data.nif = ctx.EmpresaNIF;
    data.domicili = ctx.EmpresaDomicili;
    data.poblacio = ctx.EmpresaPoblacio;
    data.cp = ctx.EmpresaCP;
    return data;
}

bool Guarda_DatosFiscales(const WorkingContext& ctx, Dialogs& dialogs, settings::FiscalData data) {
    if (!companyOpen(ctx) || !ctx.Facturacio || !confirmed(ctx, dialogs, 6808)) return false;
    for (QString* field : data.fields()) Neteja_Text(*field);
    settings::writeFiscalData(ctx.companyFolder(), data);
    return true;
}

bool Aplica_Tesoreria(WorkingContext& ctx, Dialogs& dialogs, bool si) {
    if (!companyOpen(ctx) || !confirmed(ctx, dialogs, 6810)) return false;
    ctx.Tesoreria = si;
    writeOptionFlag(ctx.companyFile(files::TesorerCfg), si);
    return true;
}

bool Aplica_Impresora(WorkingContext& ctx, Dialogs& dialogs, const settings::Margins& margins) {
    if (!confirmed(ctx, dialogs, 6826)) return false;
    ctx.MargeEsquerre = margins.left;
    ctx.MargeDret = margins.right;
    ctx.MargeSuperior = margins.top;
    ctx.MargeInferior = margins.bottom;
    settings::writeMargins(ctx.programDir, margins);
    return true;
}

bool Aplica_Intra(WorkingContext& ctx, bool si) {
    if (!companyOpen(ctx)) return false;
    ctx.Intra = si;
    writeOptionFlag(ctx.companyFile(files::IntraCfg), si);
    return true;
}

bool Aplica_Mensajeria(WorkingContext& ctx, bool si) {
    if (!companyOpen(ctx)) return false;
    ctx.Missatgeria = si;
    settings::writeMissatgeria(ctx.companyFolder(), si);
    return true;
}

}  // namespace tallora::shell
