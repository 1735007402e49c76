#pragma once
// FormConsOUT's logic: the search over the exercise's sales (kept as the view SelFras of
// FrasOUT.mdb, which the lists print from), the deletion of a sale with its treasury rows and
// the detail of one sale (Mes_FraOut). A sale goes back to the portfolio through
// treasury::AddCartera_Venda, which the statement shares.
#include "context/fwd.h"
#include "context/money.h"
#include "schema/inquiry_filter.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::sales {

// OpId, Opdata, OpNatur, OpClients, OpImport.
enum class SaleOrder { Id, Data, Natur, Clients, Import };

struct SaleFilter {
    QString customer;  // CmbClients; empty for any. Two customers of one name are both found.
    QString account;   // CmbTipus; empty for any
    schema::DateAmountFilter range;
    SaleOrder order = SaleOrder::Id;
};

// The customers' names in order, and the sales accounts (Ingresos) in capitals.
QStringList customerNames(const WorkingContext& ctx);
QStringList salesAccountNames(const WorkingContext& ctx);

// The select of SelFras for `filter`.
QString selectionSql(const WorkingContext& ctx, const SaleFilter& filter);

struct SaleRow {
    std::int64_t ordre = 0;
    QDate data;
    QString nomClient, nomCompte, descripcio;
    Money total;
};

struct SaleSearch {
    std::vector<SaleRow> rows;
    Money total;  // txtTotal; the count is rows.size()
};

// Busca_Vendes: SelFras made anew for `filter`, then read.
SaleSearch Busca_Vendes(const WorkingContext& ctx, const SaleFilter& filter);

// Esborra_Venda after the question (schema::deleteQuestion): the FrasOut row and, with
// treasury, its movements and its receipt, in one transaction. Neither a collection nor the
// month lock stops it. False when no row had the number.
bool Esborra_Venda(const WorkingContext& ctx, std::int64_t ordre);

// Mes_FraOut: the detail frame of one sale.
struct DetailLine {
    QString rate, base, iva, re;
};
struct SaleDetail {
    QString lblMesID, lblMesClient, lblMesNIF, lblMesGrup, lblMesCompte, lblMesDescripcio,
        lblMesTotal, lblMesPagada;
    std::vector<DetailLine> MesGrid;  // headed "BASE", "IVA", "RE"
    DetailLine MesGridIRPF;           // "BASE IRPF", "QUOTA": percent, base, amount
};
std::optional<SaleDetail> Mes_FraOut(const WorkingContext& ctx, std::int64_t ordre);

}  // namespace tallora::sales
