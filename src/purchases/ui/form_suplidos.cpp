#include "form_suplidos.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "purchases/provision_posting.h"
#include "schema/creation.h"
#include "store/database.h"
#include "store/store_error.h"
#include "widgets/field_behaviour.h"
#include "widgets/journal_list.h"
#include "widgets/screen_style.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tallora {

FormSuplidos::FormSuplidos(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : EntryScreen(ctx, dialogs, QStringLiteral("FormSuplidos"), Missatge(ctx, 6503), parent) {
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->addWidget(ui::bandTitle(m(6503), ctx_.EmpresaNom, this));

    auto* left = new QVBoxLayout;
    OpSuplido = new QRadioButton(m(6501), this);
    OpSuplido->setObjectName(QStringLiteral("OpSuplido"));
    OpProvision = new QRadioButton(m(6502), this);
    OpProvision->setObjectName(QStringLiteral("OpProvision"));
    OpSuplido->setChecked(true);
    auto* kinds = new QHBoxLayout;
    kinds->addWidget(ui::heading(m(6504), this));
    kinds->addWidget(OpSuplido);
    kinds->addWidget(OpProvision);
    kinds->addStretch(1);
    lblproces = new QLabel(this);
    lblproces->setObjectName(QStringLiteral("lblproces"));
    kinds->addWidget(lblproces);
    lblOrdre = new QLabel(this);
    lblOrdre->setObjectName(QStringLiteral("lblOrdre"));
    kinds->addSpacing(12);
    kinds->addWidget(lblOrdre);
    left->addLayout(kinds);

    auto* g = new QGridLayout;
    g->setHorizontalSpacing(8);
    QHBoxLayout* date = dateRow(txtDia, txtMes, lblFecha);
    g->addWidget(caption(QStringLiteral("lblDia"), m(601), txtDia), 0, 0);
    g->addLayout(date, 0, 1);
    txtClient = field(QStringLiteral("txtClient"), 40);
    lblclient = caption(QStringLiteral("lblclient"), QString(), txtClient);
    g->addWidget(lblclient, 1, 0);
    g->addWidget(txtClient, 1, 1);
    txtdescripcio = field(QStringLiteral("txtdescripcio"), 25);  // Suplidos.descripcio
    g->addWidget(caption(QStringLiteral("lblDescripcio"), m(519), txtdescripcio), 2, 0);
    g->addWidget(txtdescripcio, 2, 1);
    txtTotal = field(QStringLiteral("txtTotal"), 18);
    ui::makeAmountField(ctx_, txtTotal);
    txtTotal->setMaximumWidth(180);
    g->addWidget(caption(QStringLiteral("lblTotal"), QStringLiteral("TOTAL"), txtTotal), 3, 0);
    g->addWidget(txtTotal, 3, 1, Qt::AlignLeft);
    g->setColumnStretch(1, 1);
    left->addLayout(g);

    FrameTesoreria = new QGroupBox(this);
    FrameTesoreria->setObjectName(QStringLiteral("FrameTesoreria"));
    ListEntitats = new QComboBox(this);
    ListEntitats->setObjectName(QStringLiteral("ListEntitats"));
    ListEntitats->installEventFilter(this);
    auto* treasury = new QHBoxLayout(FrameTesoreria);
    treasury->addWidget(ListEntitats, 1);
    labels_.add(ListEntitats, new QLabel(this));
    FrameTesoreria->setVisible(ctx_.Tesoreria);
    left->addWidget(FrameTesoreria);

    ListClients = new QListWidget(this);
    ListClients->setObjectName(QStringLiteral("ListClients"));
    ListClients->installEventFilter(this);
    connect(ListClients, &QListWidget::itemDoubleClicked, this, [this] { takeParty(); });
    left->addWidget(ListClients, 1);

    left->addWidget(buttonRow(m(615), btnGuardar, btnTancar));
    connect(btnGuardar, &QPushButton::clicked, this, &FormSuplidos::GrabaApunt);
    connect(btnTancar, &QPushButton::clicked, this, &FormSuplidos::Cancela_Apunt);

    auto* body = new QHBoxLayout;
    body->setContentsMargins(8, 6, 8, 6);
    body->addLayout(left, 3);
    body->addLayout(journalColumn(), 2);
    root->addLayout(body, 1);

    order_ = {txtDia, txtMes, txtClient, txtdescripcio, txtTotal, ListEntitats};
    connect(txtClient, &QLineEdit::textChanged, this,
            [this](const QString& text) { ui::selectPrefix(ListClients, text); });
    for (QRadioButton* option : {OpSuplido, OpProvision}) {
        option->setFocusPolicy(Qt::ClickFocus);
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on && !loading_) Tria_Tipus();
        });
    }
    ui::helpOnF1(ctx_, this, QStringLiteral("suplidos"));
    OMPLE_LLISTA_Entitats();
    Tria_Tipus();
    Neteja();
}

