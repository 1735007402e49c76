#include "ledger_reports.h"

#include "book_formulas.h"
#include "context/working_context.h"
#include "ledgers.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::books {
namespace {

using report::ReportJob;

bool partyLedger(const LedgerRequest& r) {
    return r.ledger && (r.extract == Extract::Suppliers || r.extract == Extract::Customers);
}

// The titles of the ledgers and the lists of customers' invoices.
void partyTitles(Formulas& f) {
    f.message("lbl_tit_orden", 6117)
        .message("lbl_tit_fecha", 6118)
        .message("lbl_tit_naturalesa", 6129)
        .message("lbl_tit_facturas", 6121)
        .message("lbl_tit_num_facturas", 6122);
}

// The titles of the lists of purchases.
void purchaseTitles(Formulas& f) {
    f.message("lbl_tit_fecha", 6118)
        .message("lbl_tit_descripcion", 6120)
        .message("lbl_tit_facturas", 6121)
        .message("lbl_tit_num_facturas", 6122)
        .message("lbl_total_neto", 6637)
        .message("lbl_total_facturas", 6638)
        .message("lbl_neto", 6639);
}

}  // namespace

void prepareLedger(const WorkingContext& ctx, const LedgerRequest& r) {
    switch (r.extract) {
        case Extract::Expenses:
            Filtra_FrasIN(ctx, std::nullopt);
            return;
        case Extract::Sales:
            Filtra_FrasOUT(ctx, std::nullopt);
            return;
        case Extract::Suppliers:
            if (!r.ledger)
                Filtra_FrasIN(ctx, r.party);
            else if (ctx.Tesoreria)
                Genera_Mayor_Proveidors(ctx, r.party);
            return;
        case Extract::Customers:
            if (!r.ledger)
                Filtra_FrasOUT(ctx, r.party);
            else if (ctx.Tesoreria)
                Genera_Mayor_Clients(ctx, r.party);
            return;
    }
}

void fillLedger(ReportJob& job, const WorkingContext& ctx, const LedgerRequest& r) {
    Formulas f(job, ctx);
    f.text("Nom", ctx.EmpresaNom)
        .message("lbl_titulo", r.extract == Extract::Expenses ? 6115 : 6124)
        .text("lbl_fecha", printDate(r.printDate))
        .message("lbl_pagina", 6113);
    if (partyLedger(r)) {
        job.ReportFileName = report::reportFile(ctx, QStringLiteral("majorcl2.rpt"));
        job.DataFiles[0] = ctx.exerciseFile(schema::db::Tesorer);
        f.message("lbl_debe", 6911).message("lbl_haber", 6912);
        partyTitles(f);
        return;
    }
    switch (r.extract) {
        case Extract::Customers:
            job.ReportFileName = report::reportFile(ctx, QStringLiteral("majorcli.rpt"));
            job.DataFiles[0] = ctx.exerciseFile(schema::db::FrasOut);
            f.message("lbl_titulo_gral", 6133);
            partyTitles(f);
            return;
        case Extract::Suppliers:
            job.ReportFileName = report::reportFile(ctx, QStringLiteral("majorpro.rpt"));
            job.DataFiles[0] = ctx.exerciseFile(schema::db::FrasIn);
            f.message("lbl_titulo_gral", 6128)
                .message("lbl_tit_orden", 6117)
                .message("lbl_naturaleza", 6129)
                .message("lbl_tit_grupo_gasto", 6130);
            purchaseTitles(f);
            return;
        case Extract::Expenses:
            job.ReportFileName = report::reportFile(ctx, QStringLiteral("majordes.rpt"));
            job.DataFiles[0] = ctx.exerciseFile(schema::db::FrasIn);
            f.message("lbl_titulo_gral", 6116)
                .message("lbl_tit_ordre", 6117)
                .message("lbl_tit_proveedor", 6119);
            purchaseTitles(f);
            return;
        case Extract::Sales:
            job.ReportFileName = report::reportFile(ctx, QStringLiteral("majorven.rpt"));
            job.DataFiles[0] = ctx.exerciseFile(schema::db::FrasOut);
            f.message("lbl_titulo_gral", 6125)
                .message("lbl_tit_orden", 6117)
                .message("lbl_tit_fecha", 6118)
                .message("lbl_tit_cliente", 6126)
                .message("lbl_tit_facturas", 6121)
                .message("lbl_tit_num_facturas", 6122)
                .message("lbl_net", 6980)
                .message("lbl_total_net", 6981)
                .message("lbl_total_neto_grup", 6981);
            return;
    }
}

report::ReportResult launchLedger(const WorkingContext& ctx, Dialogs& dialogs, ReportJob& job,
                                  report::ReportOutput* output, const LedgerRequest& r) {
    prepareLedger(ctx, r);
    return report::runReport(ctx, dialogs, job, output, r.print,
                             Missatge(ctx, r.extract == Extract::Expenses ? 6115 : 6124),
                             [&](ReportJob& j) { fillLedger(j, ctx, r); });
}

QStringList ledgerRows(const WorkingContext& ctx, const LedgerRequest& r) {
    prepareLedger(ctx, r);
    const QChar mark = ctx.decimalMark();
    const auto money = [mark](const store::Statement& st, int i) {
        return st.money(i).format(2, mark);
    };
    const auto date = [](const store::Statement& st, int i) { return printDate(st.date(i)); };
    QStringList lines;
    if (partyLedger(r)) {
        lines << QStringLiteral(
            "cuenta\tnombrecuenta\tdata\tcontrapartida\tdocumento\tD\tH\tsaldo");
        store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Tesorer));
        auto st =
            db.prepare(QStringLiteral("select cuenta, nombrecuenta, data, contrapartida, "
                                      "documento, D, H, saldo from mayor "
                                      "order by cuenta asc, data asc, Id asc"));
        while (st.next())
            lines << QStringList{st.text(0), st.text(1),   date(st, 2),  st.text(3),
                                 st.text(4), money(st, 5), money(st, 6), money(st, 7)}
                         .join(u'\t');
        return lines;
    }
    const bool sales = r.extract == Extract::Sales || r.extract == Extract::Customers;
    const QString party = sales ? QStringLiteral("Client") : QStringLiteral("Proveidor");
    const QString name = sales ? QStringLiteral("NomClient") : QStringLiteral("NomProveidor");
    const QString order = r.extract == Extract::Sales ? QStringLiteral("NomCompte, data, Ordre")
                          : r.extract == Extract::Expenses
                              ? QStringLiteral("Grup, NomCompte, data, Ordre")
                              : party + QStringLiteral(", data, Ordre");
    lines << QStringLiteral("Ordre\tdata\t%1\t%2\tDescripcio\tGrup\tNomCompte\tTOTAL")
                 .arg(party, name);
    store::Database db =
        store::Database::open(ctx.exerciseFile(sales ? schema::db::FrasOut : schema::db::FrasIn));
    auto st = db.prepare(QStringLiteral("select Ordre, data, %1, %2, Descripcio, Grup, NomCompte, "
                                        "TOTAL from SelFras order by %3")
                             .arg(party, name, order));
    while (st.next())
        lines << QStringList{st.text(0), date(st, 1), st.text(2), st.text(3),
                             st.text(4), st.text(5),  st.text(6), money(st, 7)}
                     .join(u'\t');
    return lines;
}

}  // namespace tallora::books
