// FormVendes: construction, captions and the lists (Form_Load).
#include "form_vendes.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master/accounts.h"
#include "schema/creation.h"
#include "store/database.h"
#include "widgets/entry_parts.h"
#include "widgets/field_behaviour.h"
#include "widgets/journal_list.h"
#include "widgets/screen_style.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFileDialog>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace tallora {

using ui::heading;

FormVendes::FormVendes(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                       report::ReportOutput* output, QWidget* parent)
    : EntryScreen(ctx, dialogs, QStringLiteral("FormVendes"), Missatge(ctx, 613), parent),
      job_(job),
      output_(output) {
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    lblproces = new QLabel(this);
    lblproces->setObjectName(QStringLiteral("lblproces"));
    root->addWidget(ui::bandTitle(m(613), ctx_.EmpresaNom, this));

    auto* body = new QHBoxLayout;
    body->setContentsMargins(8, 6, 8, 6);
    auto* left = new QVBoxLayout;
    left->addWidget(buildEntry());
    left->addWidget(buildTreasury());
    left->addWidget(buildTypeOptions());
    left->addWidget(buildWorkArea(), 1);
    left->addWidget(buttonRow(m(611) + QStringLiteral(" ") + m(612), btnGuardar, btnTancar));
    connect(btnGuardar, &QPushButton::clicked, this, &FormVendes::Guardar);
    connect(btnTancar, &QPushButton::clicked, this, &FormVendes::Surt_Apunt);
    order_ = {txtDia, txtMes, txtClient, txtTipus, txtdescripcio, txtTotal, CmbIva,
              txtBaseIRPF, Text1, txtRetencio, ListEntitats};
    body->addLayout(left, 3);

    body->addLayout(journalColumn(), 2);
    root->addLayout(body, 1);

    ui::helpOnF1(ctx_, this, QStringLiteral("ventas"));
    applyKind();
    OMPLE_LLISTA_Clients();
    OMPLE_LLISTA_Vendes();
    OMPLE_LLISTA_Entitats({});
    Neteja_Apunt();
}

bool FormVendes::tickets() const {
    return sales::isTickets(ctx_);
}

