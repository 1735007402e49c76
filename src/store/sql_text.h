#pragma once
// SQL text built from column lists, every value left to a bound parameter.
#include <QStringList>

namespace tallora::store {

// "insert into `table` (a, b, ...) values (?, ?, ...)".
inline QString insertInto(const QString& table, const QStringList& columns) {
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i) marks << QStringLiteral("?");
    return QStringLiteral("insert into %1 (%2) values (%3)")
        .arg(table, columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
}

}  // namespace tallora::store
