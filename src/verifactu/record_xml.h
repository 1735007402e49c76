#pragma once
// A record as the XML element of the AEAT's SuministroInformacion schema, RegistroAlta or
// RegistroAnulacion, prefixed "sf:" and without namespace declarations: the submission that
// carries it declares the prefix once. The stored record is this text, and the chain check
// reads it back.
#include "invoice_record.h"
#include "system_identity.h"

#include <QString>

#include <optional>

namespace tallora::verifactu {

// The namespace of the records' elements (prefix "sf").
QString recordsNamespace();

QString recordXml(const InvoiceRecord& record, const SystemIdentity& system);

// The record's values read back from recordXml's text; nothing when the text is not a
// record's element.
std::optional<InvoiceRecord> parseRecordXml(const QString& xml);

}  // namespace tallora::verifactu
