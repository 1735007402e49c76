#include "form_configuracio.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "shell/settings_actions.h"
#include "shell/settings_files.h"
#include "widgets/field_behaviour.h"
#include "widgets/obre_ajuda.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tallora {
namespace {

QLabel* note(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

QRadioButton* option(const char* name, const QString& caption, QWidget* parent) {
    auto* button = new QRadioButton(caption, parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

QLineEdit* numberField(const char* name, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setAlignment(Qt::AlignRight);
    edit->setMaxLength(9);
    ui::colourOnFocus(edit);
    return edit;
}

// The invoice models installed: f0*.rpt of the program folder and of the installed layouts.
QStringList invoiceModels(const WorkingContext& ctx) {
    QStringList models;
    for (const QString& folder : {ctx.programDir, withTrailingSlash(ctx.resourcesDir) + QStringLiteral("reports")})
        for (const QString& file : QDir(folder).entryList({QStringLiteral("f0*.rpt")}, QDir::Files))
            if (!models.contains(file)) models << file;
    return models;
}

}  // namespace

FormConfiguracio::FormConfiguracio(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("FormConfiguracio"));
    setWindowTitle(Missatge(ctx_, 208));
    Tabula_ = new QTabWidget(this);
    Tabula_->setObjectName(QStringLiteral("Tabula"));
    const auto tab = [&](QWidget* page, const char* key, const QString& caption) {
        page->setObjectName(QString::fromLatin1(key));
        Tabula_->addTab(page, caption);
    };
    tab(numsTab(), "nums", Missatge(ctx_, 6800));
    tab(idiomaTab(), "idioma", QStringLiteral("Idioma"));
    tab(pantallasTab(), "pantallas", Missatge(ctx_, 6801));
    tab(facturacionTab(), "cfg_fras", Missatge(ctx_, 6802));
    tab(tesoreriaTab(), "tesoreria", Missatge(ctx_, 6803));
    tab(impresoraTab(), "impresora", Missatge(ctx_, 6833));
    tab(otrasTab(), "Otras", Missatge(ctx_, 6857));
    // The tabs of a company have nothing to work on before one is open (the first run).
    const bool company = shell::companyOpen(ctx_);
    for (const char* key : {"cfg_fras", "tesoreria", "Otras"})
        Tabula_->setTabEnabled(Tabula_->indexOf(Tabula_->findChild<QWidget*>(QString::fromLatin1(key))), company);
    Tabula_->setCurrentIndex(0);
    // Every tab's caption in full, in either language.
    Tabula_->setUsesScrollButtons(false);
    Tabula_->setElideMode(Qt::ElideNone);
    setMinimumWidth(Tabula_->tabBar()->sizeHint().width() + 40);

    auto* btnCancelar = new QPushButton(Missatge(ctx_, 308), this);
    btnCancelar->setObjectName(QStringLiteral("btnCancelar"));
    connect(btnCancelar, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnCancelar);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Tabula_, 1);
    layout->addLayout(buttons);
    ui::helpOnF1(ctx_, this, QStringLiteral("opciones"));
}

QPushButton* FormConfiguracio::applyButton(const char* name, QWidget* parent) {
    auto* button = new QPushButton(Missatge(ctx_, 6765), parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

QWidget* FormConfiguracio::numsTab() {
    auto* page = new QGroupBox(Missatge(ctx_, 6766));
    page->setObjectName(QStringLiteral("Frame_nums"));
    OpComa_ = option("OpComa", Missatge(ctx_, 6769), page);
    OpPunt_ = option("OpPunt", Missatge(ctx_, 6770), page);
    auto* sample = new QLabel(page);
    sample->setObjectName(QStringLiteral("lblMostra"));
    QFont big = sample->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    sample->setFont(big);
    const int decimal = settings::readDecimal(ctx_.programDir);
    (decimal == 46 ? OpPunt_ : OpComa_)->setChecked(true);
    const auto showSample = [this, sample] { sample->setText(shell::decimalSample(OpPunt_->isChecked() ? 46 : 44)); };
    showSample();
    connect(OpComa_, &QRadioButton::toggled, page, showSample);
    auto* apply = applyButton("btnAplicarFormatoNums", page);
    connect(apply, &QPushButton::clicked, this, [this] {
        if (shell::Aplica_FormatoNums(ctx_, dialogs_, OpComa_->isChecked())) emit closeChildrenRequested();
    });
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(note(Missatge(ctx_, 6768), page));
    layout->addWidget(OpComa_);
    layout->addWidget(OpPunt_);
    layout->addWidget(sample, 0, Qt::AlignCenter);
    layout->addStretch();
    layout->addWidget(apply, 0, Qt::AlignRight);
    return page;
}

QWidget* FormConfiguracio::idiomaTab() {
    auto* page = new QGroupBox(Missatge(ctx_, 6804));
    page->setObjectName(QStringLiteral("Frame_idioma"));
    // Each language is named in itself, so that anyone finds their own.
    OpEsp_ = option("OpEsp", QStringLiteral("Español"), page);
    OpCat_ = option("OpCat", QStringLiteral("Català"), page);
    (settings::readIdioma(ctx_.programDir) == QStringLiteral("cat") ? OpCat_ : OpEsp_)->setChecked(true);
    auto* apply = applyButton("btn_aplica_Idioma", page);
    connect(apply, &QPushButton::clicked, this, [this] {
        if (shell::Aplica_Idioma(ctx_, dialogs_, OpCat_->isChecked())) emit backToCompaniesRequested();
    });
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(OpEsp_);
    layout->addWidget(OpCat_);
    layout->addStretch();
    layout->addWidget(apply, 0, Qt::AlignRight);
    return page;
}

QWidget* FormConfiguracio::pantallasTab() {
    auto* page = new QWidget;
    auto* frame = new QGroupBox(page);
    frame->setObjectName(QStringLiteral("Frame_Pantallas"));
    OpPantallas_Clasico_ = option("OpPantallas_Clasico", Missatge(ctx_, 6796), frame);
    OpPantallas_Maximizar_ = option("OpPantallas_Maximizar", Missatge(ctx_, 6797), frame);
    (ctx_.PantallaMax ? OpPantallas_Maximizar_ : OpPantallas_Clasico_)->setChecked(true);
    auto* apply = applyButton("btnPantallas_aplicar", page);
    connect(apply, &QPushButton::clicked, this, [this] {
        if (shell::Aplica_Pantallas(ctx_, dialogs_, OpPantallas_Maximizar_->isChecked())) emit screenModeChanged();
    });
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(OpPantallas_Clasico_);
    layout->addWidget(note(Missatge(ctx_, 6798), frame));
    layout->addSpacing(8);
    layout->addWidget(OpPantallas_Maximizar_);
    layout->addWidget(note(Missatge(ctx_, 6799), frame));
    auto* outer = new QVBoxLayout(page);
    outer->addWidget(frame);
    outer->addStretch();
    outer->addWidget(apply, 0, Qt::AlignRight);
    return page;
}

QWidget* FormConfiguracio::facturacionTab() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("Frame_Facturacion"));
    const auto m = [&](int n) { return Missatge(ctx_, n); };
    const settings::FactMod mod =
        shell::companyOpen(ctx_) ? settings::readFactMod(ctx_.companyFolder()) : settings::FactMod{};

    auto* config = new QGroupBox(m(6836), page);
    chkFACTURACION_ = new QCheckBox(m(6837), config);
    chkFACTURACION_->setObjectName(QStringLiteral("chkFACTURACION"));
    chkFACTURACION_->setChecked(ctx_.Facturacio);
    CmbFacturacion_documentos_ = new QComboBox(config);
    CmbFacturacion_documentos_->setObjectName(QStringLiteral("CmbFacturacion_documentos"));
    CmbFacturacion_documentos_->addItems(invoiceModels(ctx_));
    CmbFacturacion_documentos_->setCurrentText(mod.model);
    cmbCopies_ = new QComboBox(config);
    cmbCopies_->setObjectName(QStringLiteral("cmbCopies"));
    for (int n = 1; n <= 5; ++n) cmbCopies_->addItem(QString::number(n));
    cmbCopies_->setCurrentText(QString::number(std::max(1, mod.copies)));
    auto* applyConfig = applyButton("btnAplicaFacturacionConfiguracion", config);
    connect(applyConfig, &QPushButton::clicked, this, [this] {
        shell::Aplica_Facturacion(ctx_, dialogs_,
                                  {chkFACTURACION_->isChecked(), CmbFacturacion_documentos_->currentText(),
                                   cmbCopies_->currentText().toInt()});
    });
    auto* configRow = new QHBoxLayout(config);
    configRow->addWidget(chkFACTURACION_);
    configRow->addWidget(new QLabel(m(6814), config));
    configRow->addWidget(CmbFacturacion_documentos_, 1);
    configRow->addWidget(new QLabel(m(6993), config));
    configRow->addWidget(cmbCopies_);
    configRow->addWidget(applyConfig);

    auto* numbers = new QGroupBox(m(6815), page);
    txtFacturacion_NumFacturas_ = numberField("txtFacturacion_NumFacturas", numbers);
    txtFacturacion_NumPresupuestos_ = numberField("txtFacturacion_NumPresupuestos", numbers);
    txtFacturacion_NumProformas_ = numberField("txtFacturacion_NumProformas", numbers);
    txtFacturacion_NumAlbaranes_ = numberField("txtFacturacion_NumAlbaranes", numbers);
    for (QLineEdit* field : {txtFacturacion_NumFacturas_, txtFacturacion_NumPresupuestos_,
                             txtFacturacion_NumProformas_, txtFacturacion_NumAlbaranes_}) {
        connect(field, &QLineEdit::textEdited, this, [this, field](const QString& text) {
            if (text.isEmpty() || Es_Numeric(ctx_, text)) return;
            dialogs_.beep();
            field->clear();
        });
    }
    if (const auto next = shell::nextDocumentNumbers(ctx_)) {
        txtFacturacion_NumFacturas_->setText(next->facturas);
        txtFacturacion_NumPresupuestos_->setText(next->presupuestos);
        txtFacturacion_NumProformas_->setText(next->proformas);
        txtFacturacion_NumAlbaranes_->setText(next->albaranes);
    }
    auto* applyNumbers = applyButton("btnAplicaFacturacionNumeracion", numbers);
    connect(applyNumbers, &QPushButton::clicked, this, [this] {
        shell::Aplica_Numeracion(ctx_, dialogs_, txtFacturacion_NumFacturas_->text(),
                                 txtFacturacion_NumPresupuestos_->text(), txtFacturacion_NumProformas_->text());
    });
    auto* numbersRow = new QHBoxLayout(numbers);
    const std::pair<int, QLineEdit*> numberFields[] = {{6817, txtFacturacion_NumFacturas_},
                                                       {6818, txtFacturacion_NumPresupuestos_},
                                                       {6819, txtFacturacion_NumProformas_},
                                                       {7013, txtFacturacion_NumAlbaranes_}};
    for (const auto& [caption, field] : numberFields) {
        numbersRow->addWidget(new QLabel(m(caption), numbers));
        numbersRow->addWidget(field);
    }
    numbersRow->addWidget(applyNumbers);

    auto* fiscal = new QGroupBox(m(6816), page);
    auto* fiscalForm = new QFormLayout(fiscal);
    const settings::FiscalData data = shell::fiscalDataFor(ctx_);
    const QString captions[10] = {m(6820), m(6821), QStringLiteral("NIF"), m(6822), m(6823),
                                  QStringLiteral("C.P."), m(6824), QStringLiteral("Fax"), m(6825), m(6814)};
    const int lengths[10] = {40, 40, 15, 50, 25, 5, 12, 12, 150, 40};
    const auto values = data.fields();
    for (int i = 0; i < 10; ++i) {
        txtFiscal_[i] = new QLineEdit(*values[i], fiscal);
        txtFiscal_[i]->setObjectName(QStringLiteral("txtFacturacion_Dato%1").arg(i + 1));
        txtFiscal_[i]->setMaxLength(lengths[i]);
        ui::colourOnFocus(txtFiscal_[i]);
        fiscalForm->addRow(captions[i], txtFiscal_[i]);
    }
    auto* saveFiscal = new QPushButton(m(17), fiscal);
    saveFiscal->setObjectName(QStringLiteral("btnFacturacionGuardar"));
    connect(saveFiscal, &QPushButton::clicked, this, [this] {
        settings::FiscalData entered;
        const auto fields = entered.fields();
        for (int i = 0; i < 10; ++i) *fields[i] = txtFiscal_[i]->text();
        shell::Guarda_DatosFiscales(ctx_, dialogs_, entered);
    });
    fiscalForm->addRow(QString(), saveFiscal);

    // Numbers and the heading of documents mean something only with the module on.
    numbers->setEnabled(ctx_.Facturacio);
    fiscal->setEnabled(ctx_.Facturacio);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(config);
    layout->addWidget(numbers);
    layout->addWidget(fiscal, 1);
    return page;
}

QWidget* FormConfiguracio::tesoreriaTab() {
    auto* page = new QGroupBox(Missatge(ctx_, 6811));
    page->setObjectName(QStringLiteral("Frame_Tesoreria"));
    OpTesoreria_SI_ = option("OpTesoreria_SI", Missatge(ctx_, 6812), page);
    OpTesoreria_NO_ = option("OpTesoreria_NO", Missatge(ctx_, 6813), page);
    (ctx_.Tesoreria ? OpTesoreria_SI_ : OpTesoreria_NO_)->setChecked(true);
    auto* apply = applyButton("btnTesoreria_aplicar", page);
    connect(apply, &QPushButton::clicked, this, [this] {
        if (shell::Aplica_Tesoreria(ctx_, dialogs_, OpTesoreria_SI_->isChecked())) emit backToCompaniesRequested();
    });
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(OpTesoreria_SI_);
    layout->addWidget(OpTesoreria_NO_);
    layout->addStretch();
    layout->addWidget(apply, 0, Qt::AlignRight);
    return page;
}

QWidget* FormConfiguracio::impresoraTab() {
    auto* page = new QGroupBox(Missatge(ctx_, 6832));
    page->setObjectName(QStringLiteral("Frame_Impresora"));
    const settings::Margins current = settings::readMargins(ctx_.programDir);
    const int values[4] = {current.left, current.right, current.top, current.bottom};
    const char* texts[4] = {"txt_Printer_Left", "txt_Printer_Right", "txt_Printer_Top", "txt_Printer_Bottom"};
    const char* slides[4] = {"Sl_Printer_Left", "Sl_Printer_Right", "Sl_Printer_top", "Sl_Printer_Bottom"};
    auto* form = new QFormLayout;
    for (int i = 0; i < 4; ++i) {
        sliders_[i] = new QSlider(Qt::Horizontal, page);
        sliders_[i]->setObjectName(QString::fromLatin1(slides[i]));
        sliders_[i]->setRange(0, 50);  // millimetres
        sliders_[i]->setValue(values[i]);
        margins_[i] = numberField(texts[i], page);
        margins_[i]->setMaxLength(2);
        margins_[i]->setMaximumWidth(margins_[i]->fontMetrics().horizontalAdvance(QStringLiteral("00000")));
        margins_[i]->setText(QString::number(values[i]));
        QLineEdit* text = margins_[i];
        connect(sliders_[i], &QSlider::valueChanged, text, [text](int v) { text->setText(QString::number(v)); });
        auto* row = new QHBoxLayout;
        row->addWidget(sliders_[i], 1);
        row->addWidget(margins_[i]);
        row->addWidget(new QLabel(QStringLiteral("mm"), page));
        form->addRow(Missatge(ctx_, 6828 + i), row);
    }
    auto* apply = applyButton("btn_Aplica_impresora", page);
    connect(apply, &QPushButton::clicked, this, [this] {
        shell::Aplica_Impresora(ctx_, dialogs_,
                                {margins_[0]->text().toInt(), margins_[1]->text().toInt(),
                                 margins_[2]->text().toInt(), margins_[3]->text().toInt()});
    });
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(note(Missatge(ctx_, 6827), page));
    layout->addLayout(form);
    layout->addStretch();
    layout->addWidget(apply, 0, Qt::AlignRight);
    return page;
}

QWidget* FormConfiguracio::otrasTab() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("Frame_Otras"));
    auto* intra = new QGroupBox(Missatge(ctx_, 6858), page);
    OpIntraSi_ = option("OpIntraSi", Missatge(ctx_, 6859), intra);
    OpIntraNo_ = option("OpIntraNo", Missatge(ctx_, 6860), intra);
    (ctx_.Intra ? OpIntraSi_ : OpIntraNo_)->setChecked(true);
    auto* btnIntra = applyButton("btnIntra", intra);
    connect(btnIntra, &QPushButton::clicked, this, [this] { shell::Aplica_Intra(ctx_, OpIntraSi_->isChecked()); });
    auto* intraLayout = new QVBoxLayout(intra);
    intraLayout->addWidget(OpIntraSi_);
    intraLayout->addWidget(OpIntraNo_);
    intraLayout->addWidget(btnIntra, 0, Qt::AlignRight);

    auto* news = new QGroupBox(Missatge(ctx_, 6970), page);
    OpMensajeriaSI_ = option("OpMensajeriaSI", Missatge(ctx_, 6971), news);
    OpMensajeriaNO_ = option("OpMensajeriaNO", Missatge(ctx_, 6972), news);
    (ctx_.Missatgeria ? OpMensajeriaSI_ : OpMensajeriaNO_)->setChecked(true);
    auto* btnMensajeria = applyButton("btnMensajeria", news);
    connect(btnMensajeria, &QPushButton::clicked, this,
            [this] { shell::Aplica_Mensajeria(ctx_, OpMensajeriaSI_->isChecked()); });
    auto* newsLayout = new QVBoxLayout(news);
    newsLayout->addWidget(OpMensajeriaSI_);
    newsLayout->addWidget(OpMensajeriaNO_);
    newsLayout->addWidget(btnMensajeria, 0, Qt::AlignRight);

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(intra);
    layout->addWidget(news);
    layout->addStretch();
    return page;
}

}  // namespace tallora
