#pragma once
// An exercise in a temporary unit for report tests: gest.mdb with its final schema, rows
// loaded from tab-separated files, the PDF text as poppler's pdftotext reads it.
#include "context/file_tree.h"
#include "context/notation.h"
#include "context/working_context.h"
#include "report/report_job.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <stdexcept>

namespace tallora::testing {

// Fails the test that needs it, whichever framework runs it.
inline void require(bool condition, const QString& what) {
    if (!condition) throw std::runtime_error(what.toStdString());
}

inline QString sourcePath(const QString& relative) {
    return QStringLiteral(TALLORA_SOURCE_DIR "/") + relative;
}

class ReportFixture {
public:
    ReportFixture() {
        ctx.Unitat = unit.path();
        ctx.Directori =
            companyDir(ctx.Unitat, QStringLiteral("B1234567")) + QStringLiteral("2026/");
        QDir().mkpath(ctx.Directori);
        ctx.Exercici = QStringLiteral("2026");
        ctx.Moneda = QStringLiteral("Euros");
        ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        ctx.programDir = unit.filePath(QStringLiteral("program/"));
        QDir().mkpath(ctx.programDir);
        ctx.resourcesDir = sourcePath(QStringLiteral("resources/"));
        schema::createExerciseDatabases(ctx.Directori);
        schema::Actualitza_Bases(ctx);
    }

    QString gest() const { return ctx.exerciseFile(schema::db::Gest); }
    QString file(const QString& name) const { return unit.filePath(name); }

    // Inserts the rows of a tab-separated file whose first line names the fields.
    static int loadRows(const QString& database, const QString& table, const QString& tsvPath) {
        const auto text = readTextFile(tsvPath);
        require(text.has_value(), tsvPath + QStringLiteral(" cannot be read"));
        const QStringList lines = splitLines(*text);
        if (lines.isEmpty()) return 0;
        const QStringList fields = lines.first().split(u'\t');
        QStringList marks;
        for (qsizetype i = 0; i < fields.size(); ++i) marks << QStringLiteral("?");
        store::Database d = store::Database::open(database);
        store::Transaction t(d);
        store::Statement st = d.prepare(QStringLiteral("insert into %1 (%2) values (%3)")
                                            .arg(table, fields.join(u','), marks.join(u',')));
        int count = 0;
        for (qsizetype l = 1; l < lines.size(); ++l) {
            if (lines[l].isEmpty()) continue;
            const QStringList values = lines[l].split(u'\t');
            st.reset();
            for (qsizetype i = 0; i < fields.size(); ++i)
                st.bind(static_cast<int>(i + 1), values.value(i));
            st.execute();
            ++count;
        }
        t.commit();
        return count;
    }

    QTemporaryDir unit;
    WorkingContext ctx;
};

// A data file of movements for the engine's tests: `rows` rows with id 1 to rows, grup "A"
// for ids 1 to 50, "B" to 100 and "C" after, import id × 1,25 (Currency), quantitat id × 1,5,
// data 2026-03-01 plus id days.
inline QString makeMoviments(const QString& path, int rows) {
    store::Database d = store::Database::open(path, store::Database::Mode::CreateIfMissing);
    d.execute(
        QStringLiteral("create table Moviments (id LONG, grup TEXT(20), concepte TEXT(200), "
                       "import CURRENCY, quantitat DOUBLE, data DATETIME)"));
    store::Transaction t(d);
    store::Statement st =
        d.prepare(QStringLiteral("insert into Moviments values (?, ?, ?, ?, ?, ?)"));
    for (int id = 1; id <= rows; ++id) {
        st.reset();
        st.bind(1, id);
        st.bind(2, id <= 50 ? "A" : id <= 100 ? "B" : "C");
        st.bind(3, QStringLiteral("Movimiento %1").arg(id));
        st.bind(4, Money::fromUnits(id * 12500LL));
        st.bind(5, id * 1.5);
        st.bind(6, QDate(2026, 3, 1).addDays(id));
        st.execute();
    }
    t.commit();
    return path;
}

// A job of the engine's test layout `layout` (tests/data/reports/engine/) on `rows` movements
// written to `data`, titled "Movimientos".
inline report::ReportJob movimentsJob(const char* layout, const QString& data, int rows) {
    report::ReportJob j;
    j.ReportFileName =
        sourcePath(QStringLiteral("tests/data/reports/engine/%1").arg(QLatin1String(layout)));
    j.DataFiles[0] = makeMoviments(data, rows);
    j.Formulas[0] = QStringLiteral("titol= 'Movimientos'");
    j.Formulas[1] = QStringLiteral("lbl_pagina= 'Página'");
    return j;
}

// The formulas a job was given, in their order.
inline QStringList formulasOf(const report::ReportJob& job) {
    QStringList out;
    for (const QString& text : job.Formulas)
        if (!text.isEmpty()) out << text;
    return out;
}

// The text of a PDF, page by page, as `pdftotext -layout` gives it.
inline QStringList pdfPages(const QString& pdf) {
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    require(!tool.isEmpty(), QStringLiteral("pdftotext (poppler-utils) is needed"));
    QProcess p;
    p.start(tool, {QStringLiteral("-layout"), QStringLiteral("-enc"), QStringLiteral("UTF-8"), pdf,
                   QStringLiteral("-")});
    require(
        p.waitForFinished(60000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0,
        QStringLiteral("pdftotext %1: %2").arg(pdf, QString::fromUtf8(p.readAllStandardError())));
    QStringList pages = QString::fromUtf8(p.readAllStandardOutput()).split(u'\f');
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty()) pages.removeLast();
    return pages;
}

// A workbook as tests/report/dump_xlsx.py reads it with openpyxl: the JSON by default, its
// text form with `text`.
inline QByteArray readXlsx(const QString& path, bool text = false) {
    QStringList arguments{sourcePath(QStringLiteral("tests/report/dump_xlsx.py")), path};
    if (text) arguments << QStringLiteral("--text");
    QProcess p;
    p.start(QStringLiteral("/usr/bin/python3"), arguments);
    require(p.waitForFinished(60000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0,
            QStringLiteral("dump_xlsx.py %1: %2")
                .arg(path, QString::fromUtf8(p.readAllStandardError())));
    return p.readAllStandardOutput();
}

}  // namespace tallora::testing
