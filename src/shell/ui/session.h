#pragma once
// The road through the program: settings on the first run, the company list, the
// exercises of the company, the shell, and back. Each screen is made when it is reached and
// goes when it is left, so that captions always come in the language in force, Qt's own
// buttons and dialogs among them.
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace tallora {

class Dialogs;
class WorkingContext;

class Session : public QObject {
    Q_OBJECT
public:
    Session(WorkingContext& ctx, Dialogs& dialogs, QObject* parent = nullptr);

    // The start of the program.
    void start();
    // The screen the user is on.
    QWidget* current() const { return current_; }

signals:
    // The user left the program.
    void finished();

private:
    // The settings of the first run, on the tab `tab`. Applying a language shows them again
    // in it; leaving them in any way ends the first run.
    void showFirstSettings(int tab);
    void showCompanies();
    void showExercises();
    void showShell();
    void show(QWidget* screen);

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QPointer<QWidget> current_;
};

}  // namespace tallora
