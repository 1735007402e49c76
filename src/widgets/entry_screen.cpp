#include "entry_screen.h"

#include "context/common_helpers.h"
#include "context/day_log.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "field_behaviour.h"
#include "journal_list.h"
#include "schema/creation.h"
#include "screen_style.h"
#include "store/database.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTime>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace tallora::ui {

EntryScreen::EntryScreen(WorkingContext& ctx, Dialogs& dialogs, const QString& name,
                         const QString& title, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(name);
    setWindowTitle(title);
}

QString EntryScreen::m(int n) const {
    return Missatge(ctx_, n);
}

QString EntryScreen::fixed(const char* spanish, const char* catalan) const {
    return fixedText(ctx_, QString::fromUtf8(spanish), QString::fromUtf8(catalan));
}

QLineEdit* EntryScreen::field(const QString& name, int maxLength) {
    auto* f = new QLineEdit(this);
    f->setObjectName(name);
    if (maxLength > 0) f->setMaxLength(maxLength);
    f->installEventFilter(this);
    colourOnFocus(f);
    return f;
}

QLabel* EntryScreen::caption(const QString& name, const QString& text, QWidget* buddy) {
    auto* l = new QLabel(text, this);
    l->setObjectName(name);
    l->setBuddy(buddy);
    labels_.add(buddy, l);
    return l;
}

QHBoxLayout* EntryScreen::dateRow(QLineEdit*& day, QLineEdit*& month, QLabel*& date) {
    day = field(QStringLiteral("txtDia"), 2);
    month = field(QStringLiteral("txtMes"), 2);
    date = new QLabel(this);
    date->setObjectName(QStringLiteral("lblFecha"));
    for (QLineEdit* f : {day, month}) {
        f->setFixedWidth(44);
        connect(f, &QLineEdit::textEdited, this, [this, f](const QString& text) {
            if (!text.isEmpty() && (!Es_Numeric(ctx_, text) || text == QStringLiteral("-"))) {
                beep();
                f->clear();
            }
        });
    }
    auto* row = new QHBoxLayout;
    row->addWidget(day);
    row->addSpacing(8);
    row->addWidget(caption(QStringLiteral("lblMes"), fixed("Mes", "Mes"), month));
    row->addSpacing(4);
    row->addWidget(month);
    row->addSpacing(12);
    row->addWidget(date);
    row->addStretch(1);
    return row;
}

void EntryScreen::addNumber(QHBoxLayout* row, QLabel* process, QLabel*& ordre) {
    ordre = new QLabel(this);
    ordre->setObjectName(QStringLiteral("lblOrdre"));
    ordre->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(process);
    row->addSpacing(12);
    row->addWidget(ordre);
}

QFrame* EntryScreen::treasuryFrame(const QString& account, QComboBox*& list, const QString& dueName,
                                   QDateEdit*& due) {
    QFrame* frame = panelFrame(QStringLiteral("FrameTesoreria"), this);
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(6, 4, 6, 4);
    list = new QComboBox(this);
    list->setObjectName(QStringLiteral("ListEntitats"));
    list->setMinimumWidth(220);
    list->installEventFilter(this);
    due = new QDateEdit(this);
    due->setObjectName(dueName);
    due->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    due->setCalendarPopup(true);
    due->setFocusPolicy(Qt::ClickFocus);
    row->addWidget(caption(QStringLiteral("lblEntitats"), account, list));
    row->addWidget(list, 1);
    row->addSpacing(12);
    row->addWidget(caption(QStringLiteral("lblVencimiento"), m(6998), due));
    row->addWidget(due);
    frame->setVisible(ctx_.Tesoreria);
    return frame;
}

void EntryScreen::fillTreasuryAccounts(QComboBox* list, bool blankAlways) {
    const QString selected = list->currentText();
    list->clear();
    if (blankAlways) list->addItem(QString());
    if (ctx_.Tesoreria) {
        auto db = store::Database::open(ctx_.exerciseFile(schema::db::Tesorer));
        auto st =
            db.prepare(QStringLiteral("select entidad, Id from entidades order by entidad asc"));
        while (st.next()) {
            if (list->count() == 0) list->addItem(QString());
            list->addItem(st.text(0), QVariant::fromValue<qint64>(st.int64(1)));
        }
    }
    list->setCurrentIndex(std::max(0, list->findText(selected)));
}

bool EntryScreen::focusPrevious(const QList<QWidget*>& order, QWidget* w) {
    qsizetype at = order.indexOf(w);
    if (at < 0) return false;
    while (--at >= 0) {
        if (order[at]->isVisibleTo(this) && order[at]->isEnabled()) {
            focus(order[at]);
            break;
        }
    }
    return true;
}

void EntryScreen::descriptionRow(QGridLayout* grid, int row, int length, QLineEdit*& description,
                                 QComboBox*& series) {
    description = field(QStringLiteral("txtdescripcio"), length);
    series = new QComboBox(this);
    series->setObjectName(QStringLiteral("cmbSerie"));
    series->addItems({QString(), QStringLiteral("/Abon"), QStringLiteral("/Rect")});
    series->setFocusPolicy(Qt::ClickFocus);
    connect(series, &QComboBox::currentTextChanged, this,
            [description, length](const QString& text) {
                description->setMaxLength(length - static_cast<int>(text.size()));
            });
    grid->addWidget(caption(QStringLiteral("lblDescripcio"), m(519), description), row, 0);
    grid->addWidget(description, row, 1, 1, 2);
    grid->addWidget(series, row, 3);
}

