#pragma once
// A billing document saved and opened: the header row of documentos and its lines in
// detalle, in the company's fact.mdb, numbered per exercise and type.
//
// Graba_Document runs inside the posting's transaction (sale_posting.h), on its connection
// with fact.mdb attached as "fact": the invoice, its money rows, the document and its lines
// are written together or not at all, the old lines of a resaved document included.
#include "context/fwd.h"
#include "sale_entry.h"
#include "store/database.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tallora::sales {

// Verifica_Numeracion: the exercise's row of Numeracion_Documentos, made when missing.
void Verifica_Numeracion(const WorkingContext& ctx);

// Seguent_Document on a posting's connection (fact.mdb attached as `fact`): 0 without the
// exercise's counter row.
std::int64_t nextDocumentNumber(const WorkingContext& ctx, store::Database& db, DocType type,
                                const QString& fact);

// Graba_Document, steps 2 to 5, for the document numbered `number`: the rows of the type it
// was loaded as go (which removes the source of a conversion), the lines of detalle_temp and
// the header are written with the customer, the account and the withholding of the entry, and
// the counter moves for a new number. Raises store faults; the caller rolls back.
//
// With no loaded document, the rows of the same number go only for an invoice, whose number
// was just taken from FrasOut: a new draft never deletes the lines of the invoice that has
// its number.
void Graba_Document(const WorkingContext& ctx, store::Database& db, const SaleEntry& entry,
                    std::int64_t compte, const QString& nomCompte, std::int64_t number,
                    const QString& fact);

// Carrega_Comercial: the customer's payment method, bank and account from
// comercial_clientes; all empty without a row or without a customer.
struct Commercial {
    QString formaPago, entidad, ccc;
};
Commercial Carrega_Comercial(const WorkingContext& ctx, std::optional<std::int64_t> client);

// Modifica_Document: document `number` of `type` of the open exercise put into an entry,
// its lines into detalle_temp; nothing without its row (detalle_temp is then untouched).
std::optional<SaleEntry> Modifica_Document(const WorkingContext& ctx, DocType type,
                                           std::int64_t number);

// A document opened on the billing tab: Modifica_Document, then the amounts of its lines
// (OMPLE_GRID_Detall and Recalcula_Apunt) for its customer's recargo.
std::optional<SaleEntry> openDocument(const WorkingContext& ctx, DocType type, std::int64_t number);

// Part of Modifica_Venda with the billing option: the invoice's lines into detalle_temp and
// its due date and commercial fields into the entry, which is marked as loaded as an invoice.
void loadInvoiceDocument(const WorkingContext& ctx, std::int64_t number, SaleEntry& entry);

// Esborra_Document: the header row `id` and the lines of document `number` of `type` of the
// header's own exercise (the inquiries list every exercise's documents, so the open one
// could name another document's lines). The counter stays. Gives the header rows deleted.
int Esborra_Document(const WorkingContext& ctx, DocType type, std::int64_t number, std::int64_t id);

}  // namespace tallora::sales
