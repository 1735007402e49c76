#include "bank_file.h"

#include "context/working_context.h"
#include "store/side_file.h"

#include <QFile>

namespace tallora::banking {
namespace {

using store::counterField;
using store::fieldOf;
using store::FieldType;
using store::memoField;
using store::textField;

store::TableDef mandatos() {
    store::TableDef t;
    t.name = QStringLiteral("Mandatos");
    t.fields = {counterField("Id"), fieldOf("Client", FieldType::Long), textField("Referencia", 35),
                fieldOf("FechaFirma", FieldType::Date), fieldOf("Recurrente", FieldType::Boolean)};
    t.indexes = {{QStringLiteral("Client")}};
    return t;
}

store::TableDef cuentasProveedor() {
    store::TableDef t;
    t.name = QStringLiteral("CuentasProveedor");
    t.fields = {counterField("Id"), fieldOf("Proveedor", FieldType::Long), textField("IBAN", 34),
                textField("BIC", 11, true)};
    t.indexes = {{QStringLiteral("Proveedor")}};
    return t;
}

store::TableDef remesas() {
    store::TableDef t;
    t.name = QStringLiteral("Remesas");
    t.fields = {counterField("Id"),
                textField("Tipo", 1),  // C collections, P payments
                fieldOf("Ejercicio", FieldType::Long),
                fieldOf("Entidad", FieldType::Long),
                fieldOf("Fecha", FieldType::Date),
                fieldOf("FechaCargo", FieldType::Date),
                textField("Mensaje", 35),
                textField("Formato", 20),
                fieldOf("Recibos", FieldType::Long),
                fieldOf("Total", FieldType::Currency),
                memoField("Xml"),
                textField("Creado", 25)};
    return t;
}

store::TableDef apuntesBanco() {
    store::TableDef t;
    t.name = QStringLiteral("ApuntesBanco");
    t.fields = {counterField("Id"), textField("Cuenta", 20), textField("Clave", 255),
                fieldOf("Ejercicio", FieldType::Long), fieldOf("Entidad", FieldType::Long),
                fieldOf("Fecha", FieldType::Date), fieldOf("Importe", FieldType::Currency),
                // R receipt, D returned receipt, O other movement, S the bank's line of a
                // SEPA file, whose Movimiento is then the file's Remesas.Id
                textField("Tipo", 1), fieldOf("Movimiento", FieldType::Long)};
    t.indexes = {{QStringLiteral("Clave")}};
    return t;
}

QString settingOf(const WorkingContext& ctx, const QString& name) {
    auto db = openExistingBankFile(ctx);
    return db ? store::readSetting(*db, name) : QString();
}

}  // namespace

QString bankPath(const WorkingContext& ctx) {
    return ctx.companyFile(kBankFile);
}

void ensureBankFile(const QString& path) {
    store::Database db = store::Database::open(path, store::Database::Mode::CreateIfMissing);
    // The settings table is made last: with it there, the file is whole.
    if (store::tableExists(db, QStringLiteral("Ajustes"))) return;
    for (const store::TableDef& table :
         {mandatos(), cuentasProveedor(), remesas(), apuntesBanco(), store::settingsTable()})
        if (!store::tableExists(db, table.name)) store::createTable(db, table);
}

std::optional<store::Database> openExistingBankFile(const WorkingContext& ctx) {
    const QString path = bankPath(ctx);
    if (!QFile::exists(path)) return std::nullopt;
    ensureBankFile(path);
    return store::Database::open(path);
}

store::Database openBankFile(const WorkingContext& ctx) {
    const QString path = bankPath(ctx);
    ensureBankFile(path);
    return store::Database::open(path);
}

void attachBankFile(const WorkingContext& ctx, store::Database& db) {
    const QString path = bankPath(ctx);
    ensureBankFile(path);
    db.attach(path, kBankAlias);
}

std::optional<Mandate> mandateOf(const WorkingContext& ctx, std::int64_t client) {
    auto db = openExistingBankFile(ctx);
    if (!db) return std::nullopt;
    auto st = db->prepare(QStringLiteral(
        "select Referencia, FechaFirma, Recurrente from Mandatos where Client = ? order by Id"));
    st.bind(1, client);
    if (!st.next()) return std::nullopt;
    return Mandate{st.text(0), st.date(1), st.boolean(2)};
}

QHash<std::int64_t, Mandate> mandatesByClient(const WorkingContext& ctx) {
    QHash<std::int64_t, Mandate> out;
    auto db = openExistingBankFile(ctx);
    if (!db) return out;
    auto st = db->prepare(QStringLiteral(
        "select Client, Referencia, FechaFirma, Recurrente from Mandatos order by Id desc"));
    while (st.next()) out.insert(st.int64(0), Mandate{st.text(1), st.date(2), st.boolean(3)});
    return out;
}

void storeMandate(store::Database& db, std::int64_t client, const std::optional<Mandate>& mandate) {
    db.prepare(QStringLiteral("delete from banco.Mandatos where Client = ?"))
        .bind(1, client)
        .execute();
    if (!mandate) return;
    db.prepare(QStringLiteral("insert into banco.Mandatos (Client, Referencia, FechaFirma, "
                              "Recurrente) values (?, ?, ?, ?)"))
        .bind(1, client)
        .bind(2, mandate->reference)
        .bind(3, mandate->signedOn)
        .bind(4, mandate->recurrent)
        .execute();
}

SupplierAccount supplierAccountOf(const WorkingContext& ctx, std::int64_t supplier) {
    auto db = openExistingBankFile(ctx);
    if (!db) return {};
    auto st = db->prepare(
        QStringLiteral("select IBAN, BIC from CuentasProveedor where Proveedor = ? order by Id"));
    st.bind(1, supplier);
    if (!st.next()) return {};
    return {st.text(0), st.text(1)};
}

QHash<std::int64_t, SupplierAccount> supplierAccounts(const WorkingContext& ctx) {
    QHash<std::int64_t, SupplierAccount> out;
    auto db = openExistingBankFile(ctx);
    if (!db) return out;
    auto st = db->prepare(
        QStringLiteral("select Proveedor, IBAN, BIC from CuentasProveedor order by Id desc"));
    while (st.next()) out.insert(st.int64(0), SupplierAccount{st.text(1), st.text(2)});
    return out;
}

void storeSupplierAccount(store::Database& db, std::int64_t supplier,
                          const SupplierAccount& account) {
    db.prepare(QStringLiteral("delete from banco.CuentasProveedor where Proveedor = ?"))
        .bind(1, supplier)
        .execute();
    if (account.iban.isEmpty()) return;
    db.prepare(QStringLiteral(
                   "insert into banco.CuentasProveedor (Proveedor, IBAN, BIC) values (?, ?, ?)"))
        .bind(1, supplier)
        .bind(2, account.iban)
        .bind(3, account.bic)
        .execute();
}

QString creditorSuffix(const WorkingContext& ctx) {
    const QString suffix = settingOf(ctx, QStringLiteral("Sufijo"));
    return suffix.isEmpty() ? QStringLiteral("000") : suffix;
}

bool currentSepaVersions(const WorkingContext& ctx) {
    return settingOf(ctx, QStringLiteral("Versiones")) == QLatin1String("actuales");
}

void setBankSettings(const WorkingContext& ctx, const QString& suffix, bool currentVersions) {
    store::Database db = openBankFile(ctx);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    store::writeSetting(db, QStringLiteral("Sufijo"), suffix);
    store::writeSetting(db, QStringLiteral("Versiones"),
                        currentVersions ? QStringLiteral("actuales") : QStringLiteral("clasicas"));
    tx.commit();
}

}  // namespace tallora::banking
