#include "form_mdi.h"

#include "blockmes.h"
#include "books/ui/form_llibres.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/program.h"
#include "context/working_context.h"
#include "form_configuracio.h"
#include "form_edita_empresa.h"
#include "form_vista_rapida.h"
#include "interchange/ui/frm_importar.h"
#include "master/ui/accounts_form.h"
#include "master/ui/customers_form.h"
#include "master/ui/references_form.h"
#include "master/ui/suppliers_form.h"
#include "master/ui/treasury_accounts_form.h"
#include "purchases/ui/form_compres.h"
#include "purchases/ui/form_cons_in.h"
#include "purchases/ui/form_cons_supl.h"
#include "purchases/ui/form_suplidos.h"
#include "report/report_job.h"
#include "report/ui/qt_report_output.h"
#include "sales/ui/form_cons_docs.h"
#include "sales/ui/form_cons_out.h"
#include "sales/ui/form_vendes.h"
#include "schema/maintenance.h"
#include "shell/menu_tree.h"
#include "shell/settings_files.h"
#include "shell/startup.h"
#include "store/database.h"
#include "store/store_error.h"
#include "treasury/other_movements.h"
#include "treasury/ui/form_cartera_recibos.h"
#include "treasury/ui/form_cartera_run.h"
#include "treasury/ui/form_cons_extracto.h"
#include "treasury/ui/form_cons_otros.h"
#include "aeat/ui/form_modelos.h"
#include "treasury/ui/form_extracto_banco.h"
#include "treasury/ui/frm_tesoreria_otros.h"
#include "verifactu/record_file.h"
#include "verifactu/submission.h"
#include "verifactu/system_identity.h"
#include "verifactu/ui/form_verifactu.h"
#include "widgets/field_behaviour.h"
#include "widgets/obre_ajuda.h"
#include "widgets/screen_style.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace tallora {
namespace {

bool ticketsMode(const WorkingContext& ctx) {
    return ctx.ModeExercici == QStringLiteral("TICKETS");
}

}  // namespace

FormMDI::FormMDI(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent),
      ctx_(ctx),
      dialogs_(dialogs),
      mdi_(new QMdiArea(this)),
      reportJob_(std::make_unique<report::ReportJob>()) {
    setObjectName(QStringLiteral("FormMDI"));
    setWindowTitle(programName());
    const bool pantallaKnown = shell::Inicia_MDI(ctx_, &dialogs_);
    if (!pantallaKnown) {
        const QScreen* screen = QGuiApplication::primaryScreen();
        ctx_.PantallaMax = shell::pantallaMaxForHeight(screen ? screen->geometry().height() : 0);
    }
    mdi_->setObjectName(QStringLiteral("MDIArea"));
    mdi_->setBackground(QColor(0x5A, 0x6E, 0x82));
    buildBand();
    buildMenus();
    buildToolBar();

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
    recordsPanel_ = new QLabel(barra);
    recordsPanel_->setObjectName(QStringLiteral("BarraVerifactu"));
    barra->addPermanentWidget(recordsPanel_);
    refreshRecordsPanel();
    // Records wait quietly while there is no connection; the count keeps the user told.
    auto* recount = new QTimer(this);
    connect(recount, &QTimer::timeout, this, &FormMDI::refreshRecordsPanel);
    recount->start(60000);
    connect(mdi_, &QMdiArea::subWindowActivated, this, [this] { refreshRecordsPanel(); });

    // The month lock lives hidden for as long as the shell: its boxes are the lock.
    blockmes_ = new blockmes(ctx_, dialogs_);
    blockmesWindow_ = mdi_->addSubWindow(blockmes_);
    blockmesWindow_->setAttribute(Qt::WA_DeleteOnClose, false);
    blockmesWindow_->hide();
    connect(blockmes_, &blockmes::hideRequested, blockmesWindow_, &QWidget::hide);
    resize(1024, 700);
    applyScreenMode();
}

void FormMDI::refreshRecordsPanel() {
    int waiting = 0;
    try {
        if (!ctx_.Exercici.isEmpty())
            waiting = verifactu::pendingCount(verifactu::recordsPath(ctx_));
    } catch (const store::StoreError&) {
        // A file that cannot be read now is counted on the next round.
    }
    recordsPanel_->setText(fixedText(ctx_, QStringLiteral("VERI*FACTU: %1 por enviar"),
                                     QStringLiteral("VERI*FACTU: %1 per enviar"))
                               .arg(waiting));
    recordsPanel_->setVisible(waiting > 0);
}

