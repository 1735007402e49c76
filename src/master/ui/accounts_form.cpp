#include "accounts_form.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "field_grid.h"
#include "widgets/field_behaviour.h"

#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tallora {
namespace {

// The names of the options as the screen has always called them.
const char* const kOptionNames[] = {"OpData0", "OpData1", "OpData2", "OpData3",
                                    "OpData4", "OPData5", "OpData6"};

}  // namespace

formComptes::formComptes(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : MasterForm(ctx, dialogs,
                 {QStringLiteral("formComptes"), Missatge(ctx, 500).trimmed(),
                  QStringLiteral("ListComptes"), QStringLiteral("cuentas"), false, false, false},
                 parent) {
    auto* panel = new QGroupBox(this);
    panel->setObjectName(QStringLiteral("SSPanel2"));
    auto* choices = new QVBoxLayout(panel);
    for (std::size_t i = 0; i < master::kFamilies.size(); ++i) {
        const master::Family f = master::kFamilies[i];
        auto* option = new QRadioButton(m(master::familyCaption(f)), panel);
        option->setObjectName(QString::fromLatin1(kOptionNames[i]));
        option->setChecked(f == family_);
        connect(option, &QRadioButton::toggled, this, [this, f](bool on) {
            if (on) chooseFamily(f);
        });
        choices->addWidget(option);
        options_.push_back(option);
    }
    leftColumn()->insertWidget(0, panel);
    lockWhileEditing(panel);
    list()->setToolTip(m(508).trimmed());

    auto* frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("frame"));
    FieldGrid grid(frame);
    txtcompte_ = grid.key(QStringLiteral("txtcompte"), m(518));
    txtGrup_ = grid.key(QStringLiteral("txtGrup"), m(521));
    txtdescripcio_ = grid.line(QStringLiteral("txtdescripcio"), m(519), 40, m(522), true);
    ComboExplotacio_ = new QComboBox(frame);
    ComboExplotacio_->setObjectName(QStringLiteral("ComboExplotacio"));
    ComboExplotacio_->setEditable(true);
    ComboExplotacio_->setInsertPolicy(QComboBox::NoInsert);
    ComboExplotacio_->lineEdit()->setMaxLength(40);
    ui::colourOnFocus(ComboExplotacio_);
    grid.add(ComboExplotacio_, m(520), true);
    grid.finish();
    finishSetup(frame, {txtdescripcio_, ComboExplotacio_});
}

bool formComptes::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (watched == ComboExplotacio_ && enter) {
            Grabar();
            return true;
        }
        // An apostrophe can't be typed in a name; a pasted one meets the text sanitiser.
        if (watched == txtdescripcio_ && key->text() == QStringLiteral("'")) {
            dialogs_.beep();
            return true;
        }
    }
    return MasterForm::eventFilter(watched, event);
}

void formComptes::chooseFamily(master::Family f) {
    family_ = f;
    for (std::size_t i = 0; i < options_.size(); ++i) {
        const QSignalBlocker quiet(options_[i]);
        options_[i]->setChecked(master::kFamilies[i] == f);
    }
    OMPLE_LLISTA();
    afterNeteja();
}

QStringList formComptes::listTexts() {
    items_ = master::accountList(ctx_, family_);
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(items_.size()));
    for (const auto& item : items_) texts << item.nomCompte.toUpper();
    return texts;
}

void formComptes::showRow(int row) {
    const auto account =
        master::accountByNumber(ctx_, family_, items_.at(static_cast<std::size_t>(row)).compte);
    if (!account) return;
    txtcompte_->setText(account->compte);
    txtGrup_->setText(account->grup);
    txtdescripcio_->setText(account->nomCompte);
    fillClasses();
    ComboExplotacio_->setCurrentText(account->tipus);
}

void formComptes::fillClasses() {
    ComboExplotacio_->clear();
    ComboExplotacio_->addItems(master::accountClasses(ctx_, family_));
}

void formComptes::clearFields() {
    txtcompte_->clear();
    txtGrup_->clear();
    txtdescripcio_->clear();
    ComboExplotacio_->setCurrentText(QString());
}

void formComptes::prepareNew() {
    txtcompte_->setText(QStringLiteral("ALTA"));
    txtGrup_->setText(QString::number(master::familyGrup(family_)));
    fillClasses();
    ComboExplotacio_->setCurrentText(QString());
}

void formComptes::afterNeteja() {
    // Browsing always shows the family's first account, when it has one.
    if (list()->count() > 0) list()->setCurrentRow(0);
}

master::Outcome formComptes::saveRecord(bool isNew) {
    master::Account a{isNew ? QString() : txtcompte_->text(), txtGrup_->text(),
                      txtdescripcio_->text(), ComboExplotacio_->currentText()};
    const master::Outcome outcome = master::saveAccount(ctx_, dialogs_, family_, a, isNew);
    txtdescripcio_->setText(a.nomCompte);
    ComboExplotacio_->setCurrentText(a.tipus);
    return outcome;
}

master::Outcome formComptes::removeRecord(int row) {
    return master::deleteAccount(ctx_, dialogs_, family_,
                                 items_.at(static_cast<std::size_t>(row)).compte);
}

}  // namespace tallora
