#include "aeat_books.h"

#include "context/working_context.h"
#include "fixed_record.h"
#include "tax_period.h"
#include "verifactu/tax_id.h"

#include <array>

namespace tallora::aeat {
namespace {

using report::Cell;
using report::Sheet;
using report::SheetRow;

// Column headings; a " – " parts the group (first heading row) from the column (second).
const std::array<const char*, 36> kIssued{"Ejercicio",
                                          "Periodo",
                                          "Actividad – Código",
                                          "Actividad – Tipo",
                                          "Actividad – Epígrafe IAE",
                                          "Tipo de Factura",
                                          "Concepto de Ingreso",
                                          "Ingreso Computable",
                                          "Fecha Expedición",
                                          "Fecha Operación",
                                          "Identificación de la Factura – Serie",
                                          "Identificación de la Factura – Número",
                                          "Identificación de la Factura – Número-Final",
                                          "NIF Destinatario – Tipo",
                                          "NIF Destinatario – Código País",
                                          "NIF Destinatario – Identificación",
                                          "Nombre Destinatario",
                                          "Clave de Operación",
                                          "Calificación de la Operación",
                                          "Operación Exenta",
                                          "Total Factura",
                                          "Base Imponible",
                                          "Tipo de IVA",
                                          "Cuota IVA Repercutida",
                                          "Tipo de Recargo Eq.",
                                          "Cuota Recargo Eq.",
                                          "Cobro – Fecha",
                                          "Cobro – Importe",
                                          "Cobro – Medio",
                                          "Cobro – Identificación del medio",
                                          "Tipo Retención IRPF",
                                          "Importe Retenido IRPF",
                                          "Registro Acuerdo Facturación",
                                          "Inmueble – Situación",
                                          "Inmueble – Referencia Catastral",
                                          "Referencia Externa"};

const std::array<const char*, 42> kReceived{"Ejercicio",
                                            "Periodo",
                                            "Actividad – Código",
                                            "Actividad – Tipo",
                                            "Actividad – Epígrafe IAE",
                                            "Tipo de Factura",
                                            "Concepto de Gasto",
                                            "Gasto Deducible",
                                            "Fecha Expedición",
                                            "Fecha Operación",
                                            "Identificación Factura del Expedidor – Serie-Número",
                                            "Identificación Factura del Expedidor – Número-Final",
                                            "Fecha Recepción",
                                            "Número Recepción",
                                            "Número Recepción Final",
                                            "NIF Expedidor – Tipo",
                                            "NIF Expedidor – Código País",
                                            "NIF Expedidor – Identificación",
                                            "Nombre Expedidor",
                                            "Clave de Operación",
                                            "Bien de Inversión",
                                            "Inversión del Sujeto Pasivo",
                                            "Deducible en Periodo Posterior",
                                            "Periodo Deducción – Ejercicio",
                                            "Periodo Deducción – Periodo",
                                            "Total Factura",
                                            "Base Imponible",
                                            "Tipo de IVA",
                                            "Cuota IVA Soportado",
                                            "Cuota Deducible",
                                            "Tipo Recargo Eq.",
                                            "Cuota Recargo Eq.",
                                            "Pago – Fecha",
                                            "Pago – Importe",
                                            "Pago – Medio",
                                            "Pago – Identificación del medio",
                                            "Tipo Retención IRPF",
                                            "Importe Retenido IRPF",
                                            "Registro Acuerdo Facturación",
                                            "Inmueble – Situación",
                                            "Inmueble – Referencia Catastral",
                                            "Referencia Externa"};

template <std::size_t N>
std::vector<SheetRow> headings(const std::array<const char*, N>& names) {
    SheetRow groups, columns;
    const QString mark = QStringLiteral(" – ");
    for (const char* n : names) {
        const QString name = QString::fromUtf8(n);
        const qsizetype cut = name.indexOf(mark);
        groups.push_back(cut < 0 ? QString() : name.left(cut));
        columns.push_back(cut < 0 ? name : name.mid(cut + mark.size()));
    }
    return {groups, columns};
}

QString dateText(const QDate& d) {
    return d.isValid() ? d.toString(u"dd/MM/yyyy") : QString();
}

// The invoice-type code of a line.
QString invoiceType(const WorkingContext& ctx, const RegisterLine& l, bool sale) {
    if (l.invoiceTotal < Money{} || l.number.contains(u"/Abon", Qt::CaseInsensitive) ||
        l.number.contains(u"/Rect", Qt::CaseInsensitive))
        return QStringLiteral("R1");
    if (sale && ctx.ModeExercici == u"TICKETS") return QStringLiteral("F4");
    if (sale && l.nif.isEmpty()) return QStringLiteral("F2");
    return QStringLiteral("F1");
}

// Type, country and identification of a party's tax number.
std::array<QString, 3> partyId(const RegisterLine& l) {
    if (l.nif.isEmpty() || verifactu::looksSpanish(l.nif)) return {QString(), QString(), l.nif};
    const bool country = l.nif.size() > 2 && l.nif.at(0).isLetter() && l.nif.at(1).isLetter();
    return {QStringLiteral("02"), country ? l.nif.left(2) : QString(), l.nif};
}

QString period(const RegisterLine& l, bool monthly) {
    return monthly ? monthCode(l.date) : quarterCode(l.date);
}

// A withholding's two cells, empty for a legal person's books or a line without it.
std::array<QString, 2> withholding(bool legal, const RegisterLine& l) {
    if (legal || l.withholding == Money{}) return {};
    return {aeatDecimal(l.withholdingRate), aeatDecimal(l.withholding)};
}

}  // namespace

QString aeatDecimal(Money m) {
    return report::cellText(m, u',');
}

namespace {

// Where the values both books carry go in each: the columns differ, the values do not.
struct SharedColumns {
    std::size_t width, number, id, name, total, base, surcharge, withholding, nameWidth;
};
constexpr SharedColumns kIssuedColumns{kIssued.size(), 11, 13, 16, 20, 21, 24, 30, 36};
constexpr SharedColumns kReceivedColumns{kReceived.size(), 10, 15, 18, 25, 26, 30, 36, 36};

// A line's row with its shared values; base, rate and quota sit side by side.
SheetRow sharedRow(const WorkingContext& ctx, const RegisterLine& l, bool sale, bool monthly,
                   bool legal, const SharedColumns& c) {
    SheetRow r(c.width, QString());
    r[0] = ctx.Exercici;
    r[1] = period(l, monthly);
    r[5] = invoiceType(ctx, l, sale);
    r[8] = dateText(l.date);
    r[c.number] = l.number;
    const auto id = partyId(l);
    for (std::size_t i = 0; i < id.size(); ++i) r[c.id + i] = id[i];
    r[c.name] = l.name;
    r[c.total] = aeatDecimal(l.invoiceTotal);
    r[c.base] = aeatDecimal(l.base);
    r[c.base + 1] = aeatDecimal(l.rate);
    r[c.base + 2] = aeatDecimal(l.quota);
    if (l.surcharge != Money{}) {
        r[c.surcharge] = aeatDecimal(l.surchargeRate);
        r[c.surcharge + 1] = aeatDecimal(l.surcharge);
    }
    const auto ret = withholding(legal, l);
    r[c.withholding] = ret[0];
    r[c.withholding + 1] = ret[1];
    return r;
}

template <std::size_t N>
Sheet sheetOf(const char* name, const std::array<const char*, N>& columns, const SharedColumns& c) {
    Sheet sheet;
    sheet.name = QString::fromLatin1(name);
    sheet.headings = headings(columns);
    sheet.widths.assign(N, 14);
    sheet.widths[c.name] = c.nameWidth;
    return sheet;
}

}  // namespace

Sheet issuedSheet(const WorkingContext& ctx, const std::vector<RegisterLine>& lines, bool monthly) {
    Sheet sheet = sheetOf("EXPEDIDAS", kIssued, kIssuedColumns);
    const bool legal = legalPerson(ctx.EmpresaNIF);
    for (const RegisterLine& l : lines) {
        SheetRow r = sharedRow(ctx, l, true, monthly, legal, kIssuedColumns);
        if (l.nif.isEmpty() && std::get<QString>(r[5]) == u"F2")
            r[16] = QStringLiteral("VENTAS A CONSUMIDOR FINAL");
        const bool exempt = l.rate == Money{};
        r[17] = l.territory == Territory::Canarias ? QStringLiteral("02") : QStringLiteral("01");
        r[18] = exempt ? QString() : QStringLiteral("S1");
        r[19] = !exempt                                    ? QString()
                : l.territory == Territory::IntraCommunity ? QStringLiteral("E5")
                : l.territory == Territory::Canarias       ? QStringLiteral("E2")
                                                           : QStringLiteral("E1");
        sheet.rows.push_back(std::move(r));
    }
    return sheet;
}

Sheet receivedSheet(const WorkingContext& ctx, const std::vector<RegisterLine>& lines,
                    bool monthly) {
    Sheet sheet = sheetOf("RECIBIDAS", kReceived, kReceivedColumns);
    const bool legal = legalPerson(ctx.EmpresaNIF);
    for (const RegisterLine& l : lines) {
        SheetRow r = sharedRow(ctx, l, false, monthly, legal, kReceivedColumns);
        r[12] = dateText(l.date);
        r[13] = QString::number(l.bookNumber);
        r[19] =
            l.territory == Territory::IntraCommunity ? QStringLiteral("09") : QStringLiteral("01");
        r[20] = l.investment() ? QStringLiteral("S") : QStringLiteral("N");
        r[21] = QStringLiteral("N");
        r[22] = QStringLiteral("N");
        r[29] = aeatDecimal(l.quota);  // all of it deductible
        sheet.rows.push_back(std::move(r));
    }
    return sheet;
}

std::vector<Sheet> aeatBookSheets(const WorkingContext& ctx, const AeatBookRequest& request) {
    return {issuedSheet(ctx, issuedLines(ctx, request.fromMonth, request.toMonth), request.monthly),
            receivedSheet(ctx, receivedLines(ctx, request.fromMonth, request.toMonth),
                          request.monthly)};
}

QString aeatBookFileName(const WorkingContext& ctx) {
    QString name = agencyText(ctx.EmpresaNom).simplified();
    // Characters a file name cannot carry on any desktop.
    for (QChar bad : QStringLiteral("/\\:*?\"<>|.,")) name.remove(bad);
    return ctx.Exercici + verifactu::normalisedTaxId(ctx.EmpresaNIF) + u'C' + name.simplified() +
           QStringLiteral(".xlsx");
}

QString writeAeatBooks(const WorkingContext& ctx, const AeatBookRequest& request,
                       const QString& path) {
    return report::writeXlsx(path, aeatBookSheets(ctx, request));
}

}  // namespace tallora::aeat
