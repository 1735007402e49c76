#include "form_modelos.h"

#include "aeat/aeat_books.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_helpers.h"
#include "widgets/field_behaviour.h"
#include "widgets/screen_style.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QTextDocument>

namespace tallora {

FormModelos::FormModelos(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), ctx_(ctx), dialogs_(dialogs) {
    setObjectName(QStringLiteral("FormModelos"));
    setWindowTitle(fixedText(ctx_, "Modelos de Hacienda", "Models d'Hisenda"));

    cmbModelo_ = new QComboBox(this);
    cmbModelo_->setObjectName(QStringLiteral("cmbModelo"));
    for (aeat::Model m : {aeat::Model::M303, aeat::Model::M111, aeat::Model::M130,
                          aeat::Model::M349, aeat::Model::M347})
        cmbModelo_->addItem(aeat::modelTitle(ctx_, m), static_cast<int>(m));
    cmbPeriodo_ = new QComboBox(this);
    cmbPeriodo_->setObjectName(QStringLiteral("cmbPeriodo"));
    btnCalcular_ = new QPushButton(fixedText(ctx_, "&Calcular", "&Calcular"), this);
    btnCalcular_->setObjectName(QStringLiteral("btnCalcular"));
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(fixedText(ctx_, "Modelo:", "Model:"), this));
    top->addWidget(cmbModelo_, 1);
    top->addWidget(new QLabel(fixedText(ctx_, "Periodo:", "Període:"), this));
    top->addWidget(cmbPeriodo_);
    top->addWidget(btnCalcular_);

    boxesArea_ = new QWidget;
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("scrollCasillas"));
    scroll->setWidgetResizable(true);
    scroll->setWidget(boxesArea_);
    scroll->setMinimumSize(640, 320);

    GridTerceros_ = new QTableWidget(this);
    GridTerceros_->setObjectName(QStringLiteral("GridTerceros"));
    GridTerceros_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GridTerceros_->verticalHeader()->hide();
    GridTerceros_->setMinimumHeight(140);
    lblAvisos_ = new QLabel(this);
    lblAvisos_->setObjectName(QStringLiteral("lblAvisos"));
    lblAvisos_->setWordWrap(true);
    lblAvisos_->setStyleSheet(QStringLiteral("color: #b00000"));
    lblResultado_ = new QLabel(this);
    lblResultado_->setObjectName(QStringLiteral("lblResultado"));
    QFont bold = lblResultado_->font();
    bold.setBold(true);
    lblResultado_->setFont(bold);

    btnFichero_ = new QPushButton(
        fixedText(ctx_, "&Fichero para Hacienda...", "&Fitxer per a Hisenda..."), this);
    btnFichero_->setObjectName(QStringLiteral("btnFichero"));
    btnLibros_ = new QPushButton(
        fixedText(ctx_, "&Libros registro (XLSX)...", "&Llibres registre (XLSX)..."), this);
    btnLibros_->setObjectName(QStringLiteral("btnLibros"));
    btnImprimir_ = new QPushButton(fixedText(ctx_, "&Imprimir...", "&Imprimir..."), this);
    btnImprimir_->setObjectName(QStringLiteral("btnImprimir"));
    btnCerrar_ = new QPushButton(fixedText(ctx_, "C&errar", "T&ancar"), this);
    btnCerrar_->setObjectName(QStringLiteral("btnCerrar"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnImprimir_);
    buttons->addWidget(btnFichero_);
    buttons->addWidget(btnLibros_);
    buttons->addStretch(1);
    buttons->addWidget(btnCerrar_);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(scroll, 3);
    layout->addWidget(lblResultado_);
    layout->addWidget(GridTerceros_, 1);
    layout->addWidget(lblAvisos_);
    layout->addLayout(buttons);

    askFilePath = [this](const QString& proposed) {
        return QFileDialog::getSaveFileName(this, windowTitle(), proposed);
    };
    connect(cmbModelo_, &QComboBox::currentIndexChanged, this, [this] {
        fillPeriods();
        Calcular();
    });
    connect(cmbPeriodo_, &QComboBox::currentIndexChanged, this, [this] { Calcular(); });
    connect(btnCalcular_, &QPushButton::clicked, this, [this] { Calcular(); });
    connect(btnFichero_, &QPushButton::clicked, this, [this] { GuardarFichero(); });
    connect(btnLibros_, &QPushButton::clicked, this, [this] { GuardarLibros(); });
    connect(btnImprimir_, &QPushButton::clicked, this, [this] { Imprimir(); });
    connect(btnCerrar_, &QPushButton::clicked, this, [this] { ui::closeScreen(this); });
    ui::helpOnF1(ctx_, this, QStringLiteral("modelos"));
    for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);
    fillPeriods();
    // The quarter before today's, the one usually being filed.
    const QDate today = ctx_.clock().date();
    if (today.year() == ctx_.Exercici.toInt() && today.month() > 3) {
        // Worked out once, below, not also on the choice.
        const QSignalBlocker block(cmbPeriodo_);
        choosePeriod(aeat::quarterCode(today.addMonths(-3)));
    }
    Calcular();
}

