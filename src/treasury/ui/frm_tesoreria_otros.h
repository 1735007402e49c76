#pragma once
// FrmTesoreriaOtros: an other movement (a transfer between cash and bank, a loan received, a
// deposit made). The money leaves one account and enters another; each side is a treasury
// account or another account, chosen in one of its two lists, and choosing in one clears
// the other. Each saved entry goes to the log grid below.
//
// Keys: Enter moves on (from a side whose treasury account is chosen, straight to the next
// side) and, in the amount, saves; Up goes back from the concept and the amount; the lists
// and the date keep their own arrows. Esc drops a typed entry after the question, or closes;
// the close box asks the same. The logic is treasury/other_movements.
#include "treasury/other_movements.h"
#include "widgets/entry_screen.h"

class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace tallora {

class FrmTesoreriaOtros : public ui::EntryScreen {
    Q_OBJECT
public:
    FrmTesoreriaOtros(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Entitats();
    void OMPLE_LLISTA_Comptes();
    void Neteja_Moviment();
    void Cancela_Moviment();
    // btnContabilizar.
    void Contabilizar();
    // Opens entry `asiento` for a change; refused while an entry is typed.
    void Modifica_Otros(std::int64_t asiento);
    void refreshLists();
    treasury::OtherMovement entry() const;
    QTableWidget* log() const { return registres_; }

signals:
    // A changed entry was saved: an inquiry or statement behind may search again.
    void movementChanged();

protected:
    void fieldEntered(QWidget* w) override;
    bool enterPressed(QWidget* w) override;
    bool upPressed(QWidget* w) override;
    bool entryTyped() const override;
    void post() override { Contabilizar(); }
    void escape() override { Cancela_Moviment(); }
    void reopen(std::int64_t, const QString&) override {}

private:
    QComboBox* accountList(const QString& name, QWidget* partner);
    QWidget* side(const QString& title, QComboBox* treasury, QComboBox* other);
    void refused(treasury::OtherField field);
    void logEntry(std::int64_t asiento, const treasury::OtherMovement& e, const QString& result);

    QDateEdit* Fecha;
    QComboBox *cmbSaleTesoreria, *cmbSaleOtrasCuentas, *cmbEntraTesoreria, *cmbEntraOtrasCuentas;
    QLineEdit *txtConcepte, *txtImporte;
    QLabel *lblOrdre, *lblproces;
    QTableWidget* registres_;
    QPushButton *btnContabilizar, *btnTancar;
    QList<QWidget*> order_;
    bool gravant_ = false;
};

}  // namespace tallora
