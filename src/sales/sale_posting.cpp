#include "sale_posting.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::sales {
namespace {

using store::Database;
using store::Statement;
using store::Transaction;

const QString kTesorer = QStringLiteral("tesorer");
const QString kCartera = QStringLiteral("cartera");
const QString kFact = QStringLiteral("fact");
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

// An empty caption is stored as an empty text, not as a missing value.
QString textOf(const QString& text) {
    return text.isNull() ? QStringLiteral("") : text;
}

QDate dateOf(const QString& text) {
    return QDate::fromString(text, QStringLiteral("dd/MM/yyyy"));
}

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

void sanitise(SaleEntry& e) {
    Neteja_Text(e.txtClient);
    Neteja_Text(e.txtTipus);
    for (QString& line : e.concepte) Neteja_Text(line);
}

// The columns a posting and a change both write, in the order bindSale binds them.
const QStringList& saleColumns() {
    static const QStringList columns{
        "total",     "baseirpf",  "tipusirpf", "retencio",  "base1",      "iva1",
        "re1",       "base2",     "iva2",      "re2",       "base3",      "iva3",
        "re3",       "client",    "nomclient", "direccio",  "poblacio",   "NIF",
        "concepte1", "concepte2", "concepte3", "concepte4", "concepte5",  "descripcio",
        "data",      "Grup",      "NomGrup",   "Compte",    "NomCompte",  "Cobrada",
        "Clasificacion"};
    return columns;
}

// Binds the values of saleColumns() from position 1; gives the next position.
int bindSale(const WorkingContext& ctx, Statement& st, const SaleEntry& e,
             const SalesAccount& account, bool collected) {
    int n = 0;
    st.bind(++n, stored(ctx, e.txtTotal));
    st.bind(++n, stored(ctx, e.txtBaseIRPF));
    st.bind(++n, stored(ctx, e.Text1));
    st.bind(++n, stored(ctx, e.txtRetencio));
    for (std::size_t i = 0; i < 3; ++i) {
        st.bind(++n, stored(ctx, e.txtBase[i]));
        st.bind(++n, stored(ctx, e.txtIVA[i]));
        st.bind(++n, stored(ctx, e.txtRE[i]));
    }
    st.bind(++n, customerNumber(ctx, e));
    st.bind(++n, textOf(e.txtClient));
    st.bind(++n, textOf(e.rebutDomicili));
    st.bind(++n, textOf(e.rebutPoblacio));
    st.bind(++n, textOf(e.rebutNif));
    for (const QString& line : e.concepte) st.bind(++n, textOf(line));
    st.bind(++n, invoiceText(e));
    st.bind(++n, dateOf(e.lblFecha));
    st.bind(++n, account.Grup);
    st.bind(++n, textOf(account.NomGrup));
    st.bind(++n, account.Compte);
    st.bind(++n, textOf(account.NomCompte));
    st.bind(++n, collected);
    st.bind(++n, textOf(e.clasificacion));
    return n + 1;
}

// A new sale also takes its number and the context's rates, which it keeps for good.
void insertSale(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                const SalesAccount& account, std::int64_t ordre, bool collected) {
    const QStringList columns =
        saleColumns() + QStringList{"Ordre", "Tiva1", "Tre1", "Tiva2", "Tre2", "Tiva3", "Tre3"};
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i) marks << QStringLiteral("?");
    auto st = db.prepare(QStringLiteral("insert into frasout (%1) values (%2)")
                             .arg(columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", "))));
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

void insertMovement(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                    std::int64_t entitat, std::int64_t ordre) {
    db.prepare(QStringLiteral("insert into %1.movimientos (data, entidad, cliente, FrasOut, "
                              "concepto, D, H) values (?, ?, ?, ?, ?, ?, ?)")
                   .arg(kTesorer))
        .bind(1, dateOf(e.lblFecha))
        .bind(2, entitat)
        .bind(3, customerNumber(ctx, e))
        .bind(4, ordre)
        .bind(5, (QStringLiteral("N/Fra. ") + invoiceText(e)).left(kConceptLength))
        .bind(6, stored(ctx, e.txtTotal))
        .bind(7, Money{})
        .execute();
}

void insertReceipt(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                   std::int64_t ordre) {
    db.prepare(QStringLiteral("insert into %1.cartera (data, cliente, In_Out, Ejercicio, "
                              "Factura, total, FrasOut, Vencimiento) values "
                              "(?, ?, 'Out', ?, ?, ?, ?, ?)")
                   .arg(kCartera))
        .bind(1, dateOf(e.lblFecha))
        .bind(2, customerNumber(ctx, e))
        .bind(3, ctx.Exercici)
        .bind(4, invoiceText(e))
        .bind(5, stored(ctx, e.txtTotal))
        .bind(6, ordre)
        .bind(7, e.venciment)
        .execute();
}

