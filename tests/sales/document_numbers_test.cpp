#include "sales/document_numbers.h"
#include "../schema/schema_fixture.h"
#include "../shell/start_fixture.h"
#include "schema/upgrades.h"
#include "store/store_error.h"

using namespace tallora;
using namespace tallora::sales;
using tallora::testing::run;
using tallora::testing::scalar;
namespace db = tallora::schema::db;

namespace {

class DocumentNumbers : public ::testing::Test {
protected:
    void SetUp() override {
        f.ctx.Facturacio = true;
        schema::upgradeBilling(f.ctx);
    }
    QString fact() const { return f.company + db::Fact; }
    void counterRow(int year, int frasOut, int presupuesto = 0) {
        run(fact(),
            QStringLiteral("insert into Numeracion_Documentos (Ejercicio, FrasOut, Presupuesto) "
                           "values (%1, %2, %3)")
                .arg(year)
                .arg(frasOut)
                .arg(presupuesto));
    }
    void document(int year, const QString& kind, int number) {
        run(fact(), QStringLiteral("insert into documentos (Ejercicio, %1) values (%2, %3)")
                        .arg(kind)
                        .arg(year)
                        .arg(number));
    }
    tallora::testing::ExerciseFixture f;
};

}  // namespace

TEST_F(DocumentNumbers, WithoutACounterRowTheNextNumberIsZero) {
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::FrasOut), 0);
    counterRow(2025, 40);
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::FrasOut), 0);
}

TEST_F(DocumentNumbers, TheNextNumberFollowsTheCounter) {
    counterRow(2026, 5, 11);
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::FrasOut), 6);
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::Presupuesto), 12);
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::Proforma), 1);
}

TEST_F(DocumentNumbers, NumbersTakenByDocumentsArePassedOver) {
    counterRow(2026, 5);
    document(2026, kinds::FrasOut, 6);
    document(2026, kinds::FrasOut, 7);
    document(2026, kinds::FrasOut, 9);
    document(2025, kinds::FrasOut, 8);
    document(2026, kinds::Proforma, 8);
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::FrasOut), 8);
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::Proforma), 1);
}

TEST_F(DocumentNumbers, TheCounterIsSetForTheOpenExerciseOnly) {
    counterRow(2025, 1);
    EXPECT_EQ(setDocumentCounter(f.ctx, kinds::Albaran, 30), 0);
    counterRow(2026, 1);
    EXPECT_EQ(setDocumentCounter(f.ctx, kinds::Albaran, 30), 1);
    EXPECT_EQ(scalar(fact(), "select Albaran from Numeracion_Documentos where Ejercicio = 2026"),
              30);
    EXPECT_EQ(scalar(fact(), "select Albaran from Numeracion_Documentos where Ejercicio = 2025"),
              0);
    EXPECT_EQ(Seguent_Document(f.ctx, kinds::Albaran), 31);
}

TEST_F(DocumentNumbers, AnUnknownKindOrAMissingDatabaseIsRefused) {
    EXPECT_THROW(Seguent_Document(f.ctx, "Client"), std::invalid_argument);
    EXPECT_THROW(setDocumentCounter(f.ctx, "Id", 1), std::invalid_argument);
    ASSERT_TRUE(QFile::remove(fact()));
    EXPECT_THROW(Seguent_Document(f.ctx, kinds::FrasOut), store::StoreError);
}
