#pragma once
// The treasury screens of the screenshots: the collection and payment runs, each with a
// draft holding a receipt in full and one in part; the other movements' entry (one typed)
// and inquiry; the bank's statement with a returned receipt shown as a double entry.
#include "screen_gallery.h"

#include <functional>
#include <vector>

namespace tallora {

class Dialogs;

// `openExercise` points a context at the sample exercise; `dialogs` answers Yes to all.
void addTreasuryScreens(std::vector<GalleryScreen>& screens,
                        std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs);

}  // namespace tallora
