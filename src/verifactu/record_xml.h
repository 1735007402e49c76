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

// An element's name without its prefix: the AEAT's documents use several prefixes for the
// same namespaces, so readers match names only.
QString xmlLocalName(QStringView qualified);

// The namespace of the records' elements (prefix "sf").
QString recordsNamespace();

QString recordXml(const InvoiceRecord& record, const SystemIdentity& system);

// The record's values read back from recordXml's text; nothing when the text is not a
// record's element.
std::optional<InvoiceRecord> parseRecordXml(const QString& xml);

// Only what the hash, the link and the stored columns of a record need, found by its tags
// rather than by a full parse: the check of a chain reads every record of the company, and
// the seal over each record's whole text already finds any other change. Nothing when a tag
// it needs is missing.
std::optional<InvoiceRecord> chainFields(const QString& xml);

}  // namespace tallora::verifactu
