#include "sale_entry.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::sales {
namespace {

using store::Database;

double rateOf(const std::array<double, 3>& rates, int index) {
    return rates[static_cast<std::size_t>(index)];
}

// The recargo flag of the customer of that name; nothing when there is none.
std::optional<bool> recargoOf(const WorkingContext& ctx, const QString& name) {
    if (name.isEmpty()) return std::nullopt;
    Database d = Database::open(ctx.exerciseFile(schema::db::Gest));
    auto st = d.prepare(QStringLiteral("select nom, RE from clients where nom = ?"));
    st.bind(1, name);
    if (!st.next()) return std::nullopt;
    return st.boolean(1);
}

}  // namespace

bool Verifica_Client(const WorkingContext& ctx, const QString& name) {
    return recargoOf(ctx, name).has_value();
}

bool Client_RE(const WorkingContext& ctx, const QString& name) {
    return recargoOf(ctx, name).value_or(false);
}

std::optional<SalesAccount> Verifica_compte_venda(const WorkingContext& ctx, const QString& name) {
    if (name.isEmpty()) return std::nullopt;
    Database d = Database::open(ctx.exerciseFile(schema::db::Comptes));
    auto st = d.prepare(QStringLiteral(
        "select NomCompte, Compte, Grup, NomGrup from Ingresos where NomCompte = ?"));
    st.bind(1, name);
    if (!st.next()) return std::nullopt;
    return SalesAccount{st.int64(2), st.text(3), st.int64(1), st.text(0)};
}

bool Existeix_Venda(const WorkingContext& ctx, std::int64_t number) {
    Database d = Database::open(ctx.exerciseFile(schema::db::FrasOut));
    auto st = d.prepare(QStringLiteral("select Ordre from FrasOut where Ordre = ?"));
    st.bind(1, number);
    return st.next();
}

void Reparteix_Total(const WorkingContext& ctx, SaleEntry& e, double rate, bool clientRE) {
    if (ctx.Facturacio) {
        Recalcula_Apunt(ctx, e, clientRE);
        return;
    }
    if (!e.isNew()) return;
    std::array<double, 3> ivaFraction{}, reFraction{};
    const Money total = amountOf(ctx, e.txtTotal);
    Money withholding;
    if (!e.txtBaseIRPF.isEmpty()) {
        withholding =
            Money::fromDouble(doubleOf(ctx, e.txtBaseIRPF) * doubleOf(ctx, e.Text1) / 100);
        e.txtRetencio = Format_Import(ctx, withholding);
    }
    int found = -1;
    if (rate != 0) {
        // Two equal rates: the later column wins.
        for (int i = 2; i >= 0 && found < 0; --i)
            if (rateOf(ctx.TipusIVA, i) == rate) found = i;
        if (found >= 0) {
            ivaFraction[found] = rate / 100;
            if (clientRE) reFraction[found] = rateOf(ctx.TipusRE, found) / 100;
        }
    }
    const int at = found < 0 ? 0 : found;
    const Money base = Money::fromDouble((total + withholding).toDouble() /
                                         (reFraction[at] + ivaFraction[at] + 1));
    const QString zero = QStringLiteral("0");
    for (int i = 0; i < 3; ++i) {
        if (ivaFraction[i] == 0) {
            e.txtBase[i] = zero;
            e.txtIVA[i] = zero;
        } else {
            e.txtBase[i] = Format_Import(ctx, base);
            e.txtIVA[i] = Format_Import(ctx, base.toDouble() * rateOf(ctx.TipusIVA, i) / 100);
        }
        e.txtRE[i] = reFraction[i] == 0
                         ? zero
                         : Format_Import(ctx, base.toDouble() * rateOf(ctx.TipusRE, i) / 100);
    }
}

void Activa_RE(SaleEntry& e, bool clientRE) {
    e.reEnabled = clientRE;
    if (!clientRE)
        for (QString& re : e.txtRE) re = QStringLiteral("0");
}

void Recalcula_Apunt(const WorkingContext& ctx, SaleEntry& e, bool clientRE) {
    if (e.Text1.isEmpty()) e.Text1 = QStringLiteral("0");
    if (e.txtBaseIRPF.isEmpty()) e.txtBaseIRPF = QStringLiteral("0");
    for (int i = 0; i < 3; ++i) {
        const double base = doubleOf(ctx, e.txtBase[i]);
        e.txtIVA[i] = Format_Import(ctx, base * rateOf(ctx.TipusIVA, i) / 100);
        if (clientRE) e.txtRE[i] = Format_Import(ctx, base * rateOf(ctx.TipusRE, i) / 100);
    }
    // The sum is of the rounded amounts the fields now show.
    double sum = 0;
    for (int i = 0; i < 3; ++i)
        sum += doubleOf(ctx, e.txtBase[i]) + doubleOf(ctx, e.txtIVA[i]) + doubleOf(ctx, e.txtRE[i]);
    sum += e.Exempta.toDouble();
    if (doubleOf(ctx, e.Text1) != 0)
        e.txtRetencio =
            Format_Import(ctx, doubleOf(ctx, e.txtBaseIRPF) * doubleOf(ctx, e.Text1) / 100);
    sum -= doubleOf(ctx, e.txtRetencio);
    e.txtTotal = Format_Import(ctx, sum);
}

bool baseTyped(const WorkingContext& ctx, SaleEntry& e, int i) {
    if (isEmptyAmount(e.txtBase[i])) return true;
    if (!Es_Numeric(ctx, e.txtBase[i])) return false;
    e.txtBase[i] = reformat(ctx, e.txtBase[i]);
    if (e.isNew()) {
        const double base = doubleOf(ctx, e.txtBase[i]);
        e.txtIVA[i] = Format_Import(ctx, base * rateOf(ctx.TipusIVA, i) / 100);
        if (e.reEnabled) e.txtRE[i] = Format_Import(ctx, base * rateOf(ctx.TipusRE, i) / 100);
    } else {
        e.txtIVA[i] = reformat(ctx, e.txtIVA[i]);
        e.txtRE[i] = reformat(ctx, e.txtRE[i]);
    }
    return true;
}

QString irpfOf(const WorkingContext& ctx, const QString& base, const QString& percent) {
    if (isEmptyAmount(base) || !Es_Numeric(ctx, base)) return {};
    return Format_Import(ctx, doubleOf(ctx, base) * doubleOf(ctx, percent) / 100);
}

}  // namespace tallora::sales
