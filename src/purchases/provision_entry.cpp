#include "provision_entry.h"

#include "purchase_entry.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::purchases {

QString NomTipus(const WorkingContext& ctx, bool suplido) {
    return Missatge(ctx, suplido ? 6501 : 6506);
}

std::vector<PartyItem> partyList(const WorkingContext& ctx, bool suplido) {
    std::vector<PartyItem> items;
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Gest));
    auto st = db.prepare(
        suplido ? QStringLiteral("select nom, proveidor from proveidors order by nom asc")
                : QStringLiteral("select nom, client from clients order by nom asc"));
    while (st.next()) items.push_back({st.text(0).toUpper(), st.int64(1)});
    return items;
}

std::int64_t Calcula_OrdreSupl(const WorkingContext& ctx) {
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Supl));
    return nextOrdre(db, QStringLiteral("Suplidos"));
}

ProvisionField Verifica_Suplido(const WorkingContext& ctx, Dialogs& dialogs, ProvisionEntry& e) {
    const auto refuse = [&](int message, ProvisionField field) {
        dialogs.information(Missatge(ctx, message));
        return field;
    };
    if (e.txtDia.trimmed().isEmpty()) return refuse(635, ProvisionField::txtDia);
    bool numeric = false;
    const int day = e.txtDia.trimmed().toInt(&numeric);
    if (!numeric || day > 31) return refuse(636, ProvisionField::txtDia);
    const auto date = Valida_Data(ctx, e.txtDia, e.txtMes);
    if (!date) return refuse(637, ProvisionField::txtDia);
    e.lblFecha = date->toString(QStringLiteral("dd/MM/yyyy"));
    if (Mes_Bloquejat(ctx, date->month())) {
        if (e.isNew()) e.txtMes.clear();
        return refuse(622, ProvisionField::txtMes);
    }
    // Message 638 names a customer; it stands for a supplier too.
    if (e.txtClient.isEmpty() || e.txtClient.toUpper() != e.listClientsText)
        return refuse(638, ProvisionField::txtClient);
    if (amountOf(ctx, e.txtTotal) == Money{}) return refuse(643, ProvisionField::txtTotal);
    // Always paid or collected: no pending state, no receipt.
    if (ctx.Tesoreria && e.entitat.isEmpty()) return refuse(6678, ProvisionField::ListEntitats);
    return ProvisionField::None;
}

}  // namespace tallora::purchases
