#include "sales_gallery.h"

#include "context/working_context.h"
#include "report/report_job.h"
#include "sales/billing_document.h"
#include "sales/billing_lines.h"
#include "sales/sale_entry.h"
#include "sales/sale_posting.h"
#include "sales/ui/form_cons_docs.h"
#include "sales/ui/form_cons_out.h"
#include "sales/ui/form_vendes.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"
#include "treasury/ui/form_cartera_recibos.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

namespace tallora {
namespace {

// The sample's sales of goods, in the language its chart was made in.
QString salesAccount(const WorkingContext& ctx) {
    auto db = store::Database::open(ctx.exerciseFile(schema::db::Comptes));
    auto st = db.prepare(QStringLiteral("select NomCompte from Ingresos where NomCompte like '700%'"));
    return st.next() ? st.text(0) : QString();
}

// A sale of the sample shop as the user would have typed it up to the amounts.
sales::SaleEntry typed(const WorkingContext& ctx, const QString& day, const QString& customer,
                       const QString& description, const QString& total) {
    sales::SaleEntry e;
    e.txtDia = day;
    e.txtMes = QStringLiteral("3");
    e.lblFecha = day.rightJustified(2, u'0') + QStringLiteral("/03/") + ctx.Exercici;
    e.txtClient = customer;
    e.txtTipus = salesAccount(ctx);
    e.txtdescripcio = description;
    e.txtTotal = total;
    sales::Reparteix_Total(ctx, e, ctx.TipusIVA[0], sales::Client_RE(ctx, customer));
    return e;
}

enum class Stage { Fresh, Amounts, Receipt, Journal };

// The sample with the billing module on and a few quotes of three lines saved.
void billingExercise(WorkingContext& ctx) {
    ctx.Tesoreria = true;
    ctx.Facturacio = true;
    schema::upgradeBilling(ctx);
    sales::Verifica_Numeracion(ctx);
    // The screens of both languages share the exercise: the quotes are saved once.
    {
        auto fact = store::Database::open(ctx.companyFile(schema::db::Fact));
        auto saved =
            fact.prepare(QStringLiteral("select 1 from documentos where Presupuesto <> 0"));
        if (saved.next()) return;
    }
    const char* customers[] = {"Construccions Puigdemunt, S.L.", "Jordi Casals Ferrer",
                               "Fusteria Can Mas"};
    int day = 2;
    for (const char* customer : customers) {
        sales::SaleEntry e = typed(ctx, QString::number(day), QString::fromUtf8(customer),
                                   QStringLiteral("-"), QStringLiteral("0"));
        day += 5;
        e.listClientsText = e.txtClient;
        e.listVendesText = e.txtTipus;
        auto gest = store::Database::open(ctx.exerciseFile(schema::db::Gest));
        auto st = gest.prepare(QStringLiteral("select client from clients where nom = ?"));
        st.bind(1, e.txtClient);
        if (st.next()) e.clientNumber = st.int64(0);
        e.billing.type = sales::DocType::Presupuesto;
        sales::clearLines(ctx);
        const char* lines[][5] = {{"12", "Tablero de pino macizo 200 x 40 cm", "25,40", "5", "21"},
                                  {"3", "Caja de tornillos 4 x 40 (200 u.)", "8,95", "", "21"},
                                  {"2", "Manual de montaje", "12,00", "", "4"}};
        for (const auto& l : lines) {
            sales::LineFields f{QString(),
                                QString::fromUtf8(l[0]),
                                QString::fromUtf8(l[1]),
                                QString::fromUtf8(l[2]),
                                QString::fromUtf8(l[3]),
                                QString::fromUtf8(l[4]),
                                QString()};
            sales::saveLine(ctx, e, f);
        }
        e.reEnabled = sales::Client_RE(ctx, e.txtClient);
        sales::sumLines(ctx, e, e.reEnabled);
        if (const auto account = sales::Verifica_compte_venda(ctx, e.txtTipus))
            sales::GrabaApunt(ctx, e, *account);
    }
    sales::clearLines(ctx);
}

enum class BillingStage { Lines, References };

GalleryScreen billingScreen(const QString& name, BillingStage stage,
                            std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    return {name, [stage, openExercise, &dialogs](WorkingContext& ctx) {
                openExercise(ctx);
                billingExercise(ctx);
                auto screen = std::make_unique<FormVendes>(ctx, dialogs);
                screen->resize(1024, 700);
                // The first quote, opened: its option stands in the colour of the type loaded.
                screen->Modifica_Document(sales::DocType::Presupuesto, QStringLiteral("1"));
                if (stage == BillingStage::References) {
                    screen->findChild<QPushButton*>(QStringLiteral("FacRef_Muestra"))->click();
                    screen->findChild<QLineEdit*>(QStringLiteral("FacRef_txtReferencia"))
                        ->setText(QStringLiteral("TAB-200"));
                }
                return std::unique_ptr<QWidget>(std::move(screen));
            }};
}

GalleryScreen salesScreen(const QString& name, Stage stage,
                          std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    return {name, [stage, openExercise, &dialogs](WorkingContext& ctx) {
                openExercise(ctx);
                ctx.Tesoreria = true;
                ctx.Facturacio = false;
                ctx.DocsGenerar = stage == Stage::Receipt;
                auto screen = std::make_unique<FormVendes>(ctx, dialogs);
                screen->resize(1024, 700);
                const QString customer = QStringLiteral("Construccions Puigdemunt, S.L.");
                if (stage == Stage::Journal) {
                    const char* sales[][4] = {{"3", "Construccions Puigdemunt, S.L.", "F-101", "1.210,00"},
                                              {"7", "Jordi Casals Ferrer", "F-102", "96,80"},
                                              {"12", "Fusteria Can Mas", "F-103", "2.541,00"}};
                    for (const auto& sale : sales) {
                        screen->display(typed(ctx, QString::fromUtf8(sale[0]), QString::fromUtf8(sale[1]),
                                              QString::fromUtf8(sale[2]), QString::fromUtf8(sale[3])));
                        // The first attempt shows the amounts, the second posts.
                        screen->GrabaApunt();
                        screen->GrabaApunt();
                    }
                }
                if (stage == Stage::Amounts || stage == Stage::Receipt) {
                    screen->display(typed(ctx, QStringLiteral("15"), customer, QStringLiteral("F-104"),
                                          QStringLiteral("726,00")));
                    screen->findChild<QComboBox*>(QStringLiteral("CmbIva"))->setCurrentIndex(1);
                    screen->GrabaApunt();  // shows the amounts, as a first attempt does
                }
                if (stage == Stage::Receipt) {
                    screen->findChild<QCheckBox*>(QStringLiteral("chk_rebut"))->setChecked(true);
                    screen->Mostra_Rebut();
                    screen->findChild<QLineEdit*>(QStringLiteral("txt_rebut_concepte"))
                        ->setText(QStringLiteral("Material de ferreteria según albarán 2026/088"));
                }
                return std::unique_ptr<QWidget>(std::move(screen));
            }};
}

}  // namespace

void addSalesScreens(std::vector<GalleryScreen>& screens,
                     std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    screens.push_back(salesScreen(QStringLiteral("FormVendes"), Stage::Fresh, openExercise, dialogs));
    screens.push_back(
        salesScreen(QStringLiteral("FormVendes_amounts"), Stage::Amounts, openExercise, dialogs));
    screens.push_back(
        salesScreen(QStringLiteral("FormVendes_receipt"), Stage::Receipt, openExercise, dialogs));
    screens.push_back(
        salesScreen(QStringLiteral("FormVendes_journal"), Stage::Journal, openExercise, dialogs));
    screens.push_back(billingScreen(QStringLiteral("FormVendes_billing"), BillingStage::Lines,
                                    openExercise, dialogs));
    screens.push_back(billingScreen(QStringLiteral("FormVendes_billing_references"),
                                    BillingStage::References, openExercise, dialogs));
    screens.push_back(
        {QStringLiteral("FormConsDOCS_Pre"), [openExercise, &dialogs](WorkingContext& ctx) {
             openExercise(ctx);
             billingExercise(ctx);
             auto screen =
                 std::make_unique<FormConsDOCS>(ctx, dialogs, sales::DocType::Presupuesto);
             screen->resize(900, 520);
             return std::unique_ptr<QWidget>(std::move(screen));
         }});
    // After the postings above, the sales left pending wait in the portfolio.
    screens.push_back(
        {QStringLiteral("FormCarteraRecibos"), [openExercise, &dialogs](WorkingContext& ctx) {
             openExercise(ctx);
             ctx.Tesoreria = true;
             static report::ReportJob job;
             auto screen = std::make_unique<FormCarteraRecibos>(ctx, dialogs, job, nullptr);
             screen->resize(1024, 620);
             return std::unique_ptr<QWidget>(std::move(screen));
         }});  // The sales inquiry on the sales above, the detail of the second open.
    screens.push_back(
        {QStringLiteral("FormConsOUT"), [openExercise, &dialogs](WorkingContext& ctx) {
             openExercise(ctx);
             ctx.Tesoreria = true;
             auto screen = std::make_unique<FormConsOUT>(ctx, dialogs);
             screen->resize(1200, 640);
             screen->grid()->selectRow(std::min(1, screen->grid()->rowCount() - 1));
             screen->showDetail(true);
             return std::unique_ptr<QWidget>(std::move(screen));
         }});
}

}  // namespace tallora
