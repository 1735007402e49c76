// Modelo 347: the year's operations with each customer (key B) and supplier (key A) whose
// amount, invoices and credit notes together, passes 3.005,06 €, by tax number, with the
// quarterly breakdown by invoice date; and the cash each customer paid into the treasury's
// cash accounts (group 570) when above 6.000 €.
//
// The amount is the invoice's total with its taxes, before any withholding. Left out, as the
// agency asks: intra-community operations (they go in the 349) and purchases with an income
// tax withholding (they go in the withholding returns); and the purchases of groups 63 and
// 64, taxes and staff costs, which are no dealings with a supplier.
#include "context/messages.h"
#include "context/working_context.h"
#include "fixed_record.h"
#include "master/treasury_accounts.h"
#include "models.h"
#include "schema/creation.h"
#include "store/database.h"
#include "vat_register.h"
#include "verifactu/tax_id.h"

#include <QFile>

#include <array>
#include <map>

namespace tallora::aeat {
namespace {

const Money kThreshold = Money::fromUnits(30050600);
const Money kCashThreshold = Money::fromUnits(60000000);

struct Party {
    QString nif, name, cp;
    QChar key;
    std::array<Money, 4> quarters{};
    Money cash;
    Money total() const { return quarters[0] + quarters[1] + quarters[2] + quarters[3]; }
    bool foreign() const { return !nif.isEmpty() && !verifactu::looksSpanish(nif); }
};

using Parties = std::map<std::pair<QChar, QString>, Party>;

QString partyKey(const QString& nif, const QString& name) {
    return nif.isEmpty() ? QStringLiteral("?") + name.trimmed().toUpper() : nif;
}

void readSide(const WorkingContext& ctx, bool sales, int year, Parties& parties,
              std::map<qint64, QString>& keyOfCustomer) {
    store::Database db =
        store::Database::open(ctx.exerciseFile(sales ? schema::db::FrasOut : schema::db::FrasIn));
    db.attach(ctx.exerciseFile(schema::db::Gest), QStringLiteral("gest"));
    store::Statement st = db.prepare(
        sales
            ? QStringLiteral("select f.Client, c.nif, coalesce(c.nom, f.NomClient), c.cp, f.data, "
                             "coalesce(f.TOTAL, 0) + coalesce(f.Retencio, 0), f.Clasificacion, 0 "
                             "from FrasOut f left join gest.Clients c on c.client = f.Client "
                             "where f.data between ? and ?")
            : QStringLiteral(
                  "select f.Proveidor, p.nif, coalesce(p.nom, f.NomProveidor), p.cp, f.data, "
                  "coalesce(f.TOTAL, 0) + coalesce(f.Retencio, 0), f.Clasificacion, "
                  "coalesce(f.Retencio, 0) from FrasIN f left join gest.Proveidors p "
                  "on p.proveidor = f.Proveidor where f.data between ? and ? "
                  "and coalesce(f.Grup, 0) not in (63, 64)"));
    st.bind(1, QDate(year, 1, 1)).bind(2, QDate(year, 12, 31));
    const QChar key = sales ? u'B' : u'A';
    while (st.next()) {
        const QString clasificacion = st.isNull(6) ? QString() : st.text(6);
        if (territoryOf(clasificacion) == Territory::IntraCommunity) continue;
        if (st.money(7) != Money{}) continue;
        const QString nif = verifactu::normalisedTaxId(st.isNull(1) ? QString() : st.text(1));
        const QString name = st.isNull(2) ? QString() : st.text(2).trimmed();
        const QString id = partyKey(nif, name);
        Party& p = parties[{key, id}];
        if (p.name.isEmpty()) {
            p.nif = nif;
            p.name = name;
            p.cp = st.isNull(3) ? QString() : st.text(3).trimmed();
            p.key = key;
        }
        const QDate date = st.date(4);
        p.quarters[static_cast<std::size_t>((date.month() - 1) / 3)] += st.money(5);
        if (sales) keyOfCustomer[st.int64(0)] = id;
    }
}

// The cash each customer paid into a cash account in the year.
void readCash(const WorkingContext& ctx, int year, Parties& parties,
              const std::map<qint64, QString>& keyOfCustomer) {
    const QString path = ctx.exerciseFile(schema::db::Tesorer);
    if (!QFile::exists(path)) return;
    store::Database db = store::Database::open(path);
    store::Statement st =
        db.prepare(QStringLiteral("select m.cliente, sum(coalesce(m.D, 0) - coalesce(m.H, 0)) "
                                  "from movimientos m join entidades e on e.Id = m.entidad "
                                  "where e.Grup = ? and m.cliente <> 0 and m.data between ? and ? "
                                  "group by m.cliente"));
    st.bind(1, master::kGrupCaja).bind(2, QDate(year, 1, 1)).bind(3, QDate(year, 12, 31));
    while (st.next()) {
        const auto it = keyOfCustomer.find(st.int64(0));
        if (it == keyOfCustomer.end()) continue;
        parties[{u'B', it->second}].cash += st.money(1);
    }
}

QString province(const Party& p) {
    if (p.foreign()) return QStringLiteral("99");
    const QString two = p.cp.left(2);
    return two.size() == 2 && two.at(0).isDigit() && two.at(1).isDigit() ? two : QString();
}

}  // namespace

ModelFigures compute347(const WorkingContext& ctx, const TaxPeriod& p) {
    ModelFigures f;
    f.model = Model::M347;
    f.period = p;
    f.period.code = QStringLiteral("0A");
    Parties parties;
    std::map<qint64, QString> keyOfCustomer;
    readSide(ctx, true, p.year, parties, keyOfCustomer);
    readSide(ctx, false, p.year, parties, keyOfCustomer);
    readCash(ctx, p.year, parties, keyOfCustomer);

    report::Sheet& s = f.parties;
    s.name = QStringLiteral("347");
    s.headings = {{QStringLiteral("NIF"), fixedText(ctx, "Nombre", "Nom"),
                   fixedText(ctx, "Clave", "Clau"), fixedText(ctx, "Provincia", "Província"),
                   QStringLiteral("1T"), QStringLiteral("2T"), QStringLiteral("3T"),
                   QStringLiteral("4T"), QStringLiteral("Total"),
                   fixedText(ctx, "Metálico", "Metàl·lic")}};
    Money sales, purchases;
    qint64 count = 0;
    for (const auto& [id, party] : parties) {
        const bool over = party.total() > kThreshold || party.total() < -kThreshold;
        const bool cash = party.cash > kCashThreshold;
        if (!over && !cash) continue;
        if (party.nif.isEmpty())
            f.warnings << fixedText(ctx, "Sin NIF: %1", "Sense NIF: %1").arg(party.name);
        report::SheetRow r{party.nif, party.name, QString(party.key), province(party)};
        for (const Money& q : party.quarters) r.push_back(q);
        r.push_back(party.total());
        r.push_back(cash ? report::Cell(party.cash) : report::Cell(QString()));
        s.rows.push_back(std::move(r));
        (party.key == u'B' ? sales : purchases) += party.total();
        ++count;
    }
    s.widths = {12, 36, 6, 9, 12, 12, 12, 12, 13, 12};
    BoxAdder b(f);
    b.section("Resumen de la declaración", "Resum de la declaració")
        .count("01", "Número total de personas y entidades", "Nombre total de persones i entitats",
               count)
        .amount("02", "Importe total de las operaciones", "Import total de les operacions",
                sales + purchases)
        .amount("B", "Ventas (clave B)", "Vendes (clau B)", sales)
        .amount("A", "Compras (clave A)", "Compres (clau A)", purchases);
    return f;
}

QByteArray file347(const WorkingContext& ctx, const ModelFigures& f) {
    const int year = f.period.year;
    const QString model = QStringLiteral("347");
    FixedRecord head = declarationRecord(ctx, model, year);
    head.number(136, 9, f.value(QStringLiteral("01")).units() / Money::kScale)
        .amountWithSign(145, 146, 15, f.value(QStringLiteral("02")))
        .number(161, 9, 0)
        .amountWithSign(170, 171, 15, Money{});
    QByteArray out = head.latin1() + "\r\n";
    for (const report::SheetRow& row : f.parties.rows) {
        const QString nif = std::get<QString>(row[0]);
        const bool foreign = !nif.isEmpty() && !verifactu::looksSpanish(nif);
        const Money cash =
            std::holds_alternative<Money>(row[9]) ? std::get<Money>(row[9]) : Money{};
        FixedRecord r = partyRecord(ctx, model, year);
        r.text(36, 40, std::get<QString>(row[1]))
            .text(76, 1, QStringLiteral("D"))
            .text(77, 2, std::get<QString>(row[3]))
            .text(82, 1, std::get<QString>(row[2]))
            .amountWithSign(83, 84, 15, std::get<Money>(row[8]))
            .amount(101, 15, cash)
            .amountWithSign(116, 117, 15, Money{})
            .number(132, 4, cash == Money{} ? 0 : year);
        if (foreign) {
            r.text(79, 2, nif.left(2)).text(264, 17, nif);
        } else if (!nif.isEmpty()) {
            r.text(18, 9, fileTaxId(nif));
        }
        for (int q = 0; q < 4; ++q) {
            const int at = 136 + 32 * q;
            r.amountWithSign(at, at + 1, 15, std::get<Money>(row[4 + static_cast<std::size_t>(q)]));
            r.amountWithSign(at + 16, at + 17, 15, Money{});
        }
        out += r.latin1() + "\r\n";
    }
    return out;
}

}  // namespace tallora::aeat
