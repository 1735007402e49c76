#pragma once
// The lists of accounts the treasury screens choose from: a combo holding each account's
// upper-cased name with its number as item data.
#include "treasury/other_movements.h"

#include <vector>

class QComboBox;

namespace tallora::ui {

// Fills `list` with `items` anew, keeping the account in hand when it is still there and
// none chosen otherwise; refilling a list sends no change of choice.
void fillAccountList(QComboBox* list, const std::vector<treasury::AccountItem>& items);

// Chooses account `id`; none for 0 or an account the list does not hold.
void chooseAccount(QComboBox* list, std::int64_t id);
// The number of the chosen account; 0 for none.
std::int64_t chosenAccount(const QComboBox* list);

}  // namespace tallora::ui