QWidget* FormVendes::buildEntry() {
    auto* box = new QWidget(this);
    auto* g = new QGridLayout(box);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(8);

    QHBoxLayout* date = dateRow(txtDia, txtMes, lblFecha);
    addNumber(date, lblproces, lblOrdre);
    g->addWidget(caption(QStringLiteral("lblDia"), m(601), txtDia), 0, 0);
    g->addLayout(date, 0, 1, 1, 3);

    txtClient = field(QStringLiteral("txtClient"), 40);
    lblclient = caption(QStringLiteral("lblclient"), m(602), txtClient);
    g->addWidget(lblclient, 1, 0);
    g->addWidget(txtClient, 1, 1, 1, 3);
    txtTipus = field(QStringLiteral("txtTipus"), 40);
    g->addWidget(caption(QStringLiteral("lblTipus"), m(603), txtTipus), 2, 0);
    g->addWidget(txtTipus, 2, 1, 1, 3);

    descriptionRow(g, 3, 40, txtdescripcio, cmbSerie);  // FrasOut.descripcio

    QHBoxLayout* total = totalRow(txtTotal, CmbIva, lblcmbIVA);
    g->addWidget(caption(QStringLiteral("lblTotal"), QStringLiteral("TOTAL"), txtTotal), 4, 0);
    g->addLayout(total, 4, 1, 1, 3);

    txtBaseIRPF = field(QStringLiteral("txtBaseIRPF"), 18);
    ui::makeAmountField(ctx_, txtBaseIRPF);
    Text1 = field(QStringLiteral("Text1"), 6);
    ui::makeRateField(ctx_, Text1);
    Text1->setFixedWidth(56);
    txtRetencio = field(QStringLiteral("txtRetencio"), 18);
    ui::makeAmountField(ctx_, txtRetencio);
    lblBaseIRPF = caption(QStringLiteral("lblBaseIRPF"), QStringLiteral("Base IRPF"), txtBaseIRPF);
    lblText1 = caption(QStringLiteral("lblText1"), QStringLiteral("% IRPF"), Text1);
    lblRetencio = caption(QStringLiteral("lblRetencio"), m(605), txtRetencio);
    auto* irpf = new QHBoxLayout;
    irpf->addWidget(txtBaseIRPF);
    irpf->addSpacing(12);
    irpf->addWidget(lblText1);
    irpf->addWidget(Text1);
    irpf->addSpacing(12);
    irpf->addWidget(lblRetencio);
    irpf->addWidget(txtRetencio);
    irpf->addStretch(1);
    g->addWidget(lblBaseIRPF, 5, 0);
    g->addLayout(irpf, 5, 1, 1, 3);

    CmbClasificacion = new QComboBox(this);
    CmbClasificacion->setObjectName(QStringLiteral("CmbClasificacion"));
    CmbClasificacion->setFocusPolicy(Qt::ClickFocus);
    chk_rebut = new QCheckBox(m(606), this);
    chk_rebut->setObjectName(QStringLiteral("chk_rebut"));
    chk_rebut->setFocusPolicy(Qt::ClickFocus);
    chk_imprimir = new QCheckBox(fixed("Imprimir el documento", "Imprimir el document"), this);
    chk_imprimir->setObjectName(QStringLiteral("chk_imprimir"));
    chk_imprimir->setFocusPolicy(Qt::ClickFocus);
    chk_imprimir->hide();  // billing documents only
    cmbImprimir = new QComboBox(this);
    cmbImprimir->setObjectName(QStringLiteral("cmbImprimir"));
    cmbImprimir->setFocusPolicy(Qt::ClickFocus);
    cmbImprimir->addItems({fixed("Impresora", "Impressora"), QStringLiteral("PDF")});
    cmbImprimir->hide();
    connect(chk_imprimir, &QCheckBox::toggled, cmbImprimir, &QComboBox::setEnabled);
    cmbImprimir->setEnabled(false);
    pdfPath_ = [this](const QString& proposed) {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        return QFileDialog::getSaveFileName(this, m(816), QDir(folder).filePath(proposed),
                                            QStringLiteral("PDF (*.pdf)"));
    };
    auto* options = new QHBoxLayout;
    options->addWidget(CmbClasificacion);
    options->addWidget(chk_rebut);
    options->addWidget(chk_imprimir);
    options->addWidget(cmbImprimir);
    options->addStretch(1);
    g->addLayout(options, 6, 1, 1, 3);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 1);

    for (QLineEdit* f : {txtClient, txtTipus})
        connect(f, &QLineEdit::textChanged, this, [this, f](const QString& text) {
            f == txtClient ? customerTyped(text) : accountTyped(text);
        });
    connect(txtDia, &QLineEdit::textEdited, this, [this] {
        if (!txtDia->text().isEmpty()) btnTancar->setText(m(6408));
    });
    connect(Text1, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (text.contains(u'-')) Text1->setText(QString(text).remove(u'-'));
        irpfPercentChanged();
    });
    // Hints show as tool tips, so that they never overwrite the status of the entry.
    const std::pair<QWidget*, int> hints[] = {{txtDia, 620},        {txtMes, 624},
                                              {txtClient, 625},     {txtTipus, 626},
                                              {txtdescripcio, 627}, {txtTotal, 628},
                                              {Text1, 629}};
    for (const auto& [w, n] : hints) w->setToolTip(m(n).trimmed());
    return box;
}

QWidget* FormVendes::buildTreasury() {
    FrameTesoreria =
        treasuryFrame(m(6758), ListEntitats, QStringLiteral("DtFacturacionVencimiento"),
                      DtFacturacionVencimiento);
    return FrameTesoreria;
}

QWidget* FormVendes::buildWorkArea() {
    work_ = new QStackedWidget(this);
    FrameList = ui::panelFrame(QStringLiteral("FrameList"), this);
    auto* lists = new QStackedWidget(FrameList);
    lists->setObjectName(QStringLiteral("lists"));
    ListClients = new QListWidget(this);
    ListClients->setObjectName(QStringLiteral("ListClients"));
    ListVendes = new QListWidget(this);
    ListVendes->setObjectName(QStringLiteral("ListVendes"));
    for (QListWidget* list : {ListClients, ListVendes}) {
        list->installEventFilter(this);
        lists->addWidget(list);
        connect(list, &QListWidget::itemDoubleClicked, this,
                [this, list] { list == ListClients ? takeCustomer() : takeAccount(); });
    }
    auto* listLayout = new QVBoxLayout(FrameList);
    listLayout->setContentsMargins(4, 4, 4, 4);
    listLayout->addWidget(lists);
    work_->addWidget(FrameList);
    work_->addWidget(buildAmountsPanel());
    work_->addWidget(buildReceiptFrame());
    work_->addWidget(buildBillingFrame());
    work_->setMinimumHeight(190);
    return work_;
}

