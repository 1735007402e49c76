// FormCompres: construction, captions and the lists (Form_Load).
#include "form_compres.h"

#include "context/common_helpers.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master/accounts.h"
#include "purchases/provision_entry.h"
#include "schema/creation.h"
#include "store/database.h"
#include "widgets/field_behaviour.h"
#include "widgets/journal_list.h"
#include "widgets/screen_style.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace tallora {
namespace {

constexpr int kDescriptionLength = 25;  // FrasIN.descripcio

}  // namespace

using ui::heading;

FormCompres::FormCompres(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : EntryScreen(ctx, dialogs, QStringLiteral("FormCompres"), Missatge(ctx, 700).trimmed(),
                  parent) {
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    lblproces = new QLabel(this);
    lblproces->setObjectName(QStringLiteral("lblproces"));
    root->addWidget(ui::bandTitle(m(700).trimmed(), ctx_.EmpresaNom, this));

    auto* body = new QHBoxLayout;
    body->setContentsMargins(8, 6, 8, 6);
    auto* left = new QVBoxLayout;
    ComboOP = new QComboBox(this);
    ComboOP->setObjectName(QStringLiteral("ComboOP"));
    for (const purchases::ExpenseGroup& group : purchases::kExpenseGroups)
        ComboOP->addItem(m(group.message));
    ComboOP->setMinimumContentsLength(28);
    ComboOP->installEventFilter(this);
    ComboOP->setToolTip(m(704).trimmed());
    auto* groupRow = new QHBoxLayout;
    groupRow->addWidget(caption(QStringLiteral("lblGrup"), m(903), ComboOP));
    groupRow->addWidget(ComboOP);
    auto* hint = new QLabel(m(704).trimmed(), this);
    hint->setObjectName(QStringLiteral("lblGrupAjuda"));
    groupRow->addWidget(hint, 1);
    left->addLayout(groupRow);

    PanelDades = new QWidget(this);
    PanelDades->setObjectName(QStringLiteral("PanelDades"));
    auto* data = new QVBoxLayout(PanelDades);
    data->setContentsMargins(0, 0, 0, 0);
    data->addWidget(buildEntry());
    data->addWidget(buildTreasury());
    data->addWidget(buildWorkArea(), 1);
    left->addWidget(PanelDades, 1);
    left->addWidget(buttonRow(m(615), btnGuardar, btnTancar));
    btnGuardar->setToolTip(m(6641));
    connect(btnGuardar, &QPushButton::clicked, this, &FormCompres::Guardar);
    connect(btnTancar, &QPushButton::clicked, this, &FormCompres::closeOrCancel);
    order_ = {txtDia, txtMes,      txtProveidor, txtDespesa,  txtdescripcio, txtTotal,
              CmbIva, txtBaseIRPF, txtTipus,     txtRetencio, ListEntitats};
    body->addLayout(left, 3);

    body->addLayout(journalColumn(), 2);
    root->addLayout(body, 1);

    // The help map knows the purchases page as "Compras", with a capital.
    ui::helpOnF1(ctx_, this, QStringLiteral("Compras"));
    OMPLE_LLISTA_Provs();
    OMPLE_LLISTA_Entitats();
    Neteja();
    focus(ComboOP);
}

bool FormCompres::tickets() const {
    return isTickets(ctx_);
}

QWidget* FormCompres::buildEntry() {
    auto* box = new QWidget(this);
    auto* g = new QGridLayout(box);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(8);

    QHBoxLayout* date = dateRow(txtDia, txtMes, lblFecha);
    addNumber(date, lblproces, lblOrdre);
    g->addWidget(caption(QStringLiteral("lblDia"), m(601), txtDia), 0, 0);
    g->addLayout(date, 0, 1, 1, 3);

    txtProveidor = field(QStringLiteral("txtProveidor"), 40);
    g->addWidget(caption(QStringLiteral("lblProveidor"), m(701), txtProveidor), 1, 0);
    g->addWidget(txtProveidor, 1, 1, 1, 3);
    txtDespesa = field(QStringLiteral("txtDespesa"), 40);
    g->addWidget(caption(QStringLiteral("lblDespesa"), m(702), txtDespesa), 2, 0);
    g->addWidget(txtDespesa, 2, 1, 1, 3);

    descriptionRow(g, 3, kDescriptionLength, txtdescripcio, cmbSerie);

    QHBoxLayout* total = totalRow(txtTotal, CmbIva, lblcmbIVA);
    g->addWidget(caption(QStringLiteral("lblTotal"), QStringLiteral("TOTAL"), txtTotal), 4, 0);
    g->addLayout(total, 4, 1, 1, 3);

    txtBaseIRPF = field(QStringLiteral("txtBaseIRPF"), 18);
    ui::makeAmountField(ctx_, txtBaseIRPF);
    txtTipus = field(QStringLiteral("txtTipus"), 6);
    ui::makeRateField(ctx_, txtTipus);
    txtTipus->setFixedWidth(56);
    txtRetencio = field(QStringLiteral("txtRetencio"), 18);
    ui::makeAmountField(ctx_, txtRetencio);
    auto* irpf = new QHBoxLayout;
    irpf->addWidget(txtBaseIRPF);
    irpf->addSpacing(12);
    irpf->addWidget(caption(QStringLiteral("lblTipus"), QStringLiteral("% IRPF"), txtTipus));
    irpf->addSpacing(4);
    irpf->addWidget(txtTipus);
    irpf->addSpacing(12);
    irpf->addWidget(caption(QStringLiteral("lblRetencio"), m(703), txtRetencio));
    irpf->addSpacing(4);
    irpf->addWidget(txtRetencio);
    irpf->addStretch(1);
    g->addWidget(caption(QStringLiteral("lblBaseIRPF"), QStringLiteral("Base IRPF"), txtBaseIRPF),
                 5, 0);
    g->addLayout(irpf, 5, 1, 1, 3);

    CmbClasificacion = new QComboBox(this);
    CmbClasificacion->setObjectName(QStringLiteral("CmbClasificacion"));
    CmbClasificacion->setFocusPolicy(Qt::ClickFocus);
    g->addWidget(CmbClasificacion, 6, 1, 1, 2);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 1);

    for (QLineEdit* f : {txtProveidor, txtDespesa})
        connect(f, &QLineEdit::textChanged, this, [this, f](const QString& text) {
            ui::selectPrefix(f == txtProveidor ? ListProv : ListDespeses, text);
        });
    connect(txtTipus, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (text.contains(u'-')) txtTipus->setText(QString(text).remove(u'-'));
        Calcula_Retencio();
    });
    connect(CmbIva, &QComboBox::currentIndexChanged, this, [this] {
        if (!loading_) rateChosen();
    });
    const std::pair<QWidget*, int> hints[] = {
        {txtDia, 710},      {txtMes, 711},        {txtProveidor, 712},
        {txtDespesa, 713},  {txtdescripcio, 714}, {txtTotal, 715},
        {txtBaseIRPF, 716}, {txtTipus, 717},      {txtRetencio, 718}};
    for (const auto& [w, n] : hints) w->setToolTip(m(n).trimmed());
    return box;
}

