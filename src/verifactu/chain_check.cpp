#include "chain_check.h"

#include "record_chain.h"
#include "record_xml.h"
#include "stored_records.h"

#include "context/messages.h"

#include <QHash>

namespace tallora::verifactu {
namespace {

bool columnsAgree(const StoredRecord& row, const InvoiceRecord& r) {
    return row.emisor == r.id.emisor && row.numSerie == r.id.numSerie && row.fecha == r.id.fecha &&
           row.alta == (r.kind == RecordKind::Alta) && row.tipoFactura == r.tipoFactura &&
           row.subsanacion == r.subsanacion && row.importeTotal == r.importeTotal &&
           row.fechaHora == r.fechaHora && row.huella == r.huella;
}

bool linkAgrees(const std::optional<ChainLink>& expected, const std::optional<ChainLink>& found) {
    if (!expected || !found) return !expected && !found;
    return expected->id == found->id && expected->huella == found->huella;
}

std::optional<BreakKind> checkRow(const StoredRecord& row, const QString& previousSeal,
                                  QHash<QString, ChainLink>& lastOfIssuer) {
    const auto record = chainFields(row.xml);
    if (!record) return BreakKind::Unreadable;
    if (!columnsAgree(row, *record)) return BreakKind::Columns;
    const auto last = lastOfIssuer.constFind(row.emisor);
    const std::optional<ChainLink> expected =
        last == lastOfIssuer.constEnd() ? std::nullopt : std::optional<ChainLink>(*last);
    if (!linkAgrees(expected, record->anterior)) return BreakKind::Link;
    if (computeHuella(*record) != record->huella) return BreakKind::Hash;
    if (rowSeal(previousSeal, row.id, row.ejercicio, row.ordre, row.xml) != row.sello)
        return BreakKind::Seal;
    lastOfIssuer.insert(row.emisor, ChainLink{record->id, record->huella});
    return std::nullopt;
}

}  // namespace

ChainCheck checkChain(const QString& path) {
    ChainCheck check;
    QHash<QString, ChainLink> lastOfIssuer;
    QString previousSeal;
    forEachRecord(path, [&](const StoredRecord& row) {
        ++check.records;
        if (const auto kind = checkRow(row, previousSeal, lastOfIssuer)) {
            check.broken = ChainBreak{row.id, *kind};
            return false;
        }
        previousSeal = row.sello;
        return true;
    });
    return check;
}

QString breakText(const WorkingContext& ctx, const ChainBreak& broken) {
    const QString number = QString::number(broken.id);
    switch (broken.kind) {
        case BreakKind::Unreadable:
            return fixedText(ctx, QStringLiteral("El registro %1 no se puede leer"),
                             QStringLiteral("El registre %1 no es pot llegir"))
                .arg(number);
        case BreakKind::Columns:
            return fixedText(
                       ctx,
                       QStringLiteral(
                           "El registro %1 ha sido modificado: sus datos no coinciden con su XML"),
                       QStringLiteral("El registre %1 ha estat modificat: les dades no "
                                      "coincideixen amb el seu XML"))
                .arg(number);
        case BreakKind::Link:
            return fixedText(ctx,
                             QStringLiteral("El registro %1 no encadena con el registro anterior"),
                             QStringLiteral("El registre %1 no encadena amb el registre anterior"))
                .arg(number);
        case BreakKind::Hash:
            return fixedText(
                       ctx, QStringLiteral("La huella del registro %1 no corresponde a sus datos"),
                       QStringLiteral("L'empremta del registre %1 no correspon a les seves dades"))
                .arg(number);
        case BreakKind::Seal:
            return fixedText(
                       ctx,
                       QStringLiteral("El sello del registro %1 no sigue al registro anterior"),
                       QStringLiteral("El segell del registre %1 no segueix el registre anterior"))
                .arg(number);
    }
    return QString();
}

}  // namespace tallora::verifactu
