#include "inquiry_screen.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "entry_parts.h"
#include "field_behaviour.h"
#include "report/ui/spreadsheet_path.h"
#include "screen_style.h"
#include "store/store_error.h"

#include <QAction>
#include <QColor>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora::ui {

InquiryScreen::InquiryScreen(WorkingContext& ctx, Dialogs& dialogs, const QString& name,
                             const QString& title, const QString& helpKey,
                             const QStringList& headers, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(name);
    setWindowTitle(title);
    const auto m = [&](int n) { return Missatge(ctx_, n).trimmed(); };

    Toolbar5 = new QToolBar(this);
    Toolbar5->setObjectName(QStringLiteral("Toolbar5"));
    Toolbar5->setToolButtonStyle(Qt::ToolButtonTextOnly);
    addTool(Toolbar5, QStringLiteral("Buscar"), fixedText(ctx_, "Buscar", "Cercar"), {},
            [this] { searchFrom(Toolbar5); });
    addTool(Toolbar5, QStringLiteral("Modificar"), fixedText(ctx_, "Modificar", "Modificar"), {},
            [this] { Modificar(); });
    addTool(Toolbar5, QStringLiteral("Esborrar"), m(812), {}, [this] { Esborrar(); });
    addTool(Toolbar5, QStringLiteral("Imprimir"), fixedText(ctx_, "Imprimir", "Imprimir"), {},
            [this] { print({}); });
    addSpreadsheetTool(Toolbar5, ctx_, [this] { Exportar(); });
    askFilePath = [this](const QString& name) {
        return report::askSpreadsheetPath(this, windowTitle(), name);
    };
    Toolbar5->addSeparator();
    addTool(Toolbar5, QStringLiteral("Cancela"), m(814), {}, [this] { closeScreen(); });

    auto* filterBox = new QWidget(this);
    filters_ = new QGridLayout(filterBox);
    filters_->setContentsMargins(0, 0, 0, 0);
    filters_->setHorizontalSpacing(8);
    Dtdata1 = new QDateEdit(this);
    Dtdata1->setObjectName(QStringLiteral("Dtdata1"));
    Dtdata2 = new QDateEdit(this);
    Dtdata2->setObjectName(QStringLiteral("Dtdata2"));
    for (QDateEdit* d : {Dtdata1, Dtdata2}) {
        d->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
        d->setCalendarPopup(true);
    }
    const int year = ctx_.Exercici.toInt();
    Dtdata1->setDate(QDate(year, 1, 1));
    Dtdata2->setDate(QDate(year, 12, 31));
    cmbOperacio = new QComboBox(this);
    cmbOperacio->setObjectName(QStringLiteral("cmbOperacio"));
    cmbOperacio->addItems(
        {QStringLiteral("="), QStringLiteral("<>"), QStringLiteral("<="), QStringLiteral(">=")});
    txtImport = new QLineEdit(this);
    txtImport->setObjectName(QStringLiteral("txtImport"));
    txtImport->setMaxLength(18);
    txtImport->setAlignment(Qt::AlignRight);
    auto* dates = new QHBoxLayout;
    dates->addWidget(new QLabel(m(805), this));
    dates->addSpacing(4);
    dates->addWidget(Dtdata1);
    dates->addWidget(resetButton(Dtdata1));
    dates->addSpacing(12);
    dates->addWidget(new QLabel(m(806), this));
    dates->addSpacing(4);
    dates->addWidget(Dtdata2);
    dates->addWidget(resetButton(Dtdata2));
    dates->addSpacing(24);
    auto* amount = new QLabel(m(804), this);
    amount->setBuddy(txtImport);
    dates->addWidget(amount);
    dates->addSpacing(4);
    dates->addWidget(cmbOperacio);
    dates->addWidget(txtImport);
    amountFilter_ = {amount, cmbOperacio, txtImport, resetButton(txtImport)};
    dates->addWidget(amountFilter_.last());
    dates->addStretch(1);
    filters_->addWidget(new QLabel(m(809), this), 8, 0);
    filters_->addLayout(dates, 8, 1, 1, 2);
    orders_ = new QHBoxLayout;
    ordersHeading_ = heading(m(808), this);
    orders_->addWidget(ordersHeading_);
    orders_->addSpacing(12);
    filters_->addLayout(orders_, 9, 0, 1, 3);
    filters_->setColumnStretch(1, 1);

    DbGrid1 = new QTableWidget(0, static_cast<int>(headers.size()), this);
    DbGrid1->setObjectName(QStringLiteral("DbGrid1"));
    DbGrid1->setHorizontalHeaderLabels(headers);
    DbGrid1->setSelectionBehavior(QAbstractItemView::SelectRows);
    DbGrid1->setSelectionMode(QAbstractItemView::SingleSelection);
    DbGrid1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    DbGrid1->setAlternatingRowColors(true);
    DbGrid1->verticalHeader()->hide();
    DbGrid1->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    QHeaderView* header = DbGrid1->horizontalHeader();
    header->setHighlightSections(false);
    const int digit = fontMetrics().horizontalAdvance(QStringLiteral("0"));
    header->resizeSection(0, 7 * digit);
    header->resizeSection(1, 12 * digit);
    for (int c = 2; c + 1 < DbGrid1->columnCount(); ++c)
        header->setSectionResizeMode(c, QHeaderView::Stretch);
    header->resizeSection(DbGrid1->columnCount() - 1, 15 * digit);
    amountColumn_ = DbGrid1->columnCount() - 1;
    connect(DbGrid1, &QTableWidget::itemSelectionChanged, this, &InquiryScreen::rowChanged);
    connect(DbGrid1, &QTableWidget::cellDoubleClicked, this, [this] { Modificar(); });

    txtApunts = new QLineEdit(this);
    txtApunts->setObjectName(QStringLiteral("txtApunts"));
    txtTotal = new QLineEdit(this);
    txtTotal->setObjectName(QStringLiteral("txtTotal"));
    for (QLineEdit* f : {txtApunts, txtTotal}) {
        f->setReadOnly(true);
        f->setFocusPolicy(Qt::NoFocus);
        f->setAlignment(Qt::AlignRight);
        f->setMaximumWidth(18 * digit);
    }
    auto* footer = new QHBoxLayout;
    footer->addWidget(new QLabel(m(6696), this), 1);
    footer->addWidget(new QLabel(m(807), this));
    footer->addWidget(txtApunts);
    footer->addSpacing(16);
    total_ = {new QLabel(QStringLiteral("TOTAL"), this), txtTotal};
    footer->addWidget(total_.first());
    footer->addWidget(txtTotal);

    gridRow_ = new QHBoxLayout;
    gridRow_->addWidget(DbGrid1, 1);
    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->setSpacing(8);
    body->addWidget(filterBox);
    body->addLayout(gridRow_, 1);
    body->addLayout(footer);
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);
    root->addWidget(bandTitle(title, ctx_.EmpresaNom, this));
    root->addWidget(Toolbar5);
    root->addLayout(body, 1);
    helpOnF1(ctx_, this, helpKey);
}

