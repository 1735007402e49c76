// FormVendes: the entry in and out of the widgets, posting, the receipt frame, the journal
// and the change of a posted sale.
#include "form_vendes.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "sales/receipt.h"
#include "sales/sale_posting.h"
#include "sales/sale_validation.h"
#include "store/store_error.h"
#include "widgets/journal_list.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>

namespace tallora {

sales::SaleEntry FormVendes::entry() const {
    sales::SaleEntry e;
    e.lblOrdre = lblOrdre->text();
    e.lblFecha = lblFecha->text();
    e.txtDia = txtDia->text();
    e.txtMes = txtMes->text();
    e.txtClient = txtClient->text();
    if (const QListWidgetItem* item = ListClients->currentItem(); item && item->isSelected()) {
        e.listClientsText = item->text();
        e.clientNumber = item->data(Qt::UserRole).toLongLong();
    }
    e.txtTipus = txtTipus->text();
    if (const QListWidgetItem* item = ListVendes->currentItem(); item && item->isSelected())
        e.listVendesText = item->text();
    e.txtdescripcio = txtdescripcio->text();
    e.cmbSerie = cmbSerie->currentText();
    e.txtTotal = txtTotal->text();
    e.txtBaseIRPF = txtBaseIRPF->text();
    e.Text1 = Text1->text();
    e.txtRetencio = txtRetencio->text();
    for (std::size_t i = 0; i < 3; ++i) {
        e.txtBase[i] = txtBase[i]->text();
        e.txtIVA[i] = txtIVA[i]->text();
        e.txtRE[i] = txtRE[i]->text();
    }
    e.reEnabled = txtRE[0]->isEnabled();
    e.entitat = ListEntitats->currentText();
    if (const QVariant id = ListEntitats->currentData(); id.isValid()) e.entitatId = id.toLongLong();
    e.venciment = DtFacturacionVencimiento->date();
    if (ctx_.Intra) e.clasificacion = CmbClasificacion->currentText();
    e.rebut = chk_rebut->isChecked() && ctx_.DocsGenerar;
    e.rebutDomicili = lbl_rebut_domicili->text();
    e.rebutPoblacio = lbl_rebut_poblacio->text();
    e.rebutNif = lbl_rebut_nif->text();
    for (std::size_t i = 0; i < 5; ++i) e.concepte[i] = txt_rebut_concepte[i]->text();
    e.Exempta = exempta_;
    e.postedRates = postedRates_;
    if (ctx_.Facturacio) {
        e.billing.type = selectedType();
        e.billing.loadedAs = loadedAs_;
        e.billing.formaPago = txtFacturacionFormadePago->text();
        e.billing.entidad = txtFacturacionEntidadBancaria->text();
        e.billing.ccc = txtFacturacionCCC->text();
    }
    return e;
}

void FormVendes::display(const sales::SaleEntry& e) {
    const bool wasLoading = loading_;
    loading_ = true;
    lblOrdre->setText(e.lblOrdre);
    lblFecha->setText(e.lblFecha);
    txtDia->setText(e.txtDia);
    txtMes->setText(e.txtMes);
    if (txtClient->text() != e.txtClient) txtClient->setText(e.txtClient);
    if (txtTipus->text() != e.txtTipus) txtTipus->setText(e.txtTipus);
    txtdescripcio->setText(e.txtdescripcio);
    cmbSerie->setCurrentIndex(std::max(0, cmbSerie->findText(e.cmbSerie)));
    txtTotal->setText(e.txtTotal);
    txtBaseIRPF->setText(e.txtBaseIRPF);
    Text1->setText(e.Text1);
    txtRetencio->setText(e.txtRetencio);
    for (std::size_t i = 0; i < 3; ++i) {
        txtBase[i]->setText(e.txtBase[i]);
        txtIVA[i]->setText(e.txtIVA[i]);
        txtRE[i]->setText(e.txtRE[i]);
    }
    lbl_rebut_domicili->setText(e.rebutDomicili);
    lbl_rebut_poblacio->setText(e.rebutPoblacio);
    lbl_rebut_nif->setText(e.rebutNif);
    for (std::size_t i = 0; i < 5; ++i) txt_rebut_concepte[i]->setText(e.concepte[i]);
    exempta_ = e.Exempta;
    postedRates_ = e.postedRates;
    if (ctx_.Facturacio) {
        txtFacturacionFormadePago->setText(e.billing.formaPago);
        txtFacturacionEntidadBancaria->setText(e.billing.entidad);
        txtFacturacionCCC->setText(e.billing.ccc);
    }
    loading_ = wasLoading;
}

void FormVendes::Neteja_Apunt() {
    setStatus(QStringLiteral("Limpiando..."));
    loading_ = true;
    for (QLineEdit* f : {txtDia, txtMes, txtClient, txtTipus, txtdescripcio})
        f->clear();
    for (QLineEdit* f : {txtTotal, txtRetencio, txtBaseIRPF, Text1}) f->setText(QStringLiteral("0"));
    for (std::size_t i = 0; i < 3; ++i)
        for (QLineEdit* f : {txtBase[i], txtIVA[i], txtRE[i]}) f->setText(QStringLiteral("0"));
    for (QLineEdit* f : txt_rebut_concepte) f->clear();
    for (QLabel* l : {lblOrdre, lblFecha, lbl_rebut_titol, lbl_rebut_client, lbl_rebut_domicili,
                      lbl_rebut_poblacio, lbl_rebut_nif, lbl_rebut_data, lblproces})
        l->clear();
    loading_ = false;
    cmbSerie->setCurrentIndex(0);
    CmbIva->setCurrentIndex(0);
    exempta_ = {};
    postedRates_.reset();
    fillRateCaptions(ctx_.TipusIVA, ctx_.TipusRE);
    Activa_RE();
    ListEntitats->clear();
    OMPLE_LLISTA_Entitats({});
    FrameTesoreria->setVisible(ctx_.Tesoreria);
    OMPLE_CmbClasificacion();
    DtFacturacionVencimiento->setDate(QDate::currentDate());
    chk_rebut->setVisible(ctx_.DocsGenerar);
    const bool irpf = !tickets();
    for (QWidget* w : std::initializer_list<QWidget*>{txtRetencio, Text1, txtBaseIRPF, lblRetencio,
                                                     lblText1, lblBaseIRPF})
        w->setVisible(irpf);
    btnTancar->setText(m(308));
    clearBilling();
    showPanel(FrameList);
    aqui_ = false;
    posting_ = false;
    setEnabled(true);
    setStatus(QString());
    focus(txtDia);
}

void FormVendes::Surt_Apunt() {
    if (txtDia->text().isEmpty()) {
        closeScreen();
        return;
    }
    // A sale opened from an inquiry goes back there without a question.
    if (!lblOrdre->text().isEmpty() && !aqui_) {
        Neteja_Apunt();
        emit saleChanged();
        closeScreen();
        return;
    }
    if (dialogs_.yesNo(m(618) + QStringLiteral("\n\n") + m(25)) == Dialogs::Answer::Yes)
        Neteja_Apunt();
}

void FormVendes::refused(sales::EntryField field, bool openPanel) {
    if (openPanel) showPanel(PanelIVA);
    switch (field) {
    case sales::EntryField::txtDia: focus(txtDia); break;
    case sales::EntryField::txtMes: focus(txtMes); break;
    case sales::EntryField::txtClient: focus(txtClient); break;
    case sales::EntryField::txtTipus: focus(txtTipus); break;
    case sales::EntryField::txtTotal: focus(txtTotal); break;
    case sales::EntryField::txtBase: toFirstBase(); break;
    case sales::EntryField::None: break;
    }
}

void FormVendes::GrabaApunt() {
    if (posting_) return;
    posting_ = true;
    setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restore = [this] {
        QApplication::restoreOverrideCursor();
        setEnabled(true);
        posting_ = false;
    };
    sales::SaleEntry e = entry();
    sales::VerifyOptions options;
    options.panelOpen = work_->currentWidget() != FrameList;
    options.classification = ctx_.Intra;
    options.invoice = e.billing.type == sales::DocType::Factura;
    const sales::Verdict verdict = sales::Verifica_Apunt(ctx_, dialogs_, e, options);
    display(e);
    if (!verdict.ok) {
        restore();
        QApplication::processEvents();
        refused(verdict.focus, verdict.openPanel);
        return;
    }
    lblproces->setText(QStringLiteral("Grabando Apunte..."));
    setStatus(m(725));
    const bool change = e.isChange();
    const sales::PostingResult result = sales::GrabaApunt(ctx_, e, *verdict.account);
    if (!result.error.isEmpty()) dialogs_.stop(result.error);
    if (result.ok()) display(e);
    // The document is printed while the screen and detalle_temp still hold it.
    if (result.ok() && ctx_.Facturacio && chk_imprimir->isChecked())
        Imprimeix_Document(result.ordre, e.billing.type, e);
    if (result.ok() && e.rebut && job_) {
        try {
            sales::Imprimeix_Rebut(ctx_, dialogs_, *job_, output_,
                                   static_cast<std::int32_t>(result.ordre));
        } catch (const store::StoreError& error) {
            dialogs_.stop(error.message());
        }
    }
    sales::JournalPosting journal;
    journal.ordre = result.ordre;
    journal.affected = result.affected;
    journal.change = change;
    journal.classification = ctx_.Intra;
    journal.type = sales::journalType(e.billing.type);
    for (const sales::JournalRow& row : sales::Diari_Apunt(ctx_, e, journal)) Escriu_Diari(row);
    restore();
    lblproces->clear();
    if (result.ok())
        Fi_Apunt();
    else
        setStatus(QString());
}

void FormVendes::Guardar() {
    dialogs_.information(m(6641));
    GrabaApunt();
}

void FormVendes::Fi_Apunt() {
    const bool change = !lblOrdre->text().isEmpty();
    const bool stay = aqui_ || !change;
    Neteja_Apunt();
    if (change) emit saleChanged();
    if (!stay) Surt_Apunt();
}

void FormVendes::Escriu_Diari(const sales::JournalRow& row) {
    ui::writeJournalRow(ListRegistres, row);
}

void FormVendes::Modifica_Venda(const QString& number, bool fromJournal) {
    const auto loaded = loadChange(number, !txtDia->text().isEmpty(),
                                   [&] { return sales::Modifica_Venda(ctx_, number); });
    if (!loaded) return;
    lblproces->setText(QStringLiteral("Modificando apunte..."));
    loading_ = true;
    display(loaded->entry);
    loading_ = false;
    fillRateCaptions(loaded->Tiva, loaded->Tre);
    bool re = sales::Client_RE(ctx_, loaded->entry.txtClient);
    for (const QString& amount : loaded->entry.txtRE)
        re = re || sales::amountOf(ctx_, amount) != Money{};
    lblREHeader_->setVisible(re);
    for (std::size_t i = 0; i < 3; ++i) {
        lblRE[i]->setVisible(re && ctx_.TipusIVA[i] != 0);
        txtRE[i]->setVisible(re && ctx_.TipusIVA[i] != 0);
        txtRE[i]->setEnabled(re);
    }
    if (ctx_.Facturacio) {
        {
            const QSignalBlocker block(opFacturacion_[0]);
            opFacturacion_[0]->setChecked(true);
        }
        setLoadedAs(sales::DocType::Factura);
        typeSelected();
        if (loaded->entry.venciment.isValid())
            DtFacturacionVencimiento->setDate(loaded->entry.venciment);
        OMPLE_GRID_Detall(false);
    }
    if (ctx_.Intra && !loaded->entry.clasificacion.isEmpty())
        CmbClasificacion->setCurrentIndex(CmbClasificacion->findText(loaded->entry.clasificacion));
    if (loaded->settled) {
        FrameTesoreria->hide();
        ListEntitats->clear();
        ListEntitats->addItem(QStringLiteral("Marca"));
        ListEntitats->setCurrentIndex(0);
    } else if (ctx_.Tesoreria) {
        ListEntitats->setCurrentIndex(std::max(0, ListEntitats->findText(loaded->entry.entitat)));
    }
    btnTancar->setText(m(6408));
    aqui_ = fromJournal;
    setStatus(m(726));
    bringToFront();
    focus(txtDia);
}

void FormVendes::Mostra_Rebut() {
    const QString customer = ListClients->currentItem() ? ListClients->currentItem()->text() : QString();
    std::optional<sales::ReceiptFrameTexts> texts;
    try {
        texts = sales::Mostra_Rebut(ctx_, customer, txtdescripcio->text(),
                                    QDate::fromString(lblFecha->text(), QStringLiteral("dd/MM/yyyy")));
    } catch (const store::StoreError& error) {
        dialogs_.stop(error.message());
    }
    if (!texts) return;
    lbl_rebut_titol->setText(texts->title);
    lbl_rebut_client->setText(texts->lbl_rebut_client);
    lbl_rebut_domicili->setText(texts->lbl_rebut_domicili);
    lbl_rebut_poblacio->setText(texts->lbl_rebut_poblacio);
    lbl_rebut_nif->setText(texts->lbl_rebut_nif);
    lbl_rebut_data->setText(texts->lbl_rebut_data);
    showPanel(FRAME_recibos);
    focus(txt_rebut_concepte[0]);
}

void FormVendes::rebutGrava() {
    if (dialogs_.yesNo(QStringLiteral("¿Es correcto el recibo?")) != Dialogs::Answer::Yes) return;
    showPanel(PanelIVA);
    GrabaApunt();
}

void FormVendes::rebutCancela() {
    toFirstBase();
}

}  // namespace tallora
