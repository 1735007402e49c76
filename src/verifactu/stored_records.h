#pragma once
// The rows of the record file as stored, for the check of the chain, the companion's listing
// and the records screen.
#include <QString>

#include <cstdint>
#include <functional>

namespace tallora::verifactu {

struct StoredRecord {
    std::int64_t id = 0;
    QString emisor;
    bool alta = true;
    QString ejercicio;
    std::int64_t ordre = 0;
    QString numSerie, fecha, tipoFactura;
    bool subsanacion = false;
    QString importeTotal, fechaHora, huella, xml, sello;
    // The state of its last answer from the service; empty while it waits to be sent.
    QString estado;
};

// Calls `each` for every record of the file at `path` in the order written; `each` gives
// false to stop. A missing file has none.
void forEachRecord(const QString& path, const std::function<bool(const StoredRecord&)>& each);

}  // namespace tallora::verifactu
