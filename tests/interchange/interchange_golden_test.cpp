// Every case under tests/data/interchange/: input.dat imported whole into a fresh exercise
// and exported again gives expected.dat (line 3, the folder it was made from, written as
// "INF <folder>"); a broken input is refused with the stop of expected.txt and changes
// nothing.
#include "../master/master_fixture.h"
#include "context/text_encoding.h"
#include "interchange/interchange_export.h"
#include "interchange/interchange_import.h"

#include <QDir>

namespace tallora::testing {
namespace {

const QDateTime kNow(QDate(2026, 11, 23), QTime(10, 30, 0));

QString casesFolder() {
    return QStringLiteral(TALLORA_SOURCE_DIR "/tests/data/interchange/");
}

QByteArray readBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class InterchangeGolden : public MasterData, public ::testing::WithParamInterface<QString> {
protected:
    void SetUp() override {
        MasterData::SetUp();
        f.ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        f.ctx.EmpresaNIF = QStringLiteral("B1234567");
        f.ctx.Tesoreria = true;
    }

    // The tables an import writes, row by row.
    QStringList tables() const {
        QStringList out;
        for (const auto& [path, table] :
             std::initializer_list<std::pair<QString, const char*>>{{gest(), "Clients"},
                                                                    {gest(), "Proveidors"},
                                                                    {comptes(), "Compres"},
                                                                    {frasOut(), "FrasOut"},
                                                                    {frasIn(), "FrasIN"},
                                                                    {tesorer(), "movimientos"},
                                                                    {cartera(), "cartera"},
                                                                    {fact(), "detalle"}})
            out << QLatin1String(table) + u':' +
                       rows(path, QStringLiteral("select * from %1").arg(QLatin1String(table)))
                           .join(u';');
        return out;
    }

    // Writes what came out beside the test and fails, so that a changed case can be looked at.
    void differs(const QString& name, const QByteArray& actual, const QString& expected) {
        const QString saved =
            QDir::current().filePath(QStringLiteral("interchange.%1.%2").arg(name, expected));
        QFile out(saved);
        if (out.open(QIODevice::WriteOnly)) out.write(actual);
        ADD_FAILURE() << name.toStdString() << "/" << expected.toStdString()
                      << " differs; the actual one is in " << saved.toStdString();
    }
};

QStringList caseNames() {
    return QDir(casesFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

TEST_P(InterchangeGolden, AsExpected) {
    const QString name = GetParam();
    const QString folder = casesFolder() + name + u'/';
    const QString input = folder + QStringLiteral("input.dat");
    const interchange::FileHeader header = interchange::readHeader(f.ctx, input);
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const QStringList before = tables();
    const bool imported =
        interchange::Importa(f.ctx, dialogs, input, header, interchange::presetFor(header));
    if (QFile::exists(folder + QStringLiteral("expected.txt"))) {
        EXPECT_FALSE(imported);
        const QByteArray shownText = dialogs.lastText().toUtf8() + '\n';
        if (shownText != readBytes(folder + QStringLiteral("expected.txt")))
            differs(name, shownText, "expected.txt");
        EXPECT_EQ(tables(), before);
        return;
    }
    ASSERT_TRUE(imported) << dialogs.lastText().toStdString();
    const QString output = f.unit.filePath(QStringLiteral("output.dat"));
    interchange::writeInterchangeFile(f.ctx, output, {}, {}, kNow);
    QByteArray actual = readBytes(output);
    actual.replace(
        encodeWindows1252(QStringLiteral("INF ") + f.ctx.Directori + QStringLiteral("\r\n")),
        "INF <folder>\r\n");
    if (actual != readBytes(folder + QStringLiteral("expected.dat")))
        differs(name, actual, "expected.dat");
}

TEST(InterchangeGoldenCases, ThereAreCasesOfBothKinds) {
    const QStringList names = caseNames();
    EXPECT_TRUE(std::any_of(names.begin(), names.end(), [](const QString& n) {
        return QFile::exists(casesFolder() + n + QStringLiteral("/expected.dat"));
    }));
    EXPECT_TRUE(std::any_of(names.begin(), names.end(), [](const QString& n) {
        return QFile::exists(casesFolder() + n + QStringLiteral("/expected.txt"));
    }));
}

INSTANTIATE_TEST_SUITE_P(Cases, InterchangeGolden, ::testing::ValuesIn(caseNames()),
                         [](const ::testing::TestParamInfo<QString>& info) {
                             return info.param.toStdString();
                         });

}  // namespace
}  // namespace tallora::testing
