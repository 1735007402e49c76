#include "context/dialogs.h"
#include "context/messages.h"
#include "context/notation.h"
#include "schema/creation.h"
#include "schema/table_catalog.h"
#include "schema/upgrades.h"
#include "schema_fixture.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::schema;
using tallora::testing::ExerciseFixture;

namespace {

std::map<QString, QStringList> expectedSchema() {
    std::map<QString, QStringList> out;
    const auto text = readTextFile(QStringLiteral(TALLORA_SOURCE_DIR "/tests/data/schema/expected_schema.tsv"));
    EXPECT_TRUE(text.has_value());
    for (const QString& line : splitLines(text.value_or(""))) {
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        QStringList c = line.split(u'\t');
        if (c[0] == u"I") c[3] = c[3].toLower();
        out[c[1] + u'/' + c[2]] << c.join(u'\t');
    }
    return out;
}

// Every database of an exercise and its company, as far as each maker goes.
void createEverything(ExerciseFixture& f) {
    createExerciseDatabases(f.exercise);
    createTables(f.exercise + db::Llibre, db::Llibre, {"Diari"});
    upgradeJournal(f.exercise + db::Llibre);
    createTables(f.exercise + db::Explota, db::Explota, {"explota", "COMPTES", "GransGrups", "RESULTATS"});
    createTables(f.exercise + db::Saldos, db::Saldos, {"saldos"});
    createTables(f.ctx.programDir + db::Cfg, db::Cfg, {"unitat"});
    f.ctx.Facturacio = true;
    Actualitza_Bases(f.ctx);
    prepareStatementTable(f.ctx);
}

std::map<QString, QStringList> actualSchema(const ExerciseFixture& f) {
    std::map<QString, QStringList> all;
    auto add = [&](const QString& path, const QString& database) {
        all.merge(ExerciseFixture::schemaOf(path, database));
    };
    for (const QString& d : {db::Gest, db::Comptes, db::FrasOut, db::FrasIn, db::Supl, db::Tesorer, db::Llibre,
                             db::Explota, db::Saldos})
        add(f.exercise + d, d);
    add(f.company + db::Cartera, db::Cartera);
    add(f.company + db::Fact, db::Fact);
    add(f.ctx.programDir + db::Cfg, db::Cfg);
    return all;
}

}  // namespace

TEST(Schema, EveryDatabaseReachesTheFinalSchema) {
    ExerciseFixture f;
    createEverything(f);
    const auto expected = expectedSchema();
    const auto actual = actualSchema(f);
    ASSERT_EQ(expected.size(), 32u);
    for (const auto& [table, lines] : expected) {
        ASSERT_TRUE(actual.count(table)) << "missing table " << table.toStdString();
        EXPECT_EQ(actual.at(table), lines) << table.toStdString();
    }
    for (const auto& [table, lines] : actual) EXPECT_TRUE(expected.count(table)) << "extra " << table.toStdString();
}

TEST(Schema, TheCatalogAgreesWithTheExpectedTables) {
    std::size_t fields = 0;
    for (const CatalogTable& t : TableCatalog::builtIn().tables()) fields += t.table.fields.size();
    EXPECT_EQ(TableCatalog::builtIn().tables().size(), 32u);
    EXPECT_EQ(fields, 401u);
}

TEST(Schema, CreationLeavesTheUpgradeFieldsOut) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    store::Database gest = store::Database::open(f.exercise + db::Gest);
    EXPECT_TRUE(store::fieldExists(gest, "Clients", "NIF"));
    for (const char* field : {"fax", "email", "web", "cp", "provincia", "saldo"})
        EXPECT_FALSE(store::fieldExists(gest, "Clients", field)) << field;
    store::Database comptes = store::Database::open(f.exercise + db::Comptes);
    EXPECT_EQ(store::tableNames(comptes), accountTables());
    EXPECT_FALSE(QFile::exists(f.exercise + db::Supl));
    EXPECT_FALSE(QFile::exists(f.exercise + db::Tesorer));
}

