#include "report_data.h"

#include "report_error.h"

#include <QFileInfo>

#include <algorithm>
#include <stdexcept>

namespace tallora::report {
namespace {

[[noreturn]] void bad(const QString& why) {
    throw std::invalid_argument(why.toStdString());
}

QString plainField(QString field) {
    field = field.trimmed();
    if (field.startsWith(u'{') && field.endsWith(u'}'))
        field = field.mid(1, field.size() - 2).trimmed();
    return field;
}

// A cursor over the text of a selection.
class SelectionScanner {
public:
    explicit SelectionScanner(const QString& text) : s_(text) {}
    void skipBlanks() {
        while (i_ < s_.size() && s_[i_].isSpace()) ++i_;
    }
    bool atEnd() {
        skipBlanks();
        return i_ >= s_.size();
    }
    QString field() {
        skipBlanks();
        const qsizetype start = i_;
        if (i_ < s_.size() && s_[i_] == u'{') {
            const qsizetype close = s_.indexOf(u'}', i_);
            if (close < 0) bad(QStringLiteral("'{' without its '}'"));
            i_ = close + 1;
        } else {
            while (i_ < s_.size() &&
                   (s_[i_].isLetterOrNumber() || s_[i_] == u'_' || s_[i_] == u'.'))
                ++i_;
        }
        if (i_ == start) bad(QStringLiteral("a field is expected at \"%1\"").arg(s_.mid(start)));
        return plainField(s_.mid(start, i_ - start));
    }
    QString op() {
        skipBlanks();
        for (const char* candidate : {"<>", "<=", ">=", "=", "<", ">"}) {
            const QString o = QString::fromLatin1(candidate);
            if (s_.mid(i_, o.size()) == o) {
                i_ += o.size();
                return o;
            }
        }
        bad(QStringLiteral("an operator (= <> < <= > >=) is expected at \"%1\"").arg(s_.mid(i_)));
    }
    QVariant value() {
        skipBlanks();
        if (i_ < s_.size() && (s_[i_] == u'\'' || s_[i_] == u'"')) {
            const QChar quote = s_[i_++];
            QString text;
            while (true) {
                if (i_ >= s_.size()) bad(QStringLiteral("a quoted text has no closing quote"));
                if (s_[i_] == quote) {
                    if (i_ + 1 < s_.size() && s_[i_ + 1] == quote) {
                        text += quote;
                        i_ += 2;
                        continue;
                    }
                    ++i_;
                    return text;
                }
                text += s_[i_++];
            }
        }
        const qsizetype start = i_;
        while (i_ < s_.size() && !s_[i_].isSpace()) ++i_;
        const QString word = s_.mid(start, i_ - start);
        bool ok = false;
        const qlonglong whole = word.toLongLong(&ok);
        if (ok) return whole;
        const double real = word.toDouble(&ok);
        if (ok) return real;
        bad(QStringLiteral("\"%1\" is neither a number nor a quoted text").arg(word));
    }
    void expectAnd() {
        skipBlanks();
        if (s_.mid(i_, 3).compare(QStringLiteral("and"), Qt::CaseInsensitive) == 0 &&
            (i_ + 3 >= s_.size() || s_[i_ + 3].isSpace())) {
            i_ += 3;
            return;
        }
        bad(QStringLiteral("\"and\" is expected at \"%1\"").arg(s_.mid(i_)));
    }

private:
    const QString& s_;
    qsizetype i_ = 0;
};

void bindValue(store::Statement& st, int index, const QVariant& value) {
    if (value.typeId() == QMetaType::LongLong)
        st.bind(index, static_cast<std::int64_t>(value.toLongLong()));
    else if (value.typeId() == QMetaType::Double)
        st.bind(index, value.toDouble());
    else
        st.bind(index, value.toString());
}

}  // namespace

SortKey parseSortField(const QString& text) {
    QString t = text.trimmed();
    SortKey key;
    if (t.startsWith(u'+') || t.startsWith(u'-')) {
        key.descending = t.startsWith(u'-');
        t = t.mid(1);
    }
    key.field = plainField(t);
    if (key.field.isEmpty()) bad(QStringLiteral("\"%1\": a field is expected").arg(text));
    return key;
}

std::vector<Condition> parseSelection(const QString& text) {
    std::vector<Condition> out;
    SelectionScanner scan(text);
    while (!scan.atEnd()) {
        if (!out.empty()) scan.expectAnd();
        Condition c;
        c.field = scan.field();
        c.op = scan.op();
        c.value = scan.value();
        out.push_back(std::move(c));
    }
    return out;
}

DataSource::DataSource(const QString& path, const QString& source)
    : path_(path), source_(source), db_([&] {
          if (path.isEmpty())
              throw ReportError(
                  QStringLiteral("no data file is given for the source \"%1\"").arg(source));
          if (!QFileInfo(path).isFile())
              throw ReportError(QStringLiteral("%1: data file not found").arg(path));
          try {
              return store::Database::open(path);
          } catch (const store::StoreError& e) {
              throw ReportError(
                  QStringLiteral("%1: the data file cannot be opened: %2").arg(path, e.message()));
          }
      }()) {
    source_ = findSource(QStringLiteral("main"), source);
    if (source_.isEmpty())
        throw ReportError(
            QStringLiteral("%1: there is no table or stored query \"%2\"").arg(path, source));
    for (const QString& name : columnNames(store::quoteIdentifier(source_)))
        columns_.push_back({source_, name, QStringLiteral("t0.") + store::quoteIdentifier(name)});
}

QString DataSource::findSource(const QString& schema, const QString& name) {
    store::Statement find = db_.prepare(
        QStringLiteral("select name from %1.sqlite_master where type in ('table', 'view') "
                       "and name = ?1 collate nocase")
            .arg(store::quoteIdentifier(schema)));
    find.bind(1, name);
    return find.next() ? find.text(0) : QString();
}

QStringList DataSource::columnNames(const QString& qualifiedSource) {
    store::Statement probe =
        db_.prepare(QStringLiteral("select * from %1 limit 0").arg(qualifiedSource));
    QStringList names;
    for (int i = 0; i < probe.columnCount(); ++i) names << probe.columnName(i);
    return names;
}

void DataSource::join(const QString& path, const QString& source, const QString& key,
                      const QString& field, const QString& as) {
    const int rowField = columnIndex(field);
    if (rowField < 0 || columns_[rowField].table != source_)
        throw ReportError(QStringLiteral("join field \"%1\": \"%2\" of %3 has no such field")
                              .arg(field, source_, path_));
    if (path.isEmpty())
        throw ReportError(
            QStringLiteral("no data file is given for the source \"%1\"").arg(source));
    if (!QFileInfo(path).isFile())
        throw ReportError(QStringLiteral("%1: data file not found").arg(path));
    const QString schema = QStringLiteral("j%1").arg(++joins_);
    try {
        db_.attach(path, schema);
    } catch (const store::StoreError& e) {
        throw ReportError(
            QStringLiteral("%1: the data file cannot be opened: %2").arg(path, e.message()));
    }
    const QString table = findSource(schema, source);
    if (table.isEmpty())
        throw ReportError(
            QStringLiteral("%1: there is no table or stored query \"%2\"").arg(path, source));
    const QString from = store::quoteIdentifier(schema) + u'.' + store::quoteIdentifier(table);
    const QStringList names = columnNames(from);
    const auto keyAt = std::find_if(names.begin(), names.end(), [&](const QString& n) {
        return n.compare(key, Qt::CaseInsensitive) == 0;
    });
    if (keyAt == names.end())
        throw ReportError(QStringLiteral("join key \"%1\": \"%2\" of %3 has no such field")
                              .arg(key, table, path));
    // One value per row whatever the joined table holds: the first row of the key.
    for (const QString& name : names)
        columns_.push_back({as.isEmpty() ? table : as, name,
                            QStringLiteral("(select j.%1 from %2 as j where j.%3 = %4 limit 1)")
                                .arg(store::quoteIdentifier(name), from,
                                     store::quoteIdentifier(*keyAt), columns_[rowField].sql)});
}

int DataSource::columnIndex(const QString& field) const {
    QString name = plainField(field);
    QString table;
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot >= 0) {
        table = name.left(dot);
        name = name.mid(dot + 1);
    }
    for (size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].name.compare(name, Qt::CaseInsensitive) == 0 &&
            (table.isEmpty() || columns_[i].table.compare(table, Qt::CaseInsensitive) == 0))
            return static_cast<int>(i);
    return -1;
}

