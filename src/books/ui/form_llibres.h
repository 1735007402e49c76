#pragma once
// FormLLibres: the one dialog every book, statement and listing is launched from, in five
// tabs (expenses book, sales book, provisions book, reports, listings) sharing the
// destination (OpWindow, OPprinter), the print date and the progress bar Prog. It is modal
// to the shell's window, so that nothing is posted while a book is built; its previews open
// as windows of their own, which it does not block.
//
// The destination is the preview window (OpWindow), the printer (OPprinter) or a spreadsheet
// (OpHoja): the report as its pages print it, saved as XLSX, or CSV for a path ending in
// ".csv" (report/report_sheet.h), where askFilePath says; told once saved.
//
// A launch greys the tabs and the destination and shows the wait pointer until it is over,
// however it ends; the print dialog it may open stays usable and shows the normal pointer.
// A refused period is told first, with nothing greyed. btnMajorPro prints the extract of the
// option in force (books/ledger_reports.h), btnPiG the operating statement
// (books/operating_statement.h), btnSaldos the summary of balances (books/trial_balance.h).
//
// Keys: Tab moves along, Enter on a button runs it, Esc closes, F1 opens help "libros".
#include "books/vat_books.h"
#include "context/fwd.h"

#include <QDialog>

#include <functional>
#include <memory>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QGroupBox;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace tallora {

namespace report {
struct PrintRequest;
struct ReportJob;
struct ReportResult;
class ReportOutput;
class QtReportOutput;
}  // namespace report

class FormLLibres : public QDialog {
    Q_OBJECT
public:
    // `job` is the shell's report job; `output` replaces the previews and the printer (tests).
    FormLLibres(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob& job,
                report::ReportOutput* output = nullptr, QWidget* parent = nullptr);
    ~FormLLibres() override;

    QTabWidget* TabStrip1() const { return TabStrip1_; }

    // Asks where a spreadsheet goes, proposing the file name `name`; empty when cancelled.
    // The save dialog by default; tests put their own.
    std::function<QString(const QString& name)> askFilePath;

    // The buttons' actions.
    void btnIVAs_simpli();
    void btn_llibre_IVAr();
    void btnSuplidos();
    void btn500();
    void btnLListatClients();
    void btnLListatProv();

private:
    QWidget* gastosTab();
    QWidget* ingresosTab();
    QWidget* suplidosTab();
    QWidget* informesTab();
    QWidget* listadosTab();
    QWidget* destination();
    // A from-list and a to-list of the twelve months, on the first and the last.
    QWidget* months(const char* from, const char* to, QComboBox*& fromList, QComboBox*& toList);
    // The six series options; `suffix` names the sales group's ones.
    QGroupBox* seriesGroup(const QString& suffix, QButtonGroup*& group);
    void showExtractFrames();
    books::Series series(const QButtonGroup* group) const;
    books::BookRequest request(const QComboBox* from, const QComboBox* to) const;
    void launch(books::Book book, books::BookRequest request);
    // With OpHoja, `print` made the spreadsheet asked for, named after `spanish` or `catalan`
    // and the year; false when no file is given. True with the other destinations.
    bool target(report::PrintRequest& print, const char* spanish, const char* catalan);
    // busy(work), then, once the form is back, tells where a spreadsheet went.
    void run(const report::PrintRequest& print, const std::function<report::ReportResult()>& work);
    void btnMajorPro();
    void btnSaldos();
    void btnPiG();
    void printListing(bool customers);
    // Runs `work` with the form disabled and the wait pointer, both restored after it.
    void busy(const std::function<void()>& work);

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    report::ReportJob& job_;
    class PointerFreeOutput;
    std::unique_ptr<report::QtReportOutput> previews_;
    report::ReportOutput* output_;
    std::unique_ptr<PointerFreeOutput> pointerFree_;

    QTabWidget* TabStrip1_;
    QComboBox *OpInici, *OpFinal, *OpiniciR, *OpFinalR, *OpIniciS, *OpFinalS, *OpIniciE, *OpFinalE;
    QRadioButton *Opct1, *Opct2, *Opct3, *OpIRPFpro;
    QButtonGroup *seriesCompres_, *seriesVentes_;
    QGroupBox* FrameIRPF;
    QCheckBox* OpLibroIRPF;
    QRadioButton *OpE1, *OpE2, *OpE3;
    QRadioButton *Opclidom, *Opclicon, *OpProdom, *OpProCon;
    QRadioButton *OpExt1, *OpExt2, *OpExt3, *OpExt4;
    QGroupBox *FrameExtCli, *FrameExtPro;
    QRadioButton *OpCliMayor, *OpCliFac, *OpProMayor, *OpProFac;
    QComboBox *CmbClients, *CmbProveidors;
    QRadioButton *OpWindow, *OPprinter, *OpHoja;
    QDateEdit* data_fecha_impresion;
    QProgressBar* Prog;
    QWidget* destination_ = nullptr;
};

}  // namespace tallora
