#pragma once
// Repair and compaction of the databases of the open exercise and its company, the safety
// copy taken when an exercise opens, and the removal of a whole folder.
#include "context/fwd.h"

#include <QDate>
#include <QString>


namespace tallora::schema {

// Where a repair keeps the damaged copies: beside the backups, <company>/bkp/damaged/ (with
// the exercise's year for the files of an exercise), so that no later safety copy of the
// exercise or company folder carries them again.
QString damagedCopiesFolder(const WorkingContext& ctx, bool exerciseFile);

// Checks and rebuilds every *.mdb of the exercise folder, then of the company folder. A
// rebuilt file is named in a notice (message 130) with the rows recovered (of those the file
// said it held) and where its damaged copy was kept (damagedCopiesFolder); a
// file that cannot be read at all stops the run with message 130 and the engine's words,
// and the remaining files are left. Ends with message 6611.
// Gives false when a failure stopped it.
bool Repara_Bases(const WorkingContext& ctx, Dialogs& dialogs);

// Compacts every *.mdb of the exercise folder, then of the company folder: each into
// "<name less its last character>N" (gest.mdb into gest.mdN), which then replaces the
// source. Left-over *.*N files of an interrupted run are removed first. A failure stops the
// run with message 124 and the engine's words. Ends with 6611.
bool Compacta_Bases(const WorkingContext& ctx, Dialogs& dialogs);

// The safety copy taken at each opening of an exercise, before the upgrades. `companyFolder`
// is the open company's folder. The first copy of this version goes to bkp/copia_v4/<year>
// and is never renewed; later ones to bkp/<day of week>/<year> (Monday 1), one per weekday.
// Exercise files go into the target, company files into its parent. Errors are ignored.
void Copia_Seguretat(const QString& companyFolder, const QString& year,
                     QDate today = QDate::currentDate());

// Removes a folder with everything in it. Gives 0 on success; 76 when the path is empty,
// has no '/', or is not a folder; 75 when some entry could not be removed.
int Esborra_Carpeta(const QString& path);

}  // namespace tallora::schema
