#include "form_cartera_run.h"

#include "account_list.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "store/store_error.h"
#include "treasury/other_movements.h"
#include "treasury/portfolio.h"
#include "treasury/remittance.h"
#include "widgets/entry_parts.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora {

FormCarteraCobrar::FormCarteraCobrar(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : FormCarteraRun(ctx, dialogs, treasury::kCollections, parent) {}

FormCarteraPagar::FormCarteraPagar(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : FormCarteraRun(ctx, dialogs, treasury::kPayments, parent) {}

FormCarteraRun::FormCarteraRun(WorkingContext& ctx, Dialogs& dialogs, const treasury::RunSide& side,
                               QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs), side_(side) {
    setObjectName(QLatin1String(side_.screen));
    setWindowTitle(Missatge(ctx_, side_.title));

    Toolbar5_ = new QToolBar(this);
    Toolbar5_->setObjectName(QStringLiteral("Toolbar5"));
    Toolbar5_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QAction* close =
        ui::addTool(Toolbar5_, QStringLiteral("Cancela"), Missatge(ctx_, 308), {}, [this] {
            setStatus(QStringLiteral("Descargando ..."));
            closeScreen();
        });
    close->setToolTip(QStringLiteral("%1 (Esc)").arg(Missatge(ctx_, 308)));

    auto* steps = new QLabel(
        Missatge(ctx_, side_.instructions1) + u'\n' + Missatge(ctx_, side_.instructions2), this);
    steps->setObjectName(QStringLiteral("lblInstrucciones"));

    auto* partyRow = new QHBoxLayout;
    auto* partyLabel = new QLabel(Missatge(ctx_, side_.partyLabel) + u':', this);
    partyLabel->setObjectName(side_.debit ? QStringLiteral("lblClients")
                                          : QStringLiteral("lblProveidors"));
    parties_ = new QComboBox(this);
    parties_->setObjectName(QLatin1String(side_.partyList));
    parties_->setPlaceholderText(
        fixedText(ctx_, QStringLiteral("(Todos)"), QStringLiteral("(Tots)")));
    parties_->setMinimumContentsLength(30);
    parties_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    partyLabel->setBuddy(parties_);
    auto* clear = new QToolBar(this);
    clear->setObjectName(side_.debit ? QStringLiteral("ClearClients")
                                     : QStringLiteral("ClearProveidors"));
    clear->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(clear, QStringLiteral("Todos"),
                fixedText(ctx_, QStringLiteral("Todos"), QStringLiteral("Tots")), {},
                [this] { parties_->setCurrentIndex(-1); });
    partyRow->addWidget(partyLabel);
    partyRow->addWidget(parties_);
    partyRow->addWidget(clear);
    partyRow->addStretch();
    if (side_.partyHiddenInTickets && ctx_.ModeExercici == QStringLiteral("TICKETS"))
        for (QWidget* w : std::initializer_list<QWidget*>{partyLabel, parties_, clear}) w->hide();

    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->setSpacing(8);
    body->addWidget(steps);
    body->addLayout(partyRow);
    body->addWidget(buildLists(), 1);
    body->addWidget(buildFooter());

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);
    root->addWidget(ui::bandTitle(Missatge(ctx_, side_.title), ctx_.EmpresaNom, this));
    root->addWidget(Toolbar5_);
    root->addLayout(body, 1);

    ui::helpOnF1(ctx_, this, QLatin1String(side_.helpKey));
    for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);
    installEventFilter(this);

    fillParties();
    OMPLE_LLISTA_Entitats();
    connect(parties_, &QComboBox::currentIndexChanged, this, [this] { Llista_Cartera(); });
    connect(DbGrid1_, &QTableWidget::cellDoubleClicked, this, [this] { Passa_Recibo(); });
    connect(DbGrid2_, &QTableWidget::cellDoubleClicked, this, [this] { Treu_Recibo(); });
    connect(btnContabilizar_, &QPushButton::clicked, this, [this] { Contabilizar(); });
    Llista_Cartera();
    DbGrid1_->setFocus();
}

