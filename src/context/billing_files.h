#pragma once
// The two small files of a company's billing: fact_mod.cfg (the option, the invoice
// template and the copies) and fact_da.tos (the heading of its documents). The settings
// screen writes them; printing a document reads them.
#include "notation.h"

#include <QString>

#include <array>
#include <optional>

namespace tallora::settings {

// The settings files of a folder, found without regard to case, read and written whole in
// the quoted comma notation: what every settings file shares.
QString fileIn(const QString& folder, const QString& name);
std::optional<NotationReader> reader(const QString& folder, const QString& name);
bool write(const QString& folder, const QString& name, const NotationWriter& w);

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
