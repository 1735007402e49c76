#include "suppliers.h"

#include "banking/account_numbers.h"
#include "banking/bank_file.h"

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

// A supplier from the current row of a select on Proveidors; saldo only with treasury.
Supplier readSupplier(const WorkingContext& ctx, const Statement& st) {
    Supplier s;
    s.proveidor = detail::textOf(st, QStringLiteral("proveidor"));
    s.nom = detail::textOf(st, QStringLiteral("nom"));
    s.nif = detail::textOf(st, QStringLiteral("nif"));
    s.direccio = detail::textOf(st, QStringLiteral("direccio"));
    s.poblacio = detail::textOf(st, QStringLiteral("poblacio"));
    s.provincia = detail::textOf(st, QStringLiteral("provincia"));
    s.cp = detail::textOf(st, QStringLiteral("cp"));
    s.telefon = detail::textOf(st, QStringLiteral("telefon"));
    s.fax = detail::textOf(st, QStringLiteral("fax"));
    s.email = detail::textOf(st, QStringLiteral("email"));
    s.web = detail::textOf(st, QStringLiteral("web"));
    if (ctx.Tesoreria) s.saldo = detail::amountTextOf(ctx, st, QStringLiteral("saldo"));
    return s;
}

template <typename Key>
std::optional<Supplier> firstSupplier(const WorkingContext& ctx, const QString& sql, Key key) {
    Database d = Database::open(ctx.exerciseFile(db::Gest));
    Statement st = d.prepare(sql);
    st.bind(1, key);
    if (!st.next()) return std::nullopt;
    Supplier s = readSupplier(ctx, st);
    if (ctx.Tesoreria)
        if (const auto number = detail::wholeNumberOf(s.proveidor)) {
            const banking::SupplierAccount account = banking::supplierAccountOf(ctx, *number);
            s.iban = banking::groupedAccount(account.iban);
            s.bic = account.bic;
        }
    return s;
}

}  // namespace

QStringList supplierNames(const WorkingContext& ctx) {
    return detail::firstColumn(ctx.exerciseFile(db::Gest),
                               QStringLiteral("select nom from Proveidors order by nom asc"));
}

std::vector<Supplier> supplierRecords(const WorkingContext& ctx) {
    std::vector<Supplier> suppliers;
    Database d = Database::open(ctx.exerciseFile(db::Gest));
    Statement st =
        d.prepare(QStringLiteral("select * from Proveidors order by nom asc, proveidor asc"));
    const auto accounts = ctx.Tesoreria ? banking::supplierAccounts(ctx)
                                        : QHash<std::int64_t, banking::SupplierAccount>{};
    while (st.next()) {
        Supplier s = readSupplier(ctx, st);
        if (const auto number = detail::wholeNumberOf(s.proveidor)) {
            s.iban = banking::groupedAccount(accounts.value(*number).iban);
            s.bic = accounts.value(*number).bic;
        }
        suppliers.push_back(std::move(s));
    }
    return suppliers;
}

std::optional<Supplier> supplierByName(const WorkingContext& ctx, const QString& nom) {
    // With two suppliers of one name (a rename may make them) the first one is shown.
    return firstSupplier(
        ctx, QStringLiteral("select * from Proveidors where nom=? order by proveidor"), nom);
}

std::optional<Supplier> supplierByNumber(const WorkingContext& ctx, const QString& proveidor) {
    const auto number = detail::wholeNumberOf(proveidor);
    if (!number) return std::nullopt;
    return firstSupplier(ctx, QStringLiteral("select * from Proveidors where proveidor=?"),
                         *number);
}