QWidget* FormCarteraRun::buildLists() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    const auto grid = [&](const QString& name, int caption) {
        auto* box = new QGroupBox(Missatge(ctx_, caption), panel);
        box->setObjectName(QStringLiteral("Frame") + name);
        auto* t = new QTableWidget(0, 5, box);
        t->setObjectName(name);
        t->setHorizontalHeaderLabels({QStringLiteral("ID"), Missatge(ctx_, 6118).trimmed(),
                                      QStringLiteral("FACTURA"), QStringLiteral("TOTAL"),
                                      Missatge(ctx_, 6704).trimmed()});
        t->setEditTriggers(QAbstractItemView::NoEditTriggers);
        t->setSelectionBehavior(QAbstractItemView::SelectRows);
        t->setSelectionMode(QAbstractItemView::SingleSelection);
        t->setTabKeyNavigation(false);
        t->verticalHeader()->hide();
        t->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
        t->setColumnWidth(0, 50);
        t->setColumnWidth(1, 86);
        t->setColumnWidth(3, 92);
        t->setColumnWidth(4, 92);
        t->setMinimumWidth(420);
        auto* layout = new QVBoxLayout(box);
        layout->addWidget(t);
        row->addWidget(box, 1);
        return t;
    };
    DbGrid1_ = grid(QStringLiteral("DbGrid1"), side_.openList);

    Toolbar1_ = new QToolBar(panel);
    Toolbar1_->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1_->setOrientation(Qt::Vertical);
    Toolbar1_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto tool = [&](const char* key, const QString& caption, const QString& es,
                          const QString& ca, std::function<void()> action) {
        QAction* a = ui::addTool(Toolbar1_, QLatin1String(key), caption, {}, std::move(action));
        a->setToolTip(fixedText(ctx_, es, ca));
    };
    tool("Passa_Recibo", QStringLiteral("  >  "),
         QStringLiteral("Pasar el seleccionado al borrador (Intro)"),
         QStringLiteral("Passar el seleccionat a l'esborrany (Intro)"), [this] { Passa_Recibo(); });
    tool("Buida_Borrador", QStringLiteral(" << "), QStringLiteral("Vaciar el borrador"),
         QStringLiteral("Buidar l'esborrany"), [this] { Buida_Borrador(); });
    tool("Treu_Recibo", QStringLiteral("  <  "),
         QStringLiteral("Devolver el seleccionado del borrador (Supr)"),
         QStringLiteral("Retornar el seleccionat de l'esborrany (Supr)"),
         [this] { Treu_Recibo(); });
    tool("Passa_Tots", QStringLiteral(" >> "), QStringLiteral("Pasar todos al borrador"),
         QStringLiteral("Passar-los tots a l'esborrany"), [this] { Passa_Tots(); });
    row->addWidget(Toolbar1_, 0, Qt::AlignVCenter);

    DbGrid2_ = grid(QStringLiteral("DbGrid2"), side_.draftList);
    return panel;
}

