#include "purchase_posting.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"
#include "store/sql_text.h"

namespace tallora::purchases {
namespace {

using store::Database;
using store::Statement;
using store::Transaction;

using schema::captionDate;
using schema::kPurchaseSide;
using schema::storedAmount;
using schema::storedText;

QString invoiceText(const PurchaseEntry& e) {
    return e.txtdescripcio + e.cmbSerie;
}

std::int64_t supplierOf(const PurchaseEntry& e) {
    return e.supplierNumber.value_or(0);
}

// The columns a posting and a change both write, in the order bindPurchase binds them. The
// rates (TipusIva1..4) are not among them: only a new entry writes them, and a posted entry
// keeps the rates it was posted with.
const QStringList& purchaseColumns() {
    static const QStringList columns{
        "TOTAL",   "BaseIRPF", "TipusIRPF", "Retencio",     "Base1",
        "Iva1",    "Base2",    "Iva2",      "Base3",        "Iva3",
        "Base4",   "Iva4",     "Proveidor", "NomProveidor", "descripcio",
        "data",    "Grup",     "NomGrup",   "Compte",       "NomCompte",
        "Exempta", "Periode",  "Venciment", "pagada",       "Clasificacion"};
    return columns;
}

int bindPurchase(const WorkingContext& ctx, Statement& st, const PurchaseEntry& e,
                 const ExpenseAccount& account, bool paid) {
    const QDate date = captionDate(e.lblFecha);
    int n = 0;
    st.bind(++n, storedAmount(ctx, e.txtTotal));
    st.bind(++n, storedAmount(ctx, e.txtBaseIRPF));
    st.bind(++n, storedAmount(ctx, e.txtTipus));
    st.bind(++n, storedAmount(ctx, e.txtRetencio));
    for (std::size_t i = 0; i < 4; ++i) {
        st.bind(++n, storedAmount(ctx, e.txtBase[i]));
        st.bind(++n, storedAmount(ctx, e.txtIVA[i]));
    }
    st.bind(++n, supplierOf(e));
    st.bind(++n, storedText(e.txtProveidor));
    st.bind(++n, invoiceText(e));
    st.bind(++n, date);
    st.bind(++n, account.Grup);
    st.bind(++n, storedText(account.NomGrup));
    st.bind(++n, account.Compte);
    st.bind(++n, storedText(account.NomCompte));
    st.bind(++n, storedAmount(ctx, e.txtexempta));
    st.bind(++n, Periode(date));
    // Venciment holds the entry's date: the due date lives in the portfolio only.
    st.bind(++n, date);
    st.bind(++n, paid);
    st.bind(++n, storedText(e.clasificacion));
    return n + 1;
}

void insertPurchase(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                    const ExpenseAccount& account, std::int64_t ordre, bool paid) {
    const QStringList columns = purchaseColumns() + QStringList{"Ordre", "TipusIva1", "TipusIva2",
                                                                "TipusIva3", "TipusIva4"};
    auto st = db.prepare(store::insertInto(QStringLiteral("FrasIN"), columns));
    int n = bindPurchase(ctx, st, e, account, paid);
    st.bind(n++, ordre);
    // All four rates of the moment, also where base and quota are 0.
    for (double rate : ctx.TipusIVAs) st.bind(n++, Money::fromDouble(rate));
    st.execute();
}

int updatePurchase(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                   const ExpenseAccount& account, std::int64_t ordre, bool paid) {
    auto st = db.prepare(QStringLiteral("update FrasIN set %1 = ? where Ordre = ?")
                             .arg(purchaseColumns().join(QStringLiteral(" = ?, "))));
    const int n = bindPurchase(ctx, st, e, account, paid);
    st.bind(n, ordre);
    return st.execute();
}

schema::MoneyRow moneyRow(const WorkingContext& ctx, const PurchaseEntry& e) {
    return {captionDate(e.lblFecha), supplierOf(e), invoiceText(e), storedAmount(ctx, e.txtTotal),
            e.venciment};
}

// A purchase settled in a payment run keeps its money rows. Its receipt follows the change;
// the movements renamed are those of the sale numbered as the screen's last new entry
// (FrasOut = screenOrdre), never the purchase's own payments. The screen has always done so
// and the books are built on it, so it is kept.
void rewriteSettled(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                    std::int64_t ordre, std::int64_t screenOrdre) {
    schema::updateReceipt(db, ctx, kPurchaseSide, moneyRow(ctx, e), ordre);
    db.prepare(QStringLiteral("update tesorer.movimientos set proveedor = ?, concepto = ? "
                              "where FrasOut = ? and FrasOut <> 0"))
        .bind(1, supplierOf(e))
        .bind(2, invoiceText(e).left(schema::kConceptLength))
        .bind(3, screenOrdre)
        .execute();
}

void rewriteMoneyRows(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                      std::optional<std::int64_t> entitat, std::int64_t ordre,
                      std::int64_t screenOrdre) {
    if (entitat) {
        schema::deleteMovements(db, kPurchaseSide, ordre);
        schema::insertMovement(db, kPurchaseSide, moneyRow(ctx, e), *entitat, ordre);
        schema::deleteReceipts(db, ctx, kPurchaseSide, ordre);
    } else if (e.entitat == QStringLiteral("Marca")) {
        rewriteSettled(ctx, db, e, ordre, screenOrdre);
    } else {
        schema::deleteMovements(db, kPurchaseSide, ordre);
        schema::deleteReceipts(db, ctx, kPurchaseSide, ordre);
        schema::insertReceipt(db, ctx, kPurchaseSide, moneyRow(ctx, e), ordre);
    }
}

// The writes of one posting; `result` is filled as they go, so that a fault still leaves the
// number taken in it.
void writePurchase(const WorkingContext& ctx, Database& db, PurchaseEntry& e,
                   const ExpenseAccount& account, std::int64_t screenOrdre, PostingResult& result) {
    Neteja_Text(e.txtProveidor);
    Neteja_Text(e.txtDespesa);
    Neteja_Text(e.txtdescripcio);
    const auto entitat = treasuryAccount(ctx, e);
    if (e.isNew()) {
        result.ordre = nextOrdre(db, QStringLiteral("FrasIN"));
        if (e.txtdescripcio == QStringLiteral("-")) e.txtdescripcio = QString::number(result.ordre);
        insertPurchase(ctx, db, e, account, result.ordre, entitat.has_value());
        result.affected = db.changes();
        if (ctx.Tesoreria) {
            if (entitat)
                schema::insertMovement(db, kPurchaseSide, moneyRow(ctx, e), *entitat, result.ordre);
            else
                schema::insertReceipt(db, ctx, kPurchaseSide, moneyRow(ctx, e), result.ordre);
        }
    } else {
        result.ordre = e.lblOrdre.toLongLong();
        result.affected = updatePurchase(ctx, db, e, account, result.ordre, entitat.has_value());
        // An entry that is no longer there takes no money rows either.
        if (result.affected != 1) return;
        if (ctx.Tesoreria) rewriteMoneyRows(ctx, db, e, entitat, result.ordre, screenOrdre);
    }
}

}  // namespace

Database openPosting(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    if (ctx.Tesoreria) {
        db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("tesorer"));
        db.attach(ctx.companyFile(schema::db::Cartera), QStringLiteral("cartera"));
    }
    return db;
}

std::optional<std::int64_t> treasuryAccount(const WorkingContext& ctx, const PurchaseEntry& e) {
    if (!ctx.Tesoreria) return std::nullopt;
    if (e.entitat.isEmpty() || e.entitat == QStringLiteral("Marca")) return std::nullopt;
    return e.entitatId;
}

PostingResult postPurchase(const WorkingContext& ctx, Database& db, PurchaseEntry& entry,
                           const ExpenseAccount& account, std::int64_t screenOrdre) {
    PostingResult result;
    writePurchase(ctx, db, entry, account, screenOrdre, result);
    return result;
}

PostingResult GrabaApunt(const WorkingContext& ctx, PurchaseEntry& entry,
                         const ExpenseAccount& account, std::int64_t screenOrdre) {
    PurchaseEntry e = entry;
    PostingResult result;
    try {
        Database db = openPosting(ctx);
        Transaction tx(db, Transaction::Kind::Immediate);
        writePurchase(ctx, db, e, account, screenOrdre, result);
        if (!e.isNew() && result.affected != 1) return result;
        tx.commit();
    } catch (const store::StoreError& error) {
        result.affected = 0;
        result.error = error.message();
        return result;
    }
    entry = e;
    return result;
}

}  // namespace tallora::purchases
