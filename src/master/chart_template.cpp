#include "chart_template.h"

#include "context/file_tree.h"
#include "context/notation.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"
#include "store/store_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace tallora::master {
namespace {

using store::Database;

const QStringList& tesorerTables() {
    static const QStringList tables{"entidades", "movimientos", "otros_movimientos",
                                    "movimientos_extracto", "mayor"};
    return tables;
}

[[noreturn]] void malformed(const QString& path, int line, const QString& why) {
    throw std::runtime_error(
        QStringLiteral("%1, line %2: %3").arg(path).arg(line).arg(why).toStdString());
}

// Makes `name` in the program folder from the chart text of `idioma` when it is missing.
void makeMissingChart(const QString& programDir, const QString& resourcesDir,
                      const QString& idioma) {
    const QString target = findFileNoCase(programDir, chartTemplateName(idioma));
    if (QFileInfo::exists(target)) return;
    const auto accounts = readChartText(withTrailingSlash(resourcesDir) +
                                        QStringLiteral("charts/chart_%1.tsv").arg(idioma));
    makeChartTemplate(target, accounts);
}

}  // namespace

std::vector<ChartAccount> readChartText(const QString& path) {
    const auto content = readTextFile(path);
    if (!content) throw std::runtime_error(QStringLiteral("%1: cannot be read").arg(path).toStdString());
    std::vector<ChartAccount> accounts;
    const QStringList lines = content->split(u'\n');
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines[i];
        if (line.endsWith(u'\r')) line.chop(1);
        if (line.trimmed().isEmpty() || line.startsWith(u'#')) continue;
        const QStringList cols = line.split(u'\t');
        if (cols.size() != 5) malformed(path, i + 1, QStringLiteral("five columns expected"));
        if (!schema::accountTables().contains(cols[0]))
            malformed(path, i + 1, QStringLiteral("unknown table \"%1\"").arg(cols[0]));
        bool ok = false;
        const qlonglong grup = cols[1].toLongLong(&ok);
        if (!ok) malformed(path, i + 1, QStringLiteral("Grup \"%1\" is not a number").arg(cols[1]));
        accounts.push_back({cols[0], grup, cols[2], cols[3], cols[4]});
    }
    return accounts;
}

void makeChartTemplate(const QString& path, const std::vector<ChartAccount>& accounts) {
    QFile::remove(path);
    schema::createTables(path, schema::db::Comptes, schema::accountTables());
    auto db = Database::open(path);
    store::Transaction tx(db);
    for (const auto& a : accounts) {
        db.prepare(QStringLiteral("insert into %1 (Grup, NomGrup, NomCompte, Tipus) values (?, ?, ?, ?)")
                       .arg(a.table))
            .bind(1, a.grup)
            .bind(2, a.nomGrup)
            .bind(3, a.nomCompte)
            .bind(4, a.tipus)
            .execute();
    }
    tx.commit();
}

QString chartTemplateName(const QString& idioma) {
    return idioma == QStringLiteral("cat") ? templates::CtesCat : templates::CtesEsp;
}

QString prepareTemplates(const WorkingContext& ctx) {
    const QString programDir = withTrailingSlash(ctx.programDir);
    QDir().mkpath(programDir);
    QString error;
    for (const QString& idioma : {QStringLiteral("esp"), QStringLiteral("cat")}) {
        try {
            makeMissingChart(programDir, ctx.resourcesDir, idioma);
        } catch (const std::exception& e) {
            error = QString::fromStdString(e.what());
        }
    }
    const QString comptes = findFileNoCase(programDir, schema::db::Comptes);
    const QString language = findFileNoCase(programDir, chartTemplateName(ctx.Idioma));
    if (!QFileInfo::exists(comptes) && QFileInfo::exists(language)) QFile::copy(language, comptes);
    const QString tesorer = findFileNoCase(programDir, schema::db::Tesorer);
    if (!QFileInfo::exists(tesorer)) {
        try {
            schema::createTables(tesorer, schema::db::Tesorer, tesorerTables());
        } catch (const store::StoreError& e) {
            error = e.message();
        }
    }
    return error;
}

void swapChartTemplate(const QString& programDir, const QString& idioma) {
    const QString dir = withTrailingSlash(programDir);
    QFile::remove(findFileNoCase(dir, schema::db::Comptes));
    const QString source = findFileNoCase(dir, chartTemplateName(idioma));
    if (QFileInfo::exists(source)) QFile::copy(source, dir + schema::db::Comptes);
}

void CopiaPlanBase(const QString& programDir, const QString& exerciseFolder) {
    const QString dir = withTrailingSlash(programDir);
    const QString folder = withTrailingSlash(exerciseFolder);
    const QString chart = findFileNoCase(dir, schema::db::Comptes);
    if (QFileInfo::exists(chart)) {
        try {
            auto target = Database::open(findFileNoCase(folder, schema::db::Comptes));
            target.attach(chart, QStringLiteral("plantilla"));
            store::Transaction tx(target);
            for (const QString& table : schema::accountTables()) {
                try {
                    target.execute(
                        QStringLiteral("insert into main.%1 (Grup, NomGrup, NomCompte, Tipus) "
                                       "select Grup, NomGrup, NomCompte, Tipus from plantilla.%1 "
                                       "order by rowid")
                            .arg(table));
                } catch (const store::StoreError&) {
                    // Errors ignored: a table missing from the template copies nothing.
                }
            }
            tx.commit();
        } catch (const store::StoreError&) {
            // Errors ignored: the new chart stays as it is.
        }
    }
    const QString tesorer = findFileNoCase(folder, schema::db::Tesorer);
    const QString entidades = findFileNoCase(dir, schema::db::Tesorer);
    // The usual case is no tesorer.mdb yet: the treasury set-up makes it later.
    if (!QFileInfo::exists(tesorer) || !QFileInfo::exists(entidades)) return;
    try {
        auto target = Database::open(tesorer);
        target.attach(entidades, QStringLiteral("plantilla"));
        target.execute(QStringLiteral("insert into main.entidades (Grup, entidad, ccc) "
                                      "select Grup, entidad, ccc from plantilla.entidades order by rowid"));
    } catch (const store::StoreError&) {
        // Errors ignored, as for the chart.
    }
}

}  // namespace tallora::master
