#include "context/program.h"
#include "context/working_context.h"
#include "shell/ui/session.h"
#include "widgets/qt_dialogs.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(tallora::programName());
    QApplication::setApplicationVersion(tallora::programVersion());
    // The screens come and go as the user moves on; the session says when the program ends.
    QApplication::setQuitOnLastWindowClosed(false);
    tallora::WorkingContext ctx;
    tallora::QtDialogs dialogs(nullptr, tallora::programName());
    tallora::Session session(ctx, dialogs);
    QObject::connect(&session, &tallora::Session::finished, &app, &QApplication::quit);
    session.start();
    return app.exec();
}
