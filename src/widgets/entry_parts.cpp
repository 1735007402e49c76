#include "entry_parts.h"

#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include <algorithm>

namespace tallora::ui {

bool isEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

QFrame* panelFrame(const QString& name, QWidget* parent) {
    auto* f = new QFrame(parent);
    f->setObjectName(name);
    f->setFrameShape(QFrame::StyledPanel);
    return f;
}

QLabel* heading(const QString& text, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    setBold(l, true);
    return l;
}

void setBold(QWidget* w, bool bold) {
    QFont font = w->font();
    if (font.bold() == bold) return;
    font.setBold(bold);
    w->setFont(font);
}

void BoldLabels::mark(QWidget* focused) const {
    for (auto it = labels_.cbegin(); it != labels_.cend(); ++it) setBold(it.value(), false);
    if (QLabel* label = labels_.value(focused)) setBold(label, true);
    if (auto* line = qobject_cast<QLineEdit*>(focused)) line->selectAll();
}

void selectPrefix(QListWidget* list, const QString& text) {
    if (!text.isEmpty()) {
        for (int row = 0; row < list->count(); ++row) {
            if (list->item(row)->text().startsWith(text, Qt::CaseInsensitive)) {
                list->setCurrentRow(row);
                list->scrollToItem(list->item(row));
                return;
            }
        }
    }
    list->setCurrentRow(-1);
    list->clearSelection();
}

void moveListSelection(QListWidget* list, int step) {
    if (list->count() == 0) return;
    list->setCurrentRow(std::clamp(list->currentRow() + step, 0, list->count() - 1));
}

QListWidgetItem* selectedItem(const QListWidget* list) {
    QListWidgetItem* item = list->currentItem();
    return item && item->isSelected() ? item : nullptr;
}

bool listFieldKey(QWidget* watched, const QKeyEvent* key, QLineEdit* field, QListWidget* list) {
    if (watched == field && key->key() == Qt::Key_Down) {
        moveListSelection(list, 1);
        return true;
    }
    if (watched == field && key->key() == Qt::Key_Right) {
        if (field->cursorPosition() < field->text().size()) return false;
        if (list->currentRow() < 0 && list->count() > 0) list->setCurrentRow(0);
        list->setFocus();
        return true;
    }
    if (watched == list && key->key() == Qt::Key_Left) {
        field->setFocus();
        return true;
    }
    return false;
}

}  // namespace tallora::ui
