// A bank statement matched against the portfolio and written in one piece: what each line is
// proposed as, the receipts settled on their lines' dates, the account left at the bank's
// balance, returns, charges, the refusals that write nothing, and a statement read twice.
#include "treasury/statement_matching.h"

#include "banking/bank_file.h"
#include "context/messages.h"
#include "portfolio_fixture.h"
#include "treasury/runs.h"

#include <QFile>

#include <cstdlib>

using namespace tallora;
using namespace tallora::treasury;
using namespace tallora::testing;

namespace {

// A movement of the statement as the test writes it: credits positive, in cents.
struct BankLine {
    QDate date;
    QByteArray common;
    qint64 cents = 0;
    QByteArray reference = {};
    QByteArray text = {};  // a concept record (23)
};

QByteArray pad(const QByteArray& record) {
    return record.leftJustified(80, ' ');
}
QByteArray num(qint64 value, int width) {
    return QByteArray::number(std::llabs(value)).rightJustified(width, '0');
}
QByteArray sign(qint64 cents) {
    return cents < 0 ? QByteArray("1") : QByteArray("2");
}
QByteArray yymmdd(const QDate& date) {
    return date.toString(QStringLiteral("yyMMdd")).toLatin1();
}

// One account of Banco Norte, 2100 0418 0200051332, from April to June, its totals and the
// closing balance worked out from the lines as the bank would.
QByteArray norma43(qint64 openingCents, const std::vector<BankLine>& lines) {
    const QByteArray account =
        "21000418"
        "0200051332";
    QList<QByteArray> records;
    records << pad("11" + account +
                   "260401"
                   "260630" +
                   sign(openingCents) + num(openingCents, 14) +
                   "978"
                   "3" +
                   "COMERCIAL BRENWICK SL");
    int debits = 0, credits = 0;
    qint64 debitTotal = 0, creditTotal = 0;
    for (const BankLine& l : lines) {
        records << pad(
            "22"
            "    "
            "0418" +
            yymmdd(l.date) + yymmdd(l.date) + l.common + "000" + sign(l.cents) + num(l.cents, 14) +
            "0000000000" + l.reference.leftJustified(12, ' ') + QByteArray(16, ' '));
        if (!l.text.isEmpty()) records << pad("2301" + l.text);
        if (l.cents < 0) {
            ++debits;
            debitTotal -= l.cents;
        } else {
            ++credits;
            creditTotal += l.cents;
        }
    }
    const qint64 closing = openingCents + creditTotal - debitTotal;
    records << pad("33" + account + num(debits, 5) + num(debitTotal, 14) + num(credits, 5) +
                   num(creditTotal, 14) + sign(closing) + num(closing, 14) + "978");
    records << pad("88" + QByteArray(18, '9') + num(records.size(), 6));
    return records.join("\r\n") + "\r\n";
}

class StatementMatching : public PortfolioData {
protected:
    void SetUp() override {
        PortfolioData::SetUp();
        // The bank account opens the exercise with 100,00, as the statements below do.
        exec(tesorer(),
             "insert into entidades (Id, Grup, entidad, ccc, Saldo) values "
             "(3, 572, 'Banco Norte', '21000418450200051332', 1000000)");
        neptuno = customer("Bar Neptuno");
        lledo = customer("Ferretería Lledó");
        avila = supplier("Suministros Ávila");
        exec(comptes(),
             "insert into Otras (Compte, Grup, NomGrup, NomCompte) values "
             "(20, 170, 'Deudas', 'Préstamo Banco Norte'), "
             "(21, 626, 'Servicios', 'Servicios bancarios'), "
             "(22, 551, 'Socios', 'Cuenta socio')");
    }

    // A sale of the exercise, not yet collected, and its receipt "F-<ordre>".
    std::int64_t sale(std::int64_t ordre, std::int64_t client, std::int64_t total,
                      const QDate& data, std::optional<QDate> vencimiento = std::nullopt) {
        exec(frasOut(), QStringLiteral("insert into FrasOut (Ordre, data, Client, Total, "
                                       "Descripcio, Cobrada, Marca) values (%1, '%2', %3, %4, "
                                       "'F-%1', 0, 0)")
                            .arg(ordre)
                            .arg(data.toString(Qt::ISODate))
                            .arg(client)
                            .arg(total));
        return receipt({.inOut = "Out",
                        .party = client,
                        .data = data,
                        .vencimiento = vencimiento,
                        .factura = QStringLiteral("F-%1").arg(ordre),
                        .total = total,
                        .frasOut = ordre});
    }

