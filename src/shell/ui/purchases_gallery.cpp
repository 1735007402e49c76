#include "purchases_gallery.h"

#include "context/working_context.h"
#include "purchases/provision_entry.h"
#include "purchases/ui/form_compres.h"
#include "purchases/ui/form_cons_in.h"
#include "purchases/ui/form_cons_supl.h"
#include "purchases/ui/form_suplidos.h"
#include "schema/creation.h"
#include "store/database.h"
#include "treasury/other_movements.h"
#include "treasury/runs.h"

#include <QAction>
#include <QComboBox>
#include <QTableWidget>

namespace tallora {
namespace {

// The name of the sample chart's first account of `table` whose number starts with `prefix`.
QString accountLike(const WorkingContext& ctx, const QString& table, const QString& prefix) {
    auto db = store::Database::open(ctx.exerciseFile(schema::db::Comptes));
    auto st = db.prepare(QStringLiteral("select NomCompte from %1 where NomCompte like '%2%' "
                                        "order by NomCompte")
                             .arg(table, prefix));
    return st.next() ? st.text(0).toUpper() : QString();
}

struct Purchase {
    int group;
    const char* table;
    const char* account;
    const char* day;
    const char* supplier;
    const char* description;
    const char* total;
    int rate;            // index of CmbIva: 1 for the first rate
    const char* paidBy;  // treasury account, or "" to leave it pending
};

// A purchase typed as far as its amounts: the first attempt to post opens the IVA panel.
void type(FormCompres& screen, const WorkingContext& ctx, const Purchase& p) {
    screen.findChild<QComboBox*>(QStringLiteral("ComboOP"))->setCurrentIndex(p.group);
    screen.groupChosen();
    purchases::PurchaseEntry e = screen.entry();
    e.txtDia = QString::fromUtf8(p.day);
    e.txtMes = QStringLiteral("3");
    e.lblFecha = e.txtDia.rightJustified(2, u'0') + QStringLiteral("/03/") + ctx.Exercici;
    e.txtProveidor = QString::fromUtf8(p.supplier).toUpper();
    e.txtDespesa = accountLike(ctx, QString::fromUtf8(p.table), QString::fromUtf8(p.account));
    e.txtdescripcio = QString::fromUtf8(p.description);
    e.txtTotal = QString::fromUtf8(p.total);
    screen.display(e);
    auto* entitats = screen.findChild<QComboBox*>(QStringLiteral("ListEntitats"));
    entitats->setCurrentIndex(std::max(0, entitats->findText(QString::fromUtf8(p.paidBy))));
    screen.findChild<QComboBox*>(QStringLiteral("CmbIva"))->setCurrentIndex(p.rate);
    screen.GrabaApunt();
}

const Purchase kPurchases[] = {
    {0, "Compres", "600", "4", "Suministros Industriales Vallès, S.L.", "A-2026/0311", "2.420,00",
     1, ""},
    {1, "Serveis", "628", "9", "Endesa Energía, S.A.U.", "FE26-004417", "186,34", 1,
     "CaixaBank c/c"},
    {0, "Compres", "600", "14", "Pintures Tarragona, S.A.", "PT-889", "1.331,00", 1, "Caja tienda"},
};

// The three purchases posted, the first one then settled by a payment run.
void postSample(FormCompres& screen, const WorkingContext& ctx) {
    for (const Purchase& p : kPurchases) {
        type(screen, ctx, p);
        screen.GrabaApunt();
    }
}

// 1.000,00 of the first purchase paid in a payment run by the last treasury account.
void settleFirst(const WorkingContext& ctx, Dialogs& dialogs) {
    treasury::Buida_Borrador(ctx, treasury::kPayments);
    const auto open = treasury::openReceipts(ctx, treasury::kPayments);
    const auto accounts = treasury::treasuryAccountItems(ctx);
    if (open.empty() || accounts.empty()) qFatal("the sample has no purchase to pay");
    treasury::Passa_Recibo(ctx, dialogs, treasury::kPayments, open.front().id,
                           QStringLiteral("1000"));
    treasury::Contabilizar(ctx, dialogs, treasury::kPayments, accounts.back().id,
                           QDate(ctx.Exercici.toInt(), 3, 31));
}

enum class Stage { Idle, Amounts, Journal, Settled };

GalleryScreen purchasesScreen(const QString& name, Stage stage,
                              std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    return {name, [stage, openExercise, &dialogs](WorkingContext& ctx) {
                openExercise(ctx);
                ctx.Tesoreria = true;
                auto screen = std::make_unique<FormCompres>(ctx, dialogs);
                screen->resize(1024, 700);
                if (stage == Stage::Amounts)
                    type(*screen, ctx,
                         {0, "Compres", "600", "21", "Suministros Industriales Vallès, S.L.",
                          "SIV-1187", "968,00", 1, ""});
                if (stage == Stage::Journal || stage == Stage::Settled) postSample(*screen, ctx);
                if (stage == Stage::Settled) {
                    settleFirst(ctx, dialogs);
                    screen->Cancela_Apunt();
                    screen->Modifica_Compra(QStringLiteral("1"));
                }
                return std::unique_ptr<QWidget>(std::move(screen));
            }};
}

// A disbursement and a provision posted, a third typed.
std::unique_ptr<QWidget> provisions(WorkingContext& ctx, Dialogs& dialogs) {
    auto screen = std::make_unique<FormSuplidos>(ctx, dialogs);
    screen->resize(1024, 640);
    const char* rows[][6] = {
        {"S", "5", "Telefónica de España, S.A.U.", "Tasas registro Gil", "60,10", "Caja tienda"},
        {"P", "6", "Reformas Hermanos Gil, S.L.", "Provisión obra Gil", "600,00", "CaixaBank c/c"},
        {"S", "11", "Endesa Energía, S.A.U.", "Alta luz obra Gil", "145,20", "CaixaBank c/c"},
    };
    for (const auto& row : rows) {
        purchases::ProvisionEntry e = screen->entry();
        e.suplido = QString::fromUtf8(row[0]) == QStringLiteral("S");
        screen->display(e);
        e = screen->entry();
        e.txtDia = QString::fromUtf8(row[1]);
        e.txtMes = QStringLiteral("3");
        e.lblFecha = e.txtDia.rightJustified(2, u'0') + QStringLiteral("/03/") + ctx.Exercici;
        e.txtClient = QString::fromUtf8(row[2]).toUpper();
        e.txtdescripcio = QString::fromUtf8(row[3]);
        e.txtTotal = QString::fromUtf8(row[4]);
        e.entitat = QString::fromUtf8(row[5]);
        screen->display(e);
        if (&row != &rows[2]) screen->GrabaApunt();
    }
    return screen;
}

}  // namespace

void addPurchasesScreens(std::vector<GalleryScreen>& screens,
                         std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    screens.push_back(
        purchasesScreen(QStringLiteral("FormCompres"), Stage::Idle, openExercise, dialogs));
    screens.push_back(purchasesScreen(QStringLiteral("FormCompres_amounts"), Stage::Amounts,
                                      openExercise, dialogs));
    screens.push_back(purchasesScreen(QStringLiteral("FormCompres_journal"), Stage::Journal,
                                      openExercise, dialogs));
    screens.push_back(purchasesScreen(QStringLiteral("FormCompres_settled"), Stage::Settled,
                                      openExercise, dialogs));
    screens.push_back(
        {QStringLiteral("FormSuplidos"), [openExercise, &dialogs](WorkingContext& ctx) {
             openExercise(ctx);
             ctx.Tesoreria = true;
             return provisions(ctx, dialogs);
         }});
    screens.push_back(
        {QStringLiteral("FormConsSupl"), [openExercise, &dialogs](WorkingContext& ctx) {
             openExercise(ctx);
             ctx.Tesoreria = true;
             auto screen = std::make_unique<FormConsSupl>(ctx, dialogs);
             screen->resize(1024, 620);
             return std::unique_ptr<QWidget>(std::move(screen));
         }});
    screens.push_back({QStringLiteral("FormConsIN"), [openExercise, &dialogs](WorkingContext& ctx) {
                           openExercise(ctx);
                           ctx.Tesoreria = true;
                           auto screen = std::make_unique<FormConsIN>(ctx, dialogs);
                           screen->resize(1200, 640);
                           screen->grid()->selectRow(1);
                           screen->showDetail(true);
                           return std::unique_ptr<QWidget>(std::move(screen));
                       }});
}

}  // namespace tallora