void FormMDI::buildBand() {
    const QString company = ctx_.EmpresaNom.isEmpty() ? programName() : ctx_.EmpresaNom;
    QWidget* band = ui::bandTitle(ticketsMode(ctx_) ? Missatge(ctx_, 6629) + company : company,
                                  programName() + QStringLiteral(" ") + programVersion(), this,
                                  QStringLiteral("lblEmpresa"), QStringLiteral("Label1"));
    lblEmpresa_ = band->findChild<QLabel*>(QStringLiteral("lblEmpresa"));

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(band);
    layout->addWidget(mdi_, 1);
    setCentralWidget(central);
}

void FormMDI::buildMenus() {
    QHash<QString, QMenu*> menus;
    for (const auto& entry : shell::menuTree()) {
        QAction* action = nullptr;
        if (entry.kind == shell::MenuEntry::Kind::Menu) {
            QMenu* menu = menuBar()->addMenu(shell::menuCaption(ctx_, entry));
            menu->setObjectName(entry.name);
            menus.insert(entry.name, menu);
            action = menu->menuAction();
            if (entry.name == QStringLiteral("Mnu6"))
                connect(menu, &QMenu::aboutToShow, this, [this, menu] { fillWindowMenu(menu); });
        } else if (entry.kind == shell::MenuEntry::Kind::Separator) {
            action = menus.value(entry.menu)->addSeparator();
        } else {
            action = menus.value(entry.menu)->addAction(shell::menuCaption(ctx_, entry));
            action->setEnabled(shell::menuEntryAvailable(ctx_, entry));
            const QString name = entry.name;
            connect(action, &QAction::triggered, this, [this, name] { runEntry(name); });
        }
        action->setObjectName(entry.name);
        action->setVisible(shell::menuEntryVisible(ctx_, entry.name));
        actions_.insert(entry.name, action);
    }
    shellHelp_ = new QShortcut(QKeySequence(Qt::Key_F1), this);
    shellHelp_->setObjectName(QStringLiteral("shellHelp"));
    connect(shellHelp_, &QShortcut::activated, this,
            [this] { ui::Obre_Ajuda(ctx_, QStringLiteral("indice")); });
    connect(qApp, &QApplication::focusChanged, this, &FormMDI::followHelpOwner);
}

void FormMDI::followHelpOwner() {
    const QWidget* focus = QApplication::focusWidget();
    const bool childOwnsF1 = focus && isAncestorOf(focus) && !ui::helpKeyOf(focus, this).isEmpty();
    shellHelp_->setEnabled(!childOwnsF1);
}

void FormMDI::buildToolBar() {
    BarraMDI_ = addToolBar(QStringLiteral("BarraMDI"));
    BarraMDI_->setObjectName(QStringLiteral("BarraMDI"));
    BarraMDI_->setMovable(false);
    BarraMDI_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const auto& button : shell::toolBar()) {
        if (button.key.isEmpty()) {
            BarraMDI_->addSeparator();
            continue;
        }
        QAction* a = BarraMDI_->addAction(Missatge(ctx_, button.caption));
        a->setObjectName(button.key);
        const QString entry = button.menuEntry;
        if (entry.isEmpty()) {
            connect(a, &QAction::triggered, this,
                    [this] { ui::Obre_Ajuda(ctx_, QStringLiteral("indice")); });
            continue;
        }
        const shell::MenuEntry* menuEntry = shell::findMenuEntry(entry);
        a->setEnabled(menuEntry && shell::menuEntryAvailable(ctx_, *menuEntry));
        a->setVisible(shell::menuEntryVisible(ctx_, entry));
        connect(a, &QAction::triggered, this, [this, entry] { runEntry(entry); });
    }
}

