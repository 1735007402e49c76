#include "vat_register.h"

#include "books/journal_builder.h"
#include "books/vat_book_queries.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"
#include "verifactu/tax_id.h"

namespace tallora::aeat {
namespace {

std::vector<RegisterLine> read(const WorkingContext& ctx, bool sales, int fromMonth, int toMonth) {
    const auto [first, last] = books::periodLimits(ctx, fromMonth, toMonth);
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Llibre));
    db.attach(ctx.exerciseFile(sales ? schema::db::FrasOut : schema::db::FrasIn),
              QStringLiteral("fras"));
    // The invoice's own row, for the whole number and total the journal cuts or moves.
    store::Statement st = db.prepare(
        sales ? QStringLiteral(
                    "select d.Ordre, d.data, f.Descripcio, d.nif, d.NomClient, d.Client, "
                    "f.Clasificacion, d.OrdreGRAL, f.TOTAL, f.Retencio, d.BaseIVA, d.TipusIVA, "
                    "d.IVA, d.TipusREC, d.REC, d.TipusRET, d.RET, 0, d.Grup "
                    "from Diari d left join fras.FrasOut f on f.Ordre = d.Ordre "
                    "where d.Debe_Haber = 'D' and d.data between ? and ? order by d.Apunt")
              : QStringLiteral(
                    "select d.Ordre, d.data, f.descripcio, d.nif, d.NomProveidor, d.Proveidor, "
                    "f.Clasificacion, d.OrdreGRAL, f.TOTAL, f.Retencio, d.BaseIVA, d.TipusIVA, "
                    "d.IVA, d.TipusREC, d.REC, d.TipusRET, d.RET, d.OrdreIVAs, d.Grup "
                    "from Diari d left join fras.FrasIN f on f.Ordre = d.Ordre "
                    "where d.Debe_Haber = 'H' and d.OrdreIVAs <> 0 and d.data between ? and ? "
                    "order by d.Apunt"));
    st.bind(1, first);
    st.bind(2, last);
    std::vector<RegisterLine> lines;
    qint64 previous = -1;
    const auto money = [&](int c) { return st.isNull(c) ? Money{} : st.money(c); };
    const auto text = [&](int c) { return st.isNull(c) ? QString() : st.text(c); };
    const auto number = [&](int c) { return st.isNull(c) ? 0 : st.int64(c); };
    while (st.next()) {
        RegisterLine l;
        l.ordre = number(0);
        l.date = st.date(1);
        l.number = text(2).trimmed();
        l.nif = verifactu::normalisedTaxId(text(3));
        l.name = text(4).trimmed();
        l.party = number(5);
        l.territory = territoryOf(text(6));
        const qint64 invoice = number(7);
        l.firstOfInvoice = invoice != previous;
        previous = invoice;
        l.invoiceTotal = money(8) + money(9);
        l.base = money(10);
        l.rate = money(11);
        l.quota = money(12);
        l.surchargeRate = money(13);
        l.surcharge = money(14);
        l.withholdingRate = money(15);
        l.withholding = money(16);
        l.bookNumber = number(17);
        l.grup = number(18);
        lines.push_back(l);
    }
    return lines;
}

}  // namespace

Territory territoryOf(const QString& clasificacion) {
    if (clasificacion.contains(books::seriesFilter(books::Series::Intra).clasificacion,
                               Qt::CaseInsensitive))
        return Territory::IntraCommunity;
    if (clasificacion.contains(books::seriesFilter(books::Series::Canarias).clasificacion,
                               Qt::CaseInsensitive))
        return Territory::Canarias;
    return Territory::Domestic;
}

bool legalPerson(const QString& nif) {
    const QString n = verifactu::normalisedTaxId(nif);
    if (n.isEmpty()) return false;
    return QStringLiteral("ABCDEFGHJNPQRSUVW").contains(n.at(0));
}

std::vector<RegisterLine> issuedLines(const WorkingContext& ctx, int fromMonth, int toMonth) {
    books::Genera_Diari_Vendes(ctx);
    return read(ctx, true, fromMonth, toMonth);
}

std::vector<RegisterLine> receivedLines(const WorkingContext& ctx, int fromMonth, int toMonth) {
    books::Genera_Diari_Compres(ctx);
    return read(ctx, false, fromMonth, toMonth);
}

}  // namespace tallora::aeat
