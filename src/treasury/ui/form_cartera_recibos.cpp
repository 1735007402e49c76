#include "form_cartera_recibos.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "portfolio_model.h"
#include "report/report_helpers.h"
#include "report/report_job.h"
#include "report/ui/spreadsheet_path.h"
#include "store/store_error.h"
#include "treasury/portfolio_report.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora {

FormCarteraRecibos::FormCarteraRecibos(WorkingContext& ctx, Dialogs& dialogs,
                                       report::ReportJob& job, report::ReportOutput* output,
                                       QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs), job_(job), output_(output) {
    setObjectName(QStringLiteral("FormCarteraRecibos"));
    setWindowTitle(Missatge(ctx_, 6680));

    Toolbar_ = new QToolBar(this);
    Toolbar_->setObjectName(QStringLiteral("Toolbar"));
    Toolbar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(Toolbar_, QStringLiteral("Imprimir"),
                fixed(QStringLiteral("Imprimir"), QStringLiteral("Imprimir")), {},
                [this] { Imprimeix_Recibos(); });
    ui::addSpreadsheetTool(Toolbar_, ctx_, [this] { Exportar(); });
    askFilePath = [this](const QString& name) {
        return report::askSpreadsheetPath(this, windowTitle(), name);
    };
    Toolbar_->addSeparator();
    QAction* close = ui::addTool(Toolbar_, QStringLiteral("Cancela"), Missatge(ctx_, 308), {},
                                 [this] { closeScreen(); });
    close->setToolTip(QStringLiteral("%1 (Esc)").arg(Missatge(ctx_, 308)));

    TabStrip1_ = new QTabBar(this);
    TabStrip1_->setObjectName(QStringLiteral("TabStrip1"));
    TabStrip1_->addTab(Missatge(ctx_, 6688));
    TabStrip1_->addTab(Missatge(ctx_, 6689));
    TabStrip1_->setExpanding(false);

    model_ = new PortfolioModel(ctx_, this);
    DbGrid1_ = new QTableView(this);
    DbGrid1_->setObjectName(QStringLiteral("DbGrid1"));
    DbGrid1_->setModel(model_);
    DbGrid1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    DbGrid1_->setSelectionMode(QAbstractItemView::SingleSelection);
    DbGrid1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    DbGrid1_->setAlternatingRowColors(true);
    DbGrid1_->verticalHeader()->hide();
    DbGrid1_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    QHeaderView* header = DbGrid1_->horizontalHeader();
    header->setHighlightSections(false);
    const int digit = fontMetrics().horizontalAdvance(QStringLiteral("0"));
    const std::pair<int, int> widths[] = {
        {PortfolioModel::Id, 7},           {PortfolioModel::Fecha, 12},
        {PortfolioModel::Vencimiento, 13}, {PortfolioModel::Factura, 22},
        {PortfolioModel::Total, 15},       {PortfolioModel::ACuenta, 15},
    };
    for (const auto& [column, digits] : widths) header->resizeSection(column, digits * digit);
    header->setSectionResizeMode(PortfolioModel::Nombre, QHeaderView::Stretch);

    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->setSpacing(8);
    body->addWidget(TabStrip1_);
    body->addWidget(buildFilters());
    body->addWidget(DbGrid1_, 1);
    body->addWidget(buildFooter());

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);
    root->addWidget(ui::bandTitle(Missatge(ctx_, 6680), ctx_.EmpresaNom, this));
    root->addWidget(Toolbar_);
    root->addLayout(body, 1);

    ui::helpOnF1(ctx_, this, QStringLiteral("Cartera"));
    installEventFilter(this);
    for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);

    OMPLE_LLISTA_Clients();
    OMPLE_LLISTA_Proveidors();
    connect(TabStrip1_, &QTabBar::currentChanged, this, [this] { tabChanged(); });
    for (QComboBox* combo : {CmbClients_, CmbProveidors_})
        connect(combo, &QComboBox::currentIndexChanged, this, [this] { Llista_Recibos(); });
    connect(OpFecha_, &QRadioButton::toggled, this, [this](bool on) {
        if (on) Llista_Recibos();
    });
    connect(OpVencimiento_, &QRadioButton::toggled, this, [this](bool on) {
        if (on) Llista_Recibos();
    });
    connect(OpGrupo_, &QCheckBox::toggled, this, [this] { Llista_Recibos(); });
    connect(btnQuitar_, &QPushButton::clicked, this, [this] { Treu_Recibo(); });
    tabChanged();
    DbGrid1_->setFocus();
}

