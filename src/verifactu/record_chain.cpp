#include "record_chain.h"

#include "record_file.h"
#include "record_time.h"
#include "record_xml.h"
#include "sale_record.h"
#include "system_identity.h"

#include "context/working_context.h"

#include <optional>

namespace tallora::verifactu {
namespace {

std::optional<ChainLink> previousOf(store::Database& db, const QString& emisor) {
    auto st =
        db.prepare(QStringLiteral("select Emisor, NumSerie, Fecha, Huella from "
                                  "verifactu.Registros where Emisor = ? "
                                  "order by Id desc limit 1"));
    st.bind(1, emisor);
    if (!st.next()) return std::nullopt;
    return ChainLink{{st.text(0), st.text(1), st.text(2)}, st.text(3)};
}

// The last row of the file: its number and seal, which the next row follows.
struct LastRow {
    std::int64_t id = 0;
    QString sello;
};

LastRow lastRow(store::Database& db) {
    auto st = db.prepare(
        QStringLiteral("select Id, Sello from verifactu.Registros order by Id desc limit 1"));
    return st.next() ? LastRow{st.int64(0), st.text(1)} : LastRow{};
}

void appendCancellation(const WorkingContext& ctx, store::Database& db, const InvoiceId& id,
                        const SaleKey& key) {
    InvoiceRecord cancel;
    cancel.kind = RecordKind::Anulacion;
    cancel.id = id;
    appendRecord(ctx, db, cancel, key);
}

SaleKey keyOf(const WorkingContext& ctx, std::int64_t ordre) {
    return {ctx.Exercici, ordre};
}

}  // namespace

std::optional<LastRecord> lastRecordOf(store::Database& db, const QString& table,
                                       const SaleKey& key) {
    auto st = db.prepare(QStringLiteral("select Clase, Emisor, NumSerie, Fecha, ImporteTotal "
                                        "from %1 where Ejercicio = ? and Ordre = ? "
                                        "order by Id desc limit 1")
                             .arg(table));
    st.bind(1, key.ejercicio).bind(2, key.ordre);
    if (!st.next()) return std::nullopt;
    return LastRecord{st.text(0) == QLatin1String("A"),
                      {st.text(1), st.text(2), st.text(3)},
                      st.isNull(4) ? QString() : st.text(4)};
}

QString rowSeal(const QString& previousSeal, std::int64_t id, const QString& ejercicio,
                std::int64_t ordre, const QString& xml) {
    return sha256Hex(previousSeal + u'|' + QString::number(id) + u'|' + ejercicio + u'|' +
                     QString::number(ordre) + u'|' + xml);
}

void appendRecord(const WorkingContext& ctx, store::Database& db, InvoiceRecord& record,
                  const SaleKey& key) {
    record.anterior = previousOf(db, record.id.emisor);
    record.fechaHora = recordTimestamp(ctx.clock(), isCanaryPostcode(ctx.EmpresaCP));
    record.huella = computeHuella(record);
    const SystemIdentity system =
        programIdentity(setting(db, QStringLiteral("NumeroInstalacion"), kRecordsAlias));
    const QString xml = recordXml(record, system);
    const bool alta = record.kind == RecordKind::Alta;
    const LastRow last = lastRow(db);
    // Rows are numbered here rather than by the engine, so that the seal can cover the number.
    const std::int64_t id = last.id + 1;
    db.prepare(QStringLiteral(
                   "insert into verifactu.Registros (Emisor, Clase, Ejercicio, Ordre, NumSerie, "
                   "Fecha, TipoFactura, Subsanacion, ImporteTotal, FechaHora, Huella, Xml, Sello, "
                   "Id) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"))
        .bind(1, record.id.emisor)
        .bind(2, alta ? QStringLiteral("A") : QStringLiteral("N"))
        .bind(3, key.ejercicio)
        .bind(4, key.ordre)
        .bind(5, record.id.numSerie)
        .bind(6, record.id.fecha)
        .bind(7, record.tipoFactura)
        .bind(8, record.subsanacion)
        .bind(9, record.importeTotal)
        .bind(10, record.fechaHora)
        .bind(11, record.huella)
        .bind(12, xml)
        .bind(13, rowSeal(last.sello, id, key.ejercicio, key.ordre, xml))
        .bind(14, id)
        .execute();
}

void recordSale(const WorkingContext& ctx, store::Database& db, std::int64_t ordre,
                const QString& table) {
    if (!recordsAttached(db)) return;
    auto record = saleRecord(ctx, db, ordre, table);
    if (!record) return;
    const SaleKey key = keyOf(ctx, ordre);
    if (const auto last = lastRecordOf(db, kAttachedRecords, key); last && last->alta) {
        if (last->id == record->id)
            record->subsanacion = true;
        else
            appendCancellation(ctx, db, last->id, key);
    }
    appendRecord(ctx, db, *record, key);
}

void recordDeletion(const WorkingContext& ctx, store::Database& db, std::int64_t ordre) {
    if (!recordsAttached(db)) return;
    const SaleKey key = keyOf(ctx, ordre);
    if (const auto last = lastRecordOf(db, kAttachedRecords, key); last && last->alta)
        appendCancellation(ctx, db, last->id, key);
}

}  // namespace tallora::verifactu
