#include "form_verifactu.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "store/database.h"
#include "verifactu/chain_check.h"
#include "verifactu/record_file.h"
#include "verifactu/stored_records.h"
#include "verifactu/submission.h"
#include "widgets/obre_ajuda.h"
#include "widgets/screen_style.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tallora {
namespace {

enum Column { ColId, ColTipo, ColFactura, ColFecha, ColImporte, ColGenerado, ColEstado, ColCount };

// The last answer's code and text of each record, for the grid and the answer box.
struct LastAnswer {
    QString codigo, descripcion, csv;
};

// The record's legal texts as the user reads them elsewhere in the program: dates
// dd/mm/yyyy, amounts with the program's decimal mark, the time without its offset.
QString shownDate(const QString& recordDate) {
    return QString(recordDate).replace(u'-', u'/');
}

QString shownAmount(const WorkingContext& ctx, const QString& recordAmount) {
    const auto amount = Money::parse(recordAmount, u'.');
    return amount ? Format_Import(ctx, *amount) : recordAmount;
}

QString shownTime(const QString& recordTime) {
    const QDateTime at = QDateTime::fromString(recordTime.left(19), Qt::ISODate);
    return at.isValid() ? at.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")) : recordTime;
}

LastAnswer lastAnswer(const QString& path, std::int64_t record) {
    store::Database db = store::Database::open(path);
    auto st =
        db.prepare(QStringLiteral("select Codigo, Descripcion, CSV from Respuestas "
                                  "where Registro = ? order by Id desc limit 1"));
    st.bind(1, record);
    if (!st.next()) return {};
    return {st.isNull(0) ? QString() : st.text(0), st.isNull(1) ? QString() : st.text(1),
            st.isNull(2) ? QString() : st.text(2)};
}

}  // namespace

FormVerifactu::FormVerifactu(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs), path_(verifactu::recordsPath(ctx)) {
    setObjectName(QStringLiteral("FormVerifactu"));
    setWindowTitle(QStringLiteral("VERI*FACTU"));
    certificate_ = [this] { return askCertificate(); };
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(buildSettings());

    GridRegistros_ = ui::named(new QTableWidget(0, ColCount, this), "GridRegistros");
    GridRegistros_->setHorizontalHeaderLabels(
        {t("Nº", "Núm."), t("Registro", "Registre"), t("Factura", "Factura"), t("Fecha", "Data"),
         t("Importe", "Import"), t("Generado", "Generat"), t("Estado", "Estat")});
    GridRegistros_->setSelectionBehavior(QAbstractItemView::SelectRows);
    GridRegistros_->setSelectionMode(QAbstractItemView::SingleSelection);
    GridRegistros_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GridRegistros_->setAlternatingRowColors(true);
    GridRegistros_->verticalHeader()->hide();
    GridRegistros_->horizontalHeader()->setStretchLastSection(true);
    connect(GridRegistros_, &QTableWidget::cellDoubleClicked, this, [this] { showAnswer(); });
    layout->addWidget(GridRegistros_, 1);

    auto* foot = new QHBoxLayout;
    lblPendientes_ = ui::named(new QLabel(this), "lblPendientes");
    foot->addWidget(lblPendientes_, 1);
    cmdComprobar_ =
        ui::dialogButton("cmdComprobar", t("Comprobar cadena (F5)", "Comprovar cadena (F5)"), this);
    cmdEnviar_ = ui::dialogButton("cmdEnviar", t("Enviar pendientes", "Enviar pendents"), this);
    cmdCerrar_ = ui::dialogButton("cmdCerrar", t("Cerrar", "Tancar"), this);
    connect(cmdComprobar_, &QPushButton::clicked, this, &FormVerifactu::checkChain);
    connect(cmdEnviar_, &QPushButton::clicked, this, &FormVerifactu::sendPending);
    connect(cmdCerrar_, &QPushButton::clicked, this, [this] { ui::closeScreen(this); });
    foot->addWidget(cmdComprobar_);
    foot->addWidget(cmdEnviar_);
    foot->addWidget(cmdCerrar_);
    layout->addLayout(foot);
    refresh();
    resize(sizeHint());
}

