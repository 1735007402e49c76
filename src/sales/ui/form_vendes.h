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
// journal ListRegistres runs down the right side. With the billing option the five type
// options stand above the work area, and the tab bar TabFacturacion under them switches the
// work area between the amounts (PanelIVA) and the lines of the document (FrameFacturacion,
// form_vendes_billing.cpp).
//
// Keys: Enter moves on and, past the last amount, posts; Up goes back; Esc cancels the entry
// or closes; the "+" of the numeric pad posts from anywhere.
#include "sales/billing_lines.h"
#include "sales/document_type.h"
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
class QRadioButton;
class QStackedWidget;
class QTabBar;
class QTableWidget;

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
    // Opens billing document `number` of `type` (not an invoice) on the billing tab; refused
    // while an entry is typed. `fromJournal` as for Modifica_Venda.
    void Modifica_Document(sales::DocType type, const QString& number, bool fromJournal = false);
    // Where a printed document goes when chk_imprimir is on: cmbImprimir chooses the printer
    // dialog or a PDF file, whose path `pdfPath` gives from the proposed name (by default the
    // save dialog; an empty path cancels).
    void setPdfPathChooser(std::function<QString(const QString& proposed)> pdfPath) {
        pdfPath_ = std::move(pdfPath);
    }

    // What the screen holds now, as the logic reads it.
    sales::SaleEntry entry() const;
    bool posting() const { return posting_; }

signals:
    // A change opened from elsewhere was saved or cancelled: the screen behind may refresh.
    void saleChanged();
    // FacRef_Referencias: the price references' screen is asked for.
    void referencesRequested();

protected:
    void fieldEntered(QWidget* w) override;
    void leaveField(QWidget* w) override;
    bool enterPressed(QWidget* w) override;
    bool upPressed(QWidget* w) override;
    bool otherKey(QWidget* w, const QKeyEvent* key) override;
    bool entryTyped() const override;
    void post() override { GrabaApunt(); }
    void escape() override;
    void reopen(std::int64_t number, const QString& kind) override;

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

    // The billing tab (form_vendes_billing.cpp).
    QWidget* buildTypeOptions();
    QWidget* buildBillingFrame();
    QWidget* buildReferencesFrame();
    QWidget* lineFieldsRow();
    void typeOptionsReset();
    void setLoadedAs(std::optional<sales::DocType> type);
    sales::DocType selectedType() const;
    void typeSelected();
    void tabChanged(int index);
    void showLines();
    sales::LineFields lineFields() const;
    void Calcula_Linia();
    void btnFacturacionAlta();
    void modificaLinia();
    void eliminaLinia();
    void netejaLinia();
    // `sums`: the amounts follow the lines (off for a posted invoice being opened, whose
    // amounts are its own).
    void OMPLE_GRID_Detall(bool sums = true);
    void Carrega_Comercial();
    bool lineEnterPressed(QWidget* w);
    bool lineUpPressed(QWidget* w);
    void FacRef_Muestra();
    void FacRef_Busca();
    void FacRef_Cancelar();
    void Imprimeix_Document(std::int64_t number, sales::DocType type, const sales::SaleEntry& e);
    void clearBilling();

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
    QComboBox* cmbImprimir = nullptr;
    QLabel *lbl_rebut_titol, *lbl_rebut_client, *lbl_rebut_domicili, *lbl_rebut_poblacio,
        *lbl_rebut_nif, *lbl_rebut_data;
    std::array<QLineEdit*, 5> txt_rebut_concepte{};
    QPushButton *btn_rebut_grava, *btn_rebut_cancela, *btnGuardar, *btnTancar;
    QLabel* lblREHeader_;
    QLabel *lblclient, *lblcmbIVA, *lblRetencio, *lblBaseIRPF, *lblText1;

    // The billing tab.
    QWidget* typeOptions_ = nullptr;
    std::array<QRadioButton*, 5> opFacturacion_{};  // in the order of sales::allDocTypes()
    QTabBar* TabFacturacion = nullptr;
    QFrame *FrameFacturacion = nullptr, *FacRef_frame = nullptr;
    QLineEdit *txtFacturacionCantidad = nullptr, *txtFacturacionConcepto = nullptr,
              *txtFacturacionPrecio = nullptr, *txtFacturacionDto = nullptr,
              *txtFacturacionImporte = nullptr, *txtFacturacionFormadePago = nullptr,
              *txtFacturacionEntidadBancaria = nullptr, *txtFacturacionCCC = nullptr,
              *FacRef_txtReferencia = nullptr;
    QComboBox* txtFacturacionIVA = nullptr;
    QLabel* txtFacturacionID = nullptr;
    QPushButton *btnFacturacionAlta_ = nullptr, *btnFacturacionModificaLinea = nullptr,
                *btnFacturacionEliminaLinea = nullptr, *FacRef_Muestra_ = nullptr;
    QTableWidget* GridFacturacion = nullptr;
    std::optional<sales::DocType> loadedAs_;  // the option standing at colour 192
    std::function<QString(const QString&)> pdfPath_;

    // The labels made bold with their field, and the fields in Enter order.
    QList<QWidget*> order_;

    Money exempta_;
    std::optional<std::array<double, 3>> postedRates_;  // of a posted sale being changed
    bool posting_ = false;
    bool aqui_ = false;       // the change was started from this screen's journal
    bool loading_ = false;    // a posted sale is being put on the screen
};

}  // namespace tallora
