#include "screen_gallery.h"
#include "aeat/ui/form_modelos.h"
#include "purchases_gallery.h"
#include "sales_gallery.h"
#include "treasury_gallery.h"

#include "blockmes.h"
#include "books/ui/form_llibres.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "form_configuracio.h"
#include "form_edita_empresa.h"
#include "form_mdi.h"
#include "form_menu.h"
#include "form_seleccio.h"
#include "form_vista_rapida.h"
#include "interchange/ui/frm_importar.h"
#include "master/customers.h"
#include "master/price_references.h"
#include "master/suppliers.h"
#include "master/treasury_accounts.h"
#include "master/ui/accounts_form.h"
#include "master/ui/customers_form.h"
#include "master/ui/references_form.h"
#include "master/ui/suppliers_form.h"
#include "master/ui/treasury_accounts_form.h"
#include "report/report_job.h"
#include "schema/upgrades.h"
#include "shell/company_list.h"
#include "shell/exercises.h"
#include "shell/settings_files.h"
#include "shell/startup.h"
#include "verifactu/ui/form_verifactu.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRadioButton>
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

// Customers, suppliers, treasury accounts and references a small shop would have.
void fillMasterFiles(WorkingContext& ctx) {
    ctx.Tesoreria = true;
    ctx.Facturacio = true;
    schema::Actualitza_Bases(ctx);
    const char* customers[][5] = {
        {"Construccions Puigdemunt, S.L.", "Av. Catalunya, 45", "Granollers", "08401", "B08123456"},
        {"Bricolatge Vallès, S.C.P.", "C/ Sant Jaume, 8", "Cardedeu", "08440", "J60123457"},
        {"Jordi Casals Ferrer", "C/ de la Riera, 3", "La Garriga", "08530", "46123456P"},
        {"Instal·lacions Tort, S.L.", "Polígon Can Volart, nau 7", "Parets del Vallès", "08150",
         "B62345678"},
        {"Ajuntament de Canovelles", "Plaça de l'Ajuntament, 1", "Canovelles", "08420",
         "P0803900J"},
        {"Reformas Hermanos Gil, S.L.", "C/ Girona, 112", "Granollers", "08402", "B65987654"},
        {"Maria Àngels Soler Pujol", "C/ Corró, 221", "Granollers", "08401", "38987654M"},
        {"Fusteria Can Mas", "Ctra. de Ribes, km 3", "Les Franqueses", "08520", "B61234987"},
    };
    for (const auto& row : customers) {
        master::Customer c;
        c.nom = QString::fromUtf8(row[0]);
        c.direccio = QString::fromUtf8(row[1]);
        c.poblacio = QString::fromUtf8(row[2]);
        c.cp = QString::fromUtf8(row[3]);
        c.nif = QString::fromUtf8(row[4]);
        c.provincia = QStringLiteral("Barcelona");
        c.telefon = QStringLiteral("938 70 12 34");
        c.formaPago = QStringLiteral("Transferencia 30 días");
        if (master::saveCustomer(ctx, dialogs(), c, true).kind != master::Outcome::Kind::Done)
            qFatal("sample customer refused: %s", qPrintable(dialogs().lastText()));
    }
    const char* suppliers[][3] = {
        {"Distribuciones Ferreteras del Norte, SA", "Bilbao", "A48123456"},
        {"Suministros Industriales Vallès, S.L.", "Mollet del Vallès", "B08987654"},
        {"Pintures Tarragona, S.A.", "Reus", "A43123987"},
        {"Endesa Energía, S.A.U.", "Madrid", "A81948077"},
        {"Telefónica de España, S.A.U.", "Madrid", "A82018474"},
    };
    for (const auto& row : suppliers) {
        master::Supplier p;
        p.nom = QString::fromUtf8(row[0]);
        p.poblacio = QString::fromUtf8(row[1]);
        p.nif = QString::fromUtf8(row[2]);
        // A sample row the program refuses would silently leave the screens without it.
        if (master::saveSupplier(ctx, dialogs(), p, true).kind != master::Outcome::Kind::Done)
            qFatal("sample supplier refused: %s", qPrintable(dialogs().lastText()));
    }
    master::TreasuryAccount cash{
        {}, master::kGrupCaja, QStringLiteral("Caja tienda"), {}, QStringLiteral("350,00")};
    master::TreasuryAccount bank{{},
                                 master::kGrupBancos,
                                 QStringLiteral("CaixaBank c/c"),
                                 QStringLiteral("21000001230200012345"),
                                 QStringLiteral("12.480,15")};
    master::saveTreasuryAccount(ctx, dialogs(), cash, true);
    master::saveTreasuryAccount(ctx, dialogs(), bank, true);
    master::OtherAccount loan{{},
                              QStringLiteral("170"),
                              QStringLiteral("Deudas a largo plazo"),
                              QStringLiteral("Préstamo ICO local"),
                              QStringLiteral("18.000,00"),
                              QStringLiteral("P")};
    master::OtherAccount owner{{},
                               QStringLiteral("550"),
                               QStringLiteral("Cuenta corriente con socios"),
                               QStringLiteral("Cuenta del titular"),
                               QStringLiteral("0"),
                               QStringLiteral("A")};
    master::saveOtherAccount(ctx, dialogs(), loan, true);
    master::saveOtherAccount(ctx, dialogs(), owner, true);
    const char* references[][3] = {
        {"TORN-M8", "Tornillo hexagonal M8 x 40 (caja 100)", "12,50"},
        {"PINT-BL15", "Pintura plástica blanca 15 l", "48,90"},
        {"TALADRO-18V", "Taladro percutor 18 V con dos baterías", "139,00"},
        {"HORA-MONT", "Hora de montaje en obra", "32,00"},
    };
    for (const auto& row : references) {
        master::PriceReference r{
            {}, QString::fromUtf8(row[0]), QString::fromUtf8(row[1]), QString::fromUtf8(row[2])};
        master::saveReference(ctx, dialogs(), r, true);
    }
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
             QStringLiteral("Granollers"), QStringLiteral("08401"), QStringLiteral("B65432187"),
             true},
            {QStringLiteral("Marta Puig Soler"), QStringLiteral("Calle Alcalá, 140"),
             QStringLiteral("Madrid"), QStringLiteral("28009"), QStringLiteral("38765432X"), false},
            {QStringLiteral("Estanc Can Ribas"), QStringLiteral("Plaça de la Vila, 3"),
             QStringLiteral("Vic"), QStringLiteral("08500"), QStringLiteral("77889900K"), false},
        };
        for (auto& company : companies) shell::Verifica_Empresa(ctx, dialogs(), s.unit(), company);
        shell::Obre_Empresa(ctx, dialogs(), s.unit(), QStringLiteral("B6543218"));
        for (const char* year : {"2025", "2026"}) {
            shell::NewExercise e = shell::defaultNewExercise();
            e.exercici = QString::fromLatin1(year);
            e.iva = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4")};
            e.re = {QStringLiteral("5,2"), QStringLiteral("1,4"), QStringLiteral("0,5")};
            e.ivas = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4"),
                      QStringLiteral("5")};
            shell::Graba_Exercici(ctx, dialogs(), e);
        }
        shell::Obre_Exercici(ctx, dialogs(), QStringLiteral("2026"));
        fillMasterFiles(ctx);
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

