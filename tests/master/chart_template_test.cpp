#include "master/chart_template.h"
#include "../shell/start_fixture.h"
#include "schema/creation.h"

#include <map>
#include <set>

using namespace tallora;
using namespace tallora::master;
using namespace tallora::testing;
namespace db = tallora::schema::db;

namespace {

QString chartText(const QString& idioma) {
    return QStringLiteral(TALLORA_SOURCE_DIR "/resources/charts/chart_%1.tsv").arg(idioma);
}

std::string errorOf(const QString& path) {
    try {
        readChartText(path);
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "no error";
}

}  // namespace

TEST(ChartText, BothLanguagesHoldTheSameAccountsInEveryTable) {
    const auto esp = readChartText(chartText("esp"));
    const auto cat = readChartText(chartText("cat"));
    ASSERT_FALSE(esp.empty());
    ASSERT_EQ(esp.size(), cat.size());
    const std::map<QString, std::int64_t> grups{
        {"Compres", 60},        {"Serveis", 62},    {"Tributs", 63}, {"Personal", 64},
        {"Amortitzacions", 68}, {"Inversions", 20}, {"Ingresos", 70}};
    std::set<QString> tables;
    for (std::size_t i = 0; i < esp.size(); ++i) {
        EXPECT_EQ(esp[i].table, cat[i].table) << i;
        EXPECT_EQ(esp[i].grup, cat[i].grup) << i;
        EXPECT_EQ(esp[i].grup, grups.at(esp[i].table)) << esp[i].nomCompte.toStdString();
        // The account number that opens the name is the same in both languages.
        EXPECT_EQ(esp[i].nomCompte.section(u' ', 0, 0), cat[i].nomCompte.section(u' ', 0, 0)) << i;
        for (const auto* a : {&esp[i], &cat[i]}) {
            EXPECT_LE(a->nomCompte.size(), 40) << a->nomCompte.toStdString();
            EXPECT_LE(a->nomGrup.size(), 40) << a->nomGrup.toStdString();
            EXPECT_LE(a->tipus.size(), 40) << a->tipus.toStdString();
            EXPECT_FALSE(a->nomCompte.isEmpty());
        }
        tables.insert(esp[i].table);
    }
    EXPECT_EQ(tables,
              std::set<QString>(schema::accountTables().begin(), schema::accountTables().end()));
}

TEST(ChartText, AMalformedLineNamesTheFileAndTheLine) {
    QTemporaryDir dir;
    const QString path = dir.filePath("chart.tsv");
    writeRaw(path, "# comment\n\nCompres\t60\tCompras\t600 Compras\n");
    const std::string error = errorOf(path);
    EXPECT_NE(error.find(path.toStdString()), std::string::npos) << error;
    EXPECT_NE(error.find("line 3"), std::string::npos) << error;

    writeRaw(path, "Compres\t60\tCompras\t600 Compras\tA\r\nVentas\t70\tVentas\t700 Ventas\tB\r\n");
    EXPECT_NE(errorOf(path).find("line 2"), std::string::npos) << errorOf(path);
    writeRaw(path, "Compres\tsixty\tCompras\t600 Compras\tA\n");
    EXPECT_NE(errorOf(path).find("line 1"), std::string::npos) << errorOf(path);
    EXPECT_NE(errorOf(dir.filePath("missing.tsv")).find("missing.tsv"), std::string::npos);
}

TEST(ChartText, CommentsAndEmptyLinesAreSkipped) {
    QTemporaryDir dir;
    const QString path = dir.filePath("chart.tsv");
    writeRaw(path, "# a\r\n\r\nServeis\t62\tServicios\t621 Arrendamientos\tServicios\r\n#b\n");
    const auto accounts = readChartText(path);
    ASSERT_EQ(accounts.size(), 1u);
    EXPECT_EQ(accounts[0].table, "Serveis");
    EXPECT_EQ(accounts[0].grup, 62);
    EXPECT_EQ(accounts[0].nomGrup, "Servicios");
    EXPECT_EQ(accounts[0].nomCompte, "621 Arrendamientos");
    EXPECT_EQ(accounts[0].tipus, "Servicios");
}

TEST(ChartTemplateName, FollowsTheLanguage) {
    EXPECT_EQ(chartTemplateName("cat"), "Ctes_cat.mdb");
    EXPECT_EQ(chartTemplateName("esp"), "Ctes_esp.mdb");
}

namespace {

class ChartTemplates : public StartFixture {
protected:
    QString exercise() const { return tmp.filePath("exercise/"); }
};

}  // namespace

TEST_F(ChartTemplates, TheTemplatesAreMadeOnceAndAnExistingChartIsKept) {
    EXPECT_EQ(prepareTemplates(ctx), QString());
    const QString comptes = programFile(db::Comptes);
    EXPECT_EQ(scalar(comptes,
                     "select count(*) from Compres where NomCompte = '600 Compras de mercaderías'"),
              1);
    run(programFile(templates::CtesCat), "delete from Compres");
    run(comptes, "delete from Serveis");
    EXPECT_EQ(prepareTemplates(ctx), QString());
    EXPECT_EQ(scalar(programFile(templates::CtesCat), "select count(*) from Compres"), 0);
    EXPECT_EQ(scalar(comptes, "select count(*) from Serveis"), 0);
}

TEST_F(ChartTemplates, UnreadableChartTextsAreReported) {
    ctx.resourcesDir = tmp.filePath("no-resources/");
    const QString error = prepareTemplates(ctx);
    EXPECT_TRUE(error.contains("chart_")) << error.toStdString();
    EXPECT_FALSE(QFileInfo::exists(programFile(templates::CtesEsp)));
    EXPECT_FALSE(QFileInfo::exists(programFile(db::Comptes)));
    EXPECT_TRUE(QFileInfo::exists(programFile(db::Tesorer)));
}

TEST_F(ChartTemplates, ATemplateHoldsItsAccountsInOrder) {
    const QString path = programFile("t.mdb");
    writeRaw(path, "not a database");
    makeChartTemplate(path, {{"Ingresos", 70, "Ventas", "700 Ventas", "Ingresos"},
                             {"Compres", 60, "Compras", "600 Compras", "Aprovisionamientos"},
                             {"Ingresos", 70, "Ventas", "705 Servicios", "Ingresos"}});
    EXPECT_EQ(column(path, "select Compte || ' ' || NomCompte from Ingresos order by Compte"),
              (QStringList{"1 700 Ventas", "2 705 Servicios"}));
    EXPECT_EQ(column(path, "select NomCompte from Compres"), QStringList{"600 Compras"});
    EXPECT_EQ(scalar(path, "select count(*) from Inversions"), 0);
}

TEST_F(ChartTemplates, CopiaPlanBaseNumbersTheAccountsAnewInTheTemplateOrder) {
    makeChartTemplate(programFile(db::Comptes),
                      {{"Serveis", 62, "Servicios", "629 Otros", "S"},
                       {"Serveis", 62, "Servicios", "621 Arrendamientos", "S"},
                       {"Inversions", 20, "Inmovilizado", "216 Mobiliario", "I"}});
    run(programFile(db::Comptes), "update Serveis set Saldo = 10000");
    QDir().mkpath(exercise());
    schema::createTables(exercise() + db::Comptes, db::Comptes, schema::accountTables());
    CopiaPlanBase(ctx.programDir, exercise());
    EXPECT_EQ(
        column(exercise() + db::Comptes,
               "select Compte || '|' || Grup || '|' || NomGrup || '|' || NomCompte || '|' || "
               "Tipus || '|' || Saldo from Serveis order by Compte"),
        (QStringList{"1|62|Servicios|629 Otros|S|0", "2|62|Servicios|621 Arrendamientos|S|0"}));
    EXPECT_EQ(column(exercise() + db::Comptes, "select NomCompte from Inversions"),
              QStringList{"216 Mobiliario"});
    EXPECT_FALSE(QFileInfo::exists(exercise() + db::Tesorer));
}

TEST_F(ChartTemplates, CopiaPlanBaseAddsTheTreasuryAccountsOnlyToAnExistingDatabase) {
    ASSERT_EQ(prepareTemplates(ctx), QString());
    run(programFile(db::Tesorer),
        "insert into entidades (Grup, entidad, ccc) values (572, 'Banc', '0049')");
    QDir().mkpath(exercise());
    schema::createTables(exercise() + db::Comptes, db::Comptes, schema::accountTables());
    CopiaPlanBase(ctx.programDir, exercise());
    EXPECT_FALSE(QFileInfo::exists(exercise() + db::Tesorer));
    schema::createTables(exercise() + db::Tesorer, db::Tesorer, {"entidades"});
    CopiaPlanBase(ctx.programDir, exercise());
    EXPECT_EQ(column(exercise() + db::Tesorer,
                     "select Grup || '|' || entidad || '|' || ccc from entidades"),
              QStringList{"572|Banc|0049"});
}

TEST_F(ChartTemplates, WithoutATemplateNothingIsCopied) {
    QDir().mkpath(exercise());
    schema::createTables(exercise() + db::Comptes, db::Comptes, schema::accountTables());
    CopiaPlanBase(ctx.programDir, exercise());
    for (const QString& table : schema::accountTables())
        EXPECT_EQ(scalar(exercise() + db::Comptes, "select count(*) from " + table), 0);
}

TEST_F(ChartTemplates, SwappingTheTemplateFollowsTheLanguage) {
    ASSERT_EQ(prepareTemplates(ctx), QString());
    swapChartTemplate(ctx.programDir, "cat");
    EXPECT_EQ(scalar(programFile(db::Comptes),
                     "select count(*) from Compres where NomCompte = '600 Compres de mercaderies'"),
              1);
    swapChartTemplate(ctx.programDir, "esp");
    EXPECT_EQ(scalar(programFile(db::Comptes),
                     "select count(*) from Compres where NomCompte = '600 Compras de mercaderías'"),
              1);
    ASSERT_TRUE(QFile::remove(programFile(templates::CtesCat)));
    swapChartTemplate(ctx.programDir, "cat");
    EXPECT_FALSE(QFileInfo::exists(programFile(db::Comptes)));
}
