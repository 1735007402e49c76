// The Norma 43 reader: one account and several, the checks of the totals, a file without its
// padding, the 0x1A at the end, text in code page 850 and in Latin-1.
#include "banking/norma43.h"

#include "context/working_context.h"

#include <QFile>

#include <gtest/gtest.h>

namespace tallora::banking {
namespace {

// Records made field by field, padded to 80 as the banks write them.
QByteArray pad(const QByteArray& record) {
    return record.leftJustified(80, ' ');
}
QByteArray num(qint64 value, int width) {
    return QByteArray::number(value).rightJustified(width, '0');
}

QByteArray header(const char* account, qint64 openingCents,
                  const QByteArray& name = "SUMINISTROS VIC SL") {
    return pad(
        "11"
        "2100"
        "0418" +
        QByteArray(account) +
        "260301"
        "260331" +
        (openingCents < 0 ? "1" : "2") + num(std::abs(openingCents), 14) +
        "978"
        "3" +
        name);
}
QByteArray movement(qint64 cents, const QByteArray& date = "260305",
                    const QByteArray& ref = "F-101") {
    return pad(
        "22"
        "    "
        "0418" +
        date + date +
        "04"
        "001" +
        (cents < 0 ? "1" : "2") + num(std::abs(cents), 14) + "0000000000" +
        ref.leftJustified(12, ' ') + QByteArray("REF2").leftJustified(16, ' '));
}
QByteArray conceptLine(const QByteArray& text) {
    return pad("2301" + text.leftJustified(38, ' ') + "SEGUNDA MITAD");
}
QByteArray footer(const char* account, int debits, qint64 debitCents, int credits,
                  qint64 creditCents, qint64 closingCents) {
    return pad(
        "33"
        "2100"
        "0418" +
        QByteArray(account) + num(debits, 5) + num(debitCents, 14) + num(credits, 5) +
        num(creditCents, 14) + (closingCents < 0 ? "1" : "2") + num(std::abs(closingCents), 14) +
        "978");
}
QByteArray end(int records) {
    return pad("88" + QByteArray(18, '9') + num(records, 6));
}
QByteArray file(const QList<QByteArray>& records) {
    QByteArray out;
    for (const QByteArray& r : records) out += r + "\r\n";
    return out;
}

class Norma43 : public ::testing::Test {
protected:
    N43File read(const QByteArray& bytes, N43Encoding e = N43Encoding::Detect) {
        return readNorma43(ctx, bytes, e);
    }
    QString refusal(const QByteArray& bytes) {
        try {
            read(bytes);
        } catch (const N43Error& e) {
            return e.reason();
        }
        return "accepted";
    }
    WorkingContext ctx;
};

TEST_F(Norma43, OneAccountWithItsMovementsAndConcepts) {
    const N43File f =
        read(file({header("0200051332", 100000), movement(12100),
                   conceptLine("FACTURA F-101 CLIENTE"), movement(-2550, "260310", "COMISION"),
                   footer("0200051332", 1, 2550, 1, 12100, 109550), end(5)}));
    ASSERT_EQ(f.accounts.size(), 1u);
    const N43Account& a = f.accounts[0];
    EXPECT_EQ(a.number(), "210004180200051332");
    EXPECT_EQ(a.start, QDate(2026, 3, 1));
    EXPECT_EQ(a.end, QDate(2026, 3, 31));
    EXPECT_EQ(a.opening, Money::fromUnits(10000000));
    EXPECT_EQ(a.closing, Money::fromUnits(10955000));
    EXPECT_EQ(a.currency, "978");
    EXPECT_EQ(a.name, "SUMINISTROS VIC SL");
    ASSERT_EQ(a.movements.size(), 2u);
    EXPECT_EQ(a.movements[0].amount, Money::fromUnits(1210000));
    EXPECT_EQ(a.movements[0].operationDate, QDate(2026, 3, 5));
    EXPECT_EQ(a.movements[0].commonConcept, "04");
    EXPECT_EQ(a.movements[0].reference1, "F-101");
    EXPECT_EQ(a.movements[0].concepts, (QStringList{"FACTURA F-101 CLIENTE", "SEGUNDA MITAD"}));
    EXPECT_EQ(a.movements[1].amount, -Money::fromUnits(255000));
    EXPECT_EQ(a.movements[1].line, 4);
}

TEST_F(Norma43, SeveralAccountsInOneFile) {
    const N43File f =
        read(file({header("0200051332", 0), movement(5000),
                   footer("0200051332", 0, 0, 1, 5000, 5000), header("0200051333", -1000),
                   movement(-500), footer("0200051333", 1, 500, 0, 0, -1500), end(6)}));
    ASSERT_EQ(f.accounts.size(), 2u);
    EXPECT_EQ(f.accounts[1].account, "0200051333");
    EXPECT_EQ(f.accounts[1].opening, -Money::fromUnits(100000));
    EXPECT_EQ(f.accounts[1].closing, -Money::fromUnits(150000));
}

TEST_F(Norma43, BadTotalsAreRefusedSayingWhich) {
    EXPECT_TRUE(refusal(file({header("0200051332", 0), movement(5000),
                              footer("0200051332", 0, 0, 2, 5000, 5000), end(3)}))
                    .contains("declara 2 créditos por 50.00 y tiene 1 por 50.00"));
    EXPECT_TRUE(refusal(file({header("0200051332", 0), movement(-5000),
                              footer("0200051332", 1, 4000, 0, 0, -4000), end(3)}))
                    .contains("débitos"));
    EXPECT_TRUE(refusal(file({header("0200051332", 0), movement(5000),
                              footer("0200051332", 0, 0, 1, 5000, 6000), end(3)}))
                    .contains("saldo final"));
    const QString count =
        refusal(file({header("0200051332", 0), footer("0200051332", 0, 0, 0, 0, 0), end(9)}));
    EXPECT_TRUE(count.contains("declara 9 registros y el archivo tiene 2")) << count.toStdString();
    EXPECT_TRUE(count.startsWith("Línea 3 (registro 88)")) << count.toStdString();
    EXPECT_TRUE(refusal(file({header("0200051332", 0), movement(5000)})).contains("registro 88"));
    EXPECT_TRUE(refusal(file({movement(5000), end(1)})).contains("registro 11"));
    EXPECT_TRUE(
        refusal(file({header("0200051332", 0), footer("0200051399", 0, 0, 0, 0, 0), end(2)}))
            .contains("cierra la cuenta"));
    EXPECT_TRUE(refusal(file({pad("77"), end(1)})).contains("desconocido"));
    EXPECT_TRUE(
        refusal(file({header("02000513X2", 0), footer("02000513X2", 0, 0, 0, 0, 0), end(2)}))
            .contains("no es numérico"));
}

TEST_F(Norma43, TheEightyEightMayCountItself) {
    EXPECT_EQ(read(file({header("0200051332", 0), footer("0200051332", 0, 0, 0, 0, 0), end(3)}))
                  .accounts.size(),
              1u);
}

TEST_F(Norma43, AFileWithoutPaddingAndWithTheEndOfFileMark) {
    QByteArray bytes;
    for (const QByteArray& r : {header("0200051332", 0), movement(5000),
                                footer("0200051332", 0, 0, 1, 5000, 5000), end(3)})
        bytes += r.trimmed() + "\n";
    bytes += '\x1a';
    const N43File f = read(bytes);
    ASSERT_EQ(f.accounts.size(), 1u);
    EXPECT_EQ(f.accounts[0].movements[0].reference2, "REF2");
}

TEST_F(Norma43, CodePage850AndLatin1TextReadTheSame) {
    const QByteArray cp850 = file({header("0200051332", 0,
                                          "CA\xa5"
                                          "ADAS SL"),
                                   footer("0200051332", 0, 0, 0, 0, 0), end(2)});
    EXPECT_EQ(read(cp850).accounts[0].name, QString::fromUtf8("CAÑADAS SL"));
    const QByteArray latin1 = file({header("0200051332", 0,
                                           "CA\xd1"
                                           "ADAS SL"),
                                    footer("0200051332", 0, 0, 0, 0, 0), end(2)});
    EXPECT_EQ(read(latin1).accounts[0].name, QString::fromUtf8("CAÑADAS SL"));
    EXPECT_EQ(read(latin1, N43Encoding::Latin1).accounts[0].name, QString::fromUtf8("CAÑADAS SL"));
    EXPECT_EQ(decodeCp850("\x80\x90\xa5\xb5\xd6\xe0\xe9\xa7"), QString::fromUtf8("ÇÉÑÁÍÓÚº"));
}

TEST_F(Norma43, TheSeedsOfTheFuzzerAreGoodFiles) {
    const auto bytes = [](const char* name) {
        QFile f(QStringLiteral(TALLORA_SOURCE_DIR "/tests/data/norma43/") + QLatin1String(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    };
    const N43File one = read(bytes("one_account.n43"));
    ASSERT_EQ(one.accounts.size(), 1u);
    EXPECT_EQ(one.accounts[0].movements[0].concepts.value(0),
              QString::fromUtf8("FACTURA F-101 CAÑADAS"));
    const N43File several = read(bytes("several_accounts.n43"));
    ASSERT_EQ(several.accounts.size(), 2u);
    EXPECT_EQ(several.accounts[1].name, QString::fromUtf8("CAÑADAS SL"));
}

TEST_F(Norma43, TheRefusalSpeaksTheUsersLanguage) {
    ctx.setIdioma("cat");
    const QByteArray bytes = file({header("0200051332", 0), movement(5000)});
    try {
        read(bytes);
        FAIL() << "accepted";
    } catch (const N43Error& e) {
        EXPECT_TRUE(e.reason().contains("Hi falta el registre 88")) << e.reason().toStdString();
    }
}

}  // namespace
}  // namespace tallora::banking