QWidget* FormVendes::buildAmountsPanel() {
    QGridLayout* g = amountsPanel(PanelIVA, m(652), 4);
    lblREHeader_ = heading(QStringLiteral("R.E."), PanelIVA);
    g->addWidget(lblREHeader_, 1, 3);
    for (std::size_t i = 0; i < 3; ++i) {
        const QString n = QString::number(i + 1);
        const int row = static_cast<int>(i) + 2;
        lbliva[i] = new QLabel(PanelIVA);
        lbliva[i]->setObjectName(QStringLiteral("lbliva") + n);
        lblRE[i] = new QLabel(PanelIVA);
        lblRE[i]->setObjectName(QStringLiteral("lblRE") + n);
        lblbase[i] = new QLabel(PanelIVA);
        lblbase[i]->setObjectName(QStringLiteral("lblbase") + n);
        lblQuota[i] = new QLabel(PanelIVA);
        lblQuota[i]->setObjectName(QStringLiteral("lblQuota") + n);
        txtBase[i] = field(QStringLiteral("txtBase") + n, 18);
        txtIVA[i] = field(QStringLiteral("txtIVA") + n, 18);
        txtRE[i] = field(QStringLiteral("txtRE") + n, 18);
        for (QLineEdit* f : {txtBase[i], txtIVA[i], txtRE[i]}) {
            ui::makeAmountField(ctx_, f);
            f->setToolTip(f == txtBase[i] ? m(632) : f == txtIVA[i] ? m(633) : m(634));
        }
        labels_.add(txtBase[i], lblbase[i]);
        labels_.add(txtIVA[i], lblQuota[i]);
        labels_.add(txtRE[i], lblRE[i]);
        auto* rate = new QHBoxLayout;
        rate->addWidget(lbliva[i]);
        rate->addStretch(1);
        rate->addWidget(lblbase[i]);
        g->addLayout(rate, row, 0);
        g->addWidget(txtBase[i], row, 1);
        auto* quota = new QHBoxLayout;
        quota->addWidget(txtIVA[i]);
        quota->addWidget(lblQuota[i]);
        g->addLayout(quota, row, 2);
        auto* re = new QHBoxLayout;
        re->addWidget(lblRE[i]);
        re->addWidget(txtRE[i]);
        g->addLayout(re, row, 3);
    }
    g->setColumnStretch(1, 1);
    g->setColumnStretch(2, 1);
    g->setColumnStretch(3, 1);
    g->setRowStretch(5, 1);
    return PanelIVA;
}

QWidget* FormVendes::buildReceiptFrame() {
    FRAME_recibos = ui::panelFrame(QStringLiteral("FRAME_recibos"), this);
    auto* v = new QVBoxLayout(FRAME_recibos);
    v->setContentsMargins(8, 6, 8, 6);
    lbl_rebut_titol = heading(QString(), FRAME_recibos);
    lbl_rebut_titol->setObjectName(QStringLiteral("lbl_rebut_titol"));
    lbl_rebut_data = new QLabel(FRAME_recibos);
    lbl_rebut_data->setObjectName(QStringLiteral("lbl_rebut_data"));
    auto* top = new QHBoxLayout;
    top->addWidget(lbl_rebut_titol, 1);
    top->addWidget(lbl_rebut_data);
    v->addLayout(top);
    auto* who = new QGridLayout;
    lbl_rebut_client = new QLabel(FRAME_recibos);
    lbl_rebut_domicili = new QLabel(FRAME_recibos);
    lbl_rebut_poblacio = new QLabel(FRAME_recibos);
    lbl_rebut_nif = new QLabel(FRAME_recibos);
    lbl_rebut_client->setObjectName(QStringLiteral("lbl_rebut_client"));
    lbl_rebut_domicili->setObjectName(QStringLiteral("lbl_rebut_domicili"));
    lbl_rebut_poblacio->setObjectName(QStringLiteral("lbl_rebut_poblacio"));
    lbl_rebut_nif->setObjectName(QStringLiteral("lbl_rebut_nif"));
    who->addWidget(lbl_rebut_client, 0, 0);
    who->addWidget(lbl_rebut_nif, 0, 1);
    who->addWidget(lbl_rebut_domicili, 1, 0);
    who->addWidget(lbl_rebut_poblacio, 1, 1);
    v->addLayout(who);
    for (std::size_t i = 0; i < 5; ++i) {
        txt_rebut_concepte[i] = field(
            i == 0 ? QStringLiteral("txt_rebut_concepte")
                   : QStringLiteral("txt_rebut_concepte") + QString::number(i + 1),
            150);
        v->addWidget(txt_rebut_concepte[i]);
    }
    btn_rebut_grava = new QPushButton(m(17), FRAME_recibos);
    btn_rebut_grava->setObjectName(QStringLiteral("btn_rebut_grava"));
    btn_rebut_cancela = new QPushButton(m(6408), FRAME_recibos);
    btn_rebut_cancela->setObjectName(QStringLiteral("btn_rebut_cancela"));
    connect(btn_rebut_grava, &QPushButton::clicked, this, &FormVendes::rebutGrava);
    connect(btn_rebut_cancela, &QPushButton::clicked, this, &FormVendes::rebutCancela);
    v->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btn_rebut_grava);
    buttons->addWidget(btn_rebut_cancela);
    v->addLayout(buttons);
    return FRAME_recibos;
}