QHBoxLayout* EntryScreen::totalRow(QLineEdit*& total, QComboBox*& rate, QLabel*& rateCaption) {
    total = field(QStringLiteral("txtTotal"), 18);
    makeAmountField(ctx_, total);
    rate = new QComboBox(this);
    rate->setObjectName(QStringLiteral("CmbIva"));
    rate->installEventFilter(this);
    rateCaption = caption(QStringLiteral("lblcmbIVA"), QStringLiteral("% IVA"), rate);
    auto* row = new QHBoxLayout;
    row->addWidget(total);
    row->addSpacing(12);
    row->addWidget(rateCaption);
    row->addSpacing(4);
    row->addWidget(rate);
    row->addStretch(1);
    return row;
}

bool EntryScreen::takeFromList(QLineEdit* field, const QListWidget* list) {
    const QListWidgetItem* item = selectedItem(list);
    if (!item) {
        beep();
        focus(field);
        return false;
    }
    field->setText(item->text());
    return true;
}

QGridLayout* EntryScreen::amountsPanel(QFrame*& panel, const QString& title, int columns) {
    panel = panelFrame(QStringLiteral("PanelIVA"), this);
    auto* g = new QGridLayout(panel);
    g->setContentsMargins(8, 6, 8, 6);
    g->addWidget(heading(title, panel), 0, 0, 1, columns);
    g->addWidget(heading(QStringLiteral("% IVA"), panel), 1, 0);
    g->addWidget(heading(fixed("Base", "Base"), panel), 1, 1);
    g->addWidget(heading(m(6512), panel), 1, 2);
    return g;
}

bool EntryScreen::backToEmpty(const QList<QLineEdit*>& fields) {
    for (QLineEdit* earlier : fields) {
        if (earlier->text().isEmpty()) {
            beep();
            focus(earlier);
            return true;
        }
    }
    return false;
}

QVBoxLayout* EntryScreen::journalColumn() {
    auto* column = new QVBoxLayout;
    column->addWidget(heading(m(630).trimmed(), this));
    ListRegistres = journalList(this);
    connect(ListRegistres, &QListWidget::itemDoubleClicked, this, [this] {
        if (const auto number = reopenNumber(ListRegistres))
            reopen(*number, reopenKind(ListRegistres));
    });
    column->addWidget(ListRegistres, 1);
    for (const JournalRow& row : journalTitle(ctx_, QDateTime::currentDateTime()))
        writeJournalRow(ListRegistres, row);
    return column;
}

QWidget* EntryScreen::buttonRow(const QString& hint, QPushButton*& save, QPushButton*& close) {
    auto* box = new QWidget(this);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 4, 0, 0);
    auto* text = new QLabel(hint, box);
    text->setObjectName(QStringLiteral("lblAjuda"));
    text->setWordWrap(true);
    row->addWidget(text, 1);
    save = new QPushButton(m(17), box);
    save->setObjectName(QStringLiteral("btnGuardar"));
    close = new QPushButton(m(308), box);
    close->setObjectName(QStringLiteral("btnTancar"));
    for (QPushButton* b : {save, close}) {
        b->setFocusPolicy(Qt::ClickFocus);
        row->addWidget(b);
    }
    return box;
}

void EntryScreen::focus(QWidget* w) {
    QWidget* from = focusWidget();
    w->setFocus(Qt::OtherFocusReason);
    if (!w->hasFocus()) {
        if (from && from != w) leaveField(from);
        fieldEntered(w);
    }
}

void EntryScreen::beep() {
    dialogs_.beep();
}

void EntryScreen::setStatus(const QString& text) {
    status_ = text;
    emit statusChanged(text);
}

void EntryScreen::closeScreen() {
    ui::closeScreen(this);
}

void EntryScreen::bringToFront() {
    if (auto* window = qobject_cast<QMdiSubWindow*>(parentWidget())) {
        window->showNormal();
        window->raise();
    }
    activateWindow();
}

void EntryScreen::closeEvent(QCloseEvent* event) {
    if (entryTyped() &&
        dialogs_.yesNo(m(618) + QStringLiteral("\n\n") + m(25)) != Dialogs::Answer::Yes) {
        event->ignore();
        return;
    }
    event->accept();
}

bool EntryScreen::eventFilter(QObject* watched, QEvent* event) {
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w) return false;
    if (event->type() == QEvent::FocusIn) {
        fieldEntered(w);
        return false;
    }
    if (event->type() == QEvent::FocusOut) {
        leaveField(w);
        return false;
    }
    if (event->type() != QEvent::KeyPress) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Plus && (key->modifiers() & Qt::KeypadModifier)) {
        post();
        return true;
    }
    if (key->text() == QStringLiteral("+")) return true;  // never typed into a field
    if (key->key() == Qt::Key_Escape) {
        escape();
        return true;
    }
    if (isEnter(key->key())) return enterPressed(w);
    if (key->key() == Qt::Key_Up) return upPressed(w);
    return otherKey(w, key);
}

}  // namespace tallora::ui
