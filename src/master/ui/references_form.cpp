#include "references_form.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "field_grid.h"
#include "widgets/field_behaviour.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

namespace tallora {

frmReferencias::frmReferencias(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent)
    : MasterForm(
          ctx, dialogs,
          {QStringLiteral("frmReferencias"), Missatge(ctx, 7001), QStringLiteral("ListReferencias"),
           QStringLiteral("Facturacion_referencias"), false},
          parent) {
    auto* caption = new QLabel(m(7002).toUpper(), this);
    caption->setObjectName(QStringLiteral("lblReferencias"));
    leftColumn()->insertWidget(0, caption);

    auto* frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("frame"));
    FieldGrid grid(frame);
    txtId_ = grid.line(QStringLiteral("txtId"), QString(), 10);
    txtId_->setVisible(false);
    frame->findChild<QLabel*>(QStringLiteral("lbl_txtId"))->setVisible(false);
    grid.endRow();
    txtReferencia_ =
        grid.line(QStringLiteral("txtReferencia"), m(7003) + QStringLiteral(" *"), 30, {}, true);
    txtDescripcion_ = grid.line(QStringLiteral("txtDescripcion"), m(7004), 255, {}, true);
    txtPrecio_ = grid.line(QStringLiteral("txtPrecio"), m(7005), 20);
    ui::makeAmountField(ctx_, txtPrecio_);
    grid.finish();
    finishSetup(frame, {txtReferencia_, txtDescripcion_, txtPrecio_});
}

bool frmReferencias::event(QEvent* event) {
    // Another screen may have added references meanwhile.
    if (event->type() == QEvent::WindowActivate && !editing()) OMPLE_LLISTA();
    return MasterForm::event(event);
}

QStringList frmReferencias::listTexts() {
    return master::referenceCodes(ctx_);
}

void frmReferencias::showRow(int row) {
    clearFields();
    if (const auto r = master::referenceByCode(ctx_, list()->item(row)->text())) display(*r);
}

void frmReferencias::display(const master::PriceReference& r) {
    txtId_->setText(r.id);
    txtReferencia_->setText(r.referencia);
    txtDescripcion_->setText(r.descripcion);
    txtPrecio_->setText(r.precio);
}

void frmReferencias::clearFields() {
    display(master::PriceReference{});
}

master::Outcome frmReferencias::saveRecord(bool isNew) {
    master::PriceReference r{txtId_->text(), txtReferencia_->text(), txtDescripcion_->text(),
                             txtPrecio_->text()};
    const master::Outcome outcome = master::saveReference(ctx_, dialogs_, r, isNew);
    display(r);
    return outcome;
}

master::Outcome frmReferencias::removeRecord(int) {
    return master::deleteReference(ctx_, dialogs_, txtId_->text());
}

}  // namespace tallora
