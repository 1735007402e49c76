// Suppliers, accounts, treasury accounts, other accounts and price references from the
// keyboard: new, save, search by prefix, change, cancel with Esc, delete answered both ways.
#include "context/messages.h"
#include "master/ui/accounts_form.h"
#include "master/ui/references_form.h"
#include "master/ui/suppliers_form.h"
#include "master/ui/treasury_accounts_form.h"
#include "screen_fixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

using namespace tallora;
using namespace tallora::testing;

namespace {

QString text(QWidget* form, const char* name) {
    return form->findChild<QLineEdit*>(QString::fromLatin1(name))->text();
}

// No, then Yes, to the delete question of the selected row; gives the texts shown.
void deleteBothWays(MasterForm* form, ScriptedDialogs& dialogs, const std::function<int()>& count) {
    const int before = count();
    dialogs.setNextAnswer(Dialogs::Answer::No);
    clickTool(form, QStringLiteral("Esborrar"));
    QCOMPARE(count(), before);
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    clickTool(form, QStringLiteral("Esborrar"));
    QCOMPARE(count(), before - 1);
}

int countOf(const QString& path, const QString& table) {
    return ScreenExercise::rows(path, QStringLiteral("select count(*) from ") + table)
        .front()
        .toInt();
}

}  // namespace