    // A purchase of the exercise, not yet paid, and its receipt "A-<ordre>".
    std::int64_t purchase(std::int64_t ordre, std::int64_t total, const QDate& data) {
        exec(frasIn(), QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, NomProveidor, "
                                      "TOTAL, descripcio, Pagada, Marca) values (%1, '%2', %3, "
                                      "'Suministros Ávila', %4, 'A-%1', 0, 0)")
                           .arg(ordre)
                           .arg(data.toString(Qt::ISODate))
                           .arg(avila)
                           .arg(total));
        return receipt({.inOut = "In",
                        .party = avila,
                        .data = data,
                        .vencimiento = std::nullopt,
                        .factura = QStringLiteral("A-%1").arg(ordre),
                        .total = total,
                        .frasIn = ordre});
    }

    banking::N43Account read(const std::vector<BankLine>& lines, qint64 openingCents = 10000) {
        const banking::N43File file = banking::readNorma43(f.ctx, norma43(openingCents, lines));
        EXPECT_EQ(file.accounts.size(), 1u);
        return file.accounts.at(0);
    }

    std::vector<LineProposal> propose(const banking::N43Account& account) {
        return proposeMatches(f.ctx, account, 3);
    }
    ImportResult importLines(const banking::N43Account& account,
                             const std::vector<LineProposal>& accepted) {
        return importMatches(f.ctx, dialogs, account, 3, accepted);
    }
    ImportResult importAll(const banking::N43Account& account) {
        return importLines(account, propose(account));
    }

    QString bank() const { return banking::bankPath(f.ctx); }
    QStringList recorded() const {
        return QFile::exists(bank())
                   ? rows(bank(),
                          "select Cuenta, Ejercicio, Entidad, Fecha, Importe, Tipo, Movimiento "
                          "from ApuntesBanco order by Id")
                   : QStringList{};
    }
    // Every row an import may write or change.
    QStringList snapshot() const {
        QStringList out;
        out << rows(tesorer(), "select * from movimientos order by Id");
        out << rows(tesorer(), "select * from otros_movimientos order by Id");
        out << rows(cartera(), "select * from cartera order by Id");
        out << rows(frasOut(), "select Ordre, Cobrada, Marca from FrasOut order by Ordre");
        out << rows(frasIn(), "select Ordre, Pagada, Marca from FrasIN order by Ordre");
        out << recorded();
        return out;
    }

    // The account's balance as its statement works it out: the opening balance, plus what
    // came in, less what went out.
    Money accountBalance() const {
        const QStringList balance =
            rows(tesorer(),
                 "select (select Saldo from entidades where Id = 3) + coalesce(sum(D), 0) - "
                 "coalesce(sum(H), 0) from movimientos where entidad = 3");
        return Money::fromUnits(balance.value(0).toLongLong());
    }

    std::int64_t neptuno = 0, lledo = 0, avila = 0;
};

// Three collections, a payment and a charge.
std::vector<BankLine> aprilToMay() {
    return {{QDate(2026, 4, 28), "04", 12100, "F-101"},
            {QDate(2026, 5, 3), "04", 12100},
            {QDate(2026, 5, 5), "04", -25000},
            {QDate(2026, 5, 6), "17", -350, {}, "COMISION MANTENIMIENTO"},
            {QDate(2026, 5, 12), "02", 5000, {}, "REMESA F-103"}};
}

class StatementOfAprilToMay : public StatementMatching {
protected:
    void SetUp() override {
        StatementMatching::SetUp();
        // Due on 30 April; dated the 1st, too far from the line to be taken on its date.
        r101 = sale(101, neptuno, 1210000, QDate(2026, 4, 1), QDate(2026, 4, 30));
        r102 = sale(102, lledo, 1210000, QDate(2026, 4, 27));
        r103 = sale(103, neptuno, 500000, QDate(2026, 5, 20));
        p7 = purchase(7, 2500000, QDate(2026, 5, 2));
        account = read(aprilToMay());
    }

