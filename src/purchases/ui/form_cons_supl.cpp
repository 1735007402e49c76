#include "form_cons_supl.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "purchases/purchase_inquiry.h"
#include "purchases/purchase_reports.h"
#include "report/report_helpers.h"

#include <QComboBox>
#include <QRadioButton>

namespace tallora {
namespace {

QStringList headers(const WorkingContext& ctx) {
    return {QStringLiteral("ID"),          Missatge(ctx, 820).trimmed(),
            Missatge(ctx, 6504).trimmed(), QStringLiteral("PERCEPTOR / PAGADOR"),
            QStringLiteral("FACTURA"),     QStringLiteral("TOTAL")};
}

}  // namespace

FormConsSupl::FormConsSupl(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                           report::ReportOutput* output, QWidget* parent)
    : InquiryScreen(ctx, dialogs, QStringLiteral("FormConsSupl"), Missatge(ctx, 6505),
                    QStringLiteral("consSUPL"), headers(ctx), parent),
      job_(job),
      output_(output) {
    const auto m = [&](int n) { return Missatge(ctx_, n).trimmed(); };
    CmbClients = addListFilter(QStringLiteral("CmbClients"),
                               fixedText(ctx_, "Perceptor / pagador", "Perceptor / pagador"));
    CmbTipus = addListFilter(QStringLiteral("CmbTipus"), m(810));
    CmbTipus->addItems(purchases::provisionTypes(ctx_));
    CmbTipus->setCurrentIndex(-1);
    Opdata = addOrder(QStringLiteral("Opdata"), m(809), m(925));
    OpTipus = addOrder(QStringLiteral("OpTipus"), m(810), QString());
    OpClient = addOrder(QStringLiteral("OpClient"),
                        fixedText(ctx_, "Perceptor / pagador", "Perceptor / pagador"), QString());
    OpImport = addOrder(QStringLiteral("OpImport"), m(804), m(926));
    OMPLE_LLISTA_Clients();
    start();
}

void FormConsSupl::OMPLE_LLISTA_Clients() {
    CmbClients->clear();
    CmbClients->addItems(purchases::provisionParties(ctx_));
    CmbClients->setCurrentIndex(-1);
}

purchases::ProvisionFilter FormConsSupl::filter() const {
    purchases::ProvisionFilter f;
    if (CmbClients->currentIndex() >= 0) f.party = CmbClients->currentText();
    // The first row of CmbTipus is the disbursement ("S"), the second the provision ("P").
    if (CmbTipus->currentIndex() >= 0) f.suplido = CmbTipus->currentIndex() == 0;
    f.range = range();
    if (OpTipus->isChecked()) f.order = purchases::ProvisionOrder::Tipus;
    if (OpClient->isChecked()) f.order = purchases::ProvisionOrder::Party;
    if (OpImport->isChecked()) f.order = purchases::ProvisionOrder::Import;
    return f;
}

ui::InquiryScreen::Result FormConsSupl::search() {
    const purchases::ProvisionSearch found = purchases::Buscar_Suplidos(ctx_, filter());
    Result result;
    result.total = found.total;
    for (const purchases::ProvisionRow& r : found.rows)
        result.rows.push_back(
            {r.ordre,
             {QString::number(r.ordre), r.data.toString(QStringLiteral("dd/MM/yyyy")), r.nomTipus,
              r.nomProveidor, r.descripcio, Format_Import(ctx_, r.total)},
             r.descripcio});
    return result;
}

QString FormConsSupl::deleteQuestion(const Row& row) const {
    return purchases::deleteQuestion(ctx_, row.ordre, row.description);
}

bool FormConsSupl::remove(std::int64_t ordre) {
    return purchases::Esborra_Suplido(ctx_, ordre);
}

report::ReportResult FormConsSupl::print(const report::PrintRequest& request) {
    if (!job_) return {};
    return printList([&] {
        return purchases::Imprimir_Suplidos(ctx_, dialogs_, *job_, output_, filter(), request,
                                            QDate::currentDate());
    });
}

void FormConsSupl::open(std::int64_t ordre) {
    emit modifyRequested(ordre);
}

}  // namespace tallora
