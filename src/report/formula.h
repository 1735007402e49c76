#pragma once
// The text formulas of a report job: "name= 'value'".
//
// How a formula text is read:
//  - the name is the text before the first '=', trimmed; when no '=' comes before the first
//    quote, the name is the text before that quote, trimmed ("lbl_factura 'Factura nº: '",
//    a form some callers keep on purpose);
//  - the value is the text between the first and the last single quote, so a quote inside
//    the value stays ("d'Or"); its trailing blanks are dropped, so "name= 'value '" and
//    "name= 'value'" print the same; leading blanks stay;
//  - a formula with no quote at all takes the trimmed text after '=' as its value;
//  - an empty text, or one without a name, is no formula.
// Names are matched without regard to case. When two indexes give the same name, the
// later index wins. A name that no formula gives prints as an empty text.
#include <QHash>
#include <QString>

#include <optional>
#include <span>

namespace tallora::report {

struct Formula {
    QString name;
    QString value;
};

std::optional<Formula> parseFormula(const QString& text);

// The formulas of a job by name.
class FormulaSet {
public:
    FormulaSet() = default;
    // Reads the texts in index order.
    explicit FormulaSet(std::span<const QString> texts);

    // The value of `name`, empty when no formula gives it.
    QString value(const QString& name) const;
    bool contains(const QString& name) const;

private:
    QHash<QString, QString> values_;  // keyed by the lower-case name
};

}  // namespace tallora::report
