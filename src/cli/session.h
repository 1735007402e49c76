#pragma once
// What one run of a command works with: the working context, the message boxes on the
// terminal, and the steps that bring the context to a company or an exercise by its key.
#include "cli_dialogs.h"
#include "context/working_context.h"

#include <QString>
#include <QTextStream>

#include <optional>

namespace tallora::cli {

class Session {
public:
    Session(QTextStream& out, QTextStream& err, bool assumeYes, QString unit, QString programDir);

    // The start of the program (language, working unit, templates of the program folder).
    // Commands call it once their words are checked, so that a usage error changes nothing.
    void start();

    // kDone when `done` and nothing was refused on the way, kRefused otherwise.
    int finish(bool done) const;
    // A refusal of the companion's own: the reason on err, and kRefused.
    int refuse(const QString& reason);

    // The company-list row whose key is `nif8`; a key the unit does not list is refused.
    std::optional<QString> companyRow(const QString& nif8);
    // Obre_Empresa on the row of `nif8`.
    bool openCompany(const QString& nif8);
    // The row of `year` in the list of exercises of the open company; refused when absent.
    std::optional<QString> exerciseRow(const QString& year);
    // The company, then the exercise's parameters and folder put into the context as the
    // opening of an exercise puts them, without its safety copy and upgrades.
    bool enterExercise(const QString& nif8, const QString& year);

    WorkingContext ctx;
    CliDialogs dialogs;
    QTextStream& out;
    QTextStream& err;

private:
    QString unit_;     // empty: the one the start finds
    QString company_;  // the key of the open company
};

}  // namespace tallora::cli