TEST(Schema, RunningTheUpgradesTwiceChangesNothingTheSecondTime) {
    ExerciseFixture f;
    createEverything(f);
    const auto schemaBefore = actualSchema(f);
    std::map<QString, std::map<QString, int>> rowsBefore;
    for (const QString& d : {db::Tesorer, db::Comptes, db::Gest}) rowsBefore[d] = ExerciseFixture::rowCounts(f.exercise + d);
    Actualitza_Bases(f.ctx);
    EXPECT_EQ(actualSchema(f), schemaBefore);
    for (const QString& d : {db::Tesorer, db::Comptes, db::Gest})
        EXPECT_EQ(ExerciseFixture::rowCounts(f.exercise + d), rowsBefore[d]) << d.toStdString();
}

TEST(Schema, ADatabaseLackingAnySubsetOfUpgradeFieldsReachesTheFinalSchema) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    // An older exercise that already had some of the later fields, in the order they came.
    {
        store::Database gest = store::Database::open(f.exercise + db::Gest);
        store::addField(gest, "Clients", TableCatalog::builtIn().field(db::Gest, "Clients", "fax"));
        store::addField(gest, "Clients", TableCatalog::builtIn().field(db::Gest, "Clients", "email"));
        store::Database out = store::Database::open(f.exercise + db::FrasOut);
        for (const char* field : {"NIF", "direccio", "poblacio"})
            store::addField(out, "FrasOut", TableCatalog::builtIn().field(db::FrasOut, "FrasOut", field));
    }
    Actualitza_Bases(f.ctx);
    const auto expected = expectedSchema();
    for (const QString& d : {db::Gest, db::FrasOut, db::FrasIn})
        for (const auto& [table, lines] : ExerciseFixture::schemaOf(f.exercise + d, d))
            EXPECT_EQ(lines, expected.at(table)) << table.toStdString();
}

TEST(Schema, WithoutBillingThereIsNoFactDatabaseAndItsStepsFailSilently) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    f.ctx.Facturacio = false;
    EXPECT_NO_THROW(Actualitza_Bases(f.ctx));
    EXPECT_FALSE(anyFileWithStem(f.company, "fact"));
    EXPECT_TRUE(QFile::exists(f.exercise + db::Supl));
}

TEST(Schema, ACompanyWithoutTreasuryGetsTheTreasuryDatabaseAllTheSame) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    f.ctx.Tesoreria = false;
    Actualitza_Bases(f.ctx);
    EXPECT_TRUE(QFile::exists(f.exercise + db::Tesorer));
    EXPECT_TRUE(QFile::exists(f.company + db::Cartera));
    store::Database t = store::Database::open(f.exercise + db::Tesorer);
    for (const char* table : {"entidades", "movimientos", "otros_movimientos", "mayor"})
        EXPECT_TRUE(store::tableExists(t, table)) << table;
}

