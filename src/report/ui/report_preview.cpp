#include "report_preview.h"

#include "print_dialog.h"
#include "report/pdf_output.h"
#include "report/report_error.h"

#include "context/dialogs.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace tallora::report {
namespace {

// Room around the page inside the scroll area, in pixels.
constexpr int kPageGap = 16;

}  // namespace

ReportPreview::ReportPreview(std::shared_ptr<const RenderedReport> report, Dialogs* dialogs,
                             QWidget* parent)
    : QWidget(parent), report_(std::move(report)), dialogs_(dialogs) {
    setObjectName(QStringLiteral("ReportPreview"));
    setWindowTitle(report_->title);
    btnPrimera_ = button("btnPrimera", QStringLiteral("|◀"), QStringLiteral("1"));
    btnAnterior_ = button("btnAnterior", QStringLiteral("◀"), QStringLiteral("−1"));
    lblPagina_ = new QLabel(this);
    lblPagina_->setObjectName(QStringLiteral("lblPagina"));
    lblPagina_->setAlignment(Qt::AlignCenter);
    lblPagina_->setMinimumWidth(70);
    btnSeguent_ = button("btnSeguent", QStringLiteral("▶"), QStringLiteral("+1"));
    btnDarrera_ = button("btnDarrera", QStringLiteral("▶|"), QString::number(report_->pageCount()));
    cmbZoom_ = new QComboBox(this);
    cmbZoom_->setObjectName(QStringLiteral("cmbZoom"));
    cmbZoom_->addItem(QStringLiteral("Ajustar"), 0.0);
    for (int percent : {50, 75, 100, 125, 150, 200, 300})
        cmbZoom_->addItem(QStringLiteral("%1 %").arg(percent), percent / 100.0);
    btnImprimir_ = button("btnImprimir", QStringLiteral("Imprimir"), QString());
    btnPdf_ = button("btnPdf", QStringLiteral("PDF"), QString());

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(6, 4, 6, 4);
    for (QWidget* w : std::initializer_list<QWidget*>{btnPrimera_, btnAnterior_, lblPagina_,
                                                      btnSeguent_, btnDarrera_})
        bar->addWidget(w);
    bar->addSpacing(16);
    bar->addWidget(cmbZoom_);
    bar->addStretch(1);
    bar->addWidget(btnImprimir_);
    bar->addWidget(btnPdf_);

    view_ = new QLabel;
    view_->setObjectName(QStringLiteral("pagina"));
    view_->setAlignment(Qt::AlignCenter);
    scroll_ = new QScrollArea(this);
    scroll_->setObjectName(QStringLiteral("scroll"));
    scroll_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    scroll_->setBackgroundRole(QPalette::Dark);
    scroll_->setWidget(view_);
    scroll_->viewport()->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(bar);
    layout->addWidget(scroll_, 1);

    connect(btnPrimera_, &QToolButton::clicked, this, [this] { showPage(0); });
    connect(btnAnterior_, &QToolButton::clicked, this, [this] { showPage(page_ - 1); });
    connect(btnSeguent_, &QToolButton::clicked, this, [this] { showPage(page_ + 1); });
    connect(btnDarrera_, &QToolButton::clicked, this, [this] { showPage(pageCount() - 1); });
    connect(cmbZoom_, &QComboBox::activated, this,
            [this](int i) { setZoom(cmbZoom_->itemData(i).toDouble()); });
    connect(btnImprimir_, &QToolButton::clicked, this, [this] { print(); });
    connect(btnPdf_, &QToolButton::clicked, this, &ReportPreview::saveAsPdf);
    resize(900, 1000);
    refresh();
}

QToolButton* ReportPreview::button(const char* name, const QString& text, const QString& tip) {
    auto* b = new QToolButton(this);
    b->setObjectName(QString::fromLatin1(name));
    b->setText(text);
    b->setToolTip(tip);
    b->setAutoRaise(true);
    return b;
}

