#include "form_cons_in.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "purchases/purchase_reports.h"
#include "report/report_helpers.h"
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
            Missatge(ctx, 921).trimmed(), Missatge(ctx, 922).trimmed(),
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

void setLine(QTableWidget* grid, int row, const purchases::DetailLine& line) {
    const QString cells[] = {line.rate, line.base, line.quota};
    for (int c = 0; c < 3; ++c) {
        auto* item = new QTableWidgetItem(cells[c]);
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->setItem(row, c, item);
    }
}

}  // namespace

FormConsIN::FormConsIN(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                       report::ReportOutput* output, QWidget* parent)
    : InquiryScreen(ctx, dialogs, QStringLiteral("FormConsIN"), Missatge(ctx, 901),
                    QStringLiteral("consIN"), headers(ctx), parent),
      job_(job),
      output_(output) {
    const auto m = [&](int n) { return Missatge(ctx_, n).trimmed(); };
    CmbProveidors = addListFilter(QStringLiteral("CmbProveidors"), m(902));
    CmbNaturalesa = addListFilter(QStringLiteral("CmbNaturalesa"), m(906));
    OpId = addOrder(QStringLiteral("OpId"), QStringLiteral("ID"), QString());
    Opdata = addOrder(QStringLiteral("Opdata"), m(809), m(925));
    OpNatur = addOrder(QStringLiteral("OpNatur"), m(904), m(927));
    OpProv = addOrder(QStringLiteral("OpProv"), m(902), m(928));
    OpImport = addOrder(QStringLiteral("OpImport"), m(804), m(926));

    masinfo = toolBar()->addAction(m(819));
    masinfo->setObjectName(QStringLiteral("masinfo"));
    masinfo->setCheckable(true);
    connect(masinfo, &QAction::toggled, this, &FormConsIN::showDetail);
    auto* gestion = new QMenu(m(6865), this);
    QAction* add = gestion->addAction(m(6867) + QStringLiteral("\tF11"));
    add->setObjectName(QStringLiteral("AddCartera"));
    connect(add, &QAction::triggered, this, &FormConsIN::AddCartera);
    auto* menuButton = new QToolButton(this);
    menuButton->setObjectName(QStringLiteral("Gestion"));
    menuButton->setText(m(6865));
    menuButton->setMenu(gestion);
    menuButton->setPopupMode(QToolButton::InstantPopup);
    menuButton->setFocusPolicy(Qt::NoFocus);
    toolBar()->addWidget(menuButton);

    gridRow()->addWidget(buildDetail());
    connect(this, &InquiryScreen::rowChanged, this, [this] {
        if (MesFrame->isVisible())
            if (const auto ordre = selectedOrdre()) Mes_FraIN(*ordre);
    });
    OMPLE_LLISTA_Proveidors();
    OMPLE_LLISTA_Comptes();
    start();
}

QFrame* FormConsIN::buildDetail() {
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
    MesGrid = smallGrid(QStringLiteral("MesGrid"),
                        {QStringLiteral("IVA"), QStringLiteral("BASE"), QStringLiteral("QUOTA")},
                        MesFrame);
    v->addWidget(MesGrid, 1);
    MesGridIRPF = smallGrid(
        QStringLiteral("MesGridIRPF"),
        {QStringLiteral("BASE IRPF"), QStringLiteral("BASE"), Missatge(ctx_, 605).trimmed()},
        MesFrame);
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

void FormConsIN::OMPLE_LLISTA_Proveidors() {
    CmbProveidors->clear();
    CmbProveidors->addItems(purchases::OMPLE_LLISTA_Proveidors(ctx_));
    CmbProveidors->setCurrentIndex(-1);
}

void FormConsIN::OMPLE_LLISTA_Comptes() {
    CmbNaturalesa->clear();
    CmbNaturalesa->addItems(purchases::OMPLE_LLISTA_Comptes(ctx_));
    CmbNaturalesa->setCurrentIndex(-1);
}

purchases::PurchaseFilter FormConsIN::filter() const {
    purchases::PurchaseFilter f;
    f.supplier = CmbProveidors->currentIndex() >= 0 ? CmbProveidors->currentText() : QString();
    f.account = CmbNaturalesa->currentIndex() >= 0 ? CmbNaturalesa->currentText() : QString();
    f.range = range();
    const std::pair<QRadioButton*, purchases::PurchaseOrder> orders[] = {
        {OpId, purchases::PurchaseOrder::Id},
        {Opdata, purchases::PurchaseOrder::Data},
        {OpNatur, purchases::PurchaseOrder::Natur},
        {OpProv, purchases::PurchaseOrder::Prov},
        {OpImport, purchases::PurchaseOrder::Import}};
    for (const auto& [option, order] : orders)
        if (option->isChecked()) f.order = order;
    return f;
}

ui::InquiryScreen::Result FormConsIN::search() {
    const purchases::PurchaseSearch found = purchases::Buscar(ctx_, filter());
    Result result;
    result.total = found.total;
    for (const purchases::PurchaseRow& r : found.rows)
        result.rows.push_back(
            {r.ordre,
             {QString::number(r.ordre), r.data.toString(QStringLiteral("dd/MM/yyyy")),
              r.nomProveidor, r.nomCompte, r.descripcio, Format_Import(ctx_, r.total)},
             r.descripcio});
    return result;
}

QString FormConsIN::deleteQuestion(const Row& row) const {
    return purchases::deleteQuestion(ctx_, row.ordre, row.description);
}

bool FormConsIN::remove(std::int64_t ordre) {
    return purchases::Esborra_Compra(ctx_, ordre);
}

void FormConsIN::print() {
    if (!job_) return;
    printList([this] {
        purchases::Imprimir_Compres(ctx_, dialogs_, *job_, output_, filter(), {},
                                    QDate::currentDate());
    });
}

void FormConsIN::open(std::int64_t ordre) {
    emit modifyRequested(ordre);
}

void FormConsIN::AddCartera() {
    const auto ordre = selectedOrdre();
    if (!ordre) return;
    try {
        treasury::AddCartera_Compra(ctx_, dialogs_, QString::number(*ordre));
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
}

void FormConsIN::showDetail(bool on) {
    if (masinfo->isChecked() != on) masinfo->setChecked(on);
    MesFrame->setVisible(on);
    if (on)
        if (const auto ordre = selectedOrdre()) Mes_FraIN(*ordre);
}

void FormConsIN::Mes_FraIN(std::int64_t ordre) {
    std::optional<purchases::PurchaseDetail> detail;
    try {
        detail = purchases::Mes_FraIN(ctx_, ordre);
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
    for (int r = 0; r < MesGrid->rowCount(); ++r)
        setLine(MesGrid, r, detail->MesGrid[static_cast<std::size_t>(r)]);
    setLine(MesGridIRPF, 0, detail->MesGridIRPF);
}

bool FormConsIN::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F11) {
        AddCartera();
        return true;
    }
    return InquiryScreen::eventFilter(watched, event);
}

}  // namespace tallora
