#include "customers_form.h"

#include "account_field.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "field_grid.h"
#include "verifactu/tax_id.h"
#include "widgets/field_behaviour.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>

namespace tallora {
namespace {

// Up and Down jump between two fields, as the customer's tax number and balance do.
class ArrowJumps : public QObject {
public:
    ArrowJumps(QWidget* up, QWidget* down, QObject* parent)
        : QObject(parent), up_(up), down_(down) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        QWidget* to = key == Qt::Key_Up ? up_ : key == Qt::Key_Down ? down_ : nullptr;
        if (!to) return false;
        to->setFocus(Qt::TabFocusReason);
        return true;
    }

private:
    QWidget* up_;
    QWidget* down_;
};

}  // namespace

frmclients::frmclients(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : MasterForm(ctx, dialogs,
                 {QStringLiteral("frmclients"), Missatge(ctx, 300), QStringLiteral("ListClients"),
                  QStringLiteral("clientes")},
                 parent) {
    list()->setToolTip(m(317).trimmed());
    QWidget* data = buildData();
    QWidget* detail = data;
    QList<QWidget*> ring{txtnom_,   txtdireccio_, txtpoblacio_, txtProvincia_,
                         txtCP_,    chkRecEquiv_, txttelefon_,  txtFax_,
                         txtEmail_, txtWeb_,      txtsaldo_,    txtNIF_};
    if (ctx_.Facturacio) {
        Tabula_ = new QTabWidget(this);
        Tabula_->setObjectName(QStringLiteral("Tabula"));
        Tabula_->addTab(data, m(6947));
        Tabula_->addTab(buildCommercial(), m(6948));
        ring << txtFacturacionFormadePago_ << txtFacturacionEntidadBancaria_ << txtFacturacionCCC_
             << txtMandatoReferencia_ << txtMandatoFirma_ << chkMandatoRecurrente_;
        detail = Tabula_;
    }
    // The tax number goes back to the balance, or to the web when there is no balance.
    txtNIF_->installEventFilter(
        new ArrowJumps(ctx_.Tesoreria ? txtsaldo_ : txtWeb_, txtnom_, txtNIF_));
    txtsaldo_->installEventFilter(new ArrowJumps(txtWeb_, txtNIF_, txtsaldo_));
    finishSetup(detail, ring);
}

QWidget* frmclients::buildData() {
    auto* frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("frame"));
    FieldGrid grid(frame);
    txtClient_ = grid.key(QStringLiteral("txtClient"), m(301), m(319));
    txtNIF_ =
        grid.line(QStringLiteral("txtNIF"), QStringLiteral("NIF"), 15, QStringLiteral("NIF o DNI"));
    ui::lettersAndDigitsOnly(txtNIF_, [this] { dialogs_.beep(); });
    txtnom_ = grid.line(QStringLiteral("txtnom"), m(302) + QStringLiteral(" *"), 40, m(323), true);
    txtdireccio_ = grid.line(QStringLiteral("txtdireccio"), m(303), 50, m(320), true);
    txtpoblacio_ = grid.line(QStringLiteral("txtpoblacio"), m(304), 25, m(324));
    txtCP_ = grid.line(QStringLiteral("txtCP"),
                       fixed(QStringLiteral("C.P."), QStringLiteral("C.P.")), 5);
    txtProvincia_ = grid.line(QStringLiteral("txtProvincia"), m(6403), 75, {}, true);
    chkRecEquiv_ = new QCheckBox(
        fixed(QStringLiteral("Recargo de equivalencia"), QStringLiteral("Recàrrec d'equivalència")),
        frame);
    chkRecEquiv_->setObjectName(QStringLiteral("chkRecEquiv"));
    chkRecEquiv_->setToolTip(m(316).trimmed());
    grid.add(chkRecEquiv_, QString(), true);
    txttelefon_ = grid.line(QStringLiteral("txttelefon"), m(305), 12, m(325));
    txtFax_ = grid.line(QStringLiteral("txtFax"), QStringLiteral("Fax"), 12, m(322));
    txtEmail_ = grid.line(QStringLiteral("txtEmail"), QStringLiteral("E-mail"), 100, m(321), true);
    txtWeb_ = grid.line(QStringLiteral("txtWeb"), QStringLiteral("Web"), 100, m(326), true);
    txtsaldo_ =
        grid.line(QStringLiteral("txtsaldo"),
                  fixed(QStringLiteral("Saldo inicial"), QStringLiteral("Saldo inicial")), 20);
    lbl_Saldo_ = frame->findChild<QLabel*>(QStringLiteral("lbl_txtsaldo"));
    lbl_Saldo_->setObjectName(QStringLiteral("lbl_Saldo"));
    ui::makeAmountField(ctx_, txtsaldo_);
    grid.endRow();
    auto* required = new QLabel(m(306), frame);
    required->setObjectName(QStringLiteral("lblObligatoris"));
    grid.add(required, QString(), true);
    // A tax number that fails its check is saved all the same: the warning only says so.
    lblAvisoNIF_ = new QLabel(frame);
    lblAvisoNIF_->setObjectName(QStringLiteral("lblAvisoNIF"));
    lblAvisoNIF_->setStyleSheet(QStringLiteral("color: #b00020;"));
    lblAvisoNIF_->setWordWrap(true);
    lblAvisoNIF_->hide();
    grid.add(lblAvisoNIF_, QString(), true);
    connect(txtNIF_, &QLineEdit::textChanged, this, [this](const QString& text) {
        const QString warning = verifactu::taxIdWarning(ctx_, text);
        lblAvisoNIF_->setText(warning);
        lblAvisoNIF_->setVisible(!warning.isEmpty());
    });
    grid.finish();
    return frame;
}

