#pragma once
// FormCarteraRecibos: the portfolio of receipts, one tab for the customers' receipts and one
// for the suppliers' payments, the receipts of one party or of all, in date or due-date
// order, the totals still due, taking a receipt out and the printed list, also saved as a
// spreadsheet (XLSX or CSV) by the tool "Exportar".
//
// Any change of tab, order, grouping or party refills the grid. A fault of the store shows
// its description in a box and leaves the grid as it was. Delete (or btnQuitar) takes the
// selected receipt out; Esc closes; F1 opens the help page "Cartera".
#include "context/fwd.h"
#include "treasury/portfolio.h"

#include <QString>
#include <QWidget>

#include <functional>

class QAction;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabBar;
class QTableView;
class QToolBar;

namespace tallora {

namespace report {
struct ReportJob;
struct ReportResult;
class ReportOutput;
}  // namespace report

class PortfolioModel;

class FormCarteraRecibos : public QWidget {
    Q_OBJECT
public:
    // `job` and `output` are the shell's report control and where its window goes.
    FormCarteraRecibos(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob& job,
                       report::ReportOutput* output, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Clients();
    void OMPLE_LLISTA_Proveidors();
    // txtCobrar and txtPagar.
    void Totales();
    // Totales, then the grid for the tab, party and order shown.
    void Llista_Recibos();
    // The receipt of the selected row out of the portfolio, after the question.
    void Treu_Recibo();
    // The printed list of the tab, after the question.
    void Imprimeix_Recibos();
    // The same list saved where askFilePath says: XLSX, or CSV for a path ending in ".csv".
    void Exportar();

    // Asks where the spreadsheet goes, proposing `name`; empty when cancelled. The save
    // dialog by default; tests put their own.
    std::function<QString(const QString& name)> askFilePath;

    PortfolioModel* model() const { return model_; }
    // The tool button of that key: "Imprimir", "Exportar", "Cancela".
    QAction* tool(const QString& key) const;
    // The text this screen last put in the status panel.
    QString statusText() const { return status_; }

signals:
    // For panel 2 of the shell's status bar.
    void statusChanged(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildFilters();
    QWidget* buildFooter();
    QToolBar* clearButton(const QString& name, QComboBox* combo);
    void fillParties(QComboBox* combo, const std::vector<treasury::Party>& parties);
    void tabChanged();
    treasury::PortfolioFilter filter() const;
    void setStatus(const QString& text);
    void closeScreen();
    // The list of the tab to `destination` (a file's with `file`).
    report::ReportResult listReceipts(int destination, const QString& file = {});
    QString fixed(const QString& spanish, const QString& catalan) const;

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    report::ReportJob& job_;
    report::ReportOutput* output_;
    QString status_;

    QToolBar* Toolbar_ = nullptr;
    QTabBar* TabStrip1_ = nullptr;
    QComboBox* CmbClients_ = nullptr;
    QComboBox* CmbProveidors_ = nullptr;
    QToolBar* Toolbar1_ = nullptr;
    QToolBar* Toolbar2_ = nullptr;
    QRadioButton* OpFecha_ = nullptr;
    QRadioButton* OpVencimiento_ = nullptr;
    QCheckBox* OpGrupo_ = nullptr;
    QTableView* DbGrid1_ = nullptr;
    PortfolioModel* model_ = nullptr;
    QPushButton* btnQuitar_ = nullptr;
    QLineEdit* txtCobrar_ = nullptr;
    QLineEdit* txtPagar_ = nullptr;
};

}  // namespace tallora
