#include "frm_importar.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "interchange/interchange_export.h"
#include "interchange/interchange_import.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tallora {
namespace {

using ui::named;

QListWidget* logList(const char* name, QWidget* parent) {
    auto* list = named(new QListWidget(parent), name);
    // A run may log a hundred thousand lines: rows of one height keep it quick.
    list->setUniformItemSizes(true);
    list->setMinimumHeight(120);
    return list;
}

QProgressBar* progressBar(const char* name, QWidget* parent) {
    auto* bar = named(new QProgressBar(parent), name);
    bar->setFormat(QStringLiteral("%v / %m"));
    bar->setValue(0);
    bar->setMaximum(1);
    return bar;
}

// The top of a tab: its title, what it does, the prompt for the file, and the path with its
// chooser on one row.
QVBoxLayout* tabHead(QWidget* page, const QString& title, const QString& text,
                     const QString& prompt, QLineEdit* path, QPushButton* choose) {
    auto* v = new QVBoxLayout(page);
    v->setContentsMargins(12, 10, 12, 10);
    v->addWidget(ui::boldLabel(title, page));
    auto* about = new QLabel(text, page);
    about->setWordWrap(true);
    v->addWidget(about);
    v->addWidget(new QLabel(prompt.trimmed(), page));
    auto* row = new QHBoxLayout;
    row->addWidget(path, 1);
    row->addWidget(choose);
    v->addLayout(row);
    return v;
}

// The progress bar beside the button that runs the tab.
QHBoxLayout* runRow(QProgressBar* bar, QPushButton* run) {
    auto* row = new QHBoxLayout;
    row->addWidget(bar, 1);
    row->addWidget(run);
    return row;
}

QString interchangeFilter(const WorkingContext& ctx) {
    return Missatge(ctx, 6882) + QStringLiteral(" (*.dat)");
}

}  // namespace

frmImportar::frmImportar(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("frmImportar"));
    setWindowTitle(Missatge(ctx_, 6600));
    chooseExportPath = [this] {
        return QFileDialog::getSaveFileName(this, Missatge(ctx_, 6881), txtDirExporta->text(),
                                            interchangeFilter(ctx_));
    };
    chooseImportPath = [this] {
        return QFileDialog::getOpenFileName(this, Missatge(ctx_, 6887), txtDirImporta->text(),
                                            interchangeFilter(ctx_));
    };
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 8);
    layout->addWidget(ui::bandTitle(
        Missatge(ctx_, 6600),
        Missatge(ctx_, 6634) + ctx_.EmpresaNom + QStringLiteral("  ") + ctx_.Exercici, this));
    TabStrip1_ = named(new QTabWidget(this), "TabStrip1");
    QWidget* exportPage = exportTab();
    exportPage->setObjectName(QStringLiteral("EXPORTACION"));
    TabStrip1_->addTab(exportPage, Missatge(ctx_, 6601));
    QWidget* importPage = importTab();
    importPage->setObjectName(QStringLiteral("IMPORTACION"));
    TabStrip1_->addTab(importPage, Missatge(ctx_, 6602));
    auto* body = new QVBoxLayout;
    body->setContentsMargins(10, 6, 10, 0);
    body->addWidget(TabStrip1_, 1);
    layout->addLayout(body, 1);

    ui::helpOnF1(ctx_, this, QStringLiteral("importa"));
    ui::turnTabsFromKeyboard(TabStrip1_, this);
    txtDirExporta->setFocus();
    resize(760, 600);
}

frmImportar::~frmImportar() = default;