void FormMDI::runEntry(const QString& name) {
    if (name == QStringLiteral("empresa") || name == QStringLiteral("Nova")) {
        leave(true);
    } else if (name == QStringLiteral("sortir")) {
        leave(false);
    } else if (name == QStringLiteral("mnubloc")) {
        showMonthLock();
    } else if (name == QStringLiteral("mnuConfiguracio")) {
        openSettings();
    } else if (name == QStringLiteral("mnullibres")) {
        openBooks();
    } else if (name == QStringLiteral("mnuEditarEmpresa")) {
        openCompanyData();
    } else if (name == QStringLiteral("mnuimportar")) {
        openInterchange();
    } else if (name == QStringLiteral("mnuVerifactu")) {
        openRecords();
    } else if (name == QStringLiteral("mnuAsistente")) {
        openAssistant();
    } else if (name == QStringLiteral("mnuRepara") || name == QStringLiteral("mnuCompactar")) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        if (name == QStringLiteral("mnuRepara"))
            schema::Repara_Bases(ctx_, dialogs_);
        else
            schema::Compacta_Bases(ctx_, dialogs_);
        QApplication::restoreOverrideCursor();
    } else if (name == QStringLiteral("Clients")) {
        if (ctx_.ModeExercici != QStringLiteral("TICKETS")) openMaster<frmclients>();
    } else if (name == QStringLiteral("Proveidorsbd")) {
        openMaster<frmProveidors>();
    } else if (name == QStringLiteral("Comptesbd")) {
        openMaster<formComptes>();
    } else if (name == QStringLiteral("frasemes")) {
        openSales();
    } else if (name == QStringLiteral("frasreb")) {
        openPurchases();
    } else if (name == QStringLiteral("MnuSuplidos")) {
        openProvisions();
    } else if (name == QStringLiteral("consing")) {
        openSalesInquiry();
    } else if (name == QStringLiteral("mnuconsPre")) {
        openDocumentInquiry(sales::DocType::Presupuesto);
    } else if (name == QStringLiteral("mnuconsPro")) {
        openDocumentInquiry(sales::DocType::Proforma);
    } else if (name == QStringLiteral("mnuconsBor")) {
        openDocumentInquiry(sales::DocType::Borrador);
    } else if (name == QStringLiteral("mnuconsAlb")) {
        openDocumentInquiry(sales::DocType::Albaran);
    } else if (name == QStringLiteral("consdes")) {
        openPurchaseInquiry();
    } else if (name == QStringLiteral("mnuconsSupl")) {
        openProvisionInquiry();
    } else if (name == QStringLiteral("mnucartera")) {
        openPortfolio();
    } else if (name == QStringLiteral("mnu_entradas")) {
        openScreen<FormCarteraCobrar>([this] { return new FormCarteraCobrar(ctx_, dialogs_); });
    } else if (name == QStringLiteral("mnu_salidas")) {
        openScreen<FormCarteraPagar>([this] { return new FormCarteraPagar(ctx_, dialogs_); });
    } else if (name == QStringLiteral("mnu_movimientos")) {
        openOtherMovements();
    } else if (name == QStringLiteral("mnuConsOtros")) {
        openOtherMovementsInquiry();
    } else if (name == QStringLiteral("mnu_extractos")) {
        openStatement();
    } else if (name == QStringLiteral("mnuNorma43")) {
        openScreen<FormExtractoBanco>([this] { return new FormExtractoBanco(ctx_, dialogs_); });
    } else if (name == QStringLiteral("mnuModelos")) {
        openScreen<FormModelos>([this] { return new FormModelos(ctx_, dialogs_); });
    } else if (name == QStringLiteral("mnu_cuentas")) {
        openMaster<frmTesoreria_cuentas>();
    } else if (name == QStringLiteral("mnu_contrapartidas")) {
        openMaster<frmTesoreria_otrascuentas>();
    } else if (name == QStringLiteral("mnuReferencias")) {
        openMaster<frmReferencias>();
    } else if (name == QStringLiteral("contingut")) {
        ui::Obre_Ajuda(ctx_, QStringLiteral("indice"));
    } else if (name == QStringLiteral("Sobreombrelsoft")) {
        QMessageBox::about(this, programName(),
                           QStringLiteral("%1 %2\n%3\n\n%4")
                               .arg(programName(), programVersion(), ctx_.EmpresaNom,
                                    verifactu::declarationOfConformity(ctx_)));
    }
}

void FormMDI::showMonthLock() {
    blockmes_->Carrega();
    blockmesWindow_->showNormal();
    mdi_->setActiveSubWindow(blockmesWindow_);
    Barra_Estat(QString());
}

void FormMDI::openSettings() {
    auto* settings = new FormConfiguracio(ctx_, dialogs_, this);
    settings->setAttribute(Qt::WA_DeleteOnClose);
    connect(settings, &FormConfiguracio::closeChildrenRequested, this, &FormMDI::Tanca_Filles);
    connect(settings, &FormConfiguracio::screenModeChanged, this, &FormMDI::applyScreenMode);
    connect(settings, &FormConfiguracio::backToCompaniesRequested, this, [this, settings] {
        settings->close();
        leave(true);
    });
    settings->open();
}

