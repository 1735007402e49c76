// FormCompres: the entry in and out of the widgets, posting, the day log and the change of
// a posted entry.
#include "form_compres.h"

#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "purchases/purchase_journal.h"
#include "purchases/purchase_posting.h"
#include "store/store_error.h"
#include "widgets/journal_list.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

namespace tallora {

purchases::PurchaseEntry FormCompres::entry() const {
    purchases::PurchaseEntry e;
    e.group = ComboOP->currentIndex();
    e.lblOrdre = lblOrdre->text();
    e.lblFecha = lblFecha->text();
    e.txtDia = txtDia->text();
    e.txtMes = txtMes->text();
    e.txtProveidor = txtProveidor->text();
    if (const QListWidgetItem* item = ui::selectedItem(ListProv)) {
        e.listProvText = item->text();
        e.supplierNumber = item->data(Qt::UserRole).toLongLong();
    }
    e.txtDespesa = txtDespesa->text();
    if (const QListWidgetItem* item = ui::selectedItem(ListDespeses))
        e.listDespesesText = item->text();
    e.txtdescripcio = txtdescripcio->text();
    e.cmbSerie = cmbSerie->currentText();
    e.txtTotal = txtTotal->text();
    e.txtBaseIRPF = txtBaseIRPF->text();
    e.txtTipus = txtTipus->text();
    e.txtRetencio = txtRetencio->text();
    for (std::size_t i = 0; i < 4; ++i) {
        e.txtBase[i] = txtBase[i]->text();
        e.txtIVA[i] = txtIVA[i]->text();
    }
    e.txtexempta = txtexempta->text();
    e.entitat = ListEntitats->currentText();
    if (const QVariant id = ListEntitats->currentData(); id.isValid())
        e.entitatId = id.toLongLong();
    e.venciment = DtVencimiento->date();
    if (ctx_.Intra && CmbClasificacion->currentIndex() >= 0)
        e.clasificacion = CmbClasificacion->currentText();
    return e;
}

void FormCompres::display(const purchases::PurchaseEntry& e) {
    const bool wasLoading = loading_;
    loading_ = true;
    lblOrdre->setText(e.lblOrdre);
    lblFecha->setText(e.lblFecha);
    txtDia->setText(e.txtDia);
    txtMes->setText(e.txtMes);
    if (txtProveidor->text() != e.txtProveidor) txtProveidor->setText(e.txtProveidor);
    if (txtDespesa->text() != e.txtDespesa) txtDespesa->setText(e.txtDespesa);
    txtdescripcio->setText(e.txtdescripcio);
    cmbSerie->setCurrentIndex(std::max(0, cmbSerie->findText(e.cmbSerie)));
    txtTotal->setText(e.txtTotal);
    txtBaseIRPF->setText(e.txtBaseIRPF);
    txtTipus->setText(e.txtTipus);
    txtRetencio->setText(e.txtRetencio);
    for (std::size_t i = 0; i < 4; ++i) {
        txtBase[i]->setText(e.txtBase[i]);
        txtIVA[i]->setText(e.txtIVA[i]);
    }
    txtexempta->setText(e.txtexempta);
    loading_ = wasLoading;
}

void FormCompres::Neteja() {
    setStatus(QStringLiteral("Limpiando..."));
    loading_ = true;
    showPanel(FrameList, ListProv);
    for (QLineEdit* f : {txtDia, txtMes, txtProveidor, txtDespesa, txtdescripcio}) f->clear();
    for (QLineEdit* f : {txtRetencio, txtexempta, txtBaseIRPF, txtTipus, txtTotal})
        f->setText(QStringLiteral("0"));
    for (std::size_t i = 0; i < 4; ++i) {
        txtBase[i]->setText(QStringLiteral("0"));
        txtIVA[i]->setText(QStringLiteral("0"));
        // A rate of 0 has no base to type.
        txtBase[i]->setEnabled(ctx_.TipusIVAs[i] != 0);
        txtIVA[i]->setEnabled(ctx_.TipusIVAs[i] != 0);
    }
    for (QLabel* l : {lblOrdre, lblFecha, lblproces}) l->clear();
    cmbSerie->setCurrentIndex(0);
    CmbIva->clear();
    CmbIva->addItem(QStringLiteral("0"));
    for (double rate : ctx_.TipusIVAs) CmbIva->addItem(purchases::rateText(ctx_, rate));
    CmbIva->setCurrentIndex(0);
    loading_ = false;
    fillRateCaptions(ctx_.TipusIVAs);
    DtVencimiento->setDate(QDate::currentDate());
    gravant_ = false;
    if (ListEntitats->currentText() == QStringLiteral("Marca")) {
        ListEntitats->clear();
        OMPLE_LLISTA_Entitats();
    } else {
        ListEntitats->setCurrentIndex(ListEntitats->count() > 0 ? 0 : -1);
    }
    FrameTesoreria->setVisible(ctx_.Tesoreria);
    FrameTesoreria->setEnabled(true);
    OMPLE_CmbClasificacion();
    // A shop's expenses are not split by IVA: no rate to choose, and the flow never opens
    // the IVA panel (a page of the work area, whose stack alone shows or hides it).
    for (QWidget* w : std::initializer_list<QWidget*>{CmbIva, lblcmbIVA}) w->setVisible(!tickets());
    PanelDades->setEnabled(false);
    btnTancar->setText(m(308));
    setStatus(QString());
}

void FormCompres::Cancela_Apunt() {
    if (PanelDades->isEnabled() && !txtDia->text().isEmpty() &&
        dialogs_.yesNo(m(618) + QStringLiteral("\n\n") + m(25)) != Dialogs::Answer::Yes)
        return;
    const bool change = !lblOrdre->text().isEmpty();
    Neteja();
    pendent_ = false;
    if (change) emit purchaseChanged();
    focus(ComboOP);
    setStatus(QString());
}

void FormCompres::refused(purchases::EntryField field, bool openPanel) {
    using purchases::EntryField;
    if (openPanel) {
        toFirstBase();
        return;
    }
    switch (field) {
        case EntryField::ComboOP:
            focus(ComboOP);
            break;
        case EntryField::txtDia:
            focus(txtDia);
            break;
        case EntryField::txtMes:
            focus(txtMes);
            break;
        case EntryField::txtProveidor:
            focus(txtProveidor);
            break;
        case EntryField::txtDespesa:
            focus(txtDespesa);
            break;
        case EntryField::txtTotal:
            focus(txtTotal);
            break;
        case EntryField::txtBase:
            toFirstBase();
            break;
        case EntryField::None:
            break;
    }
}

void FormCompres::GrabaApunt() {
    if (gravant_ || idle()) return;
    gravant_ = true;
    setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restore = [this] {
        QApplication::restoreOverrideCursor();
        setEnabled(true);
        gravant_ = false;
    };
    purchases::PurchaseEntry e = entry();
    purchases::VerifyOptions options;
    options.panelOpen = tickets() || work_->currentWidget() == PanelIVA;
    options.classification = ctx_.Intra;
    const purchases::Verdict verdict = purchases::Verifica_Apunt(ctx_, dialogs_, e, options);
    display(e);
    if (!verdict.ok) {
        restore();
        QApplication::processEvents();
        refused(verdict.focus, verdict.openPanel);
        return;
    }
    lblproces->setText(QStringLiteral("Grabando Apunte..."));
    setStatus(m(725));
    const bool change = !e.isNew();
    const purchases::PostingResult result =
        purchases::GrabaApunt(ctx_, e, *verdict.account, ordre_);
    if (!result.error.isEmpty()) dialogs_.stop(result.error);
    if (result.ok()) {
        display(e);
        if (!change) ordre_ = result.ordre;
    }
    purchases::JournalPosting journal;
    journal.ordre = result.ordre;
    journal.affected = result.affected;
    journal.change = change;
    journal.classification = ctx_.Intra;
    for (const JournalRow& row : purchases::Diari_Apunt(ctx_, e, journal)) Escriu_Diari(row);
    restore();
    if (!result.ok()) {
        lblproces->clear();
        setStatus(QString());
        return;
    }
    // A new entry, or a change started from the day log, goes on with the next entry of
    // the same group; a change opened from elsewhere goes back to idle.
    const int group = ComboOP->currentIndex();
    if (pendent_ || !change) {
        Neteja();
        ComboOP->setCurrentIndex(group);
        groupChosen();
    } else {
        Neteja();
        pendent_ = false;
        focus(ComboOP);
    }
    if (change) emit purchaseChanged();
}

void FormCompres::Guardar() {
    dialogs_.information(m(6641));
    GrabaApunt();
}

void FormCompres::Escriu_Diari(const JournalRow& row) {
    ui::writeJournalRow(ListRegistres, row);
}

void FormCompres::Modifica_Compra(const QString& number, bool fromJournal) {
    const auto loaded = loadChange(number, !txtDia->text().isEmpty(),
                                   [&] { return purchases::Modifica_Compra(ctx_, number); });
    if (!loaded) return;
    loading_ = true;
    ComboOP->setCurrentIndex(loaded->entry.group);
    OMPLE_LLISTA_Despeses();
    PanelDades->setEnabled(true);
    display(loaded->entry);
    ui::selectPrefix(ListProv, loaded->entry.txtProveidor);
    ui::selectPrefix(ListDespeses, loaded->entry.txtDespesa);
    loading_ = false;
    fillRateCaptions(loaded->TipusIva);
    if (ctx_.Intra && !loaded->entry.clasificacion.isEmpty())
        CmbClasificacion->setCurrentIndex(CmbClasificacion->findText(loaded->entry.clasificacion));
    if (loaded->settled) {
        ListEntitats->clear();
        ListEntitats->addItem(QStringLiteral("Marca"));
        ListEntitats->setCurrentIndex(0);
        FrameTesoreria->setEnabled(false);
    } else if (ctx_.Tesoreria) {
        ListEntitats->setCurrentIndex(std::max(0, ListEntitats->findText(loaded->entry.entitat)));
    }
    if (loaded->entry.venciment.isValid()) DtVencimiento->setDate(loaded->entry.venciment);
    btnTancar->setText(m(6408));
    pendent_ = fromJournal;
    lblproces->setText(m(726).trimmed());
    setStatus(m(726));
    bringToFront();
    focus(txtDia);
}

}  // namespace tallora
