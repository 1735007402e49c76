#include "session.h"

#include "cli.h"
#include "context/file_tree.h"
#include "shell/company_list.h"
#include "shell/exercises.h"
#include "shell/startup.h"

#include <QDir>
#include <QFileInfo>

namespace tallora::cli {
namespace {

// Paths from the command line are taken from the current folder, once.
QString absoluteFolder(const QString& path) {
    return path.isEmpty() ? path : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

}  // namespace

Session::Session(QTextStream& out_, QTextStream& err_, bool assumeYes, QString unit,
                 QString programDir)
    : dialogs(out_, err_, assumeYes), out(out_), err(err_), unit_(absoluteFolder(unit)) {
    if (!programDir.isEmpty()) ctx.programDir = withTrailingSlash(absoluteFolder(programDir));
}

void Session::start() {
    shell::Inicia_Programa(ctx);
    if (!unit_.isEmpty()) ctx.Unitat = unit_;
}

int Session::finish(bool done) const {
    return done && !dialogs.refused() ? kDone : kRefused;
}

int Session::refuse(const QString& reason) {
    err << QStringLiteral("tallora5-cli: ") << reason << '\n';
    err.flush();
    return kRefused;
}

std::optional<QString> Session::companyRow(const QString& nif8) {
    const QStringList rows = shell::OMPLE_LLISTA_Empreses(ctx.Unitat);
    // The duplicate rule matches folders without regard to case, so two keys never differ
    // by case alone; an exact match still comes first.
    for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive})
        for (const QString& row : rows)
            if (shell::nif8OfRow(row).compare(nif8, sensitivity) == 0) return row;
    refuse(QStringLiteral("no company with the key \"%1\" in %2")
               .arg(nif8, QDir::toNativeSeparators(llibresDir(ctx.Unitat) + files::EmpresesLst)));
    return std::nullopt;
}

bool Session::openCompany(const QString& nif8) {
    const auto row = companyRow(nif8);
    if (!row || !shell::Obre_Empresa(ctx, dialogs, ctx.Unitat, *row)) return false;
    company_ = shell::nif8OfRow(*row);
    return true;
}

std::optional<QString> Session::exerciseRow(const QString& year) {
    for (const QString& row : shell::exerciseRows(ctx))
        if (row.left(4) == year) return row;
    refuse(QStringLiteral("the company %1 has no exercise %2").arg(company_, year));
    return std::nullopt;
}

bool Session::enterExercise(const QString& nif8, const QString& year) {
    if (!openCompany(nif8)) return false;
    const auto row = exerciseRow(year);
    if (!row) return false;
    shell::enterExercise(ctx, row->left(4));
    return true;
}

}  // namespace tallora::cli