QToolBar* InquiryScreen::resetButton(QWidget* control) {
    auto* bar = new QToolBar(this);
    bar->setObjectName(QStringLiteral("reset_") + control->objectName());
    bar->setIconSize(QSize(12, 12));
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QAction* reset = bar->addAction(QStringLiteral("×"), this, [this, control] {
        const int year = ctx_.Exercici.toInt();
        if (control == Dtdata1)
            Dtdata1->setDate(QDate(year, 1, 1));
        else if (control == Dtdata2)
            Dtdata2->setDate(QDate(year, 12, 31));
        else if (auto* line = qobject_cast<QLineEdit*>(control))
            line->clear();
        else if (auto* combo = qobject_cast<QComboBox*>(control))
            combo->setCurrentIndex(-1);
        changed(control);
    });
    reset->setToolTip(fixedText(ctx_, "Quitar este filtro", "Treure aquest filtre"));
    bar->setFocusPolicy(Qt::NoFocus);
    return bar;
}

QComboBox* InquiryScreen::addListFilter(const QString& name, const QString& caption) {
    auto* combo = new QComboBox(this);
    combo->setObjectName(name);
    combo->setPlaceholderText(fixedText(ctx_, "(Todos)", "(Tots)"));
    combo->setMinimumContentsLength(36);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* label = new QLabel(caption, this);
    label->setBuddy(combo);
    auto* line = new QHBoxLayout;
    line->addWidget(combo);
    line->addWidget(resetButton(combo));
    line->addStretch(1);
    filters_->addWidget(label, listFilters_, 0);
    filters_->addLayout(line, listFilters_, 1);
    ++listFilters_;
    connect(combo, &QComboBox::activated, this, [this, combo] { changed(combo); });
    return combo;
}

