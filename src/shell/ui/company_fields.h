#pragma once
// The company's five fields and its treasury box, as the company list's panel of a new
// company and the company data screen both show them.
#include "context/fwd.h"
#include "shell/company_list.h"

class QCheckBox;
class QFormLayout;
class QLineEdit;
class QWidget;

namespace tallora::ui {

struct CompanyFields {
    QLineEdit *txtnom = nullptr, *txtDomicili = nullptr, *txtpoblacio = nullptr, *txtCP = nullptr,
              *txtNIF = nullptr;
    QCheckBox* chk_tesoreria = nullptr;
    QFormLayout* form = nullptr;  // the six rows, captioned, for the caller to place

    // What the fields hold.
    shell::NewCompany values() const;
    // Shows `company` in the fields.
    void show(const shell::NewCompany& company) const;
};

// Made in `parent`, named as the screens name them, with the lengths the list and data
// files take; Enter moves along the five fields, and an apostrophe typed in the name becomes
// "´", which the list file's quoting can carry. `treasuryCaption` is the box's message.
CompanyFields companyFields(const WorkingContext& ctx, QWidget* parent, int treasuryCaption);

}  // namespace tallora::ui
