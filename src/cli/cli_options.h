#pragma once
// The words of a command line: the command, its arguments and the options, which may stand
// before or after the command. Everything that is wrong with the words themselves is a
// UsageError; what the data refuse is left to the commands.
#include <QSet>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>

namespace tallora::cli {

struct UsageError {
    QString reason;
};

struct CliOptions {
    QString command;                    // empty when none was given
    QStringList arguments;              // the words after the command, in order
    std::map<QString, QString> values;  // options that take a value, by name without "--"
    QSet<QString> flags;                // options without a value that were given
    // Every value of an option that may be repeated (--line), in the order given; its last
    // value is also in `values`.
    std::map<QString, QStringList> repeated;

    bool given(const QString& name) const { return values.count(name) || flags.contains(name); }
    QString value(const QString& name, const QString& fallback = {}) const;
    QStringList all(const QString& name) const;
    // Every option given, by name, for the check against what a command accepts.
    QStringList names() const;
};

// The options any command takes.
const QStringList& globalOptions();

// Splits `args`. An argument "--name" or "--name=value" with a lowercase name is an option
// and must be a known one; anything else, such as the key "--B12345" of a duplicated tax
// number, is an argument. After a lone "--" every word is an argument.
CliOptions parseCommandLine(const QStringList& args);

// Checked values: each throws UsageError naming what is wrong.
QString yearArgument(const QString& text);  // four digits
int monthArgument(const QString& text);     // 1 to 12
// The month of option --`name` (monthArgument, its reason named after the option), or
// `fallback` when the option is not given.
int monthOption(const CliOptions& o, const QString& name, int fallback);
// A rate as a person types it in its field: digits with at most one decimal mark, "," or ".".
QString rateArgument(const QString& option, const QString& text);

}  // namespace tallora::cli
