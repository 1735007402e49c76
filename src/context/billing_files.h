#pragma once
// The two small files of a company's billing: fact_mod.cfg (the option, the invoice
// template and the copies) and fact_da.tos (the heading of its documents). The settings
// screen writes them; printing a document reads them.
#include <QString>

#include <array>
#include <optional>

namespace tallora::settings {

// fact_mod.cfg of a company: the billing flag, the invoice model and the copies.
struct FactMod {
    bool Facturacio = false;
    QString model;
    int copies = 0;
    bool operator==(const FactMod&) const = default;
};
FactMod readFactMod(const QString& companyFolder);
bool writeFactMod(const QString& companyFolder, const FactMod& value);

// fact_da.tos of a company: the heading of billing documents, ten quoted lines.
struct FiscalData {
    QString nomComercial, nomEmpresa, nif, domicili, poblacio, cp, telefon, fax, text, model;
    bool operator==(const FiscalData&) const = default;
    std::array<QString*, 10> fields();
    std::array<const QString*, 10> fields() const;
};
// nullopt when the file is absent.
std::optional<FiscalData> readFiscalData(const QString& companyFolder);
bool writeFiscalData(const QString& companyFolder, const FiscalData& data);

}  // namespace tallora::settings
