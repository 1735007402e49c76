#include "suppliers_form.h"

#include "account_field.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "field_grid.h"
#include "widgets/field_behaviour.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

namespace tallora {

frmProveidors::frmProveidors(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : MasterForm(ctx, dialogs,
                 {QStringLiteral("frmProveidors"), Missatge(ctx, 400), QStringLiteral("ListProv"),
                  QStringLiteral("proveedores"), true, false},
                 parent) {
    setWindowTitle(m(427));
    list()->setToolTip(m(417).trimmed());
    auto* frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("frame"));
    FieldGrid grid(frame);
    txtProv_ = grid.key(QStringLiteral("txtProv"), m(301), m(419));
    txtNIF_ =
        grid.line(QStringLiteral("txtNIF"), QStringLiteral("NIF"), 13, QStringLiteral("NIF o DNI"));
    txtnom_ = grid.line(QStringLiteral("txtnom"), m(302) + QStringLiteral(" *"), 40, m(323), true);
    txtdireccio_ = grid.line(QStringLiteral("txtdireccio"), m(303), 50, m(320), true);
    txtpoblacio_ = grid.line(QStringLiteral("txtpoblacio"), m(304), 25, m(324));
    txtCP_ = grid.line(QStringLiteral("txtCP"), QStringLiteral("C.P."), 5);
    txtProvincia_ = grid.line(QStringLiteral("txtProvincia"), m(6403), 75, {}, true);
    txttelefon_ = grid.line(QStringLiteral("txttelefon"), m(305), 12);
    txtFax_ = grid.line(QStringLiteral("txtFax"), QStringLiteral("Fax"), 12, m(322));
    txtEmail_ = grid.line(QStringLiteral("txtEmail"), QStringLiteral("E-mail"), 100, m(321), true);
    txtWeb_ = grid.line(QStringLiteral("txtWeb"), QStringLiteral("Web"), 100, m(426), true);
    txtsaldo_ =
        grid.line(QStringLiteral("txtsaldo"),
                  fixed(QStringLiteral("Saldo inicial"), QStringLiteral("Saldo inicial")), 20);
    lbl_Saldo_ = frame->findChild<QLabel*>(QStringLiteral("lbl_txtsaldo"));
    lbl_Saldo_->setObjectName(QStringLiteral("lbl_Saldo"));
    ui::makeAmountField(ctx_, txtsaldo_);
    grid.endRow();
    // The account transfers to the supplier go to, kept in the company's bank file.
    txtIBAN_ = grid.line(QStringLiteral("txtIBAN"), QStringLiteral("IBAN"), 42, {}, true);
    addAccountChecks(ctx_, grid, txtIBAN_);
    txtBIC_ = grid.line(QStringLiteral("txtBIC"), QStringLiteral("BIC"), 11);
    grid.finish();
    finishSetup(frame, {txtnom_, txtNIF_, txtdireccio_, txtpoblacio_, txtProvincia_, txtCP_,
                        txttelefon_, txtFax_, txtEmail_, txtWeb_, txtsaldo_, txtIBAN_, txtBIC_});
}

QStringList frmProveidors::listTexts() {
    return master::supplierNames(ctx_);
}

void frmProveidors::showRow(int row) {
    clearFields();
    if (const auto s = master::supplierByName(ctx_, list()->item(row)->text())) display(*s);
}

void frmProveidors::display(const master::Supplier& s) {
    txtProv_->setText(s.proveidor);
    txtnom_->setText(s.nom);
    txtNIF_->setText(s.nif);
    txtdireccio_->setText(s.direccio);
    txtpoblacio_->setText(s.poblacio);
    txtProvincia_->setText(s.provincia);
    txtCP_->setText(s.cp);
    txttelefon_->setText(s.telefon);
    txtFax_->setText(s.fax);
    txtEmail_->setText(s.email);
    txtWeb_->setText(s.web);
    txtsaldo_->setText(s.saldo);
    txtIBAN_->setText(s.iban);
    txtBIC_->setText(s.bic);
}

void frmProveidors::clearFields() {
    display(master::Supplier{});
}

master::Supplier frmProveidors::typed() const {
    master::Supplier s;
    s.proveidor = txtProv_->text();
    s.nom = txtnom_->text();
    s.nif = txtNIF_->text();
    s.direccio = txtdireccio_->text();
    s.poblacio = txtpoblacio_->text();
    s.provincia = txtProvincia_->text();
    s.cp = txtCP_->text();
    s.telefon = txttelefon_->text();
    s.fax = txtFax_->text();
    s.email = txtEmail_->text();
    s.web = txtWeb_->text();
    s.saldo = txtsaldo_->text();
    s.iban = txtIBAN_->text();
    s.bic = txtBIC_->text();
    return s;
}

master::Outcome frmProveidors::saveRecord(bool isNew) {
    master::Supplier s = typed();
    const master::Outcome outcome = master::saveSupplier(ctx_, dialogs_, s, isNew);
    display(s);
    return outcome;
}

master::Outcome frmProveidors::removeRecord(int) {
    return master::deleteSupplier(ctx_, dialogs_, txtProv_->text());
}

void frmProveidors::afterNeteja() {
    // Transfers are made from the treasury's runs: without it the account has no use.
    for (const char* name : {"txtIBAN", "lbl_txtIBAN", "txtIBANChecks", "txtBIC", "lbl_txtBIC"})
        if (auto* w = findChild<QWidget*>(QString::fromLatin1(name))) w->setVisible(ctx_.Tesoreria);
    txtsaldo_->setVisible(ctx_.Tesoreria);
    lbl_Saldo_->setVisible(ctx_.Tesoreria);
}

}  // namespace tallora
