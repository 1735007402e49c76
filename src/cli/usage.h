#pragma once
#include <QString>

namespace tallora::cli {

// The text of --help: every command and option, with examples.
QString usageText();

}  // namespace tallora::cli
