#include "remittance.h"

#include "banking/account_numbers.h"
#include "banking/bank_file.h"
#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "names_by_id.h"
#include "other_movements.h"
#include "schema/creation.h"
#include "store/database.h"

#include <QFile>
#include <QHash>
#include <QSaveFile>
#include <QSet>

#include <algorithm>

namespace tallora::treasury {

namespace {

using schema::db::Cartera;
using schema::db::Fact;
using schema::db::Gest;

struct DraftRow {
    std::int64_t id = 0, party = 0;
    QString factura;
    Money amount;
};

std::vector<DraftRow> draftRows(const WorkingContext& ctx, const RunSide& side) {
    store::Database db = store::Database::open(ctx.companyFile(Cartera));
    auto st = db.prepare(QStringLiteral("select Id, %1, Factura, Temporal from cartera where "
                                        "In_Out = ? and Borrador = 's' order by data asc, Id asc")
                             .arg(QLatin1String(side.party)));
    st.bind(1, QString::fromLatin1(side.inOut));
    std::vector<DraftRow> rows;
    while (st.next()) rows.push_back({st.int64(0), st.int64(1), st.text(2), st.money(3)});
    return rows;
}

// Customers' account fields of the commercial data (fact.mdb, billing option).
QHash<std::int64_t, QString> customerAccounts(const WorkingContext& ctx) {
    QHash<std::int64_t, QString> accounts;
    const QString path = ctx.companyFile(Fact);
    if (!QFile::exists(path)) return accounts;
    store::Database db = store::Database::open(path);
    auto st = db.prepare(QStringLiteral("select Client, ccc from comercial_clientes order by Id"));
    while (st.next())
        if (!st.isNull(1)) accounts.insert(st.int64(0), st.text(1));
    return accounts;
}

QString endToEndId(const DraftRow& row) {
    const QString invoice = banking::sepaText(compactCode(row.factura), 24);
    return (invoice.isEmpty() ? QStringLiteral("R") : invoice + QStringLiteral("-R")) +
           QString::number(row.id);
}

void writeFile(const WorkingContext& ctx, const QString& path, const QByteArray& xml) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(xml) != xml.size() || !file.commit())
        throw store::StoreError(fixedText(ctx, "No se ha podido escribir el fichero SEPA: ",
                                          "No s'ha pogut escriure el fitxer SEPA: ") +
                                path + QStringLiteral(" (") + file.errorString() +
                                QLatin1Char(')'));
}

// The receipts that cannot go, one a line: invoice, party and why.
QString gapLines(const RemittancePlan& plan) {
    QString lines;
    for (const RemittanceGap& g : plan.gaps)
        lines += QStringLiteral("\n%1  %2  %3").arg(g.factura, g.party, g.reason);
    return lines;
}

bool collecting(const RunSide& side) {
    return side.debit;
}

}  // namespace