QString FormVerifactu::t(const char* spanish, const char* catalan) const {
    return fixedText(ctx_, spanish, catalan);
}

QWidget* FormVerifactu::buildSettings() {
    auto* band = new QWidget(this);
    auto* row = new QHBoxLayout(band);
    row->setContentsMargins(0, 0, 0, 0);
    chkActivo_ = ui::named(
        new QCheckBox(
            t("Registrar cada factura (VERI*FACTU)", "Registrar cada factura (VERI*FACTU)"), band),
        "chkActivo");
    chkActivo_->setChecked(verifactu::recordsEnabled(ctx_));
    cmbEntorno_ = ui::named(new QComboBox(band), "cmbEntorno");
    cmbEntorno_->addItem(t("AEAT: producción", "AEAT: producció"));
    cmbEntorno_->addItem(t("AEAT: pruebas", "AEAT: proves"));
    if (QFile::exists(path_)) {
        store::Database db = store::Database::open(path_);
        cmbEntorno_->setCurrentIndex(verifactu::recordsEnvironment(db) ==
                                     verifactu::Environment::Test);
    }
    connect(chkActivo_, &QCheckBox::toggled, this, [this] { saveSettings(); });
    connect(cmbEntorno_, &QComboBox::currentIndexChanged, this, [this] { saveSettings(); });
    row->addWidget(chkActivo_);
    row->addStretch(1);
    row->addWidget(new QLabel(t("Envío a:", "Enviament a:"), band));
    row->addWidget(cmbEntorno_);
    return band;
}