aeat::Model FormModelos::model() const {
    return static_cast<aeat::Model>(cmbModelo_->currentData().toInt());
}

void FormModelos::chooseModel(aeat::Model m) {
    cmbModelo_->setCurrentIndex(cmbModelo_->findData(static_cast<int>(m)));
}

void FormModelos::choosePeriod(const QString& code) {
    const int i = cmbPeriodo_->findData(code);
    if (i >= 0) cmbPeriodo_->setCurrentIndex(i);
}

void FormModelos::fillPeriods() {
    const QSignalBlocker block(cmbPeriodo_);
    const QString kept = cmbPeriodo_->currentData().toString();
    cmbPeriodo_->clear();
    const aeat::Model m = model();
    for (const QString& code : aeat::modelPeriods(m)) {
        // A month by its name, the year as such, a quarter by its code.
        const QString label = code == u"0A"         ? fixedText(ctx_, "Año", "Any")
                              : code.endsWith(u'T') ? code
                                                    : Missatge(ctx_, 5000 + code.toInt());
        cmbPeriodo_->addItem(label, code);
    }
    const int i = cmbPeriodo_->findData(kept);
    cmbPeriodo_->setCurrentIndex(i >= 0 ? i : 0);
    btnFichero_->setEnabled(aeat::modelHasFile(m));
}

QLineEdit* FormModelos::box(const QString& number) const {
    const auto it = fields_.find(number);
    return it == fields_.end() ? nullptr : it->second;
}

void FormModelos::Calcular() {
    aeat::TypedBoxes typed;
    for (const auto& [number, field] : fields_) {
        if (field->isReadOnly()) continue;
        if (const auto v = Money::parse(field->text(), ctx_.decimalMark())) typed[number] = *v;
    }
    const auto period =
        aeat::taxPeriod(ctx_.Exercici.toInt(), cmbPeriodo_->currentData().toString());
    if (!period) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    figures_ = aeat::computeModel(ctx_, model(), *period, typed);
    QApplication::restoreOverrideCursor();
    showFigures();
}

void FormModelos::showFigures() {
    // The boxes are laid out anew: each model has its own.
    delete boxesArea_->layout();
    for (QWidget* w : boxesArea_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) delete w;
    fields_.clear();
    auto* column = new QVBoxLayout(boxesArea_);
    QGridLayout* grid = nullptr;
    int section = -1, row = 0;
    QWidget* previous = cmbPeriodo_;
    for (const aeat::Box& b : figures_.boxes) {
        if (b.section != section) {
            section = b.section;
            auto* group = new QGroupBox(aeat::sectionCaption(ctx_, figures_, section), boxesArea_);
            grid = new QGridLayout(group);
            grid->setColumnStretch(1, 1);
            column->addWidget(group);
            row = 0;
        }
        auto* number = new QLabel(QStringLiteral("[%1]").arg(b.number));
        auto* text = new QLabel(aeat::boxCaption(ctx_, b));
        auto* value = new QLineEdit(aeat::boxText(ctx_, b));
        value->setObjectName(QStringLiteral("txtCasilla") + b.number);
        value->setAlignment(Qt::AlignRight);
        value->setMaximumWidth(150);
        value->setReadOnly(!b.typed);
        if (!b.typed) {
            value->setFocusPolicy(Qt::NoFocus);
            value->setStyleSheet(QStringLiteral("background: #f0f0f0"));
        } else {
            value->setToolTip(fixedText(ctx_, "Casilla a rellenar: Intro recalcula",
                                        "Casella a emplenar: Intro recalcula"));
            connect(value, &QLineEdit::returnPressed, this, [this] { Calcular(); });
            setTabOrder(previous, value);
            previous = value;
            value->installEventFilter(this);
        }
        grid->addWidget(number, row, 0);
        grid->addWidget(text, row, 1);
        grid->addWidget(value, row, 2);
        ++row;
        fields_[b.number] = value;
    }
    column->addStretch(1);

    const report::Sheet& p = figures_.parties;
    GridTerceros_->setVisible(!p.headings.empty());
    GridTerceros_->clear();
    if (!p.headings.empty()) {
        const report::SheetRow& heads = p.headings.front();
        GridTerceros_->setColumnCount(static_cast<int>(heads.size()));
        QStringList labels;
        for (const report::Cell& c : heads) labels << report::cellText(c, ctx_.decimalMark());
        GridTerceros_->setHorizontalHeaderLabels(labels);
        GridTerceros_->setRowCount(static_cast<int>(p.rows.size()));
        for (int r = 0; r < GridTerceros_->rowCount(); ++r)
            for (int c = 0; c < GridTerceros_->columnCount(); ++c) {
                const report::Cell& cell =
                    p.rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
                auto* item = new QTableWidgetItem(aeat::partyCellText(ctx_, cell));
                if (std::holds_alternative<Money>(cell))
                    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                GridTerceros_->setItem(r, c, item);
            }
        GridTerceros_->resizeColumnsToContents();
    }
    lblAvisos_->setText(figures_.warnings.join(u'\n'));
    lblResultado_->setText(
        figures_.declarationType.isEmpty()
            ? QString()
            : fixedText(ctx_, "Tipo de declaración: %1", "Tipus de declaració: %1")
                  .arg(figures_.declarationType));
}

