#include "frm_tesoreria_otros.h"

#include "account_list.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/money_rows.h"
#include "store/store_error.h"
#include "widgets/entry_parts.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace tallora {

FrmTesoreriaOtros::FrmTesoreriaOtros(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : EntryScreen(ctx, dialogs, QStringLiteral("FrmTesoreriaOtros"), Missatge(ctx, 6973), parent) {
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->addWidget(ui::bandTitle(m(6973), ctx_.EmpresaNom, this));

    Fecha = new QDateEdit(this);
    Fecha->setObjectName(QStringLiteral("Fecha"));
    Fecha->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    Fecha->setCalendarPopup(true);
    const int year = ctx_.Exercici.toInt();
    Fecha->setDateRange(QDate(year, 1, 1), QDate(year, 12, 31));
    Fecha->setDate(exerciseDay(year, QDate::currentDate()));
    Fecha->installEventFilter(this);
    lblproces = new QLabel(this);
    lblproces->setObjectName(QStringLiteral("lblproces"));
    auto* dateRow = new QHBoxLayout;
    dateRow->addWidget(caption(QStringLiteral("lblFecha"), m(6740), Fecha));
    dateRow->addWidget(Fecha);
    dateRow->addStretch(1);
    addNumber(dateRow, lblproces, lblOrdre);

    cmbSaleTesoreria = accountList(QStringLiteral("cmbSaleTesoreria"), nullptr);
    cmbSaleOtrasCuentas = accountList(QStringLiteral("cmbSaleOtrasCuentas"), cmbSaleTesoreria);
    cmbEntraTesoreria = accountList(QStringLiteral("cmbEntraTesoreria"), nullptr);
    cmbEntraOtrasCuentas = accountList(QStringLiteral("cmbEntraOtrasCuentas"), cmbEntraTesoreria);
    auto* sides = new QHBoxLayout;
    sides->addWidget(side(fixed("Importe que SALE de", "Import que SURT de"), cmbSaleTesoreria,
                          cmbSaleOtrasCuentas),
                     1);
    sides->addWidget(side(fixed("Importe que ENTRA EN", "Import que ENTRA A"), cmbEntraTesoreria,
                          cmbEntraOtrasCuentas),
                     1);

    txtConcepte = field(QStringLiteral("txtConcepte"), schema::kConceptLength);
    txtImporte = field(QStringLiteral("txtImporte"), 18);
    ui::makeAmountField(ctx_, txtImporte);
    txtImporte->setMaximumWidth(180);
    auto* g = new QGridLayout;
    g->setHorizontalSpacing(8);
    g->addWidget(caption(QStringLiteral("lblConcepte"), m(6741), txtConcepte), 0, 0);
    g->addWidget(txtConcepte, 0, 1);
    g->addWidget(caption(QStringLiteral("lblImporte"), m(6742), txtImporte), 1, 0);
    g->addWidget(txtImporte, 1, 1, Qt::AlignLeft);
    g->setColumnStretch(1, 1);

    registres_ = new QTableWidget(0, 6, this);
    registres_->setObjectName(QStringLiteral("ListRegistres"));
    registres_->setHorizontalHeaderLabels(
        {QStringLiteral("ID"), m(6740), m(6741), m(6742), QStringLiteral("ENTRA (D)"), m(6743)});
    registres_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    registres_->setSelectionBehavior(QAbstractItemView::SelectRows);
    registres_->setFocusPolicy(Qt::ClickFocus);
    registres_->verticalHeader()->hide();
    QHeaderView* header = registres_->horizontalHeader();
    const int digit = fontMetrics().horizontalAdvance(QStringLiteral("0"));
    header->resizeSection(0, 7 * digit);
    header->resizeSection(1, 12 * digit);
    header->setSectionResizeMode(2, QHeaderView::Stretch);
    header->resizeSection(3, 14 * digit);
    header->resizeSection(4, 24 * digit);
    header->resizeSection(5, 24 * digit);

    btnContabilizar = new QPushButton(fixed("Contabilizar", "Comptabilitzar"), this);
    btnContabilizar->setObjectName(QStringLiteral("btnContabilizar"));
    btnTancar = new QPushButton(m(308), this);
    btnTancar->setObjectName(QStringLiteral("btnTancar"));
    auto* buttons = new QHBoxLayout;
    auto* hint = new QLabel(fixed("Intro pasa al campo siguiente y, en el importe, graba el "
                                  "apunte. Esc lo anula.",
                                  "Intro passa al camp següent i, a l'import, enregistra "
                                  "l'apunt. Esc l'anul·la."),
                            this);
    hint->setObjectName(QStringLiteral("lblAjuda"));
    hint->setWordWrap(true);
    buttons->addWidget(hint, 1);
    for (QPushButton* b : {btnContabilizar, btnTancar}) {
        b->setFocusPolicy(Qt::ClickFocus);
        buttons->addWidget(b);
    }
    connect(btnContabilizar, &QPushButton::clicked, this, &FrmTesoreriaOtros::Contabilizar);
    connect(btnTancar, &QPushButton::clicked, this, &FrmTesoreriaOtros::Cancela_Moviment);

    auto* body = new QVBoxLayout;
    body->setContentsMargins(8, 6, 8, 6);
    body->addLayout(dateRow);
    body->addLayout(sides);
    body->addLayout(g);
    body->addLayout(buttons);
    body->addWidget(ui::heading(fixed("Apuntes grabados", "Apunts enregistrats"), this));
    body->addWidget(registres_, 1);
    root->addLayout(body, 1);

    order_ = {
        Fecha,       cmbSaleTesoreria, cmbSaleOtrasCuentas, cmbEntraTesoreria, cmbEntraOtrasCuentas,
        txtConcepte, txtImporte};
    ui::helpOnF1(ctx_, this, QStringLiteral("TesoreriaOtros"));
    OMPLE_LLISTA_Entitats();
    OMPLE_LLISTA_Comptes();
    Neteja_Moviment();
}

QComboBox* FrmTesoreriaOtros::accountList(const QString& name, QWidget* partner) {
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->setMinimumContentsLength(24);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->installEventFilter(this);
    // Of each side one account: choosing in one list clears its partner.
    if (auto* other = qobject_cast<QComboBox*>(partner)) {
        connect(list, &QComboBox::currentIndexChanged, this, [other](int row) {
            if (row >= 0) other->setCurrentIndex(-1);
        });
        connect(other, &QComboBox::currentIndexChanged, this, [list](int row) {
            if (row >= 0) list->setCurrentIndex(-1);
        });
    }
    return list;
}

QWidget* FrmTesoreriaOtros::side(const QString& title, QComboBox* treasury, QComboBox* other) {
    const bool sale = treasury == cmbSaleTesoreria;
    QFrame* frame =
        ui::panelFrame(sale ? QStringLiteral("FrameSale") : QStringLiteral("FrameEntra"), this);
    auto* g = new QGridLayout(frame);
    g->setContentsMargins(8, 6, 8, 6);
    g->addWidget(ui::heading(title.trimmed(), frame), 0, 0, 1, 3);
    // A list with its caption, and the button that leaves it blank.
    const auto line = [&](int row, QComboBox* list, const QString& text, const QString& clear) {
        g->addWidget(caption(list->objectName() + QStringLiteral("_lbl"), text, list), row, 0);
        g->addWidget(list, row, 1);
        auto* b = new QToolButton(frame);
        b->setObjectName(clear);
        b->setText(QStringLiteral("×"));
        b->setToolTip(fixed("Dejar en blanco", "Deixar en blanc"));
        b->setFocusPolicy(Qt::NoFocus);
        connect(b, &QToolButton::clicked, list, [list] { list->setCurrentIndex(-1); });
        g->addWidget(b, row, 2);
    };
    line(1, treasury, fixed("Cuenta de tesorería", "Compte de tresoreria"),
         sale ? QStringLiteral("clearSaleTesoreria") : QStringLiteral("ClearEntraTesoreria"));
    line(2, other, fixed("Otra cuenta", "Altre compte"),
         sale ? QStringLiteral("clearSaleOtrasCuentas") : QStringLiteral("clearEntraOtrasCuentas"));
    g->setColumnStretch(1, 1);
    return frame;
}

void FrmTesoreriaOtros::OMPLE_LLISTA_Entitats() {
    const auto items = treasury::treasuryAccountItems(ctx_);
    for (QComboBox* list : {cmbSaleTesoreria, cmbEntraTesoreria}) ui::fillAccountList(list, items);
}

void FrmTesoreriaOtros::OMPLE_LLISTA_Comptes() {
    const auto items = treasury::otherAccountItems(ctx_);
    for (QComboBox* list : {cmbSaleOtrasCuentas, cmbEntraOtrasCuentas})
        ui::fillAccountList(list, items);
}

void FrmTesoreriaOtros::refreshLists() {
    try {
        OMPLE_LLISTA_Entitats();
        OMPLE_LLISTA_Comptes();
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
}

treasury::OtherMovement FrmTesoreriaOtros::entry() const {
    treasury::OtherMovement e;
    if (!lblOrdre->text().isEmpty()) e.asiento = lblOrdre->text().toLongLong();
    e.data = Fecha->date();
    e.concepto = txtConcepte->text();
    e.importe = txtImporte->text();
    e.saleTesoreria = ui::chosenAccount(cmbSaleTesoreria);
    e.saleOtra = ui::chosenAccount(cmbSaleOtrasCuentas);
    e.entraTesoreria = ui::chosenAccount(cmbEntraTesoreria);
    e.entraOtra = ui::chosenAccount(cmbEntraOtrasCuentas);
    return e;
}

bool FrmTesoreriaOtros::entryTyped() const {
    for (const QComboBox* list :
         {cmbSaleTesoreria, cmbSaleOtrasCuentas, cmbEntraTesoreria, cmbEntraOtrasCuentas})
        if (list->currentIndex() >= 0) return true;
    return !txtConcepte->text().isEmpty() || !txtImporte->text().isEmpty();
}

void FrmTesoreriaOtros::Neteja_Moviment() {
    setStatus(QStringLiteral("Limpiando..."));
    for (QComboBox* list :
         {cmbSaleTesoreria, cmbSaleOtrasCuentas, cmbEntraTesoreria, cmbEntraOtrasCuentas})
        list->setCurrentIndex(-1);
    txtConcepte->clear();
    txtImporte->clear();
    lblOrdre->clear();
    lblproces->clear();
    btnTancar->setText(m(308));
    setStatus(QString());
    focus(Fecha);
}

void FrmTesoreriaOtros::Cancela_Moviment() {
    if (!entryTyped() && lblOrdre->text().isEmpty()) {
        closeScreen();
        return;
    }
    if (entryTyped() &&
        dialogs_.yesNo(m(618) + QStringLiteral("\n\n") + m(25)) != Dialogs::Answer::Yes)
        return;
    Neteja_Moviment();
}

void FrmTesoreriaOtros::fieldEntered(QWidget* w) {
    labels_.mark(w);
}

bool FrmTesoreriaOtros::enterPressed(QWidget* w) {
    if (w == txtImporte) {
        if (!txtImporte->text().isEmpty()) txtImporte->setText(reformat(ctx_, txtImporte->text()));
        Contabilizar();
    } else if (w == cmbSaleTesoreria && cmbSaleTesoreria->currentIndex() >= 0) {
        focus(cmbEntraTesoreria);
    } else if (w == cmbEntraTesoreria && cmbEntraTesoreria->currentIndex() >= 0) {
        focus(txtConcepte);
    } else if (const qsizetype at = order_.indexOf(w); at >= 0 && at + 1 < order_.size()) {
        focus(order_[at + 1]);
    } else {
        return false;
    }
    return true;
}

bool FrmTesoreriaOtros::upPressed(QWidget* w) {
    // The lists and the date keep their arrows for choosing.
    if (w != txtConcepte && w != txtImporte) return false;
    return focusPrevious(order_, w);
}

void FrmTesoreriaOtros::refused(treasury::OtherField field) {
    using treasury::OtherField;
    switch (field) {
        case OtherField::SaleTesoreria:
            focus(cmbSaleTesoreria);
            break;
        case OtherField::EntraTesoreria:
            focus(cmbEntraTesoreria);
            break;
        case OtherField::Concepte:
            focus(txtConcepte);
            break;
        case OtherField::Importe:
            focus(txtImporte);
            break;
        case OtherField::Fecha:
            focus(Fecha);
            break;
    }
}

void FrmTesoreriaOtros::Contabilizar() {
    if (gravant_) return;
    gravant_ = true;
    const treasury::OtherMovement e = entry();
    // The checks answer with their own messages; the write itself is one short transaction,
    // so no busy cursor stands over a question.
    const QString before = lblproces->text();
    lblproces->setText(QStringLiteral("Grabando Apunte..."));
    setStatus(m(725));
    std::optional<treasury::OtherPosting> posted;
    try {
        posted = treasury::postOtherMovement(ctx_, dialogs_, e);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    gravant_ = false;
    if (!posted || posted->refused) {
        lblproces->setText(before);
        setStatus(QString());
        if (posted) refused(*posted->refused);
        return;
    }
    const bool change = e.asiento.has_value();
    logEntry(posted->asiento, e,
             change ? fixed("Apunte modificado", "Apunt modificat")
                    : fixed("Apunte grabado", "Apunt enregistrat"));
    Neteja_Moviment();
    if (change) emit movementChanged();
}

void FrmTesoreriaOtros::logEntry(std::int64_t asiento, const treasury::OtherMovement& e,
                                 const QString& result) {
    const auto name = [](const QComboBox* treasury, const QComboBox* other) {
        return treasury->currentIndex() >= 0 ? treasury->currentText() : other->currentText();
    };
    const QStringList cells{QString::number(asiento),
                            Format_Data(e.data),
                            e.concepto,
                            reformat(ctx_, e.importe),
                            name(cmbEntraTesoreria, cmbEntraOtrasCuentas),
                            name(cmbSaleTesoreria, cmbSaleOtrasCuentas)};
    int row = registres_->rowCount();
    registres_->setRowCount(row + 2);
    for (int c = 0; c < cells.size(); ++c) {
        auto* item = new QTableWidgetItem(cells[c]);
        if (c == 0 || c == 3) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        registres_->setItem(row, c, item);
    }
    auto* outcome = new QTableWidgetItem(result);
    outcome->setForeground(QColor(0x2e, 0x6b, 0x30));
    registres_->setItem(row + 1, 2, outcome);
    registres_->scrollToItem(outcome);
}

void FrmTesoreriaOtros::Modifica_Otros(std::int64_t asiento) {
    const auto loaded = loadChange(QString::number(asiento), entryTyped(),
                                   [&] { return treasury::loadOtherMovement(ctx_, asiento); });
    if (!loaded) return;
    lblOrdre->setText(QString::number(asiento));
    Fecha->setDate(loaded->data);
    txtConcepte->setText(loaded->concepto);
    txtImporte->setText(loaded->importe);
    ui::chooseAccount(cmbSaleTesoreria, loaded->saleTesoreria);
    ui::chooseAccount(cmbSaleOtrasCuentas, loaded->saleOtra);
    ui::chooseAccount(cmbEntraTesoreria, loaded->entraTesoreria);
    ui::chooseAccount(cmbEntraOtrasCuentas, loaded->entraOtra);
    lblproces->setText(QStringLiteral("Modificando apunte..."));
    setStatus(m(726));
    bringToFront();
    focus(Fecha);
}

}  // namespace tallora
