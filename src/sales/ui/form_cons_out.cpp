#include "form_cons_out.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_helpers.h"
#include "sales/sale_reports.h"
#include "store/store_error.h"
#include "treasury/add_cartera.h"
#include "widgets/entry_parts.h"

#include <QAction>
#include <QComboBox>
#include <QFrame>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace tallora {
namespace {

QStringList headers(const WorkingContext& ctx) {
    return {QStringLiteral("ID"),         Missatge(ctx, 820).trimmed(),
            Missatge(ctx, 821).trimmed(), Missatge(ctx, 822).trimmed(),
            QStringLiteral("FACTURA"),    QStringLiteral("TOTAL")};
}

QTableWidget* smallGrid(const QString& name, const QStringList& header, QWidget* parent) {
    auto* grid = new QTableWidget(0, static_cast<int>(header.size()), parent);
    grid->setObjectName(name);
    grid->setHorizontalHeaderLabels(header);
    grid->verticalHeader()->hide();
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setFocusPolicy(Qt::NoFocus);
    grid->setSelectionMode(QAbstractItemView::NoSelection);
    grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    return grid;
}

void setLine(QTableWidget* grid, int row, const QStringList& cells) {
    for (int c = 0; c < cells.size(); ++c) {
        auto* item = new QTableWidgetItem(cells[c]);
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->setItem(row, c, item);
    }
}

}  // namespace

FormConsOUT::FormConsOUT(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                         report::ReportOutput* output, QWidget* parent)
    : InquiryScreen(ctx, dialogs, QStringLiteral("FormConsOUT"), Missatge(ctx, 801),
                    QStringLiteral("consOUT"), headers(ctx), parent),
      job_(job),
      output_(output) {
    const auto m = [&](int n) { return Missatge(ctx_, n).trimmed(); };
    CmbClients = addListFilter(QStringLiteral("CmbClients"), m(802));
    CmbTipus = addListFilter(QStringLiteral("CmbTipus"), m(803));
    OpId = addOrder(QStringLiteral("OpId"), QStringLiteral("ID"), QString());
    Opdata = addOrder(QStringLiteral("Opdata"), m(809), m(925));
    OpNatur = addOrder(QStringLiteral("OpNatur"), m(803), m(927));
    OpClients = addOrder(QStringLiteral("OpClients"), m(802), QString());
    OpImport = addOrder(QStringLiteral("OpImport"), m(804), m(926));

    masinfo = toolBar()->addAction(m(819));
    masinfo->setObjectName(QStringLiteral("masinfo"));
    masinfo->setCheckable(true);
    connect(masinfo, &QAction::toggled, this, &FormConsOUT::showDetail);
    // "Gestión" belongs to the billing module: a duplicate (the sale opened to be saved and
    // printed again; not in a shop's exercise) and the way back to the portfolio, which F11
    // also takes without the module.
    auto* gestion = new QMenu(m(6865), this);
    QAction* duplicate = gestion->addAction(m(6868));
    duplicate->setObjectName(QStringLiteral("duplicado"));
    duplicate->setToolTip(m(6866));
    duplicate->setVisible(!isTickets(ctx_));
    connect(duplicate, &QAction::triggered, this, [this] {
        if (const auto ordre = selectedOrdre()) emit modifyRequested(*ordre);
    });
    QAction* add = gestion->addAction(m(6867) + QStringLiteral("\tF11"));
    add->setObjectName(QStringLiteral("AddCartera"));
    add->setVisible(ctx_.Tesoreria && !isTickets(ctx_));
    connect(add, &QAction::triggered, this, &FormConsOUT::AddCartera);
    auto* menuButton = new QToolButton(this);
    menuButton->setObjectName(QStringLiteral("Gestion"));
    menuButton->setText(m(6865));
    menuButton->setMenu(gestion);
    menuButton->setPopupMode(QToolButton::InstantPopup);
    menuButton->setFocusPolicy(Qt::NoFocus);
    toolBar()->addWidget(menuButton)->setVisible(ctx_.Facturacio);

    gridRow()->addWidget(buildDetail());
    connect(this, &InquiryScreen::rowChanged, this, [this] {
        if (MesFrame->isVisible())
            if (const auto ordre = selectedOrdre()) Mes_FraOut(*ordre);
    });
    OMPLE_LLISTA_Clients();
    OMPLE_LLISTA_Comptes();
    start();
}

