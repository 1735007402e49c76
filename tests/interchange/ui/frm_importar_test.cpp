// The import and export screen under the offscreen platform: its options as a file's header
// sets them, an export and an import with their log and progress, the signal that closes the
// other windows, the chooser's ".dat", F1, the tabs from the keyboard and Esc.
#include "interchange/ui/frm_importar.h"
#include "../../screen_exercise.h"
#include "context/messages.h"
#include "widgets/obre_ajuda.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

using namespace tallora;

namespace {

template <class W>
W* child(QWidget* form, const char* name) {
    W* w = form->findChild<W*>(QString::fromLatin1(name));
    if (!w) qFatal("no widget %s", name);
    return w;
}

class Exercise : public testing::ScreenExercise {
public:
    Exercise() {
        ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        ctx.EmpresaNIF = QStringLiteral("B1234567");
        store::Database::open(exerciseFile(schema::db::Gest))
            .execute(QStringLiteral("insert into Clients (client, nom) values (1, 'Bar Centre'), "
                                    "(2, 'Zapateria Luz')"));
    }
    QString file(const char* name) const { return root.filePath(QString::fromLatin1(name)); }
};

QStringList items(QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i) out << list->item(i)->text();
    return out;
}

}  // namespace

class FrmImportarTest : public QObject {
    Q_OBJECT
private slots:
    void theExportsBoxesFollowItsOptionAndNothingIsImportableBeforeAFile() {
        Exercise x;
        frmImportar form(x.ctx, x.dialogs);
        QVERIFY(child<QRadioButton>(&form, "OpExportaTodo")->isChecked());
        QVERIFY(!child<QCheckBox>(&form, "OpChkClientes")->isEnabled());
        child<QRadioButton>(&form, "OpExportaParcial")->setChecked(true);
        QVERIFY(child<QCheckBox>(&form, "OpChkClientes")->isEnabled());
        for (const char* name : {"OpImportaTodo", "OpImportaParcial"})
            QVERIFY(!child<QRadioButton>(&form, name)->isEnabled());
        QCOMPARE(child<QListWidget>(&form, "ListArchivo")->count(), 0);
    }

    void anExportLogsEveryRecordAndFillsItsBar() {
        Exercise x;
        frmImportar form(x.ctx, x.dialogs);
        form.chooseExportPath = [&] { return x.file("copia"); };
        form.btnBuscaExp();
        QCOMPARE(child<QLineEdit>(&form, "txtDirExporta")->text(), x.file("copia.dat"));
        form.btn_Exporta();
        QVERIFY(QFile::exists(x.file("copia.dat")));
        const QStringList log = items(child<QListWidget>(&form, "List_exporta"));
        QVERIFY2(log.contains(QStringLiteral("CLI: 1 Bar Centre")), qPrintable(log.join(u'\n')));
        QVERIFY(log.contains(QStringLiteral("CLI: 2 Zapateria Luz")));
        auto* bar = child<QProgressBar>(&form, "ProgExporta");
        QCOMPARE(bar->value(), bar->maximum());
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 32));
        QVERIFY(form.TabStrip1()->isEnabled());
    }

    void aSelectionsFileSetsThePartialOptionAndItsBoxes() {
        Exercise x;
        frmImportar form(x.ctx, x.dialogs);
        child<QRadioButton>(&form, "OpExportaParcial")->setChecked(true);
        child<QCheckBox>(&form, "OpChkClientes")->setChecked(true);
        child<QLineEdit>(&form, "txtDirExporta")->setText(x.file("clientes.dat"));
        form.btn_Exporta();
        form.setImportFile(x.file("clientes.dat"));
        QCOMPARE(child<QListWidget>(&form, "ListArchivo")->count(), 5);
        QVERIFY(child<QRadioButton>(&form, "OpImportaParcial")->isChecked());
        QVERIFY(!child<QRadioButton>(&form, "OpImportaTodo")->isEnabled());
        QVERIFY(child<QCheckBox>(&form, "OpChkClientesImporta")->isChecked());
        QVERIFY(!child<QCheckBox>(&form, "OpChkProveedoresImporta")->isEnabled());
        QVERIFY(!child<QCheckBox>(&form, "OpChkCuentasImporta")->isChecked());
        // A selection carries no sales: nothing to record.
        QVERIFY(!child<QCheckBox>(&form, "chkVerifactu")->isEnabled());
    }

    void aWholeImportLogsItsEndAndAsksTheOthersToClose() {
        Exercise x;
        frmImportar form(x.ctx, x.dialogs);
        child<QLineEdit>(&form, "txtDirExporta")->setText(x.file("todo.dat"));
        form.btn_Exporta();
        form.chooseImportPath = [&] { return x.file("todo.dat"); };
        form.btnBuscaImp();
        QVERIFY(child<QRadioButton>(&form, "OpImportaTodo")->isChecked());
        // Recording the imported invoices is the user's choice, never the default.
        QVERIFY(child<QCheckBox>(&form, "chkVerifactu")->isEnabled());
        QVERIFY(!child<QCheckBox>(&form, "chkVerifactu")->isChecked());
        QSignalSpy finished(&form, &frmImportar::importFinished);
        x.dialogs.setNextAnswer(Dialogs::Answer::Yes);
        form.btn_Importa();
        QCOMPARE(finished.count(), 1);
        const QStringList log = items(child<QListWidget>(&form, "List1"));
        QVERIFY(log.contains(QStringLiteral("CLI: 2 Zapateria Luz")));
        QCOMPARE(log.last(), Missatge(x.ctx, 6611));
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6611));
    }

    void aRefusedImportDoesNotAskTheOthersToClose() {
        Exercise x;
        frmImportar form(x.ctx, x.dialogs);
        QSignalSpy finished(&form, &frmImportar::importFinished);
        form.btn_Importa();
        QCOMPARE(x.dialogs.lastText(), Missatge(x.ctx, 6612));
        QCOMPARE(finished.count(), 0);
    }

    void f1OpensItsHelpTheTabsTurnAndEscCloses() {
        Exercise x;
        QString opened;
        ui::setPageOpener([&](const QString& path) { opened = path; });
        frmImportar form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(form.focusWidget()->objectName(), QStringLiteral("txtDirExporta"));
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(form.TabStrip1()->currentIndex(), 1);
        QTest::keyClick(form.focusWidget(), Qt::Key_F1);
        QVERIFY2(opened.endsWith(QStringLiteral("esp_help/7/7.html")), qPrintable(opened));
        QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
        QVERIFY(!form.isVisible());
        ui::setPageOpener({});
    }
};

QTEST_MAIN(FrmImportarTest)
#include "frm_importar_test.moc"
