#include "invoice_inquiry_screen.h"

#include "context/messages.h"
#include "entry_parts.h"
#include "store/store_error.h"

#include <QAction>
#include <QFrame>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace tallora::ui {
namespace {

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
    for (int c = 0; c < cells.size() && c < grid->columnCount(); ++c) {
        auto* item = new QTableWidgetItem(cells[c]);
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->setItem(row, c, item);
    }
}

}  // namespace

InvoiceInquiryScreen::InvoiceInquiryScreen(WorkingContext& ctx, Dialogs& dialogs,
                                           const QString& name, const QString& title,
                                           const QString& helpKey, const QStringList& headers,
                                           const QStringList& detailHeaders,
                                           const QStringList& withholdingHeaders, QWidget* parent)
    : InquiryScreen(ctx, dialogs, name, title, helpKey, headers, parent) {
    const auto m = [&](int n) { return Missatge(ctx_, n).trimmed(); };
    masinfo = toolBar()->addAction(m(819));
    masinfo->setObjectName(QStringLiteral("masinfo"));
    masinfo->setCheckable(true);
    connect(masinfo, &QAction::toggled, this, &InvoiceInquiryScreen::showDetail);
    gestion_ = new QMenu(m(6865), this);
    addCartera_ = gestion_->addAction(m(6867) + QStringLiteral("\tF11"));
    addCartera_->setObjectName(QStringLiteral("AddCartera"));
    connect(addCartera_, &QAction::triggered, this, &InvoiceInquiryScreen::AddCartera);
    auto* menuButton = new QToolButton(this);
    menuButton->setObjectName(QStringLiteral("Gestion"));
    menuButton->setText(m(6865));
    menuButton->setMenu(gestion_);
    menuButton->setPopupMode(QToolButton::InstantPopup);
    menuButton->setFocusPolicy(Qt::NoFocus);
    gestionButton_ = toolBar()->addWidget(menuButton);

    gridRow()->addWidget(buildDetail(detailHeaders, withholdingHeaders));
    connect(this, &InquiryScreen::rowChanged, this, [this] {
        if (MesFrame->isVisible())
            if (const auto ordre = selectedOrdre()) fillDetail(*ordre);
    });
}

void InvoiceInquiryScreen::showGestion(bool visible) {
    gestionButton_->setVisible(visible);
}

QFrame* InvoiceInquiryScreen::buildDetail(const QStringList& detailHeaders,
                                          const QStringList& withholdingHeaders) {
    MesFrame = panelFrame(QStringLiteral("MesFrame"), this);
    MesFrame->setMinimumWidth(320);
    MesFrame->setMaximumWidth(380);
    auto* v = new QVBoxLayout(MesFrame);
    v->setContentsMargins(8, 6, 8, 6);
    const auto label = [&](const QString& name, bool bold = false) {
        auto* l = bold ? heading(QString(), MesFrame) : new QLabel(MesFrame);
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
    MesGrid = smallGrid(QStringLiteral("MesGrid"), detailHeaders, MesFrame);
    v->addWidget(MesGrid, 1);
    MesGridIRPF = smallGrid(QStringLiteral("MesGridIRPF"), withholdingHeaders, MesFrame);
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

void InvoiceInquiryScreen::showDetail(bool on) {
    if (masinfo->isChecked() != on) masinfo->setChecked(on);
    MesFrame->setVisible(on);
    if (on)
        if (const auto ordre = selectedOrdre()) fillDetail(*ordre);
}

void InvoiceInquiryScreen::fillDetail(std::int64_t ordre) {
    std::optional<Detail> d;
    try {
        d = detailOf(ordre);
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
    if (!d) return;
    lblMesID->setText(d->id);
    lblMesClient->setText(d->party);
    lblMesNIF->setText(d->nif);
    lblMesGrup->setText(d->group);
    lblMesCompte->setText(d->account);
    lblMesDescripcio->setText(d->invoice);
    lblMesTotal->setText(d->total);
    lblMesPagada->setText(d->settled);
    MesGrid->setRowCount(static_cast<int>(d->lines.size()));
    for (int r = 0; r < MesGrid->rowCount(); ++r)
        setLine(MesGrid, r, d->lines[static_cast<std::size_t>(r)]);
    setLine(MesGridIRPF, 0, d->withholding);
}

bool InvoiceInquiryScreen::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F11) {
        AddCartera();
        return true;
    }
    return InquiryScreen::eventFilter(watched, event);
}

}  // namespace tallora::ui
