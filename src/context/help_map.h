#pragma once
// The help map: each help key of a screen leads to a page of the installed esp_help folder,
// the same folder in both languages. Any unknown key, "indice" among them, leads to the index.
#include "fwd.h"

#include <QString>

namespace tallora {

// The page of `key`, relative to esp_help ("9/9_1.html"); "indice.html" for any other key.
QString helpPage(const QString& key);
// The full path of the page of `key` under the installed resources; the index while the
// page itself is not installed, so that help always shows something.
QString helpPath(const WorkingContext& ctx, const QString& key);

}  // namespace tallora
