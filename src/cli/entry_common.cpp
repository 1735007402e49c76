#include "entry_common.h"

#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "master/treasury_accounts.h"
#include "master_common.h"

#include <QRegularExpression>

namespace tallora::cli {
namespace {

const QString kOtros = QStringLiteral("otros");

}  // namespace

QString optionName(const char* prefix, std::size_t i) {
    return QString::fromLatin1(prefix) + QString::number(i + 1);
}

void checkDayMonth(const CliOptions& o) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{0,2}$"));
    for (const QString& option : {QStringLiteral("day"), QStringLiteral("month")})
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

void checkPostingWords(const CliOptions& o, const QStringList& amounts) {
    checkDayMonth(o);
    for (const QString& option : amounts)
        if (o.given(option)) amountArgument(option, o.value(option));
    if (o.given(QStringLiteral("irpf-percent")))
        rateArgument(QStringLiteral("irpf-percent"), o.value(QStringLiteral("irpf-percent")));
    if (o.given(QStringLiteral("rate")) && o.value(QStringLiteral("rate")) != kOtros)
        rateArgument(QStringLiteral("rate"), o.value(QStringLiteral("rate")));
    if (o.given(QStringLiteral("series")))
        choiceArgument(QStringLiteral("series"), o.value(QStringLiteral("series")),
                       {"/Abon", "/Rect"});
    if (o.given(QStringLiteral("due"))) dueArgument(o.value(QStringLiteral("due")));
    if (o.given(QStringLiteral("classification")))
        choiceArgument(QStringLiteral("classification"), o.value(QStringLiteral("classification")),
                       {"intra", "canarias"});
    if (o.given(QStringLiteral("treasury-account")) && o.flags.contains(QStringLiteral("pending")))
        throw UsageError{QStringLiteral("--treasury-account and --pending exclude each other")};
}

bool enterPostingScreen(Session& s, const ExerciseWords& w) {
    if (!enterMasterFiles(s, w)) return false;
    loadMonthLock(s.ctx);
    return true;
}

bool postingOptionsExist(Session& s, const CliOptions& o, const QStringList& hiddenInTickets) {
    for (const char* option : {"treasury-account", "pending", "due"})
        if (o.given(QString::fromLatin1(option)) &&
            !needsTreasury(s, QStringLiteral("--") + QString::fromLatin1(option)))
            return false;
    if (o.given(QStringLiteral("classification")) && !s.ctx.Intra) {
        s.refuse(QStringLiteral("--classification needs the classification of invoices, which "
                                "the company \"%1\" does not have")
                     .arg(s.ctx.EmpresaNom));
        return false;
    }
    if (!isTickets(s.ctx)) return true;
    for (const QString& option : hiddenInTickets)
        if (o.given(option)) {
            s.refuse(
                QStringLiteral("--%1 does not go with an exercise of kind TICKETS").arg(option));
            return false;
        }
    return true;
}

void offerOpenMonth(const WorkingContext& ctx, const CliOptions& o, QString& txtMes) {
    if (o.given(QStringLiteral("month"))) return;
    if (const auto month = Mes_Per_Defecte(ctx)) txtMes = QString::number(*month);
}

std::optional<double> splitRate(Session& s, const CliOptions& o, const std::vector<double>& rates,
                                bool basesTyped, const QString& what) {
    if (!o.given(QStringLiteral("rate"))) return basesTyped ? 0.0 : rates.front();
    const QString typed = o.value(QStringLiteral("rate"));
    if (typed == kOtros) return 0.0;
    const double rate = QString(typed).replace(u',', u'.').toDouble();
    if (rate == 0) return 0.0;
    QStringList rows{QStringLiteral("0")};
    for (double r : rates) {
        if (r != 0 && r == rate) return rate;
        if (r != 0) rows << QString::number(r);
    }
    s.refuse(QStringLiteral("--rate: \"%1\" is not a %2 of the exercise (%3 or otros)")
                 .arg(typed, what, rows.join(QStringLiteral(", "))));
    return std::nullopt;
}

bool anyBaseTyped(const CliOptions& o, std::size_t slotCount) {
    for (std::size_t i = 0; i < slotCount; ++i)
        if (o.given(optionName("base", i))) return true;
    return false;
}

QString classificationText(const WorkingContext& ctx, const CliOptions& o) {
    return Missatge(ctx, o.value(QStringLiteral("classification")) == u"intra" ? 6855 : 6856);
}

bool refusedForSettled(Session& s, const CliOptions& o, const QString& invoice) {
    if (!o.given(QStringLiteral("treasury-account")) &&
        !o.flags.contains(QStringLiteral("pending")))
        return false;
    s.refuse(invoice + QStringLiteral("; its treasury account does not change"));
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
