#include "tax_id.h"

#include "context/common_helpers.h"
#include "context/messages.h"

#include <QRegularExpression>

namespace tallora::verifactu {
namespace {

const QString kDniLetters = QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKE");

QChar dniLetter(const QString& digits) {
    return kDniLetters[static_cast<int>(digits.toLongLong() % 23)];
}

bool validCif(const QString& id) {
    int a = 0, b = 0;
    for (int i = 1; i <= 7; ++i) {
        const int digit = id[i].digitValue();
        if (i % 2 == 0) {
            a += digit;
        } else {
            const int twice = 2 * digit;
            b += twice / 10 + twice % 10;
        }
    }
    const int c = (10 - (a + b) % 10) % 10;
    const QChar control = id[8];
    const QChar letter = QStringLiteral("JABCDEFGHI")[c];
    const QChar first = id[0];
    const bool letterOnly = QStringLiteral("PQSW").contains(first) || id.mid(1, 2) == u"00";
    const bool digitOnly = QStringLiteral("ABEH").contains(first);
    if (letterOnly) return control == letter;
    if (digitOnly) return control == QChar(u'0' + c);
    return control == letter || control == QChar(u'0' + c);
}

}  // namespace

QString normalisedTaxId(const QString& text) {
    QString id = compactCode(text);
    if (id.startsWith(QLatin1String("ES")) && looksSpanish(id.mid(2))) id = id.mid(2);
    return id;
}

bool looksSpanish(const QString& id) {
    static const QRegularExpression form(QStringLiteral(
        "^([0-9]{8}[A-Z]|[XYZKLM][0-9]{7}[A-Z]|[ABCDEFGHJNPQRSUVW][0-9]{7}[0-9A-J])$"));
    return form.match(id).hasMatch();
}

bool validSpanishTaxId(const QString& text) {
    const QString id = normalisedTaxId(text);
    if (!looksSpanish(id)) return false;
    const QChar first = id[0];
    if (first.isDigit()) return id[8] == dniLetter(id.left(8));
    if (QStringLiteral("XYZ").contains(first))
        return id[8] ==
               dniLetter(QString::number(QStringLiteral("XYZ").indexOf(first)) + id.mid(1, 7));
    if (QStringLiteral("KLM").contains(first)) return id[8] == dniLetter(id.mid(1, 7));
    return validCif(id);
}

QString taxIdWarning(const WorkingContext& ctx, const QString& text) {
    const QString id = normalisedTaxId(text);
    if (id.isEmpty() || validSpanishTaxId(id)) return {};
    if (id.size() > 2 && id[0].isLetter() && id[1].isLetter() && !looksSpanish(id)) return {};
    return fixedText(ctx,
                     QStringLiteral("Atención: el NIF %1 no supera la comprobación de su letra o "
                                    "dígito de control"),
                     QStringLiteral("Atenció: el NIF %1 no supera la comprovació de la seva lletra "
                                    "o dígit de control"))
        .arg(text.trimmed());
}

}  // namespace tallora::verifactu
