#pragma once
// The figures of a tax return as the screen, the print and the companion show them: the
// form's boxes in the form's order, grouped in its sections, some computed from the books and
// some typed by the user (what the program cannot know, such as an earlier period's
// compensation); for the 347 and 349 also the list of declared parties.
#include "context/fwd.h"
#include "context/money.h"
#include "report/spreadsheet.h"
#include "tax_period.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <vector>

namespace tallora::aeat {

enum class Model { M303, M347, M349, M111, M130 };

struct Box {
    enum class Kind { Amount, Rate, Count };
    QString number;  // "07", "27"
    QString spanish, catalan;
    Kind kind = Kind::Amount;
    bool typed = false;  // typed on the screen rather than computed
    Money amount;        // a rate as a percentage; a count as whole units
    int section = 0;
};

struct ModelFigures {
    Model model = Model::M303;
    TaxPeriod period;
    QStringList sections;  // Spanish|Catalan captions of the form's sections
    std::vector<Box> boxes;
    QString declarationType;  // 303 and 111: I, C, D, N ...
    report::Sheet parties;    // 347 and 349: one row a declared party; empty otherwise
    QStringList warnings;     // what was left out, and why

    Money value(const QString& number) const;
    Box* find(const QString& number);
};

// Values typed on the screen or given to the companion, by box number.
using TypedBoxes = std::map<QString, Money>;

// "303", "347" ...
QString modelCode(Model model);
QString modelTitle(const WorkingContext& ctx, Model model);

// The figures for the period: the 303, 111 and 130 for a quarter or month, the 347 for the
// year ("0A"), the 349 for any of them.
ModelFigures computeModel(const WorkingContext& ctx, Model model, const TaxPeriod& period,
                          const TypedBoxes& typed = {});

// The agency's file of the figures (303, 347, 349, 111); empty for the 130, which has none.
QByteArray modelFile(const WorkingContext& ctx, const ModelFigures& figures);
bool modelHasFile(Model model);
// The file's usual name: "303_2026_1T_B12345674.txt".
QString modelFileName(const WorkingContext& ctx, const ModelFigures& figures);
// Writes the agency's file of the figures to `path`; an empty text when done, else the reason.
QString writeModelFile(const WorkingContext& ctx, const ModelFigures& figures, const QString& path);

// The periods a model is filed for, in the order offered: "1T".."4T", then "01".."12" for
// the monthly ones, "0A" for the year.
QStringList modelPeriods(Model model);

// The figures as text lines: "[07] Base imponible 21 %<TAB>1234,56", then the parties.
QStringList modelLines(const WorkingContext& ctx, const ModelFigures& figures);
// A box's value as the screens and the lines write it.
QString boxText(const WorkingContext& ctx, const Box& box);
// Captions in the program's language: a box's, and the section's of index `section`.
QString boxCaption(const WorkingContext& ctx, const Box& box);
QString sectionCaption(const WorkingContext& ctx, const ModelFigures& figures, int section);
// A cell of the parties' list as the screen and the print show it: amounts grouped.
QString partyCellText(const WorkingContext& ctx, const report::Cell& cell);

}  // namespace tallora::aeat
