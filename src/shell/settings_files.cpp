#include "settings_files.h"

#include "context/file_tree.h"
#include "context/notation.h"

#include <QFileInfo>

namespace tallora::settings {
namespace {

std::optional<int> readNumber(const QString& folder, const QString& name) {
    auto r = reader(folder, name);
    if (!r) return std::nullopt;
    const auto item = r->next();
    const auto value = item ? item->toNumber() : std::nullopt;
    if (!value) return std::nullopt;
    return static_cast<int>(*value);
}

std::optional<bool> readBoolean(const QString& folder, const QString& name) {
    auto r = reader(folder, name);
    if (!r) return std::nullopt;
    const auto item = r->next();
    return item ? item->toBool() : std::nullopt;
}

}  // namespace

bool isFirstRun(const QString& programDir) {
    return !QFileInfo::exists(fileIn(programDir, names::Tallora3Cfg));
}

int readDecimal(const QString& programDir) {
    const int value = readNumber(programDir, names::Tallora3Cfg).value_or(44);
    return value == 46 ? 46 : 44;
}

bool writeDecimal(const QString& programDir, int decimal) {
    return write(programDir, names::Tallora3Cfg,
                 NotationWriter().number(std::int64_t{decimal}).endLine());
}

QString readIdioma(const QString& programDir) {
    auto r = reader(programDir, names::IdiomaCfg);
    const QString value = r ? r->nextText().trimmed() : QString();
    return value.isEmpty() ? QStringLiteral("esp") : value;
}

bool writeIdioma(const QString& programDir, const QString& idioma) {
    return write(programDir, names::IdiomaCfg, NotationWriter().text(idioma).endLine());
}

std::optional<bool> readPantallaMax(const QString& programDir) {
    if (!QFileInfo::exists(fileIn(programDir, names::PantallaCfg))) return std::nullopt;
    return readBoolean(programDir, names::PantallaCfg).value_or(false);
}

bool writePantallaMax(const QString& programDir, bool value) {
    return write(programDir, names::PantallaCfg, NotationWriter().boolean(value).endLine());
}

bool readMissatgeria(const QString& programDir) {
    return readBoolean(programDir, names::MensaCfg).value_or(true);
}

bool writeMissatgeria(const QString& companyFolder, bool value) {
    return write(companyFolder, names::MensaCfg, NotationWriter().boolean(value).endLine());
}

Margins readMargins(const QString& programDir) {
    Margins m;
    auto r = reader(programDir, names::MargeCfg);
    if (!r) return m;
    for (int* side : {&m.left, &m.right, &m.top, &m.bottom}) {
        const auto item = r->next();
        const auto value = item ? item->toNumber() : std::nullopt;
        *side = value ? static_cast<int>(*value) : 0;
    }
    return m;
}

bool writeMargins(const QString& programDir, const Margins& m) {
    NotationWriter w;
    for (int side : {m.left, m.right, m.top, m.bottom}) w.number(std::int64_t{side});
    return write(programDir, names::MargeCfg, w.endLine());
}

int readSplash(const QString& programDir) {
    return readNumber(programDir, names::SplashCfg).value_or(1);
}

bool writeSplash(const QString& programDir, int value) {
    return write(programDir, names::SplashCfg,
                 NotationWriter().number(std::int64_t{value}).endLine());
}

DocsFlags readDocsFlags(const QString& programDir) {
    DocsFlags flags;
    if (!QFileInfo::exists(fileIn(programDir, names::GnradocDat))) return flags;
    flags.present = true;
    flags.DocsGenerar = true;
    flags.DocsFactura = readNumber(programDir, names::GnradocDat) == 1;
    return flags;
}

QString readUrl(const QString& programDir, const QString& name, const QString& builtIn) {
    QString url = builtIn;
    auto r = reader(programDir, names::UrlDat);
    while (r && !r->atEnd()) {
        const QString key = r->nextText();
        const QString value = r->nextText();
        if (key == name) url = value;
    }
    return url;
}

}  // namespace tallora::settings
