#pragma once
// The company list of a working unit: its rows, and the creation, removal and opening of a
// company. The screen FormSeleccio and the command-line companion both work through these.
#include "context/fwd.h"
#include "context/list_files.h"

#include <QString>
#include <QStringList>

namespace tallora::shell {

// A row of ListEmpreses: the name, blanks up to 52 characters and the NIF8 at the right
// edge. A name too long for the blanks is followed by the NIF8 directly.
QString companyRow(const CompanyEntry& entry);
// The NIF8 of a row: its last twelve characters, trimmed.
QString nif8OfRow(const QString& row);

// The rows of the unit's Empreses.Lst in its order; none when the unit has no list.
QStringList OMPLE_LLISTA_Empreses(const QString& unit);

// The working unit at the start: the one row of cfg.mdb's `unitat` when there is exactly
// one, the home folder otherwise. cfg.mdb is made in the program folder when missing.
QString readUnitatCfg(const QString& programDir);
// What the company list does as it unloads: the table ends empty, so that every start
// begins on the home folder again.
void clearUnitatCfg(const QString& programDir);

// The five data of a company and its treasury switch, as the company screens show them.
struct NewCompany {
    QString nom, domicili, poblacio, cp, nif;
    bool tesoreria = false;
    bool operator==(const NewCompany&) const = default;
};

// Saves a new company on `unit` (Verifica_Empresa): checks the tax number and the name,
// asks for confirmation, applies the rule of duplicate tax numbers (a "-" before the
// number for each company already on it, at most five on one number), makes the folders
// and writes <NIF8>.Dat, tesorer.cfg and the line of Empreses.Lst. `company.nif` ends as it
// was saved. Gives true when the company was saved.
bool Verifica_Empresa(const WorkingContext& ctx, Dialogs& dialogs, const QString& unit,
                      NewCompany& company);

// Removes the company of `row` (Elimina_Empresa) after the question; refused while its
// exercici.lst names any exercise. Gives true when it was removed.
bool Elimina_Empresa(const WorkingContext& ctx, Dialogs& dialogs, const QString& unit,
                     const QString& row);

// Rewrites the unit's Empreses.Lst without the company `nif8`, keeping a copy of the old
// list in Empreses.cop. An empty key does nothing. Failures are shown through `dialogs`.
bool Treu_de_Llista(Dialogs& dialogs, const QString& unit, const QString& nif8);
// Rewrites the unit's Empreses.Lst the same way, the line of `nif8` with `name`.
bool Cambia_Nom_Llista(Dialogs& dialogs, const QString& unit, const QString& nif8,
                       const QString& name);

// Opens the company of `row` (Obre_Empresa): sets Unitat and Directori, reads <NIF8>.Dat
// into the five company values and the three option flags (writing False for a missing
// one). A company without <NIF8>.Dat is refused with message 6995 and nothing changes.
bool Obre_Empresa(WorkingContext& ctx, Dialogs& dialogs, const QString& unit,
                  const QString& row);

}  // namespace tallora::shell
