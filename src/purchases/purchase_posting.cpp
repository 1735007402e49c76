#include "purchase_posting.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::purchases {
namespace {

using store::Database;
using store::Statement;
using store::Transaction;

const QString kTesorer = QStringLiteral("tesorer");
const QString kCartera = QStringLiteral("cartera");
// movimientos.concepto holds 40 characters; the concept is a label, so it is cut there rather
// than refuse a whole posting over it.
constexpr int kConceptLength = 40;

// An amount field as it goes into a Currency column; Verifica_Apunt has made it a number.
Money stored(const WorkingContext& ctx, const QString& text) {
    if (isEmptyAmount(text)) return {};
    const auto value = Money::parse(text, ctx.decimalMark());
    if (!value) throw store::StoreError(QStringLiteral("Importe incorrecto: ") + text);
    return *value;
}

QString textOf(const QString& text) {
    return text.isNull() ? QStringLiteral("") : text;
}

QDate dateOf(const QString& text) {
    return QDate::fromString(text, QStringLiteral("dd/MM/yyyy"));
}

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
    const QDate date = dateOf(e.lblFecha);
    int n = 0;
    st.bind(++n, stored(ctx, e.txtTotal));
    st.bind(++n, stored(ctx, e.txtBaseIRPF));
    st.bind(++n, stored(ctx, e.txtTipus));
    st.bind(++n, stored(ctx, e.txtRetencio));
    for (std::size_t i = 0; i < 4; ++i) {
        st.bind(++n, stored(ctx, e.txtBase[i]));
        st.bind(++n, stored(ctx, e.txtIVA[i]));
    }
    st.bind(++n, supplierOf(e));
    st.bind(++n, textOf(e.txtProveidor));
    st.bind(++n, invoiceText(e));
    st.bind(++n, date);
    st.bind(++n, account.Grup);
    st.bind(++n, textOf(account.NomGrup));
    st.bind(++n, account.Compte);
    st.bind(++n, textOf(account.NomCompte));
    st.bind(++n, stored(ctx, e.txtexempta));
    st.bind(++n, Periode(date));
    // Venciment holds the entry's date: the due date lives in the portfolio only.
    st.bind(++n, date);
    st.bind(++n, paid);
    st.bind(++n, textOf(e.clasificacion));
    return n + 1;
}

void insertPurchase(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                    const ExpenseAccount& account, std::int64_t ordre, bool paid) {
    const QStringList columns = purchaseColumns() + QStringList{"Ordre", "TipusIva1", "TipusIva2",
                                                                "TipusIva3", "TipusIva4"};
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i) marks << QStringLiteral("?");
    auto st =
        db.prepare(QStringLiteral("insert into FrasIN (%1) values (%2)")
                       .arg(columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", "))));
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

// A purchase paid at once: the money leaves the account, always on the H side.
void insertMovement(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                    std::int64_t entitat, std::int64_t ordre) {
    db.prepare(QStringLiteral("insert into %1.movimientos (data, entidad, proveedor, FrasIn, "
                              "concepto, D, H) values (?, ?, ?, ?, ?, ?, ?)")
                   .arg(kTesorer))
        .bind(1, dateOf(e.lblFecha))
        .bind(2, entitat)
        .bind(3, supplierOf(e))
        .bind(4, ordre)
        .bind(5, (QStringLiteral("S/Fra. ") + invoiceText(e)).left(kConceptLength))
        .bind(6, Money{})
        .bind(7, stored(ctx, e.txtTotal))
        .execute();
}

void insertReceipt(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                   std::int64_t ordre) {
    db.prepare(QStringLiteral("insert into %1.cartera (data, proveedor, In_Out, Ejercicio, "
                              "Factura, total, FrasIn, Vencimiento) values "
                              "(?, ?, 'In', ?, ?, ?, ?, ?)")
                   .arg(kCartera))
        .bind(1, dateOf(e.lblFecha))
        .bind(2, supplierOf(e))
        .bind(3, ctx.Exercici)
        .bind(4, invoiceText(e))
        .bind(5, stored(ctx, e.txtTotal))
        .bind(6, ordre)
        .bind(7, e.venciment)
        .execute();
}

// The portfolio holds every exercise of the company and FrasIN numbers restart each year:
// a receipt is found by its number within the exercise, or another year's receipt of the
// same number would be touched.
void deleteReceipts(const WorkingContext& ctx, Database& db, std::int64_t ordre) {
    db.prepare(QStringLiteral("delete from %1.cartera where FrasIn = ? and FrasIn <> 0 "
                              "and Ejercicio = ?")
                   .arg(kCartera))
        .bind(1, ordre)
        .bind(2, ctx.Exercici)
        .execute();
}

