#pragma once
// Each model's own computation and file, dispatched from model_figures.h.
#include "fixed_record.h"
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

// A page of the 303 or 111 file: "<T" `code` ">" at 1, its closing tag at the end.
FixedRecord designPage(const QString& code, int length);
// The declarant's part of such a page: type of return (13), tax number (14–22), name (from
// 23), exercise (103–106), period (107–108).
void declarantFields(FixedRecord& page, const WorkingContext& ctx, const ModelFigures& f,
                     int nameLength);

// The 347's and 349's records of 500 characters: the type-1 record with the declarant and
// the declaration's number (1–135), and the start of a type-2 record (1–17).
FixedRecord declarationRecord(const WorkingContext& ctx, const QString& model, int year);
FixedRecord partyRecord(const WorkingContext& ctx, const QString& model, int year);

}  // namespace tallora::aeat
