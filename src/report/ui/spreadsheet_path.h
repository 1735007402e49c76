#pragma once
// The save dialog of a list saved as a spreadsheet, shared by the books dialog and the
// inquiries: XLSX or CSV, proposed in the documents folder.
#include <QString>

class QWidget;

namespace tallora::report {

// The path chosen for `name` (a file name, or a whole path kept as it is); empty when
// cancelled. A name typed without an extension takes that of the type chosen in the dialog.
QString askSpreadsheetPath(QWidget* parent, const QString& caption, const QString& name);

}  // namespace tallora::report
