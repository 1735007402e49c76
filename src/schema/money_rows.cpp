#include "money_rows.h"

#include "context/entry_fields.h"
#include "context/working_context.h"
#include "creation.h"
#include "lookups.h"
#include "store/store_error.h"

namespace tallora::schema {
namespace {

QString sideSql(QString sql, const MoneySide& side) {
    return sql.replace(QStringLiteral("{party}"), QLatin1String(side.party))
        .replace(QStringLiteral("{invoice}"), QLatin1String(side.invoice));
}

}  // namespace

void insertMovement(store::Database& db, const MoneySide& side, const MoneyRow& row,
                    std::int64_t entitat, std::int64_t ordre) {
    db.prepare(sideSql(QStringLiteral("insert into tesorer.movimientos (data, entidad, {party}, "
                                      "{invoice}, concepto, D, H) values (?, ?, ?, ?, ?, ?, ?)"),
                       side))
        .bind(1, row.data)
        .bind(2, entitat)
        .bind(3, row.party)
        .bind(4, ordre)
        .bind(5, (QLatin1String(side.conceptPrefix) + row.factura).left(kConceptLength))
        .bind(6, side.debit ? row.total : Money{})
        .bind(7, side.debit ? Money{} : row.total)
        .execute();
}

void insertReceipt(store::Database& db, const WorkingContext& ctx, const MoneySide& side,
                   const MoneyRow& row, std::int64_t ordre) {
    db.prepare(sideSql(QStringLiteral("insert into cartera.cartera (data, {party}, In_Out, "
                                      "Ejercicio, Factura, total, {invoice}, Vencimiento) "
                                      "values (?, ?, ?, ?, ?, ?, ?, ?)"),
                       side))
        .bind(1, row.data)
        .bind(2, row.party)
        .bind(3, QString::fromLatin1(side.inOut))
        .bind(4, ctx.Exercici)
        .bind(5, row.factura)
        .bind(6, row.total)
        .bind(7, ordre)
        .bind(8, row.vencimiento)
        .execute();
}

void deleteMovements(store::Database& db, const MoneySide& side, std::int64_t ordre) {
    db.prepare(
          sideSql(QStringLiteral(
                      "delete from tesorer.movimientos where {invoice} = ? and {invoice} <> 0"),
                  side))
        .bind(1, ordre)
        .execute();
}

void deleteReceipts(store::Database& db, const WorkingContext& ctx, const MoneySide& side,
                    std::int64_t ordre) {
    db.prepare(sideSql(QStringLiteral("delete from cartera.cartera where {invoice} = ? and "
                                      "{invoice} <> 0 and Ejercicio = ?"),
                       side))
        .bind(1, ordre)
        .bind(2, ctx.Exercici)
        .execute();
}

void updateReceipt(store::Database& db, const WorkingContext& ctx, const MoneySide& side,
                   const MoneyRow& row, std::int64_t ordre) {
    db.prepare(sideSql(QStringLiteral("update cartera.cartera set data = ?, {party} = ?, "
                                      "Factura = ?, total = ?, Vencimiento = ? where "
                                      "{invoice} = ? and Ejercicio = ?"),
                       side))
        .bind(1, row.data)
        .bind(2, row.party)
        .bind(3, row.factura)
        .bind(4, row.total)
        .bind(5, row.vencimiento)
        .bind(6, ordre)
        .bind(7, ctx.Exercici)
        .execute();
}

std::optional<MovementAccount> movementAccount(const WorkingContext& ctx, const QString& column,
                                               std::int64_t number) {
    store::Database db = store::Database::open(ctx.exerciseFile(db::Tesorer));
    auto st =
        db.prepare(QStringLiteral("select entidad from movimientos where %1 = ?").arg(column));
    st.bind(1, number);
    if (!st.next()) return std::nullopt;
    MovementAccount account{Nom_Entitat(ctx, QString::number(st.int64(0))), std::nullopt};
    if (!account.name.isEmpty()) account.id = st.int64(0);
    return account;
}

Money storedAmount(const WorkingContext& ctx, const QString& text) {
    if (isEmptyAmount(text)) return {};
    const auto value = Money::parse(text, ctx.decimalMark());
    if (!value) throw store::StoreError(QStringLiteral("Importe incorrecto: ") + text);
    return *value;
}

QString storedText(const QString& text) {
    return text.isNull() ? QStringLiteral("") : text;
}

QDate captionDate(const QString& text) {
    return QDate::fromString(text, QStringLiteral("dd/MM/yyyy"));
}

}  // namespace tallora::schema
