#pragma once
// The portfolio of receipts (FormCarteraRecibos): what is still to be collected from
// customers and paid to suppliers, read from `cartera` of the company's cartera.mdb, which
// spans every exercise of the company.
//
// The reads throw store::StoreError; the screen shows its description and keeps what it
// showed. Treu_Recibo has its own trap, as it asks and writes.
#include "context/fwd.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::treasury {

// TabStrip1: the customers' receipts ('Out', a sale to collect) or the suppliers' ('In', a
// purchase to pay).
enum class Tab { Clientes, Proveedores };
// OpFecha orders by the invoice date, OpVencimiento by the due date; Id breaks ties.
enum class Orden { Fecha, Vencimiento };

struct PortfolioFilter {
    Tab tab = Tab::Clientes;
    std::optional<std::int64_t> party;  // CmbClients / CmbProveidors; none for every party
    Orden orden = Orden::Fecha;
};

// One row of the grid, as it shows it.
struct Recibo {
    std::int64_t id = 0;
    QString party;        // the party's name, empty when the number has none
    QString data;         // dd/mm/yyyy
    QString vencimiento;  // dd/mm/yyyy, empty when the row has none
    QString factura;
    QString total;      // Format_Import
    QString pendiente;  // Format_Import: the part already settled ("A cuenta")
};

// A party of CmbClients or CmbProveidors: its number (the item data) and name.
struct Party {
    std::int64_t number = 0;
    QString nom;
};

// The customers, then the suppliers, of gest.mdb in descending order of name, as the two
// drop-downs list them.
std::vector<Party> OMPLE_LLISTA_Clients(const WorkingContext& ctx);
std::vector<Party> OMPLE_LLISTA_Proveidors(const WorkingContext& ctx);

// The rows of the tab, of the chosen party when there is one, of every exercise, in the
// order asked. The names are read once from gest.mdb of the open exercise.
std::vector<Recibo> Llista_Recibos(const WorkingContext& ctx, const PortfolioFilter& filter);

// txtCobrar and txtPagar: Total less Pendiente over every row of each direction, whatever
// the grid shows; "0" for a direction without rows.
struct Totals {
    QString txtCobrar;
    QString txtPagar;
};
Totals Totales(const WorkingContext& ctx);

// Takes the receipt out of the portfolio after the question 6686 naming it; the invoice is
// left as it is. True when the row was deleted; false when the answer was No or the store
// failed (its description shown with the stop icon).
bool Treu_Recibo(const WorkingContext& ctx, Dialogs& dialogs, const Recibo& recibo);

}  // namespace tallora::treasury