QFrame* FormConsOUT::buildDetail() {
    MesFrame = ui::panelFrame(QStringLiteral("MesFrame"), this);
    MesFrame->setMinimumWidth(320);
    MesFrame->setMaximumWidth(380);
    auto* v = new QVBoxLayout(MesFrame);
    v->setContentsMargins(8, 6, 8, 6);
    const auto label = [&](const QString& name, bool bold = false) {
        auto* l = bold ? ui::heading(QString(), MesFrame) : new QLabel(MesFrame);
        l->setObjectName(name);
        l->setWordWrap(true);
        v->addWidget(l);
        return l;
    };
    lblMesID = label(QStringLiteral("lblMesID"), true);
    lblMesClient = label(QStringLiteral("lblMesClient"), true);
    lblMesNIF = label(QStringLiteral("lblMesNIF"));
    lblMesGrup = label(QStringLiteral("lblMesGrup"));
    lblMesCompte = label(QStringLiteral("lblMesCompte"));
    lblMesDescripcio = label(QStringLiteral("lblMesDescripcio"));
    MesGrid = smallGrid(
        QStringLiteral("MesGrid"),
        {QString(), QStringLiteral("BASE"), QStringLiteral("IVA"), QStringLiteral("RE")}, MesFrame);
    v->addWidget(MesGrid, 1);
    MesGridIRPF =
        smallGrid(QStringLiteral("MesGridIRPF"),
                  {QString(), QStringLiteral("BASE IRPF"), QStringLiteral("QUOTA")}, MesFrame);
    MesGridIRPF->setRowCount(1);
    MesGridIRPF->setMaximumHeight(MesGridIRPF->horizontalHeader()->sizeHint().height() +
                                  fontMetrics().height() + 14);
    v->addWidget(MesGridIRPF);
    lblMesTotal = label(QStringLiteral("lblMesTotal"), true);
    lblMesPagada = label(QStringLiteral("lblMesPagada"));
    auto* close = new QPushButton(Missatge(ctx_, 814), MesFrame);
    close->setObjectName(QStringLiteral("btn_Mes_close"));
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QPushButton::clicked, this, [this] { masinfo->setChecked(false); });
    v->addWidget(close, 0, Qt::AlignRight);
    MesFrame->hide();
    return MesFrame;
}

void FormConsOUT::OMPLE_LLISTA_Clients() {
    CmbClients->clear();
    CmbClients->addItems(sales::customerNames(ctx_));
    CmbClients->setCurrentIndex(-1);
}

void FormConsOUT::OMPLE_LLISTA_Comptes() {
    CmbTipus->clear();
    CmbTipus->addItems(sales::salesAccountNames(ctx_));
    CmbTipus->setCurrentIndex(-1);
}

sales::SaleFilter FormConsOUT::filter() const {
    sales::SaleFilter f;
    f.customer = CmbClients->currentIndex() >= 0 ? CmbClients->currentText() : QString();
    f.account = CmbTipus->currentIndex() >= 0 ? CmbTipus->currentText() : QString();
    f.range = range();
    const std::pair<QRadioButton*, sales::SaleOrder> orders[] = {
        {OpId, sales::SaleOrder::Id},
        {Opdata, sales::SaleOrder::Data},
        {OpNatur, sales::SaleOrder::Natur},
        {OpClients, sales::SaleOrder::Clients},
        {OpImport, sales::SaleOrder::Import}};
    for (const auto& [option, order] : orders)
        if (option->isChecked()) f.order = order;
    return f;
}

ui::InquiryScreen::Result FormConsOUT::search() {
    const sales::SaleSearch found = sales::Busca_Vendes(ctx_, filter());
    Result result;
    result.total = found.total;
    for (const sales::SaleRow& r : found.rows)
        result.rows.push_back(
            {r.ordre,
             {QString::number(r.ordre), r.data.toString(QStringLiteral("dd/MM/yyyy")), r.nomClient,
              r.nomCompte, r.descripcio, Format_Import(ctx_, r.total)},
             r.descripcio});
    return result;
}

QString FormConsOUT::deleteQuestion(const Row& row) const {
    return schema::deleteQuestion(ctx_, row.ordre, row.description);
}

bool FormConsOUT::remove(std::int64_t ordre) {
    return sales::Esborra_Venda(ctx_, ordre);
}

void FormConsOUT::print() {
    if (!job_) return;
    printList([this] {
        sales::Imprimeix_Llista(ctx_, dialogs_, *job_, output_, filter(), {}, QDate::currentDate());
    });
}

void FormConsOUT::open(std::int64_t ordre) {
    emit modifyRequested(ordre);
}

void FormConsOUT::AddCartera() {
    const auto ordre = selectedOrdre();
    if (!ordre || !ctx_.Tesoreria || isTickets(ctx_)) return;
    try {
        treasury::AddCartera_Venda(ctx_, dialogs_, QString::number(*ordre));
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
}

void FormConsOUT::showDetail(bool on) {
    if (masinfo->isChecked() != on) masinfo->setChecked(on);
    MesFrame->setVisible(on);
    if (on)
        if (const auto ordre = selectedOrdre()) Mes_FraOut(*ordre);
}

void FormConsOUT::Mes_FraOut(std::int64_t ordre) {
    std::optional<sales::SaleDetail> detail;
    try {
        detail = sales::Mes_FraOut(ctx_, ordre);
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
    if (!detail) return;
    lblMesID->setText(detail->lblMesID);
    lblMesClient->setText(detail->lblMesClient);
    lblMesNIF->setText(detail->lblMesNIF);
    lblMesGrup->setText(detail->lblMesGrup);
    lblMesCompte->setText(detail->lblMesCompte);
    lblMesDescripcio->setText(detail->lblMesDescripcio);
    lblMesTotal->setText(detail->lblMesTotal);
    lblMesPagada->setText(detail->lblMesPagada);
    MesGrid->setRowCount(static_cast<int>(detail->MesGrid.size()));
    for (int r = 0; r < MesGrid->rowCount(); ++r) {
        const sales::DetailLine& line = detail->MesGrid[static_cast<std::size_t>(r)];
        setLine(MesGrid, r, {line.rate, line.base, line.iva, line.re});
    }
    const sales::DetailLine& irpf = detail->MesGridIRPF;
    setLine(MesGridIRPF, 0, {irpf.rate, irpf.base, irpf.iva});
}

bool FormConsOUT::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F11) {
        AddCartera();
        return true;
    }
    return InquiryScreen::eventFilter(watched, event);
}

}  // namespace tallora
