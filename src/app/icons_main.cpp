// Writes the program's icon in the sizes a desktop asks for, as the freedesktop icon theme lays
// them out: <folder>/hicolor/<n>x<n>/apps/tallora5.png. Run by the build for the package.
#include "widgets/app_icon.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>

#include <cstdio>

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: tallora5-icons FOLDER\n");
        return 2;
    }
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString dir = QStringLiteral("%1/hicolor/%2x%2/apps").arg(QString::fromLocal8Bit(argv[1])).arg(size);
        if (!QDir().mkpath(dir) || !tallora::ui::appIconImage(size).save(dir + QStringLiteral("/tallora5.png"))) {
            std::fprintf(stderr, "tallora5-icons: cannot write %s\n", qPrintable(dir));
            return 1;
        }
    }
    return 0;
}
