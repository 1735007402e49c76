#pragma once
// The main window of an open exercise: the band with the company, the menus and tool bar,
// the working area where every screen opens as a child, and the status bar.
#include <QMainWindow>
#include "sales/document_type.h"

#include <QHash>

#include <cstdint>
#include <functional>
#include <memory>

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QShortcut;
class QToolBar;

namespace tallora {

namespace report {
struct ReportJob;
class QtReportOutput;
class ReportOutput;
}  // namespace report

class Dialogs;
class WorkingContext;
class blockmes;
class FormCompres;
class FormLLibres;
class FormSuplidos;
class FormVendes;
class FrmTesoreriaOtros;

class FormMDI : public QMainWindow {
    Q_OBJECT
public:
    // Reads the installation settings and prepares the treasury, as the shell's start does.
    FormMDI(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);
    ~FormMDI() override;

    QMdiArea* mdiArea() const { return mdi_; }
    // Panel 1 to 3 of the status bar `Barra`.
    QLabel* statusPanel(int n) const;
    // The panel that says how many VERI*FACTU records wait to be sent; hidden when none.
    QLabel* recordsPanel() const { return recordsPanel_; }
    // Counts the records waiting again (after a sale, a submission, or on the minute).
    void refreshRecordsPanel();
    QLabel* lblEmpresa() const { return lblEmpresa_; }
    QToolBar* BarraMDI() const { return BarraMDI_; }
    // The menu entry or top menu of that name.
    QAction* menuAction(const QString& name) const { return actions_.value(name); }
    blockmes* monthLock() const { return blockmes_; }
    // The report control of the main window: every report of the open exercise is filled
    // in here, and its window destination opens the preview as a working child.
    report::ReportJob& reportJob() { return *reportJob_; }
    report::ReportOutput* reportOutput();
    // The sales screen, opened or brought to the front (one per shell); inquiries open
    // their changes on it.
    FormVendes* openSales();
    // The purchases and the provisions screens, likewise.
    FormCompres* openPurchases();
    FormSuplidos* openProvisions();
    FrmTesoreriaOtros* openOtherMovements();
    // The assistant, opened or brought to the front.
    void openAssistant();
    // FormLLibres, modal to this window.
    FormLLibres* openBooks();
    // The last step of opening an exercise: the assistant, while splash.cfg says 1.
    void startAssistant();
    // Modifica_Moviment: a movement of the statement opened in the screen it came from (a
    // provision or disbursement, an other movement), in front; an invoice's settlement
    // cannot be changed (6751). `changed` runs once the change is saved.
    void Modifica_Moviment(std::int64_t id, const std::function<void()>& changed);

    // Panel 2 of the status bar.
    void Barra_Estat(const QString& text);
    // Enables or disables every button of the tool bar.
    void Activa_BarraMDI(bool enabled);
    // Shows `screen` as a working child: maximised in the classic mode, in front, the
    // status text emptied.
    QMdiSubWindow* openChild(QWidget* screen);
    // Closes every working screen but the month lock (Tanca_Filles).
    void Tanca_Filles();
    // Leaves the shell without the question: back to the company list, or out.
    void leave(bool toCompanies);

signals:
    // The shell has closed: back to the company list when `toCompanies`, else the program ends.
    void closed(bool toCompanies);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildBand();
    void buildMenus();
    void buildToolBar();
    void runEntry(const QString& name);
    void showMonthLock();
    template <class Screen>
    bool bringToFront();
    template <class Screen>
    void openMaster();
    void openSettings();
    // FormEditaEmpresa, modally.
    void openCompanyData();
    void openInterchange();
    void openRecords();
    // The menu entries and the band follow the context as it now stands.
    void showEntriesInForce();
    void openPortfolio();
    // A screen of class Screen made by `make`, or the open one brought to the front.
    template <class Screen, class Make>
    Screen* openScreen(Make make);
    void openSalesInquiry();
    void openDocumentInquiry(sales::DocType type);
    void openPurchaseInquiry();
    void openProvisionInquiry();
    void openOtherMovementsInquiry();
    void openStatement();
    void fillWindowMenu(QMenu* menu);
    void applyScreenMode();
    // F1 of the shell stands aside while a screen with a help page of its own has the focus,
    // so that one key never has two owners.
    void followHelpOwner();

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QMdiArea* mdi_;
    QLabel* lblEmpresa_ = nullptr;
    QLabel* panels_[3];
    QLabel* recordsPanel_ = nullptr;
    QToolBar* BarraMDI_ = nullptr;
    QHash<QString, QAction*> actions_;
    blockmes* blockmes_ = nullptr;
    QMdiSubWindow* blockmesWindow_ = nullptr;
    QShortcut* shellHelp_ = nullptr;
    std::unique_ptr<report::ReportJob> reportJob_;
    std::unique_ptr<report::QtReportOutput> reportOutput_;
    bool leaving_ = false;
    bool toCompanies_ = false;
};

}  // namespace tallora
