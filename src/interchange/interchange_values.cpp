#include "interchange_values.h"

#include "context/common_helpers.h"
#include "context/text_encoding.h"
#include "context/working_context.h"
#include "store/database.h"

#include <QRegularExpression>

#include <cmath>

namespace tallora::interchange {
namespace {

using store::FieldType;

QString withComma(QString text) {
    return text.replace(u'.', u',');
}

// The plain form of an amount without its trailing zeros: 12.5000 is "12,5", 3.0000 is "3".
QString amountText(Money m) {
    QString t = m.toPlainText(4);
    while (t.endsWith(u'0')) t.chop(1);
    if (t.endsWith(u'.')) t.chop(1);
    return withComma(t);
}

QString dateText(const QString& stored) {
    const QDate d = QDate::fromString(stored.left(10), Qt::ISODate);
    if (!d.isValid()) return stored;
    QString t = d.toString(QStringLiteral("dd/MM/yyyy"));
    const QString time = stored.mid(11, 8);
    if (!time.isEmpty() && time != QStringLiteral("00:00:00")) t += u' ' + time;
    return t;
}

// A text field holds one line: a line break would end the record.
QString oneLine(QString text, FieldRole role) {
    if (role == FieldRole::LineBreaks) {
        text.replace(QStringLiteral("\r\n"), QStringLiteral("$"));
        text.replace(u'\r', u'$');
        return text.replace(u'\n', u'$');
    }
    text.replace(u'\r', u' ');
    return text.replace(u'\n', u' ');
}

// True, False and the other forms a Boolean is found in; nullopt for anything else.
std::optional<bool> truth(const QString& text) {
    static const QStringList yes{"true", "verdadero", "cert", "-1", "1", "sí", "si", "yes"};
    static const QStringList no{"false", "falso", "fals", "0", "no", ""};
    const QString t = text.toLower();
    if (yes.contains(t)) return true;
    if (no.contains(t)) return false;
    return std::nullopt;
}

Money amount(const QString& text) {
    if (text.isEmpty()) return Money();
    // No grouping is written: the one mark there is separates the decimals.
    const QChar mark = text.contains(u',') ? QChar(u',') : QChar(u'.');
    if (text.count(mark) > 1) throw ValueError(ValueError::Kind::Amount, text);
    const std::optional<Money> m = Money::parse(text, mark);
    if (!m) throw ValueError(ValueError::Kind::Amount, text);
    return *m;
}

double number(const QString& text) {
    if (text.isEmpty()) return 0.0;
    QString t = text;
    if (t.count(u',') + t.count(u'.') > 1) throw ValueError(ValueError::Kind::Number, text);
    t.replace(u',', u'.');
    bool ok = false;
    const double d = t.toDouble(&ok);
    if (!ok || !std::isfinite(d)) throw ValueError(ValueError::Kind::Number, text);
    return d;
}

Value date(const QString& text) {
    if (text.isEmpty()) return nullptr;
    static const QRegularExpression form(
        QStringLiteral("^(\\d{1,2})/(\\d{1,2})/(\\d{4})(?: (\\d{1,2}):(\\d{2}):(\\d{2}))?$"));
    const auto m = form.match(text);
    const QDate d = m.hasMatch()
                        ? QDate(m.captured(3).toInt(), m.captured(2).toInt(), m.captured(1).toInt())
                        : QDate();
    if (!d.isValid()) throw ValueError(ValueError::Kind::Date, text);
    if (m.captured(4).isEmpty()) return d;
    const QTime t(m.captured(4).toInt(), m.captured(5).toInt(), m.captured(6).toInt());
    if (!t.isValid()) throw ValueError(ValueError::Kind::Time, text);
    return QDateTime(d, t);
}

struct KindText {
    const char* english;
    const char* spanish;
    const char* catalan;
};

KindText kindText(ValueError::Kind kind) {
    using K = ValueError::Kind;
    switch (kind) {
        case K::WholeNumber:
            return {"is not a whole number", "no es un número entero", "no és un nombre enter"};
        case K::Amount:
            return {"is not an amount", "no es un importe", "no és un import"};
        case K::Number:
            return {"is not a number", "no es un número", "no és un nombre"};
        case K::Date:
            return {"is not a date dd/mm/yyyy", "no es una fecha dd/mm/aaaa",
                    "no és una data dd/mm/aaaa"};
        case K::Time:
            return {"is not a time hh:mm:ss", "no es una hora hh:mm:ss", "no és una hora hh:mm:ss"};
        case K::Boolean:
            return {"is not True or False", "no es True ni False", "no és True ni False"};
        case K::AccountTable:
            return {"is not a table of the chart of accounts",
                    "no es una tabla del plan de cuentas", "no és una taula del pla de comptes"};
        case K::MissingTable:
            return {"is a table this exercise does not have",
                    "es una tabla que este ejercicio no tiene",
                    "és una taula que aquest exercici no té"};
        case K::RepeatedPurchase:
            return {"is the number of a purchase already imported",
                    "es el número de una factura recibida ya importada",
                    "és el número d'una factura rebuda ja importada"};
        case K::NoFreeNumber:
            return {"cannot be given a free number", "no puede tomar un número libre",
                    "no pot prendre un número lliure"};
    }
    return {"", "", ""};
}

QString describe(const QString& column, const QString& value, const char* why) {
    const QString text = QStringLiteral("\"%1\" %2").arg(value, QString::fromUtf8(why));
    return column.isEmpty() ? text : column + QStringLiteral(": ") + text;
}

}  // namespace

ValueError::ValueError(Kind kind, QString value, QString column)
    : std::runtime_error(describe(column, value, kindText(kind).english).toStdString()),
      kind_(kind),
      value_(std::move(value)),
      column_(std::move(column)) {}

QString reasonText(const WorkingContext& ctx, const ValueError& e) {
    const KindText t = kindText(e.kind());
    return describe(e.column(), e.value(),
                    ctx.Idioma == QStringLiteral("cat") ? t.catalan : t.spanish);
}

QString valueText(const store::Statement& row, int column, FieldType type, FieldRole role) {
    if (role == FieldRole::Reserved || row.isNull(column)) return {};
    switch (type) {
        case FieldType::Boolean:
            if (role == FieldRole::ReFlag)
                return row.boolean(column) ? QStringLiteral("1") : QStringLiteral("0");
            return row.boolean(column) ? QStringLiteral("True") : QStringLiteral("False");
        case FieldType::Integer:
        case FieldType::Long:
            return QString::number(row.int64(column));
        case FieldType::Currency:
            return amountText(row.money(column));
        case FieldType::Double:
            return withComma(QString::number(row.real(column), 'g', 15));
        case FieldType::Date:
            return dateText(row.text(column));
        case FieldType::Text:
        case FieldType::Memo:
            return oneLine(row.text(column), role);
    }
    return {};
}

Value parseValue(const QString& text, const store::FieldDef& field, FieldRole role) {
    switch (field.type) {
        case FieldType::Boolean: {
            const std::optional<bool> b = truth(text);
            if (!b) throw ValueError(ValueError::Kind::Boolean, text);
            return std::int64_t{*b ? -1 : 0};
        }
        case FieldType::Integer:
        case FieldType::Long: {
            bool ok = false;
            const qlonglong n = text.toLongLong(&ok);
            if (ok || text.isEmpty()) return std::int64_t{ok ? n : 0};
            // A flag kept in a number (Marca) may come as a Boolean's text.
            if (const std::optional<bool> b = truth(text)) return std::int64_t{*b ? -1 : 0};
            throw ValueError(ValueError::Kind::WholeNumber, text);
        }
        case FieldType::Currency:
            return amount(text);
        case FieldType::Double:
            return number(text);
        case FieldType::Date:
            return date(text);
        case FieldType::Text:
        case FieldType::Memo: {
            QString t = text;
            if (role == FieldRole::LineBreaks) t.replace(u'$', QStringLiteral("\r\n"));
            Neteja_Text(t);
            if (t.isEmpty() && !field.zeroLength) return nullptr;
            return t;
        }
    }
    return nullptr;
}

void bindValue(store::Statement& statement, int index, const Value& value) {
    std::visit([&](const auto& v) { statement.bind(index, v); }, value);
}

void appendField(QByteArray& line, const QString& text, int width) {
    QByteArray bytes = encodeWindows1252(text);
    if (bytes.size() > width) bytes.truncate(width);
    line += bytes;
    line.append(width - bytes.size(), ' ');
}

QString fieldText(const QString& line, int from, int width) {
    QStringView f = QStringView(line).mid(std::min<qsizetype>(from - 1, line.size()), width);
    while (!f.isEmpty() && f.front() == u' ') f = f.mid(1);
    while (!f.isEmpty() && f.back() == u' ') f.chop(1);
    return f.toString();
}

}  // namespace tallora::interchange
