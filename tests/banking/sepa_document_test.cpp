// SEPA remittance files: valid against the schema of their message, the control sums and
// counts the bank checks, one payment block per sequence, and the texts a bank takes.
#include "banking/sepa_document.h"
#include "sepa_schema.h"

#include <QDomDocument>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::banking;
using tallora::testing::sepaSchemaErrors;

namespace {

Money euros(std::int64_t cents) {
    return Money::fromUnits(cents * 100);
}

SepaDocument debits() {
    SepaDocument d;
    d.kind = SepaKind::DirectDebit;
    d.messageId = QStringLiteral("C-B85626240-20261123101500");
    d.created = QDateTime(QDate(2026, 11, 23), QTime(10, 15));
    d.partyName = QStringLiteral("Comercial Peñíscola, S.L.");
    d.creditorId = QStringLiteral("ES77000B85626240");
    d.initiatorId = d.creditorId;
    d.accountIban = QStringLiteral("ES91 2100 0418 4502 0005 1332");
    SepaBatch first{QString::fromLatin1(kFirst), QDate(2026, 12, 1), {}};
    first.transactions.push_back({"F2026-15-R7",
                                  euros(12150),
                                  QStringLiteral("Bar Neptuno & Cía"),
                                  "ES7712341234161234567890",
                                  {},
                                  "MANDATO-0001",
                                  QDate(2025, 6, 1),
                                  "Factura 2026/15"});
    SepaBatch recurrent{QString::fromLatin1(kRecurrent), QDate(2026, 12, 1), {}};
    recurrent.transactions.push_back(
        {"F2026-16-R8", euros(4000), QStringLiteral("Ferretería Ñandú"), "ES0521053014113400002160",
         "CAIXESBBXXX", "MANDATO-0002", QDate(2024, 1, 15), "Factura 2026/16"});
    recurrent.transactions.push_back({"F2026-17-R9",
                                      euros(99),
                                      QStringLiteral("Ferretería Ñandú"),
                                      "ES0521053014113400002160",
                                      {},
                                      "MANDATO-0002",
                                      QDate(2024, 1, 15),
                                      QString()});
    d.batches = {first, recurrent};
    return d;
}

SepaDocument transfers() {
    SepaDocument d;
    d.kind = SepaKind::Transfer;
    d.messageId = QStringLiteral("P-B85626240-20261123101500");
    d.created = QDateTime(QDate(2026, 11, 23), QTime(10, 15));
    d.partyName = QStringLiteral("Comercial Peñíscola, S.L.");
    d.initiatorId = QStringLiteral("B85626240000");
    d.accountIban = QStringLiteral("ES9121000418450200051332");
    d.accountBic = QStringLiteral("CAIXESBBXXX");
    SepaBatch batch{{}, QDate(2026, 11, 30), {}};
    batch.transactions.push_back({"S-FRA-88-R3",
                                  euros(250000),
                                  QStringLiteral("Suministros Lledó"),
                                  "ES7712341234161234567890",
                                  {},
                                  {},
                                  {},
                                  "S/Fra. 88"});
    batch.transactions.push_back({"S-FRA-89-R4",
                                  euros(1),
                                  QStringLiteral("Transportes Ávila"),
                                  "DE89370400440532013000",
                                  "COBADEFFXXX",
                                  {},
                                  {},
                                  "S/Fra. 89"});
    d.batches = {batch};
    return d;
}

QDomDocument parsed(const QByteArray& xml) {
    QDomDocument dom;
    EXPECT_TRUE(dom.setContent(xml, true));
    return dom;
}

QString first(const QDomDocument& dom, const char* tag) {
    return dom.elementsByTagName(QString::fromLatin1(tag)).item(0).toElement().text();
}

}  // namespace

TEST(SepaDocument, DirectDebitIsValidAgainstItsSchema) {
    const QByteArray xml = sepaXml(debits());
    EXPECT_EQ(sepaSchemaErrors(xml, QStringLiteral("pain.008.001.02")), QString())
        << xml.constData();
}

