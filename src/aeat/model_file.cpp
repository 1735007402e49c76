// The wrapper of the files presented by "diseño de registro" (303, 111).
#include "context/program.h"
#include "context/working_context.h"
#include "fixed_record.h"
#include "models.h"
#include "verifactu/system_identity.h"
#include "verifactu/tax_id.h"

namespace tallora::aeat {

QString fileTaxId(const QString& nif) {
    return verifactu::normalisedTaxId(nif).right(9).rightJustified(9, u'0');
}

FixedRecord designPage(const QString& code, int length) {
    FixedRecord page(length);
    page.text(1, code.size() + 3, QStringLiteral("<T") + code + u'>');
    page.text(length - code.size() - 3, code.size() + 4, QStringLiteral("</T") + code + u'>');
    return page;
}

void declarantFields(FixedRecord& page, const WorkingContext& ctx, const ModelFigures& f,
                     int nameLength) {
    page.text(13, 1, f.declarationType)
        .text(14, 9, fileTaxId(ctx.EmpresaNIF))
        .text(23, nameLength, ctx.EmpresaNom)
        .number(103, 4, f.period.year)
        .text(107, 2, f.period.code);
}

FixedRecord declarationRecord(const WorkingContext& ctx, const QString& model, int year) {
    FixedRecord r = partyRecord(ctx, model, year);
    r.text(1, 1, QStringLiteral("1"))
        .text(18, 40, ctx.EmpresaNom)
        .text(58, 1, QStringLiteral("T"))
        .text(68, 40, ctx.EmpresaNom)
        .text(108, 13, model + QString::number(year) + QStringLiteral("000001"))
        .number(123, 13, 0);
    return r;
}

FixedRecord partyRecord(const WorkingContext& ctx, const QString& model, int year) {
    FixedRecord r(500);
    r.text(1, 1, QStringLiteral("2"))
        .text(2, 3, model)
        .number(5, 4, year)
        .text(9, 9, fileTaxId(ctx.EmpresaNIF));
    return r;
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
