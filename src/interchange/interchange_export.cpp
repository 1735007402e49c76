#include "interchange_export.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "interchange_files.h"
#include "interchange_values.h"
#include "schema/table_catalog.h"

#include <QSaveFile>

#include <stdexcept>

namespace tallora::interchange {
namespace {

// A field of a record and where its value is in the rows of its query.
struct Column {
    const FieldLayout* field;
    int index = -1;  // -1: the table has no such column, or the field is not a column
    store::FieldType type = store::FieldType::Text;
};

// One source table of a record: the accounts have eight, the others one.
struct Source {
    const RecordLayout* layout;
    QString table;
};

class Writer {
public:
    Writer(const WorkingContext& ctx, const QString& path, const RunReport& report)
        : ctx_(ctx), file_(path), report_(report) {
        if (!file_.open(QIODevice::WriteOnly))
            throw std::runtime_error(file_.errorString().toStdString());
        buffer_.reserve(kFlushAt + 4096);
    }

    void header(const ExportChoice& choice, const QDateTime& now) {
        const auto mark = [](bool on, const char* word) {
            return QStringLiteral("DAT ") +
                   (on ? QString::fromLatin1(word) : QStringLiteral("---"));
        };
        const bool partial = !choice.whole;
        const QStringList lines{
            QStringLiteral("INF ") + now.toString(QStringLiteral("dd/MM/yyyy")) +
                QStringLiteral("   ") + now.toString(QStringLiteral("HH:mm:ss")),
            QStringLiteral("INF ") + ctx_.EmpresaNom,
            QStringLiteral("INF ") + ctx_.Directori,
            QStringLiteral("INF ") + ctx_.EmpresaNIF,
            QStringLiteral("INF V5.0"),
            partial ? QStringLiteral("CNT PAR") : QStringLiteral("CNT ALL"),
            mark(partial && choice.customers, "CLI"),
            mark(partial && choice.suppliers, "PRO"),
            mark(partial && choice.chart, "PLC")};
        for (const QString& line : lines) {
            QString one = line;
            buffer_ += encodeLine(one.replace(u'\r', u' ').replace(u'\n', u' '));
        }
    }

    void records(InterchangeFiles& files, const Source& source, qint64& done, qint64 total) {
        const RecordLayout& layout = *source.layout;
        const QString table = layout.table.isEmpty() ? source.table : layout.table;
        const schema::TableCatalog& catalog = schema::TableCatalog::builtIn();
        store::Statement st = files.db().prepare(QStringLiteral("select * from %1 order by %2 asc")
                                                     .arg(files.tableRef(layout.database, table),
                                                          store::quoteIdentifier(layout.orderBy)));
        std::vector<Column> columns;
        for (const FieldLayout& f : layout.fields) {
            if (f.role == FieldRole::TreasuryOnly && !ctx_.Tesoreria) continue;
            Column c{&f};
            if (f.role != FieldRole::TableName && f.role != FieldRole::Reserved) {
                c.index = st.columnIndex(f.column);
                c.type = catalog.field(layout.database, table, f.column).type;
            }
            columns.push_back(c);
        }
        const int number = st.columnIndex(layout.numberColumn());
        const int text = layout.logText.isEmpty() ? -1 : st.columnIndex(layout.logText);
        while (st.next()) {
            buffer_ += encodeKey(layout.key);
            for (const Column& c : columns) {
                QString value;
                if (c.field->role == FieldRole::TableName)
                    value = table;
                else if (c.index >= 0)
                    value = valueText(st, c.index, c.type, c.field->role);
                appendField(buffer_, value, c.field->width);
            }
            buffer_ += "\r\n";
            if (buffer_.size() >= kFlushAt) flush();
            ++done;
            if (report_.log)
                report_.log(layout.tag + (number >= 0 ? st.text(number) : QString()) + u' ' +
                            (text >= 0 ? st.text(text) : QString()));
            if (report_.progress) report_.progress(done, total);
        }
    }

    void commit() {
        flush();
        if (!file_.commit()) throw std::runtime_error(file_.errorString().toStdString());
    }

private:
    static constexpr qsizetype kFlushAt = 1 << 20;

    static QByteArray encodeLine(const QString& line) {
        QByteArray bytes;
        appendField(bytes, line, static_cast<int>(line.size()));
        return bytes + "\r\n";
    }
    static QByteArray encodeKey(const QString& key) { return key.toLatin1(); }

    void flush() {
        if (buffer_.isEmpty()) return;
        if (file_.write(buffer_) != buffer_.size())
            throw std::runtime_error(file_.errorString().toStdString());
        buffer_.clear();
    }

    const WorkingContext& ctx_;
    QSaveFile file_;
    const RunReport& report_;
    QByteArray buffer_;
};

bool goes(const RecordLayout& layout, const ExportChoice& choice) {
    if (choice.whole) return true;
    const QStringView key = layout.trimmedKey();
    return (key == u"5CLI" && choice.customers) || (key == u"5PRO" && choice.suppliers) ||
           (key == u"5CTA" && choice.chart);
}

// The tables to read, in the file's order; tables an older exercise lacks are passed over.
std::vector<Source> sources(InterchangeFiles& files, const ExportChoice& choice) {
    std::vector<Source> out;
    for (const RecordLayout& layout : recordLayouts()) {
        if (!goes(layout, choice)) continue;
        if (!layout.table.isEmpty()) {
            if (files.hasTable(layout.database, layout.table))
                out.push_back({&layout, layout.table});
            continue;
        }
        for (const QString& table : interchangeAccountTables())
            if (files.hasTable(layout.database, table)) out.push_back({&layout, table});
    }
    return out;
}

qint64 rowCount(InterchangeFiles& files, const Source& s) {
    store::Statement st = files.db().prepare(
        QStringLiteral("select count(*) from %1").arg(files.tableRef(s.layout->database, s.table)));
    st.next();
    return st.int64(0);
}

}  // namespace

bool isExerciseSettingsName(const WorkingContext& ctx, const QString& path) {
    return path.right(8).toLower() == ctx.Exercici + QStringLiteral(".dat");
}

qint64 writeInterchangeFile(const WorkingContext& ctx, const QString& path,
                            const ExportChoice& choice, const RunReport& report,
                            const QDateTime& now) {
    InterchangeFiles files(ctx);
    // One read transaction: the file shows one state of every database.
    store::Transaction snapshot(files.db());
    const std::vector<Source> all = sources(files, choice);
    qint64 total = 0;
    for (const Source& s : all) total += rowCount(files, s);
    Writer writer(ctx, path, report);
    writer.header(choice, now);
    qint64 done = 0;
    if (report.progress) report.progress(0, total);
    for (const Source& s : all) writer.records(files, s, done, total);
    writer.commit();
    return done;
}

bool Exporta(const WorkingContext& ctx, Dialogs& dialogs, const QString& path,
             const ExportChoice& choice, const RunReport& report, const QDateTime& now) {
    if (path.isEmpty()) return false;
    if (isExerciseSettingsName(ctx, path)) {
        dialogs.stop(Missatge(ctx, 6996));
        return false;
    }
    if (!choice.whole && !choice.customers && !choice.suppliers && !choice.chart) {
        dialogs.stop(Missatge(ctx, 6891));
        return false;
    }
    try {
        writeInterchangeFile(ctx, path, choice, report, now);
    } catch (const std::exception& e) {
        dialogs.stop(Missatge(ctx, 6884) + QStringLiteral("\n\n") + faultReason(e));
        return false;
    }
    dialogs.information(Missatge(ctx, 32));
    return true;
}

}  // namespace tallora::interchange
