#include "commands.h"
#include "verifactu/chain_check.h"
#include "verifactu/record_file.h"
#include "verifactu/stored_records.h"

namespace tallora::cli {
namespace {

QString kindWord(const verifactu::StoredRecord& r) {
    if (!r.alta) return QStringLiteral("anulacion");
    return r.subsanacion ? QStringLiteral("alta-subsanacion") : QStringLiteral("alta");
}

}  // namespace

int verifactuRecordsCommand(Session& s, const CliOptions& o) {
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    verifactu::forEachRecord(
        verifactu::recordsPathIn(s.ctx.Directori), [&](const verifactu::StoredRecord& r) {
            const QStringList fields{QString::number(r.id),
                                     kindWord(r),
                                     r.tipoFactura,
                                     r.numSerie,
                                     r.fecha,
                                     r.importeTotal,
                                     r.fechaHora,
                                     r.huella,
                                     r.estado.isEmpty() ? QStringLiteral("pendiente") : r.estado};
            s.out << fields.join(u'\t') << '\n';
            return true;
        });
    return s.finish(true);
}

int verifactuCheckCommand(Session& s, const CliOptions& o) {
    s.start();
    if (!s.openCompany(o.arguments[0])) return kRefused;
    const verifactu::ChainCheck check =
        verifactu::checkChain(verifactu::recordsPathIn(s.ctx.Directori));
    if (check.broken) return s.refuse(verifactu::breakText(s.ctx, *check.broken));
    s.out << QStringLiteral("%1 registros, cadena correcta").arg(check.records) << '\n';
    return s.finish(true);
}

}  // namespace tallora::cli
