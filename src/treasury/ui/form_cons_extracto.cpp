#include "form_cons_extracto.h"

#include "account_list.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "store/store_error.h"
#include "treasury/account_statement.h"
#include "treasury/movement_entry.h"
#include "treasury/other_movements.h"
#include "treasury/treasury_reports.h"
#include "widgets/entry_parts.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>

namespace tallora {
namespace {

QStringList headers(const WorkingContext& ctx) {
    return {QStringLiteral("ID"),   Missatge(ctx, 820),
            Missatge(ctx, 6741),    QStringLiteral("CONTRAPARTIDA"),
            Missatge(ctx, 6747),    Missatge(ctx, 6748),
            QStringLiteral("SALDO")};
}

treasury::StatementLine lineOf(const ui::InquiryScreen::Row& row) {
    treasury::StatementLine line;
    line.id = row.ordre;
    line.data = row.cells.value(1);
    line.concepto = row.cells.value(2);
    line.contrapartida = row.cells.value(3);
    return line;
}

}  // namespace

FormConsEXTRACTO::FormConsEXTRACTO(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                                   report::ReportOutput* output, QWidget* parent)
    : InquiryScreen(ctx, dialogs, QStringLiteral("FormConsEXTRACTO"), Missatge(ctx, 6745),
                    QStringLiteral("consEXTRACTO"), headers(ctx), parent),
      job_(job),
      output_(output) {
    hideAmountFilter();
    hideTotal();
    amountsFrom(4);
    CmbTesoreria = addListFilter(QStringLiteral("CmbTesoreria"),
                                 fixedText(ctx_, QStringLiteral("Cuenta de tesorería"),
                                           QStringLiteral("Compte de tresoreria")));

    QToolBar* bar = toolBar();
    bar->addSeparator();
    masinfo_ =
        bar->addAction(fixedText(ctx_, QStringLiteral("Más info"), QStringLiteral("Més info")));
    masinfo_->setObjectName(QStringLiteral("masinfo"));
    masinfo_->setCheckable(true);
    connect(masinfo_, &QAction::toggled, this, [this](bool on) {
        if (on)
            showDetail();
        else
            MesFrame->hide();
    });
    bar->addSeparator();
    auto* returnDate = new QLabel(Missatge(ctx_, 6986), bar);
    bar->addWidget(returnDate);
    FechaDevolucion = new QDateEdit(bar);
    FechaDevolucion->setObjectName(QStringLiteral("FechaDevolucion"));
    FechaDevolucion->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    FechaDevolucion->setCalendarPopup(true);
    const int year = ctx_.Exercici.toInt();
    FechaDevolucion->setDateRange(QDate(year, 1, 1), QDate(year, 12, 31));
    FechaDevolucion->setDate(exerciseDay(year, QDate::currentDate()));
    returnDate->setBuddy(FechaDevolucion);
    bar->addWidget(FechaDevolucion);
    btnDevolucion = new QPushButton(Missatge(ctx_, 6985), bar);
    btnDevolucion->setObjectName(QStringLiteral("btnDevolucion"));
    btnDevolucion->setFocusPolicy(Qt::StrongFocus);
    bar->addWidget(btnDevolucion);
    connect(btnDevolucion, &QPushButton::clicked, this, &FormConsEXTRACTO::Devolucion);

    MesFrame = buildDetail();
    gridRow()->addWidget(MesFrame);
    connect(this, &InquiryScreen::rowChanged, this, [this] {
        if (masinfo_->isChecked()) showDetail();
    });

    OMPLE_LLISTA_Entitats();
    start();
}

QFrame* FormConsEXTRACTO::buildDetail() {
    QFrame* frame = ui::panelFrame(QStringLiteral("MesFrame"), this);
    frame->setMinimumWidth(300);
    frame->setMaximumWidth(380);
    auto* g = new QGridLayout(frame);
    g->setContentsMargins(10, 8, 10, 8);
    const auto label = [&](const QString& name) {
        auto* l = new QLabel(frame);
        l->setObjectName(name);
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
        return l;
    };
    lblID = label(QStringLiteral("lblID"));
    lblFecha = label(QStringLiteral("lblFecha"));
    lblDescripcio = label(QStringLiteral("lblDescripcio"));
    lblDescripcio->setWordWrap(true);
    lblCuentaDebe = label(QStringLiteral("lblCuentaDebe"));
    lblDebe = label(QStringLiteral("lblDebe"));
    lblCuentaHaber = label(QStringLiteral("lblCuentaHaber"));
    lblHaber = label(QStringLiteral("lblHaber"));
    for (QLabel* l : {lblDebe, lblHaber}) l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel* l : {lblCuentaDebe, lblCuentaHaber}) l->setWordWrap(true);
    const auto fixed = [&](const char* es, const char* ca) {
        return fixedText(ctx_, QString::fromUtf8(es), QString::fromUtf8(ca));
    };
    auto* close = new QPushButton(QStringLiteral("×"), frame);
    close->setObjectName(QStringLiteral("btn_Mes_close"));
    close->setFlat(true);
    close->setFocusPolicy(Qt::NoFocus);
    close->setToolTip(Missatge(ctx_, 308));
    connect(close, &QPushButton::clicked, this, [this] { masinfo_->setChecked(false); });
    g->addWidget(ui::heading(fixed("Asiento", "Assentament"), frame), 0, 0, 1, 2);
    g->addWidget(close, 0, 2, Qt::AlignRight);
    g->addWidget(new QLabel(QStringLiteral("ID"), frame), 1, 0);
    g->addWidget(lblID, 1, 1, 1, 2);
    g->addWidget(new QLabel(Missatge(ctx_, 6740), frame), 2, 0);
    g->addWidget(lblFecha, 2, 1, 1, 2);
    g->addWidget(new QLabel(Missatge(ctx_, 6741), frame), 3, 0);
    g->addWidget(lblDescripcio, 3, 1, 1, 2);
    g->addWidget(ui::heading(fixed("Debe", "Deure"), frame), 4, 0, 1, 3);
    g->addWidget(lblCuentaDebe, 5, 0, 1, 2);
    g->addWidget(lblDebe, 5, 2);
    g->addWidget(ui::heading(fixed("Haber", "Haver"), frame), 6, 0, 1, 3);
    g->addWidget(lblCuentaHaber, 7, 0, 1, 2);
    g->addWidget(lblHaber, 7, 2);
    g->setColumnStretch(1, 1);
    g->setRowStretch(8, 1);
    frame->hide();
    return frame;
}

