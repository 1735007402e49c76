#pragma once
// The formulas every book and statement fills, one after another in the job's first free
// places: a text as it stands, or a message of the catalogue; and the print date's form.
#include "context/messages.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>
#include <QString>

namespace tallora::books {

class Formulas {
public:
    Formulas(report::ReportJob& job, const WorkingContext& ctx) : job_(job), ctx_(ctx) {}
    Formulas& text(const char* name, const QString& value) {
        report::appendFormula(job_, report::textFormula(QString::fromLatin1(name), value));
        return *this;
    }
    Formulas& message(const char* name, int n) { return text(name, Missatge(ctx_, n)); }

private:
    report::ReportJob& job_;
    const WorkingContext& ctx_;
};

inline QString printDate(const QDate& d) {
    return d.toString(QStringLiteral("dd/MM/yyyy"));
}

}  // namespace tallora::books
