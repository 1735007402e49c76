#pragma once
// The window destination: the pages of a report on screen, one at a time, with page
// navigation, zoom, print and save as PDF. Every page is the one the printer and the PDF
// file get.
#include "report/rendered_report.h"

#include <QWidget>

#include <memory>

class QComboBox;
class QLabel;
class QScrollArea;
class QToolButton;

namespace tallora {
class Dialogs;
}

namespace tallora::report {

class ReportPreview : public QWidget {
    Q_OBJECT
public:
    // `dialogs` shows a fault of printing or saving; without it a plain message box does.
    explicit ReportPreview(std::shared_ptr<const RenderedReport> report, Dialogs* dialogs = nullptr,
                           QWidget* parent = nullptr);

    const RenderedReport& report() const { return *report_; }
    int pageCount() const { return report_->pageCount(); }
    int currentPage() const { return page_; }  // from 0
    // 1 is the page at its real size on screen; 0 fits the page's width to the window.
    double zoom() const { return zoom_; }
    QLabel* pageLabel() const { return lblPagina_; }
    QLabel* pageView() const { return view_; }

public slots:
    void showPage(int page);
    void setZoom(double zoom);
    // The print dialog, then the printer; copies as given.
    void print(int copies = 1);
    // Asks where, then saves.
    void saveAsPdf();
    // Saves the pages as a PDF at `path`; false (and the fault shown) when it cannot.
    bool savePdf(const QString& path);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QToolButton* button(const char* name, const QString& text, const QString& tip);
    void refresh();
    void fail(const QString& message);

    std::shared_ptr<const RenderedReport> report_;
    Dialogs* dialogs_;
    int page_ = 0;
    double zoom_ = 0;
    QToolButton *btnPrimera_, *btnAnterior_, *btnSeguent_, *btnDarrera_, *btnImprimir_, *btnPdf_;
    QLabel* lblPagina_;
    QComboBox* cmbZoom_;
    QScrollArea* scroll_;
    QLabel* view_;
};

}  // namespace tallora::report
