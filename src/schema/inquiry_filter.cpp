#include "inquiry_filter.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <stdexcept>

namespace tallora::schema {
namespace {

QString isoDate(const QDate& date) {
    return store::quoteLiteral(date.toString(QStringLiteral("yyyy-MM-dd")));
}

}  // namespace

QString equalsText(const QString& column, const QString& value) {
    return column + QStringLiteral(" = ") + store::quoteLiteral(value);
}

void appendDateRange(QStringList& conditions, const WorkingContext& ctx, const QDate& fromDate,
                     const QDate& toDate, const QString& column) {
    const int year = ctx.Exercici.toInt();
    const bool from = fromDate.isValid() && fromDate != QDate(year, 1, 1);
    const bool to = toDate.isValid() && toDate != QDate(year, 12, 31);
    if (from && to)
        conditions << QStringLiteral("%1 between %2 and %3")
                          .arg(column, isoDate(fromDate), isoDate(toDate));
    else if (from)
        conditions << QStringLiteral("%1 >= %2").arg(column, isoDate(fromDate));
    else if (to)
        conditions << QStringLiteral("%1 <= %2").arg(column, isoDate(toDate));
}

void appendDateAmount(QStringList& conditions, const WorkingContext& ctx, const DateAmountFilter& f,
                      const QString& amountColumn) {
    appendDateRange(conditions, ctx, f.from, f.to);

    const QString typed = f.import.trimmed();
    if (typed.isEmpty() || typed == QStringLiteral("-")) return;
    const QString op = f.operacio.isEmpty() ? QStringLiteral("=") : f.operacio;
    if (!QStringList{"=", "<>", "<=", ">="}.contains(op))
        throw std::invalid_argument("operator outside =, <>, <=, >=");
    QString amount = typed;
    amount.replace(u',', u'.');
    // Currency is kept in ten-thousandths; the text reads as a number up to its first fault.
    conditions << QStringLiteral("%1 %2 round(cast(%3 as real) * 10000)")
                      .arg(amountColumn, op, store::quoteLiteral(amount));
}

QString whereClause(const QStringList& conditions) {
    if (conditions.isEmpty()) return {};
    return QStringLiteral(" where ") + conditions.join(QStringLiteral(" and "));
}

QString deleteQuestion(const WorkingContext& ctx, std::int64_t ordre, const QString& descripcio) {
    return Missatge(ctx, 815) + QStringLiteral("\n(") + QString::number(ordre) +
           QStringLiteral(") ") + descripcio;
}

void replaceSelFras(store::Database& db, const QString& selectSql) {
    try {
        store::dropQuery(db, QStringLiteral("selfras"));
    } catch (const store::StoreError&) {
    }
    store::createQuery(db, QStringLiteral("SelFras"), selectSql);
}

}  // namespace tallora::schema
