#pragma once
// FormConsIN's logic: the search over the exercise's purchases (kept as the view SelFras of
// FrasIN.mdb, which the list prints from), the deletion of an entry with its treasury rows,
// and the detail of one entry (Mes_FraIN).
#include "context/fwd.h"
#include "context/money.h"
#include "schema/inquiry_filter.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::purchases {

// OpId, Opdata, OpNatur, OpProv, OpImport.
enum class PurchaseOrder { Id, Data, Natur, Prov, Import };

struct PurchaseFilter {
    QString supplier;  // CmbProveidors; empty for any
    QString account;   // CmbNaturalesa; empty for any
    schema::DateAmountFilter range;
    PurchaseOrder order = PurchaseOrder::Id;
};

// The line between two tables of CmbNaturalesa. Chosen, it is searched for as an account
// name, which finds nothing.
inline const QString kAccountSeparator = QString(43, QLatin1Char('_'));

// OMPLE_LLISTA_Proveidors: every supplier's name, in order.
QStringList OMPLE_LLISTA_Proveidors(const WorkingContext& ctx);
// OMPLE_LLISTA_Comptes: the accounts of Compres, Serveis, Personal, Tributs, Amortitzacions
// and Inversions in this order, each table in order of name, the separator between two.
QStringList OMPLE_LLISTA_Comptes(const WorkingContext& ctx);

// The select of SelFras for `filter`.
QString selectionSql(const WorkingContext& ctx, const PurchaseFilter& filter);

struct PurchaseRow {
    std::int64_t ordre = 0;
    QDate data;
    QString nomProveidor, nomCompte, descripcio;
    Money total;
};

struct PurchaseSearch {
    std::vector<PurchaseRow> rows;
    Money total;  // txtTotal; the count is rows.size()
};

// Buscar: SelFras made anew for `filter`, then read.
PurchaseSearch Buscar(const WorkingContext& ctx, const PurchaseFilter& filter);

// Esborrar after the question (deleteQuestion): the FrasIN row and, with treasury, its
// movements and its receipt, in one transaction. No month lock nor payment run stops it.
// False when no row had the number.
bool Esborra_Compra(const WorkingContext& ctx, std::int64_t ordre);
using schema::deleteQuestion;

// Mes_FraIN: the detail frame of one entry.
struct DetailLine {
    QString rate, base, quota;
};
struct PurchaseDetail {
    QString lblMesID, lblMesClient, lblMesNIF, lblMesGrup, lblMesCompte, lblMesDescripcio,
        lblMesTotal, lblMesPagada;
    std::vector<DetailLine> MesGrid;  // headed "IVA", "BASE", "QUOTA"
    DetailLine MesGridIRPF;           // "BASE IRPF": percent, base, amount
};
std::optional<PurchaseDetail> Mes_FraIN(const WorkingContext& ctx, std::int64_t ordre);

}  // namespace tallora::purchases