FormLLibres* FormMDI::openBooks() {
    auto* books = new FormLLibres(ctx_, dialogs_, reportJob(), nullptr, this);
    books->setAttribute(Qt::WA_DeleteOnClose);
    books->open();
    return books;
}

void FormMDI::openCompanyData() {
    auto* form = new FormEditaEmpresa(ctx_, dialogs_, this);
    form->setAttribute(Qt::WA_DeleteOnClose);
    // Unlike Settings, the treasury switched here shows or hides its entries at once.
    connect(form, &FormEditaEmpresa::companySaved, this, &FormMDI::showEntriesInForce);
    connect(form, &FormEditaEmpresa::ratesChanged, this, &FormMDI::Tanca_Filles);
    form->open();
}

void FormMDI::openRecords() {
    FormVerifactu* screen =
        openScreen<FormVerifactu>([this] { return new FormVerifactu(ctx_, dialogs_); });
    if (screen)
        connect(screen, &FormVerifactu::recordsSent, this, &FormMDI::refreshRecordsPanel,
                Qt::UniqueConnection);
}

void FormMDI::openInterchange() {
    auto* form = new frmImportar(ctx_, dialogs_, this);
    form->setAttribute(Qt::WA_DeleteOnClose);
    // The windows open behind it show data the import has replaced.
    connect(form, &frmImportar::importFinished, this, &FormMDI::Tanca_Filles);
    form->open();
}

void FormMDI::showEntriesInForce() {
    for (auto it = actions_.begin(); it != actions_.end(); ++it)
        it.value()->setVisible(shell::menuEntryVisible(ctx_, it.key()));
    lblEmpresa_->setText(ticketsMode(ctx_) ? Missatge(ctx_, 6629) + ctx_.EmpresaNom
                                           : ctx_.EmpresaNom);
}

void FormMDI::fillWindowMenu(QMenu* menu) {
    menu->clear();
    for (QMdiSubWindow* window : mdi_->subWindowList()) {
        if (!window->isVisible()) continue;
        QAction* a = menu->addAction(window->windowTitle());
        a->setCheckable(true);
        a->setChecked(window == mdi_->activeSubWindow());
        connect(a, &QAction::triggered, mdi_, [this, window] { mdi_->setActiveSubWindow(window); });
    }
}

void FormMDI::applyScreenMode() {
    if (ctx_.PantallaMax)
        setWindowState(windowState() | Qt::WindowMaximized);
    else
        setWindowState(windowState() & ~Qt::WindowMaximized);
}

QLabel* FormMDI::statusPanel(int n) const {
    return (n >= 1 && n <= 3) ? panels_[n - 1] : nullptr;
}

void FormMDI::Barra_Estat(const QString& text) {
    panels_[1]->setText(text);
}

void FormMDI::Activa_BarraMDI(bool enabled) {
    for (QAction* a : BarraMDI_->actions())
        if (!a->isSeparator()) a->setEnabled(enabled);
}

QMdiSubWindow* FormMDI::openChild(QWidget* screen) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QMdiSubWindow* window = mdi_->addSubWindow(screen);
    window->setAttribute(Qt::WA_DeleteOnClose);
    if (ctx_.PantallaMax)
        window->show();
    else
        window->showMaximized();
    mdi_->setActiveSubWindow(window);
    Barra_Estat(QString());
    QApplication::restoreOverrideCursor();
    return window;
}

FormMDI::~FormMDI() {
    // The children go after this body: their focus changes must not reach a half-gone shell.
    disconnect(qApp, nullptr, this, nullptr);
    disconnect(mdi_, nullptr, this, nullptr);
}

report::ReportOutput* FormMDI::reportOutput() {
    if (!reportOutput_) {
        reportOutput_ = std::make_unique<report::QtReportOutput>(&dialogs_, this);
        reportOutput_->setWindowHook([this](QWidget* preview) { openChild(preview); });
    }
    return reportOutput_.get();
}

template <class Screen>
bool FormMDI::bringToFront() {
    // One window per screen: asking again brings the open one to the front.
    for (QMdiSubWindow* window : mdi_->subWindowList()) {
        if (qobject_cast<Screen*>(window->widget())) {
            mdi_->setActiveSubWindow(window);
            return true;
        }
    }
    return false;
}

template <class Screen>
void FormMDI::openMaster() {
    if (bringToFront<Screen>()) return;
    auto* screen = new Screen(ctx_, dialogs_);
    connect(screen, &MasterForm::statusChanged, this, &FormMDI::Barra_Estat);
    openChild(screen);
}

