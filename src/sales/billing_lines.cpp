#include "billing_lines.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"

namespace tallora::sales {
namespace {

using store::Database;

Database openFact(const WorkingContext& ctx) {
    return Database::open(ctx.companyFile(schema::db::Fact));
}

// A text the tab takes as a number: empty or unreadable is "0".
QString numberOrZero(const WorkingContext& ctx, const QString& text) {
    return Es_Numeric(ctx, text.trimmed()) && text.trimmed() != u"-" ? text.trimmed()
                                                                     : QStringLiteral("0");
}

std::int64_t customerOf(const WorkingContext& ctx, const SaleEntry& e) {
    return isTickets(ctx) ? 0 : e.clientNumber.value_or(0);
}

double rateOf(const std::array<double, 3>& rates, std::size_t i) {
    return rates[i];
}

}  // namespace

QString Calcula_Linia(const WorkingContext& ctx, LineFields& line) {
    const QString p = Format_Import(ctx, doubleOf(ctx, numberOrZero(ctx, line.precio)));
    const QString q = Format_Quantitat(ctx, doubleOf(ctx, numberOrZero(ctx, line.cantidad)));
    const QString d = Format_Import(ctx, doubleOf(ctx, numberOrZero(ctx, line.dto)));
    const double qp = doubleOf(ctx, q) * doubleOf(ctx, p);
    line.importe = Format_Import(ctx, qp - qp * doubleOf(ctx, d) / 100);
    return line.importe;
}

LineRefusal checkLine(const WorkingContext& ctx, const SaleEntry& e, const LineFields& line) {
    if (!isTickets(ctx) && (e.txtClient.isEmpty() || e.txtClient != e.listClientsText))
        return LineRefusal::Customer;
    if (line.cantidad.trimmed().isEmpty()) return LineRefusal::Cantidad;
    if (line.precio.trimmed().isEmpty()) return LineRefusal::Precio;
    return LineRefusal::None;
}

void saveLine(const WorkingContext& ctx, const SaleEntry& e, LineFields& line) {
    if (line.dto.trimmed().isEmpty()) line.dto = QStringLiteral("0");
    if (line.iva.trimmed().isEmpty()) line.iva = QStringLiteral("0");
    Neteja_Text(line.concepto);
    Calcula_Linia(ctx, line);
    Database db = openFact(ctx);
    const bool fresh = line.id.trimmed().isEmpty();
    auto st = db.prepare(
        fresh
            ? QStringLiteral("insert into detalle_temp (fecha, concepto, unidades, pvp, dto, "
                             "importe, iva, client, Ejercicio) values (?, ?, ?, ?, ?, ?, ?, ?, ?)")
            : QStringLiteral("update detalle_temp set Fecha = ?, concepto = ?, unidades = ?, "
                             "pvp = ?, dto = ?, importe = ?, iva = ?, client = ?, "
                             "Ejercicio = ? where Id = ?"));
    const QDate date = schema::captionDate(e.lblFecha);
    if (date.isValid())
        st.bind(1, date);
    else
        st.bind(1, nullptr);
    st.bind(2, line.concepto);
    st.bind(3, doubleOf(ctx, numberOrZero(ctx, line.cantidad)));
    st.bind(4, amountOf(ctx, numberOrZero(ctx, line.precio)));
    st.bind(5, doubleOf(ctx, numberOrZero(ctx, line.dto)));
    st.bind(6, amountOf(ctx, line.importe));
    st.bind(7, doubleOf(ctx, numberOrZero(ctx, line.iva)));
    st.bind(8, customerOf(ctx, e));
    st.bind(9, std::int64_t{ctx.Exercici.toLongLong()});
    if (!fresh) st.bind(10, std::int64_t{line.id.trimmed().toLongLong()});
    st.execute();
}

std::optional<LineFields> loadLine(const WorkingContext& ctx, std::int64_t id) {
    Database db = openFact(ctx);
    auto st = db.prepare(QStringLiteral(
        "select unidades, pvp, dto, importe, concepto, iva, Id from detalle_temp where Id = ?"));
    st.bind(1, id);
    if (!st.next()) return std::nullopt;
    LineFields f;
    f.cantidad = Format_Quantitat(ctx, st.real(0));
    f.precio = Format_Import(ctx, st.money(1));
    f.dto = Format_Import(ctx, st.real(2));
    f.importe = Format_Import(ctx, st.money(3));
    f.concepto = st.text(4);
    f.iva = QString::number(st.real(5));
    f.id = QString::number(st.int64(6));
    return f;
}

void deleteLine(const WorkingContext& ctx, std::int64_t id) {
    Database db = openFact(ctx);
    db.prepare(QStringLiteral("delete from detalle_temp where Id = ?")).bind(1, id).execute();
}

void clearLines(const WorkingContext& ctx) {
    Database db = openFact(ctx);
    db.execute(QStringLiteral("delete from detalle_temp"));
}

std::vector<DocumentLine> documentLines(const WorkingContext& ctx) {
    Database db = openFact(ctx);
    auto st =
        db.prepare(QStringLiteral("select Id, fecha, concepto, unidades, pvp, dto, importe, "
                                  "iva from detalle_temp order by Id asc"));
    std::vector<DocumentLine> lines;
    while (st.next())
        lines.push_back({st.int64(0), st.date(1), st.text(2), st.real(3), st.money(4), st.real(5),
                         st.money(6), st.real(7)});
    return lines;
}

void applyLineSums(const WorkingContext& ctx, SaleEntry& e, const std::vector<DocumentLine>& lines,
                   bool clientRE) {
    std::array<Money, 4> sums{};
    for (const DocumentLine& line : lines) {
        if (line.iva == 0) {
            sums[0] += line.importe;
            continue;
        }
        for (std::size_t i = 0; i < 3; ++i)
            if (line.iva == rateOf(ctx.TipusIVA, i)) {
                sums[i + 1] += line.importe;
                break;
            }
    }
    e.Exempta = sums[0];
    for (std::size_t i = 0; i < 3; ++i) {
        const double base = sums[i + 1].toDouble();
        e.txtBase[i] = Format_Import(ctx, sums[i + 1]);
        e.txtIVA[i] = Format_Import(ctx, base * rateOf(ctx.TipusIVA, i) / 100);
        if (clientRE) e.txtRE[i] = Format_Import(ctx, base * rateOf(ctx.TipusRE, i) / 100);
    }
}

void sumLines(const WorkingContext& ctx, SaleEntry& e, bool clientRE) {
    applyLineSums(ctx, e, documentLines(ctx), clientRE);
    Recalcula_Apunt(ctx, e, clientRE);
}

}  // namespace tallora::sales
