// Writes a PNG of every screen, in Spanish and in Catalan, into the folder given on the
// command line: <folder>/<screen>_<language>.png.
#include "context/working_context.h"
#include "shell/ui/screen_gallery.h"

#include <QApplication>
#include <QDir>
#include <QTextStream>
#include <QWidget>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QTextStream err(stderr);
    if (argc != 2) {
        err << "usage: tallora5-screenshots <folder>\n";
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) {
        err << "cannot create " << folder << "\n";
        return 1;
    }
    int failures = 0;
    for (const QString& language : {QStringLiteral("esp"), QStringLiteral("cat")}) {
        for (const auto& screen : tallora::screenGallery()) {
            tallora::WorkingContext ctx;
            ctx.setIdioma(language);
            auto widget = screen.make(ctx);
            widget->show();
            QApplication::processEvents();
            const QString file = QStringLiteral("%1/%2_%3.png").arg(folder, screen.name, language);
            if (!widget->grab().save(file)) {
                err << "cannot write " << file << "\n";
                ++failures;
            }
        }
    }
    return failures == 0 ? 0 : 1;
}
