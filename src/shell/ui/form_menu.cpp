#include "form_menu.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "shell/exercises.h"
#include "widgets/field_behaviour.h"
#include "widgets/obre_ajuda.h"
#include "widgets/screen_style.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace tallora {
namespace {

// Up and down arrows in the year field step it by one, as its spin buttons do.
class YearKeys : public QObject {
public:
    YearKeys(std::function<void(int)> step, QObject* parent) : QObject(parent), step_(std::move(step)) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up) step_(1);
        else if (key == Qt::Key_Down) step_(-1);
        else return false;
        return true;
    }

private:
    std::function<void(int)> step_;
};

}  // namespace

FormMenu::FormMenu(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("FormMenu"));
    const auto m = [&](int n) { return Missatge(ctx_, n); };
    setWindowTitle(m(102));
    auto* title = ui::bandTitle(m(102), QString(), this);

    lblEmpresa_ = new QLabel(ctx_.EmpresaNom, this);
    lblEmpresa_->setObjectName(QStringLiteral("lblEmpresa"));
    QFont bold = lblEmpresa_->font();
    bold.setBold(true);
    lblEmpresa_->setFont(bold);
    lblNIF_ = new QLabel(ctx_.EmpresaNIF, this);
    lblNIF_->setObjectName(QStringLiteral("lblNIF"));
    lblDirectori_ = new QLabel(ctx_.Directori, this);
    lblDirectori_->setObjectName(QStringLiteral("lblDirectori"));
    lblDirectori_->setTextInteractionFlags(Qt::TextSelectableByMouse);

    ListExercicis_ = new QListWidget(this);
    ListExercicis_->setObjectName(QStringLiteral("ListExercicis"));
    ListExercicis_->setMinimumHeight(140);

    Toolbar3_ = new QToolBar(this);
    Toolbar3_->setObjectName(QStringLiteral("Toolbar3"));
    Toolbar3_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(Toolbar3_, QStringLiteral("Nuevo"), m(107), QKeySequence::New, [this] { Nou_Exercici(); });
    ui::addTool(Toolbar3_, QStringLiteral("Abrir"), m(2), QKeySequence::Open, [this] { Obre_Exercici(); });
    ui::addTool(Toolbar3_, QStringLiteral("Eliminar"), m(3), {}, [this] { Elimina_Exercici(); });
    ui::addTool(Toolbar3_, QStringLiteral("Ayuda"), m(4), {}, [this] { ui::Obre_Ajuda(ctx_, QStringLiteral("Ejercicios")); });
    ui::addTool(Toolbar3_, QStringLiteral("Cancela"), m(19), {}, [this] { Cancela(); });

    FrameAlta_ = new QGroupBox(m(116), this);
    FrameAlta_->setObjectName(QStringLiteral("FrameAlta"));
    txtExercici_ = new QLineEdit(FrameAlta_);
    txtExercici_->setObjectName(QStringLiteral("txtExercici"));
    txtExercici_->setValidator(new QIntValidator(1900, 2999, txtExercici_));
    txtExercici_->setMaxLength(4);
    txtExercici_->installEventFilter(new YearKeys([this](int d) { stepYear(d); }, txtExercici_));
    ui::colourOnFocus(txtExercici_);
    auto* UpDown = new QWidget(FrameAlta_);
    UpDown->setObjectName(QStringLiteral("UpDown"));
    auto* up = new QToolButton(UpDown);
    up->setArrowType(Qt::UpArrow);
    auto* down = new QToolButton(UpDown);
    down->setArrowType(Qt::DownArrow);
    connect(up, &QToolButton::clicked, this, [this] { stepYear(1); });
    connect(down, &QToolButton::clicked, this, [this] { stepYear(-1); });
    auto* upDownLayout = new QHBoxLayout(UpDown);
    upDownLayout->setContentsMargins(0, 0, 0, 0);
    upDownLayout->setSpacing(0);
    upDownLayout->addWidget(up);
    upDownLayout->addWidget(down);
    cmbMoneda_ = new QComboBox(FrameAlta_);
    cmbMoneda_->setObjectName(QStringLiteral("cmbMoneda"));
    cmbMoneda_->addItems(shell::currencies());

    auto* frameTipus = new QGroupBox(m(123), FrameAlta_);
    OpBotiga_ = new QRadioButton(m(115), frameTipus);
    OpBotiga_->setObjectName(QStringLiteral("OpBotiga"));
    Option1_ = new QRadioButton(m(6631), frameTipus);
    Option1_->setObjectName(QStringLiteral("Option1"));
    auto* tipusLayout = new QVBoxLayout(frameTipus);
    tipusLayout->addWidget(Option1_);
    tipusLayout->addWidget(OpBotiga_);

    auto* frameRep = new QGroupBox(m(121), FrameAlta_);
    auto* repGrid = new QGridLayout(frameRep);
    repGrid->addWidget(new QLabel(QStringLiteral("IVA %"), frameRep), 0, 1);
    repGrid->addWidget(new QLabel(QStringLiteral("R.E. %"), frameRep), 0, 2);
    auto* frameSop = new QGroupBox(m(122), FrameAlta_);
    auto* sopGrid = new QGridLayout(frameSop);
    for (int i = 0; i < 4; ++i) {
        if (i < 3) {
            txtIVA_[i] = ui::rateEdit(ctx_, QStringLiteral("txtIVA%1").arg(i + 1), frameRep);
            txtRE_[i] = ui::rateEdit(ctx_, QStringLiteral("txtRE%1").arg(i + 1), frameRep);
            repGrid->addWidget(new QLabel(m(117 + i), frameRep), i + 1, 0);
            repGrid->addWidget(txtIVA_[i], i + 1, 1);
            repGrid->addWidget(txtRE_[i], i + 1, 2);
        }
        txtIVAs_[i] = ui::rateEdit(ctx_, QStringLiteral("txtIVAs%1").arg(i + 1), frameSop);
        sopGrid->addWidget(new QLabel(m(117 + i), frameSop), i, 0);
        sopGrid->addWidget(txtIVAs_[i], i, 1);
    }

    auto* Toolbar1 = new QToolBar(FrameAlta_);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(Toolbar1, QStringLiteral("Guardar"), m(17), QKeySequence::Save, [this] { Graba_Exercici(); });
    ui::addTool(Toolbar1, QStringLiteral("Cancela"), m(6408), {}, [this] { Cancela(); });

    auto* yearRow = new QHBoxLayout;
    yearRow->addWidget(new QLabel(m(114), FrameAlta_));
    yearRow->addWidget(txtExercici_);
    yearRow->addWidget(UpDown);
    yearRow->addSpacing(16);
    yearRow->addWidget(cmbMoneda_);
    yearRow->addStretch();
    auto* ratesRow = new QHBoxLayout;
    ratesRow->addWidget(frameRep);
    ratesRow->addWidget(frameSop);
    auto* frameLayout = new QVBoxLayout(FrameAlta_);
    frameLayout->addLayout(yearRow);
    frameLayout->addWidget(frameTipus);
    frameLayout->addLayout(ratesRow);
    frameLayout->addWidget(Toolbar1);
    FrameAlta_->hide();

    QList<QWidget*> ring{txtExercici_, cmbMoneda_, Option1_, OpBotiga_};
    for (int i = 0; i < 3; ++i) ring << txtIVA_[i] << txtRE_[i];
    for (auto* f : txtIVAs_) ring << f;
    ui::enterMovesAlong(ring);

    auto* company = new QVBoxLayout;
    company->addWidget(lblEmpresa_);
    company->addWidget(lblNIF_);
    company->addWidget(lblDirectori_);
    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->addLayout(company);
    body->addWidget(ListExercicis_, 1);
    body->addWidget(FrameAlta_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(title);
    layout->addWidget(Toolbar3_);
    layout->addLayout(body, 1);

    connect(ListExercicis_, &QListWidget::itemActivated, this, [this] { Obre_Exercici(); });
    ui::helpOnF1(ctx_, this, QStringLiteral("Ejercicios"));
    setDefaults();
    OMPLE_LLISTA_Exercicis();
}