QWidget* FormCarteraRun::buildFooter() {
    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    const auto label = [&](int message, QWidget* buddy, const QString& name) {
        auto* l = new QLabel(Missatge(ctx_, message), panel);
        l->setObjectName(name);
        l->setBuddy(buddy);
        return l;
    };
    const int moneyWidth = fontMetrics().horizontalAdvance(QStringLiteral("-000.000.000,00")) + 16;

    txtCobrar_ = new QLineEdit(QStringLiteral("0"), panel);
    txtCobrar_->setObjectName(QStringLiteral("txtCobrar"));
    txtCobrar_->setAlignment(Qt::AlignRight);
    txtCobrar_->setFixedWidth(moneyWidth);
    txtCobrar_->setToolTip(Missatge(ctx_, 6713));
    ui::makeAmountField(ctx_, txtCobrar_);
    ui::colourOnFocus(txtCobrar_);
    grid->addWidget(label(side_.partialLabel, txtCobrar_, QStringLiteral("lblCobrar")), 0, 0);
    grid->addWidget(txtCobrar_, 0, 1, Qt::AlignLeft);

    cmbEntitats_ = new QComboBox(panel);
    cmbEntitats_->setObjectName(QStringLiteral("cmbEntitats"));
    cmbEntitats_->setMinimumContentsLength(26);
    fecha_ = new QDateEdit(panel);
    fecha_->setObjectName(QLatin1String(side_.dateField));
    fecha_->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    fecha_->setCalendarPopup(true);
    const int year = ctx_.Exercici.toInt();
    fecha_->setDateRange(QDate(year, 1, 1), QDate(year, 12, 31));
    fecha_->setDate(exerciseDay(year, QDate::currentDate()));
    txtTotal_ = new QLineEdit(panel);
    txtTotal_->setObjectName(QStringLiteral("txtTotal"));
    txtTotal_->setReadOnly(true);
    txtTotal_->setFocusPolicy(Qt::NoFocus);
    txtTotal_->setAlignment(Qt::AlignRight);
    txtTotal_->setFixedWidth(moneyWidth);
    btnContabilizar_ = new QPushButton(Missatge(ctx_, 6717), panel);
    btnContabilizar_->setObjectName(QStringLiteral("btnContabilizar"));
    btnContabilizar_->setDefault(false);
    btnContabilizar_->setAutoDefault(false);

    grid->addWidget(label(side_.accountLabel, cmbEntitats_, QStringLiteral("lblEntitats")), 0, 2,
                    Qt::AlignRight);
    grid->addWidget(cmbEntitats_, 0, 3);
    grid->addWidget(label(side_.dateLabel, fecha_, QStringLiteral("lblFecha")), 1, 2,
                    Qt::AlignRight);
    grid->addWidget(fecha_, 1, 3, Qt::AlignLeft);
    grid->addWidget(label(side_.totalLabel, txtTotal_, QStringLiteral("lblTotal")), 2, 2,
                    Qt::AlignRight);
    grid->addWidget(txtTotal_, 2, 3, Qt::AlignLeft);
    grid->addWidget(btnContabilizar_, 2, 4);
    grid->addWidget(buildSepa(panel), 0, 4, 2, 1);
    grid->setColumnStretch(1, 1);
    return panel;
}

// The run sent to the bank: a SEPA file of the draft, for the bank to execute on its date.
QWidget* FormCarteraRun::buildSepa(QWidget* panel) {
    auto* box = new QWidget(panel);
    box->setObjectName(QStringLiteral("frameSEPA"));
    auto* layout = new QGridLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    chkSEPA_ = new QCheckBox(side_.debit ? fixedText(ctx_, "Remesa SEPA de adeudos (pain.008)",
                                                     "Remesa SEPA de rebuts (pain.008)")
                                         : fixedText(ctx_, "Transferencias SEPA (pain.001)",
                                                     "Transferències SEPA (pain.001)"),
                             box);
    chkSEPA_->setObjectName(QStringLiteral("chkSEPA"));
    FechaCargo_ = new QDateEdit(box);
    FechaCargo_->setObjectName(QStringLiteral("FechaCargo"));
    FechaCargo_->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    FechaCargo_->setCalendarPopup(true);
    FechaCargo_->setDate(fecha_->date());
    FechaCargo_->setEnabled(false);
    auto* caption =
        new QLabel(side_.debit ? fixedText(ctx_, "Fecha de cargo", "Data de càrrec")
                               : fixedText(ctx_, "Fecha de ejecución", "Data d'execució"),
                   box);
    caption->setObjectName(QStringLiteral("lblFechaCargo"));
    caption->setBuddy(FechaCargo_);
    btnRemesas_ =
        new QPushButton(fixedText(ctx_, "Ficheros enviados...", "Fitxers enviats..."), box);
    btnRemesas_->setObjectName(QStringLiteral("btnRemesas"));
    btnRemesas_->setAutoDefault(false);
    layout->addWidget(chkSEPA_, 0, 0, 1, 2);
    layout->addWidget(caption, 1, 0);
    layout->addWidget(FechaCargo_, 1, 1);
    layout->addWidget(btnRemesas_, 2, 0, 1, 2);
    connect(chkSEPA_, &QCheckBox::toggled, FechaCargo_, &QWidget::setEnabled);
    // The bank's date follows the run's until the user sets it apart.
    connect(fecha_, &QDateEdit::dateChanged, FechaCargo_, [this](const QDate& date) {
        if (FechaCargo_->date() < date) FechaCargo_->setDate(date);
    });
    connect(btnRemesas_, &QPushButton::clicked, this, [this] { Reescribe_Remesa(); });
    askFilePath = [this](const QString& suggested) {
        return QFileDialog::getSaveFileName(this, chkSEPA_->text(), suggested,
                                            QStringLiteral("SEPA XML (*.xml)"));
    };
    return box;
}

