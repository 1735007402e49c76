#include "commands.h"
#include "shell/company_data.h"
#include "shell/exercises.h"
#include "shell/startup.h"

namespace tallora::cli {
namespace {

template <std::size_t N>
void takeRates(const CliOptions& o, const char* prefix, std::array<QString, N>& rates) {
    for (std::size_t i = 0; i < N; ++i) {
        const QString option = QString::fromLatin1(prefix) + QString::number(i + 1);
        if (o.given(option)) rates[i] = rateArgument(option, o.value(option));
    }
}

shell::NewExercise exerciseArguments(const CliOptions& o) {
    shell::NewExercise e = shell::defaultNewExercise();
    if (!o.given(QStringLiteral("year"))) throw UsageError{QStringLiteral("--year is missing")};
    e.exercici = yearArgument(o.value(QStringLiteral("year")));
    const QString kind = o.value(QStringLiteral("kind"), QStringLiteral("FACTURES"));
    if (kind != QStringLiteral("FACTURES") && kind != QStringLiteral("TICKETS"))
        throw UsageError{
            QStringLiteral("--kind: \"%1\" is neither FACTURES nor TICKETS").arg(kind)};
    e.botiga = kind == QStringLiteral("TICKETS");
    if (o.given(QStringLiteral("currency"))) {
        e.moneda = o.value(QStringLiteral("currency"));
        if (!shell::currencies().contains(e.moneda))
            throw UsageError{QStringLiteral("--currency: \"%1\" is not one of: %2")
                                 .arg(e.moneda, shell::currencies().join(QStringLiteral(", ")))};
    }
    takeRates(o, "iva", e.iva);
    takeRates(o, "re", e.re);
    takeRates(o, "ivas", e.ivas);
    return e;
}

}  // namespace

int exercisesCommand(Session& s, const CliOptions& o) {
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    for (const QString& row : shell::exerciseRows(s.ctx)) s.out << row << '\n';
    return s.finish(true);
}

int exerciseCreateCommand(Session& s, const CliOptions& o) {
    const shell::NewExercise exercise = exerciseArguments(o);
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    return s.finish(shell::Graba_Exercici(s.ctx, s.dialogs, exercise));
}

int exerciseRemoveCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    const auto row = s.exerciseRow(year);
    if (!row) return kRefused;
    return s.finish(shell::Elimina_Exercici(s.ctx, s.dialogs, *row));
}

int exerciseRatesCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    shell::ExerciseRates rates = shell::currentRates(s.ctx);
    takeRates(o, "iva", rates.iva);
    takeRates(o, "re", rates.re);
    takeRates(o, "ivas", rates.ivas);
    return s.finish(shell::Graba_Tipus(s.ctx, s.dialogs, rates));
}

int exerciseOpenCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    const auto row = s.exerciseRow(year);
    if (!row || !shell::Obre_Exercici(s.ctx, s.dialogs, *row)) return kRefused;
    // Its result only says whether pantalla.cfg was there; failures come as stops.
    shell::Inicia_MDI(s.ctx, &s.dialogs);
    if (s.dialogs.refused()) return kRefused;
    s.out << s.ctx.Directori << '\n';
    return kDone;
}

}  // namespace tallora::cli
