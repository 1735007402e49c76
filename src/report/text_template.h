#pragma once
// The value of a layout's text: literal text with values in braces (layout_reader.h).
#include "layout.h"

#include <QString>

#include <vector>

namespace tallora::report {

// The pieces of `value`; throws std::invalid_argument with the reason when a brace is not
// closed or what is inside it does not read.
std::vector<TextPiece> parseTextTemplate(const QString& value);

}  // namespace tallora::report