void FormSuplidos::Tria_Tipus() {
    const bool suplido = OpSuplido->isChecked();
    ListClients->clear();
    for (const purchases::PartyItem& party : purchases::partyList(ctx_, suplido)) {
        auto* item = new QListWidgetItem(party.text, ListClients);
        item->setData(Qt::UserRole, QVariant::fromValue<qint64>(party.number));
    }
    ui::selectPrefix(ListClients, txtClient->text());
    lblclient->setText(m(suplido ? 701 : 602));
    FrameTesoreria->setTitle(m(suplido ? 6677 : 6758).trimmed());
    if (!loading_) focus(txtDia);
}

void FormSuplidos::OMPLE_LLISTA_Entitats() {
    if (!ctx_.Tesoreria) return;
    fillTreasuryAccounts(ListEntitats, false);
}

void FormSuplidos::refreshLists() {
    const QString party = txtClient->text();
    loading_ = true;
    Tria_Tipus();
    loading_ = false;
    OMPLE_LLISTA_Entitats();
    ui::selectPrefix(ListClients, party);
}

purchases::ProvisionEntry FormSuplidos::entry() const {
    purchases::ProvisionEntry e;
    e.suplido = OpSuplido->isChecked();
    e.lblOrdre = lblOrdre->text();
    e.lblFecha = lblFecha->text();
    e.txtDia = txtDia->text();
    e.txtMes = txtMes->text();
    e.txtClient = txtClient->text();
    if (const QListWidgetItem* item = ui::selectedItem(ListClients)) {
        e.listClientsText = item->text();
        e.partyNumber = item->data(Qt::UserRole).toLongLong();
    }
    e.txtdescripcio = txtdescripcio->text();
    e.txtTotal = txtTotal->text();
    e.entitat = ListEntitats->currentText();
    if (const QVariant id = ListEntitats->currentData(); id.isValid())
        e.entitatId = id.toLongLong();
    return e;
}

void FormSuplidos::display(const purchases::ProvisionEntry& e) {
    const bool wasLoading = loading_;
    loading_ = true;
    if (e.suplido != OpSuplido->isChecked()) {
        (e.suplido ? OpSuplido : OpProvision)->setChecked(true);
        Tria_Tipus();
    }
    lblOrdre->setText(e.lblOrdre);
    lblFecha->setText(e.lblFecha);
    txtDia->setText(e.txtDia);
    txtMes->setText(e.txtMes);
    txtClient->setText(e.txtClient);
    txtdescripcio->setText(e.txtdescripcio);
    txtTotal->setText(e.txtTotal);
    if (ctx_.Tesoreria)
        ListEntitats->setCurrentIndex(std::max(0, ListEntitats->findText(e.entitat)));
    loading_ = wasLoading;
}

void FormSuplidos::Neteja() {
    setStatus(QStringLiteral("Limpiando..."));
    for (QLineEdit* f : {txtDia, txtMes, txtClient, txtdescripcio}) f->clear();
    txtTotal->setText(QStringLiteral("0"));
    for (QLabel* l : {lblOrdre, lblFecha, lblproces}) l->clear();
    if (ListEntitats->count() > 0) ListEntitats->setCurrentIndex(0);
    btnTancar->setText(m(308));
    gravant_ = false;
    setStatus(QString());
    focus(txtDia);
}

void FormSuplidos::fieldEntered(QWidget* w) {
    labels_.mark(w);
    if (w != txtDia && w != txtMes && order_.contains(w) && backToEmpty({txtDia, txtMes})) return;
    if (w == txtMes && lblOrdre->text().isEmpty() && txtMes->text().isEmpty())
        if (const auto month = Mes_Per_Defecte(ctx_)) txtMes->setText(QString::number(*month));
}

bool FormSuplidos::otherKey(QWidget* w, const QKeyEvent* key) {
    return ui::listFieldKey(w, key, txtClient, ListClients);
}

