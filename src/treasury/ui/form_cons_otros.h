#pragma once
// FormConsOtros: the inquiry over other movements. Filters by dates, amount and other account
// (on either side), one order (date, then number); Modificar hands the entry to
// FrmTesoreriaOtros (through the shell), Esborrar deletes it with its movements, Imprimir
// prints the list.
#include "treasury/other_movements.h"
#include "widgets/inquiry_screen.h"

namespace tallora {

namespace report {
struct ReportJob;
class ReportOutput;
}  // namespace report

class FormConsOtros : public ui::InquiryScreen {
    Q_OBJECT
public:
    FormConsOtros(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job = nullptr,
                  report::ReportOutput* output = nullptr, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Comptes();
    void refreshLists() { OMPLE_LLISTA_Comptes(); }
    treasury::OtherFilter filter() const;

signals:
    void modifyRequested(qint64 asiento);

protected:
    Result search() override;
    QString deleteQuestion(const Row& row) const override;
    bool remove(std::int64_t asiento) override;
    report::ReportResult print(const report::PrintRequest& request) override;
    void open(std::int64_t asiento) override;

private:
    report::ReportJob* job_;
    report::ReportOutput* output_;
    QComboBox* CmbCuenta;
};

}  // namespace tallora
