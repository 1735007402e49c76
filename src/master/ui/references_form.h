#pragma once
// frmReferencias: the priced items that billing lines take their text and price from.
#include "master/price_references.h"
#include "master_form.h"

class QLineEdit;

namespace tallora {

class frmReferencias : public MasterForm {
    Q_OBJECT
public:
    frmReferencias(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    QStringList listTexts() override;
    void showRow(int row) override;
    void clearFields() override;
    master::Outcome saveRecord(bool isNew) override;
    master::Outcome removeRecord(int row) override;

private:
    void display(const master::PriceReference& r);

    QLineEdit *txtId_, *txtReferencia_, *txtDescripcion_, *txtPrecio_;
};

}  // namespace tallora
