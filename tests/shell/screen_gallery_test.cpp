#include "context/working_context.h"
#include "shell/ui/screen_gallery.h"

#include <QImage>
#include <QSet>
#include <QWidget>
#include <QtTest>

using namespace tallora;

class ScreenGalleryTest : public QObject {
    Q_OBJECT
private slots:
    void everyScreenRendersInBothLanguagesAndFitsASmallScreen() {
        const auto screens = screenGallery();
        QVERIFY(!screens.empty());
        QSet<QString> names;
        for (const auto& screen : screens) {
            QVERIFY2(!names.contains(screen.name), qPrintable(screen.name));
            names.insert(screen.name);
            for (const QString& language : {QStringLiteral("esp"), QStringLiteral("cat")}) {
                WorkingContext ctx;
                QVERIFY(ctx.setIdioma(language));
                auto widget = screen.make(ctx);
                QVERIFY(widget);
                widget->show();
                const QImage image = widget->grab().toImage();
                QVERIFY2(image.width() > 200 && image.height() > 100, qPrintable(screen.name));
                // Every screen fits and works on a 1366×768 screen.
                const QString overflow = overflowOnSmallScreen(widget.get());
                QVERIFY2(overflow.isEmpty(),
                         qPrintable(screen.name + u' ' + language + u' ' + overflow));
            }
        }
    }

    void aScreenTallerThanTheSmallScreenIsNamed() {
        QWidget tall;
        tall.setMinimumSize(800, 900);
        QCOMPARE(overflowOnSmallScreen(&tall), QStringLiteral("needs 800×900"));
        tall.setMinimumSize(800, 600);
        QVERIFY(overflowOnSmallScreen(&tall).isEmpty());
        fitToSmallScreen(&tall);
        QCOMPARE(tall.size(), smallScreenArea());
    }
};

QTEST_MAIN(ScreenGalleryTest)
#include "screen_gallery_test.moc"
