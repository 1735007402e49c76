#pragma once
// The settings files of the installation (program folder) and of a company (its folder),
// each one value or a few in the quoted comma notation.
//
// Readers never fail: a missing or unreadable file gives the default written beside each
// reader. Writers go through a safe write and give false when the file could not be
// written; the value then stays in force for this run only.
#include <QString>
#include "context/billing_files.h"

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace tallora::settings {

// Names of the files, in the one spelling the program writes.
namespace names {
inline const QString Tallora3Cfg = QStringLiteral("tallora3.cfg");
inline const QString IdiomaCfg = QStringLiteral("idioma.cfg");
inline const QString PantallaCfg = QStringLiteral("pantalla.cfg");
inline const QString MensaCfg = QStringLiteral("mensa.cfg");
inline const QString MargeCfg = QStringLiteral("marge.cfg");
inline const QString SplashCfg = QStringLiteral("splash.cfg");
inline const QString GnradocDat = QStringLiteral("gnradoc.dat");
inline const QString UrlDat = QStringLiteral("url.dat");
inline const QString UsadaCfg = QStringLiteral("usada.cfg");
}  // namespace names

// tallora3.cfg: the decimal mark, 44 or 46. Its absence is the first run.
bool isFirstRun(const QString& programDir);
int readDecimal(const QString& programDir);  // 44 when absent or not 44/46
bool writeDecimal(const QString& programDir, int decimal);

// idioma.cfg: "esp" or "cat", quoted; absent or empty gives "esp".
QString readIdioma(const QString& programDir);
bool writeIdioma(const QString& programDir, const QString& idioma);

// pantalla.cfg: maximised screens; nullopt when absent (the shell decides by screen size).
std::optional<bool> readPantallaMax(const QString& programDir);
bool writePantallaMax(const QString& programDir, bool value);

// mensa.cfg: read from the program folder, written to the company folder, as it always was.
bool readMissatgeria(const QString& programDir);  // True when absent
bool writeMissatgeria(const QString& companyFolder, bool value);

// marge.cfg: one line, left, right, top, bottom; all 0 when absent.
struct Margins {
    int left = 0, right = 0, top = 0, bottom = 0;
    bool operator==(const Margins&) const = default;
};
Margins readMargins(const QString& programDir);
bool writeMargins(const QString& programDir, const Margins& margins);

// splash.cfg: 1 shows the assistant on opening an exercise; 1 when absent.
int readSplash(const QString& programDir);
bool writeSplash(const QString& programDir, int value);

// gnradoc.dat: nobody writes it; when present, documents are generated (DocsGenerar) and
// DocsFactura is True only for the value 1.
struct DocsFlags {
    bool present = false;
    bool DocsGenerar = false;
    bool DocsFactura = true;
};
DocsFlags readDocsFlags(const QString& programDir);

// url.dat: pairs of name and web address; for a name given twice the last pair wins, and a
// name not in the file keeps its built-in address.
QString readUrl(const QString& programDir, const QString& name, const QString& builtIn);

}  // namespace tallora::settings
