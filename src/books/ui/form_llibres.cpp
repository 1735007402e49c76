#include "form_llibres.h"

#include "books/customer_listings.h"
#include "books/ledger_reports.h"
#include "books/operating_statement.h"
#include "books/trial_balance.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_helpers.h"
#include "report/report_job.h"
#include "report/report_output.h"
#include "report/ui/qt_report_output.h"
#include "report/ui/spreadsheet_path.h"
#include "store/store_error.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <exception>

namespace tallora {
namespace {

using books::Book;
using books::Series;
using ui::named;

QRadioButton* option(const char* name, const QString& caption, QWidget* parent) {
    return named(new QRadioButton(caption, parent), name);
}

QVBoxLayout* column(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(12, 10, 12, 10);
    layout->setSpacing(8);
    return layout;
}

// A button at the bottom right of its tab.
void endWith(QVBoxLayout* layout, QPushButton* b) {
    layout->addStretch(1);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(b);
    layout->addLayout(row);
}

// The name a book's spreadsheet is proposed under, in Spanish and in Catalan.
std::pair<const char*, const char*> bookFileName(Book book) {
    switch (book) {
        case Book::Sales:
        case Book::SalesWithholding:
            return {"ventas", "vendes"};
        case Book::Provisions:
            return {"suplidos", "suplerts"};
        case Book::Declaration:
            return {"347", "347"};
        default:
            return {"compras", "compres"};
    }
}

}  // namespace

// The print dialog is the user's to answer: it shows without the wait pointer.
class FormLLibres::PointerFreeOutput : public report::ReportOutput {
public:
    explicit PointerFreeOutput(report::ReportOutput* inner) : inner_(inner) {}
    void showWindow(std::shared_ptr<const report::RenderedReport> report) override {
        inner_->showWindow(std::move(report));
    }
    bool printWithDialog(const report::RenderedReport& report, int copies) override {
        QApplication::restoreOverrideCursor();
        const bool printed = inner_->printWithDialog(report, copies);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        return printed;
    }

private:
    report::ReportOutput* inner_;
};

FormLLibres::FormLLibres(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob& job,
                         report::ReportOutput* output, QWidget* parent)
    : QDialog(parent), ctx_(ctx), dialogs_(dialogs), job_(job), output_(output) {
    setObjectName(QStringLiteral("FormLLibres"));
    setWindowTitle(Missatge(ctx_, 1000));
    if (!output_) {
        // No hook: each preview is a window of its own, which this dialog does not block.
        previews_ = std::make_unique<report::QtReportOutput>(&dialogs_, this);
        output_ = previews_.get();
    }
    pointerFree_ = std::make_unique<PointerFreeOutput>(output_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 8);
    layout->addWidget(ui::bandTitle(Missatge(ctx_, 1000), Missatge(ctx_, 1001), this));
    TabStrip1_ = named(new QTabWidget(this), "TabStrip1");
    const auto tab = [&](QWidget* page, const char* key, const QString& caption) {
        page->setObjectName(QString::fromLatin1(key));
        TabStrip1_->addTab(page, caption);
    };
    tab(gastosTab(), "gastos", Missatge(ctx_, 1002));
    tab(ingresosTab(), "ingresos", Missatge(ctx_, 1003));
    tab(suplidosTab(), "Suplidos", Missatge(ctx_, 6507));
    tab(informesTab(), "informes", Missatge(ctx_, 1004));
    tab(listadosTab(), "listados", Missatge(ctx_, 1005));
    auto* body = new QVBoxLayout;
    body->setContentsMargins(10, 6, 10, 0);
    body->addWidget(TabStrip1_, 1);
    body->addWidget(destination());
    askFilePath = [this](const QString& name) {
        return report::askSpreadsheetPath(this, windowTitle(), name);
    };
    layout->addLayout(body, 1);

    // A shop's exercise has no withholding lists.
    if (ctx_.ModeExercici == QStringLiteral("TICKETS")) {
        OpIRPFpro->setEnabled(false);
        FrameIRPF->setEnabled(false);
        OpLibroIRPF->setEnabled(false);
    }
    try {
        for (const auto& c : books::OMPLE_LLISTA_Clients(ctx_))
            CmbClients->addItem(c.nom, QVariant::fromValue<qlonglong>(c.number));
        for (const auto& p : books::OMPLE_LLISTA_Proveidors(ctx_))
            CmbProveidors->addItem(p.nom, QVariant::fromValue<qlonglong>(p.number));
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    CmbClients->setCurrentIndex(-1);
    CmbProveidors->setCurrentIndex(-1);
    showExtractFrames();
    ui::helpOnF1(ctx_, this, QStringLiteral("libros"));
    ui::turnTabsFromKeyboard(TabStrip1_, this);
    OpInici->setFocus();
    resize(720, 560);
}

FormLLibres::~FormLLibres() = default;

QWidget* FormLLibres::months(const char* from, const char* to, QComboBox*& fromList,
                             QComboBox*& toList) {
    auto* row = new QWidget;
    auto* h = new QHBoxLayout(row);
    h->setContentsMargins(0, 0, 0, 0);
    fromList = named(new QComboBox(row), from);
    toList = named(new QComboBox(row), to);
    for (QComboBox* list : {fromList, toList}) {
        for (int m = 1; m <= 12; ++m) list->addItem(Missatge(ctx_, 5000 + m), m);
        list->setMinimumWidth(140);
    }
    toList->setCurrentIndex(11);
    h->addWidget(new QLabel(Missatge(ctx_, 1007), row));
    h->addWidget(fromList);
    h->addSpacing(16);
    h->addWidget(new QLabel(Missatge(ctx_, 1008), row));
    h->addWidget(toList);
    h->addStretch(1);
    return row;
}

QGroupBox* FormLLibres::seriesGroup(const QString& suffix, QButtonGroup*& group) {
    auto* box = new QGroupBox(Missatge(ctx_, 1013));
    auto* v = new QVBoxLayout(box);
    group = new QButtonGroup(box);
    const struct {
        const char* name;
        int caption;
        Series series;
    } options[] = {{"op_series_todas", 1014, Series::All},
                   {"Op_series_normales", 1023, Series::Normal},
                   {"Op_series_abonos", 1015, Series::CreditNotes},
                   {"Op_series_rectificativas", 1016, Series::Rectifying},
                   {"Op_series_Intracomunitarias", 6861, Series::Intra},
                   {"Op_series_Canarias", 6862, Series::Canarias}};
    for (const auto& o : options) {
        auto* radio = new QRadioButton(Missatge(ctx_, o.caption), box);
        radio->setObjectName(QLatin1String(o.name) + suffix);
        group->addButton(radio, static_cast<int>(o.series));
        v->addWidget(radio);
    }
    group->button(static_cast<int>(Series::All))->setChecked(true);
    return box;
}

QWidget* FormLLibres::gastosTab() {
    auto* page = named(new QWidget, "Frame1");
    auto* v = column(page);
    v->addWidget(ui::boldLabel(Missatge(ctx_, 1006), page));
    v->addWidget(months("OpInici", "OpFinal", OpInici, OpFinal));
    auto* row = new QHBoxLayout;
    auto* kinds = new QGroupBox(page);
    auto* k = new QVBoxLayout(kinds);
    Opct1 = option("Opct1", Missatge(ctx_, 1017), kinds);
    Opct2 = option("Opct2", Missatge(ctx_, 1018), kinds);
    Opct3 = option("Opct3", Missatge(ctx_, 1019), kinds);
    OpIRPFpro = option("OpIRPFpro", Missatge(ctx_, 7010), kinds);
    for (QRadioButton* r : {Opct1, Opct2, Opct3, OpIRPFpro}) k->addWidget(r);
    k->addStretch(1);
    Opct1->setChecked(true);
    row->addWidget(kinds, 1);
    row->addWidget(seriesGroup(QString(), seriesCompres_), 1);
    v->addLayout(row);
    auto* go = ui::dialogButton("btnIVAs_simpli", Missatge(ctx_, 1020), page);
    connect(go, &QPushButton::clicked, this, &FormLLibres::btnIVAs_simpli);
    endWith(v, go);
    return page;
}

QWidget* FormLLibres::ingresosTab() {
    auto* page = named(new QWidget, "Frame2");
    auto* v = column(page);
    v->addWidget(ui::boldLabel(Missatge(ctx_, 6000), page));
    v->addWidget(months("OpiniciR", "OpFinalR", OpiniciR, OpFinalR));
    auto* row = new QHBoxLayout;
    FrameIRPF = named(new QGroupBox(page), "FrameIRPF");
    auto* k = new QVBoxLayout(FrameIRPF);
    OpLibroIRPF = named(new QCheckBox(Missatge(ctx_, 7008), FrameIRPF), "OpLibroIRPF");
    k->addWidget(OpLibroIRPF);
    k->addStretch(1);
    row->addWidget(FrameIRPF, 1);
    row->addWidget(seriesGroup(QStringLiteral("_ventas"), seriesVentes_), 1);
    v->addLayout(row);
    // Any series but "all" leaves the withholding list aside; "all" offers it again.
    connect(seriesVentes_, &QButtonGroup::idClicked, this, [this](int id) {
        if (ctx_.ModeExercici != QStringLiteral("TICKETS"))
            OpLibroIRPF->setEnabled(id == static_cast<int>(Series::All));
    });
    auto* go = ui::dialogButton("btn_llibre_IVAr", Missatge(ctx_, 1020), page);
    connect(go, &QPushButton::clicked, this, &FormLLibres::btn_llibre_IVAr);
    endWith(v, go);
    return page;
}

QWidget* FormLLibres::suplidosTab() {
    auto* page = named(new QWidget, "FrameSuplidos");
    auto* v = column(page);
    v->addWidget(ui::boldLabel(Missatge(ctx_, 6508), page));
    v->addWidget(months("OpIniciS", "OpFinalS", OpIniciS, OpFinalS));
    auto* go = ui::dialogButton("btnSuplidos", Missatge(ctx_, 6509), page);
    connect(go, &QPushButton::clicked, this, &FormLLibres::btnSuplidos);
    endWith(v, go);
    return page;
}

QWidget* FormLLibres::informesTab() {
    auto* page = named(new QWidget, "Frame3");
    auto* v = column(page);
    v->addWidget(ui::boldLabel(Missatge(ctx_, 6014), page));
    v->addWidget(months("OpIniciE", "OpFinalE", OpIniciE, OpFinalE));
    auto* levels = new QGroupBox(page);
    auto* h = new QHBoxLayout(levels);
    OpE1 = option("OpE1", Missatge(ctx_, 6015), levels);
    OpE2 = option("OpE2", Missatge(ctx_, 6016), levels);
    OpE3 = option("OpE3", Missatge(ctx_, 6017), levels);
    for (QRadioButton* r : {OpE1, OpE2, OpE3}) h->addWidget(r);
    h->addStretch(1);
    OpE1->setChecked(true);
    v->addWidget(levels);
    auto* buttons = new QGridLayout;
    auto* pig = ui::dialogButton("btnPiG", Missatge(ctx_, 6013), page);
    auto* decl = ui::dialogButton("btn500", Missatge(ctx_, 6019), page);
    auto* saldos = ui::dialogButton("btnSaldos", QStringLiteral("Informe de saldos"), page);
    connect(pig, &QPushButton::clicked, this, &FormLLibres::btnPiG);
    connect(decl, &QPushButton::clicked, this, &FormLLibres::btn500);
    connect(saldos, &QPushButton::clicked, this, &FormLLibres::btnSaldos);
    buttons->addWidget(pig, 0, 0);
    buttons->addWidget(decl, 0, 1);
    buttons->addWidget(saldos, 0, 2);
    v->addLayout(buttons);
    v->addStretch(1);
    return page;
}

QWidget* FormLLibres::listadosTab() {
    auto* page = named(new QWidget, "Frame4");
    auto* v = column(page);
    auto* lists = new QHBoxLayout;
    const auto listBox = [&](int caption, const char* dom, const char* con, QRadioButton*& domicile,
                             QRadioButton*& contacts, const char* name, int buttonCaption,
                             void (FormLLibres::*run)()) {
        auto* box = new QGroupBox(Missatge(ctx_, caption), page);
        auto* b = new QVBoxLayout(box);
        domicile = option(dom, Missatge(ctx_, 6004), box);
        contacts = option(con, Missatge(ctx_, 6005), box);
        domicile->setChecked(true);
        b->addWidget(domicile);
        b->addWidget(contacts);
        auto* go = ui::dialogButton(name, Missatge(ctx_, buttonCaption), box);
        connect(go, &QPushButton::clicked, this, run);
        b->addWidget(go);
        lists->addWidget(box, 1);
    };
    listBox(6009, "Opclidom", "Opclicon", Opclidom, Opclicon, "btnLListatClients", 6010,
            &FormLLibres::btnLListatClients);
    listBox(6008, "OpProdom", "OpProCon", OpProdom, OpProCon, "btnLListatProv", 6011,
            &FormLLibres::btnLListatProv);
    v->addLayout(lists);

    auto* extracts = new QGroupBox(Missatge(ctx_, 6003), page);
    auto* e = new QGridLayout(extracts);
    OpExt1 = option("OpExt1", Missatge(ctx_, 6006), extracts);
    OpExt2 = option("OpExt2", Missatge(ctx_, 6007), extracts);
    OpExt3 = option("OpExt3", Missatge(ctx_, 6008), extracts);
    OpExt4 = option("OpExt4", Missatge(ctx_, 6009), extracts);
    OpExt1->setChecked(true);
    const auto partyFrame = [&](const char* name, const char* mayor, const char* fac,
                                QRadioButton*& ledger, QRadioButton*& invoices, const char* combo,
                                QComboBox*& list) {
        auto* frame = named(new QGroupBox(extracts), name);
        auto* f = new QHBoxLayout(frame);
        ledger = option(mayor, Missatge(ctx_, 6982), frame);
        invoices = option(fac, Missatge(ctx_, 6817), frame);
        list = named(new QComboBox(frame), combo);
        list->setMinimumWidth(220);
        f->addWidget(ledger);
        f->addWidget(invoices);
        f->addWidget(list, 1);
        return frame;
    };
    FrameExtCli = partyFrame("FrameExtCli", "OpCliMayor", "OpCliFac", OpCliMayor, OpCliFac,
                             "CmbClients", CmbClients);
    FrameExtPro = partyFrame("FrameExtPro", "OpProMayor", "OpProFac", OpProMayor, OpProFac,
                             "CmbProveidors", CmbProveidors);
    int r = 0;
    for (QRadioButton* o : {OpExt1, OpExt2, OpExt3, OpExt4}) {
        e->addWidget(o, r++, 0);
        connect(o, &QRadioButton::clicked, this, &FormLLibres::showExtractFrames);
    }
    e->addWidget(FrameExtPro, 2, 1);
    e->addWidget(FrameExtCli, 3, 1);
    e->setColumnStretch(1, 1);
    auto* go = ui::dialogButton("btnMajorPro", Missatge(ctx_, 6012), extracts);
    connect(go, &QPushButton::clicked, this, &FormLLibres::btnMajorPro);
    e->addWidget(go, 4, 1, Qt::AlignRight);
    v->addWidget(extracts);
    v->addStretch(1);
    return page;
}

QWidget* FormLLibres::destination() {
    auto* row = named(new QWidget(this), "destination");
    destination_ = row;
    auto* h = new QHBoxLayout(row);
    h->setContentsMargins(0, 4, 0, 0);
    OpWindow = option("OpWindow", Missatge(ctx_, 1021), row);
    OPprinter = option("OPprinter", Missatge(ctx_, 1022), row);
    OpHoja = option("OpHoja", fixedText(ctx_, "Hoja de cálculo", "Full de càlcul"), row);
    OpHoja->setToolTip(
        fixedText(ctx_, "Guardar el informe como XLSX o CSV", "Desar l'informe com a XLSX o CSV"));
    OpWindow->setChecked(true);
    data_fecha_impresion = named(new QDateEdit(QDate::currentDate(), row), "data_fecha_impresion");
    data_fecha_impresion->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    data_fecha_impresion->setCalendarPopup(true);
    Prog = named(new QProgressBar(row), "Prog");
    Prog->setRange(0, 100);
    Prog->setValue(0);
    Prog->setTextVisible(false);
    Prog->setMaximumHeight(12);
    h->addWidget(OpWindow);
    h->addWidget(OPprinter);
    h->addWidget(OpHoja);
    h->addSpacing(16);
    h->addWidget(new QLabel(Missatge(ctx_, 6106).trimmed(), row));
    h->addWidget(data_fecha_impresion);
    h->addSpacing(16);
    h->addWidget(Prog, 1);
    return row;
}

void FormLLibres::showExtractFrames() {
    FrameExtCli->setVisible(OpExt4->isChecked());
    FrameExtPro->setVisible(OpExt3->isChecked());
    for (QComboBox* list : {CmbClients, CmbProveidors}) list->setCurrentIndex(-1);
    for (QRadioButton* o : {OpCliMayor, OpCliFac, OpProMayor, OpProFac}) {
        o->setAutoExclusive(false);
        o->setChecked(false);
        o->setAutoExclusive(true);
    }
}

Series FormLLibres::series(const QButtonGroup* group) const {
    const int id = group->checkedId();
    return id < 0 ? Series::All : static_cast<Series>(id);
}

books::BookRequest FormLLibres::request(const QComboBox* from, const QComboBox* to) const {
    books::BookRequest r;
    r.fromMonth = from->currentData().toInt();
    r.toMonth = to->currentData().toInt();
    r.printDate = data_fecha_impresion->date();
    r.print.destination =
        OPprinter->isChecked() ? report::Destination::Printer : report::Destination::Window;
    r.progress = [this](int value) {
        Prog->setValue(value);
        // The form is disabled meanwhile: only the bar's painting is let through.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
    return r;
}

void FormLLibres::busy(const std::function<void()>& work) {
    // The tabs and the destination go grey, not the dialog itself: the print dialog opened
    // from it must stay usable.
    struct Restore {
        FormLLibres* form;
        ~Restore() {
            QApplication::restoreOverrideCursor();
            form->TabStrip1_->setEnabled(true);
            form->destination_->setEnabled(true);
            form->Prog->setValue(0);
        }
    };
    TabStrip1_->setEnabled(false);
    destination_->setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const Restore restore{this};
    try {
        work();
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    } catch (const std::exception& error) {
        dialogs_.stop(QString::fromUtf8(error.what()));
    }
}

bool FormLLibres::target(report::PrintRequest& print, const char* spanish, const char* catalan) {
    if (!OpHoja->isChecked()) return true;
    const QString path =
        askFilePath(report::spreadsheetFileName(ctx_, fixedText(ctx_, spanish, catalan)));
    if (path.isEmpty()) return false;
    print = report::spreadsheetRequest(path);
    return true;
}

void FormLLibres::run(const report::PrintRequest& print,
                      const std::function<report::ReportResult()>& work) {
    report::ReportResult result;
    busy([&] { result = work(); });
    // Told once the form is back, without the wait pointer.
    if (result.ok() && report::Destination::isSpreadsheet(print.destination))
        dialogs_.information(report::savedText(ctx_, print.printFileName));
}

void FormLLibres::launch(Book book, books::BookRequest r) {
    // A refused period is told before anything else happens: no wait, nothing greyed.
    if (book != Book::Declaration && !books::checkPeriod(ctx_, dialogs_, r.fromMonth, r.toMonth))
        return;
    const auto [spanish, catalan] = bookFileName(book);
    if (!target(r.print, spanish, catalan)) return;
    const report::PrintRequest print = r.print;
    run(print, [&] {
        return books::launchBook(ctx_, dialogs_, job_, pointerFree_.get(), book, std::move(r));
    });
}

void FormLLibres::btnIVAs_simpli() {
    books::BookRequest r = request(OpInici, OpFinal);
    r.series = series(seriesCompres_);
    const Book book = Opct2->isChecked()       ? Book::PurchasesVat
                      : Opct3->isChecked()     ? Book::Investments
                      : OpIRPFpro->isChecked() ? Book::PurchasesWithholding
                                               : Book::Purchases;
    launch(book, r);
}

void FormLLibres::btn_llibre_IVAr() {
    books::BookRequest r = request(OpiniciR, OpFinalR);
    r.series = series(seriesVentes_);
    launch(OpLibroIRPF->isChecked() ? Book::SalesWithholding : Book::Sales, r);
}

void FormLLibres::btnSuplidos() {
    launch(Book::Provisions, request(OpIniciS, OpFinalS));
}

void FormLLibres::btn500() {
    launch(Book::Declaration, request(OpIniciE, OpFinalE));
}

// The extract of the option in force; a ledger only with OpCliMayor or OpProMayor on, the
// party chosen by the list's row.
void FormLLibres::btnMajorPro() {
    const books::BookRequest r = request(OpIniciE, OpFinalE);
    books::LedgerRequest l;
    l.extract = OpExt4->isChecked()   ? books::Extract::Customers
                : OpExt3->isChecked() ? books::Extract::Suppliers
                : OpExt2->isChecked() ? books::Extract::Sales
                                      : books::Extract::Expenses;
    const bool customers = l.extract == books::Extract::Customers;
    l.ledger = customers ? OpCliMayor->isChecked() : OpProMayor->isChecked();
    const QComboBox* party = customers ? CmbClients : CmbProveidors;
    if (party->currentIndex() >= 0) l.party = party->currentData().toLongLong();
    l.printDate = r.printDate;
    l.print = r.print;
    if (!target(l.print, "extracto", "extracte")) return;
    run(l.print, [&] {
        r.progress(10);
        return books::launchLedger(ctx_, dialogs_, job_, pointerFree_.get(), l);
    });
}

void FormLLibres::btnPiG() {
    const books::BookRequest r = request(OpIniciE, OpFinalE);
    if (!books::checkPeriod(ctx_, dialogs_, r.fromMonth, r.toMonth)) return;
    books::OperatingRequest o;
    o.level = OpE3->isChecked() ? 3 : OpE2->isChecked() ? 2 : 1;
    o.fromMonth = r.fromMonth;
    o.toMonth = r.toMonth;
    o.printDate = r.printDate;
    o.print = r.print;
    if (!target(o.print, "explotacion", "explotacio")) return;
    run(o.print, [&] {
        r.progress(10);
        return books::launchOperatingStatement(ctx_, dialogs_, job_, pointerFree_.get(), o);
    });
}

void FormLLibres::btnSaldos() {
    books::BookRequest r = request(OpIniciE, OpFinalE);
    // Without treasury control the refusal is told before anything greys.
    if (!ctx_.Tesoreria) {
        books::Genera_Saldos(ctx_, dialogs_);
        return;
    }
    if (!target(r.print, "saldos", "saldos")) return;
    run(r.print, [&] {
        r.progress(10);
        return books::launchTrialBalance(ctx_, dialogs_, job_, pointerFree_.get(), r.printDate,
                                         r.print);
    });
}

void FormLLibres::btnLListatClients() {
    printListing(true);
}

void FormLLibres::btnLListatProv() {
    printListing(false);
}

void FormLLibres::printListing(bool customers) {
    const books::BookRequest r = request(OpIniciE, OpFinalE);
    books::ListingRequest l;
    const QRadioButton* domicile = customers ? Opclidom : OpProdom;
    l.kind = domicile->isChecked() ? books::ListingKind::Domicile : books::ListingKind::Contacts;
    l.printDate = r.printDate;
    report::PrintRequest print = r.print;
    if (!target(print, customers ? "clientes" : "proveedores",
                customers ? "clients" : "proveidors"))
        return;
    l.destination = print.destination;
    l.printFileName = print.printFileName;
    run(print, [&] {
        return customers ? books::btnLListatClients(ctx_, dialogs_, job_, pointerFree_.get(), l)
                         : books::btnLListatProv(ctx_, dialogs_, job_, pointerFree_.get(), l);
    });
}

}  // namespace tallora
