#include "purchase_change.h"

#include "context/common_helpers.h"
#include "context/entry_fields.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"

namespace tallora::purchases {
namespace {

using store::Database;

void loadTreasury(const WorkingContext& ctx, std::int64_t ordre, PurchaseEntry& e) {
    if (const auto account = schema::movementAccount(ctx, QStringLiteral("FrasIn"), ordre)) {
        e.entitat = account->name;
        e.entitatId = account->id;
    }
    Database cartera = Database::open(ctx.companyFile(schema::db::Cartera));
    auto receipt = cartera.prepare(
        QStringLiteral("select vencimiento from cartera where FrasIn = ? and Ejercicio = ?"));
    receipt.bind(1, ordre).bind(2, ctx.Exercici);
    if (receipt.next() && receipt.date(0).isValid()) e.venciment = receipt.date(0);
}

// The list row of the supplier's name, as ListProv shows it (upper-cased) when there is one.
void takeSupplier(const WorkingContext& ctx, PurchaseEntry& e) {
    if (Verifica_Proveidor(ctx, e.txtProveidor)) e.txtProveidor = e.txtProveidor.toUpper();
    e.listProvText = e.txtProveidor;
}

}  // namespace

std::optional<LoadedPurchase> Modifica_Compra(const WorkingContext& ctx, const QString& number) {
    bool numeric = false;
    const std::int64_t ordre = number.trimmed().toLongLong(&numeric);
    if (!numeric) return std::nullopt;
    LoadedPurchase loaded;
    PurchaseEntry& e = loaded.entry;
    e.venciment = QDate::currentDate();
    if (ctx.Tesoreria) loadTreasury(ctx, ordre, e);

    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    auto st = db.prepare(QStringLiteral("select * from FrasIN where Ordre = ?"));
    st.bind(1, ordre);
    if (!st.next()) return std::nullopt;
    const auto col = [&](const char* name) { return st.columnIndex(QString::fromLatin1(name)); };
    const auto text = [&](const char* name) { return st.text(col(name)); };
    const auto amount = [&](const char* name) { return Format_Import(ctx, st.money(col(name))); };

    e.lblOrdre = QString::number(st.int64(col("Ordre")));
    showDate(st.date(col("data")), e.lblFecha, e.txtDia, e.txtMes);
    e.txtProveidor = text("NomProveidor");
    if (!st.isNull(col("Proveidor"))) e.supplierNumber = st.int64(col("Proveidor"));
    takeSupplier(ctx, e);
    e.txtDespesa = text("NomCompte");
    e.listDespesesText = e.txtDespesa.toUpper();
    e.group = groupOfGrup(st.int64(col("Grup")));
    e.txtdescripcio = text("descripcio");
    e.txtBaseIRPF = amount("BaseIRPF");
    e.txtTipus = amount("TipusIRPF");
    e.txtRetencio = amount("Retencio");
    e.txtTotal = amount("TOTAL");
    static const char* const bases[] = {"Base1", "Base2", "Base3", "Base4"};
    static const char* const ivas[] = {"Iva1", "Iva2", "Iva3", "Iva4"};
    static const char* const rates[] = {"TipusIva1", "TipusIva2", "TipusIva3", "TipusIva4"};
    for (std::size_t i = 0; i < 4; ++i) {
        e.txtBase[i] = amount(bases[i]);
        e.txtIVA[i] = amount(ivas[i]);
        loaded.TipusIva[i] = st.money(col(rates[i])).toDouble();
    }
    e.txtexempta = amount("Exempta");
    e.clasificacion = text("Clasificacion");
    if (ctx.Tesoreria && st.int64(col("Marca")) == -1) {
        loaded.settled = true;
        e.entitat = QStringLiteral("Marca");
        e.entitatId.reset();
    }
    return loaded;
}

}  // namespace tallora::purchases
