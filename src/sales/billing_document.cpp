#include "billing_document.h"

#include "billing_lines.h"
#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/lookups.h"
#include "schema/money_rows.h"

namespace tallora::sales {
namespace {

using store::Database;

std::int64_t exerciseOf(const WorkingContext& ctx) {
    return ctx.Exercici.toLongLong();
}

std::int64_t customerOf(const WorkingContext& ctx, const SaleEntry& e) {
    return isTickets(ctx) ? 0 : e.clientNumber.value_or(0);
}

QString prefixed(const QString& fact, const QString& table) {
    return fact.isEmpty() ? table : fact + u'.' + table;
}

void deleteDocument(Database& db, const QString& fact, const QString& column, std::int64_t number,
                    std::int64_t exercise) {
    for (const char* table : {"detalle", "documentos"})
        db.prepare(QStringLiteral("delete from %1 where %2 = ? and Ejercicio = ?")
                       .arg(prefixed(fact, QString::fromLatin1(table)), column))
            .bind(1, number)
            .bind(2, exercise)
            .execute();
}

// The five number columns, in the order of the statements: only the type's own holds one.
std::array<std::int64_t, 5> numberColumns(DocType type, std::int64_t number) {
    std::array<std::int64_t, 5> numbers{};
    numbers[static_cast<std::size_t>(type)] = number;
    return numbers;
}

const QString kNumberColumns = QStringLiteral("FrasOut, Borrador, Presupuesto, Proforma, Albaran");

// The lines of `column` = `number` copied into detalle_temp, which is emptied first.
void refillLines(Database& db, const QString& column, std::int64_t number, std::int64_t exercise) {
    db.execute(QStringLiteral("delete from detalle_temp"));
    db.prepare(QStringLiteral("insert into detalle_temp (fecha, concepto, unidades, pvp, dto, "
                              "precio_neto, importe, iva, client, Ejercicio, %1) "
                              "select fecha, concepto, unidades, pvp, dto, precio_neto, importe, "
                              "iva, client, Ejercicio, %1 from detalle "
                              "where %2 = ? and Ejercicio = ? order by Id asc")
                   .arg(kNumberColumns, column))
        .bind(1, number)
        .bind(2, exercise)
        .execute();
}

}  // namespace

void Verifica_Numeracion(const WorkingContext& ctx) {
    Database db = Database::open(ctx.companyFile(schema::db::Fact));
    auto st = db.prepare(QStringLiteral("select 1 from Numeracion_Documentos where Ejercicio = ?"));
    st.bind(1, exerciseOf(ctx));
    if (st.next()) return;
    db.prepare(QStringLiteral("insert into Numeracion_Documentos (Ejercicio) values (?)"))
        .bind(1, exerciseOf(ctx))
        .execute();
}

std::int64_t nextDocumentNumber(const WorkingContext& ctx, Database& db, DocType type,
                                const QString& fact) {
    const QString column = docInfo(type).column;
    auto counter =
        db.prepare(QStringLiteral("select %1 from %2 where Ejercicio = ?")
                       .arg(column, prefixed(fact, QStringLiteral("Numeracion_Documentos"))));
    counter.bind(1, exerciseOf(ctx));
    if (!counter.next()) return 0;
    std::int64_t number = counter.int64(0) + 1;
    auto taken = db.prepare(QStringLiteral("select 1 from %1 where %2 = ? and Ejercicio = ?")
                                .arg(prefixed(fact, QStringLiteral("documentos")), column));
    for (;; ++number) {
        taken.reset();
        taken.bind(1, number).bind(2, exerciseOf(ctx));
        if (!taken.next()) return number;
    }
}

void Graba_Document(const WorkingContext& ctx, Database& db, const SaleEntry& e,
                    std::int64_t compte, const QString& nomCompte, std::int64_t number,
                    const QString& fact) {
    const DocType type = e.billing.type;
    const std::int64_t exercise = exerciseOf(ctx);
    const std::optional<DocType> loaded = e.billing.loadedAs;
    if (loaded && *loaded != DocType::Factura)
        deleteDocument(db, fact, docInfo(*loaded).column, e.lblOrdre.toLongLong(), exercise);
    else if (type == DocType::Factura)
        deleteDocument(db, fact, docInfo(DocType::Factura).column, number, exercise);

    const auto numbers = numberColumns(type, number);
    const std::int64_t customer = customerOf(ctx, e);
    auto lines = db.prepare(
        QStringLiteral("insert into %1 (fecha, concepto, unidades, pvp, dto, importe, iva, client, "
                       "Ejercicio, %2) select fecha, concepto, unidades, pvp, dto, importe, iva, "
                       "?, ?, ?, ?, ?, ?, ? from %3 order by Id asc")
            .arg(prefixed(fact, QStringLiteral("detalle")), kNumberColumns,
                 prefixed(fact, QStringLiteral("detalle_temp"))));
    lines.bind(1, customer).bind(2, exercise);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        lines.bind(static_cast<int>(i) + 3, numbers[i]);
    lines.execute();

    auto header = db.prepare(
        QStringLiteral("insert into %1 (fecha, client, Ejercicio, Vencimiento, FormaPago, Entidad, "
                       "ccc, %2, Compte, NomCompte, BaseIRPF, TipusIRPF, Retencio) values "
                       "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .arg(prefixed(fact, QStringLiteral("documentos")), kNumberColumns));
    int n = 0;
    const QDate date = schema::captionDate(e.lblFecha);
    if (date.isValid())
        header.bind(++n, date);
    else
        header.bind(++n, nullptr);
    header.bind(++n, customer);
    header.bind(++n, exercise);
    if (e.venciment.isValid())
        header.bind(++n, e.venciment);
    else
        header.bind(++n, nullptr);
    for (const QString* text : {&e.billing.formaPago, &e.billing.entidad, &e.billing.ccc})
        header.bind(++n, schema::storedText(*text));
    for (std::int64_t value : numbers) header.bind(++n, value);
    header.bind(++n, compte);
    header.bind(++n, schema::storedText(nomCompte));
    for (const QString* amount : {&e.txtBaseIRPF, &e.Text1, &e.txtRetencio})
        header.bind(++n, schema::storedAmount(ctx, *amount));
    header.execute();

    if (loaded != type)
        db.prepare(QStringLiteral("update %1 set %2 = ? where Ejercicio = ?")
                       .arg(prefixed(fact, QStringLiteral("Numeracion_Documentos")),
                            docInfo(type).column))
            .bind(1, number)
            .bind(2, exercise)
            .execute();
}

Commercial Carrega_Comercial(const WorkingContext& ctx, std::optional<std::int64_t> client) {
    if (!client) return {};
    Database db = Database::open(ctx.companyFile(schema::db::Fact));
    auto st = db.prepare(
        QStringLiteral("select FormaPago, Entidad, ccc from comercial_clientes where Client = ?"));
    st.bind(1, *client);
    if (!st.next()) return {};
    return {st.text(0), st.text(1), st.text(2)};
}

std::optional<SaleEntry> Modifica_Document(const WorkingContext& ctx, DocType type,
                                           std::int64_t number) {
    const QString column = docInfo(type).column;
    Database db = Database::open(ctx.companyFile(schema::db::Fact));
    auto st = db.prepare(QStringLiteral("select Fecha, Client, Vencimiento, FormaPago, Entidad, "
                                        "ccc, NomCompte, BaseIRPF, TipusIRPF, Retencio from "
                                        "documentos where %1 = ? and Ejercicio = ?")
                             .arg(column));
    st.bind(1, number).bind(2, exerciseOf(ctx));
    if (!st.next()) return std::nullopt;
    SaleEntry e;
    e.lblOrdre = e.txtdescripcio = QString::number(number);
    e.txtBaseIRPF = Format_Import(ctx, st.money(7));
    e.Text1 = Format_Import(ctx, st.money(8));
    e.txtRetencio = Format_Import(ctx, st.money(9));
    showDate(st.date(0), e.lblFecha, e.txtDia, e.txtMes);
    const std::int64_t client = st.int64(1);
    if (!isTickets(ctx)) {
        e.txtClient = e.listClientsText = schema::Nom_Client(ctx, QString::number(client));
        if (!e.txtClient.isEmpty()) e.clientNumber = client;
    }
    e.txtTipus = e.listVendesText = st.text(6);
    e.venciment = st.date(2);
    e.billing = {type, type, st.text(3), st.text(4), st.text(5)};
    st.reset();
    store::Transaction tx(db);
    refillLines(db, column, number, exerciseOf(ctx));
    tx.commit();
    return e;
}

std::optional<SaleEntry> openDocument(const WorkingContext& ctx, DocType type,
                                      std::int64_t number) {
    auto e = Modifica_Document(ctx, type, number);
    if (!e) return e;
    e->reEnabled = !isTickets(ctx) && Client_RE(ctx, e->txtClient);
    Activa_RE(*e, e->reEnabled);
    sumLines(ctx, *e, e->reEnabled);
    return e;
}

void loadInvoiceDocument(const WorkingContext& ctx, std::int64_t number, SaleEntry& e) {
    const QString column = docInfo(DocType::Factura).column;
    Database db = Database::open(ctx.companyFile(schema::db::Fact));
    {
        store::Transaction tx(db);
        refillLines(db, column, number, exerciseOf(ctx));
        tx.commit();
    }
    e.billing.type = DocType::Factura;
    e.billing.loadedAs = DocType::Factura;
    auto st =
        db.prepare(QStringLiteral("select Vencimiento, FormaPago, Entidad, ccc from "
                                  "documentos where FrasOut = ? and Ejercicio = ?"));
    st.bind(1, number).bind(2, exerciseOf(ctx));
    if (!st.next()) return;
    if (st.date(0).isValid()) e.venciment = st.date(0);
    e.billing.formaPago = st.text(1);
    e.billing.entidad = st.text(2);
    e.billing.ccc = st.text(3);
}

int Esborra_Document(const WorkingContext& ctx, DocType type, std::int64_t number,
                     std::int64_t id) {
    Database db = Database::open(ctx.companyFile(schema::db::Fact));
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    // The lines go with the header's own exercise: the list shows every year's documents,
    // and a number of the open exercise may belong to another document.
    auto header = db.prepare(QStringLiteral("select Ejercicio from documentos where Id = ?"));
    header.bind(1, id);
    if (!header.next()) return 0;
    const std::int64_t exercise = header.int64(0);
    header.reset();
    db.prepare(QStringLiteral("delete from detalle where %1 = ? and Ejercicio = ?")
                   .arg(docInfo(type).column))
        .bind(1, number)
        .bind(2, exercise)
        .execute();
    const int removed =
        db.prepare(QStringLiteral("delete from documentos where Id = ?")).bind(1, id).execute();
    tx.commit();
    return removed;
}

}  // namespace tallora::sales