QRadioButton* InquiryScreen::addOrder(const QString& name, const QString& caption,
                                      const QString& tip) {
    auto* option = new QRadioButton(caption, this);
    option->setObjectName(name);
    option->setToolTip(tip);
    option->setChecked(orderOptions_.isEmpty());
    orderOptions_ << option;
    orders_->addWidget(option);
    connect(option, &QRadioButton::toggled, this, [this, option](bool on) {
        if (on) changed(option);
    });
    return option;
}

void InquiryScreen::start() {
    orders_->addStretch(1);
    // A screen of one fixed order shows no choice of it.
    ordersHeading_->setVisible(!orderOptions_.isEmpty());
    installEventFilter(this);
    for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);
    // A date field ends its editing also when it only loses the focus: a date that did not
    // change since the last search searches nothing.
    connect(Dtdata1, &QDateEdit::editingFinished, this, [this] {
        if (Dtdata1->date() != searched_.from) changed(Dtdata1);
    });
    connect(Dtdata2, &QDateEdit::editingFinished, this, [this] {
        if (Dtdata2->date() != searched_.to) changed(Dtdata2);
    });
    connect(cmbOperacio, &QComboBox::activated, this, [this] {
        if (!txtImport->text().isEmpty()) changed(cmbOperacio);
    });
    Buscar();
    DbGrid1->setFocus();
}

void InquiryScreen::amountsFrom(int column) {
    amountColumn_ = column;
    QHeaderView* header = DbGrid1->horizontalHeader();
    for (int c = column; c < DbGrid1->columnCount(); ++c) {
        header->setSectionResizeMode(c, QHeaderView::Interactive);
        header->resizeSection(c, header->sectionSize(DbGrid1->columnCount() - 1));
    }
}

InquiryScreen::~InquiryScreen() {
    // The children go after this body; a date field losing its focus then must not search.
    for (QWidget* w : {static_cast<QWidget*>(Dtdata1), static_cast<QWidget*>(Dtdata2)})
        disconnect(w, nullptr, this, nullptr);
}

