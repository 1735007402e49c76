#include "exempt_amounts.h"

#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

namespace tallora::purchases {
namespace {

void setExempt(const WorkingContext& ctx, const QString& value) {
    store::Database db = store::Database::open(ctx.exerciseFile(schema::db::FrasIn));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    db.execute(QStringLiteral("update FrasIN set Exempta = ") + value);
    tx.commit();
}

}  // namespace

void Exempta_Tickets(const WorkingContext& ctx) {
    setExempt(ctx, QStringLiteral("ifnull(TOTAL, 0) + ifnull(Retencio, 0)"));
}

void Exempta_Factures(const WorkingContext& ctx) {
    setExempt(ctx, QStringLiteral("(ifnull(TOTAL, 0) + ifnull(Retencio, 0)) - ifnull(Base1, 0) - "
                                  "ifnull(Base2, 0) - ifnull(Base3, 0) - ifnull(Base4, 0) - "
                                  "ifnull(Iva1, 0) - ifnull(Iva2, 0) - ifnull(Iva3, 0) - "
                                  "ifnull(Iva4, 0)"));
}

}  // namespace tallora::purchases
