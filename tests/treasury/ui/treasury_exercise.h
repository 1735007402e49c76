#pragma once
// The exercise of screen_exercise.h with a company name and the program's resources, for
// the tests of the treasury screens. Each test adds its rows.
#include "../../screen_exercise.h"

namespace tallora::testing {

class TreasuryExercise : public ScreenExercise {
public:
    TreasuryExercise() {
        ctx.ModeExercici = QStringLiteral("FACTURES");
        ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
    }

    // A file of the exercise, and the company's portfolio.
    QString file(const char* name) const { return ctx.Directori + QLatin1String(name); }
    QString cartera() const { return company + schema::db::Cartera; }
    static void run(const QString& path, const char* sql) {
        store::Database::open(path).execute(QString::fromUtf8(sql));
    }
};

}  // namespace tallora::testing
