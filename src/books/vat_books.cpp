#include "vat_books.h"

#include "book_formulas.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "journal_builder.h"
#include "report/formula.h"
#include "schema/creation.h"
#include "store/database.h"
#include "store/schema_objects.h"
#include "store/store_error.h"

#include <vector>

namespace tallora::books {
namespace {

using report::ReportJob;
using report::textFormula;

bool tickets(const WorkingContext& ctx) {
    return ctx.ModeExercici == QStringLiteral("TICKETS");
}

void progress(const BookRequest& r, int value) {
    if (r.progress) r.progress(value);
}

// Nom, NIF, lbl_ejercicio, periode: the head of every book.
void bookHead(Formulas& f, const WorkingContext& ctx, const BookRequest& r, int seriesLabel) {
    f.text("Nom", ctx.EmpresaNom)
        .text("NIF", ctx.EmpresaNIF)
        .text("lbl_ejercicio", Missatge(ctx, 6143) + ctx.Exercici)
        .text("periode", periodText(ctx, r.fromMonth, r.toMonth, seriesLabel));
}

// The counterparty declaration's threshold: 3.005,06 euros (500.000 pesetas), in the
// ten-thousandths of a Currency column. The report names only customers and suppliers whose
// year passes it, which the view decides, as the layout cannot drop a group. Left out, as the
// return itself leaves them to other returns: the sales without a customer (a shop's daily
// takings), intra-community invoices (declared in 349) and invoices with withholding
// (declared in 190); the amounts are the invoices' totals, VAT included.
std::int64_t declarationThreshold(const WorkingContext& ctx) {
    return ctx.Moneda == QStringLiteral("Ptes.") ? 5000000000LL : 30050600LL;
}

QString quarterSums(const WorkingContext& ctx, const QString& amount) {
    QString sql;
    const int year = ctx.Exercici.toInt();
    for (int q = 0; q < 4; ++q) {
        const QDate first(year, 3 * q + 1, 1);
        const QDate last = first.addMonths(3).addDays(-1);
        sql += QStringLiteral(", sum(case when data between %1 and %2 then %3 else 0 end) as T%4")
                   .arg(store::quoteLiteral(first.toString(QStringLiteral("yyyy-MM-dd"))),
                        store::quoteLiteral(last.toString(QStringLiteral("yyyy-MM-dd"))), amount)
                   .arg(q + 1);
    }
    return sql;
}

QString declarationSide(const WorkingContext& ctx, bool customers) {
    const QString party = customers ? QStringLiteral("Client") : QStringLiteral("Proveidor");
    const QString amount = customers ? QStringLiteral("Debe") : QStringLiteral("Haber");
    return QStringLiteral(
               "select %1 as Lado, %2 as Titulo, %3 as Codigo, %4 as CodCli, %5 as CodPro, "
               "max(Nom%3) as Nombre, max(nif) as NIF, sum(%6) as Importe%7 from Diari "
               "where Debe_Haber = %8 and %3 <> 0 and RET = 0 and coalesce(Clasificacion, '') "
               "not like '%ntra%' group by %3 having abs(sum(%6)) > %9")
        .arg(customers ? QStringLiteral("1") : QStringLiteral("2"),
             store::quoteLiteral(Missatge(ctx, customers ? 6101 : 6111)), party,
             customers ? party : QStringLiteral("null"), customers ? QStringLiteral("null") : party,
             amount, quarterSums(ctx, amount),
             customers ? QStringLiteral("'D'") : QStringLiteral("'H'"))
        .arg(declarationThreshold(ctx));
}

// The builders fail silently: the book then prints what the journal and views hold.
void silently(const std::function<void()>& build) {
    try {
        build();
    } catch (const store::StoreError&) {
    }
}

report::ReportResult refused() {
    report::ReportResult r;
    r.status = report::ReportResult::Status::Cancelled;
    return r;
}

report::ReportResult launch(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                            report::ReportOutput* output, const BookRequest& request,
                            int windowTitle, const std::function<void(ReportJob&)>& fill) {
    report::ReportResult result = report::runReport(ctx, dialogs, job, output, request.print,
                                                    Missatge(ctx, windowTitle), [&](ReportJob& j) {
                                                        fill(j);
                                                        progress(request, 95);
                                                    });
    progress(request, 0);
    return result;
}

}  // namespace

bool checkPeriod(const WorkingContext& ctx, Dialogs& dialogs, int fromMonth, int toMonth) {
    if (fromMonth <= toMonth) return true;
    dialogs.stop(Missatge(ctx, 6142));
    return false;
}

QString periodText(const WorkingContext& ctx, int fromMonth, int toMonth, int seriesLabel) {
    QString text = u' ' + Missatge(ctx, 6156) + u' ' + Missatge(ctx, 6145) + u' ' +
                   Missatge(ctx, 5000 + fromMonth).toUpper() + u' ' + Missatge(ctx, 6146) + u' ' +
                   Missatge(ctx, 5000 + toMonth).toUpper();
    if (seriesLabel != 0) text += QStringLiteral(" - ") + Missatge(ctx, seriesLabel);
    return text;
}

QString salesBookLayout(const WorkingContext& ctx, bool irpf) {
    if (tickets(ctx)) return QStringLiteral("llibrei2.rpt");
    return irpf ? QStringLiteral("llibrer1.rpt") : QStringLiteral("llibrei1.rpt");
}

QString purchasesBookLayout(const WorkingContext& ctx, PurchasesBook book) {
    switch (book) {
        case PurchasesBook::General:
            return tickets(ctx) ? QStringLiteral("llibred3.rpt") : QStringLiteral("llibred1.rpt");
        case PurchasesBook::VatOnly:
        case PurchasesBook::Investments:
            return QStringLiteral("llibrem2.rpt");
        case PurchasesBook::Withholding:
            return QStringLiteral("llibrer2.rpt");
    }
    return {};
}

namespace {

// Each builder fails on its own: a journal that could not be rebuilt still gets the query of
// the months asked for, and the book prints what the journal holds.
void prepareSalesBook(const WorkingContext& ctx, const BookRequest& request) {
    silently([&] { Genera_Diari_Vendes(ctx); });
    progress(request, 20);
    const SeriesFilter s = seriesFilter(request.series);
    Genera_SelIVAr(ctx, request.fromMonth, request.toMonth, s.serie, s.clasificacion, request.irpf);
}

void preparePurchasesBook(const WorkingContext& ctx, PurchasesBook book,
                          const BookRequest& request) {
    // The withholding list reads the journal as the last book left it.
    silently([&] {
        if (book == PurchasesBook::Withholding)
            prepareJournal(ctx);
        else
            Genera_Diari_Compres(ctx);
    });
    progress(request, 20);
    const SeriesFilter s = seriesFilter(request.series);
    const bool nomesIva = book == PurchasesBook::VatOnly || book == PurchasesBook::Investments;
    Genera_SelIVAs(ctx, request.fromMonth, request.toMonth, nomesIva,
                   book == PurchasesBook::Investments, s.serie, s.clasificacion,
                   book == PurchasesBook::Withholding);
}

void prepareDeclaration(const WorkingContext& ctx, const BookRequest& request) {
    silently([&] { Genera_Diari_Vendes(ctx); });
    silently([&] { Genera_Diari_Compres(ctx); });
    progress(request, 20);
    silently([&] {
        store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Llibre));
        store::createQuery(db, QStringLiteral("Sel347"),
                           declarationSide(ctx, true) + QStringLiteral(" union all ") +
                               declarationSide(ctx, false));
    });
}

}  // namespace

