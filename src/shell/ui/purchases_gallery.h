#pragma once
// The purchases screens of the screenshots: the purchases screen idle, in the middle of an
// entry with its IVA panel, with the day log after three postings and changing a purchase
// settled in a payment run; the provisions screen and its inquiry; the purchases inquiry
// with its detail frame.
#include "screen_gallery.h"

#include <functional>
#include <vector>

namespace tallora {

class Dialogs;

// `openExercise` points a context at the sample exercise; `dialogs` answers Yes to all.
void addPurchasesScreens(std::vector<GalleryScreen>& screens,
                         std::function<void(WorkingContext&)> openExercise, Dialogs& dialogs);

}  // namespace tallora