ReportRows DataSource::read(const std::vector<int>& columns,
                            const std::vector<std::pair<int, bool>>& order,
                            const std::vector<std::pair<int, Condition>>& where) {
    QStringList select, conditions, sort;
    for (int c : columns) select << columns_.at(c).sql;
    for (const auto& [c, cond] : where)
        conditions << columns_.at(c).sql + u' ' + cond.op + QStringLiteral(" ?");
    for (const auto& [c, descending] : order)
        sort << columns_.at(c).sql +
                    (descending ? QStringLiteral(" desc") : QStringLiteral(" asc"));
    QString sql = QStringLiteral("select %1 from %2 as t0")
                      .arg(select.isEmpty() ? QStringLiteral("1") : select.join(u','),
                           store::quoteIdentifier(source_));
    if (!conditions.isEmpty())
        sql += QStringLiteral(" where ") + conditions.join(QStringLiteral(" and "));
    if (!sort.isEmpty()) sql += QStringLiteral(" order by ") + sort.join(u',');
    try {
        store::Statement st = db_.prepare(sql);
        int index = 0;
        for (const auto& [c, cond] : where) bindValue(st, ++index, cond.value);
        ReportRows rows(static_cast<int>(columns.size()));
        while (st.next()) {
            for (int i = 0; i < static_cast<int>(columns.size()); ++i)
                rows.append(st.isNull(i) ? QString() : st.text(i));
            rows.endRow();
        }
        return rows;
    } catch (const store::StoreError& e) {
        throw ReportError(QStringLiteral("%1: %2: %3").arg(path_, source_, e.message()));
    }
}

}  // namespace tallora::report
