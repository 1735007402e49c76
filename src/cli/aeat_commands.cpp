// aeat-books and model-303/347/349/111/130: the tax agency's VAT books and the returns'
// figures, computed by the same code as the screens, printed, and written as files.
#include "aeat/aeat_books.h"
#include "aeat/model_figures.h"
#include "commands.h"
#include "master_common.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tallora::cli {
namespace {

// The --box N=AMOUNT values: the boxes the screen lets the user type.
aeat::TypedBoxes typedBoxes(const CliOptions& o) {
    aeat::TypedBoxes typed;
    for (const QString& given : o.all(QStringLiteral("box"))) {
        const qsizetype eq = given.indexOf(u'=');
        const QString number = given.left(eq).trimmed();
        const auto amount = eq < 0 ? std::nullopt : Money::parse(given.mid(eq + 1), u',');
        if (number.isEmpty() || !amount)
            throw UsageError{
                QStringLiteral("--box: \"%1\" is not BOX=AMOUNT (for instance 67=120,50)")
                    .arg(given)};
        typed[number.rightJustified(2, u'0')] = *amount;
    }
    return typed;
}

// `path`, or the file `name` in it when it is a folder.
QString targetPath(const QString& path, const QString& name) {
    return QFileInfo(path).isDir() ? QDir(path).filePath(name) : path;
}

}  // namespace

int aeatBooksCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w{o.arguments[0], yearArgument(o.arguments[1])};
    aeat::AeatBookRequest request;
    request.fromMonth = monthOption(o, QStringLiteral("from"), 1);
    request.toMonth = monthOption(o, QStringLiteral("to"), 12);
    request.monthly = o.flags.contains(QStringLiteral("monthly"));
    if (request.fromMonth > request.toMonth)
        throw UsageError{QStringLiteral("--from: the first month is after the last")};
    if (!enterMasterFiles(s, w)) return kRefused;
    const QString path = targetPath(o.arguments[2], aeat::aeatBookFileName(s.ctx));
    const auto sheets = aeat::aeatBookSheets(s.ctx, request);
    if (const QString error = report::writeXlsx(path, sheets); !error.isEmpty())
        return s.refuse(error);
    s.out << path << '\n';
    for (const report::Sheet& sheet : sheets)
        s.out << sheet.name << '\t' << sheet.rows.size() << '\n';
    return s.finish(true);
}

int modelCommand(Session& s, const CliOptions& o) {
    static const std::pair<const char*, aeat::Model> names[] = {{"model-303", aeat::Model::M303},
                                                                {"model-347", aeat::Model::M347},
                                                                {"model-349", aeat::Model::M349},
                                                                {"model-111", aeat::Model::M111},
                                                                {"model-130", aeat::Model::M130}};
    aeat::Model model = aeat::Model::M303;
    for (const auto& [name, m] : names)
        if (o.command == QLatin1String(name)) model = m;
    const ExerciseWords w{o.arguments[0], yearArgument(o.arguments[1])};
    const int year = w.year.toInt();
    // The command table gives the 347 no period argument and the others one.
    const QString given = model == aeat::Model::M347 ? QStringLiteral("0A") : o.arguments[2];
    const std::optional<aeat::TaxPeriod> period = aeat::taxPeriod(year, given);
    if (!period || !aeat::modelPeriods(model).contains(period->code))
        throw UsageError{QStringLiteral("\"%1\" is not a period of this model: %2")
                             .arg(given, model == aeat::Model::M130 ? QStringLiteral("1T to 4T")
                                         : model == aeat::Model::M349
                                             ? QStringLiteral("1T to 4T, 01 to 12 or 0A")
                                             : QStringLiteral("1T to 4T or 01 to 12"))};
    const QString file = o.value(QStringLiteral("file"));
    if (!file.isEmpty() && !aeat::modelHasFile(model))
        throw UsageError{
            QStringLiteral("--file: the model 130 has no file; it is filed on the "
                           "agency's form")};
    const aeat::TypedBoxes typed = typedBoxes(o);
    if (!enterMasterFiles(s, w)) return kRefused;
    const aeat::ModelFigures figures = aeat::computeModel(s.ctx, model, *period, typed);
    for (const QString& line : aeat::modelLines(s.ctx, figures)) s.out << line << '\n';
    if (!file.isEmpty()) {
        const QString path = targetPath(file, aeat::modelFileName(s.ctx, figures));
        if (const QString error = aeat::writeModelFile(s.ctx, figures, path); !error.isEmpty())
            return s.refuse(error);
        s.out << '\n' << path << '\n';
    }
    return s.finish(true);
}

}  // namespace tallora::cli
