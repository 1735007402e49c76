#pragma once
// FormCompres: the screen on which every purchase, expense, tax, payroll, depreciation and
// investment entry of the exercise is typed, posted and changed.
//
// The screen keeps the widgets, the focus flow and the captions; the arithmetic, the checks
// and the writes are the logic of src/purchases, which works on a PurchaseEntry copied from
// the widgets (entry()) and copied back (display()).
//
// The layout, top to bottom: the title band; the expense group ComboOP; the data panel
// PanelDades with the entry's fields in their Enter order, the treasury frame (with the
// treasury option) and the work area, where the supplier list, the account list and the
// IVA panel take turns. The day log ListRegistres runs down the right side.
//
// States: idle (PanelDades disabled, the focus on ComboOP), a new entry (Enter on ComboOP),
// and the change of a posted entry (Modifica_Compra); lblOrdre tells the last two apart.
// Keys: Enter moves on and, past the last amount, posts; Up goes back; Esc cancels the entry
// (Cancela_Apunt) or, idle, closes; the "+" of the numeric pad posts from anywhere.
#include "purchases/purchase_change.h"
#include "purchases/purchase_entry.h"
#include "purchases/purchase_validation.h"
#include "widgets/entry_screen.h"

#include <array>

class QComboBox;
class QDateEdit;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace tallora {

class Dialogs;
class WorkingContext;
struct JournalRow;

class FormCompres : public ui::EntryScreen {
    Q_OBJECT
public:
    FormCompres(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    // Enter on ComboOP: the group's accounts, the data panel open for a new entry.
    void groupChosen();
    void Neteja();
    // Esc: asks before dropping a typed entry, then back to idle.
    void Cancela_Apunt();
    void GrabaApunt();
    // Opens posted entry `number` for a change. `fromJournal` marks a change started from
    // this screen's own day log, after which the screen stays in the new-entry flow.
    void Modifica_Compra(const QString& number, bool fromJournal = false);
    // Refills the supplier, account and treasury lists (added meanwhile elsewhere).
    void refreshLists();
    // Puts an entry on the screen as if typed (no recalculation runs).
    void display(const purchases::PurchaseEntry& e);
    // What the screen holds now, as the logic reads it.
    purchases::PurchaseEntry entry() const;
    bool posting() const { return gravant_; }
    bool idle() const;

signals:
    // A posted entry was saved again: an inquiry behind may search again.
    void purchaseChanged();

protected:
    void fieldEntered(QWidget* w) override;
    void leaveField(QWidget* w) override;
    bool enterPressed(QWidget* w) override;
    bool upPressed(QWidget* w) override;
    bool otherKey(QWidget* w, const QKeyEvent* key) override;
    bool entryTyped() const override;
    void post() override { GrabaApunt(); }
    void escape() override { closeOrCancel(); }
    void reopen(std::int64_t number, const QString&) override {
        Modifica_Compra(QString::number(number), true);
    }

private:
    // Construction (form_compres.cpp).
    QWidget* buildEntry();
    QWidget* buildTreasury();
    QWidget* buildWorkArea();
    QWidget* buildAmountsPanel();
    void fillRateCaptions(const std::array<double, 4>& rates);
    void OMPLE_LLISTA_Provs();
    void OMPLE_LLISTA_Despeses();
    void OMPLE_LLISTA_Entitats();
    void OMPLE_CmbClasificacion();

    // Focus and keys (form_compres_flow.cpp).
    bool earlierFieldEmpty(QWidget* w);
    void dayEntered();
    void monthEntered();
    bool dateChecked();
    // The list row taken into `field`, then on to `next`.
    void takeAndGo(QLineEdit* field, QListWidget* list, QWidget* next);
    void totalEntered();
    void rateChosen();
    void retentionEntered();
    void entitatsEntered();
    void splitAgain();
    void toFirstBase();
    void amountEntered(QLineEdit* w);
    void Calcula_Retencio();
    void showPanel(QWidget* page, QListWidget* list = nullptr);

    // Posting, the day log and the change (form_compres_posting.cpp).
    void Escriu_Diari(const JournalRow& row);
    void refused(purchases::EntryField field, bool openPanel);
    void Guardar();
    void closeOrCancel();

    bool tickets() const;
    std::optional<double> chosenRate() const;

    QComboBox* ComboOP;
    QWidget* PanelDades;
    QLabel *lblOrdre, *lblFecha, *lblproces;
    QLineEdit *txtDia, *txtMes, *txtProveidor, *txtDespesa, *txtdescripcio, *txtTotal, *txtBaseIRPF,
        *txtTipus, *txtRetencio, *txtexempta;
    QComboBox *cmbSerie, *CmbIva, *ListEntitats, *CmbClasificacion;
    QListWidget *ListProv, *ListDespeses;
    QStackedWidget *work_, *lists_;
    QFrame *FrameList, *PanelIVA, *FrameTesoreria;
    std::array<QLineEdit*, 4> txtBase{}, txtIVA{};
    std::array<QLabel*, 4> lbliva{};
    QDateEdit* DtVencimiento;
    QPushButton *btnGuardar, *btnTancar;
    QLabel *lblcmbIVA, *lblexempta;

    QList<QWidget*> order_;  // the fields in Enter order

    std::int64_t ordre_ = 0;  // the number of the last new entry posted here
    bool gravant_ = false;    // the re-entry guard
    bool pendent_ = false;    // "aqui": a new entry, or a change started from the day log
    bool loading_ = false;    // an entry is being put on the screen
};

}  // namespace tallora