void FormMenu::OMPLE_LLISTA_Exercicis() {
    ListExercicis_->clear();
    ListExercicis_->addItems(shell::exerciseRows(ctx_));
    if (ListExercicis_->count() > 0) ListExercicis_->setCurrentRow(ListExercicis_->count() - 1);
}

void FormMenu::setDefaults() {
    const shell::NewExercise d = shell::defaultNewExercise();
    txtExercici_->setText(d.exercici);
    cmbMoneda_->setCurrentIndex(0);
    Option1_->setChecked(true);
    for (int i = 0; i < 3; ++i) {
        txtIVA_[i]->setText(d.iva[i]);
        txtRE_[i]->setText(d.re[i]);
    }
    for (int i = 0; i < 4; ++i) txtIVAs_[i]->setText(d.ivas[i]);
}

void FormMenu::stepYear(int delta) {
    txtExercici_->setText(QString::number(txtExercici_->text().toInt() + delta));
}

void FormMenu::Nou_Exercici() {
    setDefaults();
    if (!FrameAlta_->isVisible()) listSize_ = size();
    FrameAlta_->show();
    txtExercici_->setFocus();
    txtExercici_->selectAll();
}

void FormMenu::Graba_Exercici() {
    shell::NewExercise e;
    e.exercici = txtExercici_->text();
    e.moneda = cmbMoneda_->currentText();
    e.botiga = OpBotiga_->isChecked();
    for (int i = 0; i < 3; ++i) {
        e.iva[i] = txtIVA_[i]->text();
        e.re[i] = txtRE_[i]->text();
    }
    for (int i = 0; i < 4; ++i) e.ivas[i] = txtIVAs_[i]->text();
    if (!shell::Graba_Exercici(ctx_, dialogs_, e)) {
        if (!shell::isExerciseYear(e.exercici)) {
            txtExercici_->setFocus();
            txtExercici_->selectAll();
        }
        return;
    }
    OMPLE_LLISTA_Exercicis();
    setDefaults();
    hideFrame();
}