void FormConsEXTRACTO::OMPLE_LLISTA_Entitats() {
    ui::fillAccountList(CmbTesoreria, treasury::treasuryAccountItems(ctx_));
}

std::optional<std::int64_t> FormConsEXTRACTO::account() const {
    if (const std::int64_t id = ui::chosenAccount(CmbTesoreria)) return id;
    return std::nullopt;
}

void FormConsEXTRACTO::setAccount(std::optional<std::int64_t> entidad) {
    CmbTesoreria->setCurrentIndex(
        entidad ? CmbTesoreria->findData(QVariant::fromValue<qint64>(*entidad)) : -1);
    Buscar();
}

ui::InquiryScreen::Result FormConsEXTRACTO::search() {
    MesFrame->hide();
    Result result;
    const std::optional<std::int64_t> entidad = account();
    // Every account at once only at the start, from the account list itself, and in the
    // searches that follow an action; a date or Buscar without an account is refused.
    if (!entidad && searchSource() && searchSource() != CmbTesoreria) {
        dialogs_.stop(Missatge(ctx_, 6750));
        focusAfterSearch(CmbTesoreria);
        return result;
    }
    const schema::DateAmountFilter dates = range();
    for (const treasury::StatementLine& l :
         treasury::Busca_Extracto(ctx_, entidad, dates.from, dates.to)) {
        Row row;
        row.ordre = l.id.value_or(0);
        row.cells = {l.id ? QString::number(*l.id) : QString(),
                     l.data,
                     l.concepto,
                     l.contrapartida,
                     l.debe,
                     l.haber,
                     l.saldo};
        row.description = l.concepto;
        row.inert = !l.id;
        result.rows.push_back(std::move(row));
    }
    return result;
}

void FormConsEXTRACTO::showDetail() {
    const std::optional<std::int64_t> id = selectedOrdre();
    std::optional<treasury::MovementEntry> e;
    if (id) {
        try {
            e = treasury::Mes_EXTRACTO(ctx_, *id);
        } catch (const store::StoreError& error) {
            showError(error.message());
        }
    }
    if (!e) {
        MesFrame->hide();
        return;
    }
    lblID->setText(e->id);
    lblFecha->setText(e->fecha);
    lblDescripcio->setText(e->descripcio);
    lblCuentaDebe->setText(e->cuentaDebe);
    lblDebe->setText(e->debe);
    lblCuentaHaber->setText(e->cuentaHaber);
    lblHaber->setText(e->haber);
    MesFrame->show();
}

void FormConsEXTRACTO::Mes_EXTRACTO() {
    masinfo_->setChecked(true);
    showDetail();
}

QString FormConsEXTRACTO::deleteQuestion(const Row& row) const {
    return treasury::deleteMovementQuestion(ctx_, lineOf(row));
}

bool FormConsEXTRACTO::remove(std::int64_t id) {
    return treasury::deleteMovement(ctx_, dialogs_, id);
}

void FormConsEXTRACTO::Devolucion() {
    const Row* row = selectedRow();
    if (!row) return;
    if (dialogs_.yesNo(treasury::returnReceiptQuestion(ctx_, lineOf(*row))) != Dialogs::Answer::Yes)
        return;
    try {
        treasury::returnReceipt(ctx_, row->ordre, FechaDevolucion->date());
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
    Buscar();
}

report::ReportResult FormConsEXTRACTO::print(const report::PrintRequest& request) {
    if (!job_) return {};
    // The print runs the search first, which wants an account.
    if (!account()) {
        dialogs_.stop(Missatge(ctx_, 6750));
        CmbTesoreria->setFocus();
        return {};
    }
    const schema::DateAmountFilter dates = range();
    return printList([&] {
        return treasury::Imprimir_Extracto(ctx_, dialogs_, *job_, output_, account(), dates.from,
                                           dates.to, request, QDate::currentDate());
    });
}

void FormConsEXTRACTO::open(std::int64_t id) {
    emit modifyRequested(id);
}

}  // namespace tallora
