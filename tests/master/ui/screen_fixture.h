#pragma once
// An exercise with every database made, treasury and billing on, and the keys a user
// presses on a master screen.
#include "context/dialogs.h"
#include "context/working_context.h"
#include "master/ui/master_form.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"

#include <QAction>
#include <QDir>
#include <QListWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

namespace tallora::testing {

class ScreenExercise {
public:
    ScreenExercise() {
        ctx.Unitat = root.path();
        company = root.filePath(QStringLiteral("brenwick/LLibres/B1234567/"));
        ctx.Directori = company + QStringLiteral("2026/");
        QDir().mkpath(ctx.Directori);
        ctx.Exercici = QStringLiteral("2026");
        ctx.Moneda = QStringLiteral("Euros");
        ctx.programDir = root.filePath(QStringLiteral("program/"));
        schema::createExerciseDatabases(ctx.Directori);
        ctx.Facturacio = true;
        schema::Actualitza_Bases(ctx);
        ctx.Tesoreria = true;
    }

    QString exerciseFile(const QString& name) const { return ctx.Directori + name; }
    QString companyFile(const QString& name) const { return company + name; }

    // Every row of `sql` in `path`, columns joined by '|'.
    static QStringList rows(const QString& path, const QString& sql) {
        store::Database d = store::Database::open(path);
        store::Statement st = d.prepare(sql);
        QStringList out;
        while (st.next()) {
            QStringList cols;
            for (int i = 0; i < st.columnCount(); ++i) cols << st.text(i);
            out << cols.join(u'|');
        }
        return out;
    }

    QTemporaryDir root;
    QString company;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

// Keys go where the focus is, as they do for a user.
inline void type(QWidget* screen, const QString& text) {
    QTest::keyClicks(screen->focusWidget(), text);
}
inline void press(QWidget* screen, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(screen->focusWidget(), key, modifiers);
}
inline void enter(QWidget* screen) {
    press(screen, Qt::Key_Return);
}
// Replaces the whole text of the focused field.
inline void retype(QWidget* screen, const QString& text) {
    press(screen, Qt::Key_Home);
    press(screen, Qt::Key_End, Qt::ShiftModifier);
    press(screen, Qt::Key_Delete);
    type(screen, text);
}
inline void newRecord(QWidget* screen) {
    press(screen, Qt::Key_A, Qt::ControlModifier);
}
inline void save(QWidget* screen) {
    press(screen, Qt::Key_Plus, Qt::KeypadModifier);
}
inline void cancel(QWidget* screen) {
    press(screen, Qt::Key_Escape);
}
// The delete button has no key: the user clicks it.
inline void clickTool(MasterForm* screen, const QString& key) {
    QAction* action = screen->tool(key);
    QWidget* button =
        screen->findChild<QToolBar*>(QStringLiteral("Toolbar1"))->widgetForAction(action);
    QTest::mouseClick(button, Qt::LeftButton);
}
inline QString focusName(QWidget* screen) {
    return screen->focusWidget() ? screen->focusWidget()->objectName() : QString();
}
inline QStringList listTexts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i) out << list->item(i)->text();
    return out;
}

}  // namespace tallora::testing
