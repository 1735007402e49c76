#include "form_mdi.h"

#include "context/program.h"
#include "context/working_context.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QStatusBar>
#include <QVBoxLayout>

namespace tallora {

FormMDI::FormMDI(WorkingContext& ctx, QWidget* parent)
    : QMainWindow(parent), ctx_(ctx), mdi_(new QMdiArea(this)) {
    setObjectName(QStringLiteral("FormMDI"));
    setWindowTitle(programName());
    mdi_->setObjectName(QStringLiteral("MDIArea"));
    mdi_->setBackground(QColor(0x5A, 0x6E, 0x82));

    // The band over the working area names the open company, or the program before one is open.
    auto* band = new QFrame(this);
    band->setObjectName(QStringLiteral("Band"));
    band->setStyleSheet(QStringLiteral("#Band { background: #1F3A56; } QLabel { color: white; }"));
    lblEmpresa_ = new QLabel(ctx_.EmpresaNom.isEmpty() ? programName() : ctx_.EmpresaNom, band);
    lblEmpresa_->setObjectName(QStringLiteral("lblEmpresa"));
    QFont bandFont = lblEmpresa_->font();
    bandFont.setPointSizeF(bandFont.pointSizeF() * 1.5);
    bandFont.setBold(true);
    lblEmpresa_->setFont(bandFont);
    auto* version = new QLabel(programVersion(), band);
    version->setObjectName(QStringLiteral("lblVersion"));
    auto* bandLayout = new QHBoxLayout(band);
    bandLayout->setContentsMargins(16, 10, 16, 10);
    bandLayout->addWidget(lblEmpresa_);
    bandLayout->addStretch();
    bandLayout->addWidget(version);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(band);
    layout->addWidget(mdi_, 1);
    setCentralWidget(central);

    QStatusBar* barra = statusBar();
    barra->setObjectName(QStringLiteral("Barra"));
    for (int i = 0; i < 3; ++i) {
        panels_[i] = new QLabel(barra);
        panels_[i]->setObjectName(QStringLiteral("BarraPanel%1").arg(i + 1));
        panels_[i]->setMinimumWidth(120);
        // Panel 2 takes the free width: it carries the longest texts.
        barra->addPermanentWidget(panels_[i], i == 1 ? 1 : 0);
    }
    panels_[2]->setText(ctx_.Exercici);
    resize(1024, 700);
}

QLabel* FormMDI::statusPanel(int n) const { return (n >= 1 && n <= 3) ? panels_[n - 1] : nullptr; }

}  // namespace tallora
