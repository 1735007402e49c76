#include "form_edita_empresa.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "shell/company_data.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora {

FormEditaEmpresa::FormEditaEmpresa(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), ctx_(ctx), dialogs_(dialogs), fields_(ui::companyFields(ctx_, this, 6977)) {
    setObjectName(QStringLiteral("FormEditaEmpresa"));
    const auto m = [&](int n) { return Missatge(ctx_, n); };
    setWindowTitle(m(6404));

    auto* Toolbar3 = new QToolBar(this);
    Toolbar3->setObjectName(QStringLiteral("Toolbar3"));
    Toolbar3->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ui::addTool(Toolbar3, QStringLiteral("Guardar"), m(17), QKeySequence::Save,
                [this] { Graba_Empresa(); });
    ui::addTool(Toolbar3, QStringLiteral("Deshacer"), m(19), {}, [this] { reject(); });

    fields_.show(shell::currentCompany(ctx_));

    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->addLayout(fields_.form);
    // A shop books no IVA breakdown: its rates are not offered here.
    if (ctx_.ModeExercici != QStringLiteral("TICKETS")) body->addWidget(buildRates());
    body->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(ui::bandTitle(m(6404), ctx_.EmpresaNom, this));
    layout->addWidget(Toolbar3);
    layout->addLayout(body, 1);
    ui::helpOnF1(ctx_, this, QStringLiteral("editaEmpresa"));
}

QWidget* FormEditaEmpresa::buildRates() {
    const auto m = [&](int n) { return Missatge(ctx_, n); };
    FrameIVA_ = new QGroupBox(m(6991) + ctx_.Exercici, this);
    FrameIVA_->setObjectName(QStringLiteral("FrameIVA"));
    const shell::ExerciseRates rates = shell::currentRates(ctx_);
    const auto rate = [&](const QString& name, const QString& value) {
        QLineEdit* edit = ui::rateEdit(ctx_, name, FrameIVA_);
        edit->setText(value);
        return edit;
    };
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(m(121), FrameIVA_), 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("R.E. %"), FrameIVA_), 0, 2);
    grid->addWidget(new QLabel(m(122), FrameIVA_), 0, 3);
    QList<QWidget*> ring;
    for (int i = 0; i < 4; ++i) {
        grid->addWidget(new QLabel(m(117 + i), FrameIVA_), i + 1, 0);
        if (i < 3) {
            txtIVA_[i] = rate(QStringLiteral("txtIVA%1").arg(i + 1), rates.iva[i]);
            txtRE_[i] = rate(QStringLiteral("txtRE%1").arg(i + 1), rates.re[i]);
            grid->addWidget(txtIVA_[i], i + 1, 1);
            grid->addWidget(txtRE_[i], i + 1, 2);
            ring << txtIVA_[i] << txtRE_[i];
        }
        txtIVAs_[i] = rate(QStringLiteral("txtIVAs%1").arg(i + 1), rates.ivas[i]);
        grid->addWidget(txtIVAs_[i], i + 1, 3);
    }
    for (auto* f : txtIVAs_) ring << f;
    ui::enterMovesAlong(ring);
    auto* button = new QPushButton(m(6992), FrameIVA_);
    button->setObjectName(QStringLiteral("btnGuardaIVA"));
    connect(button, &QPushButton::clicked, this, [this] { btnGuardaIVA(); });
    auto* frameLayout = new QVBoxLayout(FrameIVA_);
    frameLayout->addLayout(grid);
    frameLayout->addWidget(button, 0, Qt::AlignRight);
    return FrameIVA_;
}

void FormEditaEmpresa::Graba_Empresa() {
    if (shell::Graba_Empresa(ctx_, dialogs_, fields_.values())) emit companySaved();
}

void FormEditaEmpresa::btnGuardaIVA() {
    shell::ExerciseRates rates;
    for (int i = 0; i < 3; ++i) {
        rates.iva[i] = txtIVA_[i]->text();
        rates.re[i] = txtRE_[i]->text();
    }
    for (int i = 0; i < 4; ++i) rates.ivas[i] = txtIVAs_[i]->text();
    if (!shell::Graba_Tipus(ctx_, dialogs_, rates)) return;
    emit ratesChanged();
    accept();
}

}  // namespace tallora
