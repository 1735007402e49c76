#include "context/dialogs.h"
#include "context/messages.h"
#include "schema/creation.h"
#include "schema/maintenance.h"
#include "schema/upgrades.h"
#include "schema_fixture.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::schema;
using tallora::testing::ExerciseFixture;

namespace {

void touch(const QString& path, const QByteArray& bytes = "x") {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QStringList filesIn(const QString& folder) { return QDir(folder).entryList(QDir::Files, QDir::Name); }

void addCustomers(const QString& gest, int count) {
    store::Database d = store::Database::open(gest);
    store::Transaction tx(d);
    store::Statement st = d.prepare("insert into Clients (nom, direccio) values (?, ?)");
    for (int i = 0; i < count; ++i) {
        st.reset();
        st.bind(1, QStringLiteral("Cliente %1").arg(i)).bind(2, QString(40, QChar(u'a' + i % 26))).execute();
    }
    tx.commit();
}

int customers(const QString& gest) {
    store::Database d = store::Database::open(gest);
    store::Statement st = d.prepare("select count(*) from Clients");
    st.next();
    return st.int32(0);
}

}  // namespace

TEST(CopiaSeguretat, FirstOpeningMakesTheVersionCopyThenTheDayCopy) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    touch(f.company + "B1234567.Dat");
    const QDate wednesday(2026, 11, 18);
    Copia_Seguretat(f.company, "2026", wednesday);
    const QString first = f.company + "bkp/copia_v4/2026";
    EXPECT_EQ(filesIn(first), filesIn(f.exercise));
    EXPECT_TRUE(QFile::exists(f.company + "bkp/copia_v4/B1234567.Dat")) << "company files one folder up";
    EXPECT_FALSE(QDir(f.company + "bkp/3").exists());

    Copia_Seguretat(f.company, "2026", wednesday);
    EXPECT_EQ(filesIn(f.company + "bkp/3/2026"), filesIn(f.exercise));
    EXPECT_TRUE(QFile::exists(f.company + "bkp/3/B1234567.Dat"));

    // The same weekday again: the old copy is cleared first, the version copy stays.
    touch(f.company + "bkp/3/2026/stale.tmp");
    touch(f.company + "bkp/3/old.cfg");
    addCustomers(f.exercise + "gest.mdb", 3);
    Copia_Seguretat(f.company, "2026", wednesday);
    EXPECT_FALSE(QFile::exists(f.company + "bkp/3/2026/stale.tmp"));
    EXPECT_FALSE(QFile::exists(f.company + "bkp/3/old.cfg"));
    EXPECT_EQ(customers(f.company + "bkp/3/2026/gest.mdb"), 3);
    EXPECT_EQ(customers(first + "/gest.mdb"), 0) << "the version copy is never renewed";

    Copia_Seguretat(f.company, "2026", wednesday.addDays(1));
    EXPECT_EQ(customers(f.company + "bkp/4/2026/gest.mdb"), 3);
}

TEST(CompactaBases, EveryDatabaseIsCompactedInPlace) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    Actualitza_Bases(f.ctx);
    addCustomers(f.exercise + "gest.mdb", 500);
    {
        store::Database d = store::Database::open(f.exercise + "gest.mdb");
        d.execute("delete from Clients where client > 10");
    }
    const qint64 before = QFileInfo(f.exercise + "gest.mdb").size();
    touch(f.exercise + "FrasIN.mdN", "left over from a crash");
    ScriptedDialogs dialogs;
    ASSERT_TRUE(Compacta_Bases(f.ctx, dialogs));
    EXPECT_EQ(dialogs.lastText(), Missatge(f.ctx, 6611));
    EXPECT_LT(QFileInfo(f.exercise + "gest.mdb").size(), before);
    EXPECT_EQ(customers(f.exercise + "gest.mdb"), 10);
    for (const QString& folder : {f.exercise, f.company})
        for (const QString& name : filesIn(folder)) EXPECT_FALSE(name.endsWith(u'N')) << name.toStdString();
    EXPECT_TRUE(QFile::exists(f.company + "cartera.mdb"));
    store::Database cartera = store::Database::open(f.company + "cartera.mdb");
    EXPECT_TRUE(store::tableExists(cartera, "cartera"));
}