void ReportPreview::showPage(int page) {
    const int clamped = std::clamp(page, 0, std::max(0, pageCount() - 1));
    if (clamped == page_ && !view_->pixmap().isNull()) return;
    page_ = clamped;
    refresh();
    scroll_->verticalScrollBar()->setValue(0);
}

void ReportPreview::setZoom(double zoom) {
    zoom_ = std::max(0.0, zoom);
    const int index = cmbZoom_->findData(zoom_);
    if (index >= 0) cmbZoom_->setCurrentIndex(index);
    refresh();
}

void ReportPreview::refresh() {
    lblPagina_->setText(
        QStringLiteral("%1 / %2").arg(pageCount() == 0 ? 0 : page_ + 1).arg(pageCount()));
    btnPrimera_->setEnabled(page_ > 0);
    btnAnterior_->setEnabled(page_ > 0);
    btnSeguent_->setEnabled(page_ + 1 < pageCount());
    btnDarrera_->setEnabled(page_ + 1 < pageCount());
    if (pageCount() == 0) return;
    const double pageInches = report_->pageLayout.fullRect(QPageLayout::Inch).width();
    const double screenDpi = logicalDpiX();
    const double fitDpi =
        std::max(20.0, (scroll_->viewport()->width() - 2 * kPageGap) / pageInches);
    const double dpi = zoom_ > 0 ? screenDpi * zoom_ : fitDpi;
    const double ratio = devicePixelRatioF();
    QImage image = renderPageImage(*report_, page_, dpi * ratio);
    image.setDevicePixelRatio(ratio);
    view_->setPixmap(QPixmap::fromImage(image));
    view_->resize(image.size() / ratio + QSize(2 * kPageGap, 2 * kPageGap));
}

bool ReportPreview::eventFilter(QObject* watched, QEvent* event) {
    // Fitting to the width follows the room the page has, once the layout has given it.
    if (watched == scroll_->viewport() && event->type() == QEvent::Resize && zoom_ == 0) refresh();
    return QWidget::eventFilter(watched, event);
}

void ReportPreview::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            // Esc closes the preview, whether it is a working child or a window of its own.
            if (auto* child = qobject_cast<QMdiSubWindow*>(parentWidget()))
                child->close();
            else if (isWindow())
                close();
            break;
        case Qt::Key_PageDown:
            showPage(page_ + 1);
            break;
        case Qt::Key_PageUp:
            showPage(page_ - 1);
            break;
        case Qt::Key_Home:
            if (event->modifiers() & Qt::ControlModifier)
                showPage(0);
            else
                QWidget::keyPressEvent(event);
            break;
        case Qt::Key_End:
            if (event->modifiers() & Qt::ControlModifier)
                showPage(pageCount() - 1);
            else
                QWidget::keyPressEvent(event);
            break;
        default:
            if (event->matches(QKeySequence::Print))
                print();
            else
                QWidget::keyPressEvent(event);
    }
}

void ReportPreview::print(int copies) {
    try {
        printWithPrintDialog(*report_, copies, this);
    } catch (const ReportError& e) {
        fail(e.message());
    }
}

void ReportPreview::saveAsPdf() {
    QString name = report_->title.isEmpty() ? QStringLiteral("informe") : report_->title;
    name.replace(QRegularExpression(QStringLiteral("[/\\\\:*?\"<>|]")), QStringLiteral("_"));
    const QString path = QFileDialog::getSaveFileName(
        this, report_->title, name + QStringLiteral(".pdf"), QStringLiteral("PDF (*.pdf)"));
    if (!path.isEmpty())
        savePdf(path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)
                    ? path
                    : path + QStringLiteral(".pdf"));
}

bool ReportPreview::savePdf(const QString& path) {
    try {
        writePdf(*report_, path);
        return true;
    } catch (const ReportError& e) {
        fail(e.message());
        return false;
    }
}

void ReportPreview::fail(const QString& message) {
    if (dialogs_)
        dialogs_->stop(message, report_->title);
    else
        QMessageBox::critical(this, report_->title, message);
}

}  // namespace tallora::report
