#include "entry_fields.h"

#include "common_helpers.h"
#include "dialogs.h"
#include "messages.h"
#include "working_context.h"

namespace tallora {

bool isTickets(const WorkingContext& ctx) {
    return ctx.ModeExercici == QStringLiteral("TICKETS");
}

bool isEmptyAmount(const QString& text) {
    const QString t = text.trimmed();
    return t.isEmpty() || t == QStringLiteral("-");
}

Money amountOf(const WorkingContext& ctx, const QString& text) {
    if (isEmptyAmount(text)) return {};
    return Money::parse(text, ctx.decimalMark()).value_or(Money{});
}

double doubleOf(const WorkingContext& ctx, const QString& text) {
    return amountOf(ctx, text).toDouble();
}

QString reformat(const WorkingContext& ctx, const QString& text) {
    if (isEmptyAmount(text)) return text;
    const auto value = Money::parse(text, ctx.decimalMark());
    return value ? Format_Import(ctx, *value) : text;
}

std::optional<QDate> Valida_Data(const WorkingContext& ctx, const QString& day,
                                 const QString& month) {
    bool okDay = false, okMonth = false, okYear = false;
    const int d = day.trimmed().toInt(&okDay);
    const int m = month.trimmed().toInt(&okMonth);
    const int y = ctx.Exercici.toInt(&okYear);
    if (!okDay || !okMonth || !okYear || m < 1 || m > 12 || d < 1) return std::nullopt;
    // A day past the month's end rolls into the next month, and the month then differs.
    const QDate date = QDate(y, m, 1).addDays(d - 1);
    if (!date.isValid() || date.month() != m) return std::nullopt;
    return date;
}

void refuseChangeInProgress(const WorkingContext& ctx, Dialogs& dialogs) {
    dialogs.stop(Missatge(ctx, 657) + QStringLiteral("\n\n") + Missatge(ctx, 658) +
                 QStringLiteral("\n\n") + Missatge(ctx, 659));
}

void showDate(const QDate& date, QString& lblFecha, QString& txtDia, QString& txtMes) {
    lblFecha = date.toString(QStringLiteral("dd/MM/yyyy"));
    txtDia = QString::number(date.day());
    txtMes = QString::number(date.month());
}

}  // namespace tallora
