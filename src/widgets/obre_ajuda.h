#pragma once
// Opening help pages and links through the desktop.
#include "context/fwd.h"

#include <QString>

#include <functional>

namespace tallora::ui {

// Opens the help page of `key` (the map of context/help_map.h) with the desktop's browser.
void Obre_Ajuda(const WorkingContext& ctx, const QString& key);

// Tests replace what opening a page does; an empty function restores the desktop.
void setPageOpener(std::function<void(const QString& path)> opener);

}  // namespace tallora::ui
