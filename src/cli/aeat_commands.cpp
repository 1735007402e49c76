// aeat-books and model-303/347/349/111/130: the tax agency's VAT books and the returns'
// figures, computed by the same code as the screens, printed, and written as files.
#include "aeat/aeat_books.h"
#include "aeat/model_figures.h"
#include "commands.h"
#include "master_common.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace tallora::cli {
namespace {

int monthValue(const CliOptions& o, const QString& name, int fallback) {
    if (!o.given(name)) return fallback;
    try {
        return monthArgument(o.value(name));
    } catch (const UsageError& e) {
        throw UsageError{QStringLiteral("--%1: %2").arg(name, e.reason)};
    }
}

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

QString writeFile(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    file.write(bytes);
    return file.commit() ? QString() : file.errorString();
}

}  // namespace

int aeatBooksCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w{o.arguments[0], yearArgument(o.arguments[1])};
    aeat::AeatBookRequest request;
    request.fromMonth = monthValue(o, QStringLiteral("from"), 1);
    request.toMonth = monthValue(o, QStringLiteral("to"), 12);
    request.monthly = o.flags.contains(QStringLiteral("monthly"));
    if (request.fromMonth > request.toMonth)
        throw UsageError{QStringLiteral("--from: the first month is after the last")};
    if (!enterMasterFiles(s, w)) return kRefused;
    QString path = o.arguments[2];
    if (QFileInfo(path).isDir()) path = QDir(path).filePath(aeat::aeatBookFileName(s.ctx));
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
    std::optional<aeat::TaxPeriod> period;
    if (model == aeat::Model::M347) {
        if (o.arguments.size() > 2)
            throw UsageError{QStringLiteral("model-347 covers the year: no period")};
        period = aeat::taxPeriod(year, QStringLiteral("0A"));
    } else {
        if (o.arguments.size() < 3)
            throw UsageError{QStringLiteral("%1 takes NIF8 YYYY PERIOD").arg(o.command)};
        period = aeat::taxPeriod(year, o.arguments[2]);
        const bool quarterOnly = model == aeat::Model::M130;
        const bool yearAllowed = model == aeat::Model::M349;
        if (!period || (quarterOnly && !period->quarter()) ||
            (!yearAllowed && period->code == u"0A"))
            throw UsageError{
                QStringLiteral("\"%1\" is not a period of this model: %2")
                    .arg(o.arguments[2], quarterOnly   ? QStringLiteral("1T to 4T")
                                         : yearAllowed ? QStringLiteral("1T to 4T, 01 to 12 or 0A")
                                                       : QStringLiteral("1T to 4T or 01 to 12"))};
    }
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
        QString path = file;
        if (QFileInfo(path).isDir())
            path = QDir(path).filePath(aeat::modelFileName(s.ctx, figures));
        if (const QString error = writeFile(path, aeat::modelFile(s.ctx, figures));
            !error.isEmpty())
            return s.refuse(error);
        s.out << '\n' << path << '\n';
    }
    return s.finish(true);
}

}  // namespace tallora::cli
