// FormCompres: the flow of the keys and the focus through the entry.
#include "form_compres.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/month_lock.h"
#include "context/working_context.h"

#include <QComboBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

namespace tallora {

bool FormCompres::idle() const {
    return !PanelDades->isEnabled();
}

// Not while posting: disabling the form moves the focus, and the entry must stay as checked.
void FormCompres::leaveField(QWidget* w) {
    if (gravant_) return;
    for (std::size_t i = 0; i < 4; ++i) {
        if (w == txtBase[i] && !loading_) {
            purchases::PurchaseEntry e = entry();
            if (!purchases::baseLeft(ctx_, e, static_cast<int>(i))) beep();
            display(e);
        }
    }
}

bool FormCompres::otherKey(QWidget* w, const QKeyEvent* key) {
    return ui::listFieldKey(w, key, txtProveidor, ListProv) ||
           ui::listFieldKey(w, key, txtDespesa, ListDespeses);
}

void FormCompres::showPanel(QWidget* page, QListWidget* list) {
    work_->setCurrentWidget(page);
    if (list) lists_->setCurrentWidget(list);
}

void FormCompres::fieldEntered(QWidget* w) {
    labels_.mark(w);
    if (w == txtProveidor || w == ListProv) showPanel(FrameList, ListProv);
    if (w == txtDespesa || w == ListDespeses) showPanel(FrameList, ListDespeses);
    for (std::size_t i = 0; i < 4; ++i)
        if (w == txtBase[i] || w == txtIVA[i]) showPanel(PanelIVA);
    if (earlierFieldEmpty(w)) return;
    if (w == txtMes && lblOrdre->text().isEmpty() && txtMes->text().isEmpty())
        if (const auto month = Mes_Per_Defecte(ctx_)) txtMes->setText(QString::number(*month));
}

// Entering the supplier or a later field while the day or month is empty sends the focus
// back there.
bool FormCompres::earlierFieldEmpty(QWidget* w) {
    const qsizetype at = order_.indexOf(w);
    const bool later = at >= order_.indexOf(txtProveidor) ||
                       std::find(txtBase.begin(), txtBase.end(), w) != txtBase.end() ||
                       std::find(txtIVA.begin(), txtIVA.end(), w) != txtIVA.end();
    return later && backToEmpty({txtDia, txtMes});
}

bool FormCompres::enterPressed(QWidget* w) {
    if (w == ComboOP) {
        groupChosen();
    } else if (w == txtDia) {
        dayEntered();
    } else if (w == txtMes) {
        monthEntered();
    } else if (w == txtProveidor || w == ListProv) {
        takeAndGo(txtProveidor, ListProv, txtDespesa);
    } else if (w == txtDespesa || w == ListDespeses) {
        takeAndGo(txtDespesa, ListDespeses, txtdescripcio);
    } else if (w == txtdescripcio) {
        if (txtdescripcio->text().isEmpty()) txtdescripcio->setText(QStringLiteral("-"));
        focus(txtTotal);
    } else if (w == txtTotal) {
        totalEntered();
    } else if (w == CmbIva) {
        if (amountOf(ctx_, txtTotal->text()) == Money{}) {
            beep();
            focus(txtTotal);
        } else {
            focus(txtBaseIRPF);
        }
    } else if (w == txtBaseIRPF) {
        Calcula_Retencio();
        focus(txtTipus);
    } else if (w == txtTipus) {
        if (txtTipus->text().isEmpty()) txtTipus->setText(QStringLiteral("0"));
        Calcula_Retencio();
        focus(txtRetencio);
    } else if (w == txtRetencio) {
        retentionEntered();
    } else if (w == ListEntitats) {
        entitatsEntered();
    } else if (auto* line = qobject_cast<QLineEdit*>(w);
               line && (std::find(txtBase.begin(), txtBase.end(), w) != txtBase.end() ||
                        std::find(txtIVA.begin(), txtIVA.end(), w) != txtIVA.end())) {
        amountEntered(line);
    } else {
        return false;
    }
    return true;
}

bool FormCompres::upPressed(QWidget* w) {
    if (w == txtProveidor) {
        ui::moveListSelection(ListProv, -1);
        return true;
    }
    if (w == txtDespesa) {
        focus(txtProveidor);
        return true;
    }
    QList<QWidget*> along;
    for (std::size_t i = 0; i < 4; ++i)
        if (txtBase[i]->isEnabled()) along << txtBase[i] << txtIVA[i];
    if (const qsizetype at = along.indexOf(w); at > 0) {
        focus(along[at - 1]);
        return true;
    } else if (at == 0) {
        focus(ListEntitats->isVisibleTo(this) && ListEntitats->isEnabled()
                  ? static_cast<QWidget*>(ListEntitats)
                  : txtRetencio);
        return true;
    }
    return focusPrevious(order_, w);
}

void FormCompres::groupChosen() {
    if (ComboOP->currentIndex() < 0) {
        beep();
        return;
    }
    OMPLE_LLISTA_Despeses();
    PanelDades->setEnabled(true);
    if (lblproces->text().isEmpty()) {
        lblproces->setText(m(709).trimmed());
        txtTipus->setText(QStringLiteral("0"));
        pendent_ = true;
    }
    btnTancar->setText(m(6408));
    focus(txtDia);
}

void FormCompres::dayEntered() {
    bool ok = false;
    const int day = txtDia->text().toInt(&ok);
    if (!ok || day > 31 || day < 1) {
        beep();
        return;
    }
    focus(txtMes);
}

void FormCompres::monthEntered() {
    if (dateChecked()) focus(txtProveidor);
}

bool FormCompres::dateChecked() {
    const auto date = Valida_Data(ctx_, txtDia->text(), txtMes->text());
    if (!date) {
        beep();
        dialogs_.information(m(619));
        return false;
    }
    lblFecha->setText(date->toString(QStringLiteral("dd/MM/yyyy")));
    if (Mes_Bloquejat(ctx_, date->month())) {
        dialogs_.information(m(622));
        focus(txtMes);
        return false;
    }
    return true;
}

void FormCompres::takeAndGo(QLineEdit* field, QListWidget* list, QWidget* next) {
    if (takeFromList(field, list)) focus(next);
}

void FormCompres::totalEntered() {
    if (txtTotal->text().isEmpty()) return;
    txtTotal->setText(reformat(ctx_, txtTotal->text()));
    focus(tickets() ? static_cast<QWidget*>(txtBaseIRPF) : CmbIva);
}

std::optional<double> FormCompres::chosenRate() const {
    if (tickets() || CmbIva->currentIndex() < 0) return std::nullopt;
    const int index = CmbIva->currentIndex();
    return index == 0 ? 0.0 : ctx_.TipusIVAs[static_cast<std::size_t>(index - 1)];
}

void FormCompres::rateChosen() {
    const auto rate = chosenRate();
    if (!rate) return;
    purchases::PurchaseEntry e = entry();
    purchases::Calcula_Bases(ctx_, e, *rate);
    display(e);
}

void FormCompres::Calcula_Retencio() {
    if (loading_) return;
    purchases::PurchaseEntry e = entry();
    purchases::Calcula_Retencio(ctx_, e, chosenRate());
    display(e);
}

// The split again, as the withholding may have changed what the bases hold.
void FormCompres::splitAgain() {
    if (const auto rate = chosenRate(); rate && *rate != 0) {
        purchases::PurchaseEntry e = entry();
        purchases::Calcula_Bases(ctx_, e, *rate);
        display(e);
    }
}

void FormCompres::retentionEntered() {
    txtRetencio->setText(reformat(ctx_, txtRetencio->text()));
    if (const auto rate = chosenRate()) {
        purchases::PurchaseEntry e = entry();
        purchases::Calcula_Bases(ctx_, e, *rate);
        display(e);
    }
    if (ctx_.Tesoreria && ListEntitats->isEnabled() && FrameTesoreria->isEnabled() &&
        FrameTesoreria->isVisibleTo(this))
        focus(ListEntitats);
    else if (tickets())
        GrabaApunt();
    else
        toFirstBase();
}

void FormCompres::entitatsEntered() {
    splitAgain();
    if (tickets())
        GrabaApunt();
    else
        toFirstBase();
}

void FormCompres::toFirstBase() {
    showPanel(PanelIVA);
    for (std::size_t i = 0; i < 4; ++i) {
        if (txtBase[i]->isEnabled()) {
            focus(txtBase[i]);
            return;
        }
    }
}

// Enter in the IVA panel: base, its quota, the next slot in use; past the last one the
// entry is posted.
void FormCompres::amountEntered(QLineEdit* w) {
    w->setText(reformat(ctx_, w->text()));
    QList<QLineEdit*> along;
    for (std::size_t i = 0; i < 4; ++i)
        if (txtBase[i]->isEnabled()) along << txtBase[i] << txtIVA[i];
    const qsizetype at = along.indexOf(w);
    if (at >= 0 && at + 1 < along.size()) {
        focus(along[at + 1]);
        return;
    }
    leaveField(w);
    if (txtBase[2]->text() == QStringLiteral("-")) return;
    GrabaApunt();
}

// Esc and the third button: the entry cancelled, or the screen closed when idle.
void FormCompres::closeOrCancel() {
    if (idle())
        closeScreen();
    else
        Cancela_Apunt();
}

bool FormCompres::entryTyped() const {
    return !idle() && !txtDia->text().isEmpty();
}

}  // namespace tallora
