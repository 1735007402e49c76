#include "spreadsheet_path.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace tallora::report {

QString askSpreadsheetPath(QWidget* parent, const QString& caption, const QString& name) {
    QString proposed = name;
    if (QFileInfo(name).isRelative()) {
        QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        if (folder.isEmpty() || !QDir(folder).exists()) folder = QDir::homePath();
        proposed = QDir(folder).filePath(name);
    }
    const QString xlsx = QStringLiteral("Excel (*.xlsx)");
    const QString csv = QStringLiteral("CSV (*.csv)");
    QString chosen = proposed.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive) ? csv : xlsx;
    QString path = QFileDialog::getSaveFileName(parent, caption, proposed,
                                                xlsx + QStringLiteral(";;") + csv, &chosen);
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty())
        path += chosen == csv ? QStringLiteral(".csv") : QStringLiteral(".xlsx");
    return path;
}

}  // namespace tallora::report
