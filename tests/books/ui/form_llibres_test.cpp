// The books dialog under the offscreen platform: its tabs and month lists, the options a
// shop's exercise and a series close, each button's book with the form disabled while it
// runs and restored after, the refused period, the extracts' frames, help and Esc.
#include "books/ui/form_llibres.h"
#include "../../screen_exercise.h"
#include "context/messages.h"
#include "report/report_job.h"
#include "report/report_output.h"
#include "widgets/obre_ajuda.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QtTest>

using namespace tallora;

namespace {

class Exercise : public testing::ScreenExercise {
public:
    Exercise() {
        ctx.Tesoreria = false;
        ctx.ModeExercici = QStringLiteral("FACTURES");
        ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
        ctx.TipusIVA = {21, 10, 4};
        ctx.TipusIVAText = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4")};
        ctx.TipusIVAs = {21, 10, 4, 0};
        ctx.TipusIVAsText = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4"),
                             QStringLiteral("0")};
        run(schema::db::Gest,
            "insert into Clients (client, nom) values (2, 'Bar Centre'), (1, 'Zapatería Luz')");
        run(schema::db::Gest,
            "insert into Proveidors (proveidor, nom) values (1, 'Olis del Camp'), "
            "(2, 'Abacus Papers')");
        run(schema::db::FrasOut,
            "insert into FrasOut (Ordre, data, Client, NomClient, Descripcio, Clasificacion, "
            "TOTAL, Base1, TIva1, Iva1, TRE1, RE1, Base2, TIva2, Iva2, TRE2, RE2, Base3, TIva3, "
            "Iva3, TRE3, RE3, BaseIRPF, TipusIRPF, Retencio) values (1, '2026-02-10', 2, "
            "'Bar Centre', 'F-1', '', 1210000, 1000000, 210000, 210000, 0, 0, 0, 100000, 0, 0, "
            "0, 0, 40000, 0, 0, 0, 0, 0, 0)");
    }
    void run(const QString& file, const char* sql) const {
        store::Database::open(exerciseFile(file)).execute(QString::fromUtf8(sql));
    }
    report::ReportJob job;
};

// What reaches the preview or the printer, and the state of the form at that moment.
class RecordingOutput : public report::ReportOutput {
public:
    void showWindow(std::shared_ptr<const report::RenderedReport> r) override {
        shown = std::move(r);
        if (form) tabsEnabled = form->TabStrip1()->isEnabled();
        waitCursor = QApplication::overrideCursor() != nullptr;
    }
    bool printWithDialog(const report::RenderedReport&, int) override {
        printed = true;
        // The print dialog, a child of the form, must be usable and without the wait pointer.
        if (form) formEnabledWhilePrinting = form->isEnabled();
        waitCursor = QApplication::overrideCursor() != nullptr;
        return false;
    }
    std::shared_ptr<const report::RenderedReport> shown;
    FormLLibres* form = nullptr;
    bool tabsEnabled = true, waitCursor = false, printed = false, formEnabledWhilePrinting = false;
};

template <class W>
W* child(QWidget* form, const QString& name) {
    W* w = form->findChild<W*>(name);
    if (!w) qFatal("no widget %s", qPrintable(name));
    return w;
}

QString layoutOf(const report::ReportJob& job) {
    return QFileInfo(job.ReportFileName).fileName();
}

QString formulas(const report::ReportJob& job) {
    return QStringList(job.Formulas.begin(), job.Formulas.end()).join(u'\n');
}

}  // namespace