// A master screen on the sample exercise with treasury and billing on, browsing the
// second row of its list, or changing it.
template <typename Screen>
GalleryScreen masterScreen(const QString& name, bool changing) {
    return {name + (changing ? QStringLiteral("_editing") : QString()),
            [changing](WorkingContext& ctx) {
                openExercise(ctx);
                ctx.Tesoreria = true;
                ctx.Facturacio = true;
                auto screen = std::make_unique<Screen>(ctx, dialogs());
                screen->resize(980, 620);
                screen->list()->setCurrentRow(std::min(1, screen->list()->count() - 1));
                if (changing) screen->Modificar();
                return std::unique_ptr<QWidget>(std::move(screen));
            }};
}

// The import and export screen: the export tab after an export of the sample, the import
// tab with that file chosen, and after it was imported whole back into the sample (which
// leaves the sample's data as they were).
void addInterchangeScreens(std::vector<GalleryScreen>& screens) {
    static QTemporaryDir folder;
    const auto file = [] { return folder.filePath(QStringLiteral("B6543218_intercambio.dat")); };
    const auto form = [](WorkingContext& ctx, int tab) {
        openExercise(ctx);
        ctx.Tesoreria = true;
        auto screen = std::make_unique<frmImportar>(ctx, dialogs());
        screen->TabStrip1()->setCurrentIndex(tab);
        return screen;
    };
    screens.push_back(
        {QStringLiteral("frmImportar_exportacion"), [form, file](WorkingContext& ctx) {
             auto screen = form(ctx, 0);
             screen->findChild<QLineEdit*>(QStringLiteral("txtDirExporta"))->setText(file());
             screen->btn_Exporta();
             return std::unique_ptr<QWidget>(std::move(screen));
         }});
    screens.push_back(
        {QStringLiteral("frmImportar_importacion"), [form, file](WorkingContext& ctx) {
             auto screen = form(ctx, 1);
             screen->setImportFile(file());
             return std::unique_ptr<QWidget>(std::move(screen));
         }});
    screens.push_back({QStringLiteral("frmImportar_importado"), [form, file](WorkingContext& ctx) {
                           auto screen = form(ctx, 1);
                           screen->setImportFile(file());
                           screen->btn_Importa();
                           return std::unique_ptr<QWidget>(std::move(screen));
                       }});
}

}  // namespace

