#include "assistant_figures.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

#include <cstring>

namespace tallora::shell {
namespace {

// The columns of one statement's single row, each an empty sum counting 0.
std::vector<Money> sums(const QString& file, const QString& sql) {
    store::Database db = store::Database::open(file);
    store::Statement st = db.prepare(sql);
    std::vector<Money> out(static_cast<std::size_t>(st.columnCount()));
    if (st.next())
        for (int c = 0; c < st.columnCount(); ++c)
            if (!st.isNull(c)) out[static_cast<std::size_t>(c)] = st.money(c);
    return out;
}

}  // namespace

AssistantFigures assistantFigures(const WorkingContext& ctx) {
    const auto text = [&](Money m) { return Format_Import(ctx, m); };
    AssistantFigures f;
    f.txtVentas = text(sums(ctx.exerciseFile(schema::db::FrasOut),
                            QStringLiteral("select sum(total) as tot from FrasOut"))[0]);
    f.txtGastos = text(sums(ctx.exerciseFile(schema::db::FrasIn),
                            QStringLiteral("select sum(total) as tot from FrasIn"))[0]);
    if (!ctx.Tesoreria) {
        f.txtRecibosPendientes = f.txtFacturasPendientes = f.txtsaldobancos =
            QStringLiteral("Activar tesoreria");
        return f;
    }
    const QString cartera = ctx.companyFile(schema::db::Cartera);
    const auto pending = [&](const char* party) {
        const auto s = sums(cartera, QStringLiteral("select sum(total) as tot, sum(Pendiente) as "
                                                    "pend from Cartera where %1 <> 0")
                                         .arg(QLatin1String(party)));
        return text(s[0] - s[1]);
    };
    f.txtRecibosPendientes = pending("cliente");
    f.txtFacturasPendientes = pending("proveedor");
    // As the balance has always been read: the opening balances, every movement, and then
    // the other movements' treasury sides once more.
    const auto s =
        sums(ctx.exerciseFile(schema::db::Tesorer),
             QStringLiteral(
                 "select (select sum(saldo) from entidades), (select sum(D) from movimientos), "
                 "(select sum(H) from movimientos), (select sum(Importe) from otros_movimientos "
                 "where cta_entra_tesoreria <> 0), (select sum(importe) from otros_movimientos "
                 "where cta_sale_tesoreria <> 0)"));
    f.txtsaldobancos = text(s[0] + s[1] - s[2] + s[3] - s[4]);
    return f;
}

const AssistantLink (&assistantLinks())[18] {
    static const AssistantLink links[18] = {
        {"lbl1", 6914, "Clients", 0},          {"lbl2", 6915, "frasemes", 0},
        {"lbl3", 6916, "consing", 0},          {"lbl4", 6917, "mnuconsSupl", 0},
        {"lbl5", 6918, "mnucartera", 0},       {"lbl6", 6919, "mnu_entradas", 0},
        {"lbl7", 6920, "Proveidorsbd", 1},     {"lbl8", 6921, "frasreb", 1},
        {"lbl9", 6922, "consdes", 1},          {"lbl10", 6923, "mnuconsSupl", 1},
        {"lbl11", 6924, "mnucartera", 1},      {"lbl12", 6925, "mnu_salidas", 1},
        {"lbl13", 6926, "Comptesbd", 2},       {"lbl14", 6927, "mnu_cuentas", 2},
        {"lbl15", 6928, "mnu_extractos", 2},   {"lbl16", 6929, "mnu_contrapartidas", 2},
        {"lbl17", 6930, "mnu_movimientos", 2}, {"lbl18", 6931, "mnuConsOtros", 2},
    };
    return links;
}

bool assistantLinkShown(const WorkingContext& ctx, const AssistantLink& link) {
    if (ctx.ModeExercici == QStringLiteral("TICKETS") && link.column == 0) return false;
    static const char* const treasury[] = {"lbl5",  "lbl6",  "lbl11", "lbl12", "lbl14",
                                           "lbl15", "lbl16", "lbl17", "lbl18"};
    if (!ctx.Tesoreria)
        for (const char* name : treasury)
            if (std::strcmp(name, link.name) == 0) return false;
    return true;
}

}  // namespace tallora::shell
