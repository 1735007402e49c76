#pragma once
// The company's five fields and its treasury box, as the company list's panel of a new
// company and the company data screen both show them.
#include "context/fwd.h"

class QCheckBox;
class QFormLayout;
class QLineEdit;
class QWidget;

namespace tallora::ui {

struct CompanyFields {
    QLineEdit *txtnom, *txtDomicili, *txtpoblacio, *txtCP, *txtNIF;
    QCheckBox* chk_tesoreria;
    QFormLayout* form;  // the six rows, captioned, for the caller to place
};

// Made in `parent`, named as the screens name them, with the lengths the list and data
// files take; Enter moves along the five fields, and an apostrophe typed in the name becomes
// "´", which the list file's quoting can carry. `treasuryCaption` is the box's message.
CompanyFields companyFields(const WorkingContext& ctx, QWidget* parent, int treasuryCaption);

}  // namespace tallora::ui
