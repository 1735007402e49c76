#include "cli/cli.h"
#include "context/program.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tallora5-cli"));
    QCoreApplication::setApplicationVersion(tallora::programVersion());
    QTextStream out(stdout);
    QTextStream err(stderr);
    return tallora::cli::runCli(QCoreApplication::arguments().mid(1), out, err);
}
