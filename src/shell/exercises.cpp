#include "exercises.h"

#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/list_files.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master/chart_template.h"
#include "context/month_lock.h"
#include "schema/creation.h"
#include "schema/maintenance.h"
#include "schema/upgrades.h"
#include "store/database.h"
#include "store/repair.h"
#include "store/store_error.h"
#include "treasury/portfolio_balances.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tallora::shell {
namespace {

using store::Database;
using store::StoreError;

QString companyFolder(const WorkingContext& ctx) { return withTrailingSlash(ctx.Directori); }

QString listFile(const WorkingContext& ctx) {
    return findFileNoCase(companyFolder(ctx), files::ExerciciLst);
}

QString datFile(const WorkingContext& ctx, const QString& year) {
    return findFileNoCase(companyFolder(ctx), year + QStringLiteral(".DAT"));
}

// Runs each statement on `path`, every one with errors ignored.
void executeEach(const QString& path, const QStringList& statements) {
    try {
        auto db = Database::open(path);
        for (const QString& sql : statements) {
            try {
                db.execute(sql);
            } catch (const StoreError&) {
            }
        }
    } catch (const StoreError&) {
    }
}

// The file of the year before replaces the new one, compacted on the way.
bool carryFile(const QString& previousFolder, const QString& folder, const QString& name) {
    const QString source = findFileNoCase(previousFolder, name);
    if (!QFileInfo::exists(source)) return false;
    const QString target = findFileNoCase(folder, name);
    QFile::remove(target);
    try {
        store::compactDatabase(source, target);
    } catch (const StoreError&) {
        return false;
    }
    return true;
}

// Errors ignored: a database left by an earlier run is worked on as it is.
void createIgnoringErrors(const QString& folder, const QString& database, const QStringList& tables) {
    try {
        schema::createTables(folder + database, database, tables);
    } catch (const StoreError&) {
    }
}

void carryOver(const WorkingContext& ctx, const QString& folder, const QString& previous) {
    if (carryFile(previous, folder, schema::db::Gest)) {
        const QString cartera = findFileNoCase(companyFolder(ctx), schema::db::Cartera);
        if (QFileInfo::exists(cartera)) {
            const QString gest = findFileNoCase(folder, schema::db::Gest);
            try {
                treasury::Saldo_Clients(ctx, gest, cartera);
            } catch (const StoreError&) {
            }
            try {
                treasury::Saldo_Proveidors(ctx, gest, cartera);
            } catch (const StoreError&) {
            }
        }
    }
    carryFile(previous, folder, schema::db::Comptes);
    if (carryFile(previous, folder, schema::db::Tesorer)) {
        executeEach(findFileNoCase(folder, schema::db::Tesorer),
                    {QStringLiteral("delete from mayor"), QStringLiteral("delete from movimientos"),
                     QStringLiteral("delete from movimientos_extracto"),
                     QStringLiteral("delete from otros_movimientos"),
                     QStringLiteral("update entidades set saldo=0")});
    }
}

// The balances of the seven families start at zero; Otras, Debe and Haber are kept.
void zeroChartBalances(const QString& folder) {
    QStringList statements;
    for (const QString& table : schema::accountTables())
        statements << QStringLiteral("update %1 set saldo=0").arg(table);
    executeEach(findFileNoCase(folder, schema::db::Comptes), statements);
}

QString confirmationText(const WorkingContext& ctx, const NewExercise& e, const QString& word) {
    const auto join = [](const auto& rates) {
        QStringList texts(rates.begin(), rates.end());
        return texts.join(QStringLiteral(" - "));
    };
    return Missatge(ctx, 129) + QStringLiteral("\n\n") + e.exercici + QStringLiteral("  ") +
           e.moneda + u'\n' + Missatge(ctx, 121) + QStringLiteral(": ") + join(e.iva) +
           QStringLiteral("\nR.E.: ") + join(e.re) + u'\n' + Missatge(ctx, 122) +
           QStringLiteral(": ") + join(e.ivas) + u'\n' + word + QStringLiteral("\n\n") +
           Missatge(ctx, 37);
}

bool hasRows(const QString& path, const QString& table) {
    if (!QFileInfo::exists(path)) return false;
    try {
        auto db = Database::open(path);
        return db.prepare(QStringLiteral("select 1 from %1 limit 1").arg(table)).next();
    } catch (const StoreError&) {
        return false;
    }
}

}  // namespace

