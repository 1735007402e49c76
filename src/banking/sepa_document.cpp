#include "sepa_document.h"

#include "context/common_helpers.h"

#include <QXmlStreamWriter>

namespace tallora::banking {

namespace {

// A required element may not be empty (Max35Text and the like have a minimum length of one).
QString orPlaceholder(const QString& text) {
    return text.isEmpty() ? QStringLiteral("NOTPROVIDED") : text;
}

class Writer {
public:
    explicit Writer(const SepaDocument& d) : d_(d), xml_(&out_) {}

    QByteArray write() {
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(2);
        xml_.writeStartDocument();
        xml_.writeDefaultNamespace(sepaNamespace(d_.kind, d_.version));
        xml_.writeStartElement(QStringLiteral("Document"));
        xml_.writeStartElement(debit() ? QStringLiteral("CstmrDrctDbtInitn")
                                       : QStringLiteral("CstmrCdtTrfInitn"));
        groupHeader();
        int n = 0;
        for (const SepaBatch& batch : d_.batches)
            if (!batch.transactions.empty()) paymentInformation(batch, ++n);
        xml_.writeEndElement();
        xml_.writeEndElement();
        xml_.writeEndDocument();
        return out_;
    }

private:
    bool debit() const { return d_.kind == SepaKind::DirectDebit; }
    bool current() const { return d_.version == SepaVersion::Current; }

    void text(const char* name, const QString& value) {
        xml_.writeTextElement(QLatin1String(name), value);
    }
    void open(const char* name) { xml_.writeStartElement(QLatin1String(name)); }
    void close() { xml_.writeEndElement(); }

