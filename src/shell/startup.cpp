#include "startup.h"

#include "company_list.h"
#include "context/working_context.h"
#include "master/chart_template.h"
#include "schema/upgrades.h"
#include "settings_files.h"

namespace tallora::shell {

void Inicia_Programa(WorkingContext& ctx) {
    ctx.setIdioma(settings::readIdioma(ctx.programDir));
    ctx.Unitat = readUnitatCfg(ctx.programDir);
    master::prepareTemplates(ctx);
}

bool Inicia_MDI(WorkingContext& ctx, Dialogs* dialogs) {
    ctx.Decimal = settings::readDecimal(ctx.programDir);
    const auto pantalla = settings::readPantallaMax(ctx.programDir);
    if (pantalla) ctx.PantallaMax = *pantalla;
    ctx.Missatgeria = settings::readMissatgeria(ctx.programDir);
    const auto docs = settings::readDocsFlags(ctx.programDir);
    ctx.DocsGenerar = docs.DocsGenerar;
    ctx.DocsFactura = docs.DocsFactura;
    if (docs.present) schema::upgradeSalesFields(ctx);
    if (ctx.Tesoreria) schema::Prepara_Tesoreria(ctx, dialogs);
    const auto margins = settings::readMargins(ctx.programDir);
    ctx.MargeEsquerre = margins.left;
    ctx.MargeDret = margins.right;
    ctx.MargeSuperior = margins.top;
    ctx.MargeInferior = margins.bottom;
    return pantalla.has_value();
}

bool pantallaMaxForHeight(int pixels) { return pixels >= 768; }

}  // namespace tallora::shell
