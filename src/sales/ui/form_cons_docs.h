#pragma once
// FormConsDOCS: the inquiries of quotes, drafts, proformas and delivery notes, one class for
// the four, told apart by the table of differences of sales/document_inquiry.h (its object
// name, title, stored query and help). Filters by customer and dates; Modificar (Enter, a
// double click) hands the document to FormVendes through the shell, Esborrar deletes it
// (its number is not given again while the counter stands above it), Imprimir prints the
// list. Each time the screen comes back to the front it searches again, so that a document
// turned into another type is gone.
#include "sales/document_inquiry.h"
#include "widgets/inquiry_screen.h"

#include <map>

namespace tallora {

namespace report {
struct ReportJob;
class ReportOutput;
}  // namespace report

class FormConsDOCS : public ui::InquiryScreen {
    Q_OBJECT
public:
    FormConsDOCS(WorkingContext& ctx, Dialogs& dialogs, sales::DocType type,
                 report::ReportJob* job = nullptr, report::ReportOutput* output = nullptr,
                 QWidget* parent = nullptr);

    sales::DocType type() const { return type_; }
    sales::DocumentFilter filter() const;
    // The customers' list again, then the search (the screen back in front).
    void refreshLists();

signals:
    // Modificar: the shell opens FormVendes on document `number` of this type.
    void modifyRequested(sales::DocType type, qint64 number);

protected:
    Result search() override;
    QString deleteQuestion(const Row& row) const override;
    bool remove(std::int64_t id) override;
    report::ReportResult print(const report::PrintRequest& request) override;
    void open(std::int64_t id) override;

private:
    void OMPLE_LLISTA_Clients();

    sales::DocType type_;
    report::ReportJob* job_;
    report::ReportOutput* output_;
    QComboBox* CmbClients;
    std::map<std::int64_t, std::int64_t> numbers_;  // the number of each row's Id
};

}  // namespace tallora