template <class Screen, class Make>
Screen* FormMDI::openScreen(Make make) {
    if (bringToFront<Screen>()) return qobject_cast<Screen*>(mdi_->activeSubWindow()->widget());
    // A file that cannot be read stops the screen with the store's message, not the program.
    Screen* screen = nullptr;
    try {
        screen = make();
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
        return nullptr;
    }
    connect(screen, &Screen::statusChanged, this, &FormMDI::Barra_Estat);
    QMdiSubWindow* window = openChild(screen);
    // Parties and accounts added in another window appear when the screen comes back.
    if constexpr (requires { screen->refreshLists(); })
        connect(mdi_, &QMdiArea::subWindowActivated, screen,
                [screen, window](QMdiSubWindow* active) {
                    if (active == window) screen->refreshLists();
                });
    return screen;
}

void FormMDI::openPortfolio() {
    openScreen<FormCarteraRecibos>(
        [this] { return new FormCarteraRecibos(ctx_, dialogs_, reportJob(), reportOutput()); });
}

FormVendes* FormMDI::openSales() {
    return openScreen<FormVendes>([this] {
        auto* screen = new FormVendes(ctx_, dialogs_, &reportJob(), reportOutput());
        connect(screen, &FormVendes::referencesRequested, this,
                [this] { openMaster<frmReferencias>(); });
        return screen;
    });
}

// One window per type of document; it searches again whenever it comes back to the front,
// so a document turned into another type is gone from it.
void FormMDI::openDocumentInquiry(sales::DocType type) {
    for (QMdiSubWindow* window : mdi_->subWindowList()) {
        auto* open = qobject_cast<FormConsDOCS*>(window->widget());
        if (open && open->type() == type) {
            mdi_->setActiveSubWindow(window);
            return;
        }
    }
    FormConsDOCS* inquiry = nullptr;
    try {
        inquiry = new FormConsDOCS(ctx_, dialogs_, type, &reportJob(), reportOutput());
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
        return;
    }
    connect(inquiry, &FormConsDOCS::statusChanged, this, &FormMDI::Barra_Estat);
    connect(inquiry, &FormConsDOCS::modifyRequested, this, [this](sales::DocType t, qint64 number) {
        if (FormVendes* screen = openSales()) screen->Modifica_Document(t, QString::number(number));
    });
    QMdiSubWindow* window = openChild(inquiry);
    connect(mdi_, &QMdiArea::subWindowActivated, inquiry, [inquiry, window](QMdiSubWindow* active) {
        if (active == window) inquiry->refreshLists();
    });
}

FormCompres* FormMDI::openPurchases() {
    return openScreen<FormCompres>([this] { return new FormCompres(ctx_, dialogs_); });
}

FormSuplidos* FormMDI::openProvisions() {
    return openScreen<FormSuplidos>([this] { return new FormSuplidos(ctx_, dialogs_); });
}

// An inquiry's Modificar opens the entry on its posting screen, in front; a saved change
// makes the inquiry search again.
void FormMDI::openSalesInquiry() {
    openScreen<FormConsOUT>([this] {
        auto* inquiry = new FormConsOUT(ctx_, dialogs_, &reportJob(), reportOutput());
        connect(inquiry, &FormConsOUT::modifyRequested, this, [this, inquiry](qint64 ordre) {
            FormVendes* screen = openSales();
            if (!screen) return;
            connect(screen, &FormVendes::saleChanged, inquiry, &FormConsOUT::Buscar,
                    Qt::UniqueConnection);
            screen->Modifica_Venda(QString::number(ordre));
        });
        return inquiry;
    });
}

void FormMDI::openPurchaseInquiry() {
    openScreen<FormConsIN>([this] {
        auto* inquiry = new FormConsIN(ctx_, dialogs_, &reportJob(), reportOutput());
        connect(inquiry, &FormConsIN::modifyRequested, this, [this, inquiry](qint64 ordre) {
            FormCompres* screen = openPurchases();
            if (!screen) return;
            connect(screen, &FormCompres::purchaseChanged, inquiry, &FormConsIN::Buscar,
                    Qt::UniqueConnection);
            screen->Modifica_Compra(QString::number(ordre));
        });
        return inquiry;
    });
}

