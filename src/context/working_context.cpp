#include "working_context.h"

#include "common_helpers.h"
#include "file_tree.h"

#include <QDir>

namespace tallora {

WorkingContext::WorkingContext()
    : Unitat(defaultUnit()), programDir(defaultProgramDir()), resourcesDir(defaultResourcesDir()) {}

bool WorkingContext::setIdioma(const QString& code) {
    const auto base = Base_Idioma(code);
    if (!base) return false;
    Idioma = code;
    BaseIdioma = *base;
    return true;
}

QString WorkingContext::exerciseFile(const QString& name) const {
    return findFileNoCase(Directori, name);
}

QString WorkingContext::companyFile(const QString& name) const {
    return findFileNoCase(companyFolder(), name);
}

QString WorkingContext::companyFolder() const {
    return QDir::cleanPath(Directori + QStringLiteral("../")) + u'/';
}

QString WorkingContext::programFile(const QString& name) const {
    return findFileNoCase(withTrailingSlash(programDir), name);
}

}  // namespace tallora
