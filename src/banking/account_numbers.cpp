#include "account_numbers.h"

#include "context/common_helpers.h"
#include "context/messages.h"

#include <QStringList>

namespace tallora::banking {
namespace {

// The remainder mod 97 of a text of digits and letters, letters counted A = 10 … Z = 35,
// taken piece by piece so that any length fits.
int mod97(const QString& text) {
    int rest = 0;
    for (const QChar c : text) {
        if (c.isDigit()) {
            rest = (rest * 10 + c.digitValue()) % 97;
        } else {
            const int value = c.unicode() - u'A' + 10;
            rest = (rest * 100 + value) % 97;
        }
    }
    return rest;
}

bool alphanumeric(const QString& text) {
    for (const QChar c : text)
        if (!(c.isDigit() || (c >= u'A' && c <= u'Z'))) return false;
    return !text.isEmpty();
}

bool digitsOnly(const QString& text) {
    for (const QChar c : text)
        if (!c.isDigit()) return false;
    return true;
}

int cccDigit(const QString& ten) {
    static const int weights[] = {1, 2, 4, 8, 5, 10, 9, 7, 3, 6};
    int sum = 0;
    for (int i = 0; i < 10; ++i) sum += ten[i].digitValue() * weights[i];
    const int d = 11 - sum % 11;
    return d == 10 ? 1 : d == 11 ? 0 : d;
}

QString twoDigits(int value) {
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

}  // namespace

QString cccCheckDigits(const QString& entityOffice, const QString& account) {
    return QString::number(cccDigit(QStringLiteral("00") + entityOffice)) +
           QString::number(cccDigit(account));
}

bool validCcc(const QString& text) {
    const QString ccc = compactCode(text);
    if (ccc.size() != 20 || !digitsOnly(ccc)) return false;
    return ccc.mid(8, 2) == cccCheckDigits(ccc.left(8), ccc.mid(10));
}

bool validIban(const QString& text) {
    const QString iban = compactCode(text);
    if (iban.size() < 15 || iban.size() > 34 || !alphanumeric(iban)) return false;
    if (!iban[0].isLetter() || !iban[1].isLetter() || !iban[2].isDigit() || !iban[3].isDigit())
        return false;
    if (iban.startsWith(QLatin1String("ES")) && (iban.size() != 24 || !validCcc(iban.mid(4))))
        return false;
    return mod97(iban.mid(4) + iban.left(4)) == 1;
}

std::optional<QString> ibanOfCcc(const QString& text) {
    const QString ccc = compactCode(text);
    if (!validCcc(ccc)) return std::nullopt;
    return QStringLiteral("ES") + twoDigits(98 - mod97(ccc + QStringLiteral("142800"))) + ccc;
}

std::optional<QString> ibanOfAccount(const QString& text) {
    const QString compact = compactCode(text);
    if (validIban(compact)) return compact;
    return ibanOfCcc(compact);
}

QString storedAccount(const QString& text) {
    const QString compact = compactCode(text);
    if (compact.startsWith(QLatin1String("ES")) && validIban(compact)) return compact.mid(4);
    return text;
}

QString accountWarning(const WorkingContext& ctx, const QString& text) {
    const QString compact = compactCode(text);
    if (compact.isEmpty() || validCcc(compact) || validIban(compact)) return {};
    const bool digits = digitsOnly(compact);
    if (digits && compact.size() == 20)
        return fixedText(ctx, "Los dígitos de control de la cuenta no son correctos.",
                         "Els dígits de control del compte no són correctes.");
    if (!digits && compact.size() >= 15 && compact.at(0).isLetter() && compact.at(1).isLetter())
        return fixedText(ctx, "Los dígitos de control del IBAN no son correctos.",
                         "Els dígits de control de l'IBAN no són correctes.");
    return fixedText(ctx, "No es un IBAN ni una cuenta de 20 dígitos (CCC).",
                     "No és un IBAN ni un compte de 20 dígits (CCC).");
}

QString groupedAccount(const QString& text) {
    const QString compact = compactCode(text);
    QStringList groups;
    for (qsizetype i = 0; i < compact.size(); i += 4) groups << compact.mid(i, 4);
    return groups.join(u' ');
}

QString creditorIdentifier(const QString& taxId, const QString& suffix) {
    const QString id = compactCode(taxId);
    const QString check = twoDigits(98 - mod97(id + QStringLiteral("ES00")));
    return QStringLiteral("ES") + check + compactCode(suffix).left(3).leftJustified(3, u'0') + id;
}

bool validCreditorIdentifier(const QString& text) {
    const QString id = compactCode(text);
    if (id.size() != 16 || !id.startsWith(QLatin1String("ES")) || !alphanumeric(id)) return false;
    return id.mid(2, 2) == twoDigits(98 - mod97(id.mid(7) + QStringLiteral("ES00")));
}

}  // namespace tallora::banking
