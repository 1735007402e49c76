#pragma once
// SEPA remittance files in ISO 20022 XML: the direct-debit initiation (pain.008.001.02, or
// .08) a creditor sends its bank to collect receipts, and the credit-transfer initiation
// (pain.001.001.03, or .09) a debtor sends to pay its suppliers. The writer knows nothing of
// the portfolio: treasury/remittance.h fills a SepaDocument from a run.
//
// Texts are cut to the lengths of the schema and reduced to the characters Spanish banks
// take (letters without accents but Ñ and Ç, digits, / - ? : ( ) . , ' + and blanks); what
// would be left empty becomes a blank-free placeholder, never an empty element the schema
// refuses.
#include "context/money.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>

#include <vector>

namespace tallora::banking {

enum class SepaKind { DirectDebit, Transfer };

// The versions written: the ones of the 2009 rulebooks every Spanish bank takes, and those
// of the 2019 message set, which name the BIC "BICFI" (and, for transfers, wrap the date).
enum class SepaVersion { Classic, Current };
QString sepaNamespace(SepaKind kind, SepaVersion version);    // urn:iso:std:iso:20022:tech:xsd:…
QString sepaMessageName(SepaKind kind, SepaVersion version);  // "pain.008.001.02" …

// Sequence types of a direct debit.
inline constexpr const char* kFirst = "FRST";
inline constexpr const char* kRecurrent = "RCUR";

struct SepaTransaction {
    QString endToEndId;  // ≤ 35, unique within the file
    Money amount;        // positive, whole cents
    QString name;        // the debtor of a debit, the creditor of a transfer
    QString iban;
    QString bic;          // optional
    QString mandateId;    // debits
    QDate mandateSigned;  // debits
    QString remittance;   // RmtInf/Ustrd: the invoice
};

// One PmtInf: the transactions of one sequence type (debits) and one date.
struct SepaBatch {
    QString sequence;  // FRST / RCUR for debits; empty for transfers
    QDate date;        // ReqdColltnDt or ReqdExctnDt
    std::vector<SepaTransaction> transactions;
};

struct SepaDocument {
    SepaKind kind = SepaKind::DirectDebit;
    SepaVersion version = SepaVersion::Classic;
    QString messageId;  // ≤ 35
    QDateTime created;
    QString partyName;    // the company
    QString initiatorId;  // GrpHdr/InitgPty/Id: creditor identifier, or tax number + suffix
    QString creditorId;   // debits: the SEPA creditor identifier
    QString accountIban;  // the company's account
    QString accountBic;   // optional
    std::vector<SepaBatch> batches;
};

// The sum of every transaction: GrpHdr/CtrlSum.
Money controlSum(const SepaDocument& document);
int transactionCount(const SepaDocument& document);

// The XML document, UTF-8 with its declaration.
QByteArray sepaXml(const SepaDocument& document);

// A text reduced to the characters of a SEPA file and cut to `length`.
QString sepaText(const QString& text, int length);

// An amount as the file writes it: two decimals and a point ("1234.50").
QString sepaAmount(Money amount);

}  // namespace tallora::banking