void fillSalesBook(ReportJob& job, const WorkingContext& ctx, const BookRequest& request) {
    const QString layout = salesBookLayout(ctx, request.irpf);
    job.ReportFileName = report::reportFile(ctx, layout);
    Formulas f(job, ctx);
    if (layout == QStringLiteral("llibrer1.rpt")) {
        f.message("lbl_titulo_gral", 7008);
    } else if (layout == QStringLiteral("llibrei1.rpt")) {
        f.message("lbl_titulo_gral", 6158)
            .message("lbl_bar_retencion", 6161)
            .message("lbl_bar_cuota_iva", 6162)
            .message("lbl_bar_cuota_re", 6163)
            .message("lbl_bar_cuota", 6169)
            .message("lbl_bar_importe", 6160);
    }
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Llibre);
    bookHead(f, ctx, request, seriesFilter(request.series).label);
    f.message("lbl_titulo", 6157)
        .message("lbl_bar_identificacion", 6159)
        .text("lbl_fecha", printDate(request.printDate))
        .message("lbl_pagina", 6113)
        .message("lbl_orden", 6164)
        .message("lbl_bar_fecha", 6165)
        .message("lbl_bar_cliente", 6166)
        .message("lbl_bar_naturaleza", 6167)
        .message("lbl_bar_sumas_periodo", 6168)
        .message("lbl_acumulado", 6154);
    if (!tickets(ctx)) Resum_IVAr(ctx, job);
}

