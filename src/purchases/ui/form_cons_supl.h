#pragma once
// FormConsSupl: the inquiry over provisions and disbursements. Filters by party, type, dates
// and amount, four orders, the total and count; Modificar hands the entry to FormSuplidos
// (through the shell), Esborrar deletes it with its movement, Imprimir prints the list.
#include "purchases/provision_inquiry.h"
#include "widgets/inquiry_screen.h"

class QRadioButton;

namespace tallora {

namespace report {
struct ReportJob;
class ReportOutput;
}  // namespace report

class FormConsSupl : public ui::InquiryScreen {
    Q_OBJECT
public:
    FormConsSupl(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job = nullptr,
                 report::ReportOutput* output = nullptr, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Clients();
    purchases::ProvisionFilter filter() const;

signals:
    void modifyRequested(qint64 ordre);

protected:
    Result search() override;
    QString deleteQuestion(const Row& row) const override;
    bool remove(std::int64_t ordre) override;
    report::ReportResult print(const report::PrintRequest& request) override;
    void open(std::int64_t ordre) override;

private:
    report::ReportJob* job_;
    report::ReportOutput* output_;
    QComboBox *CmbClients, *CmbTipus;
    QRadioButton *Opdata, *OpTipus, *OpClient, *OpImport;
};

}  // namespace tallora
