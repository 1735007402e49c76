// sample-exercise: an opened exercise filled with made-up customers, suppliers, accounts and
// a year of invoices, posted by the rules of the sales and purchases screens.
#include "commands.h"
#include "context/entry_fields.h"
#include "context/month_lock.h"
#include "entry_common.h"
#include "master_common.h"
#include "shell/sample_exercise.h"

#include <QRegularExpression>

#include <cstdint>

namespace tallora::cli {
namespace {

// --invoices N: a whole number from 1, at most nine digits.
int invoicesArgument(const CliOptions& o) {
    if (!o.given(QStringLiteral("invoices")))
        throw UsageError{QStringLiteral("--invoices is missing")};
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,9}$"));
    const QString text = o.value(QStringLiteral("invoices"));
    const int invoices = digits.match(text).hasMatch() ? text.toInt() : 0;
    if (invoices < 1)
        throw UsageError{
            QStringLiteral("--invoices: \"%1\" is not a whole number from 1").arg(text)};
    return invoices;
}

// --seed S: a whole number from 0 that fits in 64 bits; 1 when not given.
std::uint64_t seedArgument(const CliOptions& o, std::uint64_t fallback) {
    if (!o.given(QStringLiteral("seed"))) return fallback;
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,20}$"));
    const QString text = o.value(QStringLiteral("seed"));
    bool fits = false;
    const std::uint64_t seed = digits.match(text).hasMatch() ? text.toULongLong(&fits) : 0;
    if (!fits)
        throw UsageError{QStringLiteral("--seed: \"%1\" is not a whole number from 0").arg(text)};
    return seed;
}

}  // namespace

int sampleExerciseCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    shell::SampleOptions options;
    options.invoices = invoicesArgument(o);
    options.seed = seedArgument(o, options.seed);
    if (!enterPostingScreen(s, w)) return kRefused;
    // Neither takes the sales the sample makes: with the billing module a sale is a document
    // with its lines, and a shop's exercise has no customers and no IVA split.
    if (s.ctx.Facturacio)
        return s.refuse(QStringLiteral("%1: with the billing module the sales are billing "
                                       "documents with their lines, which the sample does not make")
                            .arg(o.command));
    if (isTickets(s.ctx))
        return s.refuse(QStringLiteral("%1: the exercise %2 is a shop's (TICKETS), without "
                                       "customers or an IVA split")
                            .arg(o.command, w.year));
    // The sample posts in every month, as the screens would: none may be locked.
    for (int month = 1; month <= 12; ++month)
        if (Mes_Bloquejat(s.ctx, month))
            return s.refuse(QStringLiteral("%1: the month %2 of %3 is locked against new entries")
                                .arg(o.command)
                                .arg(month)
                                .arg(w.year));
    const shell::SampleSummary done = shell::fillSampleExercise(s.ctx, options);
    s.out << done.customers << '\t' << done.suppliers << '\t' << done.sales << '\t'
          << done.purchases << '\t' << done.creditNotes << '\t' << done.settled << '\n';
    return s.finish(true);
}

}  // namespace tallora::cli
