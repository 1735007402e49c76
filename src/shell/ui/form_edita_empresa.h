#pragma once
// The open company's data and the open exercise's rates, shown modally from the shell.
// "Guardar" saves the company (Graba_Empresa), "btnGuardaIVA" the rates; "Deshacer" or Esc
// leave. The shell hears what changed and follows at once.
#include "company_fields.h"

#include <QDialog>

class QGroupBox;
class QLineEdit;

namespace tallora {

class Dialogs;
class WorkingContext;

class FormEditaEmpresa : public QDialog {
    Q_OBJECT
public:
    FormEditaEmpresa(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    void Graba_Empresa();
    void btnGuardaIVA();

signals:
    // The company was saved: the shell shows its new name, and its treasury entries as the
    // switch now says, at once.
    void companySaved();
    // The rates were saved: every working screen must close, none keeping old rates.
    void ratesChanged();

private:
    QWidget* buildRates();

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    ui::CompanyFields fields_;
    QGroupBox* FrameIVA_ = nullptr;
    QLineEdit *txtIVA_[3], *txtRE_[3], *txtIVAs_[4];
};

}  // namespace tallora
