#pragma once
// FormConsOUT: the inquiry over the exercise's sales. Filters by customer, sales account,
// dates and amount, five orders, the total and count of the selection; Modificar (Enter, a
// double click) hands the sale to FormVendes through the shell, Esborrar deletes it with its
// treasury rows, AddCartera (menu "Gestión" or F11; treasury control, not in a shop's
// exercise) sends it back to the portfolio, Imprimir prints the list, and "masinfo" shows the
// detail frame MesFrame (Mes_FraOut) of the selected row. "Gestión" shows with the billing
// module, with the duplicate: the sale opened to be saved and printed again.
#include "sales/sale_inquiry.h"
#include "widgets/invoice_inquiry_screen.h"

class QRadioButton;

namespace tallora {

namespace report {
struct ReportJob;
class ReportOutput;
}  // namespace report

class FormConsOUT : public ui::InvoiceInquiryScreen {
    Q_OBJECT
public:
    // `job` and `output` print the list; without a job nothing is printed.
    FormConsOUT(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job = nullptr,
                report::ReportOutput* output = nullptr, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Clients();
    void OMPLE_LLISTA_Comptes();
    void AddCartera() override;
    sales::SaleFilter filter() const;

signals:
    // Modificar and the duplicate: the shell opens FormVendes on sale `ordre`.
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
    QComboBox *CmbClients, *CmbTipus;
    QRadioButton *OpId, *Opdata, *OpNatur, *OpClients, *OpImport;
};

}  // namespace tallora
