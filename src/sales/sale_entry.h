#pragma once
// The working entry of the sales screen and the arithmetic that links its amounts.
//
// The entry is the set of the screen's field texts: the screen copies its widgets into a
// SaleEntry, calls the procedures here and copies the texts back. Amounts are texts in the
// money format, and later steps read back the text, not the value that produced it: a
// product is rounded to cents once, where a person sees it. Sums that must balance are made
// in Money (exact); rate products (IVA, RE, IRPF) in double.
#include "context/entry_fields.h"
#include "context/fwd.h"
#include "context/money.h"
#include "document_type.h"

#include <QDate>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace tallora::sales {

// The sales account found by Verifica_compte_venda: the screen-level Grup, NomGrup,
// Compte, NomCompte.
struct SalesAccount {
    std::int64_t Grup = 0;
    QString NomGrup;
    std::int64_t Compte = 0;
    QString NomCompte;
};

// The helpers of every posting screen's fields (context/entry_fields.h).
using ::tallora::amountOf;
using ::tallora::doubleOf;
using ::tallora::isEmptyAmount;
using ::tallora::isTickets;
using ::tallora::reformat;
using ::tallora::Valida_Data;

// The billing tab's state of the document in hand (with the billing option).
struct BillingFields {
    DocType type = DocType::Factura;  // the option selected
    // The option standing at colour 192: the type the document in hand was loaded as.
    std::optional<DocType> loadedAs;
    QString formaPago, entidad, ccc;  // txtFacturacionFormadePago, EntidadBancaria, CCC
};

struct SaleEntry {
    QString lblOrdre;  // number of a posted sale being changed; empty for a new entry
    QString lblFecha;  // dd/mm/yyyy, set by the date check
    QString txtDia, txtMes;
    QString txtClient;
    // The selected row of ListClients: its text and item data (customer number).
    QString listClientsText;
    std::optional<std::int64_t> clientNumber;
    QString txtTipus;
    QString listVendesText;  // the selected row of ListVendes
    QString txtdescripcio;
    QString cmbSerie;  // "", "/Abon" or "/Rect"
    QString txtTotal = QStringLiteral("0");
    QString txtBaseIRPF = QStringLiteral("0");
    QString Text1 = QStringLiteral("0");  // IRPF percent
    QString txtRetencio = QStringLiteral("0");
    std::array<QString, 3> txtBase{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")};
    std::array<QString, 3> txtIVA{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")};
    std::array<QString, 3> txtRE{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")};
    // Activa_RE: the RE fields are enabled for a customer with recargo.
    bool reEnabled = false;
    // ListEntitats: its text ("", an account name, or "Marca") and the account's Id.
    QString entitat;
    std::optional<std::int64_t> entitatId;
    QDate venciment;         // DtFacturacionVencimiento
    QString clasificacion;   // text of CmbClasificacion; empty for no selection
    bool rebut = false;      // chk_rebut on (and shown: DocsGenerar)
    QString rebutDomicili, rebutPoblacio, rebutNif;  // lbl_rebut_*; empty unless the frame opened
    std::array<QString, 5> concepte;                  // txt_rebut_concepte .. 5
    Money Exempta;           // the difference taken as exempt by the balance check
    // The IVA rates a posted sale being changed was posted with: its journal names them, not
    // the rates of the day (the calculations still use those).
    std::optional<std::array<double, 3>> postedRates;

    BillingFields billing;

    bool isNew() const { return lblOrdre.isEmpty(); }
    // An invoice saved from this entry is a new row of FrasOut: a new entry, or a document
    // loaded as another type being turned into an invoice.
    bool newInvoice() const {
        return isNew() || (billing.loadedAs && *billing.loadedAs != DocType::Factura);
    }
    // Saving writes over a stored document of the same type rather than adding one.
    bool isChange() const {
        return billing.type == DocType::Factura ? !newInvoice() : billing.loadedAs == billing.type;
    }
};

// Look-ups of the screen (gest.mdb, Comptes.mdb, FrasOUT.mdb of the open exercise).
bool Verifica_Client(const WorkingContext& ctx, const QString& name);
bool Client_RE(const WorkingContext& ctx, const QString& name);
std::optional<SalesAccount> Verifica_compte_venda(const WorkingContext& ctx, const QString& name);
bool Existeix_Venda(const WorkingContext& ctx, std::int64_t number);

// Splits a typed total by `rate` (percent) into base and quotas. Acts only on a new entry;
// `clientRE` is Client_RE of the customer. The total itself is not changed.
void Reparteix_Total(const WorkingContext& ctx, SaleEntry& entry, double rate, bool clientRE);

// Activa_RE on the entry: the recargo fields are a customer with recargo's; for any other
// they hold "0".
void Activa_RE(SaleEntry& entry, bool clientRE);

// Recomputes quotas, withholding and total from the bases, with the context's rates.
void Recalcula_Apunt(const WorkingContext& ctx, SaleEntry& entry, bool clientRE);

// Leaving txtBase(i) typed by hand: a new entry gets its quotas from the base; a posted sale
// being changed only has them reformatted, so that a quota typed by the user stays.
// Gives false when the base is not numeric (the screen beeps).
bool baseTyped(const WorkingContext& ctx, SaleEntry& entry, int index);

// The IRPF amount of base x percent / 100 in money format; empty when the base is not an
// amount.
QString irpfOf(const WorkingContext& ctx, const QString& base, const QString& percent);

}  // namespace tallora::sales
