#include "entry_common.h"

#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "master/treasury_accounts.h"
#include "master_common.h"

#include <QRegularExpression>

namespace tallora::cli {

QString optionName(const char* prefix, std::size_t i) {
    return QString::fromLatin1(prefix) + QString::number(i + 1);
}

void checkDayMonth(const CliOptions& o) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{0,2}$"));
    for (const QString option : {QStringLiteral("day"), QStringLiteral("month")})
        if (o.given(option) && !digits.match(o.value(option)).hasMatch())
            throw UsageError{QStringLiteral("--%1: \"%2\" is not one or two digits")
                                 .arg(option, o.value(option))};
}

QDate dueArgument(const QString& text) {
    const QDate date = QDate::fromString(text, QStringLiteral("dd/MM/yyyy"));
    if (!date.isValid())
        throw UsageError{QStringLiteral("--due: \"%1\" is not a date DD/MM/YYYY").arg(text)};
    return date;
}

QString percentField(const WorkingContext& ctx, const QString& typed) {
    QString text = typed;
    return text.replace(u',', ctx.decimalMark()).replace(u'.', ctx.decimalMark());
}

bool dateChecked(const WorkingContext& ctx, Dialogs& dialogs, const QString& day,
                 const QString& month, QString& lblFecha) {
    if (day.isEmpty() || month.isEmpty()) return true;
    const auto date = Valida_Data(ctx, day, month);
    if (!date) {
        dialogs.information(Missatge(ctx, 619));
        return false;
    }
    lblFecha = date->toString(QStringLiteral("dd/MM/yyyy"));
    if (!Mes_Bloquejat(ctx, date->month())) return true;
    dialogs.information(Missatge(ctx, 622));
    return false;
}

bool takeTreasuryAccount(Session& s, const CliOptions& o, QString& entitat,
                         std::optional<std::int64_t>& entitatId) {
    if (o.flags.contains(QStringLiteral("pending"))) {
        entitat.clear();
        entitatId.reset();
    }
    if (!o.given(QStringLiteral("treasury-account"))) return true;
    const QString name = o.value(QStringLiteral("treasury-account"));
    const auto account = master::treasuryAccountByName(s.ctx, name);
    if (!account) {
        noSuchRecord(s, QStringLiteral("treasury account"), name);
        return false;
    }
    entitat = account->entidad;
    entitatId = account->id.toLongLong();
    return true;
}

void printJournal(Session& s, const std::vector<JournalRow>& rows) {
    for (const JournalRow& row : rows) {
        s.out << row.text;
        if (row.opensChange()) s.out << ' ' << row.number;
        s.out << '\n';
    }
}

}  // namespace tallora::cli
