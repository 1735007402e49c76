#include "context/file_tree.h"
#include "context/working_context.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tallora;

TEST(WorkingContext, StartsInSpanishWithTheComma) {
    WorkingContext ctx;
    EXPECT_EQ(ctx.Idioma, QStringLiteral("esp"));
    EXPECT_EQ(ctx.BaseIdioma, 20000);
    EXPECT_EQ(ctx.Decimal, 44);
    EXPECT_EQ(ctx.Unitat, QDir::homePath());
    EXPECT_TRUE(ctx.programDir.endsWith(QStringLiteral("/tallora5/")));
}

TEST(WorkingContext, SetIdiomaKeepsBaseIdiomaInStep) {
    WorkingContext ctx;
    EXPECT_TRUE(ctx.setIdioma("cat"));
    EXPECT_EQ(ctx.BaseIdioma, 10000);
    EXPECT_FALSE(ctx.setIdioma("fra"));
    EXPECT_EQ(ctx.Idioma, QStringLiteral("cat"));
    EXPECT_EQ(ctx.BaseIdioma, 10000);
}

TEST(WorkingContext, PathRule) {
    QTemporaryDir unit;
    WorkingContext ctx;
    ctx.Unitat = unit.path();
    const QString company = companyDir(ctx.Unitat, "B1234567");
    EXPECT_EQ(company, unit.path() + QStringLiteral("/brenwick/LLibres/B1234567.EMP/"));
    ASSERT_TRUE(QDir().mkpath(company + "2026"));
    ctx.Directori = company;
    EXPECT_EQ(ctx.exerciseFile("2026.DAT"), company + "2026.DAT");
    ctx.Directori = company + "2026/";
    EXPECT_EQ(ctx.exerciseFile("gest.mdb"), company + "2026/gest.mdb");
    EXPECT_EQ(ctx.companyFile("cartera.mdb"), company + "cartera.mdb");
}

TEST(WorkingContext, ExistingFilesAreFoundWithoutRegardToCase) {
    QTemporaryDir dir;
    WorkingContext ctx;
    ctx.Directori = withTrailingSlash(dir.path() + "/2026");
    ASSERT_TRUE(QDir().mkpath(ctx.Directori));
    QFile(ctx.Directori + "GEST.MDB").open(QIODevice::WriteOnly);
    QFile(dir.path() + "/Exercici.LST").open(QIODevice::WriteOnly);
    EXPECT_EQ(ctx.exerciseFile("gest.mdb"), ctx.Directori + "GEST.MDB");
    EXPECT_EQ(ctx.companyFile("exercici.lst"), dir.path() + "/Exercici.LST");
    EXPECT_EQ(ctx.exerciseFile("FrasOUT.mdb"), ctx.Directori + "FrasOUT.mdb") << "new files keep the given name";
}

TEST(FileTree, UnitsOfferTheHomeFolderFirst) {
    const QStringList units = availableUnits();
    ASSERT_FALSE(units.isEmpty());
    EXPECT_EQ(units.first(), QDir::homePath());
    EXPECT_EQ(units.count(QDir::homePath()), 1);
}

TEST(FileTree, Nif8IsTheFirstEightCharacters) {
    EXPECT_EQ(nif8Of("B12345678"), QStringLiteral("B1234567"));
    EXPECT_EQ(nif8Of("--B12345678"), QStringLiteral("--B12345"));
    EXPECT_EQ(nif8Of("123"), QStringLiteral("123"));
}