report::ReportResult InquiryScreen::printList(const std::function<report::ReportResult()>& run) {
    report::ReportResult result;
    try {
        result = run();
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
    Buscar();
    return result;
}

void InquiryScreen::Exportar() {
    const QString path = askFilePath(report::spreadsheetFileName(ctx_, windowTitle()));
    if (path.isEmpty()) return;
    if (print(report::spreadsheetRequest(path)).ok()) setStatus(report::savedText(ctx_, path));
}

void InquiryScreen::focusAfterSearch(QWidget* w) {
    focusAfter_ = w;
}

void InquiryScreen::hideAmountFilter() {
    for (QWidget* w : amountFilter_) w->hide();
}

void InquiryScreen::hideTotal() {
    for (QWidget* w : total_) w->hide();
}

void InquiryScreen::setDates(const QDate& from, const QDate& to) {
    Dtdata1->setDate(from);
    Dtdata2->setDate(to);
    changed(Dtdata2);
}

schema::DateAmountFilter InquiryScreen::range() const {
    schema::DateAmountFilter f;
    f.from = Dtdata1->date();
    f.to = Dtdata2->date();
    f.operacio = cmbOperacio->currentText();
    f.import = txtImport->text();
    return f;
}

bool InquiryScreen::searchFrom(QWidget* source) {
    source_ = source;
    Buscar();
    source_ = nullptr;
    const QPointer<QWidget> target = focusAfter_;
    focusAfter_ = nullptr;
    if (target && target->isVisible()) target->setFocus();
    return target;
}

void InquiryScreen::changed(QWidget* source) {
    if (searchFrom(source)) return;
    if (source && source->isVisible()) source->setFocus();
}

void InquiryScreen::Buscar() {
    if (searching_) return;
    searching_ = true;
    const decltype(searched_) dates{Dtdata1->date(), Dtdata2->date()};
    Result result;
    bool found = true;
    try {
        result = search();
    } catch (const store::StoreError& error) {
        found = false;
        showError(error.message());
    } catch (const std::invalid_argument& error) {
        found = false;
        showError(QString::fromUtf8(error.what()));
    }
    if (found) {
        // A search that failed is tried again when its date field is left.
        searched_ = dates;
        rows_ = std::move(result.rows);
        DbGrid1->setRowCount(0);
        DbGrid1->setRowCount(static_cast<int>(rows_.size()));
        std::size_t entries = 0;
        for (int r = 0; r < DbGrid1->rowCount(); ++r) {
            const Row& row = rows_[static_cast<std::size_t>(r)];
            if (!row.inert) ++entries;
            for (int c = 0; c < row.cells.size() && c < DbGrid1->columnCount(); ++c) {
                auto* item = new QTableWidgetItem(row.cells[c]);
                if (c == 0 || c >= amountColumn_)
                    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                if (row.inert) item->setBackground(QColor(0xE0, 0xE0, 0xE0));
                DbGrid1->setItem(r, c, item);
            }
        }
        txtApunts->setText(QString::number(entries));
        txtTotal->setText(Format_Import(ctx_, result.total));
        if (!rows_.empty()) DbGrid1->selectRow(0);
        setStatus(rows_.empty() ? Missatge(ctx_, 811).trimmed() : QString());
    }
    searching_ = false;
}

const InquiryScreen::Row* InquiryScreen::selectedRow() const {
    const QModelIndexList rows = DbGrid1->selectionModel()->selectedRows();
    if (rows.isEmpty()) return nullptr;
    const auto at = static_cast<std::size_t>(rows.first().row());
    if (at >= rows_.size() || rows_[at].inert) return nullptr;
    return &rows_[at];
}

std::optional<std::int64_t> InquiryScreen::selectedOrdre() const {
    if (const Row* row = selectedRow()) return row->ordre;
    return std::nullopt;
}

void InquiryScreen::Esborrar() {
    const QModelIndexList selected = DbGrid1->selectionModel()->selectedRows();
    if (!selectedRow()) return;
    const Row row = *selectedRow();
    if (dialogs_.yesNo(deleteQuestion(row)) != Dialogs::Answer::Yes) return;
    try {
        remove(row.ordre);
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
    const int at = selected.first().row();
    Buscar();
    if (DbGrid1->rowCount() > 0) DbGrid1->selectRow(std::min(at, DbGrid1->rowCount() - 1));
}

void InquiryScreen::Modificar() {
    if (const auto ordre = selectedOrdre()) open(*ordre);
}

QAction* InquiryScreen::tool(const QString& key) const {
    return findChild<QAction*>(key);
}

void InquiryScreen::setStatus(const QString& text) {
    status_ = text;
    emit statusChanged(text);
}

void InquiryScreen::showError(const QString& message) {
    dialogs_.stop(message);
}

void InquiryScreen::closeScreen() {
    ui::closeScreen(this);
}

bool InquiryScreen::eventFilter(QObject* watched, QEvent* event) {
    // Keys are taken here rather than as shortcuts of the tool buttons, which two inquiries
    // open at once in the shell would both claim.
    if (event->type() != QEvent::KeyPress) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (key->key() == Qt::Key_Escape) {
        closeScreen();
        return true;
    }
    if (watched == txtImport && enter) {
        changed(txtImport);
        return true;
    }
    if (watched == DbGrid1 && enter) {
        Modificar();
        return true;
    }
    if (watched == DbGrid1 && key->key() == Qt::Key_Delete) {
        Esborrar();
        return true;
    }
    return false;
}

}  // namespace tallora::ui
