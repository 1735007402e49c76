#pragma once
// Behaviours every input screen shares: Enter moves to the next field and is eaten, a
// field's back colour follows its focus (Color_Focus), F1 opens the screen's help page,
// and rate fields take only what a rate can be.
#include "context/fwd.h"

#include <QList>
#include <QString>

#include <functional>

class QLineEdit;
class QWidget;

namespace tallora::ui {

// Enter (or the keypad's Enter) in any of `ring` moves the focus to the next one, the last
// going back to the first.
void enterMovesAlong(const QList<QWidget*>& ring);

// Pale green while the field has the focus, white otherwise.
void colourOnFocus(QWidget* field);

// F1 anywhere in `form` opens the help page of `key`. The form carries the key (helpKeyOf)
// so that a window holding it can leave F1 to it while it has the focus.
void helpOnF1(const WorkingContext& ctx, QWidget* form, const QString& key);
// The help key of the screen holding `widget`, up to and including `top`; empty when none of
// them declared one.
QString helpKeyOf(const QWidget* widget, const QWidget* top);

// A rate field: ',' and '.' become the configured decimal mark as they are typed
// (Tecla_Decimal), a change that is not numeric (Es_Numeric) empties the field, and an
// empty field becomes "0" when it loses the focus.
void makeRateField(const WorkingContext& ctx, QLineEdit* field);
// A new rate field named `name`: six characters, right-aligned, as wide as a rate needs.
QLineEdit* rateEdit(const WorkingContext& ctx, const QString& name, QWidget* parent);

// A quantity field: the decimal key as for a rate, a change that is not numeric empties the
// field, and an empty field stays empty (it may mean "no more lines").
void makeQuantityField(const WorkingContext& ctx, QLineEdit* field);

// An amount field: the decimal key as for a rate, a change that is not numeric empties the
// field, and Enter or leaving it shows the amount in the money format (Format_Import).
void makeAmountField(const WorkingContext& ctx, QLineEdit* field);

// Letters a-z and A-Z and digits pass, so do editing keys; any other character beeps
// (through `beep`) and is dropped. For tax numbers.
void lettersAndDigitsOnly(QLineEdit* field, std::function<void()> beep);

}  // namespace tallora::ui
