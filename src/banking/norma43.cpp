#include "norma43.h"

#include "context/messages.h"

namespace tallora::banking {
namespace {

// Bytes that are a capital or ordinal sign in one code page and something else in the other.
bool cp850Letter(unsigned char b) {
    switch (b) {
        case 0x80:
        case 0x90:
        case 0xA4:
        case 0xA5:
        case 0xA6:
        case 0xA7:
        case 0xB5:
        case 0x9A:
        case 0xD6:
        case 0xE0:
        case 0xE9:
            return true;
        default:
            return false;
    }
}
bool latin1Letter(unsigned char b) {
    switch (b) {
        case 0xC7:
        case 0xC9:
        case 0xD1:
        case 0xF1:
        case 0xAA:
        case 0xBA:
        case 0xC1:
        case 0xDC:
        case 0xCD:
        case 0xD3:
        case 0xDA:
            return true;
        default:
            return false;
    }
}

N43Encoding detect(const QByteArray& bytes) {
    int cp850 = 0, latin1 = 0;
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (cp850Letter(b)) ++cp850;
        if (latin1Letter(b)) ++latin1;
    }
    return latin1 > cp850 ? N43Encoding::Latin1 : N43Encoding::Cp850;
}

class Reader {
public:
    Reader(const WorkingContext& ctx, int line, const QString& record)
        : ctx_(ctx), line_(line), r_(record) {}

    QString text(int from, int to) const { return r_.mid(from - 1, to - from + 1); }
    QString digits(int from, int to, const char* what) const {
        const QString d = text(from, to);
        for (const QChar c : d)
            if (!c.isDigit())
                fail(t("el campo %1 no es numérico: \"%2\"", "el camp %1 no és numèric: \"%2\"")
                         .arg(QString::fromUtf8(what), d));
        return d;
    }
    int number(int from, int to, const char* what) const { return digits(from, to, what).toInt(); }
    Money amount(int from, int to, const char* what) const {
        return Money::fromUnits(digits(from, to, what).toLongLong() * 100);
    }
    // A sign of 1 (debit) or 2 (credit): the amount with its sign, credits positive.
    Money signedAmount(int signAt, int from, int to, const char* what) const {
        const QString sign = text(signAt, signAt);
        if (sign != u"1" && sign != u"2")
            fail(t("el signo de %1 no es 1 ni 2", "el signe de %1 no és 1 ni 2")
                     .arg(QString::fromUtf8(what)));
        const Money value = amount(from, to, what);
        return sign == u"1" ? -value : value;
    }
    QDate date(int from, const char* what) const {
        const QString d = digits(from, from + 5, what);
        const int yy = d.left(2).toInt();
        const QDate out(yy < 80 ? 2000 + yy : 1900 + yy, d.mid(2, 2).toInt(), d.mid(4, 2).toInt());
        if (!out.isValid())
            fail(t("la fecha %1 no es válida: %2", "la data %1 no és vàlida: %2")
                     .arg(QString::fromUtf8(what), d));
        return out;
    }
    [[noreturn]] void fail(const QString& reason) const {
        throw N43Error(
            line_,
            t("Línea %1 (registro %2): ", "Línia %1 (registre %2): ").arg(line_).arg(r_.left(2)) +
                reason);
    }
    QString t(const char* es, const char* ca) const { return fixedText(ctx_, es, ca); }

private:
    const WorkingContext& ctx_;
    int line_;
    QString r_;
};

QString amountText(Money m) {
    return m.toPlainText(2);
}

void closeAccount(const Reader& in, N43Account& account) {
    if (in.text(3, 6) != account.entity || in.text(7, 10) != account.office ||
        in.text(11, 20) != account.account)
        in.fail(in.t("cierra la cuenta %1 y la abierta es %2", "tanca el compte %1 i l'obert és %2")
                    .arg(in.text(3, 20), account.number()));
    int debits = 0, credits = 0;
    Money totalDebits, totalCredits;
    for (const N43Movement& m : account.movements) {
        if (m.amount < Money{}) {
            ++debits;
            totalDebits -= m.amount;
        } else {
            ++credits;
            totalCredits += m.amount;
        }
    }
    const int declaredDebits = in.number(21, 25, "número de débitos");
    const Money declaredTotalDebits = in.amount(26, 39, "total de débitos");
    const int declaredCredits = in.number(40, 44, "número de créditos");
    const Money declaredTotalCredits = in.amount(45, 58, "total de créditos");
    if (declaredDebits != debits || declaredTotalDebits != totalDebits)
        in.fail(in.t("la cuenta %1 declara %2 débitos por %3 y tiene %4 por %5",
                     "el compte %1 declara %2 dèbits per %3 i en té %4 per %5")
                    .arg(account.number())
                    .arg(declaredDebits)
                    .arg(amountText(declaredTotalDebits))
                    .arg(debits)
                    .arg(amountText(totalDebits)));
    if (declaredCredits != credits || declaredTotalCredits != totalCredits)
        in.fail(in.t("la cuenta %1 declara %2 créditos por %3 y tiene %4 por %5",
                     "el compte %1 declara %2 crèdits per %3 i en té %4 per %5")
                    .arg(account.number())
                    .arg(declaredCredits)
                    .arg(amountText(declaredTotalCredits))
                    .arg(credits)
                    .arg(amountText(totalCredits)));
    account.closing = in.signedAmount(59, 60, 73, "saldo final");
    const Money expected = account.opening + totalCredits - totalDebits;
    if (account.closing != expected)
        in.fail(in.t("el saldo final de la cuenta %1 es %2 y el inicial con los movimientos da %3",
                     "el saldo final del compte %1 és %2 i l'inicial amb els moviments dona %3")
                    .arg(account.number(), amountText(account.closing), amountText(expected)));
}

}  // namespace