class FormLLibresTest : public QObject {
    Q_OBJECT
private slots:
    void theTabsShowTheirFramesAndTheMonthsRunFromJanuaryToDecember() {
        Exercise x;
        FormLLibres form(x.ctx, x.dialogs, x.job);
        QTabWidget* tabs = form.TabStrip1();
        QStringList keys, captions;
        for (int i = 0; i < tabs->count(); ++i) {
            keys << tabs->widget(i)->objectName();
            captions << tabs->tabText(i);
        }
        QCOMPARE(keys, (QStringList{"gastos", "ingresos", "Suplidos", "informes", "listados"}));
        QCOMPARE(captions.first(), Missatge(x.ctx, 1002));
        for (const char* name : {"OpInici", "OpiniciR", "OpIniciS", "OpIniciE"}) {
            auto* from = child<QComboBox>(&form, QLatin1String(name));
            QCOMPARE(from->count(), 12);
            QCOMPARE(from->currentIndex(), 0);
            QCOMPARE(from->itemText(1), Missatge(x.ctx, 5002));
            QCOMPARE(from->itemData(11).toInt(), 12);
        }
        for (const char* name : {"OpFinal", "OpFinalR", "OpFinalS", "OpFinalE"})
            QCOMPARE(child<QComboBox>(&form, QLatin1String(name))->currentIndex(), 11);
        QVERIFY(child<QRadioButton>(&form, "OpWindow")->isChecked());
        QCOMPARE(child<QDateEdit>(&form, "data_fecha_impresion")->date(), QDate::currentDate());
        for (const char* name : {"btnPiG", "btnSaldos", "btnMajorPro"})
            QVERIFY(child<QPushButton>(&form, QLatin1String(name))->isEnabled());
    }

    void aShopsExerciseHasNoWithholdingLists() {
        Exercise x;
        x.ctx.ModeExercici = QStringLiteral("TICKETS");
        FormLLibres form(x.ctx, x.dialogs, x.job);
        QVERIFY(!child<QRadioButton>(&form, "OpIRPFpro")->isEnabled());
        QVERIFY(!child<QGroupBox>(&form, "FrameIRPF")->isEnabled());
        QVERIFY(!child<QCheckBox>(&form, "OpLibroIRPF")->isEnabled());
        // Choosing "all" again does not bring it back in a shop.
        child<QRadioButton>(&form, "op_series_todas_ventas")->click();
        QVERIFY(!child<QCheckBox>(&form, "OpLibroIRPF")->isEnabled());
    }

    void aSeriesOtherThanAllSetsTheWithholdingListAside() {
        Exercise x;
        FormLLibres form(x.ctx, x.dialogs, x.job);
        auto* irpf = child<QCheckBox>(&form, "OpLibroIRPF");
        child<QRadioButton>(&form, "Op_series_abonos_ventas")->click();
        QVERIFY(!irpf->isEnabled());
        child<QRadioButton>(&form, "Op_series_Canarias_ventas")->click();
        QVERIFY(!irpf->isEnabled());
        child<QRadioButton>(&form, "op_series_todas_ventas")->click();
        QVERIFY(irpf->isEnabled());
        // The purchases' series leave it alone.
        child<QRadioButton>(&form, "Op_series_abonos")->click();
        QVERIFY(irpf->isEnabled());
    }

    void theSalesBookReachesThePreviewWhileTheFormWaitsAndIsRestoredAfter() {
        Exercise x;
        RecordingOutput output;
        FormLLibres form(x.ctx, x.dialogs, x.job, &output);
        output.form = &form;
        child<QComboBox>(&form, "OpFinalR")->setCurrentIndex(2);
        child<QPushButton>(&form, "btn_llibre_IVAr")->click();
        QVERIFY2(output.shown, qPrintable(x.dialogs.lastText()));
        QCOMPARE(layoutOf(x.job), QStringLiteral("llibrei1.rpt"));
        QVERIFY(!output.tabsEnabled);
        QVERIFY(output.waitCursor);
        QVERIFY(form.TabStrip1()->isEnabled());
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(child<QProgressBar>(&form, "Prog")->value(), 0);
        QVERIFY(formulas(x.job).contains(QStringLiteral("HASTA MARZO")));
        QVERIFY2(formulas(x.job).contains(QStringLiteral("base1='100,00 '")),
                 qPrintable(formulas(x.job)));

        child<QCheckBox>(&form, "OpLibroIRPF")->setChecked(true);
        child<QPushButton>(&form, "btn_llibre_IVAr")->click();
        QCOMPARE(layoutOf(x.job), QStringLiteral("llibrer1.rpt"));
    }