TEST(ReparaBases, SoundFilesOnlyEndWithTheFinalMessage) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    Actualitza_Bases(f.ctx);
    const QStringList before = filesIn(f.exercise);
    ScriptedDialogs dialogs;
    ASSERT_TRUE(Repara_Bases(f.ctx, dialogs));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.lastText(), QStringLiteral("PROCESO FINALIZADO"));
    EXPECT_EQ(filesIn(f.exercise), before);
}

TEST(ReparaBases, ADamagedFileIsReportedRebuiltAndKept) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    const QString gest = f.exercise + "gest.mdb";
    addCustomers(gest, 2000);
    {
        // A few bytes overwritten in the middle of the file.
        QFile file(gest);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.seek(file.size() / 2);
        file.write(QByteArray(64, '\xFF'));
    }
    ScriptedDialogs dialogs;
    ASSERT_TRUE(Repara_Bases(f.ctx, dialogs));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_TRUE(dialogs.shown()[0].text.startsWith(Missatge(f.ctx, 130)));
    EXPECT_TRUE(dialogs.shown()[0].text.contains(gest));
    // Nothing is deleted, but the damaged file leaves the exercise folder for the backups',
    // so that no later safety copy of the exercise carries it again.
    EXPECT_TRUE(QDir(f.exercise).entryList({"*damaged*"}, QDir::Files).isEmpty());
    const QString damaged = f.company + "bkp/damaged/2026/";
    EXPECT_EQ(damagedCopiesFolder(f.ctx, true), damaged);
    const QStringList kept = QDir(damaged).entryList({"gest.mdb.damaged-*"}, QDir::Files);
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_TRUE(dialogs.shown()[0].text.contains(damaged + kept[0]));
    const int recovered = customers(gest);
    EXPECT_GT(recovered, 0);
    EXPECT_LE(recovered, 2000);
    // The notice says how many rows came through, and that the rest were lost.
    EXPECT_TRUE(
        dialogs.shown()[0].text.contains(QStringLiteral("Filas recuperadas: %1").arg(recovered)))
        << dialogs.shown()[0].text.toStdString();
    if (recovered < 2000) {
        EXPECT_TRUE(dialogs.shown()[0].text.contains(QStringLiteral("se han perdido")));
    }
    // A later opening's safety copy holds only the repaired file.
    Copia_Seguretat(f.company, "2026", QDate(2026, 11, 18));
    EXPECT_TRUE(
        QDir(f.company + "bkp/copia_v4/2026").entryList({"*damaged*"}, QDir::Files).isEmpty());
    // The exercise keeps opening.
    EXPECT_NO_THROW(Actualitza_Bases(f.ctx));
    store::Database d = store::Database::open(gest);
    EXPECT_TRUE(store::fieldExists(d, "Clients", "provincia"));
}

TEST(ReparaBases, AnUnreadableFileStopsTheRunAndStaysAsItWas) {
    ExerciseFixture f;
    createExerciseDatabases(f.exercise);
    const QByteArray garbage(8192, 'z');
    touch(f.exercise + "Comptes.mdb", garbage);
    ScriptedDialogs dialogs;
    EXPECT_FALSE(Repara_Bases(f.ctx, dialogs));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_TRUE(dialogs.lastText().startsWith(Missatge(f.ctx, 130)));
    QFile file(f.exercise + "Comptes.mdb");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), garbage);
}

TEST(EsborraCarpeta, RemovesAFolderWithEverythingInIt) {
    QTemporaryDir dir;
    const QString root = dir.filePath("2025");
    QDir().mkpath(root + "/sub/deeper");
    touch(root + "/gest.mdb");
    touch(root + "/.hidden");
    touch(root + "/sub/deeper/file.txt");
    QFile::setPermissions(root + "/gest.mdb", QFile::ReadOwner);
    EXPECT_EQ(Esborra_Carpeta("  " + root + "/  "), 0);
    EXPECT_FALSE(QDir(root).exists());
}

TEST(EsborraCarpeta, RefusesWhatIsNotAFolder) {
    QTemporaryDir dir;
    touch(dir.filePath("file"));
    EXPECT_NE(Esborra_Carpeta(""), 0);
    EXPECT_NE(Esborra_Carpeta("   "), 0);
    EXPECT_NE(Esborra_Carpeta("relative"), 0);
    EXPECT_NE(Esborra_Carpeta(dir.filePath("file")), 0);
    EXPECT_NE(Esborra_Carpeta(dir.filePath("missing")), 0);
    EXPECT_TRUE(QFile::exists(dir.filePath("file")));
}