void FormMDI::openProvisionInquiry() {
    openScreen<FormConsSupl>([this] {
        auto* inquiry = new FormConsSupl(ctx_, dialogs_, &reportJob(), reportOutput());
        connect(inquiry, &FormConsSupl::modifyRequested, this, [this, inquiry](qint64 ordre) {
            FormSuplidos* screen = openProvisions();
            if (!screen) return;
            connect(screen, &FormSuplidos::provisionChanged, inquiry, &FormConsSupl::Buscar,
                    Qt::UniqueConnection);
            screen->Modifica_Suplido(QString::number(ordre));
        });
        return inquiry;
    });
}

void FormMDI::openAssistant() {
    openScreen<FormVistaRapida>([this] {
        auto* assistant = new FormVistaRapida(ctx_, dialogs_);
        // A link opens what its menu entry opens.
        connect(assistant, &FormVistaRapida::entryRequested, this, &FormMDI::runEntry);
        return assistant;
    });
}

void FormMDI::startAssistant() {
    if (settings::readSplash(ctx_.programDir) == 1) openAssistant();
}

FrmTesoreriaOtros* FormMDI::openOtherMovements() {
    return openScreen<FrmTesoreriaOtros>([this] { return new FrmTesoreriaOtros(ctx_, dialogs_); });
}

void FormMDI::openOtherMovementsInquiry() {
    openScreen<FormConsOtros>([this] {
        auto* inquiry = new FormConsOtros(ctx_, dialogs_, &reportJob(), reportOutput());
        connect(inquiry, &FormConsOtros::modifyRequested, this, [this, inquiry](qint64 asiento) {
            FrmTesoreriaOtros* screen = openOtherMovements();
            if (!screen) return;
            connect(screen, &FrmTesoreriaOtros::movementChanged, inquiry, &FormConsOtros::Buscar,
                    Qt::UniqueConnection);
            screen->Modifica_Otros(asiento);
        });
        return inquiry;
    });
}

void FormMDI::openStatement() {
    openScreen<FormConsEXTRACTO>([this] {
        auto* statement = new FormConsEXTRACTO(ctx_, dialogs_, &reportJob(), reportOutput());
        connect(statement, &FormConsEXTRACTO::modifyRequested, this, [this, statement](qint64 id) {
            // The statement may be closed before the change is saved.
            Modifica_Moviment(id, [statement = QPointer<FormConsEXTRACTO>(statement)] {
                if (statement) statement->Buscar();
            });
        });
        return statement;
    });
}

void FormMDI::Modifica_Moviment(std::int64_t id, const std::function<void()>& changed) {
    Barra_Estat(QStringLiteral("Procesando..."));
    std::optional<treasury::MovementSource> source;
    try {
        source = treasury::movementSource(ctx_, id);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    Barra_Estat(QString());
    if (!source) return;
    switch (source->origin) {
        case treasury::MovementOrigin::Provision:
            if (FormSuplidos* screen = openProvisions()) {
                connect(screen, &FormSuplidos::provisionChanged, this, changed,
                        Qt::SingleShotConnection);
                screen->Modifica_Suplido(QString::number(source->number));
            }
            break;
        case treasury::MovementOrigin::Invoice:
            dialogs_.information(Missatge(ctx_, 6751));
            break;
        case treasury::MovementOrigin::Other:
            if (FrmTesoreriaOtros* screen = openOtherMovements()) {
                connect(screen, &FrmTesoreriaOtros::movementChanged, this, changed,
                        Qt::SingleShotConnection);
                screen->Modifica_Otros(source->number);
            }
            break;
        case treasury::MovementOrigin::None:
            break;
    }
}

void FormMDI::Tanca_Filles() {
    const auto windows = mdi_->subWindowList();
    for (auto it = windows.rbegin(); it != windows.rend(); ++it)
        if (*it != blockmesWindow_) (*it)->close();
}

void FormMDI::leave(bool toCompanies) {
    leaving_ = true;
    toCompanies_ = toCompanies;
    close();
}

void FormMDI::closeEvent(QCloseEvent* event) {
    if (!leaving_ && dialogs_.yesNo(Missatge(ctx_, 6407)) != Dialogs::Answer::Yes) {
        event->ignore();
        return;
    }
    leaving_ = false;
    blockmes_->closeWithShell();
    mdi_->closeAllSubWindows();
    // Older versions marked an exercise in use with this file; nothing writes it any more.
    if (!ctx_.Directori.isEmpty()) QFile::remove(ctx_.exerciseFile(settings::names::UsadaCfg));
    event->accept();
    emit closed(toCompanies_);
}

}  // namespace tallora
