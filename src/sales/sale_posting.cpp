#include "sale_posting.h"

#include "billing_document.h"
#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"
#include "store/sql_text.h"
#include "verifactu/record_chain.h"
#include "verifactu/record_file.h"

namespace tallora::sales {
namespace {

using store::Database;
using store::Statement;
using store::Transaction;

const QString kFact = QStringLiteral("fact");
using schema::captionDate;
using schema::kSaleSide;
using schema::storedAmount;
using schema::storedText;

QString invoiceText(const SaleEntry& e) {
    return e.txtdescripcio + e.cmbSerie;
}

std::int64_t customerNumber(const WorkingContext& ctx, const SaleEntry& e) {
    return isTickets(ctx) ? 0 : e.clientNumber.value_or(0);
}

std::int64_t highestOrdre(Database& db) {
    auto st = db.prepare(QStringLiteral("select Ordre from FrasOut order by Ordre desc"));
    return st.next() ? st.int64(0) : 0;
}

// With the billing option the counter is a hint and FrasOut decides: a number taken by hand
// above the counter is passed over.
std::int64_t billingOrdre(const WorkingContext& ctx, Database& db, const QString& fact) {
    auto counter = db.prepare(QStringLiteral("select FrasOut from %1.Numeracion_Documentos "
                                             "where Ejercicio = ?")
                                  .arg(fact));
    counter.bind(1, std::int64_t{ctx.Exercici.toLongLong()});
    std::int64_t number = counter.next() ? counter.int64(0) + 1 : 1;
    if (number < 1) number = 1;
    auto taken = db.prepare(QStringLiteral("select Ordre from FrasOut where Ordre = ?"));
    for (;; ++number) {
        taken.reset();
        taken.bind(1, number);
        if (!taken.next()) return number;
    }
}

std::int64_t nextOrdre(const WorkingContext& ctx, Database& db, const QString& fact) {
    return ctx.Facturacio ? billingOrdre(ctx, db, fact) : highestOrdre(db) + 1;
}

// Verifica_Numeracion inside the posting: a document always finds its counter row.
void ensureCounter(const WorkingContext& ctx, Database& db) {
    db.prepare(QStringLiteral("insert into %1.Numeracion_Documentos (Ejercicio) select ? where "
                              "not exists (select 1 from %1.Numeracion_Documentos where "
                              "Ejercicio = ?)")
                   .arg(kFact))
        .bind(1, std::int64_t{ctx.Exercici.toLongLong()})
        .bind(2, std::int64_t{ctx.Exercici.toLongLong()})
        .execute();
}

// Every typed text passes the sanitiser before it is written: the description too, which
// reaches FrasOut, the treasury movement and the receipt.
void sanitise(SaleEntry& e) {
    Neteja_Text(e.txtClient);
    Neteja_Text(e.txtTipus);
    Neteja_Text(e.txtdescripcio);
    for (QString& line : e.concepte) Neteja_Text(line);
}

// The columns a posting and a change both write, in the order bindSale binds them.
const QStringList& saleColumns() {
    static const QStringList columns{
        "total",     "baseirpf",  "tipusirpf",    "retencio", "base1",     "iva1",      "re1",
        "base2",     "iva2",      "re2",          "base3",    "iva3",      "re3",       "client",
        "nomclient", "direccio",  "poblacio",     "NIF",      "concepte1", "concepte2", "concepte3",
        "concepte4", "concepte5", "descripcio",   "data",     "Grup",      "NomGrup",   "Compte",
        "NomCompte", "Cobrada",   "Clasificacion"};
    return columns;
}

// Binds the values of saleColumns() from position 1; gives the next position.
int bindSale(const WorkingContext& ctx, Statement& st, const SaleEntry& e,
             const SalesAccount& account, bool collected) {
    int n = 0;
    st.bind(++n, storedAmount(ctx, e.txtTotal));
    st.bind(++n, storedAmount(ctx, e.txtBaseIRPF));
    st.bind(++n, storedAmount(ctx, e.Text1));
    st.bind(++n, storedAmount(ctx, e.txtRetencio));
    for (std::size_t i = 0; i < 3; ++i) {
        st.bind(++n, storedAmount(ctx, e.txtBase[i]));
        st.bind(++n, storedAmount(ctx, e.txtIVA[i]));
        st.bind(++n, storedAmount(ctx, e.txtRE[i]));
    }
    st.bind(++n, customerNumber(ctx, e));
    st.bind(++n, storedText(e.txtClient));
    st.bind(++n, storedText(e.rebutDomicili));
    st.bind(++n, storedText(e.rebutPoblacio));
    st.bind(++n, storedText(e.rebutNif));
    for (const QString& line : e.concepte) st.bind(++n, storedText(line));
    st.bind(++n, invoiceText(e));
    st.bind(++n, captionDate(e.lblFecha));
    st.bind(++n, account.Grup);
    st.bind(++n, storedText(account.NomGrup));
    st.bind(++n, account.Compte);
    st.bind(++n, storedText(account.NomCompte));
    st.bind(++n, collected);
    st.bind(++n, storedText(e.clasificacion));
    return n + 1;
}

// A new sale also takes its number and the context's rates, which it keeps for good.
void insertSale(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                const SalesAccount& account, std::int64_t ordre, bool collected) {
    const QStringList columns =
        saleColumns() + QStringList{"Ordre", "Tiva1", "Tre1", "Tiva2", "Tre2", "Tiva3", "Tre3"};
    auto st = db.prepare(store::insertInto(QStringLiteral("frasout"), columns));
    int n = bindSale(ctx, st, e, account, collected);
    st.bind(n++, ordre);
    for (std::size_t i = 0; i < 3; ++i) {
        st.bind(n++, Money::fromDouble(ctx.TipusIVA[i]));
        st.bind(n++, Money::fromDouble(ctx.TipusRE[i]));
    }
    st.execute();
}

int updateSale(const WorkingContext& ctx, Database& db, const SaleEntry& e,
               const SalesAccount& account, std::int64_t ordre, bool collected) {
    // The rates (Tiva, Tre) are left out on purpose: a posted sale keeps the rates it was
    // posted with, whatever the configuration says now.
    auto st = db.prepare(QStringLiteral("update frasout set %1 = ? where Ordre = ?")
                             .arg(saleColumns().join(QStringLiteral(" = ?, "))));
    const int n = bindSale(ctx, st, e, account, collected);
    st.bind(n, ordre);
    return st.execute();
}

schema::MoneyRow moneyRow(const WorkingContext& ctx, const SaleEntry& e) {
    return {captionDate(e.lblFecha), customerNumber(ctx, e), invoiceText(e),
            storedAmount(ctx, e.txtTotal), e.venciment};
}

// A sale settled in a collection run keeps its money rows; only names and texts follow
// the change, and the movement's concept loses its "N/Fra. " prefix.
void rewriteSettled(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                    std::int64_t ordre) {
    schema::updateReceipt(db, ctx, kSaleSide, moneyRow(ctx, e), ordre);
    db.prepare(QStringLiteral("update tesorer.movimientos set cliente = ?, concepto = ? "
                              "where FrasOut = ? and FrasOut <> 0"))
        .bind(1, customerNumber(ctx, e))
        .bind(2, invoiceText(e).left(schema::kConceptLength))
        .bind(3, ordre)
        .execute();
}

void rewriteMoneyRows(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                      std::optional<std::int64_t> entitat, std::int64_t ordre) {
    const bool settled = e.entitat == QStringLiteral("Marca");
    if (entitat && !settled) {
        schema::deleteMovements(db, kSaleSide, ordre);
        schema::insertMovement(db, kSaleSide, moneyRow(ctx, e), *entitat, ordre);
        schema::deleteReceipts(db, ctx, kSaleSide, ordre);
    } else if (!entitat && settled) {
        rewriteSettled(ctx, db, e, ordre);
    } else {
        schema::deleteMovements(db, kSaleSide, ordre);
        schema::deleteReceipts(db, ctx, kSaleSide, ordre);
        schema::insertReceipt(db, ctx, kSaleSide, moneyRow(ctx, e), ordre);
    }
}

// The writes of one posting; `result` is filled as they go, so that a fault still leaves the
// number taken in it.
// A document other than an invoice writes only its own rows: its number is the one it was
// loaded with when saved again as the same type, otherwise the next of its type.
void writeOtherDocument(const WorkingContext& ctx, Database& db, SaleEntry& e,
                        const SalesAccount& account, PostingResult& result) {
    const DocType type = e.billing.type;
    if (e.billing.loadedAs == type) {
        result.ordre = e.lblOrdre.toLongLong();
    } else {
        result.ordre = nextDocumentNumber(ctx, db, type, kFact);
        e.txtdescripcio = QString::number(result.ordre);
    }
    Graba_Document(ctx, db, e, account.Compte, account.NomCompte, result.ordre, kFact);
    result.affected = 1;
}

void writeSale(const WorkingContext& ctx, Database& db, SaleEntry& e, const SalesAccount& account,
               PostingResult& result) {
    sanitise(e);
    if (ctx.Facturacio) {
        // With billing the amounts follow from the bases, whatever was typed over them.
        Recalcula_Apunt(ctx, e, e.reEnabled);
        ensureCounter(ctx, db);
    }
    if (ctx.Facturacio && e.billing.type != DocType::Factura) {
        writeOtherDocument(ctx, db, e, account, result);
        return;
    }
    const auto entitat = treasuryAccount(ctx, e);
    if (e.newInvoice()) {
        result.ordre = nextOrdre(ctx, db, kFact);
        // With billing, an invoice made from another document takes its number as description.
        if (e.txtdescripcio == QStringLiteral("-") || (ctx.Facturacio && !e.lblOrdre.isEmpty()))
            e.txtdescripcio = QString::number(result.ordre);
        insertSale(ctx, db, e, account, result.ordre, entitat.has_value());
        result.affected = db.changes();
        if (ctx.Tesoreria) {
            if (entitat)
                schema::insertMovement(db, kSaleSide, moneyRow(ctx, e), *entitat, result.ordre);
            else
                schema::insertReceipt(db, ctx, kSaleSide, moneyRow(ctx, e), result.ordre);
        }
    } else {
        result.ordre = e.lblOrdre.toLongLong();
        result.affected = updateSale(ctx, db, e, account, result.ordre, entitat.has_value());
        // A sale that is no longer there takes no money rows either.
        if (result.affected != 1) return;
        if (ctx.Tesoreria) rewriteMoneyRows(ctx, db, e, entitat, result.ordre);
    }
    if (ctx.Facturacio)
        Graba_Document(ctx, db, e, account.Compte, account.NomCompte, result.ordre, kFact);
    // The invoice's legal record, from the row just written, in the same transaction.
    verifactu::recordSale(ctx, db, result.ordre);
}

// The files of a posting without the record file: enough to read the next number.
Database openPostingFiles(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    if (ctx.Tesoreria) {
        db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("tesorer"));
        db.attach(ctx.companyFile(schema::db::Cartera), QStringLiteral("cartera"));
    }
    if (ctx.Facturacio) db.attach(ctx.companyFile(schema::db::Fact), kFact);
    return db;
}

}  // namespace

