#include "form_cons_out.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "report/report_helpers.h"
#include "sales/sale_reports.h"
#include "store/store_error.h"
#include "treasury/add_cartera.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QRadioButton>

namespace tallora {
namespace {

QStringList headers(const WorkingContext& ctx) {
    return {QStringLiteral("ID"),         Missatge(ctx, 820).trimmed(),
            Missatge(ctx, 821).trimmed(), Missatge(ctx, 822).trimmed(),
            QStringLiteral("FACTURA"),    QStringLiteral("TOTAL")};
}

}  // namespace

FormConsOUT::FormConsOUT(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                         report::ReportOutput* output, QWidget* parent)
    : InvoiceInquiryScreen(
          ctx, dialogs, QStringLiteral("FormConsOUT"), Missatge(ctx, 801),
          QStringLiteral("consOUT"), headers(ctx),
          {QString(), QStringLiteral("BASE"), QStringLiteral("IVA"), QStringLiteral("RE")},
          {QString(), QStringLiteral("BASE IRPF"), QStringLiteral("QUOTA")}, parent),
      job_(job),
      output_(output) {
    const auto m = [&](int n) { return Missatge(ctx_, n).trimmed(); };
    CmbClients = addListFilter(QStringLiteral("CmbClients"), m(802));
    CmbTipus = addListFilter(QStringLiteral("CmbTipus"), m(803));
    OpId = addOrder(QStringLiteral("OpId"), QStringLiteral("ID"), QString());
    Opdata = addOrder(QStringLiteral("Opdata"), m(809), m(925));
    OpNatur = addOrder(QStringLiteral("OpNatur"), m(803), m(927));
    OpClients = addOrder(QStringLiteral("OpClients"), m(802), QString());
    OpImport = addOrder(QStringLiteral("OpImport"), m(804), m(926));
    // "Gestión" belongs to the billing module: the duplicate (not in a shop's exercise) and
    // the way back to the portfolio, which F11 also takes without the module.
    QAction* duplicate = new QAction(m(6868), this);
    duplicate->setObjectName(QStringLiteral("duplicado"));
    duplicate->setToolTip(m(6866));
    duplicate->setVisible(!isTickets(ctx_));
    connect(duplicate, &QAction::triggered, this, [this] {
        if (const auto ordre = selectedOrdre()) emit modifyRequested(*ordre);
    });
    gestion()->insertAction(addCarteraAction(), duplicate);
    addCarteraAction()->setVisible(ctx_.Tesoreria && !isTickets(ctx_));
    showGestion(ctx_.Facturacio);
    OMPLE_LLISTA_Clients();
    OMPLE_LLISTA_Comptes();
    start();
}

void FormConsOUT::OMPLE_LLISTA_Clients() {
    CmbClients->clear();
    CmbClients->addItems(sales::customerNames(ctx_));
    CmbClients->setCurrentIndex(-1);
}

void FormConsOUT::OMPLE_LLISTA_Comptes() {
    CmbTipus->clear();
    CmbTipus->addItems(sales::salesAccountNames(ctx_));
    CmbTipus->setCurrentIndex(-1);
}

sales::SaleFilter FormConsOUT::filter() const {
    sales::SaleFilter f;
    f.customer = CmbClients->currentIndex() >= 0 ? CmbClients->currentText() : QString();
    f.account = CmbTipus->currentIndex() >= 0 ? CmbTipus->currentText() : QString();
    f.range = range();
    const std::pair<QRadioButton*, sales::SaleOrder> orders[] = {
        {OpId, sales::SaleOrder::Id},
        {Opdata, sales::SaleOrder::Data},
        {OpNatur, sales::SaleOrder::Natur},
        {OpClients, sales::SaleOrder::Clients},
        {OpImport, sales::SaleOrder::Import}};
    for (const auto& [option, order] : orders)
        if (option->isChecked()) f.order = order;
    return f;
}

ui::InquiryScreen::Result FormConsOUT::search() {
    const sales::SaleSearch found = sales::Busca_Vendes(ctx_, filter());
    Result result;
    result.total = found.total;
    for (const sales::SaleRow& r : found.rows)
        result.rows.push_back(
            {r.ordre,
             {QString::number(r.ordre), r.data.toString(QStringLiteral("dd/MM/yyyy")), r.nomClient,
              r.nomCompte, r.descripcio, Format_Import(ctx_, r.total)},
             r.descripcio});
    return result;
}

QString FormConsOUT::deleteQuestion(const Row& row) const {
    return schema::deleteQuestion(ctx_, row.ordre, row.description);
}

bool FormConsOUT::remove(std::int64_t ordre) {
    return sales::Esborra_Venda(ctx_, ordre);
}

report::ReportResult FormConsOUT::print(const report::PrintRequest& request) {
    if (!job_) return {};
    return printList([&] {
        return sales::Imprimeix_Llista(ctx_, dialogs_, *job_, output_, filter(), request,
                                       QDate::currentDate());
    });
}

void FormConsOUT::open(std::int64_t ordre) {
    emit modifyRequested(ordre);
}

void FormConsOUT::AddCartera() {
    const auto ordre = selectedOrdre();
    if (!ordre || !ctx_.Tesoreria || isTickets(ctx_)) return;
    try {
        treasury::AddCartera_Venda(ctx_, dialogs_, QString::number(*ordre));
    } catch (const store::StoreError& error) {
        showError(error.message());
    }
}

std::optional<ui::InvoiceInquiryScreen::Detail> FormConsOUT::detailOf(std::int64_t ordre) {
    const auto d = sales::Mes_FraOut(ctx_, ordre);
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
                  {d->MesGridIRPF.rate, d->MesGridIRPF.base, d->MesGridIRPF.iva}};
    for (const sales::DetailLine& line : d->MesGrid)
        detail.lines.push_back({line.rate, line.base, line.iva, line.re});
    return detail;
}

}  // namespace tallora