TEST(SepaDocument, TransferIsValidAgainstItsSchema) {
    const QByteArray xml = sepaXml(transfers());
    EXPECT_EQ(sepaSchemaErrors(xml, QStringLiteral("pain.001.001.03")), QString())
        << xml.constData();
}

TEST(SepaDocument, AnInvalidFileIsRefusedByTheSchemaCheck) {
    // The check itself must be able to fail: a debit file is not a transfer file.
    EXPECT_NE(sepaSchemaErrors(sepaXml(debits()), QStringLiteral("pain.001.001.03")), QString());
    QByteArray broken = sepaXml(debits());
    broken.replace("<PmtMtd>DD</PmtMtd>", "<PmtMtd>TRF</PmtMtd>");
    EXPECT_NE(sepaSchemaErrors(broken, QStringLiteral("pain.008.001.02")), QString());
}

TEST(SepaDocument, ControlSumsAndCountsAddUp) {
    const SepaDocument d = debits();
    EXPECT_EQ(controlSum(d), euros(16249));
    EXPECT_EQ(transactionCount(d), 3);
    const QDomDocument dom = parsed(sepaXml(d));
    EXPECT_EQ(first(dom, "NbOfTxs"), QStringLiteral("3"));
    EXPECT_EQ(first(dom, "CtrlSum"), QStringLiteral("162.49"));
    const QDomNodeList blocks = dom.elementsByTagName(QStringLiteral("PmtInf"));
    ASSERT_EQ(blocks.size(), 2);
    const QDomElement second = blocks.item(1).toElement();
    EXPECT_EQ(second.firstChildElement(QStringLiteral("NbOfTxs")).text(), QStringLiteral("2"));
    EXPECT_EQ(second.firstChildElement(QStringLiteral("CtrlSum")).text(), QStringLiteral("40.99"));
    EXPECT_EQ(second.elementsByTagName(QStringLiteral("SeqTp")).item(0).toElement().text(),
              QStringLiteral("RCUR"));
    EXPECT_EQ(blocks.item(0)
                  .toElement()
                  .elementsByTagName(QStringLiteral("SeqTp"))
                  .item(0)
                  .toElement()
                  .text(),
              QStringLiteral("FRST"));
}

TEST(SepaDocument, DebitCarriesCreditorMandateAndAccounts) {
    const QDomDocument dom = parsed(sepaXml(debits()));
    const QDomElement root = dom.documentElement();
    EXPECT_EQ(root.namespaceURI(),
              QStringLiteral("urn:iso:std:iso:20022:tech:xsd:pain.008.001.02"));
    EXPECT_EQ(root.firstChildElement().tagName(), QStringLiteral("CstmrDrctDbtInitn"));
    EXPECT_EQ(first(dom, "ReqdColltnDt"), QStringLiteral("2026-12-01"));
    EXPECT_EQ(first(dom, "MndtId"), QStringLiteral("MANDATO-0001"));
    EXPECT_EQ(first(dom, "DtOfSgntr"), QStringLiteral("2025-06-01"));
    EXPECT_EQ(first(dom, "IBAN"), QStringLiteral("ES9121000418450200051332"));  // blanks gone
    EXPECT_EQ(first(dom, "LclInstrm"), QStringLiteral("CORE"));
    // The creditor identifier in the scheme block and as the initiating party.
    const QDomNodeList ids = dom.elementsByTagName(QStringLiteral("Othr"));
    QStringList texts;
    for (int i = 0; i < ids.size(); ++i)
        texts << ids.item(i).toElement().firstChildElement(QStringLiteral("Id")).text();
    EXPECT_GE(texts.count(QStringLiteral("ES77000B85626240")), 2);
    EXPECT_TRUE(texts.contains(QStringLiteral("NOTPROVIDED")));  // a debtor bank without BIC
    EXPECT_EQ(first(dom, "BIC"), QStringLiteral("CAIXESBBXXX"));
}