N43File readNorma43(const WorkingContext& ctx, const QByteArray& bytes, N43Encoding encoding) {
    QByteArray data = bytes;
    while (!data.isEmpty() && (data.endsWith('\x1a') || data.endsWith('\n') || data.endsWith('\r')))
        data.chop(1);
    if (encoding == N43Encoding::Detect) encoding = detect(data);
    const QString text =
        encoding == N43Encoding::Latin1 ? QString::fromLatin1(data) : decodeCp850(data);
    N43File file;
    N43Account* open = nullptr;
    int records = 0;
    bool ended = false;
    const QStringList lines = text.split(u'\n');
    for (int i = 0; i < lines.size(); ++i) {
        QString record = lines[i];
        if (record.endsWith(u'\r')) record.chop(1);
        if (record.trimmed().isEmpty()) continue;
        const Reader in(ctx, i + 1, record.leftJustified(80, u' '));
        if (ended) in.fail(in.t("hay registros después del 88", "hi ha registres després del 88"));
        const QString kind = record.left(2);
        if (kind != u"88") ++records;
        if (kind == u"11") {
            if (open)
                in.fail(in.t("la cuenta %1 no se ha cerrado con su registro 33",
                             "el compte %1 no s'ha tancat amb el seu registre 33")
                            .arg(open->number()));
            N43Account a;
            a.line = i + 1;
            a.entity = in.digits(3, 6, "entidad");
            a.office = in.digits(7, 10, "oficina");
            a.account = in.digits(11, 20, "cuenta");
            a.start = in.date(21, "inicial");
            a.end = in.date(27, "final");
            a.opening = in.signedAmount(33, 34, 47, "saldo inicial");
            a.currency = in.text(48, 50);
            a.mode = in.number(51, 51, "modalidad");
            a.name = in.text(52, 77).trimmed();
            file.accounts.push_back(a);
            open = &file.accounts.back();
        } else if (kind == u"22" || kind == u"23" || kind == u"24" || kind == u"33") {
            if (!open)
                in.fail(in.t("no pertenece a ninguna cuenta: falta su registro 11",
                             "no pertany a cap compte: hi falta el registre 11"));
            if (kind == u"22") {
                N43Movement m;
                m.line = i + 1;
                m.office = in.text(7, 10).trimmed();
                m.operationDate = in.date(11, "de operación");
                m.valueDate = in.date(17, "valor");
                m.commonConcept = in.text(23, 24);
                m.ownConcept = in.text(25, 27);
                m.amount = in.signedAmount(28, 29, 42, "importe");
                m.document = in.text(43, 52).trimmed();
                m.reference1 = in.text(53, 64).trimmed();
                m.reference2 = in.text(65, 80).trimmed();
                open->movements.push_back(m);
            } else if (kind == u"23") {
                if (open->movements.empty())
                    in.fail(in.t("un concepto sin su movimiento 22",
                                 "un concepte sense el seu moviment 22"));
                auto& concepts = open->movements.back().concepts;
                for (const QString& part : {in.text(5, 42).trimmed(), in.text(43, 80).trimmed()})
                    if (!part.isEmpty()) concepts << part;
            } else if (kind == u"33") {
                closeAccount(in, *open);
                open = nullptr;
            }
        } else if (kind == u"88") {
            if (open)
                in.fail(in.t("la cuenta %1 no se ha cerrado con su registro 33",
                             "el compte %1 no s'ha tancat amb el seu registre 33")
                            .arg(open->number()));
            if (in.text(3, 20) != QString(18, u'9'))
                in.fail(in.t("faltan los nueves de las posiciones 3 a 20",
                             "hi falten els nous de les posicions 3 a 20"));
            const int declared = in.number(21, 26, "número de registros");
            // Some banks count the 88 itself.
            if (declared != records && declared != records + 1)
                in.fail(in.t("declara %1 registros y el archivo tiene %2",
                             "declara %1 registres i el fitxer en té %2")
                            .arg(declared)
                            .arg(records));
            ended = true;
        } else {
            in.fail(in.t("tipo de registro desconocido", "tipus de registre desconegut"));
        }
    }
    if (!ended)
        throw N43Error(
            lines.size(),
            fixedText(ctx,
                      QStringLiteral("Falta el registro 88 del final: el archivo está incompleto"),
                      QStringLiteral("Hi falta el registre 88 del final: el fitxer és incomplet")));
    return file;
}

}  // namespace tallora::banking
