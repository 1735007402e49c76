#pragma once
// The small procedures every screen calls, so that an amount, a text bound for the store
// or a focused field behaves the same everywhere. They keep the names the screens know them by.
#include "money.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>

namespace tallora {

class WorkingContext;

// An amount for display: no decimals when Moneda is exactly "Ptes.", two otherwise;
// thousands grouped; separators from Decimal; rounded half away from zero.
QString Format_Import(const WorkingContext& ctx, double value);
QString Format_Import(const WorkingContext& ctx, Money value);
// A date for display, dd/mm/yyyy; empty for a date that is not there.
QString Format_Data(const QDate& date);
// Today's day and month in the exercise's year, the default of the screens' date fields;
// 29 February in a year without it becomes the 28th.
QDate exerciseDay(int year, const QDate& today);
// A quantity for display, three decimals whatever the currency.
QString Format_Quantitat(const WorkingContext& ctx, double value);

// Upper case without blanks, dots or hyphens: tax and account numbers as they are compared,
// however they were typed in groups.
QString compactCode(const QString& text);

// Makes free text safe inside a quoted literal and stores it back: ' becomes ´, then
// every % and every + is removed.
QString Neteja_Text(QString& text);

// Key filter for amount and rate fields: ',' or '.' that is not the configured mark turns
// into the mark; every other key passes. The key is changed in place and returned.
int Tecla_Decimal(const WorkingContext& ctx, int& keyCode);

// True for "-" (a sign being typed) or any text that reads as an amount with the
// configured decimal mark; false for an empty text.
bool Es_Numeric(const WorkingContext& ctx, const QString& text);

// The digits of a text as a number: "A-12/3" gives 123, a text without digits gives 1 (so a
// reference without digits counts as number 1), an empty text gives 0. When the digits do
// not fit in 32 bits, the rightmost nine are taken: the running number of a reference
// stands at its end.
std::int32_t Nomes_Digits(const QString& text);

// True when the flag is 0.
bool No_Logic(std::int16_t flag);

// Back colour of an input field, in the BGR notation of the settings: "focus" gives the
// pale green "&HC0FFC0", any other word white "&HFFFFFF".
QString Color_Focus(const QString& state);
// 0xRRGGBB of a colour written as "&HBBGGRR"; nullopt when the text is not one.
std::optional<std::uint32_t> rgbFromBgrText(const QString& text);

// 20000 for "esp", 10000 for "cat", nothing for any other code.
std::optional<int> Base_Idioma(const QString& code);

}  // namespace tallora