NewExercise defaultNewExercise(QDate today) {
    NewExercise e;
    e.exercici = QString::number(today.year());
    return e;
}

QStringList currencies() { return {QStringLiteral("Euros")}; }

QStringList exerciseRows(const WorkingContext& ctx) {
    QStringList rows;
    for (const auto& entry : readExerciciLst(listFile(ctx))) rows << entry.exercici;
    return rows;
}

bool anyRateWrittenZero(const std::array<QString, 3>& iva, const std::array<QString, 3>& re,
                        const std::array<QString, 4>& ivas) {
    const auto zero = [](const QString& rate) { return rate == QStringLiteral("0"); };
    return std::any_of(iva.begin(), iva.end(), zero) || std::any_of(re.begin(), re.end(), zero) ||
           std::any_of(ivas.begin(), ivas.end(), zero);
}

bool isExerciseYear(const QString& text) {
    return text.size() == 4 &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool Graba_Exercici(WorkingContext& ctx, Dialogs& dialogs, const NewExercise& exercise) {
    if (!isExerciseYear(exercise.exercici)) {
        dialogs.beep();
        dialogs.stop(Missatge(ctx, 114) + u' ' + Missatge(ctx, 655) + QStringLiteral(": ") +
                     exercise.exercici);
        return false;
    }
    if (anyRateWrittenZero(exercise.iva, exercise.re, exercise.ivas)) {
        dialogs.stop(Missatge(ctx, 6997));
        return false;
    }
    const QStringList rows = exerciseRows(ctx);
    const auto listed = [&](const QString& year) {
        return std::any_of(rows.begin(), rows.end(),
                           [&](const QString& row) { return row.left(4) == year; });
    };
    if (listed(exercise.exercici)) {
        dialogs.beep();
        dialogs.stop(Missatge(ctx, 128));
        return false;
    }
    const QString word = exercise.botiga ? QStringLiteral("TICKETS") : QStringLiteral("FACTURES");
    const QString shown = exercise.botiga ? QStringLiteral("TICKETS") : QStringLiteral("FACTURAS");
    if (dialogs.yesNo(confirmationText(ctx, exercise, shown)) != Dialogs::Answer::Yes) return false;

    const QString folder = companyFolder(ctx) + exercise.exercici + u'/';
    QDir().mkpath(folder);
    createIgnoringErrors(folder, schema::db::Gest, {QStringLiteral("Clients"), QStringLiteral("Proveidors")});
    createIgnoringErrors(folder, schema::db::Comptes, schema::accountTables());
    master::CopiaPlanBase(ctx.programDir, folder);
    createIgnoringErrors(folder, schema::db::FrasIn, {QStringLiteral("FrasIN")});
    createIgnoringErrors(folder, schema::db::FrasOut, {QStringLiteral("FrasOut")});
    ctx.Exercici = exercise.exercici;

    const QString previousYear = QString::number(exercise.exercici.toInt() - 1);
    if (rows.isEmpty()) {
        zeroChartBalances(folder);
    } else if (listed(previousYear)) {
        carryOver(ctx, folder, companyFolder(ctx) + previousYear + u'/');
        zeroChartBalances(folder);
    }

    ExerciseParams params;
    params.exercici = exercise.exercici;
    params.moneda = exercise.moneda;
    params.tipusLlibre = exercise.botiga ? 0 : 1;
    params.iva = exercise.iva;
    params.re = exercise.re;
    params.modeExercici = word;
    params.ivas = exercise.ivas;
    const QString dat = companyFolder(ctx) + exercise.exercici + QStringLiteral(".DAT");
    QString error;
    if (!writeExerciseParams(dat, params, &error)) {
        dialogs.stop(error + QStringLiteral(": ") + dat);
        return false;
    }
    const QString lst = listFile(ctx);
    if (!appendExerciciLst(lst, {exercise.exercici, exercise.moneda}, &error)) {
        dialogs.stop(error + QStringLiteral(": ") + lst);
        return false;
    }
    return true;
}

bool Elimina_Exercici(const WorkingContext& ctx, Dialogs& dialogs, const QString& row) {
    if (row.isEmpty()) return false;
    const QString year = row.left(4);
    const QString folder = findFileNoCase(companyFolder(ctx), year);
    const QString dir = withTrailingSlash(folder);
    const bool holdsData = hasRows(findFileNoCase(dir, schema::db::Gest), QStringLiteral("clients")) ||
                           hasRows(findFileNoCase(dir, schema::db::Gest), QStringLiteral("proveidors")) ||
                           hasRows(findFileNoCase(dir, schema::db::FrasIn), QStringLiteral("frasin")) ||
                           hasRows(findFileNoCase(dir, schema::db::FrasOut), QStringLiteral("frasout"));
    if (holdsData && dialogs.yesNo(Missatge(ctx, 126) + Missatge(ctx, 26) + Missatge(ctx, 25)) !=
                         Dialogs::Answer::Yes)
        return false;
    if (dialogs.yesNo(Missatge(ctx, 127) + Missatge(ctx, 25)) != Dialogs::Answer::Yes) return false;
    schema::Esborra_Carpeta(folder);
    QFile::remove(datFile(ctx, year));
    return Treu_Exercici_de_Llista(ctx, dialogs, year);
}

bool Treu_Exercici_de_Llista(const WorkingContext& ctx, Dialogs& dialogs, const QString& year) {
    if (year.isEmpty()) return false;
    const QString lst = listFile(ctx);
    const QString cop = findFileNoCase(companyFolder(ctx), files::ExerciciCop);
    QFile::remove(cop);
    if (!QFileInfo::exists(lst)) return true;
    QFile source(lst);
    if (!source.copy(cop)) {
        dialogs.stop(source.errorString() + QStringLiteral(": ") + cop);
        return false;
    }
    std::vector<ExerciseEntry> kept;
    for (const auto& entry : readExerciciLst(cop))
        if (entry.exercici != year) kept.push_back(entry);
    QString error;
    if (!writeExerciciLst(lst, kept, &error)) {
        dialogs.stop(error + QStringLiteral(": ") + lst);
        return false;
    }
    return true;
}

bool Obre_Exercici(WorkingContext& ctx, Dialogs& dialogs, const QString& row, QDate today) {
    const QString year = row.left(4);
    if (year.isEmpty()) {
        dialogs.beep();
        return false;
    }
    schema::Copia_Seguretat(companyFolder(ctx), year, today);
    enterExercise(ctx, year);
    schema::Actualitza_Bases(ctx);
    loadMonthLock(ctx);
    return true;
}

void enterExercise(WorkingContext& ctx, const QString& year) {
    applyExerciseParams(ctx, readExerciseParams(datFile(ctx, year)).value_or(ExerciseParams{}));
    if (ctx.Exercici.isEmpty()) ctx.Exercici = year;
    ctx.Directori = withTrailingSlash(findFileNoCase(companyFolder(ctx), ctx.Exercici));
}

void restoreCompanyFolder(WorkingContext& ctx) {
    if (ctx.Exercici.isEmpty()) return;
    const QString suffix = ctx.Exercici + u'/';
    if (ctx.Directori.endsWith(suffix, Qt::CaseInsensitive)) ctx.Directori.chop(suffix.size());
}

}  // namespace tallora::shell