void deleteMovements(Database& db, std::int64_t ordre) {
    db.prepare(QStringLiteral("delete from %1.movimientos where FrasIn = ? and FrasIn <> 0")
                   .arg(kTesorer))
        .bind(1, ordre)
        .execute();
}

// A purchase settled in a payment run keeps its money rows. Its receipt follows the change;
// the movements renamed are those of the sale numbered as the screen's last new entry
// (FrasOut = screenOrdre), never the purchase's own payments. The screen has always done so
// and the books are built on it, so it is kept.
void rewriteSettled(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                    std::int64_t ordre, std::int64_t screenOrdre) {
    db.prepare(QStringLiteral("update %1.cartera set data = ?, proveedor = ?, Factura = ?, "
                              "total = ?, Vencimiento = ? where FrasIn = ? and Ejercicio = ?")
                   .arg(kCartera))
        .bind(1, dateOf(e.lblFecha))
        .bind(2, supplierOf(e))
        .bind(3, invoiceText(e))
        .bind(4, stored(ctx, e.txtTotal))
        .bind(5, e.venciment)
        .bind(6, ordre)
        .bind(7, ctx.Exercici)
        .execute();
    db.prepare(QStringLiteral("update %1.movimientos set proveedor = ?, concepto = ? "
                              "where FrasOut = ? and FrasOut <> 0")
                   .arg(kTesorer))
        .bind(1, supplierOf(e))
        .bind(2, invoiceText(e).left(kConceptLength))
        .bind(3, screenOrdre)
        .execute();
}

void rewriteMoneyRows(const WorkingContext& ctx, Database& db, const PurchaseEntry& e,
                      std::optional<std::int64_t> entitat, std::int64_t ordre,
                      std::int64_t screenOrdre) {
    if (entitat) {
        deleteMovements(db, ordre);
        insertMovement(ctx, db, e, *entitat, ordre);
        deleteReceipts(ctx, db, ordre);
    } else if (e.entitat == QStringLiteral("Marca")) {
        rewriteSettled(ctx, db, e, ordre, screenOrdre);
    } else {
        deleteMovements(db, ordre);
        deleteReceipts(ctx, db, ordre);
        insertReceipt(ctx, db, e, ordre);
    }
}

Database openPosting(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    if (ctx.Tesoreria) {
        db.attach(ctx.exerciseFile(schema::db::Tesorer), kTesorer);
        db.attach(ctx.companyFile(schema::db::Cartera), kCartera);
    }
    return db;
}

std::int64_t nextOrdre(Database& db) {
    auto st = db.prepare(QStringLiteral("select Ordre from FrasIN order by Ordre desc"));
    return st.next() ? st.int64(0) + 1 : 1;
}

}  // namespace

std::optional<std::int64_t> treasuryAccount(const WorkingContext& ctx, const PurchaseEntry& e) {
    if (!ctx.Tesoreria) return std::nullopt;
    if (e.entitat.isEmpty() || e.entitat == QStringLiteral("Marca")) return std::nullopt;
    return e.entitatId;
}

PostingResult GrabaApunt(const WorkingContext& ctx, PurchaseEntry& entry,
                         const ExpenseAccount& account, std::int64_t screenOrdre) {
    PurchaseEntry e = entry;
    Neteja_Text(e.txtProveidor);
    Neteja_Text(e.txtDespesa);
    Neteja_Text(e.txtdescripcio);
    const auto entitat = treasuryAccount(ctx, e);
    PostingResult result;
    try {
        Database db = openPosting(ctx);
        Transaction tx(db, Transaction::Kind::Immediate);
        if (e.isNew()) {
            result.ordre = nextOrdre(db);
            if (e.txtdescripcio == QStringLiteral("-"))
                e.txtdescripcio = QString::number(result.ordre);
            insertPurchase(ctx, db, e, account, result.ordre, entitat.has_value());
            result.affected = db.changes();
            if (ctx.Tesoreria) {
                if (entitat)
                    insertMovement(ctx, db, e, *entitat, result.ordre);
                else
                    insertReceipt(ctx, db, e, result.ordre);
            }
        } else {
            result.ordre = e.lblOrdre.toLongLong();
            result.affected =
                updatePurchase(ctx, db, e, account, result.ordre, entitat.has_value());
            // An entry that is no longer there takes no money rows either.
            if (result.affected != 1) return result;
            if (ctx.Tesoreria) rewriteMoneyRows(ctx, db, e, entitat, result.ordre, screenOrdre);
        }
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
