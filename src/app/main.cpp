#include "context/program.h"
#include "context/working_context.h"
#include "shell/ui/session.h"
#include "widgets/app_icon.h"
#include "widgets/qt_dialogs.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <cstdio>

namespace {

// --check-start: once the event loop has shown the first screen, print the object name of each
// visible window and leave. A packager's smoke test that the installed program really starts
// with its installed resources, without anyone at the keyboard.
void reportFirstScreenAndQuit() {
    QTimer::singleShot(0, qApp, [] {
        int shown = 0;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible()) {
                std::printf("%s\n", qPrintable(window->objectName()));
                ++shown;
            }
        std::fflush(stdout);
        QApplication::exit(shown > 0 ? 0 : 1);
    });
}

const QCommandLineOption& checkStartOption() {
    static const QCommandLineOption option(
        QStringLiteral("check-start"),
        QStringLiteral("Start, print the name of the first screen shown, and leave."));
    return option;
}

void describe(QCommandLineParser& options) {
    options.setApplicationDescription(
        QStringLiteral("Bookkeeping and billing for small businesses"));
    options.addHelpOption();
    options.addVersionOption();
    options.addOption(checkStartOption());
}

// --help and --version answer without a display: a GUI application cannot even start where
// there is none, as on a server or in a package build.
bool asksOnlyForText(int argc, char* argv[]) {
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "-h" || arg == "--help" || arg == "--help-all" || arg == "-v" ||
            arg == "--version")
            return true;
    }
    return false;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (asksOnlyForText(argc, argv)) {
        QCoreApplication app(argc, argv);
        QCoreApplication::setApplicationName(tallora::programName());
        QCoreApplication::setApplicationVersion(tallora::programVersion());
        QCommandLineParser options;
        describe(options);
        options.process(app);  // prints and leaves
        return 0;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(tallora::programName());
    QApplication::setApplicationVersion(tallora::programVersion());
    QApplication::setWindowIcon(tallora::ui::appIcon());
    QApplication::setDesktopFileName(QStringLiteral("tallora5"));

    QCommandLineParser options;
    describe(options);
    options.process(app);

    // The screens come and go as the user moves on; the session says when the program ends.
    QApplication::setQuitOnLastWindowClosed(false);
    tallora::WorkingContext ctx;
    tallora::QtDialogs dialogs(nullptr, tallora::programName());
    tallora::Session session(ctx, dialogs);
    QObject::connect(&session, &tallora::Session::finished, &app, &QApplication::quit);
    session.start();
    if (options.isSet(checkStartOption())) reportFirstScreenAndQuit();
    return app.exec();
}