QWidget* FormCarteraRecibos::buildFilters() {
    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);

    auto* party = new QLabel(panel);
    party->setObjectName(QStringLiteral("lblTercero"));
    const auto partyList = [&](const QString& name) {
        auto* combo = new QComboBox(panel);
        combo->setObjectName(name);
        combo->setPlaceholderText(fixed(QStringLiteral("(Todos)"), QStringLiteral("(Tots)")));
        combo->setMinimumContentsLength(28);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        return combo;
    };
    CmbClients_ = partyList(QStringLiteral("CmbClients"));
    CmbProveidors_ = partyList(QStringLiteral("CmbProveidors"));
    party->setBuddy(CmbClients_);
    Toolbar1_ = clearButton(QStringLiteral("Toolbar1"), CmbClients_);
    Toolbar2_ = clearButton(QStringLiteral("Toolbar2"), CmbProveidors_);

    OpFecha_ = new QRadioButton(Missatge(ctx_, 809), panel);
    OpFecha_->setObjectName(QStringLiteral("OpFecha"));
    OpFecha_->setToolTip(Missatge(ctx_, 925).trimmed());
    OpFecha_->setChecked(true);
    OpVencimiento_ = new QRadioButton(Missatge(ctx_, 6998), panel);
    OpVencimiento_->setObjectName(QStringLiteral("OpVencimiento"));
    OpGrupo_ = new QCheckBox(Missatge(ctx_, 7011), panel);
    OpGrupo_->setObjectName(QStringLiteral("OpGrupo"));
    auto* order = new QLabel(Missatge(ctx_, 808).trimmed(), panel);
    order->setObjectName(QStringLiteral("lblOrden"));

    auto* partyRow = new QHBoxLayout;
    partyRow->setSpacing(4);
    for (QWidget* w :
         std::initializer_list<QWidget*>{CmbClients_, Toolbar1_, CmbProveidors_, Toolbar2_})
        partyRow->addWidget(w);
    partyRow->addStretch();
    grid->addWidget(party, 0, 0);
    grid->addLayout(partyRow, 0, 1);
    grid->addWidget(order, 0, 2);
    grid->addWidget(OpFecha_, 0, 3);
    grid->addWidget(OpVencimiento_, 0, 4);
    grid->addWidget(OpGrupo_, 1, 1, 1, 4);
    grid->setColumnStretch(1, 1);
    return panel;
}

QToolBar* FormCarteraRecibos::clearButton(const QString& name, QComboBox* combo) {
    auto* bar = new QToolBar(combo->parentWidget());
    bar->setObjectName(name);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QAction* all = ui::addTool(bar, QStringLiteral("Todos"),
                               fixed(QStringLiteral("Todos"), QStringLiteral("Tots")), {},
                               [combo] { combo->setCurrentIndex(-1); });
    all->setToolTip(
        fixed(QStringLiteral("Los recibos de todos"), QStringLiteral("Els rebuts de tots")));
    return bar;
}

QWidget* FormCarteraRecibos::buildFooter() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);

    auto* left = new QVBoxLayout;
    auto* hint = new QLabel(Missatge(ctx_, 6684), panel);
    hint->setObjectName(QStringLiteral("lblQuitar"));
    hint->setWordWrap(true);
    btnQuitar_ = new QPushButton(Missatge(ctx_, 6685), panel);
    btnQuitar_->setObjectName(QStringLiteral("btnQuitar"));
    btnQuitar_->setToolTip(QStringLiteral("%1 (Supr)").arg(Missatge(ctx_, 6685)));
    left->addWidget(hint);
    left->addWidget(btnQuitar_, 0, Qt::AlignLeft);
    left->addStretch();
    row->addLayout(left, 1);

    auto* totals = new QGroupBox(Missatge(ctx_, 6683), panel);
    totals->setObjectName(QStringLiteral("FrameTotales"));
    auto* grid = new QGridLayout(totals);
    grid->setHorizontalSpacing(12);
    const auto amount = [&](const QString& name, int message, int line) {
        auto* field = new QLineEdit(totals);
        field->setObjectName(name);
        field->setReadOnly(true);
        field->setFocusPolicy(Qt::NoFocus);
        field->setAlignment(Qt::AlignRight);
        field->setMinimumWidth(
            fontMetrics().horizontalAdvance(QStringLiteral("-0.000.000.000,00")));
        auto* caption = new QLabel(Missatge(ctx_, message), totals);
        caption->setObjectName(QStringLiteral("lbl") + name.mid(3));
        grid->addWidget(caption, line, 0);
        grid->addWidget(field, line, 1);
        return field;
    };
    txtCobrar_ = amount(QStringLiteral("txtCobrar"), 6681, 0);
    txtPagar_ = amount(QStringLiteral("txtPagar"), 6682, 1);
    row->addWidget(totals, 0, Qt::AlignTop);
    return panel;
}

