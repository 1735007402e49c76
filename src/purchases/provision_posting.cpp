#include "provision_posting.h"

#include "purchase_entry.h"

#include "context/common_helpers.h"
#include "context/entry_fields.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/money_rows.h"
#include "store/database.h"

namespace tallora::purchases {
namespace {

using store::Database;

using schema::captionDate;
using schema::storedAmount;

void insertMovement(const WorkingContext& ctx, Database& db, const ProvisionEntry& e,
                    std::int64_t ordre) {
    const Money total = storedAmount(ctx, e.txtTotal);
    // The money leaves for a disbursement and comes in for a provision.
    db.prepare(QStringLiteral("insert into tesorer.movimientos (data, entidad, %1, Supl, "
                              "concepto, D, H) values (?, ?, ?, ?, ?, ?, ?)")
                   .arg(e.suplido ? QStringLiteral("proveedor") : QStringLiteral("cliente")))
        .bind(1, captionDate(e.lblFecha))
        .bind(2, e.entitatId.value_or(0))
        .bind(3, e.partyNumber.value_or(0))
        .bind(4, ordre)
        .bind(5, (NomTipus(ctx, e.suplido) + QStringLiteral(". ") + e.txtdescripcio)
                     .left(schema::kConceptLength))
        .bind(6, e.suplido ? Money{} : total)
        .bind(7, e.suplido ? total : Money{})
        .execute();
}

}  // namespace

ProvisionResult GrabaApunt(const WorkingContext& ctx, ProvisionEntry& entry) {
    ProvisionEntry e = entry;
    Neteja_Text(e.txtClient);
    Neteja_Text(e.txtdescripcio);
    ProvisionResult result;
    try {
        Database db = Database::open(ctx.exerciseFile(schema::db::Supl));
        if (ctx.Tesoreria)
            db.attach(ctx.exerciseFile(schema::db::Tesorer), QStringLiteral("tesorer"));
        store::Transaction tx(db, store::Transaction::Kind::Immediate);
        const auto bindRow = [&](store::Statement& st) {
            st.bind(1, storedAmount(ctx, e.txtTotal))
                .bind(2, e.partyNumber.value_or(0))
                .bind(3, e.txtClient.isNull() ? QStringLiteral("") : e.txtClient)
                .bind(4, e.Tipus())
                .bind(5, NomTipus(ctx, e.suplido))
                .bind(6, e.txtdescripcio.isNull() ? QStringLiteral("") : e.txtdescripcio)
                .bind(7, captionDate(e.lblFecha));
        };
        if (e.isNew()) {
            result.ordre = nextOrdre(db, QStringLiteral("Suplidos"));
            if (e.txtdescripcio == QStringLiteral("-"))
                e.txtdescripcio = QString::number(result.ordre);
            auto st = db.prepare(QStringLiteral(
                "insert into Suplidos (total, Proveidor, NomProveidor, Tipus, NomTipus, "
                "descripcio, data, Ordre) values (?, ?, ?, ?, ?, ?, ?, ?)"));
            bindRow(st);
            st.bind(8, result.ordre);
            result.affected = st.execute();
        } else {
            result.ordre = e.lblOrdre.toLongLong();
            auto st = db.prepare(QStringLiteral(
                "update Suplidos set total = ?, Proveidor = ?, NomProveidor = ?, Tipus = ?, "
                "NomTipus = ?, descripcio = ?, data = ? where Ordre = ?"));
            bindRow(st);
            st.bind(8, result.ordre);
            result.affected = st.execute();
            if (result.affected != 1) return result;
            if (ctx.Tesoreria)
                db.prepare(QStringLiteral(
                               "delete from tesorer.movimientos where Supl = ? and Supl <> 0"))
                    .bind(1, result.ordre)
                    .execute();
        }
        if (ctx.Tesoreria) insertMovement(ctx, db, e, result.ordre);
        tx.commit();
    } catch (const store::StoreError& error) {
        result.affected = 0;
        result.error = error.message();
        return result;
    }
    entry = e;
    return result;
}

std::optional<ProvisionEntry> Modifica_Suplido(const WorkingContext& ctx, const QString& number) {
    bool numeric = false;
    const std::int64_t ordre = number.trimmed().toLongLong(&numeric);
    if (!numeric) return std::nullopt;
    ProvisionEntry e;
    if (ctx.Tesoreria)
        if (const auto account = schema::movementAccount(ctx, QStringLiteral("Supl"), ordre)) {
            e.entitat = account->name;
            e.entitatId = account->id;
        }
    Database db = Database::open(ctx.exerciseFile(schema::db::Supl));
    auto st = db.prepare(QStringLiteral(
        "select Ordre, data, NomProveidor, Proveidor, Tipus, descripcio, TOTAL from Suplidos "
        "where Ordre = ?"));
    st.bind(1, ordre);
    if (!st.next()) return std::nullopt;
    e.lblOrdre = QString::number(st.int64(0));
    showDate(st.date(1), e.lblFecha, e.txtDia, e.txtMes);
    e.txtClient = st.text(2);
    e.listClientsText = e.txtClient.toUpper();
    if (!st.isNull(3)) e.partyNumber = st.int64(3);
    e.suplido = st.text(4) != QStringLiteral("P");
    e.txtdescripcio = st.text(5);
    e.txtTotal = Format_Import(ctx, st.money(6));
    return e;
}

std::vector<JournalRow> Diari_Suplido(const WorkingContext& ctx, const ProvisionEntry& e,
                                      const ProvisionResult& result, bool change) {
    JournalRows rows;
    rows.add(journal::Start, Missatge(ctx, change ? 651 : 649));
    rows.add(journal::Desc, Missatge(ctx, 650) + e.lblFecha);
    rows.add(journal::Desc, e.txtClient);
    rows.add(journal::Desc, Missatge(ctx, e.suplido ? 6501 : 6502));
    rows.add(journal::Desc, QStringLiteral("Descrip.: ") + e.txtdescripcio);
    rows.settledBy(ctx, e.entitat);
    const Money total = amountOf(ctx, e.txtTotal);
    rows.amount(QStringLiteral("TOTAL: ") + Format_Import(ctx, total), total);
    rows.result(ctx, result.affected, result.ordre);
    return rows.take();
}

}  // namespace tallora::purchases
