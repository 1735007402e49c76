#include "commands.h"
#include "interchange/interchange_export.h"
#include "interchange/interchange_import.h"

namespace tallora::cli {
namespace {

interchange::RunReport logTo(QTextStream& out) {
    interchange::RunReport report;
    report.log = [&out](const QString& line) { out << line << '\n'; };
    return report;
}

bool anySelection(const CliOptions& o) {
    return o.flags.contains(QStringLiteral("customers")) ||
           o.flags.contains(QStringLiteral("suppliers")) ||
           o.flags.contains(QStringLiteral("chart"));
}

}  // namespace

int exportCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    interchange::ExportChoice choice;
    choice.whole = !anySelection(o);
    choice.customers = o.flags.contains(QStringLiteral("customers"));
    choice.suppliers = o.flags.contains(QStringLiteral("suppliers"));
    choice.chart = o.flags.contains(QStringLiteral("chart"));
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    return s.finish(interchange::Exporta(s.ctx, s.dialogs, o.arguments[2], choice, logTo(s.out)));
}

int importCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    const bool whole = o.flags.contains(QStringLiteral("whole"));
    if (whole && anySelection(o))
        throw UsageError{
            QStringLiteral("--whole does not go with --customers, --suppliers or --chart")};
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    const QString path = o.arguments[2];
    const interchange::FileHeader header = interchange::readHeader(s.ctx, path);
    for (const QString& line : header.ListArchivo) s.out << line << '\n';
    // Without a choice the file's own header decides, as the screen presets it; the
    // companion has one box per kind, which also stands for the export tab's chart box.
    interchange::ImportChoice choice = interchange::presetFor(header);
    if (whole) choice = interchange::ImportChoice{};
    if (anySelection(o)) {
        choice.whole = false;
        choice.customers = o.flags.contains(QStringLiteral("customers"));
        choice.suppliers = o.flags.contains(QStringLiteral("suppliers"));
        choice.chart = o.flags.contains(QStringLiteral("chart"));
    }
    choice.exportChart = choice.chart;
    if (o.flags.contains(QStringLiteral("record-invoices"))) {
        if (!choice.whole)
            throw UsageError{QStringLiteral("--record-invoices goes with a whole import only")};
        choice.recordInvoices = true;
    }
    return s.finish(interchange::Importa(s.ctx, s.dialogs, path, header, choice, logTo(s.out)));
}

}  // namespace tallora::cli