QWidget* frmImportar::exportTab() {
    auto* page = new QWidget;
    txtDirExporta = named(new QLineEdit(page), "txtDirExporta");
    btnBuscaExp_ = ui::dialogButton("btnBuscaExp", Missatge(ctx_, 6883), page);
    QVBoxLayout* v = tabHead(page, Missatge(ctx_, 6608), Missatge(ctx_, 6610), Missatge(ctx_, 6609),
                             txtDirExporta, btnBuscaExp_);

    auto* options = new QGroupBox(page);
    auto* grid = new QVBoxLayout(options);
    OpExportaTodo = named(new QRadioButton(Missatge(ctx_, 6885), options), "OpExportaTodo");
    OpExportaParcial = named(new QRadioButton(Missatge(ctx_, 6886), options), "OpExportaParcial");
    OpChkClientes = named(new QCheckBox(Missatge(ctx_, 228), options), "OpChkClientes");
    OpChkProveedores = named(new QCheckBox(Missatge(ctx_, 229), options), "OpChkProveedores");
    OpChkCuentas = named(new QCheckBox(Missatge(ctx_, 230), options), "OpChkCuentas");
    OpExportaTodo->setChecked(true);
    grid->addWidget(OpExportaTodo);
    grid->addWidget(OpExportaParcial);
    auto* boxes = new QHBoxLayout;
    boxes->setContentsMargins(24, 0, 0, 0);
    for (QCheckBox* box : {OpChkClientes, OpChkProveedores, OpChkCuentas}) boxes->addWidget(box);
    boxes->addStretch(1);
    grid->addLayout(boxes);
    v->addWidget(options);
    connect(OpExportaParcial, &QRadioButton::toggled, this, [this] { showExportBoxes(); });
    showExportBoxes();

    btn_Exporta_ = ui::dialogButton(
        "btn_Exporta", fixedText(ctx_, QStringLiteral("Exportar"), QStringLiteral("Exportar")),
        page);
    ProgExporta = progressBar("ProgExporta", page);
    v->addLayout(runRow(ProgExporta, btn_Exporta_));
    List_exporta = logList("List_exporta", page);
    v->addWidget(List_exporta, 1);

    connect(btnBuscaExp_, &QPushButton::clicked, this, &frmImportar::btnBuscaExp);
    connect(btn_Exporta_, &QPushButton::clicked, this, &frmImportar::btn_Exporta);
    return page;
}

QWidget* frmImportar::importTab() {
    auto* page = new QWidget;
    txtDirImporta = named(new QLineEdit(page), "txtDirImporta");
    txtDirImporta->setReadOnly(true);
    btnBuscaImp_ = ui::dialogButton("btnBuscaImp", Missatge(ctx_, 6883), page);
    QVBoxLayout* v = tabHead(page, Missatge(ctx_, 6603), Missatge(ctx_, 6607), Missatge(ctx_, 6604),
                             txtDirImporta, btnBuscaImp_);

    auto* middle = new QHBoxLayout;
    auto* fileBox = new QGroupBox(Missatge(ctx_, 6605), page);
    auto* fileLayout = new QVBoxLayout(fileBox);
    ListArchivo = named(new QListWidget(fileBox), "ListArchivo");
    ListArchivo->setFocusPolicy(Qt::NoFocus);
    ListArchivo->setMinimumHeight(100);
    fileLayout->addWidget(ListArchivo);
    middle->addWidget(fileBox, 1);

    auto* options = new QGroupBox(page);
    auto* o = new QVBoxLayout(options);
    OpImportaTodo = named(new QRadioButton(Missatge(ctx_, 6888), options), "OpImportaTodo");
    OpImportaParcial = named(new QRadioButton(Missatge(ctx_, 6889), options), "OpImportaParcial");
    for (QRadioButton* r : {OpImportaTodo, OpImportaParcial}) o->addWidget(r);
    OpChkClientesImporta =
        named(new QCheckBox(Missatge(ctx_, 228), options), "OpChkClientesImporta");
    OpChkProveedoresImporta =
        named(new QCheckBox(Missatge(ctx_, 229), options), "OpChkProveedoresImporta");
    OpChkCuentasImporta = named(new QCheckBox(Missatge(ctx_, 230), options), "OpChkCuentasImporta");
    auto* boxes = new QVBoxLayout;
    boxes->setContentsMargins(24, 0, 0, 0);
    for (QCheckBox* box : {OpChkClientesImporta, OpChkProveedoresImporta, OpChkCuentasImporta})
        boxes->addWidget(box);
    o->addLayout(boxes);
    chkVerifactu = named(new QCheckBox(fixedText(ctx_,
                                                 QStringLiteral("Registrar en VERI*FACTU las "
                                                                "facturas importadas"),
                                                 QStringLiteral("Registrar a VERI*FACTU les "
                                                                "factures importades")),
                                       options),
                         "chkVerifactu");
    chkVerifactu->setToolTip(fixedText(
        ctx_,
        QStringLiteral("Solo si estas facturas son de esta empresa y ningún otro programa las "
                       "ha registrado ya"),
        QStringLiteral("Només si aquestes factures són d'aquesta empresa i cap altre programa "
                       "no les ha registrat ja")));
    o->addWidget(chkVerifactu);
    o->addStretch(1);
    middle->addWidget(options, 1);
    v->addLayout(middle);

    btn_Importa_ = ui::dialogButton(
        "btn_Importa", fixedText(ctx_, QStringLiteral("Importar"), QStringLiteral("Importar")),
        page);
    ProgImporta = progressBar("ProgImporta", page);
    v->addLayout(runRow(ProgImporta, btn_Importa_));
    v->addWidget(new QLabel(Missatge(ctx_, 6606), page));
    List1 = logList("List1", page);
    v->addWidget(List1, 1);
    // Nothing to import until a file is chosen.
    setImportFile(QString());

    connect(btnBuscaImp_, &QPushButton::clicked, this, &frmImportar::btnBuscaImp);
    connect(btn_Importa_, &QPushButton::clicked, this, &frmImportar::btn_Importa);
    return page;
}

