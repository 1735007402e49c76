#pragma once
// The window and printer destinations on screen.
//
// The window destination makes a ReportPreview and hands it to the window hook, which the
// shell sets so that the preview opens as a child of its working area; with no hook the
// preview is a window of its own that deletes itself when closed.
#include "report/report_output.h"

#include <functional>

class QWidget;

namespace tallora {
class Dialogs;
}

namespace tallora::report {

class ReportPreview;

class QtReportOutput : public ReportOutput {
public:
    using WindowHook = std::function<void(QWidget* preview)>;

    // `dialogs` shows faults of the preview's print and save; `parent` owns the print dialog.
    explicit QtReportOutput(Dialogs* dialogs = nullptr, QWidget* parent = nullptr)
        : dialogs_(dialogs), parent_(parent) {}

    void setWindowHook(WindowHook hook) { hook_ = std::move(hook); }

    void showWindow(std::shared_ptr<const RenderedReport> report) override;
    bool printWithDialog(const RenderedReport& report, int copies) override;

private:
    Dialogs* dialogs_;
    QWidget* parent_;
    WindowHook hook_;
};

}  // namespace tallora::report
