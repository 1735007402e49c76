#pragma once
// The keys a user presses on a master screen, on the exercise of screen_exercise.h.
#include "../../screen_exercise.h"
#include "master/ui/master_form.h"

#include <QAction>
#include <QListWidget>
#include <QToolBar>
#include <QtTest>

namespace tallora::testing {

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
