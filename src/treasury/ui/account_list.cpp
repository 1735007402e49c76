#include "account_list.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace tallora::ui {

std::int64_t chosenAccount(const QComboBox* list) {
    return list->currentIndex() < 0 ? 0 : list->currentData().toLongLong();
}

void fillAccountList(QComboBox* list, const std::vector<treasury::AccountItem>& items) {
    const std::int64_t kept = chosenAccount(list);
    const QSignalBlocker quiet(list);
    list->clear();
    for (const treasury::AccountItem& item : items)
        list->addItem(item.name, QVariant::fromValue<qint64>(item.id));
    chooseAccount(list, kept);
}

void chooseAccount(QComboBox* list, std::int64_t id) {
    list->setCurrentIndex(id != 0 ? list->findData(QVariant::fromValue<qint64>(id)) : -1);
}

}  // namespace tallora::ui
