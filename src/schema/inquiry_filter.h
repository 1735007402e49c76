#pragma once
// The conditions of the inquiry screens' searches, which are stored as a view (SelFras) and
// so must carry their values in the SQL text: every value goes in through SQLite's own
// quoting, never pasted.
#include "context/fwd.h"
#include "store/database.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace tallora::schema {

// The date and amount filters that every inquiry shares.
struct DateAmountFilter {
    // Dtdata1, Dtdata2. A date at 1 January or 31 December of the exercise (or none) counts as
    // no condition.
    QDate from, to;
    // cmbOperacio: "=", "<>", "<=", ">=", or blank for "=".
    QString operacio;
    // txtImport as typed; blank or "-" is no condition. Its commas become points and nothing
    // else is touched, so a typed grouping dot passes through and reads as a decimal point.
    QString import;
};

// "column = 'value'", the value quoted.
QString equalsText(const QString& column, const QString& value);

// Appends the date condition of Dtdata1 and Dtdata2 on `column`; a limit at 1 January or
// 31 December of the exercise (or none) adds nothing.
void appendDateRange(QStringList& conditions, const WorkingContext& ctx, const QDate& from,
                     const QDate& to, const QString& column = QStringLiteral("data"));

// Appends the conditions of `filter` on the column data and the Currency column `amount`.
// Throws std::invalid_argument for an operator outside the list.
void appendDateAmount(QStringList& conditions, const WorkingContext& ctx,
                      const DateAmountFilter& filter,
                      const QString& amount = QStringLiteral("total"));

// " where a and b ...", or nothing for no condition.
QString whereClause(const QStringList& conditions);

// The question before an invoice or entry of an inquiry is deleted: message 815, a line
// break, "(" + number + ") " and the description.
QString deleteQuestion(const WorkingContext& ctx, std::int64_t ordre, const QString& descripcio);

// The view SelFras of `db` made anew from `selectSql`. The old one is dropped first (under
// the name "selfras") with errors ignored: it does not exist on first use.
void replaceSelFras(store::Database& db, const QString& selectSql);

}  // namespace tallora::schema
