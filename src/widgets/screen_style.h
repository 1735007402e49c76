#pragma once
// The look the screens share: the title band and the tool buttons by key.
#include "context/fwd.h"

#include <QKeySequence>
#include <QString>

#include <functional>

class QAction;
class QLabel;
class QPushButton;
class QTabWidget;
class QToolBar;
class QWidget;

namespace tallora::ui {

// `w` with its objectName, as the screens name their controls.
template <class Widget>
Widget* named(Widget* w, const char* name) {
    w->setObjectName(QString::fromLatin1(name));
    return w;
}

// A dialog's button, 30 pixels high: Enter runs the button that has the focus, and no other.
QPushButton* dialogButton(const char* name, const QString& caption, QWidget* parent);

// A label in bold, its text trimmed.
QLabel* boldLabel(const QString& text, QWidget* parent);

// Closes a screen: its window in the main window's workspace when it has one, else itself.
void closeScreen(QWidget* screen);

// The dark band at the top of a screen: its title on the left, `right` on the right. The
// two labels take the names given, so that a screen can find and change them.
QWidget* bandTitle(const QString& title, const QString& right, QWidget* parent,
                   const QString& titleName = QStringLiteral("lblTitol"),
                   const QString& rightName = QStringLiteral("lblDreta"));

// A tool button named by its key (the QAction's objectName), with its caption, an optional
// shortcut shown in its tip, and what it does.
QAction* addTool(QToolBar* bar, const QString& key, const QString& caption,
                 const QKeySequence& shortcut, std::function<void()> action);

// The tool "Exportar" that saves a screen's list as a spreadsheet, captioned and explained
// in the language of `ctx`.
QAction* addSpreadsheetTool(QToolBar* bar, const WorkingContext& ctx, std::function<void()> action);

// From the keyboard the tabs of `tabs` turn with Ctrl+Tab and Ctrl+PgDown, and back with
// Ctrl+Shift+Tab and Ctrl+PgUp, whatever field of `form` has the focus (a list would
// otherwise take the page keys); the tab bar then has the focus, so the arrows go on turning
// and Tab enters the page.
void turnTabsFromKeyboard(QTabWidget* tabs, QWidget* form);

}  // namespace tallora::ui
