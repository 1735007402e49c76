#pragma once
// formComptes: the chart of accounts of the exercise, one family at a time.
#include "master/accounts.h"
#include "master_form.h"

#include <vector>

class QComboBox;
class QLineEdit;
class QRadioButton;

namespace tallora {

class formComptes : public MasterForm {
    Q_OBJECT
public:
    formComptes(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    // The family whose option is on.
    master::Family family() const { return family_; }
    void chooseFamily(master::Family f);

protected:
    QStringList listTexts() override;
    void showRow(int row) override;
    void clearFields() override;
    master::Outcome saveRecord(bool isNew) override;
    master::Outcome removeRecord(int row) override;
    void afterNeteja() override;
    void prepareNew() override;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void fillClasses();

    master::Family family_ = master::Family::Ingresos;
    std::vector<master::AccountItem> items_;
    std::vector<QRadioButton*> options_;
    QLineEdit *txtcompte_, *txtGrup_, *txtdescripcio_;
    QComboBox* ComboExplotacio_;
};

}  // namespace tallora
