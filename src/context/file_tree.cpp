#include "file_tree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>

namespace tallora {

QString withTrailingSlash(const QString& folder) {
    return folder.endsWith(u'/') ? folder : folder + u'/';
}

QString findFileNoCase(const QString& folder, const QString& name) {
    const QString base = withTrailingSlash(folder);
    const QString exact = base + name;
    if (QFileInfo::exists(exact)) return exact;
    const QDir dir(base);
    if (dir.exists()) {
        const QStringList entries =
            dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        for (const QString& entry : entries)
            if (entry.compare(name, Qt::CaseInsensitive) == 0) return base + entry;
    }
    return exact;
}

QString llibresDir(const QString& unit) {
    return withTrailingSlash(unit) + QStringLiteral("brenwick/LLibres/");
}

QString companyDir(const QString& unit, const QString& nif8) {
    return llibresDir(unit) + nif8 + QStringLiteral(".EMP/");
}

QString nif8Of(const QString& nif) { return nif.left(8); }

QStringList userUnits(const QString& home, const std::vector<MountedVolume>& volumes) {
    const QString homeDir = withTrailingSlash(QDir::cleanPath(home));
    const auto userPlace = [&](const QString& root) {
        const QString dir = withTrailingSlash(QDir::cleanPath(root));
        for (const char* base : {"/media/", "/run/media/", "/mnt/"})
            if (dir.startsWith(QLatin1String(base)) && dir.size() > qsizetype(qstrlen(base)))
                return true;
        return dir.startsWith(homeDir) && dir != homeDir;
    };
    QStringList units{QDir::cleanPath(home)};
    for (const MountedVolume& v : volumes) {
        const QString root = QDir::cleanPath(v.root);
        if (v.ready && !v.readOnly && userPlace(root) && !units.contains(root)) units << root;
    }
    return units;
}

QStringList availableUnits() {
    std::vector<MountedVolume> volumes;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (volume.isValid())
            volumes.push_back({volume.rootPath(), volume.isReady(), volume.isReadOnly()});
    return userUnits(QDir::homePath(), volumes);
}

QString defaultUnit() { return QDir::homePath(); }

QString defaultProgramDir() {
    return withTrailingSlash(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/tallora5"));
}

QString defaultResourcesDir() {
    if (QCoreApplication::instance()) {
        const QString installed =
            QCoreApplication::applicationDirPath() + QStringLiteral("/../share/tallora5");
        if (QFileInfo::exists(installed)) return withTrailingSlash(QDir::cleanPath(installed));
    }
    return withTrailingSlash(QStringLiteral(TALLORA_SOURCE_RESOURCES));
}

}  // namespace tallora