void fillPurchasesBook(ReportJob& job, const WorkingContext& ctx, PurchasesBook book,
                       const BookRequest& request) {
    job.ReportFileName = report::reportFile(ctx, purchasesBookLayout(ctx, book));
    Formulas f(job, ctx);
    switch (book) {
        case PurchasesBook::General:
        case PurchasesBook::VatOnly:
            f.message("lbl_titulo", 6175).message("lbl_titulo_gral", 6176);
            break;
        case PurchasesBook::Investments:
            f.message("lbl_titulo", 6193);
            report::appendFormula(job, QStringLiteral("lbl_titulo_gral= ''"));
            break;
        case PurchasesBook::Withholding:
            f.message("lbl_titulo", 7009).message("lbl_titulo_gral", 7010);
            break;
    }
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Llibre);
    bookHead(f, ctx, request, seriesFilter(request.series).label);
    f.text("lbl_fecha", printDate(request.printDate))
        .message("lbl_pagina", 6113)
        .message("lbl_bar_identificacion", 6177)
        .message("lbl_bar_tipo", 6178)
        .message("lbl_bar_iva", 6179)
        .message("lbl_bar_retencion", 6180)
        .message("lbl_bar_fecha", 6181)
        .message("lbl_bar_proveedor", 6182)
        .message("lbl_bar_naturaleza", 6183)
        .message("lbl_bar_compras", 6184)
        .message("lbl_bar_servicios", 6185)
        .message("lbl_bar_tributos", 6186)
        .message("lbl_bar_sous", 6187)
        .message("lbl_bar_amortit", 6188)
        .message("lbl_bar_inversiones", 6189)
        .message("lbl_bar_cuota", 6190)
        .message("lbl_tit_tipo", 6191)
        .message("lbl_tit_periodo", 6192)
        .message("lbl_acumulado", 6154);
    if (!tickets(ctx)) Resum_IVAs(ctx, job);
}

void fillProvisionsBook(ReportJob& job, const WorkingContext& ctx, const BookRequest& request) {
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("llibre_s.rpt"));
    job.DataFiles[0] = ctx.exerciseFile(schema::db::Supl);
    Formulas f(job, ctx);
    bookHead(f, ctx, request, 0);
    f.message("lbl_bar_importe", 6160)
        .message("lbl_titulo", 6508)
        .message("lbl_orden", 6164)
        .message("lbl_bar_fecha", 6165)
        .message("lbl_pagina", 6113)
        .text("lbl_fecha", printDate(request.printDate))
        .message("lbl_bar_naturaleza", 6167)
        .message("lbl_bar_sumas_periodo", 6168)
        .message("lbl_acumulado", 6154)
        .message("lbl_bar_nombre", 6137);
}

