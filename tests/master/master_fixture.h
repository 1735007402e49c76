#pragma once
// A company with one exercise whose databases are all made, as an opening with treasury and
// billing leaves them, and a scripted dialog box, for the tests of the master data. Every
// test sets the options it means; the files are there whatever they say.
#include "../schema/schema_fixture.h"
#include "context/dialogs.h"
#include "schema/upgrades.h"
#include "store/database.h"
#include "../table_rows.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

namespace tallora::testing {

class MasterData : public ::testing::Test {
protected:
    void SetUp() override {
        schema::createExerciseDatabases(f.exercise);
        f.ctx.Facturacio = true;
        schema::Actualitza_Bases(f.ctx);
        f.ctx.Facturacio = false;
        f.ctx.Tesoreria = false;
        f.ctx.Moneda = "Euros";
        // Files that the steps above must have made, so that no test passes on a missing one.
        for (const QString& path :
             {gest(), comptes(), frasOut(), frasIn(), supl(), tesorer(), cartera(), fact()})
            ASSERT_TRUE(QFile::exists(path)) << path.toStdString();
    }

    QString gest() const { return f.exercise + schema::db::Gest; }
    QString comptes() const { return f.exercise + schema::db::Comptes; }
    QString frasOut() const { return f.exercise + schema::db::FrasOut; }
    QString frasIn() const { return f.exercise + schema::db::FrasIn; }
    QString supl() const { return f.exercise + schema::db::Supl; }
    QString tesorer() const { return f.exercise + schema::db::Tesorer; }
    QString cartera() const { return f.company + schema::db::Cartera; }
    QString fact() const { return f.company + schema::db::Fact; }

    static void exec(const QString& path, const QString& sql) {
        store::Database::open(path).execute(sql);
    }

    static QStringList rows(const QString& path, const QString& sql) {
        return tableRows(path, sql);
    }

    // Every box shown, as "I:" information, "S:" stop or "Q:" question, and its text.
    QStringList shown() const {
        QStringList out;
        for (const auto& box : dialogs.shown()) {
            const char* kind = box.kind == ScriptedDialogs::Shown::Kind::Information ? "I:"
                               : box.kind == ScriptedDialogs::Shown::Kind::Stop      ? "S:"
                                                                                     : "Q:";
            out << QLatin1String(kind) + box.text;
        }
        return out;
    }

    ExerciseFixture f;
    ScriptedDialogs dialogs;
};

}  // namespace tallora::testing