TEST(Schema, TreasurySetUpSeedsInTheCurrentLanguage) {
    ExerciseFixture f;
    f.ctx.setIdioma("cat");
    createExerciseDatabases(f.exercise);
    ScriptedDialogs dialogs;
    ASSERT_TRUE(Prepara_Tesoreria(f.ctx, &dialogs)) << dialogs.lastText().toStdString();
    EXPECT_TRUE(dialogs.shown().empty());
    store::Database t = store::Database::open(f.exercise + db::Tesorer);
    store::Statement e = t.prepare("select Grup, entidad from entidades");
    ASSERT_TRUE(e.next());
    EXPECT_EQ(e.int32(0), 570);
    EXPECT_EQ(e.text(1), Missatge(f.ctx, 6646));
    EXPECT_FALSE(e.next());
    store::Database c = store::Database::open(f.exercise + db::Comptes);
    store::Statement o = c.prepare("select Grup, NomGrup, NomCompte, Tipus from otras order by Grup");
    QStringList rows;
    while (o.next()) rows << QStringLiteral("%1|%2|%3|%4").arg(o.int32(0)).arg(o.text(1), o.text(2), o.text(3));
    EXPECT_EQ(rows, (QStringList{"170|" + Missatge(f.ctx, 6664) + "|" + Missatge(f.ctx, 6664) + "|P",
                                 "475|" + Missatge(f.ctx, 6665) + "|" + Missatge(f.ctx, 6665) + "|P",
                                 "550|" + Missatge(f.ctx, 6666) + "|" + Missatge(f.ctx, 6666) + "|P"}));
    store::Database g = store::Database::open(f.exercise + db::Gest);
    EXPECT_TRUE(store::fieldExists(g, "Clients", "saldo"));
    EXPECT_TRUE(store::fieldExists(g, "Proveidors", "saldo"));
    // A second pass seeds nothing more.
    ASSERT_TRUE(Prepara_Tesoreria(f.ctx, &dialogs));
    EXPECT_EQ(ExerciseFixture::rowCounts(f.exercise + db::Comptes).at("Otras"), 3);
    EXPECT_EQ(ExerciseFixture::rowCounts(f.exercise + db::Tesorer).at("entidades"), 1);
}

TEST(Schema, TreasurySetUpHoldsPaidAndCollectedAtFalseEveryTime) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    Actualitza_Bases(f.ctx);
    {
        store::Database in = store::Database::open(f.exercise + db::FrasIn);
        in.execute("insert into FrasIN (Ordre, NomProveidor, Periode) values (1, 'x', '1T')");
        store::Database out = store::Database::open(f.exercise + db::FrasOut);
        out.execute("insert into FrasOut (Ordre, NomClient, Cobrada) values (1, 'x', -1)");
    }
    auto flag = [&](const QString& d, const char* sql) {
        store::Database db = store::Database::open(f.exercise + d);
        store::Statement st = db.prepare(sql);
        st.next();
        return st.int32(0);
    };
    EXPECT_EQ(flag(db::FrasIn, "select Pagada from FrasIN"), -1) << "Pagada defaults to True";
    EXPECT_EQ(flag(db::FrasOut, "select Cobrada from FrasOut"), -1);
    ASSERT_TRUE(Prepara_Tesoreria(f.ctx, nullptr));
    EXPECT_EQ(flag(db::FrasIn, "select Pagada from FrasIN"), 0);
    EXPECT_EQ(flag(db::FrasOut, "select Cobrada from FrasOut"), 0);
}

TEST(Schema, TreasurySetUpShowsItsFirstFailureAndStops) {
    ExerciseFixture f;  // no exercise databases: gest.mdb is missing
    ScriptedDialogs dialogs;
    EXPECT_FALSE(Prepara_Tesoreria(f.ctx, &dialogs));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(dialogs.lastText().contains("gest.mdb"));
    EXPECT_FALSE(QFile::exists(f.exercise + db::Comptes)) << "nothing after the failure ran";
}

TEST(Schema, TextFieldsWithoutZeroLengthRefuseAnEmptyText) {
    ExerciseFixture f;
    createEverything(f);
    const struct {
        QString file, table, field;
    } cases[] = {{f.exercise + db::FrasOut, "FrasOut", "NomClient"},
                 {f.exercise + db::FrasIn, "FrasIN", "Periode"},
                 {f.exercise + db::Tesorer, "entidades", "entidad"},
                 {f.exercise + db::Llibre, "Diari", "Debe_Haber"}};
    for (const auto& c : cases) {
        store::Database d = store::Database::open(c.file);
        try {
            d.execute(QStringLiteral("insert into %1 (%2) values ('')").arg(c.table, c.field));
            ADD_FAILURE() << c.field.toStdString() << " took an empty text";
        } catch (const store::StoreError& e) {
            EXPECT_TRUE(e.message().contains(c.table + u'.' + c.field)) << e.message().toStdString();
        }
    }
}
