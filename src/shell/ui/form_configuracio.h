#pragma once
// Settings: one tab per area, each with its own apply button; closing saves nothing.
#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QTabWidget;

namespace tallora {

class Dialogs;
class WorkingContext;

class FormConfiguracio : public QDialog {
    Q_OBJECT
public:
    FormConfiguracio(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    QTabWidget* Tabula() const { return Tabula_; }

signals:
    // The decimal mark changed: the working screens must be closed (Tanca_Filles).
    void closeChildrenRequested();
    // The language or the treasury changed: the shell must close and the company list show.
    void backToCompaniesRequested();
    // The screen mode changed: the shell applies it at once.
    void screenModeChanged();

private:
    QWidget* numsTab();
    QWidget* idiomaTab();
    QWidget* pantallasTab();
    QWidget* facturacionTab();
    QWidget* tesoreriaTab();
    QWidget* impresoraTab();
    QWidget* otrasTab();
    QPushButton* applyButton(const char* name, QWidget* parent);

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QTabWidget* Tabula_;
    QRadioButton *OpComa_, *OpPunt_, *OpEsp_, *OpCat_;
    QRadioButton *OpPantallas_Clasico_, *OpPantallas_Maximizar_;
    QCheckBox* chkFACTURACION_;
    QComboBox *CmbFacturacion_documentos_, *cmbCopies_;
    QLineEdit *txtFacturacion_NumFacturas_, *txtFacturacion_NumPresupuestos_,
        *txtFacturacion_NumProformas_, *txtFacturacion_NumAlbaranes_;
    QLineEdit* txtFiscal_[10];
    QRadioButton *OpTesoreria_SI_, *OpTesoreria_NO_;
    QSlider* sliders_[4];
    QLineEdit* margins_[4];
    QRadioButton *OpIntraSi_, *OpIntraNo_, *OpMensajeriaSI_, *OpMensajeriaNO_;
};

}  // namespace tallora
