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
    // Two decimals, rounded half away from zero.
    const qint64 c = cents(m);
    const qint64 a = c < 0 ? -c : c;
    return QStringLiteral("%1%2,%3")
        .arg(c < 0 ? QStringLiteral("-") : QString())
        .arg(a / 100)
        .arg(a % 100, 2, 10, QLatin1Char('0'));
}

Sheet issuedSheet(const WorkingContext& ctx, const std::vector<RegisterLine>& lines, bool monthly) {
    Sheet sheet;
    sheet.name = QStringLiteral("EXPEDIDAS");
    sheet.headings = headings(kIssued);
    const bool legal = legalPerson(ctx.EmpresaNIF);
    for (const RegisterLine& l : lines) {
        const QString type = invoiceType(ctx, l, true);
        const auto id = partyId(l);
        const bool exempt = l.rate == Money{};
        const QString exemption = !exempt                                    ? QString()
                                  : l.territory == Territory::IntraCommunity ? QStringLiteral("E5")
                                  : l.territory == Territory::Canarias       ? QStringLiteral("E2")
                                                                             : QStringLiteral("E1");
        const auto ret = withholding(legal, l);
        SheetRow r(kIssued.size(), QString());
        r[0] = ctx.Exercici;
        r[1] = period(l, monthly);
        r[5] = type;
        r[8] = dateText(l.date);
        r[11] = l.number;
        r[13] = id[0];
        r[14] = id[1];
        r[15] = id[2];
        r[16] =
            l.nif.isEmpty() && type == u"F2" ? QStringLiteral("VENTAS A CONSUMIDOR FINAL") : l.name;
        r[17] = l.territory == Territory::Canarias ? QStringLiteral("02") : QStringLiteral("01");
        r[18] = exempt ? QString() : QStringLiteral("S1");
        r[19] = exemption;
        r[20] = aeatDecimal(l.invoiceTotal);
        r[21] = aeatDecimal(l.base);
        r[22] = aeatDecimal(l.rate);
        r[23] = aeatDecimal(l.quota);
        if (l.surcharge != Money{}) {
            r[24] = aeatDecimal(l.surchargeRate);
            r[25] = aeatDecimal(l.surcharge);
        }
        r[30] = ret[0];
        r[31] = ret[1];
        sheet.rows.push_back(std::move(r));
    }
    sheet.widths.assign(kIssued.size(), 14);
    sheet.widths[16] = 36;
    return sheet;
}

Sheet receivedSheet(const WorkingContext& ctx, const std::vector<RegisterLine>& lines,
                    bool monthly) {
    Sheet sheet;
    sheet.name = QStringLiteral("RECIBIDAS");
    sheet.headings = headings(kReceived);
    const bool legal = legalPerson(ctx.EmpresaNIF);
    for (const RegisterLine& l : lines) {
        const auto id = partyId(l);
        const auto ret = withholding(legal, l);
        SheetRow r(kReceived.size(), QString());
        r[0] = ctx.Exercici;
        r[1] = period(l, monthly);
        r[5] = invoiceType(ctx, l, false);
        r[8] = dateText(l.date);
        r[10] = l.number;
        r[12] = dateText(l.date);
        r[13] = QString::number(l.bookNumber);
        r[15] = id[0];
        r[16] = id[1];
        r[17] = id[2];
        r[18] = l.name;
        r[19] =
            l.territory == Territory::IntraCommunity ? QStringLiteral("09") : QStringLiteral("01");
        r[20] = l.investment() ? QStringLiteral("S") : QStringLiteral("N");
        r[21] = QStringLiteral("N");
        r[22] = QStringLiteral("N");
        r[25] = aeatDecimal(l.invoiceTotal);
        r[26] = aeatDecimal(l.base);
        r[27] = aeatDecimal(l.rate);
        r[28] = aeatDecimal(l.quota);
        r[29] = aeatDecimal(l.quota);
        if (l.surcharge != Money{}) {
            r[30] = aeatDecimal(l.surchargeRate);
            r[31] = aeatDecimal(l.surcharge);
        }
        r[36] = ret[0];
        r[37] = ret[1];
        sheet.rows.push_back(std::move(r));
    }
    sheet.widths.assign(kReceived.size(), 14);
    sheet.widths[18] = 36;
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