// The portfolio holds every exercise of the company, and FrasOut numbers restart each
// year: a receipt is found by its number within the exercise, or another year's receipt of
// the same number would be touched.
void deleteReceipts(const WorkingContext& ctx, Database& db, std::int64_t ordre) {
    db.prepare(QStringLiteral("delete from %1.cartera where FrasOut = ? and FrasOut <> 0 "
                              "and Ejercicio = ?")
                   .arg(kCartera))
        .bind(1, ordre)
        .bind(2, ctx.Exercici)
        .execute();
}

void deleteMovements(Database& db, std::int64_t ordre) {
    db.prepare(QStringLiteral("delete from %1.movimientos where FrasOut = ? and FrasOut <> 0")
                   .arg(kTesorer))
        .bind(1, ordre)
        .execute();
}

// A sale settled in a collection run keeps its money rows; only names and texts follow
// the change, and the movement's concept loses its "N/Fra. " prefix.
void rewriteSettled(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                    std::int64_t ordre) {
    db.prepare(QStringLiteral("update %1.cartera set data = ?, cliente = ?, Factura = ?, "
                              "total = ?, vencimiento = ? where FrasOut = ? and Ejercicio = ?")
                   .arg(kCartera))
        .bind(1, dateOf(e.lblFecha))
        .bind(2, customerNumber(ctx, e))
        .bind(3, invoiceText(e))
        .bind(4, stored(ctx, e.txtTotal))
        .bind(5, e.venciment)
        .bind(6, ordre)
        .bind(7, ctx.Exercici)
        .execute();
    db.prepare(QStringLiteral("update %1.movimientos set cliente = ?, concepto = ? "
                              "where FrasOut = ? and FrasOut <> 0")
                   .arg(kTesorer))
        .bind(1, customerNumber(ctx, e))
        .bind(2, invoiceText(e).left(kConceptLength))
        .bind(3, ordre)
        .execute();
}

void rewriteMoneyRows(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                      std::optional<std::int64_t> entitat, std::int64_t ordre) {
    const bool settled = e.entitat == QStringLiteral("Marca");
    if (entitat && !settled) {
        deleteMovements(db, ordre);
        insertMovement(ctx, db, e, *entitat, ordre);
        deleteReceipts(ctx, db, ordre);
    } else if (!entitat && settled) {
        rewriteSettled(ctx, db, e, ordre);
    } else {
        deleteMovements(db, ordre);
        deleteReceipts(ctx, db, ordre);
        insertReceipt(ctx, db, e, ordre);
    }
}

Database openPosting(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    if (ctx.Tesoreria) {
        db.attach(ctx.exerciseFile(schema::db::Tesorer), kTesorer);
        db.attach(ctx.companyFile(schema::db::Cartera), kCartera);
    }
    if (ctx.Facturacio) db.attach(ctx.companyFile(schema::db::Fact), kFact);
    return db;
}

}  // namespace

std::optional<std::int64_t> treasuryAccount(const WorkingContext& ctx, const SaleEntry& e) {
    if (!ctx.Tesoreria) return std::nullopt;
    if (e.entitat.isEmpty() || e.entitat == QStringLiteral("Marca")) return std::nullopt;
    return e.entitatId;
}

std::int64_t Seguent_Ordre(const WorkingContext& ctx) {
    Database db = openPosting(ctx);
    return nextOrdre(ctx, db, kFact);
}

PostingResult GrabaApunt(const WorkingContext& ctx, SaleEntry& entry, const SalesAccount& account) {
    SaleEntry e = entry;
    sanitise(e);
    const auto entitat = treasuryAccount(ctx, e);
    PostingResult result;
    try {
        Database db = openPosting(ctx);
        Transaction tx(db, Transaction::Kind::Immediate);
        if (e.isNew()) {
            result.ordre = nextOrdre(ctx, db, kFact);
            if (e.txtdescripcio == QStringLiteral("-"))
                e.txtdescripcio = QString::number(result.ordre);
            insertSale(ctx, db, e, account, result.ordre, entitat.has_value());
            result.affected = db.changes();
            if (ctx.Tesoreria) {
                if (entitat)
                    insertMovement(ctx, db, e, *entitat, result.ordre);
                else
                    insertReceipt(ctx, db, e, result.ordre);
            }
        } else {
            result.ordre = e.lblOrdre.toLongLong();
            result.affected = updateSale(ctx, db, e, account, result.ordre, entitat.has_value());
            // A sale that is no longer there takes no money rows either.
            if (result.affected != 1) return result;
            if (ctx.Tesoreria) rewriteMoneyRows(ctx, db, e, entitat, result.ordre);
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

}  // namespace tallora::sales
