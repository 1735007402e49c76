#pragma once
// The sales screens of the screenshots: fresh, in the middle of an entry with its amounts,
// with the receipt frame, and with the journal after three postings; then the portfolio
// holding what those postings left to collect.
#include "screen_gallery.h"

#include <functional>
#include <vector>

namespace tallora {

class Dialogs;

// `openExercise` points a context at the sample exercise; `dialogs` answers Yes to all.
void addSalesScreens(std::vector<GalleryScreen>& screens,
                     std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs);

}  // namespace tallora
