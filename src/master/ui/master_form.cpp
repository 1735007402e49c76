#include "master_form.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora {

MasterForm::MasterForm(WorkingContext& ctx, Dialogs& dialogs, Shape shape, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs), shape_(std::move(shape)) {
    setObjectName(shape_.formName);
    setWindowTitle(shape_.title);

    toolbar_ = new QToolBar(this);
    toolbar_->setObjectName(QStringLiteral("Toolbar1"));
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    // The keys are handled by the screen's own filter, so that a field's own use of Ctrl+A
    // or Esc never wins; the tips only tell them.
    const auto tool = [this](const QString& key, const QString& caption, const QString& keys,
                             void (MasterForm::*run)()) {
        QAction* a = ui::addTool(toolbar_, key, caption, {}, [this, run] { (this->*run)(); });
        if (!keys.isEmpty()) a->setToolTip(QStringLiteral("%1 (%2)").arg(caption, keys));
        tools_.insert(key, a);
    };
    tool(QStringLiteral("Alta"), m(107), QStringLiteral("Ctrl+A"), &MasterForm::Alta);
    tool(QStringLiteral("Modificar"),
         fixed(QStringLiteral("Modificar"), QStringLiteral("Modificar")), QStringLiteral("Intro"),
         &MasterForm::Modificar);
    toolbar_->addSeparator();
    tool(QStringLiteral("Grabar"), m(17),
         fixed(QStringLiteral("+ del teclado numérico"), QStringLiteral("+ del teclat numèric")),
         &MasterForm::Grabar);
    tool(QStringLiteral("Esborrar"), m(3), {}, &MasterForm::Esborrar);
    toolbar_->addSeparator();
    tool(QStringLiteral("Tancar"), m(308), QStringLiteral("Esc"), &MasterForm::Tancar);

    list_ = new QListWidget(this);
    list_->setObjectName(shape_.listName);
    list_->setUniformItemSizes(true);  // keeps a list of thousands quick to fill
    connect(list_, &QListWidget::currentRowChanged, this, [this] {
        if (!editing()) MUESTRA_DADES();
    });
    connect(list_, &QListWidget::itemDoubleClicked, this, [this] { Modificar(); });

    left_ = new QVBoxLayout;
    if (shape_.searchBox) {
        search_ = new QLineEdit(this);
        search_->setObjectName(QStringLiteral("txtBuscaNom"));
        search_->setPlaceholderText(
            fixed(QStringLiteral("Buscar..."), QStringLiteral("Cercar...")));
        search_->setToolTip(m(318));
        ui::colourOnFocus(search_);
        connect(search_, &QLineEdit::textChanged, this, &MasterForm::searchChanged);
        left_->addWidget(search_);
    }
    left_->addWidget(list_, 1);

    right_ = new QVBoxLayout;
    auto* body = new QHBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->setSpacing(16);
    body->addLayout(left_, 2);
    body->addLayout(right_, 3);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);
    root->addWidget(ui::bandTitle(shape_.title, ctx_.EmpresaNom, this));
    root->addWidget(toolbar_);
    root->addLayout(body, 1);
    if (!shape_.helpKey.isEmpty()) ui::helpOnF1(ctx_, this, shape_.helpKey);
}

void MasterForm::finishSetup(QWidget* detail, const QList<QWidget*>& fields) {
    detail_ = detail;
    fields_ = fields;
    right_->addWidget(detail_, 1);
    ui::enterMovesAlong(fields_);
    installKeys(this);
    OMPLE_LLISTA();
    Neteja();
    DESACTIVA();
}

QString MasterForm::m(int n) const {
    return Missatge(ctx_, n);
}

QString MasterForm::fixed(const QString& spanish, const QString& catalan) const {
    return fixedText(ctx_, spanish, catalan);
}

void MasterForm::setStatus(const QString& text) {
    status_ = text;
    emit statusChanged(text);
}

void MasterForm::installKeys(QWidget* widget) {
    widget->installEventFilter(this);
    for (QWidget* child : widget->findChildren<QWidget*>()) child->installEventFilter(this);
}

