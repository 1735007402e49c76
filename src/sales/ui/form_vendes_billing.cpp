// FormVendes: the billing tab. The five type options above the work area, the tab bar that
// switches it between the amounts and the lines, the lines editor over detalle_temp with
// its grid and sums, the customer's commercial fields, the references frame, opening a
// document and printing it.
//
// Keys on the lines: Enter goes quantity, concept, price, discount, rate, and adds the line;
// Enter on an empty quantity posts the document; Up goes back; Esc clears the line in hand
// (or closes the references frame) before it cancels the entry; Delete on the grid deletes
// the line, Enter on it changes it; F4 opens the references frame; Ctrl+1 to Ctrl+5 select
// the type.
#include "form_vendes.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master/price_references.h"
#include "report/report_job.h"
#include "sales/billing_document.h"
#include "sales/billing_lines.h"
#include "sales/document_printing.h"
#include "store/store_error.h"
#include "widgets/entry_parts.h"
#include "widgets/field_behaviour.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tallora {

using sales::DocType;

namespace {

// The options' fore colours: at rest (&H800000) and loaded as this type (192).
const QString kAtRest = QStringLiteral("color: #000080;");
const QString kLoaded = QStringLiteral("color: #c00000; font-weight: bold;");

enum GridColumn {
    ColId,
    ColConcepto,
    ColCantidad,
    ColPrecio,
    ColDto,
    ColIva,
    ColImporte,
    ColCount
};

}  // namespace

QWidget* FormVendes::buildTypeOptions() {
    typeOptions_ = new QWidget(this);
    typeOptions_->setObjectName(QStringLiteral("TabFacturacionOptions"));
    auto* row = new QHBoxLayout(typeOptions_);
    row->setContentsMargins(0, 2, 0, 0);
    auto* group = new QButtonGroup(typeOptions_);
    const QString captions[] = {QStringLiteral("Factura"), m(6791), m(6792),
                                QStringLiteral("Proforma"), m(7014)};
    for (std::size_t i = 0; i < opFacturacion_.size(); ++i) {
        const DocType type = sales::allDocTypes()[i];
        auto* option = new QRadioButton(captions[i], typeOptions_);
        option->setObjectName(sales::docInfo(type).option);
        option->setFocusPolicy(Qt::ClickFocus);
        option->setToolTip(QStringLiteral("Ctrl+%1").arg(i + 1));
        group->addButton(option);
        opFacturacion_[i] = option;
        row->addWidget(option);
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on) typeSelected();
        });
        auto* key =
            new QShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + i)), this);
        key->setContext(Qt::WidgetWithChildrenShortcut);
        connect(key, &QShortcut::activated, option, [this, option] {
            if (ctx_.Facturacio) option->setChecked(true);
        });
    }
    row->addStretch(1);
    TabFacturacion = new QTabBar(typeOptions_);
    TabFacturacion->setObjectName(QStringLiteral("TabFacturacion"));
    TabFacturacion->setFocusPolicy(Qt::NoFocus);
    TabFacturacion->setUsesScrollButtons(false);
    TabFacturacion->setExpanding(false);
    TabFacturacion->addTab(fixed("Importes", "Imports"));
    TabFacturacion->addTab(m(6787));
    connect(TabFacturacion, &QTabBar::currentChanged, this, &FormVendes::tabChanged);
    TabFacturacion->setMinimumWidth(TabFacturacion->sizeHint().width());
    row->addWidget(TabFacturacion);
    return typeOptions_;
}

