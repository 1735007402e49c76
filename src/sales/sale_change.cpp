#include "sale_change.h"

#include "billing_document.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"

namespace tallora::sales {
namespace {

using store::Database;

// The treasury account that collected the sale, by its movement.
void loadAccount(const WorkingContext& ctx, std::int64_t number, SaleEntry& e) {
    if (const auto account = schema::movementAccount(ctx, QStringLiteral("FrasOut"), number)) {
        e.entitat = account->name;
        e.entitatId = account->id;
    }
}

}  // namespace

std::optional<LoadedSale> Modifica_Venda(const WorkingContext& ctx, const QString& number) {
    bool numeric = false;
    const std::int64_t ordre = number.trimmed().toLongLong(&numeric);
    if (!numeric) return std::nullopt;
    LoadedSale loaded;
    SaleEntry& e = loaded.entry;
    if (ctx.Tesoreria) loadAccount(ctx, ordre, e);

    Database db = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    auto st = db.prepare(QStringLiteral("select * from FrasOut where Ordre = ?"));
    st.bind(1, ordre);
    if (!st.next()) return std::nullopt;
    const auto col = [&](const char* name) { return st.columnIndex(QString::fromLatin1(name)); };
    const auto text = [&](const char* name) { return st.text(col(name)); };
    const auto amount = [&](const char* name) { return Format_Import(ctx, st.money(col(name))); };

    e.lblOrdre = QString::number(st.int64(col("Ordre")));
    showDate(st.date(col("data")), e.lblFecha, e.txtDia, e.txtMes);
    e.txtClient = text("nomclient");
    e.listClientsText = e.txtClient;
    if (!st.isNull(col("client"))) e.clientNumber = st.int64(col("client"));
    e.txtTipus = text("nomcompte");
    e.listVendesText = e.txtTipus;
    e.txtdescripcio = text("descripcio");
    e.txtBaseIRPF = amount("baseirpf");
    e.Text1 = amount("tipusirpf");
    e.txtRetencio = amount("retencio");
    e.txtTotal = amount("total");
    static const char* const bases[] = {"base1", "base2", "base3"};
    static const char* const ivas[] = {"iva1", "iva2", "iva3"};
    static const char* const res[] = {"re1", "re2", "re3"};
    static const char* const tivas[] = {"Tiva1", "Tiva2", "Tiva3"};
    static const char* const tres[] = {"TRE1", "TRE2", "TRE3"};
    for (std::size_t i = 0; i < 3; ++i) {
        e.txtBase[i] = amount(bases[i]);
        e.txtIVA[i] = amount(ivas[i]);
        e.txtRE[i] = amount(res[i]);
        loaded.Tiva[i] = st.money(col(tivas[i])).toDouble();
        loaded.Tre[i] = st.money(col(tres[i])).toDouble();
    }
    e.postedRates = loaded.Tiva;
    e.clasificacion = text("Clasificacion");
    e.rebutDomicili = text("direccio");
    e.rebutPoblacio = text("poblacio");
    e.rebutNif = text("NIF");
    static const char* const concepts[] = {"concepte1", "concepte2", "concepte3", "concepte4",
                                           "concepte5"};
    for (std::size_t i = 0; i < 5; ++i) e.concepte[i] = text(concepts[i]);
    e.venciment = QDate::currentDate();
    if (ctx.Facturacio) loadInvoiceDocument(ctx, ordre, e);
    if (st.int64(col("Marca")) == -1) {
        loaded.settled = true;
        e.entitat = QStringLiteral("Marca");
        e.entitatId.reset();
    }
    return loaded;
}

}  // namespace tallora::sales
