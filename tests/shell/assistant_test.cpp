// The assistant's figures: zeros on an empty exercise, the sums of the year, the company's
// pending receipts and invoices the same in each of its exercises, the treasury balance as
// it has always been read, "Activar tesoreria" without treasury; and which links it offers.
#include "schema/creation.h"
#include "shell/assistant_figures.h"
#include "shell/exercises.h"
#include "start_fixture.h"
#include "store/database.h"

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;

namespace {

class Assistant : public StartFixture {
protected:
    void SetUp() override {
        openNewCompany();
        ASSERT_TRUE(createExercise("2025"));
        ASSERT_TRUE(createExercise("2026"));
        ASSERT_TRUE(openExercise("2026"));
        ctx.Tesoreria = true;
    }
    void exec(const QString& file, const char* sql) {
        store::Database::open(file).execute(QString::fromUtf8(sql));
    }
    QStringList figures() const {
        const AssistantFigures f = assistantFigures(ctx);
        return {f.txtVentas, f.txtGastos, f.txtRecibosPendientes, f.txtFacturasPendientes,
                f.txtsaldobancos};
    }
};

}  // namespace

TEST_F(Assistant, AnEmptyExerciseShowsZerosNotBlanks) {
    exec(ctx.exerciseFile(schema::db::Tesorer), "delete from entidades");
    EXPECT_EQ(figures(), (QStringList{"0,00", "0,00", "0,00", "0,00", "0,00"}));
}

TEST_F(Assistant, TheFiguresAreTheYearsSumsAndTheCompanysPortfolio) {
    exec(ctx.exerciseFile(schema::db::FrasOut),
         "insert into FrasOut (Ordre, data, Total) values (1, '2026-01-02', 1210000), "
         "(2, '2026-02-02', 605000), (3, '2026-02-03', -100000)");
    exec(ctx.exerciseFile(schema::db::FrasIn),
         "insert into FrasIN (Ordre, data, TOTAL) values (1, '2026-01-05', 242000)");
    // Receipts of both exercises: 300 due less 50 settled on account; 80 to pay.
    exec(ctx.companyFile(schema::db::Cartera),
         "insert into cartera (data, cliente, proveedor, In_Out, Ejercicio, Total, Pendiente) "
         "values ('2025-12-01', 1, 0, 'Out', '2025', 1000000, 500000), "
         "('2026-01-02', 2, 0, 'Out', '2026', 2000000, 0), "
         "('2026-01-05', 0, 3, 'In', '2026', 800000, 0)");
    exec(ctx.exerciseFile(schema::db::Tesorer),
         "delete from entidades;"
         "insert into entidades (Id, Grup, entidad, Saldo) values (1, 570, 'Caja', 1000000), "
         "(2, 572, 'Banco', 2500000);"
         "insert into movimientos (data, entidad, D, H) values ('2026-01-10', 2, 500000, 0), "
         "('2026-01-11', 1, 0, 200000);"
         // A transfer of 30 from the bank to the cash: its two movements, and the entry that
         // the balance counts on each side once more.
         "insert into movimientos (data, entidad, otros, D, H) values ('2026-01-12', 2, 1, 0, "
         "300000), ('2026-01-12', 1, 1, 300000, 0);"
         "insert into otros_movimientos (asiento, data, importe, cta_sale_tesoreria, "
         "cta_entra_tesoreria) values (1, '2026-01-12', 300000, 2, 1);"
         "insert into otros_movimientos (asiento, data, importe, cta_sale_otra, "
         "cta_entra_tesoreria) values (2, '2026-01-13', 40000, 5, 1)");
    // 100 + 250 + 50 - 20 + (30 - 30) + 30 + 4 - 30.
    EXPECT_EQ(figures(), (QStringList{"171,50", "24,20", "250,00", "80,00", "384,00"}));

    // The portfolio belongs to the company: the other exercise shows the same pending sums.
    restoreCompanyFolder(ctx);  // as leaving the shell does
    ASSERT_TRUE(openExercise("2025"));
    ctx.Tesoreria = true;
    const QStringList other = figures();
    EXPECT_EQ(other.mid(0, 2), (QStringList{"0,00", "0,00"}));
    EXPECT_EQ(other.mid(2, 2), (QStringList{"250,00", "80,00"}));
}

TEST_F(Assistant, WithoutTreasuryThePendingFiguresAskToSwitchItOn) {
    ctx.Tesoreria = false;
    const QStringList f = figures();
    EXPECT_EQ(f.mid(2),
              (QStringList{"Activar tesoreria", "Activar tesoreria", "Activar tesoreria"}));
}

TEST_F(Assistant, TheLinksFollowTheExercisesOptions) {
    const auto shown = [&] {
        QStringList out;
        for (const AssistantLink& link : assistantLinks())
            if (assistantLinkShown(ctx, link)) out << QLatin1String(link.name);
        return out;
    };
    EXPECT_EQ(shown().size(), 18);
    EXPECT_STREQ(assistantLinks()[9].menuEntry, "mnuconsSupl");  // as lbl4, on purpose
    EXPECT_STREQ(assistantLinks()[10].menuEntry, "mnucartera");  // as lbl5
    ctx.Tesoreria = false;
    EXPECT_EQ(shown(), (QStringList{"lbl1", "lbl2", "lbl3", "lbl4", "lbl7", "lbl8", "lbl9", "lbl10",
                                    "lbl13"}));
    ctx.ModeExercici = QStringLiteral("TICKETS");
    EXPECT_EQ(shown(), (QStringList{"lbl7", "lbl8", "lbl9", "lbl10", "lbl13"}));
}
