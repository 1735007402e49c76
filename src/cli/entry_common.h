#pragma once
// What the posting commands (sales, purchases, provisions) share: the screen's faults turned
// into refusals, the checks of day, month and due date, the date step of txtMes, the
// treasury account chosen by name, and the day log printed one row a line.
#include "cli_options.h"
#include "context/day_log.h"
#include "context/dialogs.h"
#include "master_common.h"
#include "session.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tallora::cli {

// The screen tells the faults of an entry with the information icon and keeps the entry
// open; here nothing stays open, so they are refusals and go where every refusal goes.
class EntryDialogs : public Dialogs {
public:
    explicit EntryDialogs(Dialogs& inner) : inner_(inner) {}
    void information(const QString& text, const QString& title) override {
        inner_.stop(text, title);
    }
    void stop(const QString& text, const QString& title) override { inner_.stop(text, title); }
    Answer yesNo(const QString& text, const QString& title) override {
        return inner_.yesNo(text, title);
    }
    Answer okCancel(const QString& text, const QString& title, Icon icon) override {
        return inner_.okCancel(text, title, icon);
    }
    void beep() override { inner_.beep(); }

private:
    Dialogs& inner_;
};

// "base1", "iva3" ...: `prefix` and the slot counted from 1.
QString optionName(const char* prefix, std::size_t i);

// --day and --month take at most two digits, or stay blank; what they hold is judged by the
// date check. --due is a date DD/MM/YYYY.
void checkDayMonth(const CliOptions& o);
QDate dueArgument(const QString& text);

// A percent as its field holds it: the program's decimal mark.
QString percentField(const WorkingContext& ctx, const QString& typed);

// Enter in txtMes: the date of day and month into `lblFecha`, then the month lock (messages
// 619 and 622). An entry without day or month is left to the check of the entry, which
// names what is missing.
bool dateChecked(const WorkingContext& ctx, Dialogs& dialogs, const QString& day,
                 const QString& month, QString& lblFecha);

// --treasury-account NAME into ListEntitats (text and Id), --pending clears it. False, after
// the refusal, for a name that no treasury account has.
bool takeTreasuryAccount(Session& s, const CliOptions& o, QString& entitat,
                         std::optional<std::int64_t>& entitatId);

// The words every posting command checks before anything is opened: day and month, the
// amount options `amounts`, --irpf-percent, --rate (a rate or "otros"), --series, --due,
// --classification, and --treasury-account against --pending.
void checkPostingWords(const CliOptions& o, const QStringList& amounts);

// The exercise as a posting screen finds it: its files, and the month lock in force.
bool enterPostingScreen(Session& s, const ExerciseWords& w);

// What the company or a shop's exercise leave out of a posting screen: the treasury options
// need treasury control, --classification that option of the company, and the options
// `hiddenInTickets` do not go with an exercise of kind TICKETS.
bool postingOptionsExist(Session& s, const CliOptions& o, const QStringList& hiddenInTickets);

// On entering txtMes of a new entry the single open month is offered, unless --month says.
void offerOpenMonth(const WorkingContext& ctx, const CliOptions& o, QString& txtMes);

// The rate of CmbIva: "0", one of `rates`, or "otros" (0: bases by hand); by default the
// first rate, or "otros" when a base is typed. Nothing, after the refusal, for another rate;
// `what` names the list of rates in that refusal.
std::optional<double> splitRate(Session& s, const CliOptions& o, const std::vector<double>& rates,
                                bool basesTyped, const QString& what);

// True when one of the options --base1 .. --base`slotCount` is given.
bool anyBaseTyped(const CliOptions& o, std::size_t slotCount);

// --classification as the text of CmbClasificacion (6855 or 6856).
QString classificationText(const WorkingContext& ctx, const CliOptions& o);

// An invoice settled in a run keeps its treasury rows: its change takes neither
// --treasury-account nor --pending. True, after the refusal naming `invoice`, when given.
bool refusedForSettled(Session& s, const CliOptions& o, const QString& invoice);

// The day log of a posting, one row a line; a row that reopens the entry carries its number.
void printJournal(Session& s, const std::vector<JournalRow>& rows);

}  // namespace tallora::cli
