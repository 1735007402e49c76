#pragma once
// Runs tallora5-cli in-process on a temporary unit and program folder, and keeps what it
// printed and the exit code.
#include "cli/cli.h"
#include "context/file_tree.h"
#include "context/messages.h"
#include "context/working_context.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QTextStream>

#include <gtest/gtest.h>

#include <ostream>

// Readable failures for texts.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

namespace tallora::clitest {

struct Result {
    int code = -1;
    QString out;
    QString err;
};

inline std::ostream& operator<<(std::ostream& os, const Result& r) {
    return os << "exit " << r.code << "\nstdout: " << r.out.toStdString()
              << "\nstderr: " << r.err.toStdString();
}

class CliFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(unit.isValid());
        ASSERT_TRUE(program.isValid());
    }

    // The command with the temporary unit and program folder given first.
    Result run(const QStringList& args) {
        return runRaw(QStringList{"--unit", unit.path(), "--program-dir", program.path()} + args);
    }
    Result runRaw(const QStringList& args) {
        Result r;
        QTextStream out(&r.out);
        QTextStream err(&r.err);
        r.code = cli::runCli(args, out, err);
        out.flush();
        err.flush();
        return r;
    }

    QString msg(int n) const { return Missatge(ctx, n); }
    QString llibres() const { return llibresDir(unit.path()); }
    QString company(const QString& nif8) const { return companyDir(unit.path(), nif8); }

    void createCompany(const QString& name, const QString& nif, bool treasury = false) {
        QStringList args{"--yes", "company-create", "--name", name, "--nif", nif};
        if (treasury) args << "--treasury";
        const Result r = run(args);
        ASSERT_EQ(r.code, 0) << r;
    }
    void createExercise(const QString& nif8, const QString& year, const QStringList& more = {}) {
        const Result r = run(QStringList{"--yes", "exercise-create", nif8, "--year", year} + more);
        ASSERT_EQ(r.code, 0) << r;
    }
    // Every file under a folder, relative to it.
    static QStringList filesUnder(const QString& folder) {
        QStringList found;
        QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) found << QDir(folder).relativeFilePath(it.next());
        found.sort();
        return found;
    }

    QTemporaryDir unit;
    QTemporaryDir program;
    WorkingContext ctx;  // Spanish, as a fresh program folder starts
};

}  // namespace tallora::clitest