class MasterScreensTest : public QObject {
    Q_OBJECT

private slots:
    void suppliers() {
        ScreenExercise x;
        const QString gest = x.exerciseFile(QStringLiteral("gest.mdb"));
        frmProveidors form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(form.windowTitle(), Missatge(x.ctx, 427));
        for (const QString& name : {QStringLiteral("Pintures Reus"), QStringLiteral("Endesa")}) {
            newRecord(&form);
            QCOMPARE(form.statusText(), QStringLiteral("Alta ..."));
            type(&form, name);
            enter(&form);
            QCOMPARE(focusName(&form), QStringLiteral("txtNIF"));
            type(&form, QStringLiteral("A43123987"));
            save(&form);
        }
        QCOMPARE(listTexts(form.list()), (QStringList{"Endesa", "Pintures Reus"}));
        type(&form, QStringLiteral("pin"));
        QCOMPARE(text(&form, "txtNIF"), QStringLiteral("A43123987"));
        // Enter in the search box goes to the list; Enter there starts the change.
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("ListProv"));
        enter(&form);
        QCOMPARE(form.state(), MasterForm::State::Changing);
        retype(&form, QStringLiteral("Pintures Tarragona"));
        save(&form);
        QCOMPARE(ScreenExercise::rows(gest, "select nom from Proveidors order by nom"),
                 (QStringList{"Endesa", "Pintures Tarragona"}));
        type(&form, QStringLiteral("end"));
        enter(&form);
        enter(&form);
        retype(&form, QStringLiteral("Iberdrola"));
        cancel(&form);
        QCOMPARE(form.state(), MasterForm::State::Browsing);
        QCOMPARE(ScreenExercise::rows(gest, "select nom from Proveidors where nom = 'Endesa'"),
                 QStringList{"Endesa"});
        type(&form, QStringLiteral("end"));
        deleteBothWays(&form, x.dialogs, [&] { return countOf(gest, "Proveidors"); });
        QCOMPARE(x.dialogs.shown().back().text, Missatge(x.ctx, 311) + QStringLiteral("1"));
        // Esc while browsing closes the screen.
        cancel(&form);
        QVERIFY(!form.isVisible());
    }

    void accounts() {
        ScreenExercise x;
        const QString comptes = x.exerciseFile(QStringLiteral("Comptes.mdb"));
        formComptes form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        // Services: a family of its own, empty in a fresh exercise.
        form.findChild<QRadioButton*>(QStringLiteral("OpData2"))->click();
        QCOMPARE(form.family(), master::Family::Serveis);
        QCOMPARE(form.list()->count(), 0);
        newRecord(&form);
        QCOMPARE(text(&form, "txtcompte"), QStringLiteral("ALTA"));
        QCOMPARE(text(&form, "txtGrup"), QStringLiteral("62"));
        QCOMPARE(focusName(&form), QStringLiteral("txtdescripcio"));
        type(&form, QStringLiteral("Reparacions furgoneta"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("ComboExplotacio"));
        type(&form, QStringLiteral("Reparaciones"));
        enter(&form);  // Enter in the class saves
        QCOMPARE(form.state(), MasterForm::State::Browsing);
        QCOMPARE(
            ScreenExercise::rows(comptes, "select Grup, NomGrup, NomCompte, Tipus from Serveis"),
            QStringList{QStringLiteral("62|%1|Reparacions furgoneta|Reparaciones")
                            .arg(Missatge(x.ctx, 512))});
        // The list shows capitals and browsing shows the first account.
        QCOMPARE(listTexts(form.list()), QStringList{"REPARACIONS FURGONETA"});
        QCOMPARE(text(&form, "txtdescripcio"), QStringLiteral("Reparacions furgoneta"));
        form.list()->setFocus();
        enter(&form);
        QCOMPARE(form.state(), MasterForm::State::Changing);
        QTest::keyClick(form.focusWidget(), Qt::Key_Apostrophe, Qt::NoModifier);
        QCOMPARE(x.dialogs.beeps(), 1);
        retype(&form, QStringLiteral("Reparacions vehicle"));
        save(&form);
        QCOMPARE(ScreenExercise::rows(comptes, "select NomCompte from Serveis"),
                 QStringList{"Reparacions vehicle"});
        form.list()->setFocus();
        enter(&form);
        retype(&form, QStringLiteral("Res"));
        cancel(&form);
        QCOMPARE(ScreenExercise::rows(comptes, "select NomCompte from Serveis"),
                 QStringList{"Reparacions vehicle"});
        deleteBothWays(&form, x.dialogs, [&] { return countOf(comptes, "Serveis"); });
        QCOMPARE(x.dialogs.shown().back().text, Missatge(x.ctx, 311) + QStringLiteral("1"));
    }

    void treasuryAccounts() {
        ScreenExercise x;
        const QString tesorer = x.exerciseFile(QStringLiteral("tesorer.mdb"));
        // The treasury set-up gives every exercise its cash account, number 1.
        QCOMPARE(ScreenExercise::rows(tesorer, "select Id from entidades"), QStringList{"1"});
        frmTesoreria_cuentas form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        newRecord(&form);
        type(&form, QStringLiteral("Caja tienda"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("cmb_grupo"));
        enter(&form);
        type(&form, QStringLiteral("ES12"));
        enter(&form);
        type(&form, QStringLiteral("350"));
        save(&form);
        newRecord(&form);
        type(&form, QStringLiteral("Banco"));
        enter(&form);
        press(&form, Qt::Key_Down);  // banks
        save(&form);
        QCOMPARE(ScreenExercise::rows(
                     tesorer,
                     "select Grup, entidad, ccc, Saldo from entidades where Id > 1 order by Id"),
                 (QStringList{"570|Caja tienda|ES12|3500000", "572|Banco||0"}));
        type(&form, QStringLiteral("ban"));
        enter(&form);
        enter(&form);
        retype(&form, QStringLiteral("Banco Sabadell"));
        save(&form);
        type(&form, QStringLiteral("caj"));
        enter(&form);
        enter(&form);
        retype(&form, QStringLiteral("Otra"));
        cancel(&form);
        QCOMPARE(
            ScreenExercise::rows(tesorer, "select entidad from entidades where Id > 1 order by Id"),
            (QStringList{"Caja tienda", "Banco Sabadell"}));
        type(&form, QStringLiteral("caj"));
        deleteBothWays(&form, x.dialogs, [&] { return countOf(tesorer, "entidades"); });
    }

    void otherAccounts() {
        ScreenExercise x;
        const QString comptes = x.exerciseFile(QStringLiteral("Comptes.mdb"));
        frmTesoreria_otrascuentas form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        newRecord(&form);
        type(&form, QStringLiteral("Prestamo ICO"));
        enter(&form);
        type(&form, QStringLiteral("170"));
        enter(&form);
        type(&form, QStringLiteral("Deudas"));
        enter(&form);
        QCOMPARE(focusName(&form), QStringLiteral("CmbActivo_Pasivo"));
        press(&form, Qt::Key_Down);
        press(&form, Qt::Key_Down);  // liability
        enter(&form);
        type(&form, QStringLiteral("18000"));
        save(&form);
        QCOMPARE(ScreenExercise::rows(comptes,
                                      "select Grup, NomGrup, NomCompte, Saldo, Tipus from Otras "
                                      "where NomCompte like 'Pre%'"),
                 QStringList{"170|Deudas|Prestamo ICO|180000000|P"});
        type(&form, QStringLiteral("pre"));
        enter(&form);
        enter(&form);
        retype(&form, QStringLiteral("Prestamo ICO 2026"));
        save(&form);
        type(&form, QStringLiteral("pre"));
        enter(&form);
        enter(&form);
        retype(&form, QStringLiteral("X"));
        cancel(&form);
        QCOMPARE(ScreenExercise::rows(comptes,
                                      "select NomCompte from Otras where NomCompte like 'Pre%'"),
                 QStringList{"Prestamo ICO 2026"});
        type(&form, QStringLiteral("pre"));
        deleteBothWays(&form, x.dialogs, [&] { return countOf(comptes, "Otras"); });
    }

    void priceReferences() {
        ScreenExercise x;
        const QString fact = x.companyFile(QStringLiteral("fact.mdb"));
        frmReferencias form(x.ctx, x.dialogs);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QVERIFY(form.searchBox() == nullptr);
        QCOMPARE(focusName(&form), QStringLiteral("ListReferencias"));
        newRecord(&form);
        type(&form, QStringLiteral("TORN-M8"));
        enter(&form);
        type(&form, QStringLiteral("Tornillo M8"));
        enter(&form);
        type(&form, QStringLiteral("12,5"));
        enter(&form);
        QCOMPARE(text(&form, "txtPrecio"), QStringLiteral("12,50"));
        save(&form);
        newRecord(&form);
        type(&form, QStringLiteral("HORA"));
        save(&form);  // an empty price is saved as 0
        QCOMPARE(ScreenExercise::rows(
                     fact, "select Referencia, Descripcion, Precio from referencias order by Id"),
                 (QStringList{"TORN-M8|Tornillo M8|125000", "HORA||0"}));
        QCOMPARE(listTexts(form.list()), (QStringList{"HORA", "TORN-M8"}));
        // The list finds by the first letters too.
        form.list()->setFocus();
        QTest::keyClicks(form.list(), QStringLiteral("T"));
        QCOMPARE(form.list()->currentItem()->text(), QStringLiteral("TORN-M8"));
        enter(&form);
        QCOMPARE(form.state(), MasterForm::State::Changing);
        enter(&form);
        retype(&form, QStringLiteral("Tornillo hexagonal M8"));
        save(&form);
        form.list()->setFocus();
        form.list()->setCurrentRow(1);
        enter(&form);
        retype(&form, QStringLiteral("X"));
        cancel(&form);
        QCOMPARE(ScreenExercise::rows(
                     fact, "select Descripcion from referencias where Referencia = 'TORN-M8'"),
                 QStringList{"Tornillo hexagonal M8"});
        form.list()->setCurrentRow(0);
        deleteBothWays(&form, x.dialogs, [&] { return countOf(fact, "referencias"); });
    }
};

QTEST_MAIN(MasterScreensTest)
#include "master_screens_test.moc"
