#include "shell/ui/form_mdi.h"
#include "books/customer_listings.h"
#include "books/ui/form_llibres.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master/ui/customers_form.h"
#include "master/ui/treasury_accounts_form.h"
#include "purchases/ui/form_compres.h"
#include "purchases/ui/form_cons_in.h"
#include "purchases/ui/form_cons_supl.h"
#include "purchases/ui/form_suplidos.h"
#include "report/ui/report_preview.h"
#include "sales/ui/form_cons_out.h"
#include "sales/ui/form_vendes.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "shell/settings_files.h"
#include "shell/ui/blockmes.h"
#include "shell/ui/form_vista_rapida.h"
#include "store/database.h"
#include "treasury/other_movements.h"
#include "treasury/ui/form_cartera_recibos.h"
#include "treasury/ui/form_cons_extracto.h"
#include "treasury/ui/form_cons_otros.h"
#include "treasury/ui/frm_tesoreria_otros.h"
#include "verifactu/record_chain.h"
#include "verifactu/record_file.h"
#include "verifactu/ui/form_verifactu.h"
#include "widgets/obre_ajuda.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

using namespace tallora;

class FormMdiTest : public QObject {
    Q_OBJECT

    QTemporaryDir program_;
    WorkingContext fresh() {
        WorkingContext ctx;
        ctx.programDir = program_.path() + u'/';
        return ctx;
    }
    // Exercise 2026 in `folder` with treasury on, its databases made as an opening leaves them.
    WorkingContext treasuryExercise(const char* folder) {
        WorkingContext ctx = fresh();
        ctx.Directori = program_.path() + QStringLiteral("/%1/2026/").arg(QLatin1String(folder));
        ctx.Exercici = QStringLiteral("2026");
        QDir().mkpath(ctx.Directori);
        schema::createExerciseDatabases(ctx.Directori);
        ctx.Tesoreria = true;
        schema::Actualitza_Bases(ctx);
        return ctx;
    }

private slots:
    void showsTheExerciseInPanelThree() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Exercici = QStringLiteral("2026");
        FormMDI window(ctx, dialogs);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.statusBar()->objectName(), QStringLiteral("Barra"));
        QCOMPARE(window.statusPanel(3)->text(), QStringLiteral("2026"));
        QVERIFY(!window.statusPanel(0));
        QVERIFY(!window.statusPanel(4));
        window.Barra_Estat(QStringLiteral("Alta ..."));
        QCOMPARE(window.statusPanel(2)->text(), QStringLiteral("Alta ..."));
    }

    void theStatusBarSaysHowManyRecordsWaitToBeSent() {
        WorkingContext ctx = treasuryExercise("records");
        ScriptedDialogs dialogs;
        FormMDI window(ctx, dialogs);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(window.recordsPanel()->isHidden());
        // Two records as a posting writes them, neither answered.
        const QString path = verifactu::recordsPath(ctx);
        verifactu::ensureRecordsFile(path);
        store::Database db = store::Database::open(ctx.Directori + schema::db::FrasOut);
        db.attach(path, verifactu::kRecordsAlias);
        for (int i = 1; i <= 2; ++i) {
            verifactu::InvoiceRecord r;
            r.id = {QStringLiteral("B12345674"), QString::number(i), QStringLiteral("01-02-2026")};
            r.tipoFactura = QStringLiteral("F1");
            verifactu::appendRecord(ctx, db, r, {ctx.Exercici, i});
        }
        window.refreshRecordsPanel();
        QVERIFY(window.recordsPanel()->isVisible());
        QCOMPARE(window.recordsPanel()->text(), QStringLiteral("VERI*FACTU: 2 por enviar"));
        // The menu entry opens the records screen once, with the two records.
        window.menuAction(QStringLiteral("mnuVerifactu"))->trigger();
        window.menuAction(QStringLiteral("mnuVerifactu"))->trigger();
        int screens = 0;
        for (QMdiSubWindow* sub : window.mdiArea()->subWindowList())
            if (auto* records = qobject_cast<FormVerifactu*>(sub->widget())) {
                ++screens;
                QCOMPARE(
                    records->findChild<QTableWidget*>(QStringLiteral("GridRegistros"))->rowCount(),
                    2);
            }
        QCOMPARE(screens, 1);
    }

    void readsTheInstallationSettingsAsItStarts() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        settings::writeDecimal(ctx.programDir, 46);
        settings::writeMargins(ctx.programDir, {10, 12, 14, 16});
        settings::writePantallaMax(ctx.programDir, true);
        FormMDI window(ctx, dialogs);
        QCOMPARE(ctx.Decimal, 46);
        QCOMPARE(ctx.MargeEsquerre, 10);
        QCOMPARE(ctx.MargeInferior, 16);
        QVERIFY(ctx.PantallaMax);
        QVERIFY(window.windowState() & Qt::WindowMaximized);
    }

    void aShopHidesCustomersAndNamesItselfACommerce() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.EmpresaNom = QStringLiteral("Ñandú, S.L.");
        ctx.ModeExercici = QStringLiteral("TICKETS");
        FormMDI window(ctx, dialogs);
        QCOMPARE(window.lblEmpresa()->text(), Missatge(ctx, 6629) + QStringLiteral("Ñandú, S.L."));
        QVERIFY(!window.menuAction(QStringLiteral("Clients"))->isVisible());
        QVERIFY(!window.BarraMDI()->findChild<QAction*>(QStringLiteral("Clients"))->isVisible());
        QVERIFY(window.menuAction(QStringLiteral("Proveidorsbd"))->isVisible());
    }

    void everyMenuEntryHasItsCaptionAndUnbuiltOnesAreDisabled() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Tesoreria = true;
        FormMDI window(ctx, dialogs);
        QCOMPARE(window.menuAction(QStringLiteral("mnu_extractos"))->text(), Missatge(ctx, 6651));
        QVERIFY(window.menuAction(QStringLiteral("mnu_Tesoreria"))->isVisible());
        QVERIFY(window.menuAction(QStringLiteral("mnu_extractos"))->isEnabled());
        QVERIFY(window.menuAction(QStringLiteral("mnullibres"))->isEnabled());
        QVERIFY(!window.menuAction(QStringLiteral("mnuconsPre"))->isEnabled());
        QVERIFY(window.menuAction(QStringLiteral("mnuRepara"))->isEnabled());
        QCOMPARE(window.BarraMDI()->findChild<QAction*>(QStringLiteral("Vendes"))->text(),
                 Missatge(ctx, 232));
        window.Activa_BarraMDI(false);
        QVERIFY(!window.BarraMDI()->findChild<QAction*>(QStringLiteral("Ayuda"))->isEnabled());
    }

    void theBooksEntryOpensTheBooksDialogModalToTheShell() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        FormMDI window(ctx, dialogs);
        window.show();
        window.menuAction(QStringLiteral("mnullibres"))->trigger();
        auto* books = window.findChild<FormLLibres*>();
        QVERIFY(books);
        QVERIFY(books->isVisible());
        QCOMPARE(books->windowModality(), Qt::WindowModal);
        // Not a working child: the shell's area keeps no window for it.
        for (QMdiSubWindow* sub : window.mdiArea()->subWindowList())
            QVERIFY(!qobject_cast<FormLLibres*>(sub->widget()));
        books->close();
        QTRY_VERIFY(!window.findChild<FormLLibres*>());
    }

    void theMasterEntriesOpenOneScreenEach() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = program_.path() + QStringLiteral("/masters/2026/");
        QDir().mkpath(ctx.Directori);
        schema::createExerciseDatabases(ctx.Directori);
        FormMDI window(ctx, dialogs);
        QVERIFY(window.menuAction(QStringLiteral("Clients"))->isEnabled());
        QVERIFY(!window.menuAction(QStringLiteral("mnuReferencias"))->isEnabled());  // no billing
        window.menuAction(QStringLiteral("Clients"))->trigger();
        window.BarraMDI()->findChild<QAction*>(QStringLiteral("Clients"))->trigger();
        QCOMPARE(window.mdiArea()->subWindowList().size(), 2);  // the month lock and the customers
        auto* customers = qobject_cast<frmclients*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(customers);
        customers->Alta();
        QCOMPARE(window.statusPanel(2)->text(), QStringLiteral("Alta ..."));
    }

    void theSalesEntryAndItsButtonOpenOneSalesScreen() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = program_.path() + QStringLiteral("/sales/2026/");
        ctx.Exercici = QStringLiteral("2026");
        QDir().mkpath(ctx.Directori);
        schema::createExerciseDatabases(ctx.Directori);
        FormMDI window(ctx, dialogs);
        QVERIFY(window.menuAction(QStringLiteral("frasemes"))->isEnabled());
        window.menuAction(QStringLiteral("frasemes"))->trigger();
        window.BarraMDI()->findChild<QAction*>(QStringLiteral("Vendes"))->trigger();
        QCOMPARE(window.mdiArea()->subWindowList().size(), 2);  // the month lock and the sales
        auto* sales = qobject_cast<FormVendes*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(sales);
        QCOMPARE(window.openSales(), sales);
        // Its status texts reach the status bar.
        store::Database::open(ctx.Directori + schema::db::FrasOut)
            .execute(QStringLiteral("insert into FrasOut (Ordre, data, NomClient) "
                                    "values (1, '2026-03-02', 'Bar Centre')"));
        sales->Modifica_Venda(QStringLiteral("1"));
        QCOMPARE(sales->findChild<QLineEdit*>(QStringLiteral("txtClient"))->text(),
                 QStringLiteral("Bar Centre"));
        QCOMPARE(window.statusPanel(2)->text(), Missatge(ctx, 726));
    }

    void thePurchasesEntriesOpenTheirScreensAndAnInquiryOpensItsEntry() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = program_.path() + QStringLiteral("/purchases/2026/");
        ctx.Exercici = QStringLiteral("2026");
        QDir().mkpath(ctx.Directori);
        schema::createExerciseDatabases(ctx.Directori);
        schema::Actualitza_Bases(ctx);
        store::Database::open(ctx.Directori + schema::db::FrasIn)
            .execute(QStringLiteral("insert into FrasIN (Ordre, data, NomProveidor, Grup) "
                                    "values (1, '2026-03-02', 'FUSTES PLA', 62)"));
        FormMDI window(ctx, dialogs);
        window.show();
        for (const char* entry : {"frasreb", "MnuSuplidos", "consdes", "mnuconsSupl"}) {
            QVERIFY(window.menuAction(QString::fromLatin1(entry))->isEnabled());
            window.menuAction(QString::fromLatin1(entry))->trigger();
        }
        window.BarraMDI()->findChild<QAction*>(QStringLiteral("Despeses"))->trigger();
        // The month lock and one window each.
        QCOMPARE(window.mdiArea()->subWindowList().size(), 5);
        auto* purchases = qobject_cast<FormCompres*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(purchases);
        window.menuAction(QStringLiteral("consdes"))->trigger();
        auto* inquiry = qobject_cast<FormConsIN*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(inquiry);
        QCOMPARE(inquiry->grid()->rowCount(), 1);
        inquiry->grid()->selectRow(0);
        inquiry->Modificar();
        QCOMPARE(window.mdiArea()->activeSubWindow()->widget(), purchases);
        QCOMPARE(purchases->findChild<QLineEdit*>(QStringLiteral("txtProveidor"))->text(),
                 QStringLiteral("FUSTES PLA"));
        QCOMPARE(window.statusPanel(2)->text(), Missatge(ctx, 726));
        QVERIFY(qobject_cast<FormSuplidos*>(window.openProvisions()));
    }

    void thePortfolioEntryOpensOnePortfolioWithTreasury() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = program_.path() + QStringLiteral("/portfolio/2026/");
        QDir().mkpath(ctx.Directori);
        schema::createExerciseDatabases(ctx.Directori);
        ctx.Tesoreria = true;
        schema::Actualitza_Bases(ctx);
        FormMDI window(ctx, dialogs);
        QVERIFY(window.menuAction(QStringLiteral("mnucartera"))->isEnabled());
        window.menuAction(QStringLiteral("mnucartera"))->trigger();
        window.menuAction(QStringLiteral("mnucartera"))->trigger();
        QCOMPARE(window.mdiArea()->subWindowList().size(), 2);  // the month lock and the portfolio
        QVERIFY(qobject_cast<FormCarteraRecibos*>(window.mdiArea()->activeSubWindow()->widget()));
    }

    void theStatementOpensEachMovementWhereItCameFrom() {
        WorkingContext ctx = treasuryExercise("statement");
        ScriptedDialogs dialogs;
        store::Database tesorer = store::Database::open(ctx.Directori + schema::db::Tesorer);
        tesorer.execute(QStringLiteral(
            "insert into entidades (Id, Grup, entidad) values (2, 572, 'Banco');"
            "insert into movimientos (Id, data, entidad, cliente, Supl, concepto, D, H) values "
            "(1, '2026-03-06', 2, 2, 7, 'Provisión. Fondos', 6000000, 0), "
            "(2, '2026-03-07', 2, 3, 0, 'Cobro fra. 5', 100000, 0)"));
        store::Database::open(ctx.Directori + schema::db::Supl)
            .execute(QStringLiteral(
                "insert into Suplidos (Ordre, total, Proveidor, NomProveidor, Tipus, NomTipus, "
                "descripcio, data) values (7, 6000000, 2, 'COLMADO RUIZ', 'P', 'Provisión', "
                "'Fondos', '2026-03-06')"));
        treasury::OtherMovement transfer;
        transfer.data = QDate(2026, 3, 8);
        transfer.concepto = QStringLiteral("Al banco");
        transfer.importe = QStringLiteral("50");
        transfer.saleTesoreria = 1;
        transfer.entraTesoreria = 2;
        const std::int64_t asiento = treasury::postOtherMovement(ctx, dialogs, transfer).asiento;

        FormMDI window(ctx, dialogs);
        window.show();
        for (const char* entry : {"mnu_movimientos", "mnuConsOtros", "mnu_extractos"}) {
            QVERIFY(window.menuAction(QString::fromLatin1(entry))->isEnabled());
            window.menuAction(QString::fromLatin1(entry))->trigger();
            window.menuAction(QString::fromLatin1(entry))->trigger();
        }
        QCOMPARE(window.mdiArea()->subWindowList().size(), 4);  // the month lock and one each
        auto* statement =
            qobject_cast<FormConsEXTRACTO*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(statement);
        // The opening line, the provision, the collection, the transfer's two movements.
        QCOMPARE(statement->grid()->rowCount(), 5);

        // An invoice's settlement is not changed here.
        statement->grid()->selectRow(2);
        statement->Modificar();
        QCOMPARE(dialogs.shown().size(), std::size_t{1});
        QCOMPARE(dialogs.lastText(), Missatge(ctx, 6751));
        QCOMPARE(window.mdiArea()->activeSubWindow()->widget(), statement);

        // A provision opens on its screen, in front.
        statement->grid()->selectRow(1);
        statement->Modificar();
        auto* provisions =
            qobject_cast<FormSuplidos*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(provisions);
        QCOMPARE(provisions->findChild<QLabel*>(QStringLiteral("lblOrdre"))->text(),
                 QStringLiteral("7"));

        // An other movement opens on its own screen, and its saved change searches again.
        statement->grid()->selectRow(4);
        statement->Modificar();
        auto* other =
            qobject_cast<FrmTesoreriaOtros*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(other);
        QCOMPARE(other->findChild<QLabel*>(QStringLiteral("lblOrdre"))->text(),
                 QString::number(asiento));
        other->findChild<QLineEdit*>(QStringLiteral("txtImporte"))->setText(QStringLiteral("75"));
        other->Contabilizar();
        QCOMPARE(statement->grid()->item(4, 4)->text(),
                 Format_Import(ctx, Money::fromUnits(750000)));
        QVERIFY(other->findChild<QLabel*>(QStringLiteral("lblOrdre"))->text().isEmpty());

        // A statement closed while its movement is being changed is not searched again.
        window.menuAction(QStringLiteral("mnu_extractos"))->trigger();
        statement->grid()->selectRow(4);
        statement->Modificar();
        QCOMPARE(window.mdiArea()->activeSubWindow()->widget(), other);
        for (QMdiSubWindow* w : window.mdiArea()->subWindowList())
            if (w->widget() == statement) w->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        other->Contabilizar();
        QVERIFY(other->findChild<QLabel*>(QStringLiteral("lblOrdre"))->text().isEmpty());
    }

    void theAssistantOpensAsSplashSaysAndItsLinksRunTheirEntries() {
        WorkingContext ctx = treasuryExercise("assistant");
        ScriptedDialogs dialogs;
        QFile::remove(ctx.programDir + settings::names::SplashCfg);
        {
            FormMDI window(ctx, dialogs);
            window.show();
            // No splash.cfg counts as 1: the assistant shows on opening.
            window.startAssistant();
            QCOMPARE(window.mdiArea()->subWindowList().size(), 2);
            auto* assistant =
                qobject_cast<FormVistaRapida*>(window.mdiArea()->activeSubWindow()->widget());
            QVERIFY(assistant);
            QCOMPARE(assistant->findChild<QLineEdit*>(QStringLiteral("txtVentas"))->text(),
                     Format_Import(ctx, Money{}));
            QVERIFY(assistant->check()->isChecked());
            // A link runs its menu entry.
            assistant->findChild<QPushButton*>(QStringLiteral("lbl3"))->click();
            QVERIFY(qobject_cast<FormConsOUT*>(window.mdiArea()->activeSubWindow()->widget()));
            assistant->findChild<QPushButton*>(QStringLiteral("lbl14"))->click();
            QVERIFY(
                qobject_cast<frmTesoreria_cuentas*>(window.mdiArea()->activeSubWindow()->widget()));
            // The menu brings the open one to the front.
            window.menuAction(QStringLiteral("mnuAsistente"))->trigger();
            QCOMPARE(window.mdiArea()->activeSubWindow()->widget(), assistant);
            assistant->check()->setChecked(false);
            window.mdiArea()->activeSubWindow()->close();
            QCOMPARE(settings::readSplash(ctx.programDir), 0);
        }
        FormMDI window(ctx, dialogs);
        window.show();
        window.startAssistant();
        QCOMPARE(window.mdiArea()->subWindowList().size(), 1);  // the month lock only
        window.menuAction(QStringLiteral("mnuAsistente"))->trigger();
        auto* assistant =
            qobject_cast<FormVistaRapida*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(assistant);
        QVERIFY(!assistant->check()->isChecked());
        assistant->check()->setChecked(true);
        QTest::keyClick(assistant, Qt::Key_Escape);
        QCOMPARE(settings::readSplash(ctx.programDir), 1);
        QCOMPARE(window.mdiArea()->subWindowList().size(), 1);
    }

    void aListingSentToTheWindowOpensItsPreviewAsAChild() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = program_.path() + QStringLiteral("/listing/2026/");
        QDir().mkpath(ctx.Directori);
        schema::createExerciseDatabases(ctx.Directori);
        schema::Actualitza_Bases(ctx);  // the fields an opening adds: the listing prints cp
        {
            store::Database gest = store::Database::open(ctx.Directori + schema::db::Gest);
            store::Statement add =
                gest.prepare("insert into Clients (nom, direccio, poblacio) values (?, ?, ?)");
            for (int i = 1; i <= 120; ++i)
                add.bind(1, QStringLiteral("Cliente %1").arg(i))
                    .bind(2, "C/ Major 1")
                    .bind(3, "Vic")
                    .execute(),
                    add.reset();
        }
        FormMDI window(ctx, dialogs);
        books::ListingRequest request;
        request.printDate = QDate(2026, 11, 21);
        const auto result = books::btnLListatClients(ctx, dialogs, window.reportJob(),
                                                     window.reportOutput(), request);
        QVERIFY2(result.ok(), qPrintable(result.error));
        auto* preview =
            qobject_cast<report::ReportPreview*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(preview);
        QVERIFY(preview->pageCount() >= 2);
        QCOMPARE(preview->pageCount(), result.pages);
    }

    void theMonthLockSavesAndItsCancelAsks() {
        QTemporaryDir exercise;
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = exercise.path() + u'/';
        ctx.Exercici = QStringLiteral("2026");
        FormMDI window(ctx, dialogs);
        window.menuAction(QStringLiteral("mnubloc"))->trigger();
        blockmes* lock = window.monthLock();
        QVERIFY(lock->isVisibleTo(&window));
        lock->chkmesos(3)->click();
        QCOMPARE(ctx.chkmesos[2], 1);
        dialogs.setNextAnswer(Dialogs::Answer::No);
        lock->Cancelar();
        QCOMPARE(dialogs.lastText(), Missatge(ctx, 6622));
        QVERIFY(lock->chkmesos(3)->isChecked());
        lock->Guardar();
        QVERIFY(!lock->changed());
        QVERIFY(QFile::exists(ctx.Directori + QStringLiteral("2026blocks.DAT")));
        lock->chkmesos(3)->click();
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        lock->Cancelar();
        QVERIFY(lock->chkmesos(3)->isChecked());
        QCOMPARE(ctx.chkmesos[2], 1);
    }

    void theMonthLocksCloseBoxIsItsCancelAndItShowsAgain() {
        QTemporaryDir exercise;
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        ctx.Directori = exercise.path() + u'/';
        ctx.Exercici = QStringLiteral("2026");
        FormMDI window(ctx, dialogs);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.menuAction(QStringLiteral("mnubloc"))->trigger();
        blockmes* lock = window.monthLock();
        auto* frame = qobject_cast<QMdiSubWindow*>(lock->parentWidget());
        QVERIFY(frame);
        lock->chkmesos(5)->click();
        QCOMPARE(ctx.chkmesos[4], 1);

        // The close box asks, and No keeps the screen as it is.
        dialogs.setNextAnswer(Dialogs::Answer::No);
        frame->close();
        QCOMPARE(dialogs.lastText(), Missatge(ctx, 6622));
        QVERIFY(frame->isVisible());
        QVERIFY(lock->chkmesos(5)->isChecked());

        // Yes leaves without saving: the boxes and the lock go back to the file.
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        frame->close();
        QVERIFY(!frame->isVisible());
        QCOMPARE(ctx.chkmesos[4], 0);
        QVERIFY(!QFile::exists(ctx.Directori + QStringLiteral("2026blocks.DAT")));

        // Asked for again, the whole screen shows, not an empty frame.
        window.menuAction(QStringLiteral("mnubloc"))->trigger();
        QVERIFY(frame->isVisible());
        QVERIFY(lock->isVisible());
        QVERIFY(!lock->chkmesos(5)->isChecked());

        // Unchanged, the close box hides it without a question.
        const auto shown = dialogs.shown().size();
        frame->close();
        QVERIFY(!frame->isVisible());
        QCOMPARE(dialogs.shown().size(), shown);
    }

    void f1OpensTheFocusedScreensPageAndTheIndexOtherwise() {
        WorkingContext ctx = fresh();
        ScriptedDialogs dialogs;
        QTemporaryDir resources;
        ctx.resourcesDir = resources.path() + u'/';
        // The pages of the customers and of the index, installed.
        for (const QString& page :
             {QStringLiteral("esp_help/indice.html"), QStringLiteral("esp_help/4/4_2.html")}) {
            QDir().mkpath(QFileInfo(resources.filePath(page)).absolutePath());
            QFile file(resources.filePath(page));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        ctx.Directori = program_.path() + QStringLiteral("/help/2026/");
        QDir().mkpath(ctx.Directori);
        schema::createExerciseDatabases(ctx.Directori);
        QStringList opened;
        ui::setPageOpener([&opened](const QString& path) { opened << path; });
        FormMDI window(ctx, dialogs);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QApplication::setActiveWindow(&window);

        // No child: the shell's own page, the index.
        window.mdiArea()->setFocus();
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window,
                        Qt::Key_F1);
        QCOMPARE(opened, QStringList{resources.filePath(QStringLiteral("esp_help/indice.html"))});

        // A field of the customers' screen has the focus: that screen's page, once.
        opened.clear();
        window.menuAction(QStringLiteral("Clients"))->trigger();
        auto* customers = qobject_cast<frmclients*>(window.mdiArea()->activeSubWindow()->widget());
        QVERIFY(customers);
        auto* field = customers->findChild<QLineEdit*>();
        QVERIFY(field);
        field->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), field);
        QTest::keyClick(field, Qt::Key_F1);
        QCOMPARE(opened, QStringList{resources.filePath(QStringLiteral("esp_help/4/4_2.html"))});

        // The help entry of the menu still opens the index.
        opened.clear();
        window.menuAction(QStringLiteral("contingut"))->trigger();
        QCOMPARE(opened, QStringList{resources.filePath(QStringLiteral("esp_help/indice.html"))});
        ui::setPageOpener({});
    }
};

QTEST_MAIN(FormMdiTest)
#include "form_mdi_test.moc"
