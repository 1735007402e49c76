#include "customers.h"

#include "banking/account_numbers.h"
#include "banking/bank_file.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "master_store.h"
#include "schema/creation.h"

#include <QFileInfo>

namespace tallora::master {
namespace {

namespace db = schema::db;
using store::Database;
using store::Statement;

// The commercial fields of the customer, from the company's billing file when there is one.
void readCommercial(const WorkingContext& ctx, Customer& c) {
    const QString fact = ctx.companyFile(db::Fact);
    if (!QFileInfo::exists(fact)) return;
    Database d = Database::open(fact);
    Statement st = d.prepare(QStringLiteral("Select * from comercial_clientes where Client=?"));
    detail::bindKey(st, 1, c.client);
    if (!st.next()) return;
    c.formaPago = detail::textOf(st, QStringLiteral("FormaPago"));
    c.entidad = detail::textOf(st, QStringLiteral("Entidad"));
    c.ccc = detail::textOf(st, QStringLiteral("ccc"));
}

void showMandate(Customer& c, const std::optional<banking::Mandate>& m) {
    c.mandatoReferencia = m ? m->reference : QString();
    c.mandatoFirma = m ? Format_Data(m->signedOn) : QString();
    c.mandatoRecurrente = m && m->recurrent;
}

void readMandate(const WorkingContext& ctx, Customer& c) {
    if (const auto client = detail::wholeNumberOf(c.client))
        showMandate(c, banking::mandateOf(ctx, *client));
}

// A customer from the current row of a select on Clients; saldo only with treasury.
Customer readCustomer(const WorkingContext& ctx, const Statement& st) {
    Customer c;
    c.client = detail::textOf(st, QStringLiteral("client"));
    c.nom = detail::textOf(st, QStringLiteral("nom"));
    c.direccio = detail::textOf(st, QStringLiteral("direccio"));
    c.poblacio = detail::textOf(st, QStringLiteral("poblacio"));
    c.provincia = detail::textOf(st, QStringLiteral("provincia"));
    c.cp = detail::textOf(st, QStringLiteral("cp"));
    c.nif = detail::textOf(st, QStringLiteral("nif"));
    c.telefon = detail::textOf(st, QStringLiteral("telefon"));
    c.fax = detail::textOf(st, QStringLiteral("fax"));
    c.email = detail::textOf(st, QStringLiteral("email"));
    c.web = detail::textOf(st, QStringLiteral("web"));
    const int re = st.columnIndex(QStringLiteral("RE"));
    c.re = re >= 0 && st.boolean(re);
    if (ctx.Tesoreria) c.saldo = detail::amountTextOf(ctx, st, QStringLiteral("saldo"));
    return c;
}

// The first row of `sql` (one key bound) on Clients, with its commercial row.
template <typename Key>
std::optional<Customer> firstCustomer(const WorkingContext& ctx, const QString& sql, Key key) {
    Customer c;
    {
        Database d = Database::open(ctx.exerciseFile(db::Gest));
        Statement st = d.prepare(sql);
        st.bind(1, key);
        if (!st.next()) return std::nullopt;
        c = readCustomer(ctx, st);
    }
    if (ctx.Facturacio) {
        readCommercial(ctx, c);
        readMandate(ctx, c);
    }
    return c;
}

// The commercial row of customer `client`, anew: the old one goes first.
void rebuildCommercial(Database& d, const Customer& c, std::int64_t client, bool replace) {
    if (replace) {
        Statement del =
            d.prepare(QStringLiteral("delete from fact.comercial_clientes where Client = ?"));
        del.bind(1, client);
        del.execute();
    }
    Statement ins =
        d.prepare(QStringLiteral("Insert into fact.comercial_clientes (Client, FormaPago, Entidad, "
                                 "ccc) values (?, ?, ?, ?)"));
    ins.bind(1, client)
        .bind(2, detail::stored(c.formaPago))
        .bind(3, detail::stored(c.entidad))
        .bind(4, detail::stored(c.ccc));
    ins.execute();
}

}  // namespace

QStringList customerNames(const WorkingContext& ctx) {
    return detail::firstColumn(ctx.exerciseFile(db::Gest),
                               QStringLiteral("select nom from clients order by nom asc"));
}

std::vector<Customer> customerRecords(const WorkingContext& ctx) {
    std::vector<Customer> customers;
    Database d = Database::open(ctx.exerciseFile(db::Gest));
    QString columns = QStringLiteral("Clients.*");
    if (ctx.Facturacio &&
        detail::attachIfPresent(d, ctx.companyFile(db::Fact), QStringLiteral("fact"))) {
        // One read for all: each customer's first commercial row, as the screen finds it.
        for (const char* column : {"FormaPago", "Entidad", "ccc"})
            columns += QStringLiteral(
                           ", (select k.%1 from fact.comercial_clientes k where k.Client = "
                           "Clients.client order by k.Id limit 1) as k_%1")
                           .arg(QString::fromLatin1(column));
    }
    Statement st = d.prepare(QStringLiteral("select ") + columns +
                             QStringLiteral(" from Clients order by nom asc, client asc"));
    const auto mandates =
        ctx.Facturacio ? banking::mandatesByClient(ctx) : QHash<std::int64_t, banking::Mandate>{};
    while (st.next()) {
        Customer c = readCustomer(ctx, st);
        c.formaPago = detail::textOf(st, QStringLiteral("k_FormaPago"));
        c.entidad = detail::textOf(st, QStringLiteral("k_Entidad"));
        c.ccc = detail::textOf(st, QStringLiteral("k_ccc"));
        if (const auto client = detail::wholeNumberOf(c.client);
            client && mandates.contains(*client))
            showMandate(c, mandates.value(*client));
        customers.push_back(std::move(c));
    }
    return customers;
}

std::optional<Customer> customerByName(const WorkingContext& ctx, const QString& nom) {
    // With two customers of one name (a rename may make them) the first one is shown.
    return firstCustomer(ctx, QStringLiteral("select * from clients where nom=? order by client"),
                         nom);
}

std::optional<Customer> customerByNumber(const WorkingContext& ctx, const QString& client) {
    const auto number = detail::wholeNumberOf(client);
    if (!number) return std::nullopt;
    return firstCustomer(ctx, QStringLiteral("select * from clients where client=?"), *number);
}

Outcome saveCustomer(const WorkingContext& ctx, Dialogs& dialogs, Customer& c, bool isNew) {
    if (c.nom.trimmed().isEmpty())
        return detail::refuse(ctx, dialogs, 312, QStringLiteral("txtnom"));
    detail::sanitise({&c.nom, &c.direccio, &c.poblacio, &c.provincia, &c.cp, &c.nif, &c.telefon,
                      &c.fax, &c.email, &c.web, &c.saldo});
    if (c.saldo.isEmpty()) c.saldo = QStringLiteral("0");
    // The balance is only written with the treasury option, so only then must it be an amount.
    std::optional<Money> saldo;
    if (ctx.Tesoreria) {
        saldo = detail::amountOf(ctx, c.saldo);
        if (!saldo)
            return detail::refuseBadNumber(ctx, dialogs, 6742, c.saldo, QStringLiteral("txtsaldo"));
    }

    std::optional<banking::Mandate> mandate;
    if (ctx.Facturacio) {
        c.ccc = banking::storedAccount(c.ccc);
        c.mandatoReferencia = c.mandatoReferencia.trimmed();
        if (!c.mandatoReferencia.isEmpty()) {
            const QDate signedOn =
                QDate::fromString(c.mandatoFirma.trimmed(), QStringLiteral("dd/MM/yyyy"));
            if (!signedOn.isValid()) {
                dialogs.stop(fixedText(ctx, "Fecha de firma del mandato INCORRECTA: ",
                                       "Data de signatura del mandat INCORRECTA: ") +
                             c.mandatoFirma);
                return Outcome::refused(QStringLiteral("txtMandatoFirma"));
            }
            mandate = banking::Mandate{c.mandatoReferencia, signedOn, c.mandatoRecurrente};
        }
    }

    detail::Notices notices;
    const Outcome outcome = detail::guarded(dialogs, [&]() -> Outcome {
        Database d = Database::open(ctx.exerciseFile(db::Gest));
        if (isNew && detail::anyRow(d, QStringLiteral("select * from Clients where nom=?"), c.nom))
            return detail::refuse(ctx, dialogs, 6843, QStringLiteral("txtnom"));
        if (ctx.Facturacio) {
            d.attach(ctx.companyFile(db::Fact), QStringLiteral("fact"));
            banking::attachBankFile(ctx, d);
            if (mandate) {
                Statement taken = d.prepare(QStringLiteral(
                    "select Client from banco.Mandatos where Referencia = ? and Client <> ?"));
                taken.bind(1, mandate->reference);
                detail::bindKey(taken, 2, isNew ? QStringLiteral("0") : c.client);
                if (taken.next()) {
                    dialogs.stop(
                        fixedText(ctx, "Otro cliente tiene ya un mandato con esa referencia: ",
                                  "Un altre client ja té un mandat amb aquesta referència: ") +
                        mandate->reference);
                    return Outcome::refused(QStringLiteral("txtMandatoReferencia"));
                }
            }
        }
        const bool salesFile = !isNew && detail::attachIfPresent(d, ctx.exerciseFile(db::FrasOut),
                                                                 QStringLiteral("fo"));
        const bool provisionsFile =
            !isNew && detail::attachIfPresent(d, ctx.exerciseFile(db::Supl), QStringLiteral("su"));

        store::Transaction tx(d);
        QString sql;
        if (isNew)
            sql = ctx.Tesoreria ? QStringLiteral(
                                      "Insert into Clients (nom, direccio, poblacio, provincia, "
                                      "cp, nif, telefon, fax, email, web, RE, saldo) values "
                                      "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                                : QStringLiteral(
                                      "Insert into Clients (nom, direccio, poblacio, provincia, "
                                      "cp, nif, telefon, fax, email, web, RE) values "
                                      "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        else
            sql = ctx.Tesoreria ? QStringLiteral(
                                      "update Clients set nom=?, direccio=?, poblacio=?, "
                                      "provincia=?, cp=?, nif=?, telefon=?, fax=?, email=?, "
                                      "web=?, RE=?, saldo=? where client = ?")
                                : QStringLiteral(
                                      "update Clients set nom=?, direccio=?, poblacio=?, "
                                      "provincia=?, cp=?, nif=?, telefon=?, fax=?, email=?, "
                                      "web=?, RE=? where client = ?");
        Statement st = d.prepare(sql);
        int i = 0;
        for (const QString* text : {&c.nom, &c.direccio, &c.poblacio, &c.provincia, &c.cp, &c.nif,
                                    &c.telefon, &c.fax, &c.email, &c.web})
            st.bind(++i, detail::stored(*text));
        st.bind(++i, c.re);
        if (saldo) st.bind(++i, *saldo);
        if (!isNew) detail::bindKey(st, ++i, c.client);
        const int affected = st.execute();

        std::optional<std::int64_t> client =
            isNew ? std::optional(d.lastInsertId()) : detail::wholeNumberOf(c.client);
        if (ctx.Facturacio && client) {
            rebuildCommercial(d, c, *client, !isNew);
            banking::storeMandate(d, *client, mandate);
        }
        notices.add(ctx, 314, affected);

        if (!isNew) {
            // Invoices and provisions carry the name; movements and receipts only the number.
            notices.add(ctx, 327,
                        detail::spreadName(
                            d, salesFile,
                            QStringLiteral("Update fo.FrasOut set nomclient = ? where client = ?"),
                            c.nom, c.client));
            notices.add(ctx, 327,
                        detail::spreadName(d, provisionsFile,
                                           QStringLiteral("Update su.Suplidos set NomProveidor = ? "
                                                          "where Proveidor = ? and Tipus='P'"),
                                           c.nom, c.client));
        }
        tx.commit();
        if (isNew) c.client = QString::number(*client);
        return Outcome::wrote(affected);
    });
    if (outcome.done()) notices.show(dialogs);
    return outcome;
}

Outcome deleteCustomer(const WorkingContext& ctx, Dialogs& dialogs, const QString& client) {
    return detail::deletion(ctx, dialogs, 309, [&]() -> Outcome {
        if (detail::anyRowIn(ctx.exerciseFile(db::FrasOut),
                             QStringLiteral("select * from frasout where client = ?"), client))
            return detail::refuse(ctx, dialogs, 310);
        if (ctx.Tesoreria) {
            if (detail::anyRowIn(ctx.exerciseFile(db::Tesorer),
                                 QStringLiteral("select * from movimientos where cliente = ?"),
                                 client))
                return detail::refuse(ctx, dialogs, 6838);
            // The same message for a receipt: the customer screen never says 6840.
            if (detail::anyRowIn(ctx.companyFile(db::Cartera),
                                 QStringLiteral("select * from cartera where cliente = ?"), client))
                return detail::refuse(ctx, dialogs, 6838);
        }
        if (ctx.Facturacio &&
            detail::anyRowIn(ctx.companyFile(db::Fact),
                             QStringLiteral("select * from documentos where Client = ?"), client))
            return detail::refuse(ctx, dialogs, 6839);

        Database d = Database::open(ctx.exerciseFile(db::Gest));
        const bool billing = ctx.Facturacio && detail::attachIfPresent(d, ctx.companyFile(db::Fact),
                                                                       QStringLiteral("fact"));
        if (billing) banking::attachBankFile(ctx, d);
        store::Transaction tx(d);
        Statement del = d.prepare(QStringLiteral("delete from Clients where client = ?"));
        detail::bindKey(del, 1, client);
        const int affected = del.execute();
        if (billing) {
            Statement com =
                d.prepare(QStringLiteral("delete from fact.comercial_clientes where Client = ?"));
            detail::bindKey(com, 1, client);
            com.execute();
            if (const auto number = detail::wholeNumberOf(client))
                banking::storeMandate(d, *number, std::nullopt);
        }
        tx.commit();
        return Outcome::wrote(affected);
    });
}

}  // namespace tallora::master
