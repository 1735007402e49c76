#include "session.h"

#include "context/working_context.h"
#include "form_configuracio.h"
#include "form_mdi.h"
#include "form_menu.h"
#include "form_seleccio.h"
#include "shell/exercises.h"
#include "shell/settings_files.h"
#include "shell/startup.h"
#include "widgets/qt_translations.h"

#include <QTabWidget>

#include <memory>

namespace tallora {

Session::Session(WorkingContext& ctx, Dialogs& dialogs, QObject* parent)
    : QObject(parent), ctx_(ctx), dialogs_(dialogs) {}

void Session::start() {
    shell::Inicia_Programa(ctx_);
    if (!settings::isFirstRun(ctx_.programDir)) {
        showCompanies();
        return;
    }
    showFirstSettings(0);
}

void Session::showFirstSettings(int tab) {
    auto* form = new FormConfiguracio(ctx_, dialogs_);
    form->Tabula()->setCurrentIndex(tab);
    auto again = std::make_shared<bool>(false);
    connect(form, &FormConfiguracio::backToCompaniesRequested, this, [form, again] {
        *again = true;
        form->close();
    });
    connect(form, &QDialog::finished, this, [this, form, again] {
        if (*again) {
            showFirstSettings(form->Tabula()->currentIndex());
            return;
        }
        // Leaving the first settings in any way ends the first run, with the decimal mark
        // they showed; otherwise they would come back at every start.
        if (settings::isFirstRun(ctx_.programDir))
            settings::writeDecimal(ctx_.programDir, settings::readDecimal(ctx_.programDir));
        showCompanies();
    });
    show(form);
}

void Session::showCompanies() {
    auto* form = new FormSeleccio(ctx_, dialogs_);
    connect(form, &QDialog::finished, this, [this](int result) {
        if (result == QDialog::Accepted)
            showExercises();
        else
            emit finished();
    });
    show(form);
}

void Session::showExercises() {
    auto* form = new FormMenu(ctx_, dialogs_);
    connect(form, &QDialog::finished, this, [this](int result) {
        if (result == QDialog::Accepted)
            showShell();
        else
            showCompanies();
    });
    show(form);
}

void Session::showShell() {
    auto* shell = new FormMDI(ctx_, dialogs_);
    connect(shell, &FormMDI::closed, this, [this](bool toCompanies) {
        shell::restoreCompanyFolder(ctx_);
        if (toCompanies)
            showCompanies();
        else
            emit finished();
    });
    show(shell);
    shell->startAssistant();
}

void Session::show(QWidget* screen) {
    ui::useQtTranslations(ctx_.Idioma);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    current_ = screen;
    screen->show();
    screen->raise();
    screen->activateWindow();
}

}  // namespace tallora
