#pragma once
// The starting chart of accounts and the templates a new exercise is made from.
//
// The installed resources hold the starting chart as text, one file per language
// (charts/chart_esp.tsv, charts/chart_cat.tsv). At each start the writable program folder
// gets what it lacks: Ctes_esp.mdb and Ctes_cat.mdb made from those texts, Comptes.mdb as a
// copy of the chart of the language in use, and tesorer.mdb with its tables and no rows
// (the cash account of a first exercise comes from the treasury set-up, so that a template
// row would only duplicate it). A new exercise copies the chart with CopiaPlanBase.
//
// Text format: UTF-8, tab-separated, one account a line with five columns: table, Grup,
// NomGrup, NomCompte, Tipus. Lines starting with '#' and empty lines are skipped.
#include "context/fwd.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace tallora::master {

namespace templates {
inline const QString CtesEsp = QStringLiteral("Ctes_esp.mdb");
inline const QString CtesCat = QStringLiteral("Ctes_cat.mdb");
}  // namespace templates

struct ChartAccount {
    QString table;  // one of the seven account tables
    std::int64_t grup = 0;
    QString nomGrup, nomCompte, tipus;
};

// Reads a chart text. Throws std::runtime_error naming the file and line of a malformed
// row or an unknown table.
std::vector<ChartAccount> readChartText(const QString& path);

// Creates a chart database at `path` (its seven account tables) holding `accounts` in
// their order. An existing file is replaced.
void makeChartTemplate(const QString& path, const std::vector<ChartAccount>& accounts);

// The language template of the writable program folder: Ctes_esp.mdb or Ctes_cat.mdb.
QString chartTemplateName(const QString& idioma);

// Fills the writable program folder with the templates it lacks (see above). A chart
// text that cannot be read leaves its template unmade; the error is given back.
QString prepareTemplates(const WorkingContext& ctx);

// Replaces the program folder's Comptes.mdb by the template of `idioma`. Without that
// template, Comptes.mdb is only removed and new exercises start with an empty chart.
void swapChartTemplate(const QString& programDir, const QString& idioma);

// The chart of a new exercise: each row of the seven tables of the program folder's
// Comptes.mdb is added to the exercise's table with Grup, NomGrup, NomCompte and Tipus, the
// numbers given anew in the order read; then the entidades of the program folder's
// tesorer.mdb are added to the exercise's tesorer.mdb when that file already exists.
// Errors ignored: a missing template copies nothing.
void CopiaPlanBase(const QString& programDir, const QString& exerciseFolder);

}  // namespace tallora::master