TEST(SepaDocument, CurrentVersionsNameTheBicBicfiAndWrapTheTransferDate) {
    SepaDocument d = transfers();
    d.version = SepaVersion::Current;
    const QDomDocument dom = parsed(sepaXml(d));
    EXPECT_EQ(dom.documentElement().namespaceURI(),
              QStringLiteral("urn:iso:std:iso:20022:tech:xsd:pain.001.001.09"));
    EXPECT_EQ(first(dom, "BICFI"), QStringLiteral("CAIXESBBXXX"));
    EXPECT_EQ(dom.elementsByTagName(QStringLiteral("BIC")).size(), 0);
    EXPECT_EQ(dom.elementsByTagName(QStringLiteral("ReqdExctnDt"))
                  .item(0)
                  .firstChildElement(QStringLiteral("Dt"))
                  .text(),
              QStringLiteral("2026-11-30"));
    SepaDocument dd = debits();
    dd.version = SepaVersion::Current;
    const QDomDocument debit = parsed(sepaXml(dd));
    EXPECT_EQ(debit.documentElement().namespaceURI(),
              QStringLiteral("urn:iso:std:iso:20022:tech:xsd:pain.008.001.08"));
    EXPECT_EQ(first(debit, "BICFI"), QStringLiteral("CAIXESBBXXX"));
    EXPECT_EQ(first(debit, "ReqdColltnDt"), QStringLiteral("2026-12-01"));
}

TEST(SepaDocument, TransferLeavesOutTheCreditorBankWithoutBic) {
    const QDomDocument dom = parsed(sepaXml(transfers()));
    EXPECT_EQ(first(dom, "PmtMtd"), QStringLiteral("TRF"));
    EXPECT_EQ(first(dom, "ReqdExctnDt"), QStringLiteral("2026-11-30"));
    const QDomNodeList txs = dom.elementsByTagName(QStringLiteral("CdtTrfTxInf"));
    ASSERT_EQ(txs.size(), 2);
    EXPECT_TRUE(txs.item(0).firstChildElement(QStringLiteral("CdtrAgt")).isNull());
    EXPECT_FALSE(txs.item(1).firstChildElement(QStringLiteral("CdtrAgt")).isNull());
    EXPECT_EQ(first(dom, "InstdAmt"), QStringLiteral("2500.00"));
    EXPECT_EQ(dom.elementsByTagName(QStringLiteral("InstdAmt"))
                  .item(0)
                  .toElement()
                  .attribute(QStringLiteral("Ccy")),
              QStringLiteral("EUR"));
}

TEST(SepaDocument, TextsKeepWhatBanksTake) {
    EXPECT_EQ(sepaText(QStringLiteral("Ferretería Ñandú & Cía."), 70),
              QStringLiteral("Ferreteria Ñandu Cia."));
    EXPECT_EQ(sepaText(QStringLiteral("Àlex Çaldés · 3ª"), 70), QStringLiteral("Alex Çaldes . 3a"));
    EXPECT_EQ(sepaText(QStringLiteral("a\"b<c>d"), 70), QStringLiteral("a b c d"));
    EXPECT_EQ(sepaText(QStringLiteral("  abcdef  "), 3), QStringLiteral("abc"));
    EXPECT_EQ(sepaAmount(Money::fromUnits(1234500)), QStringLiteral("123.45"));
    EXPECT_EQ(sepaAmount(Money::fromUnits(10000)), QStringLiteral("1.00"));
}

TEST(SepaDocument, EmptyNamesStillMakeAValidFile) {
    SepaDocument d = debits();
    d.partyName.clear();
    d.batches[0].transactions[0].name = QStringLiteral("&&&");
    const QByteArray xml = sepaXml(d);
    EXPECT_EQ(sepaSchemaErrors(xml, QStringLiteral("pain.008.001.02")), QString())
        << xml.constData();
}
