#include "document_numbers.h"

#include "billing_document.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

#include <stdexcept>

namespace tallora::sales {
namespace {

void checkKind(const QString& kind) {
    for (const QString* known : {&kinds::FrasOut, &kinds::Presupuesto, &kinds::Proforma,
                                 &kinds::Albaran, &kinds::Borrador})
        if (kind == *known) return;
    throw std::invalid_argument("unknown document kind " + kind.toStdString());
}

}  // namespace

std::int64_t Seguent_Document(const WorkingContext& ctx, const QString& kind) {
    checkKind(kind);
    auto db = store::Database::open(ctx.companyFile(schema::db::Fact));
    return nextDocumentNumber(ctx, db, *docTypeFrom(kind), {});
}

int setDocumentCounter(const WorkingContext& ctx, const QString& kind, std::int64_t value) {
    checkKind(kind);
    auto db = store::Database::open(ctx.companyFile(schema::db::Fact));
    db.prepare(QStringLiteral("update Numeracion_Documentos set %1 = ? where Ejercicio = ?").arg(kind))
        .bind(1, value)
        .bind(2, std::int64_t{ctx.Exercici.toLongLong()})
        .execute();
    return db.changes();
}

}  // namespace tallora::sales