QWidget* FormCompres::buildTreasury() {
    FrameTesoreria = treasuryFrame(m(6677).trimmed(), ListEntitats, QStringLiteral("DtVencimiento"),
                                   DtVencimiento);
    return FrameTesoreria;
}

QWidget* FormCompres::buildWorkArea() {
    work_ = new QStackedWidget(this);
    FrameList = ui::panelFrame(QStringLiteral("FrameList"), this);
    lists_ = new QStackedWidget(FrameList);
    lists_->setObjectName(QStringLiteral("lists"));
    ListProv = new QListWidget(this);
    ListProv->setObjectName(QStringLiteral("ListProv"));
    ListDespeses = new QListWidget(this);
    ListDespeses->setObjectName(QStringLiteral("ListDespeses"));
    for (QListWidget* list : {ListProv, ListDespeses}) {
        list->installEventFilter(this);
        lists_->addWidget(list);
        connect(list, &QListWidget::itemDoubleClicked, this, [this, list] {
            if (list == ListProv)
                takeAndGo(txtProveidor, ListProv, txtDespesa);
            else
                takeAndGo(txtDespesa, ListDespeses, txtdescripcio);
        });
    }
    auto* listLayout = new QVBoxLayout(FrameList);
    listLayout->setContentsMargins(4, 4, 4, 4);
    auto* listTitle = heading(m(706).trimmed(), FrameList);
    listTitle->setObjectName(QStringLiteral("lblLlista"));
    listLayout->addWidget(listTitle);
    listLayout->addWidget(lists_);
    connect(lists_, &QStackedWidget::currentChanged, listTitle, [this, listTitle](int page) {
        listTitle->setText(m(page == 0 ? 706 : 705).trimmed());
    });
    work_->addWidget(FrameList);
    work_->addWidget(buildAmountsPanel());
    work_->setMinimumHeight(190);
    return work_;
}