void FormMenu::Elimina_Exercici() {
    const auto* item = ListExercicis_->currentItem();
    if (shell::Elimina_Exercici(ctx_, dialogs_, item ? item->text() : QString()))
        OMPLE_LLISTA_Exercicis();
}

void FormMenu::Obre_Exercici() {
    const auto* item = ListExercicis_->currentItem();
    setCursor(Qt::WaitCursor);
    const bool opened = shell::Obre_Exercici(ctx_, dialogs_, item ? item->text() : QString());
    unsetCursor();
    if (!opened) return;
    accept();
}

void FormMenu::Cancela() {
    if (FrameAlta_->isVisible()) {
        hideFrame();
        return;
    }
    reject();
}

void FormMenu::hideFrame() {
    FrameAlta_->hide();
    // The screen goes back to the size it had before the frame grew it, once the layout
    // has let go of the frame's height.
    layout()->activate();
    if (listSize_.isValid()) resize(listSize_);
    ListExercicis_->setFocus();
}

bool FormMenu::frameTyped() const {
    if (!FrameAlta_->isVisible()) return false;
    const shell::NewExercise d = shell::defaultNewExercise();
    bool typed = txtExercici_->text() != d.exercici || cmbMoneda_->currentIndex() != 0 ||
                 !Option1_->isChecked();
    for (int i = 0; i < 3; ++i)
        typed = typed || txtIVA_[i]->text() != d.iva[i] || txtRE_[i]->text() != d.re[i];
    for (int i = 0; i < 4; ++i) typed = typed || txtIVAs_[i]->text() != d.ivas[i];
    return typed;
}

bool FormMenu::mayDropTyped() {
    return !frameTyped() || dialogs_.yesNo(Missatge(ctx_, 6622)) == Dialogs::Answer::Yes;
}

void FormMenu::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QDialog::keyPressEvent(event);
        return;
    }
    if (mayDropTyped()) Cancela();
}

void FormMenu::closeEvent(QCloseEvent* event) {
    if (!mayDropTyped()) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

}  // namespace tallora