    std::int64_t r101 = 0, r102 = 0, r103 = 0, p7 = 0;
    banking::N43Account account;
};

}  // namespace

TEST_F(StatementOfAprilToMay, EachLineIsProposedAsTheReceiptItPays) {
    const std::vector<LineProposal> p = propose(account);
    ASSERT_EQ(p.size(), 5u);
    // Receipt 102 is a day nearer the first line, but the line names invoice F-101.
    EXPECT_EQ(p[0].kind, LineKind::Receipt);
    EXPECT_EQ(p[0].receipt, r101);
    EXPECT_EQ(p[0].party, "Bar Neptuno");
    EXPECT_EQ(p[0].factura, "F-101");
    EXPECT_EQ(p[1].kind, LineKind::Receipt);
    EXPECT_EQ(p[1].receipt, r102);
    EXPECT_EQ(p[1].party, "Ferretería Lledó");
    EXPECT_EQ(p[2].kind, LineKind::Payment);
    EXPECT_EQ(p[2].receipt, p7);
    EXPECT_EQ(p[2].party, "Suministros Ávila");
    EXPECT_EQ(p[3].kind, LineKind::Other);
    EXPECT_EQ(p[3].otherAccount, 21);
    EXPECT_EQ(p[3].otherAccountName, "SERVICIOS BANCARIOS");
    EXPECT_EQ(p[4].kind, LineKind::Receipt);
    EXPECT_EQ(p[4].receipt, r103);
    for (const LineProposal& l : p) EXPECT_EQ(l.key.count('|'), 9) << l.key.toStdString();
    EXPECT_TRUE(p[0].key.startsWith("210004180200051332|20260428|20260428|121.00|04|000"))
        << p[0].key.toStdString();
    // Proposing writes nothing.
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos"), QStringList{"0"});
}

TEST_F(StatementOfAprilToMay, ImportSettlesEveryReceiptOnItsLinesDateAndMeetsTheBanksBalance) {
    const ImportResult result = importAll(account);
    ASSERT_FALSE(result.refusal);
    EXPECT_EQ(result.receipts, 3);
    EXPECT_EQ(result.payments, 1);
    EXPECT_EQ(result.others, 1);
    EXPECT_EQ(result.returned, 0);
    EXPECT_EQ(result.skipped, 0);
    EXPECT_TRUE(shown().isEmpty()) << shown().join('\n').toStdString();

    EXPECT_EQ(rows(cartera(), "select count(*) from cartera"), QStringList{"0"});
    EXPECT_EQ(rows(frasOut(), "select Ordre, Cobrada, Marca from FrasOut order by Ordre"),
              (QStringList{"101|-1|-1", "102|-1|-1", "103|-1|-1"}));
    EXPECT_EQ(rows(frasIn(), "select Ordre, Pagada, Marca from FrasIN"), QStringList{"7|-1|-1"});
    const QString n = QString::number(neptuno), l = QString::number(lledo),
                  a = QString::number(avila);
    EXPECT_EQ(rows(tesorer(),
                   "select data, entidad, cliente, proveedor, FrasIn, FrasOut, Otros <> 0, D, H "
                   "from movimientos order by Id"),
              (QStringList{"2026-04-28|3|" + n + "|0|0|101|0|1210000|0",
                           "2026-05-03|3|" + l + "|0|0|102|0|1210000|0",
                           "2026-05-12|3|" + n + "|0|0|103|0|500000|0",
                           "2026-05-05|3|0|" + a + "|7|0|0|0|2500000",
                           "2026-05-06|3|0|0|0|0|1|0|35000"}));
    EXPECT_EQ(accountBalance(), account.closing);
    EXPECT_EQ(account.closing, Money::fromUnits(1385000));

    // One record a line, each pointing at the movement written for it.
    const QStringList records = recorded();
    ASSERT_EQ(records.size(), 5);
    QStringList tipos;
    for (const QString& r : records) {
        const QStringList c = r.split('|');
        EXPECT_EQ(c.mid(0, 3), (QStringList{"210004180200051332", "2026", "3"}));
        tipos << c[5];
        EXPECT_EQ(rows(tesorer(), "select data, D - H from movimientos where Id = " + c[6]),
                  QStringList{c[3] + "|" + c[4]});
    }
    EXPECT_EQ(tipos, (QStringList{"R", "R", "R", "O", "R"}));
}

