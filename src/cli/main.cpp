#include "cli/cli.h"
#include "context/program.h"

#include <QGuiApplication>
#include <QTextStream>

#include <memory>

namespace {

// The offscreen platform asks for a runtime folder that a terminal session may not name;
// Qt then uses its own and says so, which is no news for the user of a command.
void quietStart(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR not set"))) return;
    qInstallMessageHandler(nullptr);
    qt_message_output(type, context, message);
    qInstallMessageHandler(quietStart);
}

}  // namespace

int main(int argc, char* argv[]) {
    QStringList args;
    for (int i = 1; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);
    std::unique_ptr<QCoreApplication> app;
    if (tallora::cli::printsReport(args)) {
        // The companion never opens a window: printing runs on the offscreen platform.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(quietStart);
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName(QStringLiteral("tallora5-cli"));
    QCoreApplication::setApplicationVersion(tallora::programVersion());
    QTextStream out(stdout);
    QTextStream err(stderr);
    return tallora::cli::runCli(QCoreApplication::arguments().mid(1), out, err);
}
