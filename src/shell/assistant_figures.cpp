#include "assistant_figures.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

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
        {"lbl1", 6914, "Clients", 0, false},         {"lbl2", 6915, "frasemes", 0, false},
        {"lbl3", 6916, "consing", 0, false},         {"lbl4", 6917, "mnuconsSupl", 0, false},
        {"lbl5", 6918, "mnucartera", 0, true},       {"lbl6", 6919, "mnu_entradas", 0, true},
        {"lbl7", 6920, "Proveidorsbd", 1, false},    {"lbl8", 6921, "frasreb", 1, false},
        {"lbl9", 6922, "consdes", 1, false},         {"lbl10", 6923, "mnuconsSupl", 1, false},
        {"lbl11", 6924, "mnucartera", 1, true},      {"lbl12", 6925, "mnu_salidas", 1, true},
        {"lbl13", 6926, "Comptesbd", 2, false},      {"lbl14", 6927, "mnu_cuentas", 2, true},
        {"lbl15", 6928, "mnu_extractos", 2, true},   {"lbl16", 6929, "mnu_contrapartidas", 2, true},
        {"lbl17", 6930, "mnu_movimientos", 2, true}, {"lbl18", 6931, "mnuConsOtros", 2, true},
    };
    return links;
}

bool assistantLinkShown(const WorkingContext& ctx, const AssistantLink& link) {
    if (ctx.ModeExercici == QStringLiteral("TICKETS") && link.column == 0) return false;
    return ctx.Tesoreria || !link.treasury;
}

}  // namespace tallora::shell
