#include "context/file_tree.h"
#include "context/list_files.h"
#include "context/notation.h"
#include "context/working_context.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tallora;

namespace {

void writeRaw(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QString readRaw(const QString& path) { return readTextFile(path).value_or("<missing>"); }

}  // namespace

class ListFiles : public ::testing::Test {
protected:
    QString path(const QString& name) const { return dir.filePath(name); }
    QTemporaryDir dir;
};

TEST_F(ListFiles, EmpresesLstIsNameAndNif8PerLine) {
    const QString p = path(files::EmpresesLst);
    ASSERT_TRUE(appendEmpresesLst(p, {"Bar Pepe, S.L.", "B1234567"}));
    ASSERT_TRUE(appendEmpresesLst(p, {"Ñandú", "-1234567"}));
    EXPECT_EQ(readRaw(p), QStringLiteral("\"Bar Pepe, S.L.\",\"B1234567\"\r\n\"Ñandú\",\"-1234567\"\r\n"));
    const std::vector<CompanyEntry> expected{{"Bar Pepe, S.L.", "B1234567"}, {"Ñandú", "-1234567"}};
    EXPECT_EQ(readEmpresesLst(p), expected);
    ASSERT_TRUE(writeEmpresesLst(p, {expected[1]}));
    EXPECT_EQ(readEmpresesLst(p), std::vector<CompanyEntry>{expected[1]});
}

TEST_F(ListFiles, EmpresesLineRule) {
    EXPECT_EQ(parseEmpresesLine("\"Bar Pepe\",\"B1234567\""), (CompanyEntry{"Bar Pepe", "B1234567"}));
    // All quotes go, also those inside the name.
    EXPECT_EQ(parseEmpresesLine("\"Bar \"\"Sol\"\"\",\"B1234567\""), (CompanyEntry{"Bar Sol", "B1234567"}));
    // Shorter than nine characters: the name is empty.
    EXPECT_EQ(parseEmpresesLine("\"1234\""), (CompanyEntry{"", "1234"}));
    EXPECT_EQ(parseEmpresesLine("12345678"), (CompanyEntry{"", "12345678"}));
    EXPECT_EQ(parseEmpresesLine(",12345678"), (CompanyEntry{"", "12345678"}));
}

TEST_F(ListFiles, EmpresesLstMissingOrDamaged) {
    EXPECT_TRUE(readEmpresesLst(path("none.lst")).empty());
    const QString p = path(files::EmpresesLst);
    writeRaw(p, "\"Bar Pepe\",\"B1234567\"\r\n\r\n\"Trunc");
    const auto entries = readEmpresesLst(p);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[1], (CompanyEntry{"", "Trunc"}));
}

TEST_F(ListFiles, CompanyDataIsFiveQuotedLines) {
    const QString p = path("B1234567.Dat");
    const CompanyData d{"Bar Pepe, S.L.", "C/ Mayor, 1", "Lleida", "25001", "B12345678"};
    ASSERT_TRUE(writeCompanyData(p, d));
    EXPECT_EQ(readRaw(p), QStringLiteral("\"Bar Pepe, S.L.\"\r\n\"C/ Mayor, 1\"\r\n\"Lleida\"\r\n\"25001\"\r\n"
                                         "\"B12345678\"\r\n"));
    EXPECT_EQ(readCompanyData(p), d);
    EXPECT_FALSE(readCompanyData(path("none.Dat")).has_value());
}

TEST_F(ListFiles, CompanyDataTruncatedOrBroken) {
    const QString p = path("B1234567.Dat");
    writeRaw(p, "\"Bar Pepe\"\r\n\"C/ Mayor");
    const auto d = readCompanyData(p);
    ASSERT_TRUE(d);
    EXPECT_EQ(d->nom, QStringLiteral("Bar Pepe"));
    EXPECT_EQ(d->domicili, QStringLiteral("C/ Mayor"));
    EXPECT_EQ(d->poblacio, QString());
    EXPECT_EQ(d->nif, QString());
    writeRaw(p, "\"Bar Pepe\r\n\"C/ Mayor\"\r\n\"Lleida\"\r\n");
    EXPECT_TRUE(readCompanyData(p).has_value());
}

