#include "form_vista_rapida.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "shell/assistant_figures.h"
#include "shell/menu_tree.h"
#include "shell/settings_files.h"
#include "store/store_error.h"
#include "widgets/entry_parts.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tallora {

FormVistaRapida::FormVistaRapida(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("FormVistaRapida"));
    setWindowTitle(Missatge(ctx_, 6935));

    auto* lbl27 = new QLabel(Missatge(ctx_, 6936), this);
    lbl27->setObjectName(QStringLiteral("lbl27"));
    lbl27->setStyleSheet(QStringLiteral("font-size: 12pt; color: #33475b;"));
    Check1 = new QCheckBox(Missatge(ctx_, 6943), this);
    Check1->setObjectName(QStringLiteral("Check1"));
    Check1->setChecked(settings::readSplash(ctx_.programDir) == 1);

    // The page keeps its size in the middle of the window, however large the shell is.
    auto* page = new QWidget(this);
    page->setMaximumWidth(1040);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(14);
    column->addWidget(lbl27);
    column->addWidget(buildLinks());
    column->addWidget(buildFigures());
    column->addWidget(Check1);
    auto* centre = new QHBoxLayout;
    centre->addStretch(1);
    centre->addWidget(page, 4);
    centre->addStretch(1);

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->addWidget(
        ui::bandTitle(Missatge(ctx_, 6935), ctx_.EmpresaNom, this, QStringLiteral("lbl28")));
    root->addStretch(1);
    root->addLayout(centre);
    root->addStretch(2);
    ui::helpOnF1(ctx_, this, QStringLiteral("bloqmeses"));
    refresh();
}

QWidget* FormVistaRapida::buildLinks() {
    auto* box = new QWidget(this);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(4);
    const int headings[] = {6932, 6933, 6934};
    const char* headingNames[] = {"lbl19", "lbl20", "lbl21"};
    int rows[3] = {1, 1, 1};
    for (int c = 0; c < 3; ++c) {
        QLabel* heading = ui::heading(Missatge(ctx_, headings[c]), box);
        heading->setObjectName(QLatin1String(headingNames[c]));
        grid->addWidget(heading, 0, c);
    }
    for (const shell::AssistantLink& link : shell::assistantLinks()) {
        auto* button = new QPushButton(Missatge(ctx_, link.caption), box);
        button->setObjectName(QLatin1String(link.name));
        button->setFlat(true);
        button->setCursor(Qt::PointingHandCursor);
        button->setStyleSheet(QStringLiteral(
            "QPushButton { text-align: left; color: #1a4f8b; border: none; padding: 3px 2px; }"
            "QPushButton:hover, QPushButton:focus { text-decoration: underline; }"
            "QPushButton:disabled { color: #8a8a8a; }"));
        const bool shown = shell::assistantLinkShown(ctx_, link);
        button->setVisible(shown);
        // A link to a screen the program does not offer yet stands greyed, as its menu entry.
        const shell::MenuEntry* menuEntry = shell::findMenuEntry(QLatin1String(link.menuEntry));
        button->setEnabled(menuEntry && shell::menuEntryAvailable(ctx_, *menuEntry));
        const QString entry = QLatin1String(link.menuEntry);
        connect(button, &QPushButton::clicked, this, [this, entry] { emit entryRequested(entry); });
        // Hidden links leave no gap: the column closes up.
        if (shown) grid->addWidget(button, rows[link.column]++, link.column);
    }
    grid->setRowStretch(7, 1);
    // A shop's exercise has no customers: its column goes with its links.
    if (ctx_.ModeExercici == QStringLiteral("TICKETS"))
        grid->itemAtPosition(0, 0)->widget()->hide();
    return box;
}

QWidget* FormVistaRapida::buildFigures() {
    auto* Frame1 = new QGroupBox(Missatge(ctx_, 6937), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    auto* form = new QFormLayout(Frame1);
    form->setLabelAlignment(Qt::AlignLeft);
    const auto figure = [&](const char* name, const char* label, int caption) {
        auto* field = new QLineEdit(Frame1);
        field->setObjectName(QLatin1String(name));
        field->setReadOnly(true);
        field->setFocusPolicy(Qt::NoFocus);
        field->setAlignment(Qt::AlignRight);
        field->setMaximumWidth(200);
        auto* l = new QLabel(Missatge(ctx_, caption), Frame1);
        l->setObjectName(QLatin1String(label));
        form->addRow(l, field);
        return field;
    };
    txtVentas = figure("txtVentas", "lbl22", 6938);
    txtGastos = figure("txtGastos", "lbl23", 6939);
    txtRecibosPendientes = figure("txtRecibosPendientes", "lbl24", 6940);
    txtFacturasPendientes = figure("txtFacturasPendientes", "lbl25", 6941);
    txtsaldobancos = figure("txtsaldobancos", "lbl26", 6942);
    return Frame1;
}

void FormVistaRapida::refresh() {
    shell::AssistantFigures f;
    try {
        f = shell::assistantFigures(ctx_);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
        return;
    }
    txtVentas->setText(f.txtVentas);
    txtGastos->setText(f.txtGastos);
    txtRecibosPendientes->setText(f.txtRecibosPendientes);
    txtFacturasPendientes->setText(f.txtFacturasPendientes);
    txtsaldobancos->setText(f.txtsaldobancos);
}

void FormVistaRapida::closeEvent(QCloseEvent* event) {
    if (!settings::writeSplash(ctx_.programDir, Check1->isChecked() ? 1 : 0))
        dialogs_.stop(
            fixedText(ctx_, QStringLiteral("No se ha podido guardar la preferencia del asistente."),
                      QStringLiteral("No s'ha pogut desar la preferència de l'assistent.")));
    event->accept();
}

void FormVistaRapida::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        ui::closeScreen(this);
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        if (auto* button = qobject_cast<QPushButton*>(focusWidget())) {
            button->click();
            return;
        }
    QWidget::keyPressEvent(event);
}

}  // namespace tallora
