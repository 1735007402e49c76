#include "form_extracto_banco.h"

#include "account_list.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "store/store_error.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tallora {

namespace {

enum Column { Tick, Date, Concept, Amount, Kind, Match, Party, Account, Columns };

QString conceptOf(const banking::N43Movement& m) {
    QStringList parts;
    for (const QString& text : m.concepts)
        if (!text.isEmpty()) parts << text;
    if (parts.isEmpty())
        for (const QString* text : {&m.reference1, &m.reference2, &m.document})
            // Banks fill an unused document number with zeros.
            if (!text->trimmed().isEmpty() &&
                text->trimmed() != QString(text->trimmed().size(), u'0'))
                parts << text->trimmed();
    return parts.join(QStringLiteral(" "));
}

bool writable(treasury::LineKind kind) {
    return kind != treasury::LineKind::Imported && kind != treasury::LineKind::NoAmount;
}

}  // namespace

FormExtractoBanco::FormExtractoBanco(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("FormExtractoBanco"));
    const QString title =
        fixedText(ctx_, "Extracto bancario (Norma 43)", "Extracte bancari (Norma 43)");
    setWindowTitle(title);

    txtFichero_ = new QLineEdit(this);
    txtFichero_->setObjectName(QStringLiteral("txtFichero"));
    txtFichero_->setReadOnly(true);
    btnFichero_ = new QPushButton(fixedText(ctx_, "Abrir fichero...", "Obrir fitxer..."), this);
    btnFichero_->setObjectName(QStringLiteral("btnFichero"));
    cmbEntitats_ = new QComboBox(this);
    cmbEntitats_->setObjectName(QStringLiteral("cmbEntitats"));
    cmbEntitats_->setMinimumContentsLength(26);
    ui::fillAccountList(cmbEntitats_, treasury::treasuryAccountItems(ctx_));
    lblCuenta_ = new QLabel(this);
    lblCuenta_->setObjectName(QStringLiteral("lblCuenta"));

    GridApuntes_ = new QTableWidget(0, Columns, this);
    GridApuntes_->setObjectName(QStringLiteral("GridApuntes"));
    GridApuntes_->setHorizontalHeaderLabels(
        {QString(), Missatge(ctx_, 6118).trimmed(), fixedText(ctx_, "Concepto", "Concepte"),
         fixedText(ctx_, "Importe", "Import"), fixedText(ctx_, "Propuesta", "Proposta"),
         fixedText(ctx_, "Recibo / factura", "Rebut / factura"),
         fixedText(ctx_, "Cliente / proveedor", "Client / proveïdor"),
         fixedText(ctx_, "Cuenta", "Compte")});
    GridApuntes_->verticalHeader()->hide();
    GridApuntes_->setSelectionBehavior(QAbstractItemView::SelectRows);
    GridApuntes_->setSelectionMode(QAbstractItemView::SingleSelection);
    GridApuntes_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GridApuntes_->horizontalHeader()->setSectionResizeMode(Concept, QHeaderView::Stretch);
    for (int c : {Tick, Date, Amount, Kind, Match, Party, Account})
        GridApuntes_->horizontalHeader()->setSectionResizeMode(c, QHeaderView::ResizeToContents);

    btnImportar_ =
        new QPushButton(fixedText(ctx_, "Importar lo marcado", "Importar el marcat"), this);
    btnImportar_->setObjectName(QStringLiteral("btnImportar"));
    btnImportar_->setAutoDefault(false);
    btnCerrar_ = new QPushButton(Missatge(ctx_, 308), this);
    btnCerrar_->setObjectName(QStringLiteral("btnCerrar"));
    btnCerrar_->setAutoDefault(false);

    auto* top = new QGridLayout;
    auto* fileLabel = new QLabel(fixedText(ctx_, "Fichero", "Fitxer"), this);
    fileLabel->setBuddy(btnFichero_);
    auto* accountLabel =
        new QLabel(fixedText(ctx_, "Cuenta de tesorería", "Compte de tresoreria"), this);
    accountLabel->setBuddy(cmbEntitats_);
    top->addWidget(fileLabel, 0, 0, Qt::AlignRight);
    top->addWidget(txtFichero_, 0, 1);
    top->addWidget(btnFichero_, 0, 2);
    top->addWidget(accountLabel, 1, 0, Qt::AlignRight);
    top->addWidget(cmbEntitats_, 1, 1);
    top->addWidget(lblCuenta_, 2, 1, 1, 2);
    top->setColumnStretch(1, 1);

    auto* help = new QLabel(
        fixedText(ctx_,
                  "Marque las líneas que deben importarse y elija la cuenta de los otros "
                  "movimientos. Nada se graba hasta pulsar Importar; una línea ya importada no "
                  "se vuelve a importar.",
                  "Marqueu les línies que s'han d'importar i trieu el compte dels altres "
                  "moviments. No es grava res fins que premeu Importar; una línia ja importada "
                  "no es torna a importar."),
        this);
    help->setWordWrap(true);
    help->setObjectName(QStringLiteral("lblInstrucciones"));

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnImportar_);
    buttons->addWidget(btnCerrar_);

    auto* body = new QVBoxLayout;
    body->setContentsMargins(12, 8, 12, 12);
    body->setSpacing(8);
    body->addLayout(top);
    body->addWidget(help);
    body->addWidget(GridApuntes_, 1);
    body->addLayout(buttons);
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(0);
    root->addWidget(ui::bandTitle(title, ctx_.EmpresaNom, this));
    root->addLayout(body, 1);

    askFilePath = [this] {
        return QFileDialog::getOpenFileName(
            this, windowTitle(), QDir::homePath(),
            fixedText(ctx_, "Norma 43 (*.n43 *.txt *.aeb *.q43);;Todos (*)",
                      "Norma 43 (*.n43 *.txt *.aeb *.q43);;Tots (*)"));
    };
    connect(btnFichero_, &QPushButton::clicked, this, [this] {
        const QString path = askFilePath();
        if (!path.isEmpty()) Carga_Fichero(path);
    });
    connect(cmbEntitats_, &QComboBox::currentIndexChanged, this, [this] { Proponer(); });
    connect(btnImportar_, &QPushButton::clicked, this, [this] { Importar(); });
    connect(btnCerrar_, &QPushButton::clicked, this, [this] { closeScreen(); });
    // A double click, or Space, ticks the line or takes its tick away.
    connect(GridApuntes_, &QTableWidget::cellDoubleClicked, this, [this](int row) {
        if (QTableWidgetItem* tick = GridApuntes_->item(row, Tick);
            tick && (tick->flags() & Qt::ItemIsUserCheckable))
            tick->setCheckState(tick->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    });
    ui::helpOnF1(ctx_, this, QStringLiteral("banco"));
    for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);
    installEventFilter(this);
    btnImportar_->setEnabled(false);
    // The window opens with room for a statement's lines and their columns.
    GridApuntes_->setMinimumSize(980, 300);
}

