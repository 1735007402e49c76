#include "commands.h"
#include "context/file_tree.h"
#include "context/list_files.h"
#include "shell/company_data.h"
#include "shell/company_list.h"

#include <optional>

namespace tallora::cli {
namespace {

// The company key is the last twelve characters of a 52-character row, trimmed: a name
// longer than 40 characters would reach into those twelve and spoil the key.
constexpr qsizetype kMaxNameLength = 40;

QString nameArgument(QString name) {
    if (name.size() > kMaxNameLength)
        throw UsageError{
            QStringLiteral("--name: a company name has at most %1 characters").arg(kMaxNameLength)};
    // As the name field does while typing.
    name.replace(u'\'', QChar(0x00B4));
    return name;
}

// The tax-number field takes only digits, letters and "-".
QString nifArgument(const QString& nif) {
    for (const QChar c : nif)
        if (!(c.isLetter() || (c >= u'0' && c <= u'9') || c == u'-'))
            throw UsageError{
                QStringLiteral("--nif: \"%1\" holds a character other than digits, letters and -")
                    .arg(nif)};
    return nif;
}

}  // namespace

int unitsCommand(Session& s, const CliOptions&) {
    s.start();
    const QString first = shell::readUnitatCfg(s.ctx.programDir);
    s.out << first << '\n';
    for (const QString& unit : availableUnits())
        if (unit != first) s.out << unit << '\n';
    return kDone;
}

int companiesCommand(Session& s, const CliOptions&) {
    s.start();
    for (const auto& entry :
         readEmpresesLst(findFileNoCase(llibresDir(s.ctx.Unitat), files::EmpresesLst)))
        s.out << shell::nif8OfRow(shell::companyRow(entry)) << '\t' << entry.name << '\n';
    return kDone;
}

int companyCreateCommand(Session& s, const CliOptions& o) {
    shell::NewCompany company;
    company.nom = nameArgument(o.value(QStringLiteral("name")));
    company.domicili = o.value(QStringLiteral("address"));
    company.poblacio = o.value(QStringLiteral("town"));
    company.cp = o.value(QStringLiteral("postal-code"));
    company.nif = nifArgument(o.value(QStringLiteral("nif")));
    company.tesoreria = o.given(QStringLiteral("treasury"));
    s.start();
    const bool saved = shell::Verifica_Empresa(s.ctx, s.dialogs, s.ctx.Unitat, company);
    if (saved) s.out << company.nif << '\n';
    return s.finish(saved);
}

int companyChangeCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    if (o.given(QStringLiteral("treasury")) && o.given(QStringLiteral("no-treasury")))
        throw UsageError{QStringLiteral("--treasury and --no-treasury exclude each other")};
    const auto name = o.given(QStringLiteral("name"))
                          ? std::optional(nameArgument(o.value(QStringLiteral("name"))))
                          : std::nullopt;
    const auto nif = o.given(QStringLiteral("nif"))
                         ? std::optional(nifArgument(o.value(QStringLiteral("nif"))))
                         : std::nullopt;
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    // What is not given stays as it is.
    shell::CompanyEdit e = shell::currentCompany(s.ctx);
    if (name) e.nom = *name;
    if (nif) e.nif = *nif;
    if (o.given(QStringLiteral("address"))) e.domicili = o.value(QStringLiteral("address"));
    if (o.given(QStringLiteral("town"))) e.poblacio = o.value(QStringLiteral("town"));
    if (o.given(QStringLiteral("postal-code"))) e.cp = o.value(QStringLiteral("postal-code"));
    if (o.given(QStringLiteral("treasury"))) e.tesoreria = true;
    if (o.given(QStringLiteral("no-treasury"))) e.tesoreria = false;
    return s.finish(shell::Graba_Empresa(s.ctx, s.dialogs, e));
}

int companyRemoveCommand(Session& s, const CliOptions& o) {
    s.start();
    const auto row = s.companyRow(o.arguments[0]);
    if (!row) return kRefused;
    return s.finish(shell::Elimina_Empresa(s.ctx, s.dialogs, s.ctx.Unitat, *row));
}

}  // namespace tallora::cli
