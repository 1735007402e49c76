#include "purchase_entry.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::purchases {
namespace {

using store::Database;

double rateOf(const WorkingContext& ctx, std::size_t slot) {
    return ctx.TipusIVAs[slot];
}

}  // namespace

QString Taula_Grup(int group) {
    if (group < 0 || group >= static_cast<int>(kExpenseGroups.size())) return {};
    return QString::fromLatin1(kExpenseGroups[static_cast<std::size_t>(group)].table);
}

int groupOfGrup(std::int64_t grup) {
    for (std::size_t i = 0; i < kExpenseGroups.size(); ++i)
        if (kExpenseGroups[i].grup == grup) return static_cast<int>(i);
    return -1;
}

bool Verifica_Proveidor(const WorkingContext& ctx, const QString& name) {
    if (name.isEmpty()) return false;
    Database d = Database::open(ctx.exerciseFile(schema::db::Gest));
    auto st = d.prepare(QStringLiteral("select nom from proveidors where nom = ?"));
    st.bind(1, name);
    return st.next();
}

std::optional<ExpenseAccount> Verifica_compte_Despesa(const WorkingContext& ctx, int group,
                                                      const QString& name) {
    const QString table = Taula_Grup(group);
    if (table.isEmpty() || name.isEmpty()) return std::nullopt;
    Database d = Database::open(ctx.exerciseFile(schema::db::Comptes));
    auto st = d.prepare(
        QStringLiteral("select NomCompte, Compte, Grup, NomGrup from %1 where NomCompte = ?")
            .arg(table));
    st.bind(1, name);
    if (!st.next()) return std::nullopt;
    return ExpenseAccount{st.int64(2), st.text(3), st.int64(1), st.text(0)};
}

QString rateText(const WorkingContext& ctx, double rate) {
    return QString::number(rate).replace(u'.', ctx.decimalMark());
}

QString Periode(const QDate& date) {
    return QString::number((date.month() - 1) / 3 + 1) + QLatin1Char('T');
}

std::int64_t nextOrdre(Database& db, const QString& table) {
    auto st = db.prepare(QStringLiteral("select Ordre from %1 order by Ordre desc").arg(table));
    return st.next() ? st.int64(0) + 1 : 1;
}

std::int64_t Calcula_Ordre(const WorkingContext& ctx) {
    Database db = Database::open(ctx.exerciseFile(schema::db::FrasIn));
    return nextOrdre(db, QStringLiteral("FrasIN"));
}

void Calcula_Bases(const WorkingContext& ctx, PurchaseEntry& e, double rate) {
    if (!e.isNew()) return;
    if (e.txtTotal.trimmed().isEmpty()) e.txtTotal = QStringLiteral("0");
    const Money total = amountOf(ctx, e.txtTotal);
    Money withholding;
    if (!e.txtBaseIRPF.trimmed().isEmpty()) {
        withholding =
            Money::fromDouble(doubleOf(ctx, e.txtBaseIRPF) * doubleOf(ctx, e.txtTipus) / 100);
        e.txtRetencio = Format_Import(ctx, withholding);
    }
    int slot = -1;
    Money base;
    if (rate != 0) {
        // All four compared, so that the last of two equal rates wins.
        for (std::size_t i = 0; i < 4; ++i)
            if (rateOf(ctx, i) == rate) slot = static_cast<int>(i);
        base = Money::fromDouble((total + withholding).toDouble() / (rate / 100 + 1));
    }
    const QString zero = QStringLiteral("0");
    for (std::size_t i = 0; i < 4; ++i) {
        if (static_cast<int>(i) != slot) {
            e.txtBase[i] = zero;
            e.txtIVA[i] = zero;
        } else {
            e.txtBase[i] = Format_Import(ctx, base);
            e.txtIVA[i] = Format_Import(ctx, Money::fromDouble(base.toDouble() * rate / 100));
        }
    }
}

void Calcula_Retencio(const WorkingContext& ctx, PurchaseEntry& e, std::optional<double> rate) {
    e.txtBaseIRPF = reformat(ctx, e.txtBaseIRPF);
    e.txtRetencio = Format_Import(
        ctx, Money::fromDouble(doubleOf(ctx, e.txtBaseIRPF) * doubleOf(ctx, e.txtTipus) / 100));
    if (rate) Calcula_Bases(ctx, e, *rate);
}

bool baseLeft(const WorkingContext& ctx, PurchaseEntry& e, int index) {
    const auto i = static_cast<std::size_t>(index);
    if (isEmptyAmount(e.txtBase[i])) return true;
    if (!Es_Numeric(ctx, e.txtBase[i])) return false;
    e.txtBase[i] = reformat(ctx, e.txtBase[i]);
    if (e.isNew())
        e.txtIVA[i] = Format_Import(
            ctx, Money::fromDouble(doubleOf(ctx, e.txtBase[i]) * rateOf(ctx, i) / 100));
    else
        e.txtIVA[i] = reformat(ctx, e.txtIVA[i]);
    return true;
}

}  // namespace tallora::purchases
