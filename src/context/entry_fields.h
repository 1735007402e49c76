#pragma once
// What the posting screens (sales, purchases, provisions) share about the fields of an
// entry: an amount read as the field shows it, the date of day and month, the kind of
// exercise, and the refusal to open a posted entry while another is half typed.
#include "fwd.h"
#include "money.h"

#include <QDate>
#include <QString>

#include <optional>

namespace tallora {

// "TICKETS": a shop that books its daily takings and expenses without an IVA split.
bool isTickets(const WorkingContext& ctx);

// True for a field that counts as empty: "" or "-".
bool isEmptyAmount(const QString& text);
// An amount field read as the screen shows it; empty, "-" or anything unreadable is 0.
Money amountOf(const WorkingContext& ctx, const QString& text);
double doubleOf(const WorkingContext& ctx, const QString& text);
// The money format of an amount text; "" and "-" stay as they are.
QString reformat(const WorkingContext& ctx, const QString& text);

// The date of day/month in the exercise's year; nothing when it is no date or the day rolled
// into another month (31/02).
std::optional<QDate> Valida_Data(const WorkingContext& ctx, const QString& day,
                                 const QString& month);

// The refusal while an entry is half typed: messages 657, 658 and 659, critical.
// A posted entry's date as the screen shows it: lblFecha "dd/mm/yyyy", txtDia and txtMes
// without leading zeros.
void showDate(const QDate& date, QString& lblFecha, QString& txtDia, QString& txtMes);

void refuseChangeInProgress(const WorkingContext& ctx, Dialogs& dialogs);

}  // namespace tallora
