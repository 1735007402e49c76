#pragma once
// frmTesoreria_cuentas: the cash boxes and bank accounts of the exercise.
// frmTesoreria_otrascuentas: the other balance-sheet accounts a movement can cross with.
#include "master/treasury_accounts.h"
#include "master_form.h"

class QComboBox;
class QLineEdit;

namespace tallora {

class frmTesoreria_cuentas : public MasterForm {
    Q_OBJECT
public:
    frmTesoreria_cuentas(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

protected:
    QStringList listTexts() override;
    void showRow(int row) override;
    void clearFields() override;
    master::Outcome saveRecord(bool isNew) override;
    master::Outcome removeRecord(int row) override;

private:
    void display(const master::TreasuryAccount& t);

    QLineEdit *txtId_, *txtcuenta_, *txtccc_, *txtsaldo_;
    QComboBox* cmb_grupo_;
};

class frmTesoreria_otrascuentas : public MasterForm {
    Q_OBJECT
public:
    frmTesoreria_otrascuentas(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

protected:
    QStringList listTexts() override;
    void showRow(int row) override;
    void clearFields() override;
    master::Outcome saveRecord(bool isNew) override;
    master::Outcome removeRecord(int row) override;

private:
    void display(const master::OtherAccount& o);

    QLineEdit *txtcompte_, *txtdescripcio_, *txtGrup_, *txtNomGrup_, *txtsaldo_;
    QComboBox* CmbActivo_Pasivo_;
};

}  // namespace tallora