TEST_F(StatementOfAprilToMay, ReadingTheSameStatementAgainWritesNothing) {
    const std::vector<LineProposal> first = propose(account);
    ASSERT_FALSE(importLines(account, first).refusal);
    const QStringList before = snapshot();

    const banking::N43Account again = read(aprilToMay());
    const std::vector<LineProposal> second = propose(again);
    ASSERT_EQ(second.size(), 5u);
    for (std::size_t i = 0; i < second.size(); ++i) {
        EXPECT_EQ(second[i].kind, LineKind::Imported) << i;
        EXPECT_EQ(second[i].key, first[i].key) << i;
    }
    const ImportResult none = importLines(again, second);
    EXPECT_FALSE(none.refusal);
    EXPECT_EQ(none.skipped, 5);
    EXPECT_EQ(none.receipts + none.payments + none.others + none.returned, 0);
    // Even the first proposals, accepted once more, find their lines recorded.
    const ImportResult stale = importLines(again, first);
    EXPECT_EQ(stale.skipped, 5);
    EXPECT_EQ(snapshot(), before);
}

TEST_F(StatementOfAprilToMay, APendingDraftIsRefusedAndStaysAsTheUserLeftIt) {
    const std::int64_t waiting = sale(104, lledo, 300000, QDate(2026, 5, 1));
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kCollections, waiting, "0")->moved);
    const QStringList before = snapshot();
    const ImportResult result = importAll(account);
    EXPECT_EQ(result.refusal, ImportRefusal::DraftPending);
    EXPECT_EQ(result.receipts, 0);
    ASSERT_EQ(shown().size(), 1);
    EXPECT_TRUE(shown()[0].startsWith("S:El borrador de cobros")) << shown()[0].toStdString();
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(rows(cartera(),
                   "select Borrador, Temporal from cartera where Id = " + QString::number(waiting)),
              QStringList{"s|300000"});
}

TEST_F(StatementMatching, ADraftOfTheOtherSideDoesNotStopCollections) {
    const std::int64_t due = sale(101, neptuno, 1210000, QDate(2026, 4, 27));
    const std::int64_t payable = purchase(7, 2500000, QDate(2026, 5, 2));
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kPayments, payable, "0")->moved);
    const banking::N43Account account = read({{QDate(2026, 4, 28), "04", 12100}});
    const std::vector<LineProposal> p = propose(account);
    ASSERT_EQ(p[0].receipt, due);
    const ImportResult result = importLines(account, p);
    ASSERT_FALSE(result.refusal);
    EXPECT_EQ(result.receipts, 1);
    EXPECT_EQ(rows(cartera(), "select Id, Borrador from cartera"),
              QStringList{QString::number(payable) + "|s"});
}

TEST_F(StatementMatching, AReceiptIsTakenWithinFifteenDaysOfItsDueDate) {
    const std::int64_t late = sale(105, lledo, 750000, QDate(2026, 6, 10));
    const banking::N43Account account = read({{QDate(2026, 5, 15), "02", 7500}});
    EXPECT_EQ(propose(account)[0].kind, LineKind::Other);
    EXPECT_EQ(propose(account)[0].otherAccount, 0);
    // Due five days after the line: its due date counts, not the invoice's.
    exec(cartera(),
         "update cartera set Vencimiento = '2026-05-20' where Id = " + QString::number(late));
    const LineProposal p = propose(account)[0];
    EXPECT_EQ(p.kind, LineKind::Receipt);
    EXPECT_EQ(p.receipt, late);
}

TEST_F(StatementMatching, TheNearestDateWinsAndAReceiptIsTakenOnce) {
    const std::int64_t earlier = sale(101, neptuno, 500000, QDate(2026, 5, 10));
    const std::int64_t nearer = sale(102, lledo, 500000, QDate(2026, 5, 14));
    const banking::N43Account account = read({{QDate(2026, 5, 13), "02", 5000},
                                              {QDate(2026, 5, 13), "02", 5000, "OTRO"},
                                              {QDate(2026, 5, 13), "02", 5000, "TERCERO"}});
    const std::vector<LineProposal> p = propose(account);
    EXPECT_EQ(p[0].receipt, nearer);
    EXPECT_EQ(p[1].receipt, earlier);
    EXPECT_EQ(p[2].kind, LineKind::Other);
    EXPECT_EQ(p[2].receipt, 0);
}

