#pragma once
// FormCarteraCobrar and FormCarteraPagar: one screen for both runs, told apart by the
// RunSide it is given. The open receipts on the left go, whole or in part, to the draft on
// the right; btnContabilizar turns the draft into movements of the chosen account and date.
//
// Keys: Enter on the open list (or in the partial amount) puts the selected receipt in the
// draft; Enter or Delete on the draft takes it out; double click does the same on either
// list; Esc closes ("Descargando ..."); F1 opens the side's help page. A fault of the store
// shows its description and leaves the lists as they were.
#include "context/fwd.h"
#include "treasury/runs.h"

#include <QWidget>

#include <functional>

class QAction;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QToolBar;

namespace tallora {

class FormCarteraRun : public QWidget {
    Q_OBJECT
public:
    // Llista_Cartera: both lists and the total anew.
    void Llista_Cartera();
    void Totales();
    void OMPLE_LLISTA_Entitats();
    void Passa_Recibo();
    void Treu_Recibo();
    void Passa_Tots();
    void Buida_Borrador();
    void Contabilizar();
    // Accounts and parties added in another window, and receipts posted there.
    void refreshLists();

    const treasury::RunSide& side() const { return side_; }
    QTableWidget* openList() const { return DbGrid1_; }
    QTableWidget* draftList() const { return DbGrid2_; }
    QAction* tool(const QString& key) const;
    QString statusText() const { return status_; }
    // Where a SEPA file is saved: a save dialog, or what a test answers.
    std::function<QString(const QString& suggested)> askFilePath;
    // The run's SEPA step, for the screen's tests.
    QCheckBox* sepaCheck() const { return chkSEPA_; }
    QDateEdit* bankDate() const { return FechaCargo_; }
    void Reescribe_Remesa();

signals:
    void statusChanged(const QString& text);

protected:
    FormCarteraRun(WorkingContext& ctx, Dialogs& dialogs, const treasury::RunSide& side,
                   QWidget* parent);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildLists();
    QWidget* buildFooter();
    QWidget* buildSepa(QWidget* panel);
    // The run with its SEPA file; false when the user stopped it.
    void contabilizarRemesa(std::int64_t account);
    void fillParties();
    void fill(QTableWidget* grid, const std::vector<treasury::RunRow>& rows);
    std::optional<std::int64_t> selectedId(const QTableWidget* grid) const;
    std::optional<std::int64_t> party() const;
    void setStatus(const QString& text);
    void closeScreen();

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    const treasury::RunSide& side_;
    QToolBar *Toolbar5_, *Toolbar1_;
    QComboBox *parties_, *cmbEntitats_;
    QTableWidget *DbGrid1_, *DbGrid2_;
    QLineEdit *txtCobrar_, *txtTotal_;
    QDateEdit* fecha_;
    QPushButton* btnContabilizar_;
    QCheckBox* chkSEPA_;
    QDateEdit* FechaCargo_;
    QPushButton* btnRemesas_;
    QString status_;
};

class FormCarteraCobrar : public FormCarteraRun {
    Q_OBJECT
public:
    FormCarteraCobrar(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);
};

class FormCarteraPagar : public FormCarteraRun {
    Q_OBJECT
public:
    FormCarteraPagar(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);
};

}  // namespace tallora