QAction* FormCarteraRecibos::tool(const QString& key) const {
    return Toolbar_->findChild<QAction*>(key);
}

QString FormCarteraRecibos::fixed(const QString& spanish, const QString& catalan) const {
    return fixedText(ctx_, spanish, catalan);
}

void FormCarteraRecibos::fillParties(QComboBox* combo,
                                     const std::vector<treasury::Party>& parties) {
    const QSignalBlocker quiet(combo);
    combo->clear();
    for (const treasury::Party& p : parties) combo->addItem(p.nom, QVariant::fromValue(p.number));
    combo->setCurrentIndex(-1);
}

void FormCarteraRecibos::OMPLE_LLISTA_Clients() {
    try {
        fillParties(CmbClients_, treasury::OMPLE_LLISTA_Clients(ctx_));
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRecibos::OMPLE_LLISTA_Proveidors() {
    try {
        fillParties(CmbProveidors_, treasury::OMPLE_LLISTA_Proveidors(ctx_));
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRecibos::Totales() {
    try {
        const treasury::Totals totals = treasury::Totales(ctx_);
        txtCobrar_->setText(totals.txtCobrar);
        txtPagar_->setText(totals.txtPagar);
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRecibos::Llista_Recibos() {
    const treasury::PortfolioFilter f = filter();
    // Both read before anything shows, so that a fault leaves the screen as it was.
    try {
        const treasury::Totals totals = treasury::Totales(ctx_);
        std::vector<treasury::Recibo> rows = treasury::Llista_Recibos(ctx_, f);
        txtCobrar_->setText(totals.txtCobrar);
        txtPagar_->setText(totals.txtPagar);
        model_->setRows(f.tab, std::move(rows));
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRecibos::Treu_Recibo() {
    const QModelIndexList selected = DbGrid1_->selectionModel()->selectedRows();
    const treasury::Recibo* recibo =
        selected.isEmpty() ? nullptr : model_->recibo(selected.first().row());
    if (!recibo) return;
    if (treasury::Treu_Recibo(ctx_, dialogs_, *recibo)) Llista_Recibos();
}

void FormCarteraRecibos::Imprimeix_Recibos() {
    listReceipts(report::Destination::Window);
}

void FormCarteraRecibos::Exportar() {
    const QString path = askFilePath(report::spreadsheetFileName(ctx_, QStringLiteral("cartera")));
    if (path.isEmpty()) return;
    const report::PrintRequest request = report::spreadsheetRequest(path);
    if (listReceipts(request.destination, path).ok()) setStatus(report::savedText(ctx_, path));
}

report::ReportResult FormCarteraRecibos::listReceipts(int destination, const QString& file) {
    treasury::PortfolioPrint print;
    print.filter = filter();
    print.grupo = OpGrupo_->isChecked();
    print.printDate = QDate::currentDate();
    print.destination = destination;
    print.printFileName = file;
    return treasury::Imprimeix_Recibos(ctx_, dialogs_, job_, output_, print);
}

void FormCarteraRecibos::tabChanged() {
    const bool customers = TabStrip1_->currentIndex() == 0;
    CmbClients_->setVisible(customers);
    Toolbar1_->setVisible(customers);
    CmbProveidors_->setVisible(!customers);
    Toolbar2_->setVisible(!customers);
    auto* party = findChild<QLabel*>(QStringLiteral("lblTercero"));
    party->setText(Missatge(ctx_, customers ? 6688 : 6689) + u':');
    party->setBuddy(customers ? CmbClients_ : CmbProveidors_);
    Llista_Recibos();
}

treasury::PortfolioFilter FormCarteraRecibos::filter() const {
    treasury::PortfolioFilter f;
    f.tab = TabStrip1_->currentIndex() == 0 ? treasury::Tab::Clientes : treasury::Tab::Proveedores;
    const QComboBox* combo = f.tab == treasury::Tab::Clientes ? CmbClients_ : CmbProveidors_;
    if (combo->currentIndex() >= 0) f.party = combo->currentData().toLongLong();
    f.orden = OpVencimiento_->isChecked() ? treasury::Orden::Vencimiento : treasury::Orden::Fecha;
    return f;
}

void FormCarteraRecibos::setStatus(const QString& text) {
    status_ = text;
    emit statusChanged(text);
}

bool FormCarteraRecibos::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape) {
            setStatus(QStringLiteral("Descargando ..."));
            closeScreen();
            return true;
        }
        if (key == Qt::Key_Delete) {
            Treu_Recibo();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FormCarteraRecibos::closeScreen() {
    ui::closeScreen(this);
}

}  // namespace tallora