    void groupHeader() {
        open("GrpHdr");
        text("MsgId", orPlaceholder(sepaText(d_.messageId, 35)));
        text("CreDtTm", d_.created.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")));
        text("NbOfTxs", QString::number(transactionCount(d_)));
        text("CtrlSum", sepaAmount(controlSum(d_)));
        open("InitgPty");
        text("Nm", orPlaceholder(sepaText(d_.partyName, 70)));
        open("Id");
        open("OrgId");
        open("Othr");
        text("Id", orPlaceholder(sepaText(d_.initiatorId, 35)));
        close();
        close();
        close();
        close();
        close();
    }

    // A bank by its BIC, or "NOTPROVIDED" as the Spanish guides allow.
    void agent(const char* name, const QString& bic) {
        open(name);
        open("FinInstnId");
        const QString code = compactCode(bic);
        if (!code.isEmpty()) {
            text(current() ? "BICFI" : "BIC", code);
        } else {
            open("Othr");
            text("Id", QStringLiteral("NOTPROVIDED"));
            close();
        }
        close();
        close();
    }

    void account(const char* name, const QString& iban) {
        open(name);
        open("Id");
        text("IBAN", compactCode(iban));
        close();
        close();
    }

    void party(const char* name, const QString& nm) {
        open(name);
        text("Nm", orPlaceholder(sepaText(nm, 70)));
        close();
    }

    void paymentInformation(const SepaBatch& batch, int n) {
        Money sum;
        for (const SepaTransaction& t : batch.transactions) sum += t.amount;
        open("PmtInf");
        text("PmtInfId", sepaText(d_.messageId, 30) + QLatin1Char('-') + QString::number(n));
        text("PmtMtd", debit() ? QStringLiteral("DD") : QStringLiteral("TRF"));
        text("NbOfTxs", QString::number(batch.transactions.size()));
        text("CtrlSum", sepaAmount(sum));
        open("PmtTpInf");
        open("SvcLvl");
        text("Cd", QStringLiteral("SEPA"));
        close();
        if (debit()) {
            open("LclInstrm");
            text("Cd", QStringLiteral("CORE"));
            close();
            text("SeqTp", batch.sequence);
        }
        close();
        const QString date = batch.date.toString(Qt::ISODate);
        if (debit()) {
            text("ReqdColltnDt", date);
            party("Cdtr", d_.partyName);
            account("CdtrAcct", d_.accountIban);
            agent("CdtrAgt", d_.accountBic);
            text("ChrgBr", QStringLiteral("SLEV"));
            creditorScheme();
            for (const SepaTransaction& t : batch.transactions) debitTransaction(t);
        } else {
            if (current()) {
                open("ReqdExctnDt");
                text("Dt", date);
                close();
            } else {
                text("ReqdExctnDt", date);
            }
            party("Dbtr", d_.partyName);
            account("DbtrAcct", d_.accountIban);
            agent("DbtrAgt", d_.accountBic);
            text("ChrgBr", QStringLiteral("SLEV"));
            for (const SepaTransaction& t : batch.transactions) transferTransaction(t);
        }
        close();
    }

    void creditorScheme() {
        open("CdtrSchmeId");
        open("Id");
        open("PrvtId");
        open("Othr");
        text("Id", compactCode(d_.creditorId));
        open("SchmeNm");
        text("Prtry", QStringLiteral("SEPA"));
        close();
        close();
        close();
        close();
        close();
    }

    void amount(const char* name, Money value) {
        xml_.writeStartElement(QLatin1String(name));
        xml_.writeAttribute(QStringLiteral("Ccy"), QStringLiteral("EUR"));
        xml_.writeCharacters(sepaAmount(value));
        xml_.writeEndElement();
    }

    void paymentId(const SepaTransaction& t) {
        open("PmtId");
        text("EndToEndId", orPlaceholder(sepaText(t.endToEndId, 35)));
        close();
    }

    void remittance(const SepaTransaction& t) {
        const QString ustrd = sepaText(t.remittance, 140);
        if (ustrd.isEmpty()) return;
        open("RmtInf");
        text("Ustrd", ustrd);
        close();
    }

    void debitTransaction(const SepaTransaction& t) {
        open("DrctDbtTxInf");
        paymentId(t);
        amount("InstdAmt", t.amount);
        open("DrctDbtTx");
        open("MndtRltdInf");
        text("MndtId", orPlaceholder(sepaText(t.mandateId, 35)));
        text("DtOfSgntr", t.mandateSigned.toString(Qt::ISODate));
        close();
        close();
        agent("DbtrAgt", t.bic);
        party("Dbtr", t.name);
        account("DbtrAcct", t.iban);
        remittance(t);
        close();
    }

    void transferTransaction(const SepaTransaction& t) {
        open("CdtTrfTxInf");
        paymentId(t);
        open("Amt");
        amount("InstdAmt", t.amount);
        close();
        if (!compactCode(t.bic).isEmpty()) agent("CdtrAgt", t.bic);
        party("Cdtr", t.name);
        account("CdtrAcct", t.iban);
        remittance(t);
        close();
    }

    const SepaDocument& d_;
    QByteArray out_;
    QXmlStreamWriter xml_;
};

}  // namespace

QString sepaMessageName(SepaKind kind, SepaVersion version) {
    if (kind == SepaKind::DirectDebit)
        return version == SepaVersion::Current ? QStringLiteral("pain.008.001.08")
                                               : QStringLiteral("pain.008.001.02");
    return version == SepaVersion::Current ? QStringLiteral("pain.001.001.09")
                                           : QStringLiteral("pain.001.001.03");
}

QString sepaNamespace(SepaKind kind, SepaVersion version) {
    return QStringLiteral("urn:iso:std:iso:20022:tech:xsd:") + sepaMessageName(kind, version);
}

Money controlSum(const SepaDocument& document) {
    Money sum;
    for (const SepaBatch& b : document.batches)
        for (const SepaTransaction& t : b.transactions) sum += t.amount;
    return sum;
}

int transactionCount(const SepaDocument& document) {
    int n = 0;
    for (const SepaBatch& b : document.batches) n += static_cast<int>(b.transactions.size());
    return n;
}

QByteArray sepaXml(const SepaDocument& document) {
    return Writer(document).write();
}

QString sepaText(const QString& text, int length) {
    // Accented letters lose their accent; Ñ and Ç stay, as the Spanish guides admit them.
    static const QString from = QStringLiteral("ÁÀÂÄáàâäÉÈÊËéèêëÍÌÎÏíìîïÓÒÔÖóòôöÚÙÛÜúùûü·ªº");
    static const QString to = QStringLiteral("AAAAaaaaEEEEeeeeIIIIiiiiOOOOooooUUUUuuuu.ao");
    static const QString allowed = QStringLiteral("/-?:().,'+ ÑñÇç");
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        if (const qsizetype i = from.indexOf(c); i >= 0) c = to.at(i);
        const bool plain = (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
                           (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                           (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
        out += plain || allowed.contains(c) ? c : QLatin1Char(' ');
    }
    return out.simplified().left(length).trimmed();
}

QString sepaAmount(Money amount) {
    return amount.toPlainText(2);
}

}  // namespace tallora::banking
