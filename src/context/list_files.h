#pragma once
// Readers and writers of the list and option files of the data tree.
//
// Every file is written whole through a safe write (see notation.h); a reader never fails
// on a damaged file: what it cannot read it gives as empty, and reading goes on. A writer
// that fails gives false and, when asked, the description of that write's failure.
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace tallora {

class WorkingContext;

// Empreses.Lst: one line a company, "name","NIF8".
struct CompanyEntry {
    QString name;
    QString nif8;
    bool operator==(const CompanyEntry&) const = default;
};
// A line read whole: all double quotes removed, the last eight characters are the NIF8 and
// the rest less its final character (the comma) the name; a line shorter than nine
// characters has an empty name.
CompanyEntry parseEmpresesLine(const QString& line);
// Empty lines are skipped; a missing file gives no companies.
std::vector<CompanyEntry> readEmpresesLst(const QString& path);
bool appendEmpresesLst(const QString& path, const CompanyEntry& entry, QString* error = nullptr);
bool writeEmpresesLst(const QString& path, const std::vector<CompanyEntry>& entries,
                      QString* error = nullptr);

// <NIF8>.Dat: five quoted lines.
struct CompanyData {
    QString nom, domicili, poblacio, cp, nif;
    bool operator==(const CompanyData&) const = default;
};
// nullopt when the file is missing; missing lines read as empty texts.
std::optional<CompanyData> readCompanyData(const QString& path);
bool writeCompanyData(const QString& path, const CompanyData& data, QString* error = nullptr);

// exercici.lst: one line an exercise, "year","currency".
struct ExerciseEntry {
    QString exercici;
    QString moneda;
    bool operator==(const ExerciseEntry&) const = default;
};
// Read in pairs; a lone last item gives an exercise with an empty currency.
std::vector<ExerciseEntry> readExerciciLst(const QString& path);
bool appendExerciciLst(const QString& path, const ExerciseEntry& entry, QString* error = nullptr);
bool writeExerciciLst(const QString& path, const std::vector<ExerciseEntry>& entries,
                      QString* error = nullptr);

// <year>.DAT: the parameters of an exercise, rates as the user typed them.
struct ExerciseParams {
    QString exercici;
    QString moneda;
    int tipusLlibre = 0;  // 1 invoices, 0 shop
    std::array<QString, 3> iva;
    std::array<QString, 3> re;
    QString modeExercici;  // "FACTURES" or "TICKETS"
    std::array<QString, 4> ivas;
    bool operator==(const ExerciseParams&) const = default;
};
// nullopt when the file is missing; items past the end of a truncated file read as empty.
std::optional<ExerciseParams> readExerciseParams(const QString& path);
bool writeExerciseParams(const QString& path, const ExerciseParams& params,
                         QString* error = nullptr);

// A rate typed with ',' or '.' as decimal mark; nullopt when it is not a number.
std::optional<double> rateValue(const QString& text);
// A rate as SQL takes it: shortest form with '.' as decimal mark ("21", "5.2").
QString rateSqlText(double rate);

// Puts the parameters into the context: Exercici, Moneda, ModeExercici, the rates and their
// texts. A rate that is not a number is an error value: it counts as 0 and the others are
// read all the same. Gives the 1-based positions of such rates, sales first (1 to 3), then
// recargo (4 to 6), then purchases (7 to 10).
std::vector<int> applyExerciseParams(WorkingContext& ctx, const ExerciseParams& params);

// tesorer.cfg, fact_mod.cfg, intra.cfg: a Boolean on the first line. A missing file counts
// as False and is written with False (fact_mod.cfg with an empty quoted text on a second
// line, as the settings write it); an unreadable value counts as False.
bool readOptionFlag(const QString& path, bool defaultHasEmptyText = false);
bool writeOptionFlag(const QString& path, bool value, QString* error = nullptr);

// The three option flags of a company folder, read by the rule above.
struct CompanyFlags {
    bool tesoreria = false;
    bool facturacio = false;
    bool intra = false;
};
CompanyFlags readCompanyFlags(const QString& companyFolder);

}  // namespace tallora