TEST_F(ListFiles, ExerciciLstPairsOfYearAndCurrency) {
    const QString p = path(files::ExerciciLst);
    ASSERT_TRUE(appendExerciciLst(p, {"2025", "Euros"}));
    ASSERT_TRUE(appendExerciciLst(p, {"2026", "Euros"}));
    EXPECT_EQ(readRaw(p), QStringLiteral("\"2025\",\"Euros\"\r\n\"2026\",\"Euros\"\r\n"));
    const std::vector<ExerciseEntry> both{{"2025", "Euros"}, {"2026", "Euros"}};
    EXPECT_EQ(readExerciciLst(p), both);
    ASSERT_TRUE(writeExerciciLst(p, {}));
    EXPECT_EQ(readRaw(p), QString());
    EXPECT_TRUE(readExerciciLst(p).empty());
    EXPECT_TRUE(readExerciciLst(path("none.lst")).empty());
}

TEST_F(ListFiles, ExerciciLstFoundWithoutRegardToCase) {
    writeRaw(path("EXERCICI.LST"), "\"2024\",\"Ptes.\"\r\n\"2025\"");
    const auto entries = readExerciciLst(findFileNoCase(dir.path(), files::ExerciciLst));
    const std::vector<ExerciseEntry> expected{{"2024", "Ptes."}, {"2025", ""}};
    EXPECT_EQ(entries, expected);
}

TEST_F(ListFiles, ExerciseParamsThreeLines) {
    const QString p = path("2026.DAT");
    ExerciseParams params{"2026", "Euros", 1, {"21", "10", "4"}, {"5,2", "1,4", "0,5"}, "FACTURES",
                          {"21", "10", "4", "0,00"}};
    ASSERT_TRUE(writeExerciseParams(p, params));
    EXPECT_EQ(readRaw(p), QStringLiteral("\"2026\",\"Euros\",1,\"21\",\"10\",\"4\"\r\n"
                                         "\"5,2\",\"1,4\",\"0,5\",\"FACTURES\"\r\n"
                                         "\"21\",\"10\",\"4\",\"0,00\"\r\n"));
    EXPECT_EQ(readExerciseParams(p), params);
    EXPECT_FALSE(readExerciseParams(path("1999.DAT")).has_value());
}

TEST_F(ListFiles, ApplyingParamsFillsTheContext) {
    WorkingContext ctx;
    const ExerciseParams params{"2026", "Euros", 1, {"21", "10,5", "4"}, {"5,2", "1.4", "0,5"}, "TICKETS",
                                {"21", "10", "4", "0"}};
    EXPECT_TRUE(applyExerciseParams(ctx, params).empty());
    EXPECT_EQ(ctx.Exercici, QStringLiteral("2026"));
    EXPECT_EQ(ctx.Moneda, QStringLiteral("Euros"));
    EXPECT_EQ(ctx.ModeExercici, QStringLiteral("TICKETS"));
    EXPECT_DOUBLE_EQ(ctx.TipusIVA[1], 10.5);
    EXPECT_DOUBLE_EQ(ctx.TipusRE[0], 5.2);
    EXPECT_DOUBLE_EQ(ctx.TipusRE[1], 1.4);
    EXPECT_EQ(ctx.TipusIVAText[1], QStringLiteral("10.5"));
    EXPECT_EQ(ctx.TipusREText[0], QStringLiteral("5.2"));
    EXPECT_EQ(ctx.TipusIVAsText[3], QStringLiteral("0"));
}

TEST_F(ListFiles, ANonNumericRateIsAnErrorValueAndReadingGoesOn) {
    const QString p = path("2026.DAT");
    writeRaw(p, "\"2026\",\"Euros\",1,\"21\",\"diez\",\"4\"\r\n\"5,2\",\"1,4\",\"0,5\",\"FACTURES\"\r\n"
                "\"21\",\"10\",\"x\",\"0\"\r\n");
    const auto params = readExerciseParams(p);
    ASSERT_TRUE(params);
    EXPECT_EQ(params->iva[1], QStringLiteral("diez"));
    EXPECT_EQ(params->modeExercici, QStringLiteral("FACTURES"));
    WorkingContext ctx;
    ctx.TipusIVA[1] = 99;
    EXPECT_EQ(applyExerciseParams(ctx, *params), (std::vector<int>{2, 9}));
    EXPECT_DOUBLE_EQ(ctx.TipusIVA[1], 0.0);
    EXPECT_DOUBLE_EQ(ctx.TipusIVA[2], 4.0);
    EXPECT_DOUBLE_EQ(ctx.TipusIVAs[3], 0.0);
    EXPECT_DOUBLE_EQ(ctx.TipusRE[0], 5.2);
}

