#pragma once
// The import of an interchange file into the open exercise (btn_Import of frmImportar).
//
// All or nothing: the wiping of the tables and every record's insert run in one
// transaction over the exercise's databases and the company's cartera.mdb and fact.mdb,
// attached to one connection. A record that cannot be read or inserted, a full disk or a
// killed process leaves every one of those files as it was before the import, and the
// message names the line of the file that was refused and why. The safety copies
// (_gest.bck ...) are still made before anything changes, as they always were.
#include "context/fwd.h"
#include "interchange_export.h"
#include "interchange_header.h"

#include <QString>

#include <stdexcept>

namespace tallora::interchange {

// The options of the import tab.
struct ImportChoice {
    bool whole = true;       // OpImportaTodo; OpImportaParcial otherwise
    bool customers = false;  // OpChkClientesImporta
    bool suppliers = false;  // OpChkProveedoresImporta
    bool chart = false;      // OpChkCuentasImporta
    // OpChkCuentas of the export tab, which the check of a selection reads in place of the
    // import's chart box.
    bool exportChart = false;
    // chkVerifactu: the sales of a whole import are this company's invoices and take their
    // VERI*FACTU records here. Off by default: a file usually carries invoices that another
    // installation has already recorded.
    bool recordInvoices = false;
};

// The options as the screen sets them for a file: a whole exercise is imported whole; a
// selection partly, with the boxes of what it holds.
ImportChoice presetFor(const FileHeader& header);

// A line of the file that was refused.
class ImportError : public std::runtime_error {
public:
    ImportError(qint64 line, QString key, const QString& reason)
        : std::runtime_error(reason.toStdString()), line_(line), key_(std::move(key)) {}
    qint64 line() const { return line_; }  // 0 when the fault is not of one line
    const QString& key() const { return key_; }

private:
    qint64 line_;
    QString key_;
};

// btn_Importa: the checks and the question, the safety copies, the wiping and the records,
// the log, "PROCESO FINALIZADO". True when the file was imported; the caller then closes
// the other windows, whose data are stale.
bool Importa(const WorkingContext& ctx, Dialogs& dialogs, const QString& path,
             const FileHeader& header, const ImportChoice& choice, const RunReport& report = {});

// The import itself, once checked and agreed: gives the records imported. Throws
// ImportError; nothing is changed then but the safety copies.
qint64 importInterchangeFile(const WorkingContext& ctx, const QString& path,
                             const FileHeader& header, const ImportChoice& choice,
                             const RunReport& report);

// The message for a refused import, in the language of the context.
QString importFailureText(const WorkingContext& ctx, const ImportError& e);

}  // namespace tallora::interchange
