// The window destination on screen: the preview opens with every page, pages and zoom
// change, and the print dialog can be cancelled.
#include "books/customer_listings.h"
#include "context/dialogs.h"
#include "report/ui/qt_report_output.h"
#include "report/ui/report_preview.h"
#include "report_fixture.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

using namespace tallora;
using namespace tallora::report;

class PreviewTest : public QObject {
    Q_OBJECT
private:
    // The customers' list of the sample rows in a window, handed to the hook.
    ReportPreview* openListing(tallora::testing::ReportFixture& f, QtReportOutput& output) {
        tallora::testing::ReportFixture::loadRows(
            f.gest(), QStringLiteral("Clients"),
            tallora::testing::sourcePath(
                QStringLiteral("tests/data/reports/listings/cli_dom_esp/clients.tsv")));
        ReportPreview* shown = nullptr;
        output.setWindowHook([&](QWidget* w) { shown = qobject_cast<ReportPreview*>(w); });
        books::ListingRequest request{
            books::ListingKind::Domicile, QDate(2026, 3, 15), Destination::Window, {}};
        ReportJob job;
        const ReportResult r = books::btnLListatClients(f.ctx, dialogs_, job, &output, request);
        if (!r.ok()) qWarning() << r.error;
        return shown;
    }
    ScriptedDialogs dialogs_;

private slots:
    void theHookGetsThePreviewWithEveryPage() {
        tallora::testing::ReportFixture f;
        QtReportOutput output(&dialogs_);
        std::unique_ptr<ReportPreview> preview(openListing(f, output));
        QVERIFY(preview);
        preview->show();
        QVERIFY(QTest::qWaitForWindowExposed(preview.get()));
        QCOMPARE(preview->pageCount(), 2);
        QCOMPARE(preview->windowTitle(), QStringLiteral("CLIENTES"));
        QCOMPARE(preview->pageLabel()->text(), QStringLiteral("1 / 2"));
        QVERIFY(!preview->pageView()->pixmap().isNull());
        auto* next = preview->findChild<QToolButton*>(QStringLiteral("btnSeguent"));
        auto* first = preview->findChild<QToolButton*>(QStringLiteral("btnPrimera"));
        QVERIFY(next && first);
        QVERIFY(!first->isEnabled());
        QTest::mouseClick(next, Qt::LeftButton);
        QCOMPARE(preview->currentPage(), 1);
        QCOMPARE(preview->pageLabel()->text(), QStringLiteral("2 / 2"));
        QVERIFY(!next->isEnabled());
        QTest::keyClick(preview.get(), Qt::Key_PageUp);
        QCOMPARE(preview->currentPage(), 0);
        QTest::keyClick(preview.get(), Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(preview->currentPage(), 1);
    }

    void zoomScalesThePage() {
        tallora::testing::ReportFixture f;
        QtReportOutput output(&dialogs_);
        std::unique_ptr<ReportPreview> preview(openListing(f, output));
        QVERIFY(preview);
        preview->show();
        QVERIFY(QTest::qWaitForWindowExposed(preview.get()));
        preview->setZoom(1.0);
        const QSize real = preview->pageView()->pixmap().deviceIndependentSize().toSize();
        const double dpi = preview->logicalDpiX();
        QVERIFY(qAbs(real.width() - qRound(210 / 25.4 * dpi)) <= 1);
        preview->setZoom(2.0);
        QVERIFY(qAbs(preview->pageView()->pixmap().deviceIndependentSize().width() -
                     2 * real.width()) <= 2);
        auto* zoom = preview->findChild<QComboBox*>(QStringLiteral("cmbZoom"));
        QVERIFY(zoom);
        QCOMPARE(zoom->currentData().toDouble(), 2.0);
        preview->setZoom(0);
        QVERIFY(preview->pageView()->pixmap().deviceIndependentSize().width() <= preview->width());
    }

    void withoutAHookThePreviewIsAWindowOfItsOwn() {
        tallora::testing::ReportFixture f;
        QtReportOutput output(&dialogs_);
        tallora::testing::ReportFixture::loadRows(
            f.gest(), QStringLiteral("Clients"),
            tallora::testing::sourcePath(
                QStringLiteral("tests/data/reports/listings/cli_dom_esp/clients.tsv")));
        books::ListingRequest request{
            books::ListingKind::Contacts, QDate(2026, 3, 15), Destination::Window, {}};
        ReportJob job;
        QVERIFY(books::btnLListatClients(f.ctx, dialogs_, job, &output, request).ok());
        ReportPreview* preview = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* p = qobject_cast<ReportPreview*>(w); p && p->isVisible()) preview = p;
        QVERIFY(preview);
        QCOMPARE(preview->pageCount(), 2);
        QVERIFY(preview->testAttribute(Qt::WA_DeleteOnClose));
        QPointer<ReportPreview> guard(preview);
        preview->close();
        QTRY_VERIFY(guard.isNull());
    }

    void savesThePagesAsPdf() {
        tallora::testing::ReportFixture f;
        QtReportOutput output(&dialogs_);
        std::unique_ptr<ReportPreview> preview(openListing(f, output));
        QVERIFY(preview);
        const QString pdf = f.file(QStringLiteral("copia.pdf"));
        QVERIFY(preview->savePdf(pdf));
        const QStringList pages = tallora::testing::pdfPages(pdf);
        QCOMPARE(pages.size(), 2);
        QVERIFY(pages[1].contains(QStringLiteral("Página 2 de 2")));
        dialogs_.clear();
        QVERIFY(!preview->savePdf(f.file(QStringLiteral("no/such/folder/copia.pdf"))));
        QCOMPARE(dialogs_.shown().size(), size_t(1));
        QVERIFY(dialogs_.lastText().contains(QStringLiteral("cannot be written")));
    }

    void thePrinterDestinationAsksThePrintDialog() {
        tallora::testing::ReportFixture f;
        tallora::testing::ReportFixture::loadRows(
            f.gest(), QStringLiteral("Clients"),
            tallora::testing::sourcePath(
                QStringLiteral("tests/data/reports/listings/cli_dom_esp/clients.tsv")));
        QtReportOutput output(&dialogs_);
        bool asked = false;
        QTimer::singleShot(0, [&] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                asked = true;
                dialog->reject();
            }
        });
        books::ListingRequest request{
            books::ListingKind::Domicile, QDate(2026, 3, 15), Destination::Printer, {}};
        ReportJob job;
        const ReportResult r = books::btnLListatClients(f.ctx, dialogs_, job, &output, request);
        QVERIFY(asked);
        QCOMPARE(r.status, ReportResult::Status::Cancelled);
    }

    void escClosesAPreviewOfItsOwnOrAsAWorkingChild() {
        tallora::testing::ReportFixture f;
        QtReportOutput output(&dialogs_);
        QPointer<ReportPreview> own = openListing(f, output);
        QVERIFY(own);
        own->setAttribute(Qt::WA_DeleteOnClose);
        own->show();
        QVERIFY(QTest::qWaitForWindowExposed(own.data()));
        QTest::keyClick(own.data(), Qt::Key_Escape);
        QTRY_VERIFY(!own);

        QMdiArea area;
        QPointer<ReportPreview> child = openListing(f, output);
        QVERIFY(child);
        QPointer<QMdiSubWindow> sub = area.addSubWindow(child);
        sub->setAttribute(Qt::WA_DeleteOnClose);
        area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&area));
        QTest::keyClick(child.data(), Qt::Key_Escape);
        QTRY_VERIFY(!sub);
        QVERIFY(area.isVisible());
    }
};

QTEST_MAIN(PreviewTest)
#include "preview_test.moc"
