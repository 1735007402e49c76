#include "list_files.h"

#include "file_tree.h"
#include "notation.h"
#include "working_context.h"

#include <charconv>

namespace tallora {
namespace {

std::optional<NotationReader> openReader(const QString& path) {
    auto content = readTextFile(path);
    if (!content) return std::nullopt;
    return NotationReader(*content);
}

QString empresesRecord(const CompanyEntry& e) {
    return NotationWriter().text(e.name).text(e.nif8).endLine().result();
}

QString exerciciRecord(const ExerciseEntry& e) {
    return NotationWriter().text(e.exercici).text(e.moneda).endLine().result();
}

}  // namespace

CompanyEntry parseEmpresesLine(const QString& line) {
    QString bare = line;
    bare.remove(u'"');
    CompanyEntry entry;
    entry.nif8 = bare.right(8);
    entry.name = bare.left(std::max<qsizetype>(0, bare.size() - 9));
    return entry;
}

std::vector<CompanyEntry> readEmpresesLst(const QString& path) {
    std::vector<CompanyEntry> entries;
    const auto content = readTextFile(path);
    if (!content) return entries;
    for (const QString& line : splitLines(*content))
        if (!line.trimmed().isEmpty()) entries.push_back(parseEmpresesLine(line));
    return entries;
}

bool appendEmpresesLst(const QString& path, const CompanyEntry& entry, QString* error) {
    return appendTextFile(path, empresesRecord(entry), error);
}

bool writeEmpresesLst(const QString& path, const std::vector<CompanyEntry>& entries,
                      QString* error) {
    QString content;
    for (const auto& e : entries) content += empresesRecord(e);
    return writeTextFile(path, content, error);
}

std::optional<CompanyData> readCompanyData(const QString& path) {
    auto reader = openReader(path);
    if (!reader) return std::nullopt;
    CompanyData d;
    for (QString* field : {&d.nom, &d.domicili, &d.poblacio, &d.cp, &d.nif})
        *field = reader->nextText();
    return d;
}

bool writeCompanyData(const QString& path, const CompanyData& d, QString* error) {
    NotationWriter w;
    for (const QString* field : {&d.nom, &d.domicili, &d.poblacio, &d.cp, &d.nif})
        w.text(*field).endLine();
    return writeTextFile(path, w.result(), error);
}

std::vector<ExerciseEntry> readExerciciLst(const QString& path) {
    std::vector<ExerciseEntry> entries;
    auto reader = openReader(path);
    if (!reader) return entries;
    while (!reader->atEnd()) {
        ExerciseEntry e;
        e.exercici = reader->nextText();
        e.moneda = reader->nextText();
        entries.push_back(e);
    }
    return entries;
}

bool appendExerciciLst(const QString& path, const ExerciseEntry& entry, QString* error) {
    return appendTextFile(path, exerciciRecord(entry), error);
}

bool writeExerciciLst(const QString& path, const std::vector<ExerciseEntry>& entries,
                      QString* error) {
    QString content;
    for (const auto& e : entries) content += exerciciRecord(e);
    return writeTextFile(path, content, error);
}

std::optional<ExerciseParams> readExerciseParams(const QString& path) {
    auto reader = openReader(path);
    if (!reader) return std::nullopt;
    ExerciseParams p;
    p.exercici = reader->nextText();
    p.moneda = reader->nextText();
    if (const auto kind = reader->next()) {
        const auto n = kind->toNumber();
        p.tipusLlibre = n ? static_cast<int>(*n) : 0;
    }
    for (auto& rate : p.iva) rate = reader->nextText();
    for (auto& rate : p.re) rate = reader->nextText();
    p.modeExercici = reader->nextText();
    for (auto& rate : p.ivas) rate = reader->nextText();
    return p;
}

bool writeExerciseParams(const QString& path, const ExerciseParams& p, QString* error) {
    NotationWriter w;
    w.text(p.exercici).text(p.moneda).number(static_cast<std::int64_t>(p.tipusLlibre));
    for (const auto& rate : p.iva) w.text(rate);
    w.endLine();
    for (const auto& rate : p.re) w.text(rate);
    w.text(p.modeExercici).endLine();
    for (const auto& rate : p.ivas) w.text(rate);
    w.endLine();
    return writeTextFile(path, w.result(), error);
}

std::optional<double> rateValue(const QString& text) {
    NotationItem item;
    item.text = text;
    return item.toNumber();
}

QString rateSqlText(double rate) {
    char buffer[64];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, rate);
    return QString::fromLatin1(buffer, r.ptr - buffer);
}

std::vector<int> applyExerciseParams(WorkingContext& ctx, const ExerciseParams& params) {
    ctx.Exercici = params.exercici;
    ctx.Moneda = params.moneda;
    ctx.ModeExercici = params.modeExercici;
    std::vector<int> invalid;
    int position = 0;
    auto take = [&](const QString& text, double& value, QString& sqlText) {
        ++position;
        const auto v = rateValue(text);
        if (!v) invalid.push_back(position);
        value = v.value_or(0.0);
        sqlText = rateSqlText(value);
    };
    for (int i = 0; i < 3; ++i) take(params.iva[i], ctx.TipusIVA[i], ctx.TipusIVAText[i]);
    for (int i = 0; i < 3; ++i) take(params.re[i], ctx.TipusRE[i], ctx.TipusREText[i]);
    for (int i = 0; i < 4; ++i) take(params.ivas[i], ctx.TipusIVAs[i], ctx.TipusIVAsText[i]);
    return invalid;
}

bool readOptionFlag(const QString& path, bool defaultHasEmptyText) {
    auto reader = openReader(path);
    if (!reader) {
        NotationWriter w;
        w.boolean(false).endLine();
        if (defaultHasEmptyText) w.text(QString()).endLine();
        writeTextFile(path, w.result());
        return false;
    }
    const auto item = reader->next();
    return item ? item->toBool().value_or(false) : false;
}

bool writeOptionFlag(const QString& path, bool value, QString* error) {
    return writeTextFile(path, NotationWriter().boolean(value).endLine().result(), error);
}

CompanyFlags readCompanyFlags(const QString& companyFolder) {
    CompanyFlags flags;
    flags.tesoreria = readOptionFlag(findFileNoCase(companyFolder, files::TesorerCfg));
    flags.facturacio = readOptionFlag(findFileNoCase(companyFolder, files::FactModCfg), true);
    flags.intra = readOptionFlag(findFileNoCase(companyFolder, files::IntraCfg));
    return flags;
}

}  // namespace tallora
