// FormVendes: the flow of the keys and the focus through the entry.
#include "form_vendes.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "widgets/entry_parts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableWidget>

namespace tallora {

using ui::isEnter;
using ui::moveListSelection;
using ui::selectPrefix;

// What leaving a field does, wherever the focus goes next.
void FormVendes::leaveField(QWidget* w) {
    if (w == CmbIva) leaveCmbIva();
    for (std::size_t i = 0; i < 3; ++i)
        if (w == txtBase[i] || w == txtIVA[i] || w == txtRE[i])
            amountLeft(static_cast<QLineEdit*>(w));
    if (ctx_.Facturacio && (w == txtRetencio || w == txtBaseIRPF)) {
        sales::SaleEntry e = entry();
        sales::Recalcula_Apunt(ctx_, e, clientRE());
        display(e);
    }
}

bool FormVendes::clientRE() const {
    return !tickets() && sales::Client_RE(ctx_, txtClient->text());
}

void FormVendes::escape() {
    if (ctx_.Facturacio && FacRef_frame->isVisible()) {
        FacRef_Cancelar();
        return;
    }
    // A line half typed is dropped first.
    if (ctx_.Facturacio && work_->currentWidget() == FrameFacturacion &&
        !(txtFacturacionCantidad->text().isEmpty() && txtFacturacionConcepto->text().isEmpty() &&
          txtFacturacionPrecio->text().isEmpty() && txtFacturacionDto->text().isEmpty() &&
          txtFacturacionID->text().isEmpty())) {
        netejaLinia();
        focus(txtFacturacionCantidad);
        return;
    }
    work_->currentWidget() == FRAME_recibos ? rebutCancela() : Surt_Apunt();
}

bool FormVendes::otherKey(QWidget* w, const QKeyEvent* key) {
    if (GridFacturacion && w == static_cast<QWidget*>(GridFacturacion) &&
        key->key() == Qt::Key_Delete) {
        eliminaLinia();
        return true;
    }
    return ui::listFieldKey(w, key, txtClient, ListClients) ||
           ui::listFieldKey(w, key, txtTipus, ListVendes);
}

// Bold goes with the focus: the label of the field in hand, and nothing else.
void FormVendes::NEGRETES(QWidget* focused) {
    labels_.mark(focused);
}

void FormVendes::showPanel(QWidget* page) {
    work_->setCurrentWidget(page);
    if (TabFacturacion && (page == PanelIVA || page == FrameFacturacion)) {
        const QSignalBlocker block(TabFacturacion);
        TabFacturacion->setCurrentIndex(page == PanelIVA ? 0 : 1);
    }
}

void FormVendes::fieldEntered(QWidget* w) {
    NEGRETES(w);
    if (w == txtClient || w == txtTipus) {
        showPanel(FrameList);
        auto* lists = FrameList->findChild<QStackedWidget*>(QStringLiteral("lists"));
        lists->setCurrentWidget(w == txtClient ? ListClients : ListVendes);
    }
    for (std::size_t i = 0; i < 3; ++i)
        if (w == txtBase[i] || w == txtIVA[i] || w == txtRE[i]) showPanel(PanelIVA);
    if (ctx_.Facturacio && w->parentWidget() && FrameFacturacion->isAncestorOf(w))
        showPanel(FrameFacturacion);
    if (earlierFieldEmpty(w)) return;
    if (w == txtMes && lblOrdre->text().isEmpty() && txtMes->text().isEmpty())
        if (const auto month = Mes_Per_Defecte(ctx_)) txtMes->setText(QString::number(*month));
}

// Typing a later field while an earlier one is empty sends the focus back to it.
bool FormVendes::earlierFieldEmpty(QWidget* w) {
    const qsizetype at = order_.indexOf(w);
    const bool amount = at >= order_.indexOf(txtTotal) || (at < 0 && work_->currentWidget() == PanelIVA &&
                                                           labels_.contains(w));
    if (at < 0 && !amount) return false;
    QList<QLineEdit*> needed;
    if (at != 0) needed << txtDia;
    if (at < 0 || at > 1) needed << txtMes;
    if (amount) {
        if (!tickets()) needed << txtClient;
        needed << txtTipus;
    }
    return backToEmpty(needed);
}

bool FormVendes::enterPressed(QWidget* w) {
    if (ctx_.Facturacio && lineEnterPressed(w)) return true;
    if (w == txtDia) {
        dayEntered();
    } else if (w == txtMes) {
        monthEntered();
    } else if (w == txtClient || w == ListClients) {
        takeCustomer();
    } else if (w == txtTipus || w == ListVendes) {
        takeAccount();
    } else if (w == txtdescripcio) {
        if (txtdescripcio->text().isEmpty()) txtdescripcio->setText(QStringLiteral("-"));
        // With billing the amounts come from the lines.
        if (ctx_.Facturacio && !txtTipus->text().isEmpty())
            showLines();
        else
            focus(txtTotal);
    } else if (w == txtTotal) {
        totalEntered();
    } else if (w == CmbIva) {
        if (sales::amountOf(ctx_, txtTotal->text()) == Money{}) {
            beep();
            focus(txtTotal);
        } else {
            focus(txtBaseIRPF);  // leaving CmbIva splits the total
        }
    } else if (w == txtBaseIRPF) {
        focus(Text1);
    } else if (w == Text1) {
        if (Text1->text().isEmpty()) Text1->setText(QStringLiteral("0"));
        focus(txtRetencio);
    } else if (w == txtRetencio) {
        retentionEntered();
    } else if (w == ListEntitats) {
        toFirstBase();
    } else if (auto* line = qobject_cast<QLineEdit*>(w); line && labels_.contains(w) &&
                                                            order_.indexOf(w) < 0) {
        amountEntered(line);
    } else {
        const auto at = std::find(txt_rebut_concepte.begin(), txt_rebut_concepte.end(), w);
        if (at == txt_rebut_concepte.end()) return false;
        if (at + 1 == txt_rebut_concepte.end())
            rebutGrava();
        else
            focus(*(at + 1));
    }
    return true;
}

bool FormVendes::upPressed(QWidget* w) {
    if (ctx_.Facturacio && lineUpPressed(w)) return true;
    if (w == txtClient) {
        moveListSelection(ListClients, -1);
        return true;
    }
    if (w == txtTipus) {
        focus(txtClient->isVisible() ? static_cast<QWidget*>(txtClient) : txtMes);
        return true;
    }
    return focusPrevious(order_, w);
}

void FormVendes::dayEntered() {
    bool ok = false;
    const int day = txtDia->text().toInt(&ok);
    if (!ok || day > 31 || day < 1) {
        beep();
        return;
    }
    if (lblOrdre->text().isEmpty()) setStatus(m(623));
    if (ctx_.Facturacio && txtdescripcio->text().isEmpty())
        txtdescripcio->setText(QStringLiteral("-"));
    focus(txtMes);
}

void FormVendes::monthEntered() {
    if (!dateChecked()) return;
    focus(txtClient->isVisibleTo(this) ? static_cast<QWidget*>(txtClient) : txtTipus);
}

bool FormVendes::dateChecked() {
    const auto date = sales::Valida_Data(ctx_, txtDia->text(), txtMes->text());
    if (!date) {
        beep();
        dialogs_.information(m(619));
        txtMes->clear();
        return false;
    }
    lblFecha->setText(date->toString(QStringLiteral("dd/MM/yyyy")));
    if (Mes_Bloquejat(ctx_, date->month())) {
        dialogs_.information(m(622));
        if (lblOrdre->text().isEmpty()) {
            txtDia->clear();
            txtMes->clear();
            lblFecha->clear();
            focus(txtDia);
        }
        return false;
    }
    return true;
}

void FormVendes::customerTyped(const QString& text) {
    selectPrefix(ListClients, text);
    // RE follows the customer, so the amounts are recomputed, except while a posted sale
    // is being loaded.
    if (tickets() || loading_) return;
    sales::SaleEntry e = entry();
    sales::Recalcula_Apunt(ctx_, e, clientRE());
    display(e);
}

void FormVendes::accountTyped(const QString& text) {
    selectPrefix(ListVendes, text);
}

void FormVendes::takeCustomer() {
    if (!takeFromList(txtClient, ListClients)) return;
    Activa_RE();
    Carrega_Comercial();
    // The recargo just cleared leaves the total: it is recomputed from the bases, as the
    // companion's change of customer does.
    if (!tickets()) {
        sales::SaleEntry e = entry();
        sales::Recalcula_Apunt(ctx_, e, clientRE());
        display(e);
    }
    focus(txtTipus);
}

void FormVendes::takeAccount() {
    if (takeFromList(txtTipus, ListVendes)) focus(txtdescripcio);
}

void FormVendes::Activa_RE() {
    const bool re = clientRE();
    sales::SaleEntry e = entry();
    sales::Activa_RE(e, re);
    lblREHeader_->setVisible(re);
    for (std::size_t i = 0; i < 3; ++i) {
        const bool used = ctx_.TipusIVA[i] != 0;
        lblRE[i]->setVisible(re && used);
        txtRE[i]->setVisible(re && used);
        txtRE[i]->setEnabled(re);
        txtRE[i]->setText(e.txtRE[i]);
    }
}

void FormVendes::totalEntered() {
    if (txtTotal->text().isEmpty()) return;
    txtTotal->setText(sales::reformat(ctx_, txtTotal->text()));
    if (tickets())
        GrabaApunt();
    else
        focus(CmbIva);
}

bool FormVendes::leaveCmbIva() {
    // "Otros" means the bases are typed by hand: the split runs at 0.
    if (CmbIva->currentIndex() < 0 || CmbIva->currentIndex() == 4) CmbIva->setCurrentIndex(0);
    sales::SaleEntry e = entry();
    sales::Reparteix_Total(ctx_, e, CmbIva->currentText().toDouble(), clientRE());
    display(e);
    return true;
}

void FormVendes::retentionEntered() {
    leaveCmbIva();
    if (tickets()) {
        GrabaApunt();
    } else if (FrameTesoreria->isVisibleTo(this)) {
        focus(ListEntitats);
    } else {
        toFirstBase();
    }
}

void FormVendes::toFirstBase() {
    showPanel(PanelIVA);
    for (std::size_t i = 0; i < 3; ++i) {
        if (ctx_.TipusIVA[i] != 0) {
            focus(txtBase[i]);
            return;
        }
    }
}

void FormVendes::amountLeft(QLineEdit* w) {
    sales::SaleEntry e = entry();
    for (int i = 0; i < 3; ++i) {
        if (w == txtBase[static_cast<std::size_t>(i)]) {
            if (!sales::baseTyped(ctx_, e, i)) beep();
            display(e);
            return;
        }
    }
    w->setText(sales::reformat(ctx_, w->text()));
}

// Enter in the amounts panel: along the row, then to the next row of a rate in use; past
// the last one the entry is posted (or the receipt opens first).
void FormVendes::amountEntered(QLineEdit* w) {
    QList<QLineEdit*> along;
    for (std::size_t i = 0; i < 3; ++i) {
        if (ctx_.TipusIVA[i] == 0) continue;
        along << txtBase[i] << txtIVA[i];
        if (txtRE[i]->isVisibleTo(this) && txtRE[i]->isEnabled()) along << txtRE[i];
    }
    const qsizetype at = along.indexOf(w);
    if (at >= 0 && at + 1 < along.size()) {
        focus(along[at + 1]);
        return;
    }
    amountLeft(w);
    if (w->text() == QStringLiteral("-")) return;
    if (chk_rebut->isChecked() && ctx_.DocsGenerar)
        Mostra_Rebut();
    else
        GrabaApunt();
}

void FormVendes::irpfPercentChanged() {
    if (Es_Numeric(ctx_, txtBaseIRPF->text()) && !sales::isEmptyAmount(txtBaseIRPF->text()))
        txtRetencio->setText(sales::irpfOf(ctx_, txtBaseIRPF->text(), Text1->text()));
    else
        txtRetencio->clear();
    if (ctx_.Facturacio) {
        sales::SaleEntry e = entry();
        sales::Recalcula_Apunt(ctx_, e, clientRE());
        display(e);
    }
}

bool FormVendes::entryTyped() const {
    return !txtDia->text().isEmpty();
}

}  // namespace tallora
