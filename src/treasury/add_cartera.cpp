#include "add_cartera.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"

#include <optional>

namespace tallora::treasury {
namespace {

// What tells a sale from a purchase in the statements.
struct Direction {
    int question;
    QString invoiceFile;  // of the exercise
    QString invoiceTable;
    QString invoiceParty;  // Client / Proveidor of the invoice
    QString source;        // FrasOut / FrasIn of movimientos and cartera
    QString party;         // cliente / proveedor of cartera
    QString inOut;
};

// The fields of the invoice that the new receipt takes.
struct Invoice {
    QString data;
    std::optional<std::int64_t> party;
    QString descripcio;
    Money total;
};

void bindText(store::Statement& st, int index, const QString& text) {
    if (text.isNull())
        st.bind(index, nullptr);
    else
        st.bind(index, text);
}

std::optional<Invoice> readInvoice(store::Database& db, const Direction& d, std::int64_t ordre) {
    store::Statement st =
        db.prepare(QStringLiteral("select data, %1, descripcio, Total from main.%2 where Ordre = ?")
                       .arg(d.invoiceParty, d.invoiceTable));
    st.bind(1, ordre);
    if (!st.next()) return std::nullopt;
    return Invoice{st.isNull(0) ? QString() : st.text(0),
                   st.isNull(1) ? std::nullopt : std::optional<std::int64_t>(st.int64(1)),
                   st.isNull(2) ? QString() : st.text(2), st.money(3)};
}

// Gives the rows the insert made; nothing when the invoice is not there.
std::optional<int> rewrite(const WorkingContext& ctx, const Direction& d, std::int64_t ordre) {
    store::Database db = store::Database::open(ctx.exerciseFile(d.invoiceFile));
    db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("t"));
    db.attach(ctx.companyFile(schema::db::Cartera), QStringLiteral("c"));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    db.prepare(QStringLiteral("delete from t.movimientos where %1 = ? and %1 <> 0").arg(d.source))
        .bind(1, ordre)
        .execute();
    const std::optional<Invoice> invoice = readInvoice(db, d, ordre);
    if (!invoice) return std::nullopt;
    // Invoice numbers restart each year and the portfolio holds every exercise: only this
    // exercise's receipt of the invoice is replaced.
    db.prepare(QStringLiteral("delete from c.cartera where %1 = ? and %1 <> 0 and Ejercicio = ?")
                   .arg(d.source))
        .bind(1, ordre)
        .bind(2, ctx.Exercici)
        .execute();
    store::Statement insert = db.prepare(
        QStringLiteral("insert into c.cartera (data, %1, In_Out, Ejercicio, Factura, total, %2) "
                       "values (?, ?, ?, ?, ?, ?, ?)")
            .arg(d.party, d.source));
    bindText(insert, 1, invoice->data);
    if (invoice->party)
        insert.bind(2, *invoice->party);
    else
        insert.bind(2, nullptr);
    insert.bind(3, d.inOut).bind(4, ctx.Exercici);
    bindText(insert, 5, invoice->descripcio);
    insert.bind(6, invoice->total).bind(7, ordre);
    const int made = insert.execute();
    tx.commit();
    return made;
}

bool addCartera(const WorkingContext& ctx, Dialogs& dialogs, const QString& ordreText,
                const Direction& d) {
    bool number = false;
    const std::int64_t ordre = ordreText.trimmed().toLongLong(&number);
    if (!number || ordre == 0) return false;
    if (dialogs.yesNo(Missatge(ctx, d.question)) != Dialogs::Answer::Yes) return false;
    std::optional<int> made;
    try {
        made = rewrite(ctx, d, ordre);
    } catch (const store::StoreError& e) {
        dialogs.stop(e.message());
        return false;
    }
    if (!made) {
        dialogs.stop(Missatge(ctx, 811));
        return false;
    }
    // Told once the files are committed and closed.
    if (*made == 1) dialogs.information(Missatge(ctx, 6870));
    return *made == 1;
}

}  // namespace

bool AddCartera_Venda(const WorkingContext& ctx, Dialogs& dialogs, const QString& Ordre) {
    if (ctx.ModeExercici == QStringLiteral("TICKETS")) return false;
    return addCartera(
        ctx, dialogs, Ordre,
        {6869, schema::db::FrasOut, QStringLiteral("FrasOut"), QStringLiteral("Client"),
         QStringLiteral("FrasOut"), QStringLiteral("cliente"), QStringLiteral("Out")});
}

bool AddCartera_Compra(const WorkingContext& ctx, Dialogs& dialogs, const QString& Ordre) {
    return addCartera(
        ctx, dialogs, Ordre,
        {6871, schema::db::FrasIn, QStringLiteral("FrasIN"), QStringLiteral("Proveidor"),
         QStringLiteral("FrasIn"), QStringLiteral("proveedor"), QStringLiteral("In")});
}

}  // namespace tallora::treasury