RemittancePlan planRemittance(const WorkingContext& ctx, const RunSide& side, std::int64_t account,
                              const QDate& bankDate) {
    RemittancePlan plan;
    banking::SepaDocument& d = plan.document;
    const bool debit = collecting(side);
    d.kind = debit ? banking::SepaKind::DirectDebit : banking::SepaKind::Transfer;
    d.version = banking::currentSepaVersions(ctx) ? banking::SepaVersion::Current
                                                  : banking::SepaVersion::Classic;
    const QString taxId = compactCode(ctx.EmpresaNIF);
    const QString suffix = banking::creditorSuffix(ctx);
    d.created = ctx.clock().toLocalTime();
    d.created.setTimeSpec(Qt::LocalTime);
    d.messageId = QStringLiteral("%1-%2-%3")
                      .arg(debit ? u'C' : u'P')
                      .arg(taxId.left(12), d.created.toString(QStringLiteral("yyyyMMddHHmmss")));
    d.partyName = ctx.EmpresaNom.trimmed();
    d.creditorId = banking::creditorIdentifier(taxId, suffix);
    d.initiatorId = debit ? d.creditorId : taxId + suffix;

    const auto own = treasuryAccountFields(ctx, account);
    const auto iban = own ? banking::ibanOfAccount(own->ccc) : std::nullopt;
    if (taxId.isEmpty()) {
        plan.refusal =
            fixedText(ctx, "La empresa no tiene NIF: sin él no hay identificador de acreedor.",
                      "L'empresa no té NIF: sense ell no hi ha identificador de creditor.");
        return plan;
    }
    if (!iban) {
        plan.refusal =
            fixedText(
                ctx,
                "La cuenta de tesorería no tiene un IBAN ni un CCC válido: indíquelo en "
                "Cuentas (caja, bancos, etc.).",
                "El compte de tresoreria no té un IBAN ni un CCC vàlid: indiqueu-lo a Comptes "
                "(caixa, bancs, etc.).")
                .prepend(own ? own->entidad + QStringLiteral(": ") : QString());
        return plan;
    }
    d.accountIban = *iban;

    const QHash<std::int64_t, QString> names =
        debit ? namesById(ctx, Gest, QStringLiteral("select client, nom from Clients"))
              : namesById(ctx, Gest, QStringLiteral("select proveidor, nom from Proveidors"));
    const QHash<std::int64_t, QString> accounts =
        debit ? customerAccounts(ctx) : QHash<std::int64_t, QString>{};
    const QHash<std::int64_t, banking::Mandate> mandates = banking::mandatesByClient(ctx);
    const QHash<std::int64_t, banking::SupplierAccount> suppliers = banking::supplierAccounts(ctx);
    banking::SepaBatch first{QString::fromLatin1(banking::kFirst), bankDate, {}};
    banking::SepaBatch recurrent{
        QString::fromLatin1(debit ? banking::kRecurrent : ""), bankDate, {}};
    // Every receipt of a customer whose mandate has not been used yet goes FRST.
    QSet<std::int64_t> firstOf;
    for (const DraftRow& row : draftRows(ctx, side)) {
        const QString name = names.value(row.party);
        banking::SepaTransaction t;
        t.endToEndId = endToEndId(row);
        t.amount = row.amount;
        t.name = name;
        t.remittance = row.factura;
        QString reason;
        if (row.amount <= Money{}) {
            reason = fixedText(ctx, "importe no positivo", "import no positiu");
        } else if (debit) {
            const auto found = mandates.find(row.party);
            const auto mandate =
                found == mandates.end() ? std::optional<banking::Mandate>{} : std::optional(*found);
            const auto customerIban = banking::ibanOfAccount(accounts.value(row.party));
            if (!mandate)
                reason = fixedText(ctx, "sin mandato SEPA", "sense mandat SEPA");
            else if (!customerIban)
                reason = fixedText(ctx, "sin IBAN válido", "sense IBAN vàlid");
            else {
                t.iban = *customerIban;
                t.mandateId = mandate->reference;
                t.mandateSigned = mandate->signedOn;
                if (!mandate->recurrent && !firstOf.contains(row.party)) {
                    firstOf.insert(row.party);
                    plan.firstMandates.push_back(row.party);
                }
            }
        } else {
            const banking::SupplierAccount supplier = suppliers.value(row.party);
            if (!banking::validIban(supplier.iban))
                reason = fixedText(ctx, "sin IBAN válido", "sense IBAN vàlid");
            t.iban = compactCode(supplier.iban);
            t.bic = supplier.bic;
        }
        if (!reason.isEmpty()) {
            plan.gaps.push_back({row.id, row.factura, name, reason});
            continue;
        }
        (debit && firstOf.contains(row.party) ? first : recurrent).transactions.push_back(t);
        plan.receipts.push_back(row.id);
    }
    for (banking::SepaBatch* b : {&first, &recurrent})
        if (!b->transactions.empty()) d.batches.push_back(std::move(*b));
    return plan;
}

