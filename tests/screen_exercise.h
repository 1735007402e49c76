#pragma once
// An exercise with every database made, treasury and billing on, for the screens' tests.
#include "context/dialogs.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>

namespace tallora::testing {

class ScreenExercise {
public:
    ScreenExercise() {
        ctx.Unitat = root.path();
        company = root.filePath(QStringLiteral("brenwick/LLibres/B1234567/"));
        ctx.Directori = company + QStringLiteral("2026/");
        QDir().mkpath(ctx.Directori);
        ctx.Exercici = QStringLiteral("2026");
        ctx.Moneda = QStringLiteral("Euros");
        ctx.programDir = root.filePath(QStringLiteral("program/"));
        schema::createExerciseDatabases(ctx.Directori);
        ctx.Facturacio = true;
        schema::Actualitza_Bases(ctx);
        ctx.Tesoreria = true;
    }

    QString exerciseFile(const QString& name) const { return ctx.Directori + name; }
    QString companyFile(const QString& name) const { return company + name; }

    // Every row of `sql` in `path`, columns joined by '|'.
    static QStringList rows(const QString& path, const QString& sql) {
        store::Database d = store::Database::open(path);
        store::Statement st = d.prepare(sql);
        QStringList out;
        while (st.next()) {
            QStringList cols;
            for (int i = 0; i < st.columnCount(); ++i) cols << st.text(i);
            out << cols.join(u'|');
        }
        return out;
    }

    QTemporaryDir root;
    QString company;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

}  // namespace tallora::testing
