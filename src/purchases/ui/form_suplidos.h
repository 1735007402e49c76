#pragma once
// FormSuplidos: provisions (money received in advance from a customer, "P") and
// disbursements (money paid to a supplier on a customer's behalf, "S").
//
// The same keyboard flow as the purchases screen with far fewer fields: the type (OpSuplido
// or OpProvision), day, month, the party from its list, description, total and, with
// treasury, the account that paid or received it, which is required. Enter moves on and,
// past the last field, posts; Up goes back; Esc drops a typed entry after the question, or
// closes; the "+" of the numeric pad posts. The logic is in purchases/provision_*.
#include "purchases/provision_entry.h"
#include "widgets/entry_screen.h"

class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace tallora {

class Dialogs;
class WorkingContext;
struct JournalRow;

class FormSuplidos : public ui::EntryScreen {
    Q_OBJECT
public:
    FormSuplidos(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    // The list and captions of the type chosen; the focus to the day.
    void Tria_Tipus();
    void Neteja();
    void GrabaApunt();
    // Opens posted entry `number` for a change; once saved, the screen goes on with new
    // entries.
    void Modifica_Suplido(const QString& number);
    void refreshLists();
    void display(const purchases::ProvisionEntry& e);
    purchases::ProvisionEntry entry() const;

signals:
    // A posted entry was saved again: an inquiry behind may search again.
    void provisionChanged();

protected:
    void fieldEntered(QWidget* w) override;
    bool enterPressed(QWidget* w) override;
    bool upPressed(QWidget* w) override;
    bool otherKey(QWidget* w, const QKeyEvent* key) override;
    bool entryTyped() const override;
    void post() override { GrabaApunt(); }
    void escape() override { Cancela_Apunt(); }
    void reopen(std::int64_t number, const QString&) override {
        Modifica_Suplido(QString::number(number));
    }

private:
    void OMPLE_LLISTA_Entitats();
    bool dateChecked();
    void takeParty();
    void totalEntered();
    void Cancela_Apunt();
    void refused(purchases::ProvisionField field);
    void Escriu_Diari(const JournalRow& row);

    QRadioButton *OpSuplido, *OpProvision;
    QLabel *lblOrdre, *lblFecha, *lblproces, *lblclient;
    QLineEdit *txtDia, *txtMes, *txtClient, *txtdescripcio, *txtTotal;
    QListWidget* ListClients;
    QComboBox* ListEntitats;
    QGroupBox* FrameTesoreria;
    QPushButton *btnGuardar, *btnTancar;
    QList<QWidget*> order_;
    bool gravant_ = false;
    bool loading_ = false;
};

}  // namespace tallora
