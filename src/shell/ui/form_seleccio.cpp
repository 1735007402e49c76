#include "form_seleccio.h"

#include "company_fields.h"
#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/messages.h"
#include "context/program.h"
#include "context/working_context.h"
#include "shell/company_list.h"
#include "widgets/field_behaviour.h"
#include "widgets/obre_ajuda.h"
#include "widgets/screen_style.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora {
namespace {

// Backspace, digits, letters and "-" pass; any other key beeps and is dropped.
class NifKeys : public QObject {
public:
    NifKeys(Dialogs& dialogs, QObject* parent) : QObject(parent), dialogs_(dialogs) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const QString text = static_cast<QKeyEvent*>(event)->text();
        if (text.size() != 1 || !text.at(0).isPrint()) return false;  // editing keys pass
        const QChar c = text.at(0);
        if (c.isLetterOrNumber() || c == u'-') return false;
        dialogs_.beep();
        return true;
    }

private:
    Dialogs& dialogs_;
};

}  // namespace

FormSeleccio::FormSeleccio(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("FormSeleccio"));
    setWindowTitle(programName());
    const auto m = [&](int n) { return Missatge(ctx_, n); };

    auto* title = ui::bandTitle(m(6), programVersion(), this);

    auto* lblUnitat = new QLabel(m(8), this);
    txtUnitat_ = new QComboBox(this);
    txtUnitat_->setObjectName(QStringLiteral("txtUnitat"));
    QStringList units = availableUnits();
    if (!units.contains(ctx_.Unitat)) units.prepend(ctx_.Unitat);
    txtUnitat_->addItems(units);
    txtUnitat_->setCurrentText(ctx_.Unitat);
    lblUnitat->setBuddy(txtUnitat_);

    ListEmpreses_ = new QListWidget(this);
    ListEmpreses_->setObjectName(QStringLiteral("ListEmpreses"));
    ListEmpreses_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    ListEmpreses_->setMinimumWidth(ListEmpreses_->fontMetrics().horizontalAdvance(QString(56, u'M')));
    ListEmpreses_->setMinimumHeight(220);

    Toolbar1_ = new QToolBar(this);
    Toolbar1_->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(Toolbar1_, QStringLiteral("Nuevo"), m(1), QKeySequence::New, [this] { Nova_Empresa(); });
    ui::addTool(Toolbar1_, QStringLiteral("Abrir"), m(2), QKeySequence::Open, [this] { Obre_Empresa(); });
    ui::addTool(Toolbar1_, QStringLiteral("eliminar"), m(3), {}, [this] { Elimina_Empresa(); });
    ui::addTool(Toolbar1_, QStringLiteral("Ayuda"), m(4), {}, [this] { ui::Obre_Ajuda(ctx_, QStringLiteral("empresas")); });
    ui::addTool(Toolbar1_, QStringLiteral("Sortir"), m(5), {}, [this] { close(); });

    PanelDades_ = new QGroupBox(m(16), this);
    PanelDades_->setObjectName(QStringLiteral("PanelDades"));
    fields_ = ui::companyFields(ctx_, PanelDades_, 6644);
    fields_.txtNIF->installEventFilter(new NifKeys(dialogs_, fields_.txtNIF));
    Toolbar3_ = new QToolBar(PanelDades_);
    Toolbar3_->setObjectName(QStringLiteral("Toolbar3"));
    Toolbar3_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(Toolbar3_, QStringLiteral("Guardar"), m(17), QKeySequence::Save, [this] { Verifica_Empresa(); });
    ui::addTool(Toolbar3_, QStringLiteral("Deshacer"), m(19), {}, [this] { Desfes_Empresa(); });
    ui::addTool(Toolbar3_, QStringLiteral("Ajuda3"), m(18), {}, [this] { ui::Obre_Ajuda(ctx_, QStringLiteral("empresas")); });
    auto* panelLayout = new QVBoxLayout(PanelDades_);
    panelLayout->addLayout(fields_.form);
    panelLayout->addWidget(Toolbar3_);
    PanelDades_->hide();

    auto* unitRow = new QHBoxLayout;
    unitRow->addWidget(lblUnitat);
    unitRow->addWidget(txtUnitat_, 1);
    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->addLayout(unitRow);
    body->addWidget(ListEmpreses_, 1);
    body->addWidget(PanelDades_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(title);
    layout->addWidget(Toolbar1_);
    layout->addLayout(body, 1);

    connect(txtUnitat_, &QComboBox::currentTextChanged, this, &FormSeleccio::changeUnit);
    connect(ListEmpreses_, &QListWidget::itemActivated, this, [this] { Obre_Empresa(); });
    ui::helpOnF1(ctx_, this, QStringLiteral("empresas"));
    OMPLE_LLISTA_Empreses();
}

void FormSeleccio::OMPLE_LLISTA_Empreses() {
    ListEmpreses_->clear();
    ListEmpreses_->addItems(shell::OMPLE_LLISTA_Empreses(ctx_.Unitat));
    if (ListEmpreses_->count() > 0) ListEmpreses_->setCurrentRow(0);
}

void FormSeleccio::Nova_Empresa() {
    PanelDades_->show();
    fields_.txtnom->setFocus();
}

void FormSeleccio::Desfes_Empresa() {
    fields_.show({});
    PanelDades_->hide();
    ListEmpreses_->setFocus();
}

void FormSeleccio::Verifica_Empresa() {
    shell::NewCompany company = fields_.values();
    const bool saved = shell::Verifica_Empresa(ctx_, dialogs_, ctx_.Unitat, company);
    fields_.txtNIF->setText(company.nif);
    if (!saved) return;
    OMPLE_LLISTA_Empreses();
    ListEmpreses_->setCurrentRow(ListEmpreses_->count() - 1);
    Desfes_Empresa();
}

void FormSeleccio::Elimina_Empresa() {
    if (shell::Elimina_Empresa(ctx_, dialogs_, ctx_.Unitat, selectedRow())) OMPLE_LLISTA_Empreses();
}

void FormSeleccio::Obre_Empresa() {
    if (!shell::Obre_Empresa(ctx_, dialogs_, ctx_.Unitat, selectedRow())) return;
    accept();
}

void FormSeleccio::done(int result) {
    shell::clearUnitatCfg(ctx_.programDir);
    ctx_.Unitat = txtUnitat_->currentText();
    QDialog::done(result);
}

bool FormSeleccio::mayDropTyped() {
    if (!PanelDades_->isVisible()) return true;
    return fields_.values() == shell::NewCompany{} ||
           dialogs_.yesNo(Missatge(ctx_, 6622)) == Dialogs::Answer::Yes;
}

void FormSeleccio::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QDialog::keyPressEvent(event);
        return;
    }
    if (PanelDades_->isVisible() && mayDropTyped()) Desfes_Empresa();
}

void FormSeleccio::closeEvent(QCloseEvent* event) {
    if (!mayDropTyped()) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void FormSeleccio::changeUnit(const QString& unit) {
    ctx_.Unitat = unit;
    OMPLE_LLISTA_Empreses();
}

QString FormSeleccio::selectedRow() const {
    const auto* item = ListEmpreses_->currentItem();
    return item && item->isSelected() ? item->text() : QString();
}

}  // namespace tallora
