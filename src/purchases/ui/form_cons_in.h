#pragma once
// FormConsIN: the inquiry over the exercise's purchases. Filters by supplier, account, dates
// and amount, five orders, the total and count of the selection; Modificar hands the entry
// to FormCompres (through the shell, which brings it to the front), Esborrar deletes it with
// its treasury rows, AddCartera (menu "Gestión" or F11) sends it back to the portfolio,
// Imprimir prints the list, and "masinfo" shows the detail frame MesFrame (Mes_FraIN) of the
// selected row.
#include "purchases/purchase_inquiry.h"
#include "widgets/invoice_inquiry_screen.h"

class QRadioButton;

namespace tallora {

namespace report {
struct ReportJob;
class ReportOutput;
}  // namespace report

class FormConsIN : public ui::InvoiceInquiryScreen {
    Q_OBJECT
public:
    // `job` and `output` print the list; without a job nothing is printed.
    FormConsIN(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job = nullptr,
               report::ReportOutput* output = nullptr, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Proveidors();
    void OMPLE_LLISTA_Comptes();
    void AddCartera() override;
    purchases::PurchaseFilter filter() const;

signals:
    // Modificar: the shell opens FormCompres on entry `ordre`.
    void modifyRequested(qint64 ordre);

protected:
    Result search() override;
    QString deleteQuestion(const Row& row) const override;
    bool remove(std::int64_t ordre) override;
    report::ReportResult print(const report::PrintRequest& request) override;
    void open(std::int64_t ordre) override;
    std::optional<Detail> detailOf(std::int64_t ordre) override;

private:
    report::ReportJob* job_;
    report::ReportOutput* output_;
    QComboBox *CmbProveidors, *CmbNaturalesa;
    QRadioButton *OpId, *Opdata, *OpNatur, *OpProv, *OpImport;
};

}  // namespace tallora