void fillDeclaration(ReportJob& job, const WorkingContext& ctx, const QDate& date) {
    job.ReportFileName = report::reportFile(ctx, QStringLiteral("500000.rpt"));
    for (int i = 0; i < 7; ++i) job.DataFiles[i] = ctx.exerciseFile(schema::db::Comptes);
    job.DataFiles[7] = ctx.exerciseFile(schema::db::Llibre);
    job.DataFiles[8] = ctx.exerciseFile(schema::db::Gest);
    job.DataFiles[9] = ctx.exerciseFile(schema::db::Gest);
    Formulas f(job, ctx);
    f.text("Nom", ctx.EmpresaNom)
        .message("tlbl_titulo", 6135)
        .message("lbl_titulo_gral", 6136)
        .text("lbl_fecha", printDate(date))
        .message("lbl_tit_razon_social", 6137)
        .message("lbl_tit_domicilio", 6138)
        .message("lbl_poblacion", 6139)
        .message("cli", 6101)
        .message("pro", 6111)
        .message("lbl_pagina", 6113)
        .message("lbl_tit_provincia", 6403);
}

namespace {

PurchasesBook purchasesBook(Book book) {
    switch (book) {
        case Book::PurchasesVat:
            return PurchasesBook::VatOnly;
        case Book::Investments:
            return PurchasesBook::Investments;
        case Book::PurchasesWithholding:
            return PurchasesBook::Withholding;
        default:
            return PurchasesBook::General;
    }
}

bool salesSide(Book book) {
    return book == Book::Sales || book == Book::SalesWithholding;
}

// The columns each book prints, in its order, and the order of its rows.
struct BookColumns {
    QString database, view, columns, order;
};

BookColumns bookColumns(const WorkingContext& ctx, Book book) {
    const QString llibre = ctx.exerciseFile(schema::db::Llibre);
    const QString purchases = QStringLiteral(
        "OrdreIVAs, data, descripcio, NomProveidor, nif, BaseIVA, TipusIVA, IVA, TOTAL");
    switch (book) {
        case Book::Sales:
            return {llibre, QStringLiteral("SelIVAr"),
                    QStringLiteral("OrdreIVAr, data, descripcio, NomClient, nif, BaseIVA, "
                                   "TipusIVA, IVA, TipusREC, REC, RET, TOTAL"),
                    QStringLiteral("Apunt")};
        case Book::SalesWithholding:
            return {llibre, QStringLiteral("SelIVAr"),
                    QStringLiteral("OrdreIVAr, data, descripcio, NomClient, nif, BaseRET, "
                                   "TipusRET, RET, Debe"),
                    QStringLiteral("NomClient, Client, Apunt")};
        case Book::Purchases:
            return {llibre,
                    QStringLiteral("SelIVAs"),
                    QStringLiteral("OrdreIVAs, data, descripcio, NomProveidor, nif, BaseIVA, "
                                   "TipusIVA, IVA, RET, TOTAL, COMPRES, SERVEIS, TRIBUTS, "
                                   "PERSONAL, AMORTITZACIONS, INVERSIONS"),
                    {}};
        case Book::PurchasesVat:
        case Book::Investments:
            return {llibre, QStringLiteral("SelIVAs"), purchases, {}};
        case Book::PurchasesWithholding:
            return {llibre, QStringLiteral("SelIVAs"),
                    QStringLiteral("OrdreGRAL, data, descripcio, NomProveidor, nif, BaseRET, "
                                   "TipusRET, RET, Haber"),
                    QStringLiteral("NomProveidor, Proveidor, data, Apunt")};
        case Book::Provisions:
            return {ctx.exerciseFile(schema::db::Supl),
                    QStringLiteral("SelFras"),
                    QStringLiteral("Ordre, data, descripcio, NomProveidor, NomTipus, TOTAL"),
                    {}};
        case Book::Declaration:
            return {llibre, QStringLiteral("Sel347"),
                    QStringLiteral("Titulo, Codigo, NIF, Nombre, T1, T2, T3, T4, Importe"),
                    QStringLiteral("Lado, Nombre, Codigo")};
    }
    return {};
}

// Columns that hold money (Currency), printed as amounts.
bool moneyColumn(const QString& column) {
    static const QStringList money{
        "BaseIVA", "TipusIVA", "IVA",      "TipusREC",       "REC",        "RET",
        "TOTAL",   "BaseRET",  "TipusRET", "Debe",           "Haber",      "COMPRES",
        "SERVEIS", "TRIBUTS",  "PERSONAL", "AMORTITZACIONS", "INVERSIONS", "T1",
        "T2",      "T3",       "T4",       "Importe"};
    return money.contains(column);
}

}  // namespace

