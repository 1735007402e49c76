#pragma once
// The working context: the process-wide values that say which company and exercise are
// open, how amounts are written and which optional areas are on. Screens and logic read it;
// only the start, the opening of a company and the opening of an exercise change it.
//
// The values keep their Catalan names so that every screen refers to them the same way.
// Tests make a fresh context of their own; nothing here is a global.
#include <QDateTime>
#include <QString>

#include <array>
#include <functional>

namespace tallora {

class WorkingContext {
public:
    WorkingContext();

    // Language and number form.
    QString Idioma = QStringLiteral("esp");  // "esp" or "cat"
    int BaseIdioma = 20000;                  // added to a message number (Missatge)
    int Decimal = 44;                        // character code of the decimal mark: 44 ',' or 46 '.'

    // Where the data are.
    QString Unitat;     // the working unit: a root folder, the user's home by default
    QString Directori;  // company folder, then exercise folder; always with a trailing '/'

    // The open company (its <NIF8>.Dat) and its options.
    QString EmpresaNom, EmpresaDomicili, EmpresaPoblacio, EmpresaCP, EmpresaNIF;
    bool Tesoreria = false;
    bool Facturacio = false;
    bool Intra = false;

    // The open exercise (its <year>.DAT).
    QString Exercici;      // four digits
    QString Moneda;        // "Euros" or "Ptes."
    QString ModeExercici;  // "FACTURES" or "TICKETS"
    // Rates of sales, recargo and purchases: TipusIVA[0] is rate 1 of the exercise, and so on.
    std::array<double, 3> TipusIVA{};
    std::array<double, 3> TipusRE{};
    std::array<double, 4> TipusIVAs{};
    // The same rates as text with '.' as decimal mark, as SQL takes them.
    std::array<QString, 3> TipusIVAText;
    std::array<QString, 3> TipusREText;
    std::array<QString, 4> TipusIVAsText;

    // The month lock of the open exercise, January first: 1 locked, 0 open. Loaded with the
    // exercise and saved by the month-lock screen; posting screens consult it.
    std::array<int, 12> chkmesos{};

    // Installation values the shell reads at its start.
    bool PantallaMax = false;  // working screens maximised
    bool Missatgeria = true;   // on-line news wanted (stored only)
    bool DocsGenerar = false;  // billing documents generated from sales
    bool DocsFactura = true;
    int MargeEsquerre = 0, MargeDret = 0, MargeSuperior = 0, MargeInferior = 0;

    // Folders of the installation: the writable program folder (settings files, cfg.mdb,
    // working copies of the templates) and the read-only installed resources.
    QString programDir;
    QString resourcesDir;

    // The instant legal records are stamped with; tests set a fixed one.
    std::function<QDateTime()> clock = [] { return QDateTime::currentDateTimeUtc(); };

    // Sets Idioma and BaseIdioma together; an unknown code leaves both as they are and
    // gives false.
    bool setIdioma(const QString& code);

    QChar decimalMark() const { return QChar(Decimal); }

    // The path rule: a file of the open exercise is Directori + name; a file of the company
    // is Directori + "../" + name. An existing file is found without regard to case.
    QString exerciseFile(const QString& name) const;
    QString companyFile(const QString& name) const;
    // The company folder, with a trailing '/': Directori + "../" made plain.
    QString companyFolder() const;
    // A file of the writable program folder, found the same way.
    QString programFile(const QString& name) const;
};

}  // namespace tallora