bool FormModelos::GuardarFichero() {
    if (!aeat::modelHasFile(figures_.model)) return false;
    const QString path = askFilePath(aeat::modelFileName(ctx_, figures_));
    if (path.isEmpty()) return false;
    return told(aeat::writeModelFile(ctx_, figures_, path), path);
}

bool FormModelos::told(const QString& error, const QString& path) {
    if (!error.isEmpty()) {
        dialogs_.stop(error);
        return false;
    }
    const QString saved = report::savedText(ctx_, path);
    emit statusChanged(saved);
    dialogs_.information(saved);
    return true;
}

bool FormModelos::GuardarLibros() {
    const QString path = askFilePath(aeat::aeatBookFileName(ctx_));
    if (path.isEmpty()) return false;
    aeat::AeatBookRequest request;
    request.fromMonth = figures_.period.fromMonth;
    request.toMonth = figures_.period.toMonth;
    request.monthly = !figures_.period.quarter() && figures_.period.code != u"0A";
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const QString error = aeat::writeAeatBooks(ctx_, request, path);
    QApplication::restoreOverrideCursor();
    return told(error, path);
}

void FormModelos::fillDocument(QTextDocument& document) const {
    QString html = QStringLiteral("<h2>%1</h2><p>%2 &nbsp; %3 &nbsp; %4 %5</p>")
                       .arg(aeat::modelTitle(ctx_, figures_.model).toHtmlEscaped(),
                            ctx_.EmpresaNom.toHtmlEscaped(), ctx_.EmpresaNIF.toHtmlEscaped(),
                            QString::number(figures_.period.year), figures_.period.code);
    int section = -1;
    for (const aeat::Box& b : figures_.boxes) {
        if (b.section != section) {
            if (section >= 0) html += QStringLiteral("</table>");
            section = b.section;
            html += QStringLiteral("<h3>%1</h3><table width='100%' cellpadding='2'>")
                        .arg(aeat::sectionCaption(ctx_, figures_, section).toHtmlEscaped());
        }
        html +=
            QStringLiteral(
                "<tr><td width='8%'>[%1]</td><td>%2</td><td align='right'>%3"
                "</td></tr>")
                .arg(b.number, aeat::boxCaption(ctx_, b).toHtmlEscaped(), aeat::boxText(ctx_, b));
    }
    if (section >= 0) html += QStringLiteral("</table>");
    if (!figures_.declarationType.isEmpty())
        html += QStringLiteral("<p><b>%1</b></p>").arg(lblResultado_->text().toHtmlEscaped());
    const report::Sheet& p = figures_.parties;
    if (!p.rows.empty()) {
        html += QStringLiteral("<table width='100%' cellpadding='2' border='0'><tr>");
        for (const report::Cell& c : p.headings.front())
            html += QStringLiteral("<th align='left'>%1</th>")
                        .arg(report::cellText(c, ctx_.decimalMark()).toHtmlEscaped());
        html += QStringLiteral("</tr>");
        for (const report::SheetRow& row : p.rows) {
            html += QStringLiteral("<tr>");
            for (const report::Cell& c : row) {
                const bool amount = std::holds_alternative<Money>(c);
                html += QStringLiteral("<td%1>%2</td>")
                            .arg(amount ? QStringLiteral(" align='right'") : QString(),
                                 aeat::partyCellText(ctx_, c).toHtmlEscaped());
            }
            html += QStringLiteral("</tr>");
        }
        html += QStringLiteral("</table>");
    }
    for (const QString& w : figures_.warnings)
        html += QStringLiteral("<p><i>%1</i></p>").arg(w.toHtmlEscaped());
    document.setHtml(html);
}

void FormModelos::Imprimir() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    QTextDocument document;
    fillDocument(document);
    document.print(&printer);
}

bool FormModelos::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        ui::closeScreen(this);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tallora
