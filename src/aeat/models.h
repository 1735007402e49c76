#pragma once
// Each model's own computation and file, dispatched from model_figures.h.
#include "model_figures.h"

namespace tallora::aeat {

// Adds boxes to figures in the form's order.
class BoxAdder {
public:
    explicit BoxAdder(ModelFigures& f) : f_(f) {}
    BoxAdder& section(const char* spanish, const char* catalan);
    BoxAdder& amount(const char* number, const char* spanish, const char* catalan, Money value);
    BoxAdder& rate(const char* number, const char* spanish, const char* catalan, Money value);
    BoxAdder& count(const char* number, const char* spanish, const char* catalan, qint64 value);
    // A box typed by the user: its value from `typed`, 0 when not given.
    BoxAdder& typed(const char* number, const char* spanish, const char* catalan,
                    const TypedBoxes& typed);

private:
    BoxAdder& add(const char* number, const char* spanish, const char* catalan, Box::Kind kind,
                  Money value, bool typed);
    ModelFigures& f_;
};

ModelFigures compute303(const WorkingContext& ctx, const TaxPeriod& p, const TypedBoxes& t);
ModelFigures compute111(const WorkingContext& ctx, const TaxPeriod& p, const TypedBoxes& t);
ModelFigures compute130(const WorkingContext& ctx, const TaxPeriod& p, const TypedBoxes& t);
ModelFigures compute347(const WorkingContext& ctx, const TaxPeriod& p);
ModelFigures compute349(const WorkingContext& ctx, const TaxPeriod& p);

QByteArray file303(const WorkingContext& ctx, const ModelFigures& f);
QByteArray file111(const WorkingContext& ctx, const ModelFigures& f);
QByteArray file347(const WorkingContext& ctx, const ModelFigures& f);
QByteArray file349(const WorkingContext& ctx, const ModelFigures& f);

// The 303's and 111's wrapper: "<T" model "0" exercise period "0000>", the AUX record, the
// pages, the closing tag.
QByteArray designFile(const QString& model, const TaxPeriod& period, const QByteArray& pages);

// The declarant's tax number as the files take it: 9 characters, right-aligned, zero-filled.
QString fileTaxId(const QString& nif);

}  // namespace tallora::aeat
