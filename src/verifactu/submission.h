#pragma once
// A submission to the AEAT's service: the records not yet taken, in the order written, at most
// 1,000 of one issuer, wrapped in RegFactuSistemaFacturacion with its header, inside a SOAP
// envelope. The records go as they were stored, character for character.
#include "context/fwd.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace tallora::verifactu {

inline constexpr int kRecordsPerSubmission = 1000;

struct Submission {
    std::vector<std::int64_t> records;  // the Ids of the records it carries, in order
    QString xml;                        // the SOAP envelope
    bool empty() const { return records.empty(); }
};

// Records waiting: those that no answer of the service has taken (Correcto or
// AceptadoConErrores). `path` is the record file.
int pendingCount(const QString& path);

// The next submission of the record file `path`, for the company of `ctx` (its name and tax
// number go in the header); empty when nothing waits.
Submission nextSubmission(const WorkingContext& ctx, const QString& path);

}  // namespace tallora::verifactu
