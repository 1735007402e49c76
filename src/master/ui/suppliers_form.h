#pragma once
// frmProveidors: the suppliers of the exercise.
#include "master/suppliers.h"
#include "master_form.h"

class QLabel;
class QLineEdit;

namespace tallora {

class frmProveidors : public MasterForm {
    Q_OBJECT
public:
    frmProveidors(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

protected:
    QStringList listTexts() override;
    void showRow(int row) override;
    void clearFields() override;
    master::Outcome saveRecord(bool isNew) override;
    master::Outcome removeRecord(int row) override;
    void afterNeteja() override;

private:
    void display(const master::Supplier& s);
    master::Supplier typed() const;

    QLineEdit *txtProv_, *txtnom_, *txtNIF_, *txtdireccio_, *txtpoblacio_, *txtProvincia_, *txtCP_,
        *txttelefon_, *txtFax_, *txtEmail_, *txtWeb_, *txtsaldo_, *txtIBAN_, *txtBIC_;
    QLabel* lbl_Saldo_;
};

}  // namespace tallora