QWidget* FormVendes::lineFieldsRow() {
    auto* box = new QWidget(FrameFacturacion);
    auto* g = new QGridLayout(box);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(6);
    g->setVerticalSpacing(1);
    txtFacturacionCantidad = field(QStringLiteral("txtFacturacionCantidad"), 14);
    txtFacturacionConcepto = field(QStringLiteral("txtFacturacionConcepto"));
    txtFacturacionPrecio = field(QStringLiteral("txtFacturacionPrecio"), 18);
    txtFacturacionDto = field(QStringLiteral("txtFacturacionDto"), 6);
    txtFacturacionImporte = field(QStringLiteral("txtFacturacionImporte"), 18);
    txtFacturacionImporte->setReadOnly(true);
    txtFacturacionImporte->setFocusPolicy(Qt::NoFocus);
    ui::makeQuantityField(ctx_, txtFacturacionCantidad);
    ui::makeAmountField(ctx_, txtFacturacionPrecio);
    ui::makeQuantityField(ctx_, txtFacturacionDto);
    txtFacturacionIVA = new QComboBox(box);
    txtFacturacionIVA->setObjectName(QStringLiteral("txtFacturacionIVA"));
    txtFacturacionIVA->installEventFilter(this);
    txtFacturacionID = new QLabel(box);
    txtFacturacionID->setObjectName(QStringLiteral("txtFacturacionID"));
    txtFacturacionID->hide();
    btnFacturacionAlta_ = new QPushButton(m(6790), box);
    btnFacturacionAlta_->setObjectName(QStringLiteral("btnFacturacionAlta"));
    btnFacturacionAlta_->setFocusPolicy(Qt::ClickFocus);
    connect(btnFacturacionAlta_, &QPushButton::clicked, this, &FormVendes::btnFacturacionAlta);

    const std::pair<QWidget*, int> columns[] = {
        {txtFacturacionCantidad, 6778}, {txtFacturacionConcepto, 6781},
        {txtFacturacionPrecio, 6779},   {txtFacturacionDto, 6780},
        {txtFacturacionIVA, 0},         {txtFacturacionImporte, 6782}};
    int column = 0;
    for (const auto& [w, n] : columns) {
        auto* label = caption(w->objectName().replace(QStringLiteral("txt"), QStringLiteral("lbl")),
                              n ? m(n) : QStringLiteral("% IVA"), w);
        g->addWidget(label, 0, column);
        g->addWidget(w, 1, column);
        ++column;
    }
    g->addWidget(btnFacturacionAlta_, 1, column);
    g->setColumnStretch(1, 1);
    txtFacturacionCantidad->setFixedWidth(80);
    txtFacturacionPrecio->setFixedWidth(90);
    txtFacturacionDto->setFixedWidth(50);
    txtFacturacionImporte->setFixedWidth(90);
    for (QLineEdit* f : {txtFacturacionCantidad, txtFacturacionPrecio, txtFacturacionDto})
        connect(f, &QLineEdit::textChanged, this, &FormVendes::Calcula_Linia);
    connect(txtFacturacionIVA, &QComboBox::currentIndexChanged, this, &FormVendes::Calcula_Linia);
    return box;
}

QWidget* FormVendes::buildReferencesFrame() {
    FacRef_frame = ui::panelFrame(QStringLiteral("FacRef_frame"), FrameFacturacion);
    auto* row = new QHBoxLayout(FacRef_frame);
    row->setContentsMargins(6, 3, 6, 3);
    FacRef_txtReferencia = field(QStringLiteral("FacRef_txtReferencia"), 40);
    row->addWidget(caption(QStringLiteral("FacRef_lblReferencia"), m(7003), FacRef_txtReferencia));
    row->addWidget(FacRef_txtReferencia, 1);
    const std::pair<const char*, QString> buttons[] = {{"FacRef_Busca", fixed("Buscar", "Cercar")},
                                                       {"FacRef_Cancelar", m(6408)},
                                                       {"FacRef_Referencias", m(7002)}};
    for (const auto& [name, text] : buttons) {
        auto* b = new QPushButton(text, FacRef_frame);
        b->setObjectName(QString::fromLatin1(name));
        b->setFocusPolicy(Qt::ClickFocus);
        row->addWidget(b);
        const QString n = QString::fromLatin1(name);
        connect(b, &QPushButton::clicked, this, [this, n] {
            if (n == u"FacRef_Busca")
                FacRef_Busca();
            else if (n == u"FacRef_Cancelar")
                FacRef_Cancelar();
            else
                emit referencesRequested();
        });
    }
    FacRef_frame->hide();
    return FacRef_frame;
}

