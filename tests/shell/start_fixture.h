#pragma once
// A temporary working unit and program folder with a fresh context, and the steps of the
// start (a company saved and opened, an exercise created and opened) for the tests of the
// company list, exercises, settings and the shell's start.
#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/list_files.h"
#include "context/notation.h"
#include "context/working_context.h"
#include "shell/company_list.h"
#include "shell/exercises.h"
#include "store/database.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

// Readable failures for texts.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

namespace tallora::testing {

// Every item of a file in the quoted comma notation; an empty list when the file is missing.
inline std::vector<NotationItem> itemsOf(const QString& path) {
    std::vector<NotationItem> items;
    const auto content = readTextFile(path);
    if (!content) return items;
    NotationReader reader(*content);
    while (auto item = reader.next()) items.push_back(*item);
    return items;
}

// The items of each line of a file, line by line.
inline std::vector<std::vector<NotationItem>> linesOf(const QString& path) {
    std::vector<std::vector<NotationItem>> lines;
    for (const QString& line : splitLines(readTextFile(path).value_or(QString()))) {
        NotationReader reader(line);
        auto& items = lines.emplace_back();
        while (auto item = reader.next()) items.push_back(*item);
    }
    return lines;
}

inline QStringList textsOf(const std::vector<NotationItem>& items) {
    QStringList texts;
    for (const auto& item : items) texts << item.text;
    return texts;
}

// The first column of the first row of `sql` on the database at `path`.
inline std::int64_t scalar(const QString& path, const QString& sql) {
    auto db = store::Database::open(path);
    auto st = db.prepare(sql);
    if (!st.next()) throw std::runtime_error("no row for " + sql.toStdString());
    return st.int64(0);
}

inline QStringList column(const QString& path, const QString& sql) {
    auto db = store::Database::open(path);
    auto st = db.prepare(sql);
    QStringList values;
    while (st.next()) values << st.text(0);
    return values;
}

inline void run(const QString& path, const QString& sql) {
    store::Database::open(path).execute(sql);
}

inline void writeRaw(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << path.toStdString();
    f.write(bytes);
}

class StartFixture : public ::testing::Test {
protected:
    StartFixture() {
        unit = tmp.filePath(QStringLiteral("unit"));
        QDir().mkpath(unit);
        ctx.Unitat = unit;
        ctx.programDir = withTrailingSlash(tmp.filePath(QStringLiteral("program")));
        QDir().mkpath(ctx.programDir);
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
    }

    QString programFile(const QString& name) const { return ctx.programDir + name; }
    QString companyFolder(const QString& nif8) const { return companyDir(unit, nif8); }
    QString exerciseFolder(const QString& nif8, const QString& year) const {
        return companyFolder(nif8) + year + u'/';
    }

    // Verifica_Empresa answered Yes to its confirmation.
    bool addCompany(const QString& nom, const QString& nif, bool tesoreria = false) {
        shell::NewCompany c{nom,
                            QStringLiteral("C/ Major, 1"),
                            QStringLiteral("Reus"),
                            QStringLiteral("43201"),
                            nif,
                            tesoreria};
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        return shell::Verifica_Empresa(ctx, dialogs, unit, c);
    }

    bool openCompany(const QString& nif8) {
        return shell::Obre_Empresa(ctx, dialogs, unit,
                                   shell::companyRow(CompanyEntry{QStringLiteral("x"), nif8}));
    }

    // A company saved and opened, with the chart templates of the program folder made.
    void openNewCompany(const QString& nif = QStringLiteral("B1234567")) {
        ASSERT_TRUE(addCompany(QStringLiteral("Ferreteria Pons"), nif));
        ASSERT_TRUE(openCompany(nif8Of(nif)));
    }

    static shell::NewExercise exercise(const QString& year) {
        shell::NewExercise e;
        e.exercici = year;
        return e;
    }

    // Graba_Exercici answered Yes to its confirmation.
    bool createExercise(const shell::NewExercise& e) {
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        return shell::Graba_Exercici(ctx, dialogs, e);
    }
    bool createExercise(const QString& year) { return createExercise(exercise(year)); }

    bool openExercise(const QString& year) {
        return shell::Obre_Exercici(ctx, dialogs, year, QDate(2026, 3, 2));
    }

    QTemporaryDir tmp;
    QString unit;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

}  // namespace tallora::testing