RemittanceOutcome Contabilizar_Remesa(const WorkingContext& ctx, Dialogs& dialogs,
                                      const RunSide& side, std::optional<std::int64_t> account,
                                      const QDate& date, const QDate& bankDate,
                                      const std::function<QString()>& askPath) {
    RemittanceOutcome out;
    if ((out.refusal = checkRun(ctx, dialogs, side, account, date))) return out;
    RemittancePlan plan = planRemittance(ctx, side, *account, bankDate);
    if (plan.refusal.isEmpty() && plan.receipts.empty())
        plan.refusal = fixedText(ctx, "Ningún recibo del borrador puede ir en el fichero SEPA.",
                                 "Cap rebut de l'esborrany no pot anar al fitxer SEPA.");
    if (!plan.refusal.isEmpty()) {
        // The gaps say why no receipt can go.
        dialogs.stop(plan.refusal + gapLines(plan));
        out.stopped = true;
        return out;
    }
    if (!plan.gaps.empty()) {
        const QString list =
            fixedText(ctx,
                      "Estos recibos no pueden ir en el fichero SEPA y volverán a la lista "
                      "de pendientes:",
                      "Aquests rebuts no poden anar al fitxer SEPA i tornaran a la llista "
                      "de pendents:") +
            gapLines(plan) + QStringLiteral("\n\n") + Missatge(ctx, 25);
        if (dialogs.yesNo(list) != Dialogs::Answer::Yes) {
            out.stopped = true;
            return out;
        }
    }
    const QString path = askPath();
    if (path.isEmpty()) {
        out.stopped = true;
        return out;
    }
    const QByteArray xml = banking::sepaXml(plan.document);

    store::Database db = openRun(ctx, side);
    banking::attachBankFile(ctx, db);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    auto back = db.prepare(
        QStringLiteral("update cartera.cartera set Borrador = 'n', Temporal = 0 where Id = ?"));
    for (const RemittanceGap& g : plan.gaps) {
        back.reset();
        back.bind(1, g.receipt).execute();
    }
    out.settlements = settleDraft(db, side, *account, date);
    // The draft is the plan's, or the file would not say what the run did.
    QSet<std::int64_t> planned(plan.receipts.begin(), plan.receipts.end());
    QSet<std::int64_t> settled;
    for (const Settlement& s : out.settlements) settled.insert(s.receipt);
    if (planned != settled)
        throw store::StoreError(fixedText(
            ctx, "El borrador ha cambiado mientras se preparaba el fichero; vuelva a intentarlo.",
            "L'esborrany ha canviat mentre es preparava el fitxer; torneu-ho a provar."));
    auto recurrent =
        db.prepare(QStringLiteral("update banco.Mandatos set Recurrente = -1 where Client = ?"));
    for (std::int64_t client : plan.firstMandates) {
        recurrent.reset();
        recurrent.bind(1, client).execute();
    }
    out.total = banking::controlSum(plan.document);
    out.count = banking::transactionCount(plan.document);
    db.prepare(QStringLiteral(
                   "insert into banco.Remesas (Tipo, Ejercicio, Entidad, Fecha, FechaCargo, "
                   "Mensaje, Formato, Recibos, Total, Xml, Creado) values (?, ?, ?, ?, ?, ?, ?, "
                   "?, ?, ?, ?)"))
        .bind(1, collecting(side) ? QStringLiteral("C") : QStringLiteral("P"))
        .bind(2, static_cast<std::int64_t>(ctx.Exercici.toLongLong()))
        .bind(3, *account)
        .bind(4, date)
        .bind(5, bankDate)
        .bind(6, plan.document.messageId)
        .bind(7, banking::sepaMessageName(plan.document.kind, plan.document.version))
        .bind(8, static_cast<std::int64_t>(out.count))
        .bind(9, out.total)
        .bind(10, QString::fromUtf8(xml))
        .bind(11, plan.document.created.toString(Qt::ISODate))
        .execute();
    out.remesa = db.lastInsertId();
    writeFile(ctx, path, xml);
    try {
        tx.commit();
    } catch (...) {
        QFile::remove(path);
        throw;
    }
    return out;
}

std::vector<RemittanceRecord> remittances(const WorkingContext& ctx) {
    std::vector<RemittanceRecord> out;
    auto db = banking::openExistingBankFile(ctx);
    if (!db) return out;
    auto st =
        db->prepare(QStringLiteral("select Id, Tipo, Fecha, FechaCargo, Formato, Recibos, Total "
                                   "from Remesas order by Id desc"));
    while (st.next())
        out.push_back({st.int64(0), st.text(1) == QLatin1String("C"), st.date(2), st.date(3),
                       st.text(4), static_cast<int>(st.int64(5)), st.money(6)});
    return out;
}

bool rewriteRemittance(const WorkingContext& ctx, std::int64_t remesa, const QString& path) {
    auto db = banking::openExistingBankFile(ctx);
    if (!db) return false;
    auto st = db->prepare(QStringLiteral("select Xml from Remesas where Id = ?"));
    st.bind(1, remesa);
    if (!st.next()) return false;
    const QByteArray xml = st.text(0).toUtf8();
    writeFile(ctx, path, xml);
    return true;
}

}  // namespace tallora::treasury
