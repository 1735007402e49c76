#include "cli_options.h"

#include "shell/exercises.h"

#include <QRegularExpression>

namespace tallora::cli {
namespace {

// Every option the program knows, and whether it takes a value.
const std::map<QString, bool>& knownOptions() {
    static const std::map<QString, bool> options = [] {
        std::map<QString, bool> o{{"unit", true},      {"program-dir", true}, {"yes", false},
                                  {"help", false},     {"name", true},        {"address", true},
                                  {"town", true},      {"postal-code", true}, {"nif", true},
                                  {"treasury", false}, {"year", true},        {"kind", true},
                                  {"currency", true}};
        for (const char* rate :
             {"iva1", "iva2", "iva3", "re1", "re2", "re3", "ivas1", "ivas2", "ivas3", "ivas4"})
            o.emplace(QString::fromLatin1(rate), true);
        // The fields of the master files.
        for (const char* field :
             {"province", "phone", "fax", "email", "web", "re", "balance", "payment", "bank", "ccc",
              "class", "group", "group-name", "code", "description", "price"})
            o.emplace(QString::fromLatin1(field), true);
        o.insert({{"suppliers", false}, {"party", true}, {"order", true}});
        // The fields of the sales screen.
        for (const QString& field :
             QStringLiteral("day month customer account series total rate irpf-base "
                            "irpf-percent irpf-amount base1 base2 base3 treasury-account due "
                            "classification concept1 concept2 concept3 concept4 concept5")
                 .split(u' '))
            o.emplace(field, true);
        // The purchases and provisions screens, and the inquiries' filters.
        for (const QString& field :
             QStringLiteral("supplier base4 iva4 from to operator amount").split(u' '))
            o.emplace(field, true);
        o.emplace(QStringLiteral("pending"), false);
        o.emplace(QStringLiteral("no-treasury"), false);
        // The treasury screens: runs, their draft, other movements.
        for (const QString& field :
             QStringLiteral("date concept from-treasury from-other to-treasury to-other")
                 .split(u' '))
            o.emplace(field, true);
        o.insert({{"empty", false}, {"open", false}});
        // The books.
        o.insert({{"series", true},
                  {"irpf", false},
                  {"pdf", true},
                  {"xlsx", true},
                  {"csv", true},
                  {"text", false}});
        o.emplace(QStringLiteral("level"), true);
        // The sample exercise.
        o.insert({{"invoices", true}, {"seed", true}});
        // Billing documents: their lines and their commercial fields.
        o.insert({{"line", true}, {"bank-name", true}});
        // The interchange file: what an export or an import takes.
        o.insert(
            {{"customers", false}, {"chart", false}, {"whole", false}, {"record-invoices", false}});
        // VERI*FACTU: the company's certificate for the tax agency's service.
        o.emplace(QStringLiteral("certificate"), true);
        // The bank: mandates and accounts, SEPA files and their settings, statements.
        for (const QString& field :
             QStringLiteral("mandate mandate-date mandate-recurrent iban bic collection-date "
                            "execution-date out suffix versions other-account")
                 .split(u' '))
            o.emplace(field, true);
        o.emplace(QStringLiteral("accept-matches"), false);
        // The tax agency's books and returns.
        o.insert({{"monthly", false}, {"file", true}, {"box", true}});
        return o;
    }();
    return options;
}

// --invoices is the count of invoices of sample-exercise, and in the command book (named
// before it) the flag that asks for the list of invoices rather than the ledger.
bool takesValue(const CliOptions& options, const QString& name, bool known) {
    if (name == u"invoices" && options.command == u"book") return false;
    return known;
}

// Options that may be given more than once: each gives one more value.
bool repeatable(const QString& name) {
    return name == u"line" || name == u"box";
}

void take(CliOptions& options, const QString& word) {
    if (options.command.isEmpty())
        options.command = word;
    else
        options.arguments << word;
}

}  // namespace

QString CliOptions::value(const QString& name, const QString& fallback) const {
    const auto it = values.find(name);
    return it == values.end() ? fallback : it->second;
}

QStringList CliOptions::all(const QString& name) const {
    const auto it = repeated.find(name);
    return it == repeated.end() ? QStringList{} : it->second;
}

QStringList CliOptions::names() const {
    QStringList all(flags.begin(), flags.end());
    for (const auto& [name, value] : values) all << name;
    return all;
}

const QStringList& globalOptions() {
    static const QStringList options{"unit", "program-dir", "yes", "help"};
    return options;
}

CliOptions parseCommandLine(const QStringList& args) {
    static const QRegularExpression optionWord(QStringLiteral("^--([a-z][a-z0-9-]*)(=(.*))?$"),
                                               QRegularExpression::DotMatchesEverythingOption);
    CliOptions options;
    bool onlyArguments = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& word = args[i];
        if (onlyArguments) {
            take(options, word);
            continue;
        }
        if (word == QStringLiteral("--")) {
            onlyArguments = true;
            continue;
        }
        const auto m = optionWord.match(word);
        if (!m.hasMatch()) {
            take(options, word);
            continue;
        }
        const QString name = m.captured(1);
        const auto known = knownOptions().find(name);
        if (known == knownOptions().end())
            throw UsageError{QStringLiteral("unknown option --%1").arg(name)};
        if (options.given(name) && !repeatable(name))
            throw UsageError{QStringLiteral("option --%1 given twice").arg(name)};
        const bool inlineValue = m.hasCaptured(2);
        if (!takesValue(options, name, known->second)) {
            if (inlineValue)
                throw UsageError{QStringLiteral("option --%1 takes no value").arg(name)};
            options.flags.insert(name);
        } else {
            if (!inlineValue && i + 1 >= args.size())
                throw UsageError{QStringLiteral("option --%1 needs a value").arg(name)};
            const QString value = inlineValue ? m.captured(3) : args[++i];
            options.values[name] = value;
            if (repeatable(name)) options.repeated[name] << value;
        }
    }
    return options;
}

QString yearArgument(const QString& text) {
    if (!shell::isExerciseYear(text))
        throw UsageError{QStringLiteral("\"%1\" is not a year of four digits").arg(text)};
    return text;
}

int monthArgument(const QString& text) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,2}$"));
    const int month = digits.match(text).hasMatch() ? text.toInt() : 0;
    if (month < 1 || month > 12)
        throw UsageError{QStringLiteral("\"%1\" is not a month from 1 to 12").arg(text)};
    return month;
}

int monthOption(const CliOptions& o, const QString& name, int fallback) {
    if (!o.given(name)) return fallback;
    try {
        return monthArgument(o.value(name));
    } catch (const UsageError& e) {
        throw UsageError{QStringLiteral("--%1: %2").arg(name, e.reason)};
    }
}

QString rateArgument(const QString& option, const QString& text) {
    static const QRegularExpression rate(QStringLiteral("^([0-9]+([.,][0-9]*)?|[.,][0-9]+)$"));
    if (!rate.match(text).hasMatch())
        throw UsageError{QStringLiteral("--%1: \"%2\" is not a rate").arg(option, text)};
    return text;
}

}  // namespace tallora::cli