TEST_F(ListFiles, ATruncatedParamsFileReadsWhatItHas) {
    const QString p = path("2026.DAT");
    writeRaw(p, "\"2026\",\"Euros\",1,\"21\"");
    const auto params = readExerciseParams(p);
    ASSERT_TRUE(params);
    EXPECT_EQ(params->exercici, QStringLiteral("2026"));
    EXPECT_EQ(params->tipusLlibre, 1);
    EXPECT_EQ(params->iva[0], QStringLiteral("21"));
    EXPECT_EQ(params->iva[1], QString());
    EXPECT_EQ(params->modeExercici, QString());
    WorkingContext ctx;
    EXPECT_EQ(applyExerciseParams(ctx, *params).size(), 9u);
}

TEST_F(ListFiles, AKindThatIsNotANumberCountsAsShop) {
    const QString p = path("2026.DAT");
    writeRaw(p, "\"2026\",\"Euros\",\"x\",\"21\"");
    EXPECT_EQ(readExerciseParams(p)->tipusLlibre, 0);
    EXPECT_EQ(readExerciseParams(p)->iva[0], QStringLiteral("21"));
}

TEST_F(ListFiles, RateText) {
    EXPECT_EQ(rateValue("21,00"), 21.0);
    EXPECT_EQ(rateValue("0,5"), 0.5);
    EXPECT_EQ(rateValue("4"), 4.0);
    EXPECT_EQ(rateValue(""), std::nullopt);
    EXPECT_EQ(rateValue("4%"), std::nullopt);
    EXPECT_EQ(rateSqlText(21.0), QStringLiteral("21"));
    EXPECT_EQ(rateSqlText(5.2), QStringLiteral("5.2"));
}

TEST_F(ListFiles, OptionFlagMissingIsFalseAndWritten) {
    const QString p = path(files::TesorerCfg);
    EXPECT_FALSE(readOptionFlag(p));
    EXPECT_EQ(readRaw(p), QStringLiteral("#FALSE#\r\n"));
    ASSERT_TRUE(writeOptionFlag(p, true));
    EXPECT_EQ(readRaw(p), QStringLiteral("#TRUE#\r\n"));
    EXPECT_TRUE(readOptionFlag(p));
}

TEST_F(ListFiles, FactModDefaultHasAnEmptyTextOnItsSecondLine) {
    const QString p = path(files::FactModCfg);
    EXPECT_FALSE(readOptionFlag(p, true));
    EXPECT_EQ(readRaw(p), QStringLiteral("#FALSE#\r\n\"\"\r\n"));
    writeRaw(p, "#TRUE#\r\n\"Factura1\"\r\n2\r\n");
    EXPECT_TRUE(readOptionFlag(p, true));
}

TEST_F(ListFiles, OptionFlagUnreadableCountsAsFalse) {
    const QString p = path(files::IntraCfg);
    writeRaw(p, "\"maybe\"\r\n");
    EXPECT_FALSE(readOptionFlag(p));
    writeRaw(p, "");
    EXPECT_FALSE(readOptionFlag(p));
    EXPECT_EQ(readRaw(p), QString()) << "an existing file is not rewritten";
}

TEST_F(ListFiles, CompanyFlagsReadAllThreeAndWriteTheMissing) {
    writeRaw(path("TESORER.CFG"), "#TRUE#\r\n");
    const CompanyFlags flags = readCompanyFlags(dir.path());
    EXPECT_TRUE(flags.tesoreria);
    EXPECT_FALSE(flags.facturacio);
    EXPECT_FALSE(flags.intra);
    EXPECT_TRUE(QFile::exists(path(files::FactModCfg)));
    EXPECT_TRUE(QFile::exists(path(files::IntraCfg)));
    EXPECT_FALSE(QFile::exists(path(files::TesorerCfg))) << "the existing spelling is kept";
}
