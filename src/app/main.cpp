#include "context/program.h"
#include "context/working_context.h"
#include "shell/ui/form_mdi.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(tallora::programName());
    QApplication::setApplicationVersion(tallora::programVersion());
    tallora::WorkingContext ctx;
    tallora::FormMDI window(ctx);
    window.show();
    return app.exec();
}
