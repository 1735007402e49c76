#pragma once
#include <QString>

namespace tallora {

// The program's own name and version, shown in titles and the version label.
inline QString programName() { return QStringLiteral("Tallora 5"); }
inline QString programVersion() { return QStringLiteral(TALLORA_VERSION); }

}  // namespace tallora
