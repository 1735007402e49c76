#pragma once
// What the commands on master files share: the checks of their words, the entry into an
// exercise as its screens find it, and the turn of a field typed on the command line into
// the text its field would hold.
#include "cli_options.h"
#include "master/outcome.h"
#include "session.h"

#include <QString>

namespace tallora::cli {

// The company key and year that every master command takes first; the year is checked.
struct ExerciseWords {
    QString nif8;
    QString year;
};
ExerciseWords exerciseWords(const CliOptions& o);

// A record number as the lists print it: digits only.
QString numberArgument(const QString& text);
// An amount as a person types it in a money field: an optional "-", digits and at most one
// decimal mark, "," or "." whatever the program's setting. Empty is allowed: the field may
// be left blank.
QString amountArgument(const QString& option, const QString& text);
// "yes" or "no".
bool yesNoArgument(const QString& option, const QString& text);
// One of `words`: gives its position.
qsizetype choiceArgument(const QString& option, const QString& text, const QStringList& words);

// Starts the session and brings the context to the exercise as the screens have it, decimal
// mark included. Refused when the company or the year is unknown, or when the databases lack
// what the opening of the exercise adds (an exercise never opened since it was created, or
// since an option was turned on): the screens only exist after that opening.
// A company option the screen itself needs, told before the databases are looked at.
enum class Needs { Nothing, Treasury, Billing };
bool enterMasterFiles(Session& s, const ExerciseWords& w, Needs needs = Needs::Nothing,
                      const QString& what = {});

// Refusals for what only exists with an option of the company; `what` names it for the user.
bool needsTreasury(Session& s, const QString& what);
bool needsBilling(Session& s, const QString& what);

// An amount checked by amountArgument, the way its field shows it once left: the program's
// decimal mark and the money format. Empty stays empty.
QString fieldAmount(const WorkingContext& ctx, const QString& typed);

// Puts an option's value into `field` when the option was given.
void takeText(const CliOptions& o, const char* option, QString& field);

// The exit code of a save or a deletion.
int outcomeCode(const Session& s, const master::Outcome& outcome);

// A refusal for a number or code that no record of the exercise has.
int noSuchRecord(Session& s, const QString& what, const QString& key);

}  // namespace tallora::cli