    void thePrintDialogIsUsableAndWithoutTheWaitPointer() {
        Exercise x;
        RecordingOutput output;
        FormLLibres form(x.ctx, x.dialogs, x.job, &output);
        output.form = &form;
        child<QRadioButton>(&form, "OPprinter")->click();
        child<QPushButton>(&form, "btnSuplidos")->click();
        QVERIFY(output.printed);
        QVERIFY(output.formEnabledWhilePrinting);
        QVERIFY(!output.waitCursor);
        QVERIFY(!QApplication::overrideCursor());
    }

    void theSpreadsheetDestinationSavesWhereTheUserSaysAndTellsIt() {
        Exercise x;
        RecordingOutput output;
        FormLLibres form(x.ctx, x.dialogs, x.job, &output);
        QStringList proposed;
        QString answer;
        form.askFilePath = [&](const QString& name) {
            proposed << name;
            return answer;
        };
        child<QRadioButton>(&form, "OpHoja")->click();
        // No file given: nothing is built.
        child<QPushButton>(&form, "btn_llibre_IVAr")->click();
        QCOMPARE(proposed, QStringList{QStringLiteral("ventas_2026.xlsx")});
        QVERIFY(x.job.ReportFileName.isEmpty());
        QVERIFY(x.dialogs.shown().empty());

        answer = x.root.filePath(QStringLiteral("ventas.xlsx"));
        child<QPushButton>(&form, "btn_llibre_IVAr")->click();
        QVERIFY(!output.shown);
        QFile xlsx(answer);
        QVERIFY2(xlsx.open(QIODevice::ReadOnly), qPrintable(x.dialogs.lastText()));
        QCOMPARE(xlsx.read(2), QByteArray("PK"));  // a zip, as every XLSX
        QCOMPARE(x.dialogs.lastText(), QStringLiteral("Fichero guardado: ") + answer);
        QVERIFY(form.TabStrip1()->isEnabled());
        QVERIFY(!QApplication::overrideCursor());

        // A path ending in .csv gives the CSV; the operating statement's name is proposed.
        answer = x.root.filePath(QStringLiteral("explotacion.csv"));
        child<QPushButton>(&form, "btnPiG")->click();
        QCOMPARE(proposed.last(), QStringLiteral("explotacion_2026.xlsx"));
        QFile csv(answer);
        QVERIFY2(csv.open(QIODevice::ReadOnly), qPrintable(x.dialogs.lastText()));
        const QByteArray text = csv.readAll();
        QVERIFY(text.startsWith("\xEF\xBB\xBF"));
        QVERIFY2(text.contains("Comercial Brenwick S.L."), text.constData());
        QVERIFY(!output.shown);
    }

    void eachPurchasesOptionGivesItsBook() {
        Exercise x;
        RecordingOutput output;
        FormLLibres form(x.ctx, x.dialogs, x.job, &output);
        const struct {
            const char* option;
            const char* layout;
            int title;
        } cases[] = {{"Opct1", "llibred1.rpt", 6175},
                     {"Opct2", "llibrem2.rpt", 6175},
                     {"Opct3", "llibrem2.rpt", 6193},
                     {"OpIRPFpro", "llibrer2.rpt", 7009}};
        for (const auto& c : cases) {
            child<QRadioButton>(&form, QLatin1String(c.option))->click();
            child<QPushButton>(&form, "btnIVAs_simpli")->click();
            QCOMPARE(layoutOf(x.job), QLatin1String(c.layout));
            QCOMPARE(x.job.Formulas[0],
                     QStringLiteral("lbl_titulo= '%1'").arg(Missatge(x.ctx, c.title)));
        }
        child<QPushButton>(&form, "btnSuplidos")->click();
        QCOMPARE(layoutOf(x.job), QStringLiteral("llibre_s.rpt"));
        child<QPushButton>(&form, "btn500")->click();
        QCOMPARE(layoutOf(x.job), QStringLiteral("500000.rpt"));
        child<QRadioButton>(&form, "Opclicon")->click();
        child<QPushButton>(&form, "btnLListatClients")->click();
        QCOMPARE(layoutOf(x.job), QStringLiteral("cli_con.rpt"));
        child<QPushButton>(&form, "btnLListatProv")->click();
        QCOMPARE(layoutOf(x.job), QStringLiteral("pro_dom.rpt"));
        QVERIFY(x.dialogs.shown().empty());
    }

