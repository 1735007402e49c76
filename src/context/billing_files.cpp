#include "billing_files.h"

#include "file_tree.h"
#include "notation.h"

namespace tallora::settings {

QString fileIn(const QString& folder, const QString& name) {
    return findFileNoCase(withTrailingSlash(folder), name);
}

std::optional<NotationReader> reader(const QString& folder, const QString& name) {
    auto content = readTextFile(fileIn(folder, name));
    if (!content) return std::nullopt;
    return NotationReader(*content);
}

bool write(const QString& folder, const QString& name, const NotationWriter& w) {
    return writeTextFile(fileIn(folder, name), w.result());
}

FactMod readFactMod(const QString& companyFolder) {
    FactMod value;
    auto r = reader(companyFolder, files::FactModCfg);
    if (!r) return value;
    if (const auto item = r->next()) value.Facturacio = item->toBool().value_or(false);
    value.model = r->nextText();
    if (const auto item = r->next()) value.copies = static_cast<int>(item->toNumber().value_or(0));
    return value;
}

bool writeFactMod(const QString& companyFolder, const FactMod& value) {
    NotationWriter w;
    w.boolean(value.Facturacio).endLine();
    w.text(value.model).endLine();
    w.number(std::int64_t{value.copies}).endLine();
    return write(companyFolder, files::FactModCfg, w);
}

std::array<QString*, 10> FiscalData::fields() {
    return {&nomComercial, &nomEmpresa, &nif, &domicili, &poblacio,
            &cp,           &telefon,    &fax, &text,     &model};
}

std::array<const QString*, 10> FiscalData::fields() const {
    return {&nomComercial, &nomEmpresa, &nif, &domicili, &poblacio,
            &cp,           &telefon,    &fax, &text,     &model};
}

std::optional<FiscalData> readFiscalData(const QString& companyFolder) {
    auto r = reader(companyFolder, files::FactDatos);
    if (!r) return std::nullopt;
    FiscalData data;
    for (QString* field : data.fields()) *field = r->nextText();
    return data;
}

bool writeFiscalData(const QString& companyFolder, const FiscalData& data) {
    NotationWriter w;
    for (const QString* field : data.fields()) w.text(*field).endLine();
    return write(companyFolder, files::FactDatos, w);
}

}  // namespace tallora::settings
