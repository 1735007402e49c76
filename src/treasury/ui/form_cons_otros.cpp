#include "form_cons_otros.h"

#include "account_list.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "treasury/treasury_reports.h"

#include <QComboBox>

namespace tallora {
namespace {

QStringList headers(const WorkingContext& ctx) {
    return {QStringLiteral("ID"),        Missatge(ctx, 6740), Missatge(ctx, 6741),
            QStringLiteral("ENTRA (D)"), Missatge(ctx, 6743), Missatge(ctx, 6742)};
}

}  // namespace

FormConsOtros::FormConsOtros(WorkingContext& ctx, Dialogs& dialogs, report::ReportJob* job,
                             report::ReportOutput* output, QWidget* parent)
    : InquiryScreen(ctx, dialogs, QStringLiteral("FormConsOtros"), Missatge(ctx, 6744),
                    QStringLiteral("consOtros"), headers(ctx), parent),
      job_(job),
      output_(output) {
    CmbCuenta = addListFilter(QStringLiteral("CmbCuenta"), Missatge(ctx_, 6746));
    OMPLE_LLISTA_Comptes();
    start();
}

void FormConsOtros::OMPLE_LLISTA_Comptes() {
    ui::fillAccountList(CmbCuenta, treasury::otherAccountItems(ctx_));
}

treasury::OtherFilter FormConsOtros::filter() const {
    treasury::OtherFilter f;
    f.dates = range();
    if (const std::int64_t id = ui::chosenAccount(CmbCuenta)) f.cuenta = id;
    return f;
}

ui::InquiryScreen::Result FormConsOtros::search() {
    Result result;
    for (const treasury::OtherRow& r : treasury::searchOtherMovements(ctx_, filter())) {
        result.rows.push_back(
            {r.asiento,
             {QString::number(r.asiento), r.data, r.concepto, r.entra, r.sale, r.importe},
             r.concepto});
        result.total += r.amount;
    }
    return result;
}

QString FormConsOtros::deleteQuestion(const Row& row) const {
    return treasury::deleteOtherQuestion(ctx_, row.ordre, row.description);
}

bool FormConsOtros::remove(std::int64_t asiento) {
    treasury::deleteOtherMovement(ctx_, asiento);
    return true;
}

report::ReportResult FormConsOtros::print(const report::PrintRequest& request) {
    if (!job_) return {};
    return printList([&] {
        return treasury::Imprimir_Otros(ctx_, dialogs_, *job_, output_, filter(), request,
                                        QDate::currentDate());
    });
}

void FormConsOtros::open(std::int64_t asiento) {
    emit modifyRequested(asiento);
}

}  // namespace tallora