bool prepareBook(const WorkingContext& ctx, Dialogs& dialogs, Book book, BookRequest request) {
    if (book != Book::Declaration && !checkPeriod(ctx, dialogs, request.fromMonth, request.toMonth))
        return false;
    progress(request, 10);
    if (salesSide(book)) request.irpf = book == Book::SalesWithholding;
    if (salesSide(book))
        prepareSalesBook(ctx, request);
    else if (book == Book::Provisions)
        Genera_SelFras_Suplidos(ctx, request.fromMonth, request.toMonth);
    else if (book == Book::Declaration)
        prepareDeclaration(ctx, request);
    else
        preparePurchasesBook(ctx, purchasesBook(book), request);
    progress(request, 60);
    return true;
}

report::ReportResult launchBook(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                                report::ReportOutput* output, Book book, BookRequest request) {
    if (!prepareBook(ctx, dialogs, book, request)) return refused();
    if (salesSide(book)) request.irpf = book == Book::SalesWithholding;
    if (salesSide(book))
        return launch(ctx, dialogs, job, output, request, 6155,
                      [&](ReportJob& j) { fillSalesBook(j, ctx, request); });
    if (book == Book::Provisions)
        return launch(ctx, dialogs, job, output, request, 6508,
                      [&](ReportJob& j) { fillProvisionsBook(j, ctx, request); });
    if (book == Book::Declaration)
        return launch(ctx, dialogs, job, output, request, 6135,
                      [&](ReportJob& j) { fillDeclaration(j, ctx, request.printDate); });
    return launch(ctx, dialogs, job, output, request, 6174,
                  [&](ReportJob& j) { fillPurchasesBook(j, ctx, purchasesBook(book), request); });
}

QStringList bookRows(const WorkingContext& ctx, Book book) {
    const BookColumns c = bookColumns(ctx, book);
    const QStringList columns = c.columns.split(QStringLiteral(", "));
    QStringList lines{columns.join(u'\t')};
    store::Database db = store::Database::open(c.database);
    store::Statement st = db.prepare(
        QStringLiteral("select %1 from %2%3")
            .arg(c.columns, c.view,
                 c.order.isEmpty() ? QString() : QStringLiteral(" order by ") + c.order));
    // What each column is, decided once rather than on every cell.
    enum class Kind { Text, Money, Date };
    std::vector<Kind> kinds;
    for (const QString& c : columns)
        kinds.push_back(moneyColumn(c)                ? Kind::Money
                        : c == QStringLiteral("data") ? Kind::Date
                                                      : Kind::Text);
    const QChar mark = ctx.decimalMark();
    const QString dateFormat = QStringLiteral("dd/MM/yyyy");
    while (st.next()) {
        QString line;
        for (int i = 0; i < static_cast<int>(kinds.size()); ++i) {
            if (i > 0) line += u'\t';
            if (st.isNull(i)) continue;
            switch (kinds[static_cast<std::size_t>(i)]) {
                case Kind::Money:
                    line += st.money(i).format(2, mark);
                    break;
                case Kind::Date:
                    line += st.date(i).toString(dateFormat);
                    break;
                case Kind::Text:
                    line += st.text(i);
                    break;
            }
        }
        lines << line;
    }
    return lines;
}

QStringList bookSummary(const WorkingContext& ctx, Book book) {
    ReportJob job;
    if (tickets(ctx)) return {};
    if (salesSide(book))
        Resum_IVAr(ctx, job);
    else if (book != Book::Provisions && book != Book::Declaration)
        Resum_IVAs(ctx, job);
    QStringList lines;
    for (const QString& text : job.Formulas) {
        if (const auto f = report::parseFormula(text)) lines << f->name + u'\t' + f->value;
    }
    return lines;
}

}  // namespace tallora::books
