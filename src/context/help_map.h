#pragma once
// The help map: each help key of a screen leads to a page of the installed help folder of the
// program's language (esp_help, cat_help), the same relative page in both. Any unknown key,
// "indice" among them, leads to the index.
#include "fwd.h"

#include <QString>
#include <QStringList>

namespace tallora {

// The page of `key`, relative to esp_help ("9/9_1.html"); "indice.html" for any other key.
QString helpPage(const QString& key);
// Every page the map leads to, the index included, each once: the pages a manual must have.
QStringList helpPages();
// The full path of the page of `key` under the installed resources, in the folder of
// ctx.Idioma. A page missing there is taken from the Spanish folder, and the index stands in
// for a page missing in both, so that help always shows something.
QString helpPath(const WorkingContext& ctx, const QString& key);

}  // namespace tallora
