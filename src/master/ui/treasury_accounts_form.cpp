#include "treasury_accounts_form.h"

#include "account_field.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "field_grid.h"
#include "widgets/field_behaviour.h"

#include <QComboBox>
#include <QIntValidator>
#include <QLineEdit>
#include <QListWidget>

namespace tallora {
namespace {

QComboBox* choiceField(QWidget* parent, const QString& name) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(name);
    ui::colourOnFocus(combo);
    return combo;
}

}  // namespace

frmTesoreria_cuentas::frmTesoreria_cuentas(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : MasterForm(ctx, dialogs,
                 {QStringLiteral("frmTesoreria_cuentas"), Missatge(ctx, 6656),
                  QStringLiteral("ListCuentas"), QStringLiteral("tesoreria_cuentas"), true, false},
                 parent) {
    auto* frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("frame"));
    FieldGrid grid(frame);
    txtId_ = grid.key(QStringLiteral("txtId"), m(6668));
    grid.endRow();
    txtcuenta_ =
        grid.line(QStringLiteral("txtcuenta"), m(6657) + QStringLiteral(" *"), 40, {}, true);
    cmb_grupo_ = choiceField(frame, QStringLiteral("cmb_grupo"));
    // The list's order is the code: first cash, then banks.
    cmb_grupo_->addItem(m(6660), master::kGrupCaja);
    cmb_grupo_->addItem(m(6661), master::kGrupBancos);
    grid.add(cmb_grupo_, m(6659));
    grid.endRow();
    // Room for an IBAN in groups: a Spanish one is saved as the CCC inside it.
    txtccc_ = grid.line(QStringLiteral("txtccc"), m(6658), 42, {}, true);
    addAccountChecks(ctx_, grid, txtccc_);
    txtsaldo_ =
        grid.line(QStringLiteral("txtsaldo"),
                  fixed(QStringLiteral("Saldo inicial"), QStringLiteral("Saldo inicial")), 20);
    ui::makeAmountField(ctx_, txtsaldo_);
    grid.finish();
    finishSetup(frame, {txtcuenta_, cmb_grupo_, txtccc_, txtsaldo_});
}

QStringList frmTesoreria_cuentas::listTexts() {
    return master::treasuryAccountNames(ctx_);
}

void frmTesoreria_cuentas::showRow(int row) {
    clearFields();
    if (const auto t = master::treasuryAccountByName(ctx_, list()->item(row)->text())) display(*t);
}

void frmTesoreria_cuentas::display(const master::TreasuryAccount& t) {
    txtId_->setText(t.id);
    txtcuenta_->setText(t.entidad);
    cmb_grupo_->setCurrentIndex(t.grup == master::kGrupCaja ? 0 : 1);
    txtccc_->setText(t.ccc);
    txtsaldo_->setText(t.saldo);
}

void frmTesoreria_cuentas::clearFields() {
    display(master::TreasuryAccount{});
}

master::Outcome frmTesoreria_cuentas::saveRecord(bool isNew) {
    master::TreasuryAccount t{txtId_->text(), cmb_grupo_->currentData().toInt(), txtcuenta_->text(),
                              txtccc_->text(), txtsaldo_->text()};
    const master::Outcome outcome = master::saveTreasuryAccount(ctx_, dialogs_, t, isNew);
    display(t);
    return outcome;
}

master::Outcome frmTesoreria_cuentas::removeRecord(int) {
    return master::deleteTreasuryAccount(ctx_, dialogs_, txtId_->text());
}

frmTesoreria_otrascuentas::frmTesoreria_otrascuentas(WorkingContext& ctx, Dialogs& dialogs,
                                                     QWidget* parent)
    : MasterForm(
          ctx, dialogs,
          {QStringLiteral("frmTesoreria_otrascuentas"), Missatge(ctx, 6672),
           QStringLiteral("ListCuentas"), QStringLiteral("tesoreria_OtrasCuentas"), true, false},
          parent) {
    auto* frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("frame"));
    FieldGrid grid(frame);
    txtcompte_ = grid.key(QStringLiteral("txtcompte"), m(6668));
    grid.endRow();
    txtdescripcio_ =
        grid.line(QStringLiteral("txtdescripcio"), m(6669) + QStringLiteral(" *"), 40, {}, true);
    txtGrup_ = grid.line(QStringLiteral("txtGrup"), m(6671), 9);
    txtGrup_->setValidator(new QIntValidator(0, 999999999, txtGrup_));
    txtNomGrup_ = grid.line(QStringLiteral("txtNomGrup"), m(6963), 40);
    CmbActivo_Pasivo_ = choiceField(frame, QStringLiteral("CmbActivo_Pasivo"));
    CmbActivo_Pasivo_->addItem(QString(), QString());
    CmbActivo_Pasivo_->addItem(m(6673), QStringLiteral("A"));
    CmbActivo_Pasivo_->addItem(m(6674), QStringLiteral("P"));
    grid.add(CmbActivo_Pasivo_, m(6670));
    txtsaldo_ =
        grid.line(QStringLiteral("txtsaldo"),
                  fixed(QStringLiteral("Saldo inicial"), QStringLiteral("Saldo inicial")), 20);
    ui::makeAmountField(ctx_, txtsaldo_);
    grid.finish();
    finishSetup(frame, {txtdescripcio_, txtGrup_, txtNomGrup_, CmbActivo_Pasivo_, txtsaldo_});
}

QStringList frmTesoreria_otrascuentas::listTexts() {
    return master::otherAccountNames(ctx_);
}

void frmTesoreria_otrascuentas::showRow(int row) {
    clearFields();
    if (const auto o = master::otherAccountByName(ctx_, list()->item(row)->text())) display(*o);
}

void frmTesoreria_otrascuentas::display(const master::OtherAccount& o) {
    txtcompte_->setText(o.compte);
    txtdescripcio_->setText(o.nomCompte);
    txtGrup_->setText(o.grup);
    txtNomGrup_->setText(o.nomGrup);
    CmbActivo_Pasivo_->setCurrentIndex(std::max(0, CmbActivo_Pasivo_->findData(o.tipus)));
    txtsaldo_->setText(o.saldo);
}

void frmTesoreria_otrascuentas::clearFields() {
    display(master::OtherAccount{});
}

master::Outcome frmTesoreria_otrascuentas::saveRecord(bool isNew) {
    master::OtherAccount o{txtcompte_->text(),  txtGrup_->text(),
                           txtNomGrup_->text(), txtdescripcio_->text(),
                           txtsaldo_->text(),   CmbActivo_Pasivo_->currentData().toString()};
    const master::Outcome outcome = master::saveOtherAccount(ctx_, dialogs_, o, isNew);
    display(o);
    return outcome;
}

master::Outcome frmTesoreria_otrascuentas::removeRecord(int) {
    return master::deleteOtherAccount(ctx_, dialogs_, txtcompte_->text());
}

}  // namespace tallora
