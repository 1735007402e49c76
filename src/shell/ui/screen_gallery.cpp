#include "screen_gallery.h"

#include "blockmes.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "form_configuracio.h"
#include "form_mdi.h"
#include "form_menu.h"
#include "form_seleccio.h"
#include "shell/company_list.h"
#include "shell/exercises.h"
#include "shell/settings_files.h"
#include "shell/startup.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QWidget>

namespace tallora {
namespace {

// Answers every question with Yes, so that sample data can be made through the logic.
class YesDialogs : public ScriptedDialogs {
public:
    Answer yesNo(const QString&, const QString& = {}) override { return Answer::Yes; }
    Answer okCancel(const QString&, const QString& = {}, Icon = Icon::Question) override {
        return Answer::Ok;
    }
};

YesDialogs& dialogs() {
    static YesDialogs d;
    return d;
}

// A program folder and a unit with three companies, the first with two exercises.
struct Sample {
    QTemporaryDir root;
    QString programDir() const { return root.path() + QStringLiteral("/program/"); }
    QString unit() const { return root.path() + QStringLiteral("/unit"); }
};

const Sample& sample(const QString& idioma) {
    static Sample s;
    static bool made = false;
    if (!made) {
        made = true;
        WorkingContext ctx;
        ctx.setIdioma(idioma);
        ctx.programDir = s.programDir();
        ctx.Unitat = s.unit();
        shell::Inicia_Programa(ctx);
        ctx.Unitat = s.unit();
        settings::writeDecimal(ctx.programDir, 44);
        shell::NewCompany companies[] = {
            {QStringLiteral("Ferretería Montseny, S.L."), QStringLiteral("Carrer Major, 12"),
             QStringLiteral("Granollers"), QStringLiteral("08401"), QStringLiteral("B65432187"), true},
            {QStringLiteral("Marta Puig Soler"), QStringLiteral("Calle Alcalá, 140"), QStringLiteral("Madrid"),
             QStringLiteral("28009"), QStringLiteral("38765432X"), false},
            {QStringLiteral("Estanc Can Ribas"), QStringLiteral("Plaça de la Vila, 3"), QStringLiteral("Vic"),
             QStringLiteral("08500"), QStringLiteral("77889900K"), false},
        };
        for (auto& company : companies) shell::Verifica_Empresa(ctx, dialogs(), s.unit(), company);
        shell::Obre_Empresa(ctx, dialogs(), s.unit(), QStringLiteral("B6543218"));
        for (const char* year : {"2025", "2026"}) {
            shell::NewExercise e = shell::defaultNewExercise();
            e.exercici = QString::fromLatin1(year);
            e.iva = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4")};
            e.re = {QStringLiteral("5,2"), QStringLiteral("1,4"), QStringLiteral("0,5")};
            e.ivas = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4"), QStringLiteral("5")};
            shell::Graba_Exercici(ctx, dialogs(), e);
        }
    }
    return s;
}

void pointAtSample(WorkingContext& ctx) {
    const Sample& s = sample(ctx.Idioma);
    ctx.programDir = s.programDir();
    ctx.Unitat = s.unit();
}

void openCompany(WorkingContext& ctx) {
    pointAtSample(ctx);
    shell::Obre_Empresa(ctx, dialogs(), ctx.Unitat, QStringLiteral("B6543218"));
}

void openExercise(WorkingContext& ctx) {
    openCompany(ctx);
    shell::Obre_Exercici(ctx, dialogs(), QStringLiteral("2026"));
}

template <typename Screen>
std::unique_ptr<QWidget> made(WorkingContext& ctx) {
    return std::make_unique<Screen>(ctx, dialogs());
}

}  // namespace

std::vector<GalleryScreen> screenGallery() {
    return {
        {QStringLiteral("FormConfiguracio_first_run"),
         [](WorkingContext& ctx) {
             pointAtSample(ctx);
             return made<FormConfiguracio>(ctx);
         }},
        {QStringLiteral("FormSeleccio"),
         [](WorkingContext& ctx) {
             pointAtSample(ctx);
             return made<FormSeleccio>(ctx);
         }},
        {QStringLiteral("FormSeleccio_new_company"),
         [](WorkingContext& ctx) {
             pointAtSample(ctx);
             auto form = std::make_unique<FormSeleccio>(ctx, dialogs());
             form->Nova_Empresa();
             form->findChild<QLineEdit*>(QStringLiteral("txtnom"))->setText(QStringLiteral("Gestoria Almirall"));
             form->findChild<QLineEdit*>(QStringLiteral("txtNIF"))->setText(QStringLiteral("B0011223"));
             return std::unique_ptr<QWidget>(std::move(form));
         }},
        {QStringLiteral("FormMenu"),
         [](WorkingContext& ctx) {
             openCompany(ctx);
             return made<FormMenu>(ctx);
         }},
        {QStringLiteral("FormMenu_new_exercise"),
         [](WorkingContext& ctx) {
             openCompany(ctx);
             auto form = std::make_unique<FormMenu>(ctx, dialogs());
             form->Nou_Exercici();
             return std::unique_ptr<QWidget>(std::move(form));
         }},
        {QStringLiteral("FormMDI"),
         [](WorkingContext& ctx) {
             openExercise(ctx);
             return made<FormMDI>(ctx);
         }},
        {QStringLiteral("blockmes"),
         [](WorkingContext& ctx) {
             openExercise(ctx);
             auto screen = std::make_unique<blockmes>(ctx, dialogs());
             for (int month : {1, 2, 3}) screen->chkmesos(month)->setChecked(true);
             screen->resize(560, 420);
             return std::unique_ptr<QWidget>(std::move(screen));
         }},
        {QStringLiteral("FormConfiguracio_billing"),
         [](WorkingContext& ctx) {
             openExercise(ctx);
             auto form = std::make_unique<FormConfiguracio>(ctx, dialogs());
             form->Tabula()->setCurrentIndex(3);
             return std::unique_ptr<QWidget>(std::move(form));
         }},
    };
}

}  // namespace tallora