TEST_F(StatementMatching, AReturnedReceiptComesBackToThePortfolio) {
    const std::int64_t id = sale(101, neptuno, 1210000, QDate(2026, 4, 1));
    ASSERT_TRUE(Passa_Recibo(f.ctx, dialogs, kCollections, id, "0")->moved);
    const RunOutcome run = Contabilizar(f.ctx, dialogs, kCollections, 3, QDate(2026, 4, 10));
    ASSERT_EQ(run.settlements.size(), 1u);
    const std::int64_t collected = run.settlements[0].movement;

    const banking::N43Account account =
        read({{QDate(2026, 4, 20), "14", -12100, "F-101", "DEVOLUCION RECIBO"}});
    const std::vector<LineProposal> p = propose(account);
    ASSERT_EQ(p[0].kind, LineKind::Returned);
    EXPECT_EQ(p[0].movement, collected);
    EXPECT_EQ(p[0].party, "Bar Neptuno");
    const ImportResult result = importLines(account, p);
    ASSERT_FALSE(result.refusal);
    EXPECT_EQ(result.returned, 1);

    EXPECT_EQ(
        rows(cartera(),
             "select data, cliente, In_Out, Factura, Total, Pendiente, FrasOut, Borrador "
             "from cartera"),
        QStringList{QStringLiteral("2026-04-20|%1|Out|N/Fra. F-101|1210000|0|101|n").arg(neptuno)});
    EXPECT_EQ(rows(frasOut(), "select Cobrada from FrasOut"), QStringList{"0"});
    const QStringList movements =
        rows(tesorer(), "select Id, data, D, H, concepto from movimientos order by Id");
    ASSERT_EQ(movements.size(), 2);
    EXPECT_EQ(movements[1].section('|', 1),
              "2026-04-20|0|1210000|" + Missatge(f.ctx, 6985) + " n/fra. N/Fra. F-101");
    EXPECT_EQ(recorded(), QStringList{"210004180200051332|2026|3|2026-04-20|-1210000|D|" +
                                      movements[1].section('|', 0, 0)});
    EXPECT_EQ(accountBalance(), Money::fromUnits(1000000));

    // The collection came back once: another return of the amount finds nothing to return.
    const banking::N43Account later = read({{QDate(2026, 4, 25), "14", -12100, "OTRA"}});
    EXPECT_EQ(propose(later)[0].kind, LineKind::Other);
}

TEST_F(StatementMatching, ChargesGoToTheBankServicesAccount) {
    const banking::N43Account account =
        read({{QDate(2026, 5, 6), "17", -350, {}, "COMISION MANTENIMIENTO"}});
    const ImportResult result = importAll(account);
    ASSERT_FALSE(result.refusal);
    EXPECT_EQ(result.others, 1);
    EXPECT_EQ(rows(tesorer(),
                   "select data, concepto, Importe, cta_sale_tesoreria, cta_sale_otra, "
                   "cta_entra_tesoreria, cta_entra_otra from otros_movimientos"),
              QStringList{"2026-05-06|COMISION MANTENIMIENTO|35000|3|0|0|21"});
    EXPECT_EQ(rows(tesorer(), "select data, entidad, cuenta, concepto, D, H from movimientos"),
              QStringList{"2026-05-06|3|21|COMISION MANTENIMIENTO|0|35000"});
    EXPECT_EQ(recorded().value(0).section('|', 5, 5), "O");
}

TEST_F(StatementMatching, TheChargesAccountIsTheOneWhoseNameSaysBankServices) {
    // "Préstamo Banco Norte" comes first by name and says "banco" too.
    ASSERT_TRUE(bankChargesAccount(f.ctx));
    EXPECT_EQ(bankChargesAccount(f.ctx)->id, 21);
    exec(comptes(), "update Otras set NomCompte = 'Comisiones Bancàries' where Compte = 22");
    exec(comptes(), "delete from Otras where Compte = 21");
    EXPECT_EQ(bankChargesAccount(f.ctx)->id, 22);
    exec(comptes(), "delete from Otras where Compte in (20, 22)");
    EXPECT_FALSE(bankChargesAccount(f.ctx));
    const banking::N43Account account = read({{QDate(2026, 5, 6), "17", -350}});
    EXPECT_EQ(propose(account)[0].kind, LineKind::Other);
    EXPECT_EQ(propose(account)[0].otherAccount, 0);
}

