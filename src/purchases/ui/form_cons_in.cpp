#include "form_cons_in.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "purchases/purchase_reports.h"
#include "report/report_helpers.h"
#include "store/store_error.h"
#include "treasury/add_cartera.h"

#include <QAction>
#include <QComboBox>
#include <QRadioButton>

namespace tallora {
namespace {

QStringList headers(const WorkingContext& ctx) {
    return {QStringLiteral("ID"),         Missatge(ctx, 820).trimmed(),
            Missatge(ctx, 921).trimmed(), Missatge(ctx, 922).trimmed(),
            QStringLiteral("FACTURA"),    QStringLiteral("TOTAL")};
}

}  // namespace

FormConsIN::FormConsIN(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                       report::ReportOutput* output, QWidget* parent)
    : InvoiceInquiryScreen(
          ctx, dialogs, QStringLiteral("FormConsIN"), Missatge(ctx, 901), QStringLiteral("consIN"),
          headers(ctx), {QStringLiteral("IVA"), QStringLiteral("BASE"), QStringLiteral("QUOTA")},
          {QStringLiteral("BASE IRPF"), QStringLiteral("BASE"), Missatge(ctx, 605).trimmed()},
          parent),
      job_(job),
      output_(output) {
    const auto m = [&](int n) { return Missatge(ctx_, n).trimmed(); };
    CmbProveidors = addListFilter(QStringLiteral("CmbProveidors"), m(902));
    CmbNaturalesa = addListFilter(QStringLiteral("CmbNaturalesa"), m(906));
    OpId = addOrder(QStringLiteral("OpId"), QStringLiteral("ID"), QString());
    Opdata = addOrder(QStringLiteral("Opdata"), m(809), m(925));
    OpNatur = addOrder(QStringLiteral("OpNatur"), m(904), m(927));
    OpProv = addOrder(QStringLiteral("OpProv"), m(902), m(928));
    OpImport = addOrder(QStringLiteral("OpImport"), m(804), m(926));
    OMPLE_LLISTA_Proveidors();
    OMPLE_LLISTA_Comptes();
    start();
}

void FormConsIN::OMPLE_LLISTA_Proveidors() {
    CmbProveidors->clear();
    CmbProveidors->addItems(purchases::OMPLE_LLISTA_Proveidors(ctx_));
    CmbProveidors->setCurrentIndex(-1);
}

void FormConsIN::OMPLE_LLISTA_Comptes() {
    CmbNaturalesa->clear();
    CmbNaturalesa->addItems(purchases::OMPLE_LLISTA_Comptes(ctx_));
    CmbNaturalesa->setCurrentIndex(-1);
}

purchases::PurchaseFilter FormConsIN::filter() const {
    purchases::PurchaseFilter f;
    f.supplier = CmbProveidors->currentIndex() >= 0 ? CmbProveidors->currentText() : QString();
    f.account = CmbNaturalesa->currentIndex() >= 0 ? CmbNaturalesa->currentText() : QString();
    f.range = range();
    const std::pair<QRadioButton*, purchases::PurchaseOrder> orders[] = {
        {OpId, purchases::PurchaseOrder::Id},
        {Opdata, purchases::PurchaseOrder::Data},
        {OpNatur, purchases::PurchaseOrder::Natur},
        {OpProv, purchases::PurchaseOrder::Prov},
        {OpImport, purchases::PurchaseOrder::Import}};
    for (const auto& [option, order] : orders)
        if (option->isChecked()) f.order = order;
    return f;
}

ui::InquiryScreen::Result FormConsIN::search() {
    const purchases::PurchaseSearch found = purchases::Buscar(ctx_, filter());
    Result result;
    result.total = found.total;
    for (const purchases::PurchaseRow& r : found.rows)
        result.rows.push_back(
            {r.ordre,
             {QString::number(r.ordre), r.data.toString(QStringLiteral("dd/MM/yyyy")),
              r.nomProveidor, r.nomCompte, r.descripcio, Format_Import(ctx_, r.total)},
             r.descripcio});
    return result;
}

QString FormConsIN::deleteQuestion(const Row& row) const {
    return purchases::deleteQuestion(ctx_, row.ordre, row.description);
}

bool FormConsIN::remove(std::int64_t ordre) {
    return purchases::Esborra_Compra(ctx_, ordre);
}

report::ReportResult FormConsIN::print(const report::PrintRequest& request) {
    if (!job_) return {};
    return printList([&] {
        return purchases::Imprimir_Compres(ctx_, dialogs_, *job_, output_, filter(), request,
                                           QDate::currentDate());
    });
}

void FormConsIN::open(std::int64_t ordre) {
    emit modifyRequested(ordre);
}

void FormConsIN::AddCartera() {
    const auto ordre = selectedOrdre();
    if (!ordre) return;
    try {
        treasury::AddCartera_Compra(ctx_, dialogs_, QString::number(*ordre));
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
}

std::optional<ui::InvoiceInquiryScreen::Detail> FormConsIN::detailOf(std::int64_t ordre) {
    const auto d = purchases::Mes_FraIN(ctx_, ordre);
    if (!d) return std::nullopt;
    Detail detail{d->lblMesID,
                  d->lblMesClient,
                  d->lblMesNIF,
                  d->lblMesGrup,
                  d->lblMesCompte,
                  d->lblMesDescripcio,
                  d->lblMesTotal,
                  d->lblMesPagada,
                  {},
                  {d->MesGridIRPF.rate, d->MesGridIRPF.base, d->MesGridIRPF.quota}};
    for (const purchases::DetailLine& line : d->MesGrid)
        detail.lines.push_back({line.rate, line.base, line.quota});
    return detail;
}

}  // namespace tallora