QSize smallScreenArea() {
    return {1366, 768 - 70};
}

QString overflowOnSmallScreen(const QWidget* screen) {
    const QSize need = screen->minimumSizeHint().expandedTo(screen->minimumSize());
    const QSize area = smallScreenArea();
    if (need.width() <= area.width() && need.height() <= area.height()) return {};
    return QStringLiteral("needs %1×%2").arg(need.width()).arg(need.height());
}

void fitToSmallScreen(QWidget* screen) {
    const QSize area = smallScreenArea();
    if (qobject_cast<QDialog*>(screen))
        screen->resize(screen->size().expandedTo(screen->sizeHint()).boundedTo(area));
    else
        screen->resize(area);
}

std::vector<GalleryScreen> screenGallery() {
    std::vector<GalleryScreen> screens{
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
             form->findChild<QLineEdit*>(QStringLiteral("txtnom"))
                 ->setText(QStringLiteral("Gestoria Almirall"));
             form->findChild<QLineEdit*>(QStringLiteral("txtNIF"))
                 ->setText(QStringLiteral("B0011223"));
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
        {QStringLiteral("FormEditaEmpresa"),
         [](WorkingContext& ctx) {
             openExercise(ctx);
             return made<FormEditaEmpresa>(ctx);
         }},
        {QStringLiteral("FormConfiguracio_billing"),
         [](WorkingContext& ctx) {
             openExercise(ctx);
             auto form = std::make_unique<FormConfiguracio>(ctx, dialogs());
             form->Tabula()->setCurrentIndex(3);
             return std::unique_ptr<QWidget>(std::move(form));
         }},
    };
    for (bool changing : {false, true}) {
        screens.push_back(masterScreen<frmclients>(QStringLiteral("frmclients"), changing));
        screens.push_back(masterScreen<frmProveidors>(QStringLiteral("frmProveidors"), changing));
        screens.push_back(masterScreen<formComptes>(QStringLiteral("formComptes"), changing));
        screens.push_back(
            masterScreen<frmTesoreria_cuentas>(QStringLiteral("frmTesoreria_cuentas"), changing));
        screens.push_back(masterScreen<frmTesoreria_otrascuentas>(
            QStringLiteral("frmTesoreria_otrascuentas"), changing));
        screens.push_back(masterScreen<frmReferencias>(QStringLiteral("frmReferencias"), changing));
    }
    // The commercial tab of a customer being changed, with a SEPA mandate and an account.
    screens.push_back(
        {QStringLiteral("frmclients_mandate"), [](WorkingContext& ctx) {
             openExercise(ctx);
             ctx.Tesoreria = true;
             ctx.Facturacio = true;
             auto screen = std::make_unique<frmclients>(ctx, dialogs());
             screen->resize(980, 620);
             screen->list()->setCurrentRow(0);
             screen->Modificar();
             screen->findChild<QTabWidget*>(QStringLiteral("Tabula"))->setCurrentIndex(1);
             const auto set = [&](const char* name, const char* text) {
                 screen->findChild<QLineEdit*>(QLatin1String(name))
                     ->setText(QString::fromUtf8(text));
             };
             set("txtFacturacionFormadePago", "Recibo domiciliado");
             set("txtFacturacionEntidadBancaria", "CaixaBank");
             set("txtFacturacionCCC", "2100 0418 45 0200051331");
             set("txtMandatoReferencia", "CLI-0001-2025");
             set("txtMandatoFirma", "15/01/2025");
             return std::unique_ptr<QWidget>(std::move(screen));
         }});
    addSalesScreens(screens, openExercise, dialogs());
    addPurchasesScreens(screens, openExercise, dialogs());
    addTreasuryScreens(screens, openExercise, dialogs());
    // The returns, each on the sample year's first quarter, where its invoices are (the 347 on
    // the year).
    for (const auto& [name, model] : {std::pair{"FormModelos_303", aeat::Model::M303},
                                      {"FormModelos_111", aeat::Model::M111},
                                      {"FormModelos_130", aeat::Model::M130},
                                      {"FormModelos_349", aeat::Model::M349},
                                      {"FormModelos_347", aeat::Model::M347}})
        screens.push_back({QString::fromLatin1(name), [model](WorkingContext& ctx) {
                               openExercise(ctx);
                               auto screen = std::make_unique<FormModelos>(ctx, dialogs());
                               screen->resize(900, 700);
                               screen->chooseModel(model);
                               screen->choosePeriod(QStringLiteral("1T"));
                               return std::unique_ptr<QWidget>(std::move(screen));
                           }});
    // Last, so that its figures are those of the sales, purchases and treasury above.
    screens.push_back({QStringLiteral("FormVistaRapida"), [](WorkingContext& ctx) {
                           openExercise(ctx);
                           ctx.Tesoreria = true;
                           auto screen = std::make_unique<FormVistaRapida>(ctx, dialogs());
                           screen->resize(1200, 640);
                           return std::unique_ptr<QWidget>(std::move(screen));
                       }});
    // The books dialog on each of its tabs; the listings with the customers' extract chosen.
    static report::ReportJob booksJob;
    for (const char* tab : {"gastos", "ingresos", "Suplidos", "informes", "listados"}) {
        screens.push_back(
            {QStringLiteral("FormLLibres_") + QLatin1String(tab), [tab](WorkingContext& ctx) {
                 openExercise(ctx);
                 ctx.Tesoreria = true;
                 auto screen = std::make_unique<FormLLibres>(ctx, dialogs(), booksJob);
                 QTabWidget* tabs = screen->TabStrip1();
                 for (int i = 0; i < tabs->count(); ++i)
                     if (tabs->widget(i)->objectName() == QLatin1String(tab))
                         tabs->setCurrentIndex(i);
                 if (auto* customers = screen->findChild<QRadioButton*>(QStringLiteral("OpExt4")))
                     customers->click();
                 return std::unique_ptr<QWidget>(std::move(screen));
             }});
    }
    addInterchangeScreens(screens);
    // The records of the sample's invoices, none sent yet.
    screens.push_back({QStringLiteral("FormVerifactu"), [](WorkingContext& ctx) {
                           openExercise(ctx);
                           return made<FormVerifactu>(ctx);
                       }});
    return screens;
}

}  // namespace tallora