TEST_F(StatementMatching, AnOtherLineWithoutAnAccountIsRefusedAndWritesNothing) {
    sale(101, neptuno, 1210000, QDate(2026, 4, 27));
    const banking::N43Account account =
        read({{QDate(2026, 4, 28), "04", 12100}, {QDate(2026, 5, 8), "99", 2000, "TRASPASO"}});
    std::vector<LineProposal> p = propose(account);
    ASSERT_EQ(p[0].kind, LineKind::Receipt);
    ASSERT_EQ(p[1].kind, LineKind::Other);
    ASSERT_EQ(p[1].otherAccount, 0);
    const QStringList before = snapshot();
    EXPECT_EQ(importLines(account, p).refusal, ImportRefusal::OtherWithoutAccount);
    ASSERT_EQ(shown().size(), 1);
    EXPECT_TRUE(shown()[0].startsWith("S:La línea 3 (08/05/2026, 20,00)"))
        << shown()[0].toStdString();
    EXPECT_EQ(snapshot(), before);

    // The user names the account: the money came from the owner's account.
    p[1].otherAccount = 22;
    const ImportResult result = importLines(account, p);
    ASSERT_FALSE(result.refusal);
    EXPECT_EQ(result.receipts, 1);
    EXPECT_EQ(result.others, 1);
    EXPECT_EQ(rows(tesorer(),
                   "select cta_sale_otra, cta_entra_tesoreria, Importe from otros_movimientos"),
              QStringList{"22|3|200000"});
    EXPECT_EQ(accountBalance(), account.closing);
}

TEST_F(StatementMatching, TwoIdenticalLinesAreTwoLines) {
    const BankLine charge{QDate(2026, 5, 6), "17", -350, {}, "COMISION TRANSFERENCIA"};
    const banking::N43Account account = read({charge, charge});
    const std::vector<LineProposal> p = propose(account);
    ASSERT_EQ(p.size(), 2u);
    EXPECT_NE(p[0].key, p[1].key);
    EXPECT_EQ(p[0].key.section('|', 0, -2), p[1].key.section('|', 0, -2));
    const ImportResult result = importLines(account, p);
    ASSERT_FALSE(result.refusal);
    EXPECT_EQ(result.others, 2);
    EXPECT_EQ(rows(tesorer(), "select count(*) from movimientos where H = 35000"),
              QStringList{"2"});
    EXPECT_EQ(recorded().size(), 2);
    EXPECT_EQ(accountBalance(), account.closing);

    // A later file with the same charge three times: two of them are those already written.
    const std::vector<LineProposal> again = propose(read({charge, charge, charge}));
    EXPECT_EQ(again[0].kind, LineKind::Imported);
    EXPECT_EQ(again[1].kind, LineKind::Imported);
    EXPECT_EQ(again[2].kind, LineKind::Other);
}

TEST_F(StatementMatching, ALockedMonthOrAnotherYearWritesNothing) {
    sale(101, neptuno, 1210000, QDate(2026, 5, 1));
    const banking::N43Account may = read({{QDate(2026, 5, 2), "04", 12100}});
    const QStringList before = snapshot();
    f.ctx.chkmesos[4] = 1;  // May
    EXPECT_EQ(importAll(may).refusal, ImportRefusal::MonthLocked);
    EXPECT_EQ(shown(), QStringList{"S:" + Missatge(f.ctx, 622)});
    EXPECT_EQ(snapshot(), before);

    f.ctx.chkmesos[4] = 0;
    const banking::N43Account december = read({{QDate(2025, 12, 30), "17", -350}});
    EXPECT_EQ(importAll(december).refusal, ImportRefusal::OutsideExercise);
    EXPECT_TRUE(shown().last().contains("2026")) << shown().last().toStdString();
    EXPECT_EQ(snapshot(), before);
}