bool MasterForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool ctrl = key->modifiers().testFlag(Qt::ControlModifier);
    if (key->key() == Qt::Key_Escape) {
        Tancar();
        return true;
    }
    if (key->key() == Qt::Key_Plus && key->modifiers().testFlag(Qt::KeypadModifier)) {
        Grabar();
        return true;
    }
    if (key->text() == QStringLiteral("+")) return true;
    if (ctrl && key->key() == Qt::Key_A) {
        Alta();
        return true;
    }
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == list_ && enter) {
        Modificar();
        return true;
    }
    if (search_ && watched == search_) {
        if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up) {
            moveSelection(key->key() == Qt::Key_Down ? 1 : -1);
            return true;
        }
        if (enter) {
            if (shape_.enterInSearchStartsChange)
                Modificar();
            else
                list_->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void MasterForm::searchChanged(const QString& text) {
    if (text.isEmpty()) return;
    for (int row = 0; row < list_->count(); ++row) {
        if (list_->item(row)->text().startsWith(text, Qt::CaseInsensitive)) {
            list_->setCurrentRow(row);
            list_->scrollToItem(list_->item(row), QAbstractItemView::PositionAtTop);
            return;
        }
    }
}

void MasterForm::moveSelection(int step) {
    const int row = list_->currentRow() + step;
    if (row >= 0 && row < list_->count()) list_->setCurrentRow(row);
}

void MasterForm::setBrowsingTools() {
    for (const char* key : {"Alta", "Modificar", "Esborrar", "Tancar"})
        tools_.value(QString::fromLatin1(key))->setEnabled(true);
    tools_.value(QStringLiteral("Grabar"))->setEnabled(false);
    tools_.value(QStringLiteral("Tancar"))->setText(m(308));
}

void MasterForm::Neteja() {
    setStatus(QString());
    list_->setCurrentRow(-1);
    BUIDA_DADES();
    setBrowsingTools();
    afterNeteja();
    if (search_) {
        search_->clear();
        search_->setFocus();
    } else {
        list_->setFocus();
    }
}

void MasterForm::ACTIVA() {
    // The fields, not their panel: the tabs of a panel stay readable while browsing.
    for (QWidget* field : fields_) field->setEnabled(true);
    list_->setEnabled(false);
    if (search_) search_->setEnabled(false);
    for (QWidget* w : locked_) w->setEnabled(false);
    for (const char* key : {"Alta", "Modificar", "Esborrar"})
        tools_.value(QString::fromLatin1(key))->setEnabled(false);
    tools_.value(QStringLiteral("Grabar"))->setEnabled(true);
    tools_.value(QStringLiteral("Tancar"))->setText(m(6408));
    for (QWidget* field : fields_) {
        if (field->isEnabled() && field->isVisibleTo(this)) {
            field->setFocus();
            break;
        }
    }
}

void MasterForm::DESACTIVA() {
    state_ = State::Browsing;
    OMPLE_LLISTA();
    Neteja();
    for (QWidget* field : fields_) field->setEnabled(false);
    list_->setEnabled(true);
    if (search_) search_->setEnabled(true);
    for (QWidget* w : locked_) w->setEnabled(true);
    tools_.value(QStringLiteral("Tancar"))->setText(m(308));
    if (search_)
        search_->setFocus();
    else
        list_->setFocus();
}

void MasterForm::OMPLE_LLISTA() {
    const QSignalBlocker quiet(list_);
    list_->clear();
    list_->addItems(listTexts());
    list_->setCurrentRow(-1);
}

void MasterForm::MUESTRA_DADES() {
    const int row = list_->currentRow();
    if (row < 0) {
        BUIDA_DADES();
        return;
    }
    showRow(row);
}

void MasterForm::BUIDA_DADES() {
    clearFields();
}

void MasterForm::Alta() {
    if (editing()) return;
    state_ = State::New;
    BUIDA_DADES();
    prepareNew();
    ACTIVA();
    setStatus(QStringLiteral("Alta ..."));
}

void MasterForm::Modificar() {
    if (editing() || list_->currentRow() < 0) return;
    state_ = State::Changing;
    ACTIVA();
    setStatus(shape_.changeStatusText ? m(314) : QString());
}

void MasterForm::Grabar() {
    if (!editing()) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const master::Outcome outcome = saveRecord(state_ == State::New);
    QApplication::restoreOverrideCursor();
    if (!outcome.done()) {
        if (!outcome.field.isEmpty())
            if (auto* field = findChild<QWidget*>(outcome.field)) field->setFocus();
        return;
    }
    DESACTIVA();
}

void MasterForm::Esborrar() {
    const int row = list_->currentRow();
    if (editing() || row < 0) return;
    const master::Outcome outcome = removeRecord(row);
    if (!outcome.done()) return;
    DESACTIVA();
}

void MasterForm::Tancar() {
    if (!editing()) {
        closeScreen();
        return;
    }
    DESACTIVA();
}

void MasterForm::closeScreen() {
    ui::closeScreen(this);
}

}  // namespace tallora
