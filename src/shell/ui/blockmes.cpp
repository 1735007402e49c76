#include "blockmes.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "widgets/field_behaviour.h"
#include "widgets/obre_ajuda.h"
#include "widgets/screen_style.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora {

blockmes::blockmes(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("blockmes"));
    const auto m = [&](int n) { return Missatge(ctx_, n); };
    setWindowTitle(m(205));

    auto* Toolbar3 = new QToolBar(this);
    Toolbar3->setObjectName(QStringLiteral("Toolbar3"));
    Toolbar3->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(Toolbar3, QStringLiteral("guardar"), m(17), QKeySequence::Save, [this] { Guardar(); });
    ui::addTool(Toolbar3, QStringLiteral("Ajuda"), m(4), {}, [this] { ui::Obre_Ajuda(ctx_, QStringLiteral("bloqmeses")); });
    ui::addTool(Toolbar3, QStringLiteral("cancelar"), m(308), QKeySequence(Qt::Key_Escape), [this] { Cancelar(); });

    auto* months = new QGroupBox(this);
    auto* grid = new QGridLayout(months);
    for (int i = 0; i < 12; ++i) {
        chkmesos_[i] = new QCheckBox(m(5001 + i), months);
        chkmesos_[i]->setObjectName(QStringLiteral("chkmesos%1").arg(i + 1));
        grid->addWidget(chkmesos_[i], i % 6, i / 6);
        // The boxes are the lock itself: a change counts for postings before it is saved.
        connect(chkmesos_[i], &QCheckBox::toggled, this, [this, i](bool on) {
            ctx_.chkmesos[i] = on ? 1 : 0;
            Pic_canvis_ = true;
        });
    }
    auto* OpSel = new QRadioButton(m(6974), this);
    OpSel->setObjectName(QStringLiteral("OpSel"));
    auto* OpLimp = new QRadioButton(m(6975), this);
    OpLimp->setObjectName(QStringLiteral("OpLimp"));
    connect(OpSel, &QRadioButton::clicked, this, [this] { setAll(true); });
    connect(OpLimp, &QRadioButton::clicked, this, [this] { setAll(false); });
    auto* note1 = new QLabel(m(6301), this);
    auto* note2 = new QLabel(m(6302), this);
    for (QLabel* note : {note1, note2}) note->setWordWrap(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(ui::bandTitle(m(205), ctx_.Exercici, this));
    layout->addWidget(Toolbar3);
    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->addWidget(months);
    auto* options = new QHBoxLayout;
    options->addWidget(OpSel);
    options->addWidget(OpLimp);
    options->addStretch();
    body->addLayout(options);
    body->addWidget(note1);
    body->addWidget(note2);
    body->addStretch();
    layout->addLayout(body, 1);
    ui::helpOnF1(ctx_, this, QStringLiteral("bloqmeses"));
    Carrega();
}

void blockmes::Carrega() {
    loadMonthLock(ctx_);
    const auto lock = ctx_.chkmesos;
    for (int i = 0; i < 12; ++i) chkmesos_[i]->setChecked(lock[i] == 1);
    Pic_canvis_ = false;
}

void blockmes::Guardar() {
    saveMonthLock(ctx_);
    Pic_canvis_ = false;
    emit hideRequested();
}

void blockmes::Cancelar() {
    if (Pic_canvis_ && dialogs_.yesNo(Missatge(ctx_, 6622)) != Dialogs::Answer::Yes) return;
    Carrega();
    emit hideRequested();
}

void blockmes::closeEvent(QCloseEvent* event) {
    if (closingWithShell_) {
        event->accept();
        return;
    }
    // Refusing the close keeps the screen and its window; Cancelar hides them when it may.
    event->ignore();
    Cancelar();
}

void blockmes::setAll(bool locked) {
    for (QCheckBox* box : chkmesos_) box->setChecked(locked);
}

}  // namespace tallora