    void aPeriodEndingBeforeItStartsIsRefusedAndTheFormComesBack() {
        Exercise x;
        RecordingOutput output;
        FormLLibres form(x.ctx, x.dialogs, x.job, &output);
        child<QComboBox>(&form, "OpInici")->setCurrentIndex(4);
        child<QComboBox>(&form, "OpFinal")->setCurrentIndex(3);
        child<QPushButton>(&form, "btnIVAs_simpli")->click();
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6142));
        QCOMPARE(x.dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
        QCOMPARE(x.dialogs.shown().size(), std::size_t(1));
        QVERIFY(!output.shown);
        QVERIFY(x.job.ReportFileName.isEmpty());
        QVERIFY(form.isEnabled());
        QVERIFY(!QApplication::overrideCursor());
    }

    void theExtractsShowThePartyOfTheirChoiceAndClearIt() {
        Exercise x;
        FormLLibres form(x.ctx, x.dialogs, x.job);
        form.show();
        form.TabStrip1()->setCurrentIndex(4);
        auto* customers = child<QGroupBox>(&form, "FrameExtCli");
        auto* suppliers = child<QGroupBox>(&form, "FrameExtPro");
        auto* list = child<QComboBox>(&form, "CmbClients");
        QVERIFY(!customers->isVisible() && !suppliers->isVisible());
        // Customers by number, suppliers by name.
        QCOMPARE(list->itemText(0), QStringLiteral("Zapatería Luz"));
        QCOMPARE(child<QComboBox>(&form, "CmbProveidors")->itemText(0),
                 QStringLiteral("Abacus Papers"));
        child<QRadioButton>(&form, "OpExt4")->click();
        QVERIFY(customers->isVisible() && !suppliers->isVisible());
        list->setCurrentIndex(1);
        child<QRadioButton>(&form, "OpCliMayor")->click();
        child<QRadioButton>(&form, "OpExt3")->click();
        QVERIFY(!customers->isVisible() && suppliers->isVisible());
        QCOMPARE(list->currentIndex(), -1);
        QVERIFY(!child<QRadioButton>(&form, "OpCliMayor")->isChecked());
    }

    void f1OpensTheBooksHelpAndEscCloses() {
        Exercise x;
        QString opened;
        ui::setPageOpener([&](const QString& path) { opened = path; });
        FormLLibres form(x.ctx, x.dialogs, x.job);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(form.focusWidget()->objectName(), QStringLiteral("OpInici"));
        // The tabs turn from the keyboard, even from a month list.
        QTest::keyClick(form.focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(form.TabStrip1()->currentIndex(), 1);
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(form.TabStrip1()->currentIndex(), 2);
        QTest::keyClick(form.focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
        QTest::keyClick(form.focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(form.TabStrip1()->currentIndex(), 0);
        QTest::keyClick(form.focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(form.TabStrip1()->currentIndex(), 4);
        QCOMPARE(child<QComboBox>(&form, "OpInici")->currentIndex(), 0);
        QTest::keyClick(form.focusWidget(), Qt::Key_F1);
        QVERIFY2(opened.endsWith(QStringLiteral("esp_help/6/6.html")), qPrintable(opened));
        QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
        QVERIFY(!form.isVisible());
        ui::setPageOpener({});
    }
};

QTEST_MAIN(FormLLibresTest)
#include "form_llibres_test.moc"
