#pragma once
// The frame of the inquiry screens (purchases, provisions and disbursements): the title band,
// the tool buttons "Esborrar", "Buscar", "Modificar", "Imprimir", "Exportar" (the printed
// list saved as a spreadsheet, XLSX or CSV: report/report_sheet.h), "Cancela", the date and
// amount filters each with its reset button, the order options, the grid DbGrid1 and the
// count and total under it (txtApunts, txtTotal).
//
// A screen adds its own filters and orders and says how it searches, deletes, prints and
// opens a row. Every change of a filter searches again and gives the focus back to the
// control that changed; Enter in the amount searches; Esc closes; Delete deletes the row;
// Enter or a double click on a row opens it. A fault of the store shows its description and
// leaves the grid as it was.
#include "context/fwd.h"
#include "context/money.h"
#include "report/report_helpers.h"
#include "schema/inquiry_filter.h"

#include <QDate>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class QAction;
class QComboBox;
class QDateEdit;
class QGridLayout;
class QHBoxLayout;
class QLineEdit;
class QRadioButton;
class QTableWidget;
class QToolBar;

namespace tallora::ui {

class InquiryScreen : public QWidget {
    Q_OBJECT
public:
    struct Row {
        std::int64_t ordre = 0;
        QStringList cells;    // the last one is the amount, right-aligned
        QString description;  // what the question before a deletion names
        bool inert = false;   // a line no action takes (an opening balance), shaded
    };
    struct Result {
        std::vector<Row> rows;
        Money total;
    };

    ~InquiryScreen() override;

    // Runs the search of the filters in force and shows it.
    void Buscar();
    // Esborrar: the selected row deleted after the question, then the search again.
    void Esborrar();
    // Modificar: the selected row opened in its posting screen.
    void Modificar();
    // Exportar: the list as Imprimir prints it, saved where askFilePath says; what it asks
    // is XLSX unless the path ends in ".csv".
    void Exportar();

    // Asks where the spreadsheet goes, proposing `name`; empty when cancelled. The save
    // dialog by default; tests put their own.
    std::function<QString(const QString& name)> askFilePath;

    QTableWidget* grid() const { return DbGrid1; }
    // The number of the selected row; none without one.
    std::optional<std::int64_t> selectedOrdre() const;
    QAction* tool(const QString& key) const;
    QString statusText() const { return status_; }
    // Sets the dates of the date filter; a search follows.
    void setDates(const QDate& from, const QDate& to);

signals:
    void statusChanged(const QString& text);
    // The selected row changed.
    void rowChanged();

protected:
    InquiryScreen(WorkingContext& ctx, Dialogs& dialogs, const QString& name, const QString& title,
                  const QString& helpKey, const QStringList& headers, QWidget* parent);

    // A filter list with its caption and its reset button, on a line of its own above the
    // date filters.
    QComboBox* addListFilter(const QString& name, const QString& caption);
    // An order option; the first added is the one in force at the start.
    QRadioButton* addOrder(const QString& name, const QString& caption, const QString& tip);
    // Where a screen puts what stands beside the grid (a detail frame).
    QHBoxLayout* gridRow() const { return gridRow_; }
    QToolBar* toolBar() const { return Toolbar5; }
    // The end of a screen's construction: the first search.
    void start();
    // For a screen that filters by no amount, or has no total to show under its grid.
    void hideAmountFilter();
    void hideTotal();
    // Imprimir's frame: `run` prints the list (which runs its own search), a fault of the
    // store shows its description, and the grid is searched again.
    report::ReportResult printList(const std::function<report::ReportResult()>& run);
    // Where the focus goes after the search in course, instead of the control that ran it.
    void focusAfterSearch(QWidget* w);
    // The columns from `column` on hold amounts: right-aligned, each as wide as the last.
    void amountsFrom(int column);
    // The selected row; none without one, or on an inert line.
    const Row* selectedRow() const;
    // What runs the search in course: the filter control that changed, the tool bar for its
    // Buscar button; none for the first search and those that follow an action.
    QWidget* searchSource() const { return source_; }

    schema::DateAmountFilter range() const;
    void setStatus(const QString& text);
    void showError(const QString& message);

    virtual Result search() = 0;
    virtual QString deleteQuestion(const Row& row) const = 0;
    virtual bool remove(std::int64_t ordre) = 0;
    // The list printed, or saved as `request` says.
    virtual report::ReportResult print(const report::PrintRequest& request) = 0;
    virtual void open(std::int64_t ordre) = 0;

    bool eventFilter(QObject* watched, QEvent* event) override;

    WorkingContext& ctx_;
    Dialogs& dialogs_;

private:
    QToolBar* resetButton(QWidget* control);
    // The search run by `source`; true when the search sent the focus elsewhere.
    bool searchFrom(QWidget* source);
    void changed(QWidget* source);
    void closeScreen();

    QToolBar* Toolbar5;
    QGridLayout* filters_;
    QHBoxLayout* orders_;
    QHBoxLayout* gridRow_;
    QDateEdit *Dtdata1, *Dtdata2;
    QComboBox* cmbOperacio;
    QLineEdit *txtImport, *txtTotal, *txtApunts;
    QList<QWidget*> amountFilter_, total_;
    QWidget* source_ = nullptr;
    QPointer<QWidget> focusAfter_;
    struct {
        QDate from, to;
    } searched_;
    int amountColumn_ = 0;
    QTableWidget* DbGrid1;
    std::vector<Row> rows_;
    QList<QRadioButton*> orderOptions_;
    QWidget* ordersHeading_;
    int listFilters_ = 0;
    bool searching_ = false;
    QString status_;
};

}  // namespace tallora::ui
