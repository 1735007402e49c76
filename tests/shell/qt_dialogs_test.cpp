// The on-screen boxes: each is answered by a click planned before it opens.
#include "widgets/qt_dialogs.h"
#include "widgets/qt_translations.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

using namespace tallora;

namespace {

struct Seen {
    QString text;
    QString title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bool found = false;
};

// The captions of the buttons of the next box that opens, without their "&"; then the
// box is answered with `answer`.
void captionsWhenShown(QStringList& captions, QMessageBox::StandardButton answer) {
    QTimer::singleShot(0, [&captions, answer] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        for (QAbstractButton* b : box->buttons()) captions << b->text().remove(u'&');
        box->button(answer)->click();
    });
}

// Clicks `button` of the next message box that opens and notes what it showed.
void clickWhenShown(QMessageBox::StandardButton button, Seen& seen) {
    QTimer::singleShot(0, [button, &seen] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        seen = {box->text(), box->windowTitle(), box->icon(), true};
        box->button(button)->click();
    });
}

}  // namespace

class QtDialogsTest : public QObject {
    Q_OBJECT
private slots:
    void yesNoReturnsTheClickedAnswer() {
        QtDialogs dialogs(nullptr, QStringLiteral("Tallora 5"));
        Seen seen;
        clickWhenShown(QMessageBox::No, seen);
        QCOMPARE(dialogs.yesNo(QStringLiteral("¿Seguro?")), Dialogs::Answer::No);
        QVERIFY(seen.found);
        QCOMPARE(seen.text, QStringLiteral("¿Seguro?"));
        QCOMPARE(seen.title, QStringLiteral("Tallora 5"));
        QCOMPARE(seen.icon, QMessageBox::Question);
        clickWhenShown(QMessageBox::Yes, seen);
        QCOMPARE(dialogs.yesNo(QStringLiteral("¿Otra?"), QStringLiteral("Título")), Dialogs::Answer::Yes);
        QCOMPARE(seen.title, QStringLiteral("Título"));
    }

    void okCancelCarriesItsIcon() {
        QtDialogs dialogs(nullptr, QStringLiteral("Tallora 5"));
        Seen seen;
        clickWhenShown(QMessageBox::Cancel, seen);
        QCOMPARE(dialogs.okCancel(QStringLiteral("x"), {}, Dialogs::Icon::Exclamation),
                 Dialogs::Answer::Cancel);
        QCOMPARE(seen.icon, QMessageBox::Warning);
        clickWhenShown(QMessageBox::Ok, seen);
        QCOMPARE(dialogs.okCancel(QStringLiteral("y")), Dialogs::Answer::Ok);
    }

    void noticesShowTheirIcons() {
        QtDialogs dialogs(nullptr, QStringLiteral("Tallora 5"));
        Seen seen;
        clickWhenShown(QMessageBox::Ok, seen);
        dialogs.stop(QStringLiteral("Su sistema no tiene ninguna impresora disponible."));
        QCOMPARE(seen.icon, QMessageBox::Critical);
        clickWhenShown(QMessageBox::Ok, seen);
        dialogs.information(QStringLiteral("PROCESO FINALIZADO"));
        QCOMPARE(seen.icon, QMessageBox::Information);
        QCOMPARE(seen.text, QStringLiteral("PROCESO FINALIZADO"));
    }

    void theButtonsSpeakTheLanguageOfTheProgram() {
        QtDialogs dialogs(nullptr, QStringLiteral("Tallora 5"));
        QVERIFY(ui::useQtTranslations(QStringLiteral("esp")));
        QStringList captions;
        captionsWhenShown(captions, QMessageBox::No);
        dialogs.yesNo(QStringLiteral("¿Seguro?"));
        captions.sort();
        QCOMPARE(captions, (QStringList{QStringLiteral("No"), QStringLiteral("Sí")}));
        captions.clear();
        captionsWhenShown(captions, QMessageBox::Cancel);
        dialogs.okCancel(QStringLiteral("¿Seguro?"));
        captions.sort();
        QCOMPARE(captions, (QStringList{QStringLiteral("Aceptar"), QStringLiteral("Cancelar")}));

        QVERIFY(ui::useQtTranslations(QStringLiteral("cat")));
        captions.clear();
        captionsWhenShown(captions, QMessageBox::Cancel);
        dialogs.okCancel(QStringLiteral("Segur?"));
        captions.sort();
        QCOMPARE(captions, (QStringList{QStringLiteral("Cancel·la"), QStringLiteral("D'acord")}));
        captions.clear();
        captionsWhenShown(captions, QMessageBox::Yes);
        dialogs.yesNo(QStringLiteral("Segur?"));
        captions.sort();
        QCOMPARE(captions, (QStringList{QStringLiteral("No"), QStringLiteral("Sí")}));
        captions.clear();
        captionsWhenShown(captions, QMessageBox::Ok);
        dialogs.information(QStringLiteral("Fet"));
        QCOMPARE(captions, QStringList{QStringLiteral("D'acord")});
    }
};

QTEST_MAIN(QtDialogsTest)
#include "qt_dialogs_test.moc"