QAction* FormCarteraRun::tool(const QString& key) const {
    if (QAction* a = Toolbar5_->findChild<QAction*>(key)) return a;
    return Toolbar1_->findChild<QAction*>(key);
}

void FormCarteraRun::fillParties() {
    const QSignalBlocker quiet(parties_);
    const QVariant chosen = parties_->currentData();
    parties_->clear();
    try {
        for (const treasury::Party& p : side_.debit ? treasury::OMPLE_LLISTA_Clients(ctx_)
                                                    : treasury::OMPLE_LLISTA_Proveidors(ctx_))
            parties_->addItem(p.nom, QVariant::fromValue(p.number));
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
    parties_->setCurrentIndex(chosen.isValid() ? parties_->findData(chosen) : -1);
}

void FormCarteraRun::OMPLE_LLISTA_Entitats() {
    try {
        ui::fillAccountList(cmbEntitats_, treasury::treasuryAccountItems(ctx_));
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRun::refreshLists() {
    fillParties();
    OMPLE_LLISTA_Entitats();
    Llista_Cartera();
}

std::optional<std::int64_t> FormCarteraRun::party() const {
    if (parties_->currentIndex() < 0) return std::nullopt;
    return parties_->currentData().toLongLong();
}

void FormCarteraRun::fill(QTableWidget* grid, const std::vector<treasury::RunRow>& rows) {
    grid->setRowCount(0);
    grid->setRowCount(static_cast<int>(rows.size()));
    for (int r = 0; r < grid->rowCount(); ++r) {
        const treasury::RunRow& row = rows[static_cast<std::size_t>(r)];
        const QStringList cells{QString::number(row.id), row.data, row.factura, row.total,
                                row.amount};
        for (int c = 0; c < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(cells[c]);
            if (c >= 3) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            grid->setItem(r, c, item);
        }
    }
    if (grid->rowCount() > 0) grid->selectRow(0);
}

void FormCarteraRun::Llista_Cartera() {
    try {
        const auto open = treasury::openReceipts(ctx_, side_, party());
        const auto draft = treasury::draftReceipts(ctx_, side_);
        const int openRow = DbGrid1_->currentRow(), draftRow = DbGrid2_->currentRow();
        fill(DbGrid1_, open);
        fill(DbGrid2_, draft);
        // The selection stays where the user was working, or as near as the list allows.
        if (openRow > 0 && DbGrid1_->rowCount() > 0)
            DbGrid1_->selectRow(std::min(openRow, DbGrid1_->rowCount() - 1));
        if (draftRow > 0 && DbGrid2_->rowCount() > 0)
            DbGrid2_->selectRow(std::min(draftRow, DbGrid2_->rowCount() - 1));
        Totales();
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRun::Totales() {
    try {
        const std::optional<QString> total = treasury::draftTotal(ctx_, side_);
        txtTotal_->setText(total.value_or(QString()));
        if (!total) txtCobrar_->setText(QStringLiteral("0"));
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

std::optional<std::int64_t> FormCarteraRun::selectedId(const QTableWidget* grid) const {
    const int row = grid->currentRow();
    if (row < 0 || !grid->item(row, 0) || grid->item(row, 0)->text().isEmpty()) return std::nullopt;
    return grid->item(row, 0)->text().toLongLong();
}

void FormCarteraRun::Passa_Recibo() {
    const std::optional<std::int64_t> id = selectedId(DbGrid1_);
    if (!id) return;
    try {
        const auto result = treasury::Passa_Recibo(ctx_, dialogs_, side_, *id, txtCobrar_->text());
        if (!result) return;
        txtCobrar_->setText(result->field);
        if (!result->moved) {
            txtCobrar_->setFocus();
            txtCobrar_->selectAll();
            return;
        }
        Llista_Cartera();
        DbGrid1_->setFocus();
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRun::Treu_Recibo() {
    const std::optional<std::int64_t> id = selectedId(DbGrid2_);
    if (!id) return;
    try {
        treasury::Treu_Recibo(ctx_, *id);
        Llista_Cartera();
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRun::Passa_Tots() {
    try {
        treasury::Passa_Tots(ctx_, side_);
        Llista_Cartera();
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRun::Buida_Borrador() {
    try {
        treasury::Buida_Borrador(ctx_, side_);
        Llista_Cartera();
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRun::Contabilizar() {
    if (DbGrid2_->rowCount() == 0) return;
    std::optional<std::int64_t> account;
    if (cmbEntitats_->currentIndex() >= 0) account = cmbEntitats_->currentData().toLongLong();
    try {
        const auto refusal = treasury::checkRun(ctx_, dialogs_, side_, account, fecha_->date());
        if (refusal == treasury::RunRefusal::MonthLocked) fecha_->setFocus();
        if (refusal) return;
        if (chkSEPA_->isChecked()) {
            contabilizarRemesa(*account);
        } else {
            setStatus(Missatge(ctx_, 725));
            treasury::postRun(ctx_, side_, *account, fecha_->date());
        }
        setStatus(QString());
        DbGrid1_->setFocus();
    } catch (const store::StoreError& e) {
        setStatus(QString());
        dialogs_.stop(e.message());
    }
    Llista_Cartera();
}

void FormCarteraRun::contabilizarRemesa(std::int64_t account) {
    const QString suggested = QDir::home().filePath(
        QStringLiteral("%1-%2.xml")
            .arg(side_.debit ? QStringLiteral("remesa") : QStringLiteral("transferencias"),
                 FechaCargo_->date().toString(QStringLiteral("yyyyMMdd"))));
    // The file is asked for once the receipts that cannot go have been listed.
    QString path;
    const treasury::RemittanceOutcome out = treasury::Contabilizar_Remesa(
        ctx_, dialogs_, side_, account, fecha_->date(), FechaCargo_->date(), [&] {
            path = askFilePath(suggested);
            if (!path.isEmpty()) setStatus(Missatge(ctx_, 725));
            return path;
        });
    if (out.refusal || out.stopped) return;
    dialogs_.information(fixedText(ctx_, "Fichero SEPA %1 escrito: %2 recibos, %3.\n%4",
                                   "Fitxer SEPA %1 escrit: %2 rebuts, %3.\n%4")
                             .arg(out.remesa)
                             .arg(out.count)
                             .arg(Format_Import(ctx_, out.total), path));
}

void FormCarteraRun::Reescribe_Remesa() {
    try {
        QStringList items;
        std::vector<std::int64_t> ids;
        for (const treasury::RemittanceRecord& r : treasury::remittances(ctx_)) {
            if (r.collections != side_.debit) continue;
            items << QStringLiteral("%1  %2  %3  %4  %5")
                         .arg(r.id)
                         .arg(Format_Data(r.bankDate), r.format)
                         .arg(r.count)
                         .arg(Format_Import(ctx_, r.total));
            ids.push_back(r.id);
        }
        if (items.isEmpty()) {
            dialogs_.information(fixedText(ctx_, "Todavía no se ha enviado ningún fichero SEPA.",
                                           "Encara no s'ha enviat cap fitxer SEPA."));
            return;
        }
        bool ok = false;
        const QString chosen = QInputDialog::getItem(
            this, btnRemesas_->text(),
            fixedText(ctx_,
                      "Fichero que se volverá a escribir:", "Fitxer que es tornarà a escriure:"),
            items, 0, false, &ok);
        if (!ok) return;
        const std::int64_t id = ids[static_cast<std::size_t>(items.indexOf(chosen))];
        const QString path =
            askFilePath(QDir::home().filePath(QStringLiteral("remesa-%1.xml").arg(id)));
        if (path.isEmpty()) return;
        treasury::rewriteRemittance(ctx_, id, path);
    } catch (const store::StoreError& e) {
        dialogs_.stop(e.message());
    }
}

void FormCarteraRun::setStatus(const QString& text) {
    status_ = text;
    emit statusChanged(text);
}

bool FormCarteraRun::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape) {
        tool(QStringLiteral("Cancela"))->trigger();
        return true;
    }
    if (ui::isEnter(key) && (watched == DbGrid1_ || watched == txtCobrar_)) {
        Passa_Recibo();
        return true;
    }
    if ((ui::isEnter(key) || key == Qt::Key_Delete) && watched == DbGrid2_) {
        Treu_Recibo();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void FormCarteraRun::closeScreen() {
    ui::closeScreen(this);
}

}  // namespace tallora
