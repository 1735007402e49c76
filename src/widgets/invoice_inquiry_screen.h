#pragma once
// What the inquiries over invoices (the sales and the purchases) add to the inquiry frame:
// the toggle "masinfo" with the detail frame MesFrame beside the grid (the invoice's labels,
// its lines per rate, its withholding, its total and who settled it), which follows the
// selected row while open, and the menu button "Gestión" whose AddCartera, or the key F11,
// puts the selected invoice back in the portfolio.
#include "inquiry_screen.h"

#include <QStringList>

#include <vector>

class QFrame;
class QLabel;
class QMenu;

namespace tallora::ui {

class InvoiceInquiryScreen : public InquiryScreen {
    Q_OBJECT
public:
    // The detail frame shown or hidden, with the selected row in it.
    void showDetail(bool on);
    // The selected invoice back into the portfolio.
    virtual void AddCartera() = 0;

protected:
    // `detailHeaders` head MesGrid, `withholdingHeaders` MesGridIRPF.
    InvoiceInquiryScreen(WorkingContext& ctx, Dialogs& dialogs, const QString& name,
                         const QString& title, const QString& helpKey, const QStringList& headers,
                         const QStringList& detailHeaders, const QStringList& withholdingHeaders,
                         QWidget* parent);

    // The texts of the detail frame, in the order of its labels.
    struct Detail {
        QString id, party, nif, group, account, invoice, total, settled;
        std::vector<QStringList> lines;  // MesGrid's rows
        QStringList withholding;         // MesGridIRPF's row
    };
    // The detail of invoice `ordre`; none when it is not there. A fault of the store may
    // be thrown: it is shown.
    virtual std::optional<Detail> detailOf(std::int64_t ordre) = 0;

    // The menu of "Gestión" (its button shows or hides with `visible`); AddCartera is in it.
    QMenu* gestion() const { return gestion_; }
    QAction* addCarteraAction() const { return addCartera_; }
    void showGestion(bool visible);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QFrame* buildDetail(const QStringList& detailHeaders, const QStringList& withholdingHeaders);
    void fillDetail(std::int64_t ordre);

    QAction* masinfo;
    QMenu* gestion_;
    QAction* addCartera_;
    QAction* gestionButton_;
    QFrame* MesFrame;
    QTableWidget *MesGrid, *MesGridIRPF;
    QLabel *lblMesID, *lblMesClient, *lblMesNIF, *lblMesGrup, *lblMesCompte, *lblMesDescripcio,
        *lblMesTotal, *lblMesPagada;
};

}  // namespace tallora::ui
