#include "treasury_gallery.h"

#include "context/working_context.h"
#include "store/database.h"
#include "treasury/account_statement.h"
#include "treasury/other_movements.h"
#include "treasury/runs.h"
#include "treasury/ui/account_list.h"
#include "treasury/ui/form_cartera_run.h"
#include "treasury/ui/form_cons_extracto.h"
#include "treasury/ui/form_cons_otros.h"
#include "treasury/ui/form_extracto_banco.h"
#include "treasury/ui/frm_tesoreria_otros.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QLineEdit>
#include <QTableWidget>
#include <QTemporaryDir>

namespace tallora {
namespace {

// The run screen of `side` after the sales and purchases of the sample: its draft emptied,
// then the first open receipt put in it in part and the next in full, and the bank chosen.
template <class Screen>
GalleryScreen runScreen(const treasury::RunSide& side,
                        std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs,
                        bool sepa = false) {
    return {QLatin1String(side.screen) + (sepa ? QStringLiteral("_sepa") : QString()),
            [&side, openExercise, &dialogs, sepa](WorkingContext& ctx) {
                openExercise(ctx);
                ctx.Tesoreria = true;
                treasury::Buida_Borrador(ctx, side);
                const auto open = treasury::openReceipts(ctx, side);
                if (open.empty()) qFatal("the sample has no receipt for %s", side.screen);
                treasury::Passa_Recibo(ctx, dialogs, side, open.front().id, QStringLiteral("100"));
                if (open.size() > 1)
                    treasury::Passa_Recibo(ctx, dialogs, side, open[1].id, QString());
                auto screen = std::make_unique<Screen>(ctx, dialogs);
                screen->resize(1200, 640);
                auto* accounts =
                    screen->template findChild<QComboBox*>(QStringLiteral("cmbEntitats"));
                accounts->setCurrentIndex(accounts->count() - 1);
                // The run's SEPA step, as the user sees it when sending the draft to the bank.
                if (sepa) screen->sepaCheck()->setChecked(true);
                return std::unique_ptr<QWidget>(std::move(screen));
            }};
}

std::int64_t accountNamed(const std::vector<treasury::AccountItem>& items, const char* prefix) {
    for (const treasury::AccountItem& item : items)
        if (item.name.startsWith(QString::fromUtf8(prefix))) return item.id;
    qFatal("the sample has no account %s", prefix);
}

// Money moved without invoices, and the last receipt of the customers collected on the bank
// and returned unpaid; made once, whichever screen asks first.
void treasurySample(const WorkingContext& ctx, Dialogs& dialogs) {
    if (!treasury::searchOtherMovements(ctx, {}).empty()) return;
    const auto treasuryItems = treasury::treasuryAccountItems(ctx);
    const auto otherItems = treasury::otherAccountItems(ctx);
    const std::int64_t cash = accountNamed(treasuryItems, "CAJA"),
                       bank = accountNamed(treasuryItems, "CAIXABANK"),
                       loan = accountNamed(otherItems, "PRÉSTAMO"),
                       owner = accountNamed(otherItems, "CUENTA DEL TITULAR");
    const int year = ctx.Exercici.toInt();
    struct Move {
        int month, day;
        const char* concepto;
        const char* importe;
        std::int64_t saleTes, saleOtra, entraTes, entraOtra;
    };
    const Move moves[] = {
        {1, 15, "Préstamo ICO: ingreso", "18000", 0, loan, bank, 0},
        {2, 3, "Ingreso de caja en banco", "1200", cash, 0, bank, 0},
        {2, 28, "Cuota préstamo febrero", "412,35", bank, 0, 0, loan},
        {3, 10, "Aportación del titular", "2500", 0, owner, bank, 0},
        {3, 28, "Cuota préstamo marzo", "412,35", bank, 0, 0, loan},
    };
    for (const Move& m : moves) {
        treasury::OtherMovement e;
        e.data = QDate(year, m.month, m.day);
        e.concepto = QString::fromUtf8(m.concepto);
        e.importe = QString::fromLatin1(m.importe);
        e.saleTesoreria = m.saleTes;
        e.saleOtra = m.saleOtra;
        e.entraTesoreria = m.entraTes;
        e.entraOtra = m.entraOtra;
        treasury::postOtherMovement(ctx, dialogs, e);
    }
    treasury::Buida_Borrador(ctx, treasury::kCollections);
    const auto open = treasury::openReceipts(ctx, treasury::kCollections);
    if (open.empty()) qFatal("the sample has no receipt to collect");
    treasury::Passa_Recibo(ctx, dialogs, treasury::kCollections, open.back().id, QString());
    treasury::Contabilizar(ctx, dialogs, treasury::kCollections, bank, QDate(year, 3, 20));
    for (const treasury::StatementLine& line :
         treasury::Busca_Extracto(ctx, bank, QDate(year, 3, 20), QDate(year, 3, 20)))
        if (line.id) treasury::returnReceipt(ctx, *line.id, QDate(year, 4, 2));
}

template <class Screen>
GalleryScreen treasuryScreen(const char* name, std::function<void(WorkingContext&)> openExercise,
                             Dialogs& dialogs, std::function<void(Screen&)> prepare) {
    return {QString::fromLatin1(name), [openExercise, &dialogs, prepare](WorkingContext& ctx) {
                openExercise(ctx);
                ctx.Tesoreria = true;
                treasurySample(ctx, dialogs);
                auto screen = std::make_unique<Screen>(ctx, dialogs);
                screen->resize(1200, 640);
                prepare(*screen);
                return std::unique_ptr<QWidget>(std::move(screen));
            }};
}

// The entry screen with a movement typed: the owner takes cash out of the bank.
void typeWithdrawal(FrmTesoreriaOtros& screen) {
    auto* sale = screen.findChild<QComboBox*>(QStringLiteral("cmbSaleTesoreria"));
    sale->setCurrentIndex(sale->findText(QStringLiteral("CAIXABANK C/C")));
    auto* entra = screen.findChild<QComboBox*>(QStringLiteral("cmbEntraOtrasCuentas"));
    entra->setCurrentIndex(entra->findText(QStringLiteral("CUENTA DEL TITULAR")));
    screen.findChild<QDateEdit*>(QStringLiteral("Fecha"))
        ->setDate(QDate(screen.entry().data.year(), 4, 6));
    screen.findChild<QLineEdit*>(QStringLiteral("txtConcepte"))
        ->setText(QStringLiteral("Retirada del titular"));
    screen.findChild<QLineEdit*>(QStringLiteral("txtImporte"))->setText(QStringLiteral("600,00"));
}

// The bank's statement with the returned receipt selected and shown as a double entry.
void showReturn(FormConsEXTRACTO& screen) {
    const auto accounts = screen.findChild<QComboBox*>(QStringLiteral("CmbTesoreria"));
    screen.setAccount(
        accounts->itemData(accounts->findText(QStringLiteral("CAIXABANK C/C"))).toLongLong());
    QTableWidget* grid = screen.grid();
    for (int r = 0; r < grid->rowCount(); ++r)
        if (grid->item(r, 2)->text().startsWith(QStringLiteral("Devol"))) grid->selectRow(r);
    screen.Mes_EXTRACTO();
}

// A Norma 43 statement of bank account `bank` for the first open receipts of the customers,
// each collected a few days after it fell due, with the invoice as reference; then bank
// charges and a transfer the portfolio does not know.
QString sampleStatement(const WorkingContext& ctx, std::int64_t bank) {
    static QTemporaryDir folder;
    QString ccc = QStringLiteral("21000418450200051332");
    if (const auto fields = treasury::treasuryAccountFields(ctx, bank);
        fields && fields->ccc.size() == 20)
        ccc = fields->ccc;
    const QString number = ccc.left(8) + ccc.mid(10);
    const auto amount = [](Money m) {
        const qint64 cents = (m.units() < 0 ? -m.units() : m.units()) / 100;
        return QString::number(cents).rightJustified(14, u'0');
    };
    const auto yymmdd = [](const QDate& d) { return d.toString(QStringLiteral("yyMMdd")); };
    QStringList lines;
    Money credits, debits;
    int nCredits = 0, nDebits = 0;
    const auto line = [&](const QDate& date, const char* common, Money value, const QString& ref) {
        const bool debit = value < Money{};
        lines << (QStringLiteral("22    ") + ccc.mid(4, 4) + yymmdd(date) + yymmdd(date) +
                  QLatin1String(common) + QStringLiteral("000") + (debit ? u'1' : u'2') +
                  amount(value) + QStringLiteral("0000000000") + ref.left(12).leftJustified(12))
                     .leftJustified(80);
        (debit ? debits : credits) += debit ? -value : value;
        ++(debit ? nDebits : nCredits);
    };
    QDate last(ctx.Exercici.toInt(), 1, 1);
    {
        store::Database db = store::Database::open(ctx.companyFile(QStringLiteral("cartera.mdb")));
        auto st = db.prepare(QStringLiteral(
            "select Factura, Total - Pendiente, coalesce(Vencimiento, data) from cartera where "
            "In_Out = 'Out' and Borrador = 'n' order by data, Id limit 3"));
        while (st.next()) {
            const QDate date = st.date(2).addDays(3);
            line(date, "02", st.money(1), st.text(0));
            last = std::max(last, date);
        }
    }
    line(last, "17", Money::fromUnits(-45000), QStringLiteral("COMISION"));
    line(last.addDays(1), "04", Money::fromUnits(3000000), QStringLiteral("TRANSF"));
    const QDate first(ctx.Exercici.toInt(), 1, 1);
    lines.prepend((QStringLiteral("11") + number + yymmdd(first) + yymmdd(last.addDays(1)) +
                   QStringLiteral("2") + amount(Money{}) + QStringLiteral("9783") +
                   QStringLiteral("COMERCIAL"))
                      .leftJustified(80));
    lines << (QStringLiteral("33") + number + QString::number(nDebits).rightJustified(5, u'0') +
              amount(debits) + QString::number(nCredits).rightJustified(5, u'0') + amount(credits) +
              u'2' + amount(credits - debits) + QStringLiteral("978"))
                 .leftJustified(80);
    lines << (QStringLiteral("88") + QString(18, u'9') +
              QString::number(lines.size()).rightJustified(6, u'0'))
                 .leftJustified(80);
    const QString path = folder.filePath(QStringLiteral("extracto.n43"));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(lines.join(QStringLiteral("\r\n")).toLatin1());
    return path;
}

}  // namespace

void addTreasuryScreens(std::vector<GalleryScreen>& screens,
                        std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs) {
    screens.push_back(runScreen<FormCarteraCobrar>(treasury::kCollections, openExercise, dialogs));
    screens.push_back(runScreen<FormCarteraPagar>(treasury::kPayments, openExercise, dialogs));
    screens.push_back(
        runScreen<FormCarteraCobrar>(treasury::kCollections, openExercise, dialogs, true));
    screens.push_back(
        runScreen<FormCarteraPagar>(treasury::kPayments, openExercise, dialogs, true));
    screens.push_back(treasuryScreen<FrmTesoreriaOtros>("FrmTesoreriaOtros", openExercise, dialogs,
                                                        typeWithdrawal));
    screens.push_back(treasuryScreen<FormConsOtros>("FormConsOtros", openExercise, dialogs,
                                                    [](FormConsOtros&) {}));
    screens.push_back(
        treasuryScreen<FormConsEXTRACTO>("FormConsEXTRACTO", openExercise, dialogs, showReturn));
    // The bank's statement laid against the bank account, its lines proposed.
    screens.push_back(
        {QStringLiteral("FormExtractoBanco"), [openExercise, &dialogs](WorkingContext& ctx) {
             openExercise(ctx);
             ctx.Tesoreria = true;
             // The run screens' drafts back to the open list, to be matched.
             treasury::Buida_Borrador(ctx, treasury::kCollections);
             auto screen = std::make_unique<FormExtractoBanco>(ctx, dialogs);
             screen->resize(1200, 640);
             QComboBox* accounts = screen->accounts();
             for (int i = 0; i < accounts->count(); ++i)
                 if (accounts->itemText(i).startsWith(QStringLiteral("CAIXABANK")))
                     accounts->setCurrentIndex(i);
             screen->Carga_Fichero(sampleStatement(ctx, ui::chosenAccount(accounts)));
             return std::unique_ptr<QWidget>(std::move(screen));
         }});
}

}  // namespace tallora
