#pragma once
// The folders and file names of the data tree, and how a name is found on disk.
//
// One spelling per name is written; an existing file is matched without regard to case,
// so that trees copied from other systems ("EXERCICI.LST", "Gest.mdb") still open.
#include <QString>
#include <QStringList>

#include <vector>

namespace tallora {

// Names of the list and option files, in the one spelling the program writes.
namespace files {
inline const QString EmpresesLst = QStringLiteral("Empreses.Lst");
inline const QString EmpresesCop = QStringLiteral("Empreses.cop");
inline const QString ExerciciLst = QStringLiteral("exercici.lst");
inline const QString ExerciciCop = QStringLiteral("exercici.cop");
inline const QString TesorerCfg = QStringLiteral("tesorer.cfg");
inline const QString FactModCfg = QStringLiteral("fact_mod.cfg");
inline const QString IntraCfg = QStringLiteral("intra.cfg");
inline const QString FactDatos = QStringLiteral("fact_da.tos");
}  // namespace files

QString withTrailingSlash(const QString& folder);

// `folder` + `name`, using the existing entry whose name matches without regard to case
// when there is no exact match; the plain join when nothing matches.
QString findFileNoCase(const QString& folder, const QString& name);

// <unit>/brenwick/LLibres/
QString llibresDir(const QString& unit);
// <unit>/brenwick/LLibres/<NIF8>.EMP/
QString companyDir(const QString& unit, const QString& nif8);
// The first eight characters of a tax number, which name the company's folder and files.
QString nif8Of(const QString& nif);

// A mounted volume as the list of units sees it.
struct MountedVolume {
    QString root;
    bool ready = true;
    bool readOnly = false;
};
// The units offered to the user: the home folder first, then the volumes where a user keeps
// data (removable media under /media, /run/media or /mnt, and folders below the home) that
// are ready and writable. The root of the system and its mounts are never offered: nothing
// of the user's can be written there.
QStringList userUnits(const QString& home, const std::vector<MountedVolume>& volumes);
// userUnits of this machine.
QStringList availableUnits();
QString defaultUnit();
// ~/.config/tallora5/ (the XDG configuration location).
QString defaultProgramDir();
// The installed resources: beside the program when installed, else the source tree's.
QString defaultResourcesDir();

}  // namespace tallora
