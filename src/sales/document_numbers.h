#pragma once
// The numbering of billing documents: per exercise and per kind, kept in the company's
// fact.mdb. The counter of Numeracion_Documentos is a hint; the documents decide.
#include "context/fwd.h"

#include <QString>

#include <cstdint>

namespace tallora::sales {

// Columns of the kinds in documentos and Numeracion_Documentos.
namespace kinds {
inline const QString FrasOut = QStringLiteral("FrasOut");
inline const QString Presupuesto = QStringLiteral("Presupuesto");
inline const QString Proforma = QStringLiteral("Proforma");
inline const QString Albaran = QStringLiteral("Albaran");
inline const QString Borrador = QStringLiteral("Borrador");
}  // namespace kinds

// The next number of `kind` for the open exercise (Seguent_Document): 0 when the exercise
// has no counter row; otherwise the counter plus one, passed over every number a document
// of the exercise already holds. Throws store::StoreError when fact.mdb cannot be read.
std::int64_t Seguent_Document(const WorkingContext& ctx, const QString& kind);

// Sets the counter of `kind` of the open exercise; gives the rows changed (0 without a row).
int setDocumentCounter(const WorkingContext& ctx, const QString& kind, std::int64_t value);

}  // namespace tallora::sales
