#include "spreadsheet.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <xlsxwriter.h>

#include <locale.h>
#include <clocale>

namespace tallora::report {
namespace {

// An amount as a plain number with two decimals and `mark`: "-1234,50".
QString plainAmount(Money m, QChar mark) {
    QString text = m.toPlainText(2);
    if (mark != u'.') text.replace(u'.', mark);
    return text;
}

QString quotedCsv(const QString& field) {
    if (!field.contains(u';') && !field.contains(u'"') && !field.contains(u'\n') &&
        !field.contains(u'\r'))
        return field;
    QString q = field;
    q.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + q + u'"';
}

// The workbook's formats, made once.
struct Formats {
    lxw_format* title = nullptr;
    lxw_format* heading = nullptr;
    lxw_format* amount = nullptr;
    lxw_format* date = nullptr;
};

void writeCell(lxw_worksheet* ws, lxw_row_t r, lxw_col_t c, const Cell& cell, lxw_format* text,
               const Formats& f) {
    if (const auto* s = std::get_if<QString>(&cell)) {
        if (!s->isEmpty()) worksheet_write_string(ws, r, c, s->toUtf8().constData(), text);
    } else if (const auto* m = std::get_if<Money>(&cell)) {
        // Two decimals exactly, as the books print them, not the store's four.
        worksheet_write_number(ws, r, c, m->toPlainText(2).toDouble(), f.amount);
    } else if (const auto* n = std::get_if<qint64>(&cell)) {
        worksheet_write_number(ws, r, c, static_cast<double>(*n), text);
    } else if (const auto* q = std::get_if<double>(&cell)) {
        worksheet_write_number(ws, r, c, *q, text);
    } else if (const auto* d = std::get_if<QDate>(&cell)) {
        if (d->isValid()) {
            lxw_datetime dt{d->year(), d->month(), d->day(), 0, 0, 0};
            worksheet_write_datetime(ws, r, c, &dt, f.date);
        }
    }
}

// The C library's numbers in the C locale while alive, on this thread only: the writer
// prints the workbook's XML numbers (widths, margins) with printf, which under a Spanish
// locale would write "0,7" and make a file no spreadsheet opens.
class CNumbers {
public:
    CNumbers() : c_(newlocale(LC_NUMERIC_MASK, "C", static_cast<locale_t>(nullptr))) {
        if (c_) previous_ = uselocale(c_);
    }
    ~CNumbers() {
        if (!c_) return;
        uselocale(previous_);
        freelocale(c_);
    }
    CNumbers(const CNumbers&) = delete;
    CNumbers& operator=(const CNumbers&) = delete;

private:
    locale_t c_;
    locale_t previous_ = LC_GLOBAL_LOCALE;
};

// Writes to `temporary`; an empty text when done.
QString writeWorkbook(const QString& temporary, const std::vector<Sheet>& sheets) {
    const CNumbers cNumbers;
    const QByteArray name = QFile::encodeName(temporary);
    lxw_workbook* wb = workbook_new(name.constData());
    if (!wb) return QStringLiteral("the file cannot be created");
    Formats f;
    f.title = workbook_add_format(wb);
    format_set_bold(f.title);
    f.heading = workbook_add_format(wb);
    format_set_bold(f.heading);
    format_set_bg_color(f.heading, 0xE4E4E4);
    format_set_text_wrap(f.heading);
    f.amount = workbook_add_format(wb);
    format_set_num_format(f.amount, "#,##0.00");
    f.date = workbook_add_format(wb);
    format_set_num_format(f.date, "dd/mm/yyyy");
    for (const Sheet& sheet : sheets) {
        lxw_worksheet* ws = workbook_add_worksheet(wb, sheet.name.left(31).toUtf8().constData());
        if (!ws) {
            workbook_close(wb);
            return QStringLiteral("the sheet \"%1\" cannot be made").arg(sheet.name);
        }
        lxw_row_t r = 0;
        for (const SheetRow& row : sheet.titles) {
            for (std::size_t c = 0; c < row.size(); ++c)
                writeCell(ws, r, static_cast<lxw_col_t>(c), row[c], f.title, f);
            ++r;
        }
        for (const SheetRow& row : sheet.headings) {
            for (std::size_t c = 0; c < row.size(); ++c)
                writeCell(ws, r, static_cast<lxw_col_t>(c), row[c], f.heading, f);
            ++r;
        }
        if (!sheet.headings.empty()) worksheet_freeze_panes(ws, r, 0);
        for (const SheetRow& row : sheet.rows) {
            for (std::size_t c = 0; c < row.size(); ++c)
                writeCell(ws, r, static_cast<lxw_col_t>(c), row[c], nullptr, f);
            ++r;
        }
        for (std::size_t c = 0; c < sheet.widths.size(); ++c)
            worksheet_set_column(ws, static_cast<lxw_col_t>(c), static_cast<lxw_col_t>(c),
                                 sheet.widths[c], nullptr);
    }
    const lxw_error error = workbook_close(wb);
    if (error != LXW_NO_ERROR) return QString::fromUtf8(lxw_strerror(error));
    return {};
}

// Puts the finished `temporary` in the place of `path`.
QString replaceWith(const QString& temporary, const QString& path) {
    if (QFile::exists(path) && !QFile::remove(path)) {
        QFile::remove(temporary);
        return QStringLiteral("%1 cannot be replaced").arg(path);
    }
    if (!QFile::rename(temporary, path)) {
        QFile::remove(temporary);
        return QStringLiteral("%1 cannot be written").arg(path);
    }
    return {};
}

}  // namespace

QString cellText(const Cell& cell, QChar mark) {
    if (const auto* s = std::get_if<QString>(&cell)) return *s;
    if (const auto* m = std::get_if<Money>(&cell)) return plainAmount(*m, mark);
    if (const auto* n = std::get_if<qint64>(&cell)) return QString::number(*n);
    if (const auto* q = std::get_if<double>(&cell)) {
        QString text = QString::number(*q, 'f', 3);
        while (text.contains(u'.') && (text.endsWith(u'0') || text.endsWith(u'.'))) text.chop(1);
        if (mark != u'.') text.replace(u'.', mark);
        return text;
    }
    if (const auto* d = std::get_if<QDate>(&cell))
        return d->isValid() ? d->toString(QStringLiteral("dd/MM/yyyy")) : QString();
    return {};
}

namespace {

// Each row as one line of its cells' texts joined by `separator`, CSV-quoted when asked.
QStringList joinedRows(const std::vector<SheetRow>& rows, QChar mark, QChar separator,
                       bool quoted) {
    QStringList lines;
    for (const SheetRow& row : rows) {
        QStringList fields;
        for (const Cell& cell : row)
            fields << (quoted ? quotedCsv(cellText(cell, mark)) : cellText(cell, mark));
        lines << fields.join(separator);
    }
    return lines;
}

}  // namespace

QStringList sheetLines(const Sheet& sheet, QChar mark) {
    return joinedRows(sheet.headings, mark, u'\t', false) +
           joinedRows(sheet.rows, mark, u'\t', false);
}

QString writeXlsx(const QString& path, const std::vector<Sheet>& sheets) {
    const QFileInfo info(path);
    if (!info.absoluteDir().exists())
        return QStringLiteral("the folder of %1 does not exist").arg(path);
    const QString temporary =
        info.absolutePath() + QStringLiteral("/.") + info.fileName() + QStringLiteral(".part");
    if (const QString error = writeWorkbook(temporary, sheets); !error.isEmpty()) {
        QFile::remove(temporary);
        return error;
    }
    return replaceWith(temporary, path);
}

QString writeCsv(const QString& path, const Sheet& sheet, QChar mark) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    QByteArray out("\xEF\xBB\xBF");
    for (const auto* rows : {&sheet.titles, &sheet.headings, &sheet.rows})
        for (const QString& line : joinedRows(*rows, mark, u';', true))
            out += line.toUtf8() + "\r\n";
    file.write(out);
    if (!file.commit()) return file.errorString();
    return {};
}

}  // namespace tallora::report