bool FormSuplidos::enterPressed(QWidget* w) {
    if (w == txtDia) {
        bool ok = false;
        const int day = txtDia->text().toInt(&ok);
        if (!ok || day < 1 || day > 31)
            dialogs_.beep();
        else
            focus(txtMes);
    } else if (w == txtMes) {
        if (dateChecked()) focus(txtClient);
    } else if (w == txtClient || w == ListClients) {
        takeParty();
    } else if (w == txtdescripcio) {
        if (txtdescripcio->text().isEmpty()) txtdescripcio->setText(QStringLiteral("-"));
        focus(txtTotal);
    } else if (w == txtTotal) {
        totalEntered();
    } else if (w == ListEntitats) {
        GrabaApunt();
    } else {
        return false;
    }
    return true;
}

bool FormSuplidos::upPressed(QWidget* w) {
    if (w == txtClient) {
        ui::moveListSelection(ListClients, -1);
        return true;
    }
    return focusPrevious(order_, w);
}

bool FormSuplidos::dateChecked() {
    const auto date = Valida_Data(ctx_, txtDia->text(), txtMes->text());
    if (!date) {
        dialogs_.beep();
        dialogs_.information(m(619));
        return false;
    }
    lblFecha->setText(date->toString(QStringLiteral("dd/MM/yyyy")));
    if (Mes_Bloquejat(ctx_, date->month())) {
        dialogs_.information(m(622));
        focus(txtMes);
        return false;
    }
    return true;
}

void FormSuplidos::takeParty() {
    if (takeFromList(txtClient, ListClients)) focus(txtdescripcio);
}

void FormSuplidos::totalEntered() {
    if (txtTotal->text().isEmpty()) return;
    txtTotal->setText(reformat(ctx_, txtTotal->text()));
    if (FrameTesoreria->isVisibleTo(this))
        focus(ListEntitats);
    else
        GrabaApunt();
}

// Esc and the third button: a typed entry is dropped after the question; with nothing
// typed the screen closes.
void FormSuplidos::Cancela_Apunt() {
    if (txtDia->text().isEmpty() && lblOrdre->text().isEmpty()) {
        closeScreen();
        return;
    }
    if (!txtDia->text().isEmpty() &&
        dialogs_.yesNo(m(618) + QStringLiteral("\n\n") + m(25)) != Dialogs::Answer::Yes)
        return;
    const bool change = !lblOrdre->text().isEmpty();
    Neteja();
    if (change) emit provisionChanged();
}

void FormSuplidos::refused(purchases::ProvisionField field) {
    using purchases::ProvisionField;
    switch (field) {
        case ProvisionField::txtDia:
            focus(txtDia);
            break;
        case ProvisionField::txtMes:
            focus(txtMes);
            break;
        case ProvisionField::txtClient:
            focus(txtClient);
            break;
        case ProvisionField::txtTotal:
            focus(txtTotal);
            break;
        case ProvisionField::ListEntitats:
            focus(ListEntitats);
            break;
        case ProvisionField::None:
            break;
    }
}

void FormSuplidos::GrabaApunt() {
    if (gravant_) return;
    gravant_ = true;
    setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restore = [this] {
        QApplication::restoreOverrideCursor();
        setEnabled(true);
        gravant_ = false;
    };
    purchases::ProvisionEntry e = entry();
    const purchases::ProvisionField refusal = purchases::Verifica_Suplido(ctx_, dialogs_, e);
    display(e);
    if (refusal != purchases::ProvisionField::None) {
        restore();
        refused(refusal);
        return;
    }
    lblproces->setText(QStringLiteral("Grabando Apunte..."));
    setStatus(m(725));
    const bool change = !e.isNew();
    const purchases::ProvisionResult result = purchases::GrabaApunt(ctx_, e);
    if (!result.error.isEmpty()) dialogs_.stop(result.error);
    for (const JournalRow& row : purchases::Diari_Suplido(ctx_, e, result, change))
        Escriu_Diari(row);
    restore();
    lblproces->clear();
    if (!result.ok()) {
        setStatus(QString());
        return;
    }
    Neteja();
    if (change) emit provisionChanged();
}

void FormSuplidos::Escriu_Diari(const JournalRow& row) {
    ui::writeJournalRow(ListRegistres, row);
}

void FormSuplidos::Modifica_Suplido(const QString& number) {
    const auto loaded = loadChange(number, !txtDia->text().isEmpty(),
                                   [&] { return purchases::Modifica_Suplido(ctx_, number); });
    if (!loaded) return;
    display(*loaded);
    ui::selectPrefix(ListClients, loaded->txtClient);
    btnTancar->setText(m(6408));
    lblproces->setText(m(726).trimmed());
    setStatus(m(726));
    bringToFront();
    focus(txtDia);
}

bool FormSuplidos::entryTyped() const {
    return !txtDia->text().isEmpty();
}

}  // namespace tallora