QWidget* frmclients::buildCommercial() {
    auto* frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("Frame_Comercial"));
    FieldGrid grid(frame);
    txtFacturacionFormadePago_ =
        grid.line(QStringLiteral("txtFacturacionFormadePago"), m(6949), 40, {}, true);
    txtFacturacionEntidadBancaria_ =
        grid.line(QStringLiteral("txtFacturacionEntidadBancaria"), m(6950), 40, {}, true);
    // Room for an IBAN in groups: a Spanish one is saved as the CCC inside it.
    txtFacturacionCCC_ = grid.line(QStringLiteral("txtFacturacionCCC"), m(6658), 42, {}, true);
    addAccountChecks(ctx_, grid, txtFacturacionCCC_);
    grid.endRow();
    auto* mandate = new QLabel(
        fixedText(ctx_, "Mandato SEPA de adeudo directo", "Mandat SEPA de domiciliació"), frame);
    mandate->setObjectName(QStringLiteral("lblMandato"));
    QFont bold = mandate->font();
    bold.setBold(true);
    mandate->setFont(bold);
    grid.add(mandate, QString(), true);
    txtMandatoReferencia_ = grid.line(QStringLiteral("txtMandatoReferencia"),
                                      fixedText(ctx_, "Referencia", "Referència"), 35, {}, true);
    txtMandatoFirma_ = grid.line(QStringLiteral("txtMandatoFirma"),
                                 fixedText(ctx_, "Fecha de firma", "Data de signatura"), 10,
                                 QStringLiteral("dd/mm/aaaa"));
    grid.endRow();
    chkMandatoRecurrente_ =
        new QCheckBox(fixedText(ctx_, "Recurrente: el primer adeudo ya se ha enviado",
                                "Recurrent: el primer rebut ja s'ha enviat"),
                      frame);
    chkMandatoRecurrente_->setObjectName(QStringLiteral("chkMandatoRecurrente"));
    grid.add(chkMandatoRecurrente_, QString(), true);
    grid.finish();
    return frame;
}

QStringList frmclients::listTexts() {
    return master::customerNames(ctx_);
}

void frmclients::showRow(int row) {
    if (const auto c = master::customerByName(ctx_, list()->item(row)->text()))
        display(*c);
    else
        clearFields();
}

void frmclients::display(const master::Customer& c) {
    txtClient_->setText(c.client);
    txtnom_->setText(c.nom);
    txtdireccio_->setText(c.direccio);
    txtpoblacio_->setText(c.poblacio);
    txtProvincia_->setText(c.provincia);
    txtCP_->setText(c.cp);
    txtNIF_->setText(c.nif);
    chkRecEquiv_->setChecked(c.re);
    txttelefon_->setText(c.telefon);
    txtFax_->setText(c.fax);
    txtEmail_->setText(c.email);
    txtWeb_->setText(c.web);
    txtsaldo_->setText(c.saldo);
    if (ctx_.Facturacio) {
        txtFacturacionFormadePago_->setText(c.formaPago);
        txtFacturacionEntidadBancaria_->setText(c.entidad);
        txtFacturacionCCC_->setText(c.ccc);
        txtMandatoReferencia_->setText(c.mandatoReferencia);
        txtMandatoFirma_->setText(c.mandatoFirma);
        chkMandatoRecurrente_->setChecked(c.mandatoRecurrente);
    }
}

void frmclients::clearFields() {
    display(master::Customer{});
}

master::Customer frmclients::typed() const {
    master::Customer c;
    c.client = txtClient_->text();
    c.nom = txtnom_->text();
    c.direccio = txtdireccio_->text();
    c.poblacio = txtpoblacio_->text();
    c.provincia = txtProvincia_->text();
    c.cp = txtCP_->text();
    c.nif = txtNIF_->text();
    c.re = chkRecEquiv_->isChecked();
    c.telefon = txttelefon_->text();
    c.fax = txtFax_->text();
    c.email = txtEmail_->text();
    c.web = txtWeb_->text();
    c.saldo = txtsaldo_->text();
    if (ctx_.Facturacio) {
        c.formaPago = txtFacturacionFormadePago_->text();
        c.entidad = txtFacturacionEntidadBancaria_->text();
        c.ccc = txtFacturacionCCC_->text();
        c.mandatoReferencia = txtMandatoReferencia_->text();
        c.mandatoFirma = txtMandatoFirma_->text();
        c.mandatoRecurrente = chkMandatoRecurrente_->isChecked();
    }
    return c;
}

master::Outcome frmclients::saveRecord(bool isNew) {
    master::Customer c = typed();
    const master::Outcome outcome = master::saveCustomer(ctx_, dialogs_, c, isNew);
    display(c);  // the sanitised texts, as they were or would have been stored
    return outcome;
}

master::Outcome frmclients::removeRecord(int) {
    return master::deleteCustomer(ctx_, dialogs_, txtClient_->text());
}

void frmclients::afterNeteja() {
    if (Tabula_) Tabula_->setCurrentIndex(0);
    txtsaldo_->setVisible(ctx_.Tesoreria);
    lbl_Saldo_->setVisible(ctx_.Tesoreria);
}

}  // namespace tallora