void frmImportar::showExportBoxes() {
    for (QCheckBox* box : {OpChkClientes, OpChkProveedores, OpChkCuentas})
        box->setEnabled(OpExportaParcial->isChecked());
}

void frmImportar::btnBuscaExp() {
    QString path = chooseExportPath();
    if (path.isEmpty()) return;
    if (!path.endsWith(QStringLiteral(".dat"), Qt::CaseInsensitive)) path += QStringLiteral(".dat");
    txtDirExporta->setText(path);
    btn_Exporta_->setFocus();
}

void frmImportar::btnBuscaImp() {
    const QString path = chooseImportPath();
    if (path.isEmpty()) return;
    setImportFile(path);
    btn_Importa_->setFocus();
}

void frmImportar::setImportFile(const QString& path) {
    txtDirImporta->setText(path);
    header_ = path.isEmpty() ? interchange::FileHeader{} : interchange::readHeader(ctx_, path);
    ListArchivo->clear();
    ListArchivo->addItems(header_.ListArchivo);
    List1->clear();
    // The options follow the file: a whole exercise is imported whole, a selection partly
    // with the boxes of what it holds.
    const bool known = !header_.ListArchivo.isEmpty();
    const interchange::ImportChoice preset = interchange::presetFor(header_);
    OpImportaTodo->setEnabled(known && preset.whole);
    OpImportaParcial->setEnabled(known && !preset.whole);
    OpImportaTodo->setChecked(known && preset.whole);
    OpImportaParcial->setChecked(known && !preset.whole);
    chkVerifactu->setChecked(false);
    chkVerifactu->setEnabled(known && preset.whole);
    const std::pair<QCheckBox*, bool> boxes[] = {{OpChkClientesImporta, preset.customers},
                                                 {OpChkProveedoresImporta, preset.suppliers},
                                                 {OpChkCuentasImporta, preset.chart}};
    for (const auto& [box, on] : boxes) {
        box->setChecked(known && on);
        box->setEnabled(known && on);
    }
}

