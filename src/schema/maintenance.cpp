#include "maintenance.h"

#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "store/repair.h"
#include "store/store_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tallora::schema {
namespace {

constexpr int kPathNotFound = 76;
constexpr int kAccessError = 75;

QStringList databasesIn(const QString& folder) {
    QStringList paths;
    const QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("*.mdb")}, QDir::Files, QDir::Name | QDir::IgnoreCase))
        paths << dir.filePath(name);
    return paths;
}

void copyFiles(const QString& from, const QString& to) {
    const QDir source(from);
    for (const QString& name : source.entryList(QDir::Files | QDir::Hidden)) {
        QFile::remove(QDir(to).filePath(name));
        QFile::copy(source.filePath(name), QDir(to).filePath(name));
    }
}

void removeFiles(const QString& folder) {
    const QDir dir(folder);
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden | QDir::System))
        QFile::remove(dir.filePath(name));
}

QString repairReport(const WorkingContext& ctx, const QString& path, const store::RepairResult& r) {
    QString rows = fixedText(ctx, QStringLiteral("Filas recuperadas: %1"),
                             QStringLiteral("Files recuperades: %1"))
                       .arg(r.rowsRecovered);
    if (r.rowsCounted >= 0) rows += QStringLiteral(" de %1").arg(r.rowsCounted);
    rows += u'.';
    if (r.rowsCounted < 0 || r.rowsRecovered < r.rowsCounted)
        rows +=
            fixedText(ctx, QStringLiteral(" Las filas que no se han podido leer se han perdido."),
                      QStringLiteral(" Les files que no s'han pogut llegir s'han perdut."));
    const QString kept = fixedText(ctx, QStringLiteral("Copia dañada guardada en: "),
                                   QStringLiteral("Còpia malmesa desada a: ")) +
                         r.damagedCopy;
    return Missatge(ctx, 130) + QStringLiteral("\n\n") + path + u'\n' + rows + u'\n' + kept;
}

}  // namespace

QString damagedCopiesFolder(const WorkingContext& ctx, bool exerciseFile) {
    QString folder = withTrailingSlash(ctx.companyFolder()) + QStringLiteral("bkp/damaged/");
    if (exerciseFile) folder += ctx.Exercici + u'/';
    return folder;
}

bool Repara_Bases(const WorkingContext& ctx, Dialogs& dialogs) {
    try {
        for (const bool exerciseFiles : {true, false}) {
            const QString folder = exerciseFiles ? QString(ctx.Directori) : ctx.companyFolder();
            for (const QString& path : databasesIn(folder)) {
                const store::RepairResult r =
                    store::repairDatabase(path, damagedCopiesFolder(ctx, exerciseFiles));
                if (r.damaged) dialogs.information(repairReport(ctx, path, r));
            }
        }
    } catch (const store::StoreError& e) {
        dialogs.stop(Missatge(ctx, 130) + QStringLiteral("\n\n") + e.message());
        return false;
    }
    dialogs.information(Missatge(ctx, 6611));
    return true;
}

bool Compacta_Bases(const WorkingContext& ctx, Dialogs& dialogs) {
    const QStringList folders{ctx.Directori, ctx.companyFolder()};
    const QDir exercise(ctx.Directori);
    for (const QString& name : exercise.entryList({QStringLiteral("*.*N")}, QDir::Files, QDir::NoSort))
        if (name.endsWith(u'N')) QFile::remove(exercise.filePath(name));
    try {
        for (const QString& folder : folders) {
            for (const QString& source : databasesIn(folder)) {
                const QString target = source.chopped(1) + u'N';
                QFile::remove(target);
                store::compactDatabase(source, target);
                // The source goes only once its compacted copy is complete.
                if (target.endsWith(u'N') && QFile::remove(source)) QFile::rename(target, source);
            }
        }
    } catch (const store::StoreError& e) {
        dialogs.stop(Missatge(ctx, 124) + QStringLiteral("\n\n") + e.message());
        return false;
    }
    dialogs.information(Missatge(ctx, 6611));
    return true;
}

void Copia_Seguretat(const QString& companyFolder, const QString& year, QDate today) {
    const QString company = withTrailingSlash(companyFolder);
    QString target = company + QStringLiteral("bkp/copia_v4/") + year;
    if (QFileInfo::exists(target + QStringLiteral("/gest.mdb"))) {
        const QString day = company + QStringLiteral("bkp/") + QString::number(today.dayOfWeek());
        target = day + u'/' + year;
        // Each weekday keeps only the last opening of that day.
        if (QFileInfo::exists(target + QStringLiteral("/gest.mdb"))) {
            removeFiles(target);
            removeFiles(day);
        }
    }
    QDir().mkpath(target);
    copyFiles(company + year, target);
    copyFiles(company, QDir::cleanPath(target + QStringLiteral("/..")));
}

int Esborra_Carpeta(const QString& path) {
    QString folder = path.trimmed();
    if (folder.endsWith(u'/')) folder.chop(1);
    if (folder.isEmpty() || !folder.contains(u'/') || !QFileInfo(folder).isDir()) return kPathNotFound;
    const QDir dir(folder);
    int failures = 0;
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        const QString file = dir.filePath(name);
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        if (!QFile::remove(file)) ++failures;
    }
    for (const QString& sub : dir.entryList(QDir::Dirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        if (Esborra_Carpeta(dir.filePath(sub)) != 0) ++failures;
    if (!QDir().rmdir(folder)) ++failures;
    return failures == 0 ? 0 : kAccessError;
}

}  // namespace tallora::schema