Database openPosting(const WorkingContext& ctx) {
    Database db = openPostingFiles(ctx);
    verifactu::attachRecords(ctx, db);
    return db;
}

std::optional<std::int64_t> treasuryAccount(const WorkingContext& ctx, const SaleEntry& e) {
    if (!ctx.Tesoreria) return std::nullopt;
    if (e.entitat.isEmpty() || e.entitat == QStringLiteral("Marca")) return std::nullopt;
    return e.entitatId;
}

std::int64_t Seguent_Ordre(const WorkingContext& ctx) {
    Database db = openPostingFiles(ctx);
    return nextOrdre(ctx, db, kFact);
}

PostingResult postSale(const WorkingContext& ctx, Database& db, SaleEntry& entry,
                       const SalesAccount& account) {
    PostingResult result;
    writeSale(ctx, db, entry, account, result);
    return result;
}

PostingResult GrabaApunt(const WorkingContext& ctx, SaleEntry& entry, const SalesAccount& account) {
    SaleEntry e = entry;
    PostingResult result;
    try {
        Database db = openPosting(ctx);
        Transaction tx(db, Transaction::Kind::Immediate);
        writeSale(ctx, db, e, account, result);
        if (e.isChange() && result.affected != 1) return result;
        tx.commit();
    } catch (const store::StoreError& error) {
        result.affected = 0;
        result.error = error.message();
        return result;
    }
    entry = e;
    return result;
}

}  // namespace tallora::sales
