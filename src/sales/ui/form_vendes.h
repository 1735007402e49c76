#pragma once
// FormVendes: the screen on which every sale of the exercise is typed, posted and changed.
//
// The screen keeps the widgets, the focus flow and the captions; the arithmetic, the checks
// and the writes are the logic of src/sales, which works on a SaleEntry copied from the
// widgets (entry()) and copied back (display()).
//
// The layout, top to bottom: the title band; the entry's fields in their Enter order; the
// treasury frame (with the treasury option); and the work area, where the list frame
// (customers or accounts), the amounts panel PanelIVA and the receipt frame take turns. The
// journal ListRegistres runs down the right side. The billing tab will join the work area
// as one more page, with its type options above it.
//
// Keys: Enter moves on and, past the last amount, posts; Up goes back; Esc cancels the entry
// or closes; the "+" of the numeric pad posts from anywhere.
#include "sales/sale_change.h"
#include "sales/sale_entry.h"
#include "sales/sale_journal.h"
#include "sales/sale_validation.h"
#include "widgets/entry_screen.h"

#include <array>
#include <functional>
#include <optional>

class QCheckBox;
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
namespace report {
struct ReportJob;
class ReportOutput;
}  // namespace report

class FormVendes : public ui::EntryScreen {
    Q_OBJECT
public:
    // `job` and `output` print the receipt; without them no receipt is printed.
    FormVendes(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job = nullptr,
               report::ReportOutput* output = nullptr, QWidget* parent = nullptr);

    void Neteja_Apunt();
    // Esc and the close button: closes an empty screen, otherwise asks before clearing.
    void Surt_Apunt();
    void GrabaApunt();
    // Opens posted sale `number` for a change. `fromJournal` marks a change started from
    // this screen's own journal, after which the screen stays open.
    void Modifica_Venda(const QString& number, bool fromJournal = false);
    // Reruns the three list fillers, so that accounts and customers added meanwhile appear.
    void refreshLists();
    // Puts an entry on the screen as if typed (no recalculation runs).
    void display(const sales::SaleEntry& e);
    // Opens the receipt frame for the entry in hand; nothing opens for an unknown customer.
    void Mostra_Rebut();

    // What the screen holds now, as the logic reads it.
    sales::SaleEntry entry() const;
    bool posting() const { return posting_; }

signals:
    // A change opened from elsewhere was saved or cancelled: the screen behind may refresh.
    void saleChanged();

protected:
    void fieldEntered(QWidget* w) override;
    void leaveField(QWidget* w) override;
    bool enterPressed(QWidget* w) override;
    bool upPressed(QWidget* w) override;
    bool otherKey(QWidget* w, const QKeyEvent* key) override;
    bool entryTyped() const override;
    void post() override { GrabaApunt(); }
    void escape() override;
    void reopen(std::int64_t number) override { Modifica_Venda(QString::number(number), true); }

private:
    // Construction (form_vendes.cpp).
    QWidget* buildEntry();
    QWidget* buildTreasury();
    QWidget* buildWorkArea();
    QWidget* buildAmountsPanel();
    QWidget* buildReceiptFrame();
    void fillRateCaptions(const std::array<double, 3>& iva, const std::array<double, 3>& re);
    void applyKind();
    void OMPLE_LLISTA_Clients();
    void OMPLE_LLISTA_Vendes();
    void OMPLE_LLISTA_Entitats(const QString& select);
    void OMPLE_CmbClasificacion();

    // Focus and keys (form_vendes_flow.cpp).
    void NEGRETES(QWidget* focused);
    bool earlierFieldEmpty(QWidget* w);
    void dayEntered();
    void monthEntered();
    bool dateChecked();
    void customerTyped(const QString& text);
    void accountTyped(const QString& text);
    void takeCustomer();
    void takeAccount();
    void Activa_RE();
    void totalEntered();
    bool leaveCmbIva();
    void retentionEntered();
    void toFirstBase();
    void amountEntered(QLineEdit* w);
    void amountLeft(QLineEdit* w);
    void irpfPercentChanged();
    void showPanel(QWidget* page);

    // Posting, the receipt frame and the journal (form_vendes_posting.cpp).
    void rebutGrava();
    void rebutCancela();
    void Escriu_Diari(const sales::JournalRow& row);
    void Fi_Apunt();
    void refused(sales::EntryField field, bool openPanel);
    void Guardar();

    bool tickets() const;
    bool clientRE() const;

    report::ReportJob* job_;
    report::ReportOutput* output_;

    QLabel *lblOrdre, *lblFecha, *lblproces;
    QLineEdit *txtDia, *txtMes, *txtClient, *txtTipus, *txtdescripcio, *txtTotal, *txtBaseIRPF,
        *Text1, *txtRetencio;
    QComboBox *cmbSerie, *CmbIva, *ListEntitats, *CmbClasificacion;
    QListWidget *ListClients, *ListVendes;
    QStackedWidget* work_;
    QFrame *FrameList, *PanelIVA, *FrameTesoreria, *FRAME_recibos;
    std::array<QLineEdit*, 3> txtBase{}, txtIVA{}, txtRE{};
    std::array<QLabel*, 3> lbliva{}, lblRE{}, lblbase{}, lblQuota{};
    QDateEdit* DtFacturacionVencimiento;
    QCheckBox *chk_rebut, *chk_imprimir;
    QLabel *lbl_rebut_titol, *lbl_rebut_client, *lbl_rebut_domicili, *lbl_rebut_poblacio,
        *lbl_rebut_nif, *lbl_rebut_data;
    std::array<QLineEdit*, 5> txt_rebut_concepte{};
    QPushButton *btn_rebut_grava, *btn_rebut_cancela, *btnGuardar, *btnTancar;
    QLabel* lblREHeader_;
    QLabel *lblclient, *lblcmbIVA, *lblRetencio, *lblBaseIRPF, *lblText1;

    // The labels made bold with their field, and the fields in Enter order.
    QList<QWidget*> order_;

    Money exempta_;
    std::optional<std::array<double, 3>> postedRates_;  // of a posted sale being changed
    bool posting_ = false;
    bool aqui_ = false;       // the change was started from this screen's journal
    bool loading_ = false;    // a posted sale is being put on the screen
};

}  // namespace tallora