void FormVendes::fillRateCaptions(const std::array<double, 3>& iva,
                                  const std::array<double, 3>& re) {
    for (std::size_t i = 0; i < 3; ++i) {
        lbliva[i]->setText(QString::number(iva[i]) + QStringLiteral(" %"));
        lblRE[i]->setText(QString::number(re[i]) + QStringLiteral(" %"));
    }
}

// The columns and fields each kind of exercise shows.
void FormVendes::applyKind() {
    CmbIva->clear();
    CmbIva->addItem(QStringLiteral("0"));
    if (!tickets()) {
        for (double rate : ctx_.TipusIVA) CmbIva->addItem(QString::number(rate));
        CmbIva->addItem(m(6749));
    }
    for (std::size_t i = 0; i < 3; ++i) {
        const bool used = ctx_.TipusIVA[i] != 0;
        for (QWidget* w : std::initializer_list<QWidget*>{lbliva[i], lblRE[i], lblbase[i],
                                                         lblQuota[i], txtBase[i], txtIVA[i],
                                                         txtRE[i]})
            w->setVisible(used);
    }
    for (QWidget* w : std::initializer_list<QWidget*>{txtClient, lblclient, CmbIva, lblcmbIVA})
        w->setVisible(!tickets());
}

void FormVendes::OMPLE_LLISTA_Clients() {
    ListClients->clear();
    auto db = store::Database::open(ctx_.exerciseFile(schema::db::Gest));
    auto st = db.prepare(QStringLiteral("select nom, client from clients order by nom asc"));
    while (st.next()) {
        auto* item = new QListWidgetItem(st.text(0), ListClients);
        item->setData(Qt::UserRole, QVariant::fromValue<qint64>(st.int64(1)));
    }
    customerTyped(txtClient->text());
}

void FormVendes::OMPLE_LLISTA_Vendes() {
    ListVendes->clear();
    for (const master::AccountItem& account : master::accountList(ctx_, master::Family::Ingresos)) {
        auto* item = new QListWidgetItem(account.nomCompte, ListVendes);
        item->setData(Qt::UserRole, QVariant::fromValue<qint64>(account.compte));
    }
    accountTyped(txtTipus->text());
}

// A settled sale keeps its single row "Marca"; Neteja_Apunt empties the list first.
void FormVendes::OMPLE_LLISTA_Entitats(const QString& select) {
    if (ListEntitats->currentText() == QStringLiteral("Marca")) return;
    ListEntitats->clear();
    fillTreasuryAccounts(ListEntitats, true);  // no account: the sale stays pending
    ListEntitats->setCurrentIndex(std::max(0, ListEntitats->findText(select)));
}

void FormVendes::OMPLE_CmbClasificacion() {
    CmbClasificacion->clear();
    CmbClasificacion->addItems({m(6854), m(6855), m(6856)});
    CmbClasificacion->setVisible(ctx_.Intra);
}

void FormVendes::refreshLists() {
    const QString client = txtClient->text();
    OMPLE_LLISTA_Clients();
    OMPLE_LLISTA_Vendes();
    OMPLE_LLISTA_Entitats(ListEntitats->currentText());
    txtClient->setText(client);
}

}  // namespace tallora
