#include "model_figures.h"

#include "context/messages.h"
#include "context/working_context.h"
#include "models.h"
#include "verifactu/tax_id.h"

#include <QSaveFile>

namespace tallora::aeat {

Money ModelFigures::value(const QString& number) const {
    for (const Box& b : boxes)
        if (b.number == number) return b.amount;
    return {};
}

Box* ModelFigures::find(const QString& number) {
    for (Box& b : boxes)
        if (b.number == number) return &b;
    return nullptr;
}

BoxAdder& BoxAdder::section(const char* spanish, const char* catalan) {
    f_.sections << QString::fromUtf8(spanish) + u'|' + QString::fromUtf8(catalan);
    return *this;
}

BoxAdder& BoxAdder::add(const char* number, const char* spanish, const char* catalan,
                        Box::Kind kind, Money value, bool typed) {
    Box b;
    b.number = QString::fromLatin1(number);
    b.spanish = QString::fromUtf8(spanish);
    b.catalan = QString::fromUtf8(catalan);
    b.kind = kind;
    b.typed = typed;
    b.amount = value;
    b.section = static_cast<int>(f_.sections.size()) - 1;
    f_.boxes.push_back(b);
    return *this;
}

BoxAdder& BoxAdder::amount(const char* n, const char* es, const char* ca, Money v) {
    return add(n, es, ca, Box::Kind::Amount, v, false);
}

BoxAdder& BoxAdder::rate(const char* n, const char* es, const char* ca, Money v) {
    return add(n, es, ca, Box::Kind::Rate, v, false);
}

BoxAdder& BoxAdder::count(const char* n, const char* es, const char* ca, qint64 v) {
    return add(n, es, ca, Box::Kind::Count, Money::fromUnits(v * Money::kScale), false);
}

BoxAdder& BoxAdder::typed(const char* n, const char* es, const char* ca, const TypedBoxes& t) {
    const auto it = t.find(QString::fromLatin1(n));
    return add(n, es, ca, Box::Kind::Amount, it == t.end() ? Money{} : it->second, true);
}

QString modelCode(Model model) {
    switch (model) {
        case Model::M303:
            return QStringLiteral("303");
        case Model::M347:
            return QStringLiteral("347");
        case Model::M349:
            return QStringLiteral("349");
        case Model::M111:
            return QStringLiteral("111");
        case Model::M130:
            return QStringLiteral("130");
    }
    return {};
}

QString modelTitle(const WorkingContext& ctx, Model model) {
    switch (model) {
        case Model::M303:
            return fixedText(ctx, "Modelo 303. IVA. Autoliquidación",
                             "Model 303. IVA. Autoliquidació");
        case Model::M347:
            return fixedText(ctx, "Modelo 347. Operaciones con terceras personas",
                             "Model 347. Operacions amb terceres persones");
        case Model::M349:
            return fixedText(ctx, "Modelo 349. Operaciones intracomunitarias",
                             "Model 349. Operacions intracomunitàries");
        case Model::M111:
            return fixedText(ctx, "Modelo 111. Retenciones e ingresos a cuenta",
                             "Model 111. Retencions i ingressos a compte");
        case Model::M130:
            return fixedText(ctx, "Modelo 130. IRPF. Pago fraccionado",
                             "Model 130. IRPF. Pagament fraccionat");
    }
    return {};
}

ModelFigures computeModel(const WorkingContext& ctx, Model model, const TaxPeriod& period,
                          const TypedBoxes& typed) {
    switch (model) {
        case Model::M303:
            return compute303(ctx, period, typed);
        case Model::M347:
            return compute347(ctx, period);
        case Model::M349:
            return compute349(ctx, period);
        case Model::M111:
            return compute111(ctx, period, typed);
        case Model::M130:
            return compute130(ctx, period, typed);
    }
    return {};
}

bool modelHasFile(Model model) {
    return model != Model::M130;
}

QByteArray modelFile(const WorkingContext& ctx, const ModelFigures& f) {
    switch (f.model) {
        case Model::M303:
            return file303(ctx, f);
        case Model::M347:
            return file347(ctx, f);
        case Model::M349:
            return file349(ctx, f);
        case Model::M111:
            return file111(ctx, f);
        case Model::M130:
            return {};
    }
    return {};
}

QString modelFileName(const WorkingContext& ctx, const ModelFigures& f) {
    return QStringLiteral("%1_%2_%3_%4.txt")
        .arg(modelCode(f.model), QString::number(f.period.year), f.period.code,
             verifactu::normalisedTaxId(ctx.EmpresaNIF));
}

QString writeModelFile(const WorkingContext& ctx, const ModelFigures& figures,
                       const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(modelFile(ctx, figures)) < 0 ||
        !file.commit())
        return file.errorString();
    return {};
}

QStringList modelPeriods(Model model) {
    if (model == Model::M347) return {QStringLiteral("0A")};
    QStringList periods{QStringLiteral("1T"), QStringLiteral("2T"), QStringLiteral("3T"),
                        QStringLiteral("4T")};
    if (model == Model::M130) return periods;
    for (int month = 1; month <= 12; ++month)
        periods << QStringLiteral("%1").arg(month, 2, 10, QLatin1Char('0'));
    if (model == Model::M349) periods << QStringLiteral("0A");
    return periods;
}

QString boxCaption(const WorkingContext& ctx, const Box& box) {
    return ctx.Idioma == u"cat" ? box.catalan : box.spanish;
}

QString sectionCaption(const WorkingContext& ctx, const ModelFigures& figures, int section) {
    const int part = ctx.Idioma == u"cat" ? 1 : 0;
    return figures.sections.value(section).section(u'|', part, part);
}

QString partyCellText(const WorkingContext& ctx, const report::Cell& cell) {
    if (const auto* m = std::get_if<Money>(&cell)) return m->format(2, ctx.decimalMark());
    return report::cellText(cell, ctx.decimalMark());
}

QString boxText(const WorkingContext& ctx, const Box& box) {
    switch (box.kind) {
        case Box::Kind::Count:
            return QString::number(box.amount.units() / Money::kScale);
        case Box::Kind::Rate:
        case Box::Kind::Amount:
            return box.amount.format(2, ctx.decimalMark());
    }
    return {};
}

QStringList modelLines(const WorkingContext& ctx, const ModelFigures& f) {
    QStringList lines;
    lines << modelTitle(ctx, f.model) +
                 QStringLiteral(" · %1 %2").arg(f.period.year).arg(f.period.code);
    int section = -1;
    for (const Box& b : f.boxes) {
        if (b.section != section) {
            section = b.section;
            lines << QString() << sectionCaption(ctx, f, section);
        }
        lines << QStringLiteral("[%1] %2\t%3").arg(b.number, boxCaption(ctx, b), boxText(ctx, b));
    }
    if (!f.declarationType.isEmpty())
        lines << QString()
              << fixedText(ctx, "Tipo de declaración", "Tipus de declaració") + u'\t' +
                     f.declarationType;
    if (!f.parties.rows.empty()) {
        lines << QString();
        lines << report::sheetLines(f.parties, ctx.decimalMark());
    }
    if (!f.warnings.isEmpty()) lines << QString() << f.warnings;
    return lines;
}

}  // namespace tallora::aeat
