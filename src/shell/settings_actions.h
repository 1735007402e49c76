#pragma once
// What the apply buttons of Settings do, apart from the window: each asks its question
// (when it has one), writes its file and sets the value in the context. Anything but Yes
// does nothing. The window then does what follows on screen (closing screens, going back to
// the company list).
//
// The tabs of a company (billing, treasury) need an open exercise: without one (the first
// run) they give false and change nothing.
#include "context/fwd.h"
#include "settings_files.h"

#include <QString>

#include <array>
#include <optional>

namespace tallora::shell {

// True when a company and exercise are open, so that the company tabs can be applied.
bool companyOpen(const WorkingContext& ctx);

// btnAplicarFormatoNums: 44 with the comma, 46 with the point; tallora3.cfg.
bool Aplica_FormatoNums(WorkingContext& ctx, Dialogs& dialogs, bool coma);
// The sample of the chosen mark, as the tab shows it ("123.456,78").
QString decimalSample(int decimal);

// btn_aplica_Idioma: Idioma and BaseIdioma, idioma.cfg, and the chart template of the
// language copied over the program folder's Comptes.mdb.
bool Aplica_Idioma(WorkingContext& ctx, Dialogs& dialogs, bool catala);

// btnPantallas_aplicar: PantallaMax and pantalla.cfg.
bool Aplica_Pantallas(WorkingContext& ctx, Dialogs& dialogs, bool maximizar);

// btnAplicaFacturacionConfiguracion: Facturacio (the billing databases made when it goes
// on) and fact_mod.cfg with the model and the copies.
bool Aplica_Facturacion(WorkingContext& ctx, Dialogs& dialogs, const settings::FactMod& value);

// The next numbers shown on the billing tab: quotes, proformas, invoices, delivery notes.
struct DocumentNumbers {
    QString presupuestos, proformas, facturas, albaranes;
};
std::optional<DocumentNumbers> nextDocumentNumbers(const WorkingContext& ctx);

// btnAplicaFacturacionNumeracion: the counters of invoices, quotes and proformas of the
// open exercise set to the numbers less 1. A text that is not a number: "Error", nothing.
// Delivery notes are not set here.
bool Aplica_Numeracion(const WorkingContext& ctx, Dialogs& dialogs, const QString& facturas,
                       const QString& presupuestos, const QString& proformas);

// The heading of billing documents as the tab shows it: fact_da.tos, or the company's data.
settings::FiscalData fiscalDataFor(const WorkingContext& ctx);
// btnFacturacionGuardar: only with Facturacio on; each text sanitised; fact_da.tos.
bool Guarda_DatosFiscales(const WorkingContext& ctx, Dialogs& dialogs, settings::FiscalData data);

// btnTesoreria_aplicar: Tesoreria and tesorer.cfg. Nothing of the treasury is deleted.
bool Aplica_Tesoreria(WorkingContext& ctx, Dialogs& dialogs, bool si);

// btn_Aplica_impresora: the four margins and marge.cfg.
bool Aplica_Impresora(WorkingContext& ctx, Dialogs& dialogs, const settings::Margins& margins);

// btnIntra and btnMensajeria: no question. Intra needs an open company.
bool Aplica_Intra(WorkingContext& ctx, bool si);
bool Aplica_Mensajeria(WorkingContext& ctx, bool si);

}  // namespace tallora::shell
