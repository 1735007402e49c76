#include "common_helpers.h"

#include "decimal_text.h"
#include "working_context.h"

#include <QRegularExpression>

namespace tallora {
namespace {

int importDecimals(const WorkingContext& ctx) {
    // Exact and case-sensitive on purpose: only pesetas lose the decimals.
    return ctx.Moneda == QStringLiteral("Ptes.") ? 0 : 2;
}

QString grouped(const WorkingContext& ctx, const DecimalDigits& digits) {
    const QChar mark = ctx.decimalMark();
    return QString::fromStdString(groupDigits(digits,
                                              static_cast<char>(groupMarkFor(mark).unicode()),
                                              static_cast<char>(mark.unicode())));
}

}  // namespace

QString Format_Import(const WorkingContext& ctx, double value) {
    return grouped(ctx, roundDouble(value, importDecimals(ctx)));
}

QString Format_Import(const WorkingContext& ctx, Money value) {
    return value.format(importDecimals(ctx), ctx.decimalMark());
}

QString Format_Data(const QDate& date) {
    return date.isValid() ? date.toString(QStringLiteral("dd/MM/yyyy")) : QString();
}

QDate exerciseDay(int year, const QDate& today) {
    const QDate same(year, today.month(), today.day());
    return same.isValid() ? same : QDate(year, today.month(), 28);
}

QString Format_Quantitat(const WorkingContext& ctx, double value) {
    return grouped(ctx, roundDouble(value, 3));
}

QString compactCode(const QString& text) {
    static const QRegularExpression separators(QStringLiteral("[\\s.\\-]"));
    return text.toUpper().remove(separators);
}

QString Neteja_Text(QString& text) {
    text.replace(u'\'', QChar(0x00B4));
    text.remove(u'%');
    text.remove(u'+');
    return text;
}

int Tecla_Decimal(const WorkingContext& ctx, int& keyCode) {
    constexpr int kComma = 44;
    constexpr int kPoint = 46;
    if ((keyCode == kComma || keyCode == kPoint) && keyCode != ctx.Decimal)
        keyCode = keyCode == kComma ? kPoint : kComma;
    return keyCode;
}

bool Es_Numeric(const WorkingContext& ctx, const QString& text) {
    if (text == QStringLiteral("-")) return true;
    return Money::parse(text, ctx.decimalMark()).has_value();
}

std::int32_t Nomes_Digits(const QString& text) {
    if (text.isEmpty()) return 0;
    QString digits;
    for (QChar c : text)
        if (c >= u'0' && c <= u'9') digits += c;
    if (digits.isEmpty()) return 1;
    bool ok = false;
    const std::int32_t value = digits.toInt(&ok);
    return ok ? value : digits.right(9).toInt();
}

bool No_Logic(std::int16_t flag) {
    return flag == 0;
}

QString Color_Focus(const QString& state) {
    return state == QStringLiteral("focus") ? QStringLiteral("&HC0FFC0")
                                            : QStringLiteral("&HFFFFFF");
}

std::optional<std::uint32_t> rgbFromBgrText(const QString& text) {
    if (!text.startsWith(QStringLiteral("&H"), Qt::CaseInsensitive)) return std::nullopt;
    bool ok = false;
    const std::uint32_t bgr = text.mid(2).toUInt(&ok, 16);
    if (!ok || bgr > 0xFFFFFF) return std::nullopt;
    return ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}

std::optional<int> Base_Idioma(const QString& code) {
    if (code == QStringLiteral("esp")) return 20000;
    if (code == QStringLiteral("cat")) return 10000;
    return std::nullopt;
}

}  // namespace tallora