QWidget* FormCompres::buildAmountsPanel() {
    QGridLayout* g = amountsPanel(PanelIVA, m(6631), 3);
    for (std::size_t i = 0; i < 4; ++i) {
        const QString n = QString::number(i + 1);
        const int row = static_cast<int>(i) + 2;
        lbliva[i] = new QLabel(PanelIVA);
        lbliva[i]->setObjectName(QStringLiteral("lbliva") + n);
        txtBase[i] = field(QStringLiteral("txtBase") + n, 18);
        txtIVA[i] = field(QStringLiteral("txtIVA") + n, 18);
        for (QLineEdit* f : {txtBase[i], txtIVA[i]}) {
            ui::makeAmountField(ctx_, f);
            f->setToolTip(m(f == txtBase[i] ? 719 : 724).trimmed());
        }
        labels_.add(txtBase[i], lbliva[i]);
        labels_.add(txtIVA[i], lbliva[i]);
        g->addWidget(lbliva[i], row, 0);
        g->addWidget(txtBase[i], row, 1);
        g->addWidget(txtIVA[i], row, 2);
    }
    txtexempta = new QLineEdit(PanelIVA);
    txtexempta->setObjectName(QStringLiteral("txtexempta"));
    txtexempta->setReadOnly(true);
    txtexempta->setFocusPolicy(Qt::NoFocus);
    lblexempta =
        new QLabel(fixed("Exento / IVA no aplicable", "Exempt / IVA no aplicable"), PanelIVA);
    g->addWidget(lblexempta, 6, 0);
    g->addWidget(txtexempta, 6, 1);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 1);
    g->setRowStretch(7, 1);
    return PanelIVA;
}

void FormCompres::fillRateCaptions(const std::array<double, 4>& rates) {
    for (std::size_t i = 0; i < 4; ++i)
        lbliva[i]->setText(purchases::rateText(ctx_, rates[i]) + QStringLiteral("%"));
}

// The list shows names in capitals, as the entry stores them.
void FormCompres::OMPLE_LLISTA_Provs() {
    ListProv->clear();
    for (const purchases::PartyItem& supplier : purchases::partyList(ctx_, true)) {
        auto* item = new QListWidgetItem(supplier.text, ListProv);
        item->setData(Qt::UserRole, QVariant::fromValue<qint64>(supplier.number));
    }
    ui::selectPrefix(ListProv, txtProveidor->text());
}

void FormCompres::OMPLE_LLISTA_Despeses() {
    ListDespeses->clear();
    const auto family = master::familyByTable(purchases::Taula_Grup(ComboOP->currentIndex()));
    if (family) {
        for (const master::AccountItem& account : master::accountList(ctx_, *family)) {
            auto* item = new QListWidgetItem(account.nomCompte.toUpper(), ListDespeses);
            item->setData(Qt::UserRole, QVariant::fromValue<qint64>(account.compte));
        }
    }
    ui::selectPrefix(ListDespeses, txtDespesa->text());
}

// A settled entry keeps its single row "Marca". A company with no treasury account gets no
// blank row either.
void FormCompres::OMPLE_LLISTA_Entitats() {
    if (!ctx_.Tesoreria || ListEntitats->currentText() == QStringLiteral("Marca")) return;
    FrameTesoreria->setEnabled(true);
    fillTreasuryAccounts(ListEntitats, false);
}

void FormCompres::OMPLE_CmbClasificacion() {
    CmbClasificacion->clear();
    CmbClasificacion->addItems({m(6854), m(6855), m(6856)});
    CmbClasificacion->setVisible(ctx_.Intra);
}

void FormCompres::refreshLists() {
    const QString supplier = txtProveidor->text();
    const QString account = txtDespesa->text();
    OMPLE_LLISTA_Provs();
    OMPLE_LLISTA_Despeses();
    OMPLE_LLISTA_Entitats();
    ui::selectPrefix(ListProv, supplier);
    ui::selectPrefix(ListDespeses, account);
}

}  // namespace tallora
