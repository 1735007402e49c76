#include "price_references.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master_store.h"
#include "schema/creation.h"

namespace tallora::master {
namespace {

namespace db = schema::db;
using store::Database;
using store::Statement;

}  // namespace

QStringList referenceCodes(const WorkingContext& ctx) {
    return detail::firstColumn(
        ctx.companyFile(db::Fact),
        QStringLiteral("select Referencia from referencias order by referencia asc"));
}

std::optional<PriceReference> referenceByCode(const WorkingContext& ctx,
                                              const QString& referencia) {
    Database d = Database::open(ctx.companyFile(db::Fact));
    // A change may repeat a code: the first row of it is the one shown.
    Statement st =
        d.prepare(QStringLiteral("select * from referencias where referencia=? order by Id"));
    st.bind(1, referencia);
    if (!st.next()) return std::nullopt;
    PriceReference r;
    r.id = detail::textOf(st, QStringLiteral("Id"));
    r.referencia = detail::textOf(st, QStringLiteral("Referencia"));
    r.descripcion = detail::textOf(st, QStringLiteral("Descripcion"));
    r.precio = detail::amountTextOf(ctx, st, QStringLiteral("Precio"));
    return r;
}

Outcome saveReference(const WorkingContext& ctx, Dialogs& dialogs, PriceReference& r, bool isNew) {
    // The message speaks of the description, but the code is what is compulsory.
    if (r.referencia.trimmed().isEmpty())
        return detail::refuse(ctx, dialogs, 7000, QStringLiteral("txtReferencia"));
    // The code itself goes in as typed: it is bound, never spliced into the statement.
    detail::sanitise({&r.descripcion, &r.precio});
    if (r.precio.isEmpty()) r.precio = QStringLiteral("0");
    const auto precio = detail::amountOf(ctx, r.precio);
    if (!precio)
        return detail::refuseBadNumber(ctx, dialogs, 7005, r.precio, QStringLiteral("txtPrecio"));

    return detail::saving(ctx, dialogs, [&]() -> Outcome {
        Database d = Database::open(ctx.companyFile(db::Fact));
        // Descripcion refuses an empty text, so a reference without one keeps null.
        if (isNew) {
            if (detail::anyRow(d, QStringLiteral("select * from referencias where referencia=?"),
                               r.referencia))
                return detail::refuse(ctx, dialogs, 6843, QStringLiteral("txtReferencia"));
            Statement ins = d.prepare(QStringLiteral(
                "Insert into referencias (Referencia, Descripcion, precio) values (?, ?, ?)"));
            ins.bind(1, detail::stored(r.referencia));
            detail::bindTextOrNull(ins, 2, r.descripcion);
            ins.bind(3, *precio);
            const int affected = ins.execute();
            r.id = QString::number(d.lastInsertId());
            return Outcome::wrote(affected);
        }
        Statement up = d.prepare(QStringLiteral(
            "update referencias set Referencia=?, descripcion=?, Precio=? where Id = ?"));
        up.bind(1, detail::stored(r.referencia));
        detail::bindTextOrNull(up, 2, r.descripcion);
        up.bind(3, *precio);
        detail::bindKey(up, 4, r.id);
        return Outcome::wrote(up.execute());
    });
}

Outcome deleteReference(const WorkingContext& ctx, Dialogs& dialogs, const QString& id) {
    return detail::deletion(ctx, dialogs, 6999, [&]() -> Outcome {
        // No test of use: billing lines keep their own text and price.
        Database d = Database::open(ctx.companyFile(db::Fact));
        Statement del = d.prepare(QStringLiteral("delete from referencias where Id = ?"));
        detail::bindKey(del, 1, id);
        return Outcome::wrote(del.execute());
    });
}

}  // namespace tallora::master