void FormExtractoBanco::refreshLists() {
    ui::fillAccountList(cmbEntitats_, treasury::treasuryAccountItems(ctx_));
}

void FormExtractoBanco::Carga_Fichero(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        dialogs_.stop(path + QStringLiteral("\n") + file.errorString());
        return;
    }
    try {
        file_ = banking::readNorma43(ctx_, file.readAll());
    } catch (const banking::N43Error& e) {
        file_.reset();
        proposals_.clear();
        fill();
        dialogs_.stop(e.reason());
        return;
    }
    txtFichero_->setText(QDir::toNativeSeparators(path));
    Proponer();
}

void FormExtractoBanco::Proponer() {
    proposals_.clear();
    lblCuenta_->clear();
    const std::int64_t account = ui::chosenAccount(cmbEntitats_);
    if (file_ && account) {
        try {
            others_ = treasury::otherAccountItems(ctx_);
            if (const banking::N43Account* lines =
                    treasury::statementAccountFor(ctx_, *file_, account)) {
                lblCuenta_->setText(
                    fixedText(ctx_, "Cuenta %1 %2 %3, del %4 al %5. Saldo inicial %6, final %7.",
                              "Compte %1 %2 %3, del %4 al %5. Saldo inicial %6, final %7.")
                        .arg(lines->entity, lines->office, lines->account,
                             Format_Data(lines->start), Format_Data(lines->end),
                             Format_Import(ctx_, lines->opening),
                             Format_Import(ctx_, lines->closing)));
                proposals_ = treasury::proposeMatches(ctx_, *lines, account);
            } else {
                lblCuenta_->setText(fixedText(
                    ctx_,
                    "El fichero no trae ninguna cuenta con el número de esta cuenta de tesorería.",
                    "El fitxer no porta cap compte amb el número d'aquest compte de tresoreria."));
            }
        } catch (const store::StoreError& e) {
            dialogs_.stop(e.message());
        }
    }
    fill();
}