Outcome saveSupplier(const WorkingContext& ctx, Dialogs& dialogs, Supplier& s, bool isNew) {
    if (s.nom.trimmed().isEmpty())
        return detail::refuse(ctx, dialogs, 412, QStringLiteral("txtnom"));
    detail::sanitise({&s.nom, &s.direccio, &s.poblacio, &s.provincia, &s.cp, &s.nif, &s.telefon,
                      &s.fax, &s.email, &s.web, &s.saldo});
    if (s.saldo.isEmpty()) s.saldo = QStringLiteral("0");
    if (ctx.Tesoreria && !compactCode(s.iban).isEmpty()) {
        // Transfers go to this account: a number that fails its check is not kept.
        const auto iban = banking::ibanOfAccount(s.iban);
        if (!iban) {
            dialogs.stop(banking::accountWarning(ctx, s.iban) + QStringLiteral(" ") + s.iban);
            return Outcome::refused(QStringLiteral("txtIBAN"));
        }
        s.iban = banking::groupedAccount(*iban);
    }
    // The balance is only written with the treasury option, so only then must it be an amount.
    std::optional<Money> saldo;
    if (ctx.Tesoreria) {
        saldo = detail::amountOf(ctx, s.saldo);
        if (!saldo)
            return detail::refuseBadNumber(ctx, dialogs, 6742, s.saldo, QStringLiteral("txtsaldo"));
    }

    detail::Notices notices;
    const Outcome outcome = detail::guarded(dialogs, [&]() -> Outcome {
        Database d = Database::open(ctx.exerciseFile(db::Gest));
        if (isNew &&
            detail::anyRow(d, QStringLiteral("select * from Proveidors where nom=?"), s.nom))
            return detail::refuse(ctx, dialogs, 6843, QStringLiteral("txtnom"));
        const bool purchasesFile =
            !isNew &&
            detail::attachIfPresent(d, ctx.exerciseFile(db::FrasIn), QStringLiteral("fi"));
        const bool provisionsFile =
            !isNew && detail::attachIfPresent(d, ctx.exerciseFile(db::Supl), QStringLiteral("su"));
        if (ctx.Tesoreria) banking::attachBankFile(ctx, d);

        store::Transaction tx(d);
        QString sql;
        if (isNew)
            sql = ctx.Tesoreria ? QStringLiteral(
                                      "Insert into Proveidors (nom, direccio, poblacio, "
                                      "provincia, cp, nif, telefon, fax, email, web, saldo) "
                                      "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                                : QStringLiteral(
                                      "Insert into Proveidors (nom, direccio, poblacio, "
                                      "provincia, cp, nif, telefon, fax, email, web) "
                                      "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
        else
            sql = ctx.Tesoreria ? QStringLiteral(
                                      "update Proveidors set nom=?, direccio=?, poblacio=?, "
                                      "provincia=?, cp=?, nif=?, telefon=?, fax=?, email=?, "
                                      "web=?, saldo=? where proveidor = ?")
                                : QStringLiteral(
                                      "update Proveidors set nom=?, direccio=?, poblacio=?, "
                                      "provincia=?, cp=?, nif=?, telefon=?, fax=?, email=?, "
                                      "web=? where proveidor = ?");
        Statement st = d.prepare(sql);
        int i = 0;
        for (const QString* text : {&s.nom, &s.direccio, &s.poblacio, &s.provincia, &s.cp, &s.nif,
                                    &s.telefon, &s.fax, &s.email, &s.web})
            st.bind(++i, detail::stored(*text));
        if (saldo) st.bind(++i, *saldo);
        if (!isNew) detail::bindKey(st, ++i, s.proveidor);
        const int affected = st.execute();
        const auto number =
            isNew ? std::optional(d.lastInsertId()) : detail::wholeNumberOf(s.proveidor);
        notices.add(ctx, 314, affected);
        if (ctx.Tesoreria && number)
            banking::storeSupplierAccount(d, *number, {compactCode(s.iban), compactCode(s.bic)});

        if (!isNew) {
            // Purchases and disbursements carry the name; movements and receipts the number.
            notices.add(
                ctx, 327,
                detail::spreadName(
                    d, purchasesFile,
                    QStringLiteral("Update fi.FrasIn set nomproveidor = ? where proveidor = ?"),
                    s.nom, s.proveidor));
            notices.add(ctx, 327,
                        detail::spreadName(d, provisionsFile,
                                           QStringLiteral("Update su.Suplidos set NomProveidor = ? "
                                                          "where Proveidor = ? and Tipus='S'"),
                                           s.nom, s.proveidor));
        }
        tx.commit();
        if (isNew) s.proveidor = QString::number(*number);
        return Outcome::wrote(affected);
    });
    if (outcome.done()) notices.show(dialogs);
    return outcome;
}

Outcome deleteSupplier(const WorkingContext& ctx, Dialogs& dialogs, const QString& proveidor) {
    return detail::deletion(ctx, dialogs, 409, [&]() -> Outcome {
        if (detail::anyRowIn(ctx.exerciseFile(db::FrasIn),
                             QStringLiteral("select * from frasin where proveidor = ?"), proveidor))
            return detail::refuse(ctx, dialogs, 410);
        if (ctx.Tesoreria) {
            if (detail::anyRowIn(ctx.exerciseFile(db::Tesorer),
                                 QStringLiteral("select * from movimientos where proveedor = ?"),
                                 proveidor))
                return detail::refuse(ctx, dialogs, 6841);
            if (detail::anyRowIn(ctx.companyFile(db::Cartera),
                                 QStringLiteral("select * from cartera where proveedor = ?"),
                                 proveidor))
                return detail::refuse(ctx, dialogs, 6842);
        }
        // Disbursements do not keep a supplier: Suplidos holds the name it had.
        Database d = Database::open(ctx.exerciseFile(db::Gest));
        const auto number = detail::wholeNumberOf(proveidor);
        if (ctx.Tesoreria && number) banking::attachBankFile(ctx, d);
        store::Transaction tx(d);
        Statement del = d.prepare(QStringLiteral("delete from Proveidors where proveidor = ?"));
        detail::bindKey(del, 1, proveidor);
        const int affected = del.execute();
        if (ctx.Tesoreria && number) banking::storeSupplierAccount(d, *number, {});
        tx.commit();
        return Outcome::wrote(affected);
    });
}

}  // namespace tallora::master
