#pragma once
// The address the QR code of an invoice carries: the AEAT's page that checks the invoice,
// with the issuer's tax number, the number, the date and the total.
#include "invoice_record.h"

#include <QString>

namespace tallora::verifactu {

enum class Environment { Production, Test };

QString qrAddress(const InvoiceId& id, const QString& importeTotal, Environment environment);

}  // namespace tallora::verifactu
