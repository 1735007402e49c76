#pragma once
// The lines of the billing document in hand: the work table detalle_temp of the company's
// fact.mdb, edited line by line on the billing tab and moved into detalle when the document
// is saved (billing_document.h).
//
// The fields are the tab's texts; amounts are read and written as the screen shows them, so
// that a line amount is the rounded product a person sees (Calcula_Linia).
#include "context/fwd.h"
#include "context/money.h"
#include "sale_entry.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <vector>

namespace tallora::sales {

// One row of detalle_temp as GridFacturacion shows it.
struct DocumentLine {
    std::int64_t id = 0;
    QDate fecha;
    QString concepto;
    double unidades = 0;
    Money pvp;
    double dto = 0;
    Money importe;
    double iva = 0;
};

// The fields of a line on the tab: txtFacturacionID, Cantidad, Concepto, Precio, Dto, IVA,
// Importe.
struct LineFields {
    QString id;  // empty for a new line
    QString cantidad, concepto, precio, dto, iva, importe;
};

// Calcula_Linia: importe = q x p - q x p x d / 100 on the formatted texts, in money format.
// Empty or non-numeric texts count as 0.
QString Calcula_Linia(const WorkingContext& ctx, LineFields& line);

// Why btnFacturacionAlta refuses a line: the message and the field the focus goes to.
enum class LineRefusal { None, Customer /*638*/, Cantidad /*6793*/, Precio /*6794*/ };
// A shop's exercise (TICKETS) has no customer to take.
LineRefusal checkLine(const WorkingContext& ctx, const SaleEntry& entry, const LineFields& line);

// btnFacturacionAlta after checkLine: empty discount and rate become "0" (the rate list's
// first row), the concept is sanitised, the amount computed, and the line inserted, or
// updated when it carries an id. The fields keep the values written.
void saveLine(const WorkingContext& ctx, const SaleEntry& entry, LineFields& line);

// The line `id` for a change (its texts formatted as the tab shows them); nothing without it.
std::optional<LineFields> loadLine(const WorkingContext& ctx, std::int64_t id);

void deleteLine(const WorkingContext& ctx, std::int64_t id);

// "delete from detalle_temp": a fresh entry and every opening start without lines.
void clearLines(const WorkingContext& ctx);

// "select * from detalle_temp order by Id asc".
std::vector<DocumentLine> documentLines(const WorkingContext& ctx);

// OMPLE_GRID_Detall's sums put on the entry: Exempta the lines at IVA 0, txtBase(i) those
// at rate i, txtIVA(i) and, for a customer with recargo, txtRE(i) from them. A line at a rate
// that is none of the three counts in no sum.
void applyLineSums(const WorkingContext& ctx, SaleEntry& entry,
                   const std::vector<DocumentLine>& lines, bool clientRE);

// The quotas and total from the lines' sums (applyLineSums, then Recalcula_Apunt), as the
// screen shows them after each line.
void sumLines(const WorkingContext& ctx, SaleEntry& entry, bool clientRE);

}  // namespace tallora::sales
