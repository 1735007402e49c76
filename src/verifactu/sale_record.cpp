#include "sale_record.h"

#include "tax_id.h"

#include "context/entry_fields.h"
#include "context/money.h"
#include "context/working_context.h"
#include "schema/creation.h"

namespace tallora::verifactu {
namespace {

// Member states of the EU whose VAT numbers an intra-community customer carries.
const QStringList kEuCountries{"AT", "BE", "BG", "CY", "CZ", "DE", "DK", "EE", "EL",
                               "FI", "FR", "HR", "HU", "IE", "IT", "LT", "LU", "LV",
                               "MT", "NL", "PL", "PT", "RO", "SE", "SI", "SK", "XI"};

struct SaleRow {
    Money total, retencio;
    std::array<Money, 3> base, iva, re;
    std::array<double, 3> tiva{}, tre{};
    std::int64_t client = 0;
    QString nif, nombre, descripcio, cuenta, clasificacion;
    QDate data;
};

QString taxIdOf(store::Database& db, std::int64_t client) {
    auto st = db.prepare(QStringLiteral("select NIF from Clients where client = ?"));
    st.bind(1, client);
    return st.next() && !st.isNull(0) ? st.text(0).trimmed() : QString();
}

// The customer's tax number from the customers' file, for a sale whose row has none (the
// row carries one only when the receipt's frame was opened): through the connection when
// it holds the file (an import's), else from the file itself (a posting's).
QString customerTaxId(const WorkingContext& ctx, store::Database& db, std::int64_t client) {
    if (client == 0) return {};
    auto holds =
        db.prepare(QStringLiteral("select 1 from main.sqlite_master where type = "
                                  "'table' and name = 'Clients' collate nocase"));
    if (holds.next()) return taxIdOf(db, client);
    store::Database gest = store::Database::open(ctx.exerciseFile(schema::db::Gest));
    return taxIdOf(gest, client);
}

std::optional<SaleRow> readRow(store::Database& db, const QString& table, std::int64_t ordre) {
    auto st = db.prepare(QStringLiteral("select * from %1 where Ordre = ?").arg(table));
    st.bind(1, ordre);
    if (!st.next()) return std::nullopt;
    const auto col = [&](const QString& name) { return st.columnIndex(name); };
    const auto money = [&](const QString& name) {
        const int c = col(name);
        return c < 0 || st.isNull(c) ? Money{} : st.money(c);
    };
    const auto text = [&](const QString& name) {
        const int c = col(name);
        return c < 0 || st.isNull(c) ? QString() : st.text(c).trimmed();
    };
    const auto real = [&](const QString& name) {
        const int c = col(name);
        return c < 0 || st.isNull(c) ? 0.0 : st.money(c).toDouble();
    };
    SaleRow r;
    r.total = money("total");
    r.retencio = money("retencio");
    for (int i = 0; i < 3; ++i) {
        const QString n = QString::number(i + 1);
        r.base[i] = money("base" + n);
        r.iva[i] = money("iva" + n);
        r.re[i] = money("re" + n);
        r.tiva[i] = real("Tiva" + n);
        r.tre[i] = real("Tre" + n);
    }
    r.nif = text("NIF");
    const int client = col("client");
    r.client = client < 0 || st.isNull(client) ? 0 : st.int64(client);
    r.nombre = text("nomclient");
    r.descripcio = text("descripcio");
    r.cuenta = text("NomCompte");
    r.clasificacion = text("Clasificacion");
    const int d = col("data");
    r.data = d < 0 ? QDate() : st.date(d);
    return r;
}

bool isIntra(const SaleRow& r) {
    return r.clasificacion.contains(QLatin1String("ntra"), Qt::CaseInsensitive);
}
bool isCanary(const SaleRow& r) {
    return r.clasificacion.contains(QLatin1String("can"), Qt::CaseInsensitive);
}

QString rateText(double rate) {
    return QString::number(rate, 'f', 2);
}

QString typeOf(const WorkingContext& ctx, const SaleRow& r) {
    const bool tickets = isTickets(ctx);
    const bool rectifying = r.descripcio.endsWith(QLatin1String("/Abon"), Qt::CaseInsensitive) ||
                            r.descripcio.endsWith(QLatin1String("/Rect"), Qt::CaseInsensitive);
    if (rectifying) return tickets ? QStringLiteral("R5") : QStringLiteral("R1");
    return tickets ? QStringLiteral("F2") : QStringLiteral("F1");
}

// A Spanish tax number goes as NIF; a foreign one as IDOtro, "02" for an EU VAT number; a
// customer without one as not registered.
Recipient recipientOf(const SaleRow& r) {
    Recipient d;
    d.nombre = r.nombre.isEmpty() ? QStringLiteral("-") : r.nombre.left(120);
    const QString id = normalisedTaxId(r.nif);
    if (looksSpanish(id)) {
        d.nif = id;
    } else if (id.size() > 2 && id[0].isLetter() && id[1].isLetter()) {
        d.codigoPais = id.left(2) == u"GR" ? QStringLiteral("EL") : id.left(2);
        d.idType = kEuCountries.contains(d.codigoPais) || isIntra(r) ? QStringLiteral("02")
                                                                     : QStringLiteral("06");
        d.id = id.left(20);
    } else if (!id.isEmpty()) {
        d.codigoPais = QStringLiteral("ES");
        d.idType = QStringLiteral("06");
        d.id = id.left(20);
    } else {
        d.codigoPais = QStringLiteral("ES");
        d.idType = QStringLiteral("07");
        d.id = QStringLiteral("NO CONSTA");
    }
    return d;
}

// Intra-community supplies are exempt by art. 25 (E5), those to the Canaries as exports by
// art. 21 (E2); anything else exempt by art. 20 (E1).
BreakdownLine exemptLine(const SaleRow& r, Money base) {
    BreakdownLine line;
    line.exenta = isIntra(r)    ? QStringLiteral("E5")
                  : isCanary(r) ? QStringLiteral("E2")
                                : QStringLiteral("E1");
    if (isCanary(r)) line.claveRegimen = QStringLiteral("02");
    line.base = recordAmount(base);
    return line;
}

std::vector<BreakdownLine> breakdownOf(const SaleRow& r) {
    std::vector<BreakdownLine> lines;
    Money taxed;
    for (std::size_t i = 0; i < 3; ++i) {
        if (r.base[i] == Money{} && r.iva[i] == Money{} && r.re[i] == Money{}) continue;
        taxed += r.base[i] + r.iva[i] + r.re[i];
        if (r.iva[i] == Money{} && (isIntra(r) || isCanary(r))) {
            lines.push_back(exemptLine(r, r.base[i]));
            continue;
        }
        BreakdownLine line;
        line.calificacion = QStringLiteral("S1");
        line.tipoImpositivo = rateText(r.tiva[i]);
        line.base = recordAmount(r.base[i]);
        line.cuota = recordAmount(r.iva[i]);
        if (r.re[i] != Money{}) {
            line.claveRegimen = QStringLiteral("18");
            line.tipoRecargo = rateText(r.tre[i]);
            line.cuotaRecargo = recordAmount(r.re[i]);
        }
        lines.push_back(line);
    }
    // What the total holds beyond bases and quotas, the withholding given back: the exempt.
    const Money exempt = r.total + r.retencio - taxed;
    if (exempt != Money{} || lines.empty()) lines.push_back(exemptLine(r, exempt));
    return lines;
}

}  // namespace

QString recordAmount(const Money& amount) {
    const QString text = amount.toPlainText(2);
    return text == QLatin1String("-0.00") ? QStringLiteral("0.00") : text;
}

QString issuerTaxId(const WorkingContext& ctx) {
    const QString id = normalisedTaxId(ctx.EmpresaNIF);
    return id.size() < 9 ? id.rightJustified(9, u'0') : id;
}

std::optional<InvoiceRecord> saleRecord(const WorkingContext& ctx, store::Database& db,
                                        std::int64_t ordre, const QString& table) {
    auto row = readRow(db, table, ordre);
    if (!row) return std::nullopt;
    if (row->nif.isEmpty()) row->nif = customerTaxId(ctx, db, row->client);
    InvoiceRecord rec;
    rec.id.emisor = issuerTaxId(ctx);
    rec.id.numSerie =
        (row->descripcio.isEmpty() ? QString::number(ordre) : row->descripcio).left(60);
    rec.id.fecha = row->data.toString(QStringLiteral("dd-MM-yyyy"));
    rec.nombreEmisor = ctx.EmpresaNom.trimmed().left(120);
    rec.tipoFactura = typeOf(ctx, *row);
    if (rec.tipoFactura.startsWith(u'R')) rec.tipoRectificativa = QStringLiteral("I");
    rec.descripcion = (row->cuenta.isEmpty() ? QStringLiteral("Venta") : row->cuenta).left(500);
    if (rec.tipoFactura == u"F1" || rec.tipoFactura == u"R1") rec.destinatario = recipientOf(*row);
    rec.desglose = breakdownOf(*row);
    Money quotas;
    for (std::size_t i = 0; i < 3; ++i) quotas += row->iva[i] + row->re[i];
    rec.cuotaTotal = recordAmount(quotas);
    // The invoice's total before the withholding, which is a payment on account of the
    // customer's income tax and not part of what the invoice charges.
    rec.importeTotal = recordAmount(row->total + row->retencio);
    return rec;
}

}  // namespace tallora::verifactu
