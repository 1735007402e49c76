#include "formula.h"

namespace tallora::report {

std::optional<Formula> parseFormula(const QString& text) {
    const qsizetype firstQuote = text.indexOf(u'\'');
    const qsizetype equals = text.indexOf(u'=');
    Formula f;
    if (firstQuote < 0) {
        if (equals < 0) return std::nullopt;
        f.name = text.left(equals).trimmed();
        f.value = text.mid(equals + 1).trimmed();
    } else {
        const qsizetype nameEnd = (equals >= 0 && equals < firstQuote) ? equals : firstQuote;
        f.name = text.left(nameEnd).trimmed();
        const qsizetype lastQuote = text.lastIndexOf(u'\'');
        f.value = lastQuote > firstQuote ? text.mid(firstQuote + 1, lastQuote - firstQuote - 1)
                                         : text.mid(firstQuote + 1);
        qsizetype end = f.value.size();
        while (end > 0 && f.value.at(end - 1).isSpace()) --end;
        f.value.truncate(end);
    }
    if (f.name.isEmpty()) return std::nullopt;
    return f;
}

FormulaSet::FormulaSet(std::span<const QString> texts) {
    for (const QString& text : texts)
        if (auto f = parseFormula(text)) values_.insert(f->name.toLower(), f->value);
}

QString FormulaSet::value(const QString& name) const {
    return values_.value(name.toLower());
}

bool FormulaSet::contains(const QString& name) const {
    return values_.contains(name.toLower());
}

}  // namespace tallora::report
