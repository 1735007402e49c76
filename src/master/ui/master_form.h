#pragma once
// The shape every master-file screen shares: a list with a prefix search box on the left,
// the record's fields on the right, five tool buttons and three states (browsing, new,
// changing). The six procedures and the tool buttons are written here once; a screen only
// says how to fill its list, show and clear its fields, save and delete.
//
// Keys, wherever the focus is inside the screen: Esc is "Tancar" (cancel an edit, or close
// when browsing), the "+" of the numeric pad is "Grabar", Ctrl+A is "Alta", and a typed
// "+" is swallowed (the text sanitiser would drop it anyway). F1 opens the screen's help.
// Enter in a field moves to the next one. In the search box a change selects the first
// name that starts with the text, Up and Down move the selection and Enter starts a change
// (or moves to the list, as a screen chooses); Enter or a double click on the list starts
// a change.
//
// The state is kept by the screen itself and shown in the status panel of the shell
// ("Alta ..." for a new record), so that a hint or any other text written there can never
// turn a save into the wrong kind. Field hints show as tool tips.
#include "master/outcome.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QWidget>

class QAction;
class QListWidget;
class QLineEdit;
class QToolBar;
class QVBoxLayout;

namespace tallora {

class Dialogs;
class WorkingContext;

class MasterForm : public QWidget {
    Q_OBJECT
public:
    enum class State { Browsing, New, Changing };

    State state() const { return state_; }
    bool editing() const { return state_ != State::Browsing; }
    // The text this screen last put in the status panel.
    QString statusText() const { return status_; }
    QListWidget* list() const { return list_; }
    QLineEdit* searchBox() const { return search_; }
    // The tool button of that key: "Modificar", "Alta", "Grabar", "Esborrar", "Tancar".
    QAction* tool(const QString& key) const { return tools_.value(key); }

    // Empties the status and the fields, puts the buttons in their browsing state and the
    // focus on the search box (or the list).
    void Neteja();
    // Editing: fields on, list and search off, only "Grabar" and "Tancar" (as "Cancelar").
    void ACTIVA();
    // Browsing: refills the list, Neteja, fields off, list and search on.
    void DESACTIVA();
    void OMPLE_LLISTA();
    // Shows the selected row, or empties the fields when none is selected.
    void MUESTRA_DADES();
    void BUIDA_DADES();

    void Alta();
    void Modificar();
    void Grabar();
    void Esborrar();
    void Tancar();

signals:
    // For panel 2 of the shell's status bar.
    void statusChanged(const QString& text);

protected:
    struct Shape {
        QString formName;  // objectName of the screen
        QString title;     // the title band and the window title
        QString listName;  // objectName of the list ("ListClients" ...)
        QString helpKey;   // F1
        bool searchBox = true;
        bool enterInSearchStartsChange = true;  // otherwise Enter moves to the list
        bool changeStatusText = true;           // message 314 in the status while changing
    };
    MasterForm(WorkingContext& ctx, Dialogs& dialogs, Shape shape, QWidget* parent);

    // The subclass calls this at the end of its constructor with the panel of its fields
    // (enabled only while editing) and the fields in their Enter order; the first gets the
    // focus on ACTIVA. Then the screen starts browsing.
    void finishSetup(QWidget* detail, const QList<QWidget*>& fields);

    // What each screen says for itself.
    virtual QStringList listTexts() = 0;
    virtual void showRow(int row) = 0;
    virtual void clearFields() = 0;
    virtual master::Outcome saveRecord(bool isNew) = 0;
    virtual master::Outcome removeRecord(int row) = 0;
    // Run at the end of Neteja, e.g. to show or hide fields by the options.
    virtual void afterNeteja() {}
    // Run by Alta after the fields are emptied.
    virtual void prepareNew() {}
    // Where the left column ends; a screen may add widgets above the list.
    QVBoxLayout* leftColumn() const { return left_; }
    // A widget that is off while editing, like the list (a screen's choice of family).
    void lockWhileEditing(QWidget* widget) { locked_.append(widget); }

    QString m(int n) const;
    // A caption the message catalogue doesn't carry, in the screen's language.
    QString fixed(const QString& spanish, const QString& catalan) const;
    void setStatus(const QString& text);

    WorkingContext& ctx_;
    Dialogs& dialogs_;

    // The keys of the screen; a screen that filters more keys calls this for the rest.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void installKeys(QWidget* widget);
    void searchChanged(const QString& text);
    void moveSelection(int step);
    void setBrowsingTools();
    void closeScreen();

    Shape shape_;
    State state_ = State::Browsing;
    QString status_;
    QToolBar* toolbar_ = nullptr;
    QHash<QString, QAction*> tools_;
    QListWidget* list_ = nullptr;
    QLineEdit* search_ = nullptr;
    QVBoxLayout* left_ = nullptr;
    QVBoxLayout* right_ = nullptr;
    QWidget* detail_ = nullptr;
    QList<QWidget*> fields_;
    QList<QWidget*> locked_;
};

}  // namespace tallora
