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

QStringList availableUnits() {
    QStringList units{QDir::homePath()};
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || !volume.isReady()) continue;
        const QString root = volume.rootPath();
        if (!units.contains(root)) units << root;
    }
    return units;
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