void FormVerifactu::saveSettings() {
    try {
        verifactu::setRecordsEnabled(ctx_, chkActivo_->isChecked());
        store::Database db = store::Database::open(path_);
        verifactu::setRecordsEnvironment(db, cmbEntorno_->currentIndex() == 1
                                                 ? verifactu::Environment::Test
                                                 : verifactu::Environment::Production);
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
}

void FormVerifactu::refresh() {
    GridRegistros_->setRowCount(0);
    int row = 0;
    try {
        verifactu::forEachRecord(path_, [&](const verifactu::StoredRecord& r) {
            GridRegistros_->insertRow(row);
            const QString kind = !r.alta         ? t("Anulación", "Anul·lació")
                                 : r.subsanacion ? t("Alta (subsanación)", "Alta (esmena)")
                                                 : QStringLiteral("Alta");
            const QString estado = r.estado.isEmpty() ? t("Por enviar", "Per enviar") : r.estado;
            const QStringList cells{QString::number(r.id),
                                    kind + u' ' + r.tipoFactura,
                                    r.numSerie,
                                    shownDate(r.fecha),
                                    r.alta ? shownAmount(ctx_, r.importeTotal) : QString(),
                                    shownTime(r.fechaHora),
                                    estado};
            for (int c = 0; c < ColCount; ++c) {
                auto* item = new QTableWidgetItem(cells[c]);
                if (c == ColId || c == ColImporte)
                    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                if (c == ColEstado && r.estado == QLatin1String("Incorrecto"))
                    item->setForeground(QColor(0xb0, 0x00, 0x20));
                GridRegistros_->setItem(row, c, item);
            }
            ++row;
            return true;
        });
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    GridRegistros_->resizeColumnsToContents();
    const int waiting = verifactu::pendingCount(path_);
    lblPendientes_->setText(
        t("%1 registros, %2 por enviar", "%1 registres, %2 per enviar").arg(row).arg(waiting));
    cmdEnviar_->setEnabled(waiting > 0);
    if (row > 0) GridRegistros_->selectRow(row - 1);
}

void FormVerifactu::checkChain() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const verifactu::ChainCheck check = verifactu::checkChain(path_);
    QApplication::restoreOverrideCursor();
    if (check.broken)
        dialogs_.stop(verifactu::breakText(ctx_, *check.broken));
    else
        dialogs_.information(
            t("%1 registros: la cadena es correcta", "%1 registres: la cadena és correcta")
                .arg(check.records));
}

std::optional<verifactu::ServiceSettings> FormVerifactu::askCertificate() {
    const QString file = QFileDialog::getOpenFileName(
        this, t("Certificado electrónico de la empresa", "Certificat electrònic de l'empresa"),
        QString(), t("Certificados (*.p12 *.pfx)", "Certificats (*.p12 *.pfx)"));
    if (file.isEmpty()) return std::nullopt;
    bool ok = false;
    const QString password =
        QInputDialog::getText(this, t("Certificado electrónico", "Certificat electrònic"),
                              t("Contraseña del certificado:", "Contrasenya del certificat:"),
                              QLineEdit::Password, QString(), &ok);
    if (!ok) return std::nullopt;
    QFile p12(file);
    if (!p12.open(QIODevice::ReadOnly)) {
        dialogs_.stop(t("No se puede leer %1", "No es pot llegir %1").arg(file));
        return std::nullopt;
    }
    verifactu::ServiceSettings settings;
    settings.certificate = p12.readAll();
    settings.password = password.toUtf8();
    return settings;
}

void FormVerifactu::sendPending() {
    auto settings = certificate_();
    if (!settings) return;
    if (settings->endpoint.isEmpty()) settings->endpoint = verifactu::serviceEndpoint(path_);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const verifactu::SendReport report = verifactu::sendPending(
        ctx_, path_, *settings, [this](const QString& step) { emit statusChanged(step); });
    QApplication::restoreOverrideCursor();
    emit statusChanged(QString());
    refresh();
    emit recordsSent();
    const QString summary =
        t("Envíos: %1. Correctos: %2. Aceptados con errores: %3. Incorrectos: %4. Por enviar: %5.",
          "Enviaments: %1. Correctes: %2. Acceptats amb errors: %3. Incorrectes: %4. Per enviar: "
          "%5.")
            .arg(report.submissions)
            .arg(report.correct)
            .arg(report.acceptedWithErrors)
            .arg(report.incorrect)
            .arg(report.waiting);
    if (report.error.isEmpty())
        dialogs_.information(summary);
    else
        dialogs_.stop(summary + u'\n' + report.error);
}

void FormVerifactu::showAnswer() {
    const int row = GridRegistros_->currentRow();
    if (row < 0) return;
    const std::int64_t id = GridRegistros_->item(row, ColId)->text().toLongLong();
    const LastAnswer a = lastAnswer(path_, id);
    if (a.csv.isEmpty() && a.codigo.isEmpty()) {
        dialogs_.information(t("El registro %1 aún no tiene respuesta de la AEAT",
                               "El registre %1 encara no té resposta de l'AEAT")
                                 .arg(id));
        return;
    }
    QString text = t("Registro %1: %2", "Registre %1: %2")
                       .arg(id)
                       .arg(GridRegistros_->item(row, ColEstado)->text());
    if (!a.codigo.isEmpty()) text += QStringLiteral("\n%1 %2").arg(a.codigo, a.descripcion);
    if (!a.csv.isEmpty()) text += QStringLiteral("\nCSV: ") + a.csv;
    dialogs_.information(text);
}

void FormVerifactu::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            cmdCerrar_->click();
            return;
        case Qt::Key_F1:
            ui::Obre_Ajuda(ctx_, QStringLiteral("verifactu"));
            return;
        case Qt::Key_F5:
            checkChain();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* button = qobject_cast<QPushButton*>(focusWidget())) {
                button->click();
                return;
            }
            showAnswer();
            return;
        default:
            break;
    }
    if (event->key() == Qt::Key_E && event->modifiers() & Qt::ControlModifier) {
        if (cmdEnviar_->isEnabled()) sendPending();
        return;
    }
    QWidget::keyPressEvent(event);
}

}  // namespace tallora
