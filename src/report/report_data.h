#pragma once
// The rows of a report: one table or stored query of a data file, limited by the job's
// selection and put in order by its sort fields.
//
// Sort fields: "+field" ascending, "-field" descending; a field may be written with its
// table and in braces ("+{cartera.data}"); no sign means ascending.
//
// Selection: conditions joined by "and", each `field op value`, with op one of
// = <> < <= > >=; the field written as in a sort field, the value a number (12, -3.5) or a
// quoted text ('Girona', "d'Or"; a quote of the same kind inside is doubled). Example:
//   {cartera.client} = 12 and In_Out = 'Out'
// Values reach the engine bound, never inside the SQL text. Dates are texts 'YYYY-MM-DD'.
#include "store/database.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

namespace tallora::report {

struct SortKey {
    QString field;
    bool descending = false;
};

struct Condition {
    QString field;
    QString op;
    QVariant value;
};

// Throw std::invalid_argument with the reason when the text does not read.
SortKey parseSortField(const QString& text);
std::vector<Condition> parseSelection(const QString& text);

// Rows as texts, as the engine gives them: an integer "125000", a real "12.5", a date
// "2026-03-15"; a null is a null QString.
class ReportRows {
public:
    explicit ReportRows(int width = 0) : width_(width) {}
    int rowCount() const { return rows_; }
    const QString& cell(int row, int column) const {
        return cells_[static_cast<size_t>(row) * width_ + column];
    }
    void append(QString value) { cells_.push_back(std::move(value)); }
    void endRow() { ++rows_; }

private:
    int width_;
    int rows_ = 0;
    std::vector<QString> cells_;
};

// A table or stored query of a data file, opened for one report, with the values of the
// tables joined to it.
class DataSource {
public:
    // Throws ReportError when the file or the source is not there.
    DataSource(const QString& path, const QString& source);

    const QString& path() const { return path_; }
    const QString& name() const { return source_; }
    // Adds the fields of `source` in the data file at `path` (this file or another): for
    // each row, those of the first row of `source` whose `key` equals the row's `field`,
    // null when none does; they go by the table's name, or by `as`. Throws ReportError when
    // the file, the source, the key or the field is not there.
    void join(const QString& path, const QString& source, const QString& key, const QString& field,
              const QString& as = {});

    // The column of `field` ("nom", "Clients.nom", "{Clients.nom}"), without regard to
    // case; -1 when there is no such field. A name without its table is looked for in the
    // source first, then in the joined tables in the order they were joined.
    int columnIndex(const QString& field) const;

    // The rows of `columns` (indexes from columnIndex), in `order`, that meet `where`, whose
    // fields are column indexes too.
    ReportRows read(const std::vector<int>& columns, const std::vector<std::pair<int, bool>>& order,
                    const std::vector<std::pair<int, Condition>>& where);

private:
    struct Column {
        QString table;  // the source's name or a joined table's
        QString name;
        QString sql;  // how the statement reads it
    };
    // The table or view of the attached file `schema` named `name` without regard to case,
    // as it is spelled there; empty when there is none.
    QString findSource(const QString& schema, const QString& name);
    QStringList columnNames(const QString& qualifiedSource);

    QString path_;
    QString source_;
    std::vector<Column> columns_;
    int joins_ = 0;
    store::Database db_;
};

}  // namespace tallora::report
