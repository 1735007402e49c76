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
#include "widgets/entry_parts.h"

#include <QWidget>

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

class FormSuplidos : public QWidget {
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
    QString statusText() const { return status_; }

signals:
    void statusChanged(const QString& text);
    // A posted entry was saved again: an inquiry behind may search again.
    void provisionChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* field(const QString& name, int maxLength);
    QLabel* caption(const QString& name, const QString& text, QWidget* buddy);
    void OMPLE_LLISTA_Entitats();
    bool enterPressed(QWidget* w);
    bool upPressed(QWidget* w);
    void fieldEntered(QWidget* w);
    bool dateChecked();
    void takeParty();
    void totalEntered();
    void Cancela_Apunt();
    void refused(purchases::ProvisionField field);
    void Escriu_Diari(const JournalRow& row);
    void focus(QWidget* w);
    void setStatus(const QString& text);
    void closeScreen();
    QString m(int n) const;

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QRadioButton *OpSuplido, *OpProvision;
    QLabel *lblOrdre, *lblFecha, *lblproces, *lblclient;
    QLineEdit *txtDia, *txtMes, *txtClient, *txtdescripcio, *txtTotal;
    QListWidget *ListClients, *ListRegistres;
    QComboBox* ListEntitats;
    QGroupBox* FrameTesoreria;
    QPushButton *btnGuardar, *btnTancar;
    ui::BoldLabels labels_;
    QList<QWidget*> order_;
    bool gravant_ = false;
    bool loading_ = false;
    QString status_;
};

}  // namespace tallora
