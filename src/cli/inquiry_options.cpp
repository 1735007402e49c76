#include "inquiry_options.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master_common.h"

namespace tallora::cli {
QDate dateOption(const CliOptions& o, const QString& option, const QDate& fallback) {
    if (!o.given(option)) return fallback;
    const QDate date = QDate::fromString(o.value(option), QStringLiteral("dd/MM/yyyy"));
    if (!date.isValid())
        throw UsageError{
            QStringLiteral("--%1: \"%2\" is not a date DD/MM/YYYY").arg(option, o.value(option))};
    return date;
}

QDate exerciseDate(const ExerciseWords& w, const CliOptions& o, const QString& option) {
    const int year = w.year.toInt();
    const QDate date = dateOption(o, option, exerciseDay(year, QDate::currentDate()));
    if (date.year() != year)
        throw UsageError{QStringLiteral("--%1: %2 is outside the exercise %3")
                             .arg(option, o.value(option), w.year)};
    return date;
}

schema::DateAmountFilter dateAmountFilter(const WorkingContext& ctx, const CliOptions& o) {
    const int year = ctx.Exercici.toInt();
    schema::DateAmountFilter f;
    f.from = dateOption(o, QStringLiteral("from"), QDate(year, 1, 1));
    f.to = dateOption(o, QStringLiteral("to"), QDate(year, 12, 31));
    if (o.given(QStringLiteral("operator"))) {
        const QStringList operators{"=", "<>", "<=", ">="};
        f.operacio = operators[choiceArgument(QStringLiteral("operator"),
                                              o.value(QStringLiteral("operator")), operators)];
    }
    takeText(o, "amount", f.import);
    return f;
}

void printInquiryTotals(Session& s, Money total, std::size_t count) {
    s.out << QStringLiteral("TOTAL") << '\t' << Format_Import(s.ctx, total) << '\n'
          << Missatge(s.ctx, 807) << '\t' << count << '\n';
}

}  // namespace tallora::cli