QWidget* FormVendes::buildBillingFrame() {
    FrameFacturacion = ui::panelFrame(QStringLiteral("FrameFacturacion"), this);
    auto* v = new QVBoxLayout(FrameFacturacion);
    v->setContentsMargins(6, 4, 6, 4);
    v->setSpacing(4);
    v->addWidget(lineFieldsRow());
    v->addWidget(buildReferencesFrame());

    GridFacturacion = new QTableWidget(0, ColCount, FrameFacturacion);
    GridFacturacion->setObjectName(QStringLiteral("GridFacturacion"));
    GridFacturacion->setHorizontalHeaderLabels(
        {QStringLiteral("ID"), m(6781).toUpper(), m(6778).toUpper(), m(6779).toUpper(),
         m(6780).toUpper(), QStringLiteral("IVA"), m(6782).toUpper()});
    GridFacturacion->setColumnHidden(ColId, true);
    GridFacturacion->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GridFacturacion->setSelectionBehavior(QAbstractItemView::SelectRows);
    GridFacturacion->setSelectionMode(QAbstractItemView::SingleSelection);
    GridFacturacion->setAlternatingRowColors(true);
    GridFacturacion->setStyleSheet(QStringLiteral(
        "QTableWidget { alternate-background-color: #ffffc0; background: #ffffff; }"));
    GridFacturacion->verticalHeader()->hide();
    GridFacturacion->verticalHeader()->setDefaultSectionSize(20);
    GridFacturacion->horizontalHeader()->setSectionResizeMode(ColConcepto, QHeaderView::Stretch);
    const std::pair<GridColumn, int> widths[] = {
        {ColCantidad, 75}, {ColPrecio, 85}, {ColDto, 55}, {ColIva, 45}, {ColImporte, 90}};
    for (const auto& [column, width] : widths) GridFacturacion->setColumnWidth(column, width);
    GridFacturacion->installEventFilter(this);
    connect(GridFacturacion, &QTableWidget::cellDoubleClicked, this, &FormVendes::modificaLinia);
    v->addWidget(GridFacturacion, 1);

    auto* below = new QGridLayout;
    btnFacturacionModificaLinea = new QPushButton(m(6788), FrameFacturacion);
    btnFacturacionModificaLinea->setObjectName(QStringLiteral("btnFacturacionModificaLinea"));
    btnFacturacionEliminaLinea = new QPushButton(m(6789), FrameFacturacion);
    btnFacturacionEliminaLinea->setObjectName(QStringLiteral("btnFacturacionEliminaLinea"));
    FacRef_Muestra_ = new QPushButton(m(7003) + QStringLiteral("… (F4)"), FrameFacturacion);
    FacRef_Muestra_->setObjectName(QStringLiteral("FacRef_Muestra"));
    for (QPushButton* b :
         {btnFacturacionModificaLinea, btnFacturacionEliminaLinea, FacRef_Muestra_})
        b->setFocusPolicy(Qt::ClickFocus);
    connect(btnFacturacionModificaLinea, &QPushButton::clicked, this, &FormVendes::modificaLinia);
    connect(btnFacturacionEliminaLinea, &QPushButton::clicked, this, &FormVendes::eliminaLinia);
    connect(FacRef_Muestra_, &QPushButton::clicked, this, &FormVendes::FacRef_Muestra);
    auto* f4 = new QShortcut(QKeySequence(Qt::Key_F4), this);
    f4->setContext(Qt::WidgetWithChildrenShortcut);
    connect(f4, &QShortcut::activated, this, [this] {
        if (ctx_.Facturacio) FacRef_Muestra();
    });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnFacturacionModificaLinea);
    buttons->addWidget(btnFacturacionEliminaLinea);
    buttons->addWidget(FacRef_Muestra_);
    buttons->addStretch(1);
    below->addLayout(buttons, 0, 0, 1, 6);

    txtFacturacionFormadePago = field(QStringLiteral("txtFacturacionFormadePago"), 40);
    txtFacturacionEntidadBancaria = field(QStringLiteral("txtFacturacionEntidadBancaria"), 40);
    txtFacturacionCCC = field(QStringLiteral("txtFacturacionCCC"), 20);
    for (QLineEdit* f :
         {txtFacturacionFormadePago, txtFacturacionEntidadBancaria, txtFacturacionCCC})
        f->setFocusPolicy(Qt::ClickFocus);
    const std::pair<QLineEdit*, int> commercial[] = {{txtFacturacionFormadePago, 6783},
                                                     {txtFacturacionEntidadBancaria, 6784},
                                                     {txtFacturacionCCC, 6786}};
    int column = 0;
    for (const auto& [f, n] : commercial) {
        below->addWidget(
            caption(f->objectName().replace(QStringLiteral("txt"), QStringLiteral("lbl")), m(n), f),
            1, column++);
        below->addWidget(f, 1, column++);
    }
    v->addLayout(below);
    return FrameFacturacion;
}

