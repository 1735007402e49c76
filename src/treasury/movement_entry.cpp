#include "movement_entry.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/lookups.h"
#include "store/database.h"

namespace tallora::treasury {
namespace {

QString number(std::int64_t n) {
    return QString::number(n);
}

QString treasuryAccount(const WorkingContext& ctx, std::int64_t id) {
    return QStringLiteral("(57.%1)  %2").arg(id).arg(schema::Nom_Entitat(ctx, number(id)));
}

QString otherAccount(const WorkingContext& ctx, std::int64_t compte) {
    const std::optional<std::int32_t> grup = schema::Grup_CompteOtras(ctx, number(compte));
    return QStringLiteral("  (%1.%2)  %3")
        .arg(grup ? number(*grup) : QString())
        .arg(compte)
        .arg(schema::Nom_CompteOtras(ctx, number(compte)));
}

// One side of another movement: the treasury account when set, else the other account.
QString otherSide(const WorkingContext& ctx, std::int64_t tesoreria, std::int64_t otra) {
    if (tesoreria != 0) return QStringLiteral("  ") + treasuryAccount(ctx, tesoreria);
    if (otra != 0) return otherAccount(ctx, otra);
    return {};
}

}  // namespace

std::optional<MovementEntry> Mes_EXTRACTO(const WorkingContext& ctx, std::int64_t id) {
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::Tesorer));
    store::Statement st =
        db.prepare(QStringLiteral("select data, concepto, entidad, cliente, proveedor, Otros, D, H "
                                  "from movimientos where Id = ?"));
    st.bind(1, id);
    if (!st.next()) return std::nullopt;
    const auto value = [&](int column) { return st.isNull(column) ? 0 : st.int64(column); };
    const Money d = st.money(6), h = st.money(7);
    MovementEntry e;
    e.id = number(id);
    e.fecha = Format_Data(st.date(0));
    e.descripcio = st.isNull(1) ? QString() : st.text(1);
    e.debe = e.haber = Format_Import(ctx, d != Money{} ? d : h);

    const std::int64_t entidad = value(2), cliente = value(3), proveedor = value(4),
                       otros = value(5);
    if (cliente != 0 || proveedor != 0) {
        const QString party = cliente != 0
                                  ? QStringLiteral("  (430.%1)  %2")
                                        .arg(cliente)
                                        .arg(schema::Nom_Client(ctx, number(cliente)))
                                  : QStringLiteral("  (400.%1)  %2")
                                        .arg(proveedor)
                                        .arg(schema::Nom_Proveidor(ctx, number(proveedor)));
        const QString account = treasuryAccount(ctx, entidad);
        // Money in debits the account; money out credits it.
        e.cuentaDebe = d > Money{} ? account : party;
        e.cuentaHaber = d > Money{} ? party : account;
    } else if (otros != 0) {
        store::Statement o = db.prepare(
            QStringLiteral("select cta_entra_tesoreria, cta_entra_otra, cta_sale_tesoreria, "
                           "cta_sale_otra from otros_movimientos where Asiento = ?"));
        o.bind(1, otros);
        if (o.next()) {
            e.cuentaDebe = otherSide(ctx, o.int64(0), o.int64(1));
            e.cuentaHaber = otherSide(ctx, o.int64(2), o.int64(3));
        }
    }
    return e;
}

}  // namespace tallora::treasury
