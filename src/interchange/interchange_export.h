#pragma once
// The export of an exercise to an interchange file (btn_Exporta of frmImportar).
//
// The file is Windows-1252 with CR LF. It is written to a temporary file beside the target
// and renamed over it at the end, so that a fault leaves the former file, or none, never
// half a file.
#include "context/fwd.h"

#include <QDateTime>
#include <QString>

#include <functional>

namespace tallora::interchange {

struct ExportChoice {
    bool whole = true;  // OpExportaTodo; otherwise the boxes say what goes
    bool customers = false;
    bool suppliers = false;
    bool chart = false;
};

// What a long run tells as it goes: a log line per record, and records done of the total.
struct RunReport {
    std::function<void(const QString& line)> log;
    std::function<void(qint64 done, qint64 total)> progress;
};

// btn_Exporta: the checks with their messages, the file, the message at the end. False
// when nothing was written (an empty path too, which shows nothing).
bool Exporta(const WorkingContext& ctx, Dialogs& dialogs, const QString& path,
             const ExportChoice& choice, const RunReport& report = {},
             const QDateTime& now = QDateTime::currentDateTime());

// The file itself, without checks or messages; gives the records written. Throws
// store::StoreError or std::runtime_error on a fault, leaving no file behind.
qint64 writeInterchangeFile(const WorkingContext& ctx, const QString& path,
                            const ExportChoice& choice, const RunReport& report,
                            const QDateTime& now);

// True when `path` ends in the exercise's year + ".dat", in any case of letters: the name of
// the exercise's own settings file, which an export must not take.
bool isExerciseSettingsName(const WorkingContext& ctx, const QString& path);

}  // namespace tallora::interchange
