#pragma once
// The exercise 2026 of a company with treasury control, every database made and upgraded as
// an opening leaves them, in a temporary folder: where the benchmarks post and settle.
#include "context/dialogs.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/upgrades.h"

#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace tallora {

struct BenchExercise {
    BenchExercise() {
        ctx.Directori = dir.filePath(QStringLiteral("B1234567.EMP/2026/"));
        QDir().mkpath(ctx.Directori);
        ctx.Exercici = QStringLiteral("2026");
        ctx.Moneda = QStringLiteral("Euros");
        ctx.ModeExercici = QStringLiteral("FACTURES");
        ctx.Tesoreria = true;
        schema::createExerciseDatabases(ctx.Directori);
        schema::Actualitza_Bases(ctx);
    }

    QTemporaryDir dir;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

// A benchmark whose data came out wrong stops: its timings would mean nothing.
[[noreturn]] inline void benchFail(const char* bench, const QString& what) {
    std::fprintf(stderr, "%s: %s\n", bench, qPrintable(what));
    std::abort();
}

}  // namespace tallora
