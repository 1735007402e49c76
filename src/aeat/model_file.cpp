// The wrapper of the files presented by "diseño de registro" (303, 111).
#include "context/program.h"
#include "fixed_record.h"
#include "models.h"
#include "verifactu/system_identity.h"
#include "verifactu/tax_id.h"

namespace tallora::aeat {

QString fileTaxId(const QString& nif) {
    return verifactu::normalisedTaxId(nif).right(9).rightJustified(9, u'0');
}

QByteArray designFile(const QString& model, const TaxPeriod& period, const QByteArray& pages) {
    const QString tag =
        model + u'0' + QString::number(period.year) + period.code + QStringLiteral("0000>");
    // The program's version in four digits: 5.0.0 gives "0500".
    const QStringList v = programVersion().split(u'.');
    const int version = v.value(0).toInt() * 100 + v.value(1).toInt();
    FixedRecord aux(328);
    aux.text(1, 17, QStringLiteral("<T") + tag);
    aux.text(18, 5, QStringLiteral("<AUX>"));
    aux.number(93, 4, version);
    // Left blank by a build that was given no producer's tax number.
    const QString developer = verifactu::programIdentity({}).productorNif;
    if (!developer.isEmpty()) aux.text(101, 9, fileTaxId(developer));
    aux.text(323, 6, QStringLiteral("</AUX>"));
    return aux.latin1() + pages + (QStringLiteral("</T") + tag).toLatin1();
}

}  // namespace tallora::aeat
