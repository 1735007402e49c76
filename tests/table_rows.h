#pragma once
// The rows a statement gives, as tests compare them: columns joined by '|', null as "<null>".
#include "store/database.h"

#include <QStringList>

namespace tallora::testing {

inline QStringList tableRows(const QString& path, const QString& sql) {
    store::Database d = store::Database::open(path);
    store::Statement st = d.prepare(sql);
    QStringList out;
    while (st.next()) {
        QStringList cols;
        for (int i = 0; i < st.columnCount(); ++i)
            cols << (st.isNull(i) ? QStringLiteral("<null>") : st.text(i));
        out << cols.join(u'|');
    }
    return out;
}

}  // namespace tallora::testing