// The fresh state of the tab: an invoice, every option at rest, no lines.
void FormVendes::clearBilling() {
    typeOptions_->setVisible(ctx_.Facturacio);
    chk_imprimir->setVisible(ctx_.Facturacio);
    cmbImprimir->setVisible(ctx_.Facturacio);
    if (!ctx_.Facturacio) return;
    txtFacturacionIVA->clear();
    txtFacturacionIVA->addItem(QStringLiteral("0"));
    for (double rate : ctx_.TipusIVA) txtFacturacionIVA->addItem(QString::number(rate));
    typeOptionsReset();
    for (QLineEdit* f :
         {txtFacturacionFormadePago, txtFacturacionEntidadBancaria, txtFacturacionCCC})
        f->clear();
    try {
        sales::clearLines(ctx_);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    FacRef_frame->hide();
    netejaLinia();
    GridFacturacion->setRowCount(0);
    const QSignalBlocker block(TabFacturacion);
    TabFacturacion->setCurrentIndex(0);
}

void FormVendes::typeOptionsReset() {
    {
        const QSignalBlocker block(opFacturacion_[0]);
        opFacturacion_[0]->setChecked(true);
    }
    setLoadedAs(std::nullopt);
    typeSelected();
}

void FormVendes::setLoadedAs(std::optional<DocType> type) {
    loadedAs_ = type;
    for (std::size_t i = 0; i < opFacturacion_.size(); ++i)
        opFacturacion_[i]->setStyleSheet(type == sales::allDocTypes()[i] ? kLoaded : kAtRest);
}

DocType FormVendes::selectedType() const {
    if (!ctx_.Facturacio) return DocType::Factura;
    for (std::size_t i = 0; i < opFacturacion_.size(); ++i)
        if (opFacturacion_[i]->isChecked()) return sales::allDocTypes()[i];
    return DocType::Factura;
}

// Only an invoice is collected or left pending: the other types hide the treasury frame.
void FormVendes::typeSelected() {
    const bool invoice = selectedType() == DocType::Factura;
    if (ListEntitats->currentText() != QStringLiteral("Marca"))
        FrameTesoreria->setVisible(invoice && ctx_.Tesoreria);
}

void FormVendes::tabChanged(int index) {
    if (index == 0) {
        showPanel(PanelIVA);
        return;
    }
    if (txtTipus->text().isEmpty()) {
        const QSignalBlocker block(TabFacturacion);
        TabFacturacion->setCurrentIndex(work_->currentWidget() == FrameFacturacion ? 1 : 0);
        beep();
        return;
    }
    showLines();
}

void FormVendes::showLines() {
    showPanel(FrameFacturacion);
    focus(txtFacturacionCantidad);
}

sales::LineFields FormVendes::lineFields() const {
    sales::LineFields line;
    line.id = txtFacturacionID->text();
    line.cantidad = txtFacturacionCantidad->text();
    line.concepto = txtFacturacionConcepto->text();
    line.precio = txtFacturacionPrecio->text();
    line.dto = txtFacturacionDto->text();
    line.iva = txtFacturacionIVA->currentText();
    line.importe = txtFacturacionImporte->text();
    return line;
}

void FormVendes::Calcula_Linia() {
    sales::LineFields line = lineFields();
    txtFacturacionImporte->setText(sales::Calcula_Linia(ctx_, line));
}

void FormVendes::btnFacturacionAlta() {
    sales::LineFields line = lineFields();
    switch (sales::checkLine(ctx_, entry(), line)) {
        case sales::LineRefusal::Customer:
            dialogs_.information(m(638));
            focus(txtClient);
            return;
        case sales::LineRefusal::Cantidad:
            dialogs_.information(m(6793));
            focus(txtFacturacionCantidad);
            return;
        case sales::LineRefusal::Precio:
            dialogs_.information(m(6794));
            focus(txtFacturacionPrecio);
            return;
        case sales::LineRefusal::None:
            break;
    }
    if (txtFacturacionIVA->currentIndex() < 0) line.iva = txtFacturacionIVA->itemText(0);
    try {
        sales::saveLine(ctx_, entry(), line);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
        return;
    }
    OMPLE_GRID_Detall();
    netejaLinia();
    if (txtdescripcio->text().isEmpty()) txtdescripcio->setText(QStringLiteral("-"));
}

void FormVendes::modificaLinia() {
    const int row = GridFacturacion->currentRow();
    if (row < 0) return;
    std::optional<sales::LineFields> line;
    try {
        line = sales::loadLine(ctx_, GridFacturacion->item(row, ColId)->text().toLongLong());
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    if (!line) return;
    btnFacturacionAlta_->setText(m(6795));
    const QSignalBlocker b1(txtFacturacionCantidad), b2(txtFacturacionPrecio),
        b3(txtFacturacionDto), b4(txtFacturacionIVA);
    txtFacturacionCantidad->setText(line->cantidad);
    txtFacturacionPrecio->setText(line->precio);
    txtFacturacionDto->setText(line->dto);
    txtFacturacionImporte->setText(line->importe);
    txtFacturacionConcepto->setText(line->concepto);
    txtFacturacionIVA->setCurrentIndex(std::max(0, txtFacturacionIVA->findText(line->iva)));
    txtFacturacionID->setText(line->id);
    showPanel(FrameFacturacion);
    focus(txtFacturacionCantidad);
}

void FormVendes::eliminaLinia() {
    const int row = GridFacturacion->currentRow();
    if (row < 0) return;
    const QString text = GridFacturacion->item(row, ColConcepto)->text();
    if (dialogs_.yesNo(QStringLiteral("Desea eliminar la linea: ") + text) != Dialogs::Answer::Yes)
        return;
    try {
        sales::deleteLine(ctx_, GridFacturacion->item(row, ColId)->text().toLongLong());
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
        return;
    }
    netejaLinia();
    OMPLE_GRID_Detall();
}

// The line fields cleared; with the entry's head typed, the lines tab in front again.
void FormVendes::netejaLinia() {
    // Cleared without recomputing, so that the amount stays empty too.
    const QSignalBlocker b1(txtFacturacionCantidad), b2(txtFacturacionPrecio),
        b3(txtFacturacionDto), b4(txtFacturacionIVA);
    for (QLineEdit* f : {txtFacturacionCantidad, txtFacturacionConcepto, txtFacturacionPrecio,
                         txtFacturacionDto, txtFacturacionImporte})
        f->clear();
    txtFacturacionIVA->setCurrentIndex(-1);  // no rate chosen takes the list's first, "0"
    txtFacturacionID->clear();
    btnFacturacionAlta_->setText(m(6790));
    const bool head = !txtDia->text().isEmpty() && !txtMes->text().isEmpty() &&
                      (tickets() || !txtClient->text().isEmpty()) && !txtTipus->text().isEmpty();
    if (head && isVisible()) showLines();
}

// The grid and the sums from detalle_temp; the amounts that follow (Recalcula_Apunt).
void FormVendes::OMPLE_GRID_Detall(bool sums) {
    std::vector<sales::DocumentLine> lines;
    try {
        lines = sales::documentLines(ctx_);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
        return;
    }
    GridFacturacion->setRowCount(static_cast<int>(lines.size()));
    for (int r = 0; r < static_cast<int>(lines.size()); ++r) {
        const sales::DocumentLine& line = lines[static_cast<std::size_t>(r)];
        const QString cells[] = {QString::number(line.id),
                                 line.concepto,
                                 Format_Quantitat(ctx_, line.unidades),
                                 Format_Import(ctx_, line.pvp),
                                 Format_Import(ctx_, line.dto),
                                 QString::number(line.iva),
                                 Format_Import(ctx_, line.importe)};
        for (int c = 0; c < ColCount; ++c) {
            auto* item = new QTableWidgetItem(cells[c]);
            if (c != ColConcepto) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            GridFacturacion->setItem(r, c, item);
        }
    }
    if (!sums) return;
    sales::SaleEntry e = entry();
    sales::applyLineSums(ctx_, e, lines, clientRE());
    sales::Recalcula_Apunt(ctx_, e, clientRE());
    display(e);
}

void FormVendes::Carrega_Comercial() {
    if (!ctx_.Facturacio) return;
    sales::Commercial c;
    try {
        c = sales::Carrega_Comercial(ctx_, entry().clientNumber);
    } catch (const store::StoreError&) {
        // A company without its billing file yet has no commercial terms to show.
    }
    txtFacturacionFormadePago->setText(c.formaPago);
    txtFacturacionEntidadBancaria->setText(c.entidad);
    txtFacturacionCCC->setText(c.ccc);
}

bool FormVendes::lineEnterPressed(QWidget* w) {
    if (w == txtFacturacionCantidad) {
        if (!txtFacturacionCantidad->text().isEmpty()) {
            focus(txtFacturacionConcepto);
        } else if (GridFacturacion->rowCount() > 0 && txtFacturacionID->text().isEmpty()) {
            // No more lines: the document is saved (never while a line is being changed).
            GrabaApunt();
        } else {
            beep();
        }
    } else if (w == txtFacturacionConcepto) {
        focus(txtFacturacionPrecio);
    } else if (w == txtFacturacionPrecio) {
        focus(txtFacturacionDto);
    } else if (w == txtFacturacionDto) {
        focus(txtFacturacionIVA);
    } else if (w == txtFacturacionIVA) {
        btnFacturacionAlta();
    } else if (w == FacRef_txtReferencia) {
        FacRef_Busca();
    } else if (w == static_cast<QWidget*>(GridFacturacion)) {
        modificaLinia();
    } else {
        return false;
    }
    return true;
}

bool FormVendes::lineUpPressed(QWidget* w) {
    const QList<QWidget*> along{txtdescripcio,          txtFacturacionCantidad,
                                txtFacturacionConcepto, txtFacturacionPrecio,
                                txtFacturacionDto,      txtFacturacionIVA};
    const qsizetype at = along.indexOf(w);
    if (at <= 0) return false;
    focus(along[at - 1]);
    return true;
}

void FormVendes::FacRef_Muestra() {
    // The lines belong to an entry whose head is typed, as the tab bar asks.
    if (txtTipus->text().isEmpty()) {
        beep();
        return;
    }
    showPanel(FrameFacturacion);
    FacRef_frame->show();
    focus(FacRef_txtReferencia);
}

void FormVendes::FacRef_Busca() {
    const QString code = FacRef_txtReferencia->text().trimmed();
    if (code.isEmpty()) {
        beep();
        return;
    }
    std::optional<master::PriceReference> found;
    try {
        found = master::referenceByCode(ctx_, code);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
        return;
    }
    if (!found) {
        dialogs_.information(m(7007));
        return;
    }
    txtFacturacionConcepto->setText(found->descripcion);
    txtFacturacionPrecio->setText(found->precio);
    FacRef_Cancelar();
    focus(txtFacturacionCantidad);
}

void FormVendes::FacRef_Cancelar() {
    FacRef_frame->hide();
    FacRef_txtReferencia->clear();
    showLines();
}

void FormVendes::Modifica_Document(DocType type, const QString& number, bool fromJournal) {
    const auto loaded = loadChange(number, !txtDia->text().isEmpty(), [&] {
        return sales::openDocument(ctx_, type, number.toLongLong());
    });
    if (!loaded) return;
    lblproces->setText(QStringLiteral("Modificando apunte..."));
    loading_ = true;
    display(*loaded);
    loading_ = false;
    {
        const QSignalBlocker block(opFacturacion_[static_cast<std::size_t>(type)]);
        opFacturacion_[static_cast<std::size_t>(type)]->setChecked(true);
    }
    setLoadedAs(type);
    typeSelected();
    DtFacturacionVencimiento->setDate(loaded->venciment.isValid() ? loaded->venciment
                                                                  : QDate::currentDate());
    Activa_RE();
    OMPLE_GRID_Detall();
    btnTancar->setText(m(6408));
    aqui_ = fromJournal;
    setStatus(m(726));
    bringToFront();
    showLines();
}

void FormVendes::reopen(std::int64_t number, const QString& kind) {
    const auto type = sales::docTypeFrom(kind);
    if (!type || *type == DocType::Factura)
        Modifica_Venda(QString::number(number), true);
    else
        Modifica_Document(*type, QString::number(number), true);
}

void FormVendes::Imprimeix_Document(std::int64_t number, DocType type, const sales::SaleEntry& e) {
    if (!job_) return;
    report::PrintRequest request{report::Destination::Printer, {}};
    if (cmbImprimir->currentIndex() == 1) {
        const QString path =
            pdfPath_ ? pdfPath_(sales::documentFileName(ctx_, type, number, e.txtClient))
                     : QString();
        if (path.isEmpty()) return;
        request = {report::Destination::File, path};
    }
    sales::RateCaptions captions;
    for (std::size_t i = 0; i < 3; ++i) {
        captions.iva[i] = lbliva[i]->text();
        captions.re[i] = lblRE[i]->text();
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        sales::Imprimeix_Document(ctx_, dialogs_, *job_, output_, number, type, e, captions,
                                  request);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    QApplication::restoreOverrideCursor();
}

}  // namespace tallora