namespace {

// The screen's message boxes, each shown once the log and the bar are up to date, so that
// a message at the end of a run sits over the run's last lines.
class LogFirstDialogs : public Dialogs {
public:
    LogFirstDialogs(Dialogs& inner, std::function<void()> show)
        : inner_(inner), show_(std::move(show)) {}
    void information(const QString& text, const QString& title) override {
        show_();
        inner_.information(text, title);
    }
    void stop(const QString& text, const QString& title) override {
        show_();
        inner_.stop(text, title);
    }
    Answer yesNo(const QString& text, const QString& title) override {
        show_();
        return inner_.yesNo(text, title);
    }
    Answer okCancel(const QString& text, const QString& title, Icon icon) override {
        show_();
        return inner_.okCancel(text, title, icon);
    }
    void beep() override { inner_.beep(); }

private:
    Dialogs& inner_;
    std::function<void()> show_;
};

}  // namespace

void frmImportar::running(QListWidget* log, QProgressBar* bar, const Work& work) {
    running_ = true;
    TabStrip1_->setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    log->clear();
    bar->setMaximum(1);
    bar->setValue(0);
    QStringList pending;
    qint64 done = 0;
    qint64 total = 1;
    QElapsedTimer sinceShown;
    sinceShown.start();
    const auto show = [&] {
        bar->setMaximum(static_cast<int>(std::max<qint64>(1, total)));
        bar->setValue(static_cast<int>(std::min(done, total)));
        log->addItems(pending);
        pending.clear();
        log->scrollToBottom();
        QApplication::processEvents();
        sinceShown.restart();
    };
    interchange::RunReport report;
    report.log = [&](const QString& line) { pending << line; };
    report.progress = [&](qint64 d, qint64 t) {
        done = d;
        total = t;
        // Repainting every record would cost more than the records.
        if (sinceShown.elapsed() >= 100) show();
    };
    LogFirstDialogs dialogs(dialogs_, show);
    work(dialogs, report);
    show();
    QApplication::restoreOverrideCursor();
    TabStrip1_->setEnabled(true);
    running_ = false;
}

void frmImportar::btn_Exporta() {
    if (running_ || txtDirExporta->text().isEmpty()) return;
    interchange::ExportChoice choice;
    choice.whole = OpExportaTodo->isChecked();
    choice.customers = OpChkClientes->isChecked();
    choice.suppliers = OpChkProveedores->isChecked();
    choice.chart = OpChkCuentas->isChecked();
    // The checks come first, with nothing greyed.
    if (interchange::isExerciseSettingsName(ctx_, txtDirExporta->text()) ||
        (!choice.whole && !choice.customers && !choice.suppliers && !choice.chart)) {
        interchange::Exporta(ctx_, dialogs_, txtDirExporta->text(), choice);
        return;
    }
    running(List_exporta, ProgExporta, [&](Dialogs& dialogs, const interchange::RunReport& report) {
        interchange::Exporta(ctx_, dialogs, txtDirExporta->text(), choice, report);
    });
    btn_Exporta_->setFocus();
}

void frmImportar::btn_Importa() {
    if (running_) return;
    interchange::ImportChoice choice;
    choice.whole = OpImportaTodo->isChecked();
    choice.customers = OpChkClientesImporta->isChecked();
    choice.suppliers = OpChkProveedoresImporta->isChecked();
    choice.chart = OpChkCuentasImporta->isChecked();
    choice.exportChart = OpChkCuentas->isChecked();
    choice.recordInvoices = choice.whole && chkVerifactu->isChecked();
    bool imported = false;
    running(List1, ProgImporta, [&](Dialogs& dialogs, const interchange::RunReport& report) {
        imported =
            interchange::Importa(ctx_, dialogs, txtDirImporta->text(), header_, choice, report);
    });
    if (imported) emit importFinished();
    btn_Importa_->setFocus();
}

void frmImportar::reject() {
    if (!running_) QDialog::reject();
}

void frmImportar::closeEvent(QCloseEvent* event) {
    if (running_) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

}  // namespace tallora