void FormExtractoBanco::fill() {
    GridApuntes_->setRowCount(0);
    GridApuntes_->setRowCount(static_cast<int>(proposals_.size()));
    const auto cell = [&](int row, int column, const QString& text,
                          Qt::Alignment align = Qt::AlignLeft) {
        auto* item = new QTableWidgetItem(text);
        item->setTextAlignment(align | Qt::AlignVCenter);
        GridApuntes_->setItem(row, column, item);
    };
    for (int row = 0; row < static_cast<int>(proposals_.size()); ++row) {
        const treasury::LineProposal& p = proposals_[static_cast<std::size_t>(row)];
        auto* tick = new QTableWidgetItem;
        const bool can = writable(p.kind);
        tick->setFlags(can ? Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable
                           : Qt::ItemIsSelectable);
        // Every match is ticked; an other movement only when it has its account.
        const bool ticked = can && (p.kind != treasury::LineKind::Other || p.otherAccount != 0);
        tick->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
        GridApuntes_->setItem(row, Tick, tick);
        cell(row, Date, Format_Data(p.line.operationDate));
        cell(row, Concept, conceptOf(p.line));
        cell(row, Amount, Format_Import(ctx_, p.line.amount), Qt::AlignRight);
        cell(row, Kind, treasury::kindText(ctx_, p.kind));
        cell(row, Match, p.factura);
        cell(row, Party, p.party);
        if (p.kind == treasury::LineKind::Other) {
            auto* list = new QComboBox(GridApuntes_);
            list->setObjectName(QStringLiteral("cmbCuenta%1").arg(row));
            ui::fillAccountList(list, others_);
            ui::chooseAccount(list, p.otherAccount);
            connect(list, &QComboBox::currentIndexChanged, this, [this, row, list] {
                proposals_[static_cast<std::size_t>(row)].otherAccount = ui::chosenAccount(list);
                if (QTableWidgetItem* t = GridApuntes_->item(row, Tick))
                    t->setCheckState(ui::chosenAccount(list) ? Qt::Checked : Qt::Unchecked);
            });
            GridApuntes_->setCellWidget(row, Account, list);
        } else {
            cell(row, Account, p.otherAccountName);
        }
    }
    // Nothing to import once every line is known.
    btnImportar_->setEnabled(
        std::any_of(proposals_.begin(), proposals_.end(),
                    [](const treasury::LineProposal& p) { return writable(p.kind); }));
    if (!proposals_.empty()) GridApuntes_->selectRow(0);
}

void FormExtractoBanco::Importar() {
    if (!file_) return;
    const std::int64_t account = ui::chosenAccount(cmbEntitats_);
    const banking::N43Account* lines = treasury::statementAccountFor(ctx_, *file_, account);
    if (!lines) return;
    std::vector<treasury::LineProposal> accepted;
    for (int row = 0; row < GridApuntes_->rowCount(); ++row)
        if (GridApuntes_->item(row, Tick)->checkState() == Qt::Checked)
            accepted.push_back(proposals_[static_cast<std::size_t>(row)]);
    if (accepted.empty()) return;
    try {
        emit statusChanged(Missatge(ctx_, 725));
        const treasury::ImportResult r =
            treasury::importMatches(ctx_, dialogs_, *lines, account, accepted);
        emit statusChanged(QString());
        if (r.refusal) return;
        dialogs_.information(
            fixedText(ctx_,
                      "Importado: %1 cobros, %2 pagos, %3 devoluciones, %4 otros movimientos, %5 "
                      "remesas.",
                      "Importat: %1 cobraments, %2 pagaments, %3 devolucions, %4 altres "
                      "moviments, %5 remeses.")
                .arg(r.receipts)
                .arg(r.payments)
                .arg(r.returned)
                .arg(r.others)
                .arg(r.remittances));
    } catch (const store::StoreError& e) {
        emit statusChanged(QString());
        dialogs_.stop(e.message());
    }
    Proponer();
}

void FormExtractoBanco::closeScreen() {
    ui::closeScreen(this);
}

bool FormExtractoBanco::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape) {
            closeScreen();
            return true;
        }
        if (watched == GridApuntes_ && key == Qt::Key_Space) {
            const int row = GridApuntes_->currentRow();
            if (row >= 0) emit GridApuntes_->cellDoubleClicked(row, Tick);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tallora
