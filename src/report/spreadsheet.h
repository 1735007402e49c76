#pragma once
// Spreadsheets of the books, the listings and the tax agency's files: a workbook of sheets of
// typed cells, written as XLSX (libxlsxwriter) or as CSV. The same sheet feeds both, so a
// book saved either way holds the same values.
//
// In the XLSX an amount is a real number with two decimals shown, a date a real date shown
// dd/mm/yyyy, a text a text. In the CSV the fields are separated by ';' (what a spreadsheet
// set to Spanish opens by itself, since ',' is the decimal mark there), amounts written with
// the given mark and no thousands mark, dates dd/mm/yyyy; UTF-8 with a byte-order mark and
// CRLF line ends, as spreadsheets on every desktop expect.
//
// Files are written to a temporary name beside the target and renamed at the end, so a
// failure never leaves half a file under the name asked for.
#include "context/money.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <variant>
#include <vector>

namespace tallora::report {

// An empty cell, a text, an amount, a whole number, a quantity or a date.
using Cell = std::variant<std::monostate, QString, Money, qint64, double, QDate>;
using SheetRow = std::vector<Cell>;

struct Sheet {
    QString name;                    // at most 31 characters
    std::vector<SheetRow> titles;    // bold lines above the headings (title, period)
    std::vector<SheetRow> headings;  // bold, shaded, frozen above the data
    std::vector<SheetRow> rows;
    std::vector<double> widths;  // column widths in characters; the rest take a default
};

// A sheet's rows as tab-separated text lines (headings and data, amounts with `mark`), for
// the companion's text output and the tests.
QStringList sheetLines(const Sheet& sheet, QChar mark);

// The text of one cell as the CSV and the text lines write it.
QString cellText(const Cell& cell, QChar mark);

// Both return an empty text when written, else the reason the file could not be.
QString writeXlsx(const QString& path, const std::vector<Sheet>& sheets);
QString writeCsv(const QString& path, const Sheet& sheet, QChar mark);

}  // namespace tallora::report
