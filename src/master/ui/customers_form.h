#pragma once
// frmclients: the customers of the exercise, with their commercial data when the company
// bills from the program.
#include "master/customers.h"
#include "master_form.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QTabWidget;

namespace tallora {

class frmclients : public MasterForm {
    Q_OBJECT
public:
    frmclients(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

protected:
    QStringList listTexts() override;
    void showRow(int row) override;
    void clearFields() override;
    master::Outcome saveRecord(bool isNew) override;
    master::Outcome removeRecord(int row) override;
    void afterNeteja() override;

private:
    QWidget* buildData();
    QWidget* buildCommercial();
    void display(const master::Customer& c);
    master::Customer typed() const;

    QTabWidget* Tabula_ = nullptr;
    QLineEdit *txtClient_, *txtnom_, *txtdireccio_, *txtpoblacio_, *txtProvincia_, *txtCP_,
        *txtNIF_, *txttelefon_, *txtFax_, *txtEmail_, *txtWeb_, *txtsaldo_;
    QCheckBox* chkRecEquiv_;
    QLabel* lbl_Saldo_;
    QLabel* lblAvisoNIF_ = nullptr;
    QLineEdit* txtFacturacionFormadePago_ = nullptr;
    QLineEdit* txtFacturacionEntidadBancaria_ = nullptr;
    QLineEdit* txtFacturacionCCC_ = nullptr;
    QLineEdit* txtMandatoReferencia_ = nullptr;
    QLineEdit* txtMandatoFirma_ = nullptr;
    QCheckBox* chkMandatoRecurrente_ = nullptr;
};

}  // namespace tallora
