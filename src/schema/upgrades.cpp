#include "upgrades.h"

#include <QFile>

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "creation.h"
#include "store/database.h"
#include "store/schema_objects.h"
#include "table_catalog.h"

namespace tallora::schema {
namespace {

using store::Database;

// Runs one step with errors ignored.
template <typename Step>
void ignoringErrors(Step&& step) {
    try {
        step();
    } catch (const store::StoreError&) {
    } catch (const std::out_of_range&) {
    }
}

// Opens an existing database once and runs `step` for each item, each with errors ignored.
template <typename Step>
void forEachIgnoringErrors(const QString& path, const QStringList& items, Step&& step) {
    ignoringErrors([&] {
        Database d = Database::open(path);
        for (const QString& item : items) ignoringErrors([&] { step(d, item); });
    });
}

// Adds each field that is missing, each one on its own, errors ignored.
void addFields(const QString& path, const QString& database, const QString& table,
               const QStringList& fields) {
    forEachIgnoringErrors(path, fields, [&](Database& d, const QString& field) {
        if (!store::fieldExists(d, table, field))
            store::addField(d, table, TableCatalog::builtIn().field(database, table, field));
    });
}

// Creates each table that is missing in an existing database, errors ignored.
void addTables(const QString& path, const QString& database, const QStringList& tables) {
    forEachIgnoringErrors(path, tables, [&](Database& d, const QString& table) {
        if (!store::tableExists(d, table))
            store::createTable(d, TableCatalog::builtIn().creationDef(database, table));
    });
}

QString companyFolder(const WorkingContext& ctx) { return ctx.companyFile(QString()); }

const QStringList kContactFields{"fax", "email", "web"};
const QStringList kPlaceFields{"cp", "provincia"};

}  // namespace

void upgradeSalesFields(const WorkingContext& ctx) {
    addFields(ctx.exerciseFile(db::FrasOut), db::FrasOut, "FrasOut",
              {"NIF", "direccio", "poblacio", "concepte1", "concepte2", "concepte3", "concepte4",
               "concepte5"});
}

void upgradeBilling(const WorkingContext& ctx) {
    if (!ctx.Facturacio) return;
    ignoringErrors([&] {
        if (!anyFileWithStem(companyFolder(ctx), QStringLiteral("fact")))
            Database::open(ctx.companyFile(db::Fact), Database::Mode::CreateIfMissing);
    });
    addTables(ctx.companyFile(db::Fact), db::Fact,
              {"detalle", "detalle_temp", "documentos", "Numeracion_Documentos", "comercial_clientes"});
}

void upgradeJournal(const QString& llibrePath) {
    addFields(llibrePath, db::Llibre, "Diari", {"Clasificacion", "num_fra", "Id"});
}

void prepareStatementTable(const WorkingContext& ctx) {
    addTables(ctx.exerciseFile(db::Tesorer), db::Tesorer, {"movimientos_extracto"});
    addFields(ctx.exerciseFile(db::Tesorer), db::Tesorer, "movimientos_extracto", {"contrapartida"});
}

void Actualitza_Bases(const WorkingContext& ctx) {
    const QString gest = ctx.exerciseFile(db::Gest);
    // 1
    addFields(gest, db::Gest, "clients", kContactFields);
    addFields(gest, db::Gest, "Proveidors", kContactFields);
    // 2
    upgradeSalesFields(ctx);
    // 3
    addFields(gest, db::Gest, "Clients", kPlaceFields);
    addFields(gest, db::Gest, "Proveidors", kPlaceFields);
    // 4
    ignoringErrors([&] {
        if (!anyFileWithStem(ctx.Directori, QStringLiteral("Supl")))
            Database::open(ctx.exerciseFile(db::Supl), Database::Mode::CreateIfMissing);
    });
    addTables(ctx.exerciseFile(db::Supl), db::Supl, {"Suplidos"});
    // 5
    upgradeBilling(ctx);
    // 6
    addFields(ctx.exerciseFile(db::FrasOut), db::FrasOut, "FrasOut", {"Clasificacion"});
    addFields(ctx.exerciseFile(db::FrasIn), db::FrasIn, "FrasIn", {"Clasificacion"});
    addFields(ctx.exerciseFile(db::Llibre), db::Llibre, "diari", {"Clasificacion"});
    // 7
    ignoringErrors([&] {
        Database d = Database::open(ctx.companyFile(db::Fact));
        if (!store::indexExists(d, "comercial_clientes", "Client"))
            store::addIndex(d, "comercial_clientes", "Client");
    });
    // 8 and 9: a missing treasury database gets the whole treasury set-up first.
    const QString tesorer = ctx.exerciseFile(db::Tesorer);
    auto setUpWhenMissing = [&] {
        if (!QFile::exists(tesorer)) Prepara_Tesoreria(ctx, nullptr);
    };
    setUpWhenMissing();
    addFields(tesorer, db::Tesorer, "movimientos_extracto", {"contrapartida"});
    setUpWhenMissing();
    addTables(tesorer, db::Tesorer, {"mayor"});
    // 10
    addFields(ctx.companyFile(db::Cartera), db::Cartera, "cartera", {"Vencimiento"});
    // 11
    addTables(ctx.companyFile(db::Fact), db::Fact, {"Referencias"});
}

bool Prepara_Tesoreria(const WorkingContext& ctx, Dialogs* dialogs) {
    try {
        const QString tesorer = ctx.exerciseFile(db::Tesorer);
        // 1, 2
        if (!anyFileWithStem(ctx.Directori, QStringLiteral("tesorer")))
            Database::open(tesorer, Database::Mode::CreateIfMissing);
        createTables(tesorer, db::Tesorer, {"entidades", "movimientos"});
        // 3, 4
        if (!anyFileWithStem(companyFolder(ctx), QStringLiteral("cartera")))
            Database::open(ctx.companyFile(db::Cartera), Database::Mode::CreateIfMissing);
        createTables(ctx.companyFile(db::Cartera), db::Cartera, {"cartera"});
        createTables(tesorer, db::Tesorer, {"otros_movimientos"});
        // 5: the cash account
        {
            Database d = Database::open(tesorer);
            store::Statement any = d.prepare(QStringLiteral("select * from entidades"));
            if (!any.next()) {
                store::Statement insert =
                    d.prepare(QStringLiteral("Insert into entidades (Grup, entidad) values (?, ?)"));
                insert.bind(1, 570).bind(2, Missatge(ctx, 6646)).execute();
            }
        }
        // 6
        {
            const QString gest = ctx.exerciseFile(db::Gest);
            Database d = Database::open(gest);
            for (const char* table : {"Clients", "Proveidors"})
                if (!store::fieldExists(d, table, "saldo"))
                    store::addField(d, table, TableCatalog::builtIn().field(db::Gest, table, "saldo"));
        }
        // 7: the other accounts
        {
            const QString comptes = ctx.exerciseFile(db::Comptes);
            createTables(comptes, db::Comptes, {"Otras"});
            Database d = Database::open(comptes);
            store::Statement any = d.prepare(QStringLiteral("select * from otras"));
            if (!any.next()) {
                store::Transaction tx(d);
                store::Statement insert = d.prepare(QStringLiteral(
                    "Insert into otras (Grup, NomGrup, NomCompte, Tipus) values (?, ?, ?, 'P')"));
                for (const auto& [grup, message] : {std::pair{170, 6664}, {475, 6665}, {550, 6666}}) {
                    const QString name = Missatge(ctx, message);
                    insert.bind(1, grup).bind(2, name).bind(3, name).execute();
                }
                tx.commit();
            }
        }
        // 8: with treasury, payment and collection are told by the portfolio and movements.
        Database::open(ctx.exerciseFile(db::FrasIn)).execute(QStringLiteral("Update FrasIN set Pagada=0"));
        Database::open(ctx.exerciseFile(db::FrasOut)).execute(QStringLiteral("Update FrasOut set Cobrada=0"));
        return true;
    } catch (const store::StoreError& e) {
        if (dialogs) dialogs->stop(e.message());
        return false;
    }
}

}  // namespace tallora::schema
