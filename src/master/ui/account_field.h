#pragma once
// What an account field of a master screen carries besides the field: a red line saying why
// the number is wrong (it is saved all the same, as typed), and a button that writes a
// valid CCC as its IBAN. Out of the Enter order: the user reaches the button by mouse or Tab.
#include "context/fwd.h"

class QLineEdit;
class QPushButton;

namespace tallora {

class FieldGrid;

// Adds the warning line and the button to `grid` below `field`, in a row named field's name +
// "Checks" (the line field's name + "Aviso", the button "btn" + field's name + "IBAN"). Gives the
// button, enabled only while the field is and holds a valid CCC.
QPushButton* addAccountChecks(const WorkingContext& ctx, FieldGrid& grid, QLineEdit* field);

}  // namespace tallora
