#include "form_cons_docs.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "sales/billing_document.h"
#include "sales/sale_inquiry.h"
#include "schema/creation.h"
#include "schema/inquiry_filter.h"
#include "store/database.h"

#include <QComboBox>

namespace tallora {
namespace {

QStringList headers(const WorkingContext& ctx) {
    return {QStringLiteral("ID"), Missatge(ctx, 820).trimmed(), Missatge(ctx, 821).trimmed(),
            Missatge(ctx, 6845).trimmed()};
}

}  // namespace

FormConsDOCS::FormConsDOCS(WorkingContext& ctx, Dialogs& dialogs, sales::DocType type,
                           report::ReportJob* job, report::ReportOutput* output, QWidget* parent)
    : InquiryScreen(ctx, dialogs, sales::documentInquiry(type).form,
                    Missatge(ctx, sales::documentInquiry(type).title),
                    sales::documentInquiry(type).help, headers(ctx), parent),
      type_(type),
      job_(job),
      output_(output) {
    CmbClients = addListFilter(QStringLiteral("CmbClients"), Missatge(ctx_, 802).trimmed());
    hideAmountFilter();
    hideTotal();
    OMPLE_LLISTA_Clients();
    start();
}

// Names in order, the customer's number as item data.
void FormConsDOCS::OMPLE_LLISTA_Clients() {
    const QString kept = CmbClients->currentText();
    const bool chosen = CmbClients->currentIndex() >= 0;
    const QSignalBlocker block(CmbClients);
    CmbClients->clear();
    auto db = store::Database::open(ctx_.exerciseFile(schema::db::Gest));
    auto st = db.prepare(QStringLiteral("select nom, client from clients order by nom asc"));
    while (st.next()) CmbClients->addItem(st.text(0), QVariant::fromValue<qint64>(st.int64(1)));
    CmbClients->setCurrentIndex(chosen ? CmbClients->findText(kept) : -1);
}

void FormConsDOCS::refreshLists() {
    OMPLE_LLISTA_Clients();
    Buscar();
}

sales::DocumentFilter FormConsDOCS::filter() const {
    sales::DocumentFilter f;
    if (CmbClients->currentIndex() >= 0) f.client = CmbClients->currentData().toLongLong();
    const schema::DateAmountFilter r = range();
    f.from = r.from;
    f.to = r.to;
    return f;
}

ui::InquiryScreen::Result FormConsDOCS::search() {
    Result result;
    numbers_.clear();
    for (const sales::DocumentRow& r : sales::Busca_Documents(ctx_, type_, filter())) {
        numbers_[r.id] = r.number;
        result.rows.push_back(
            {r.id,
             {QString::number(r.id), r.fecha.toString(QStringLiteral("dd/MM/yyyy")), r.cliente,
              QString::number(r.number)},
             r.cliente});
    }
    return result;
}

QString FormConsDOCS::deleteQuestion(const Row& row) const {
    const auto number = numbers_.find(row.ordre);
    return schema::deleteQuestion(ctx_, number == numbers_.end() ? 0 : number->second,
                                  row.description);
}

bool FormConsDOCS::remove(std::int64_t id) {
    const auto number = numbers_.find(id);
    if (number == numbers_.end()) return false;
    return sales::Esborra_Document(ctx_, type_, number->second, id) == 1;
}

report::ReportResult FormConsDOCS::print(const report::PrintRequest& request) {
    if (!job_) return {};
    return printList([&] {
        return sales::Imprimeix_Documents(ctx_, dialogs_, *job_, output_, type_, filter(), request,
                                          QDate::currentDate());
    });
}

void FormConsDOCS::open(std::int64_t id) {
    const auto number = numbers_.find(id);
    if (number != numbers_.end()) emit modifyRequested(type_, number->second);
}

}  // namespace tallora
