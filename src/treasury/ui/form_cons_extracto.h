#pragma once
// FormConsEXTRACTO: the statement of a treasury account, or of all of them, with the running
// balance from the account's opening balance (the grey "Saldo Inicial..." line first). From
// here a movement is printed, opened in its own screen (through the shell: Modifica_Moviment),
// deleted with what goes with it, or returned as an unpaid receipt on FechaDevolucion.
// "Más info" shows the selected movement as a double-entry line in MesFrame.
//
// At the start every account's movements show; after that a date changed or Buscar pressed
// without an account is refused (6750); clearing the account list shows every account
// again, and the search after a deletion, a return or a change keeps what is shown. Keys as every
// inquiry: Esc closes, Delete deletes, Enter or a double click opens the row; none acts on the
// opening line.
#include "widgets/inquiry_screen.h"

class QDateEdit;
class QFrame;
class QLabel;
class QPushButton;

namespace tallora {

namespace report {
struct ReportJob;
class ReportOutput;
}  // namespace report

class FormConsEXTRACTO : public ui::InquiryScreen {
    Q_OBJECT
public:
    FormConsEXTRACTO(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job = nullptr,
                     report::ReportOutput* output = nullptr, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Entitats();
    void refreshLists() { OMPLE_LLISTA_Entitats(); }
    // Chooses the account (none for every one) and searches.
    void setAccount(std::optional<std::int64_t> entidad);
    std::optional<std::int64_t> account() const;
    // btnDevolucion.
    void Devolucion();
    void Mes_EXTRACTO();
    QFrame* detail() const { return MesFrame; }

signals:
    void modifyRequested(qint64 id);

protected:
    Result search() override;
    QString deleteQuestion(const Row& row) const override;
    bool remove(std::int64_t id) override;
    report::ReportResult print(const report::PrintRequest& request) override;
    void open(std::int64_t id) override;

private:
    QFrame* buildDetail();
    void showDetail();

    report::ReportJob* job_;
    report::ReportOutput* output_;
    QComboBox* CmbTesoreria;
    QDateEdit* FechaDevolucion;
    QPushButton* btnDevolucion;
    QAction* masinfo_;
    QFrame* MesFrame;
    QLabel *lblID, *lblFecha, *lblDescripcio, *lblCuentaDebe, *lblDebe, *lblCuentaHaber, *lblHaber;
};

}  // namespace tallora
