#include "journal_list.h"

#include <QListWidget>

namespace tallora::ui {
namespace {

struct Look {
    const char* kind;
    QColor colour;
    bool bold;
};

const Look* lookOf(const QString& kind) {
    static const Look looks[] = {
        {"titol", QColor(0x00, 0x00, 0x80), true},
        {"START", QColor(0x00, 0x00, 0x80), true},
        {"final", QColor(0x80, 0x80, 0x80), false},
        {"IMPORT_VERD", QColor(0x00, 0x70, 0x00), false},
        {"IMPORT_VERMELL", QColor(0xC0, 0x00, 0x00), false},
        {"resultadoSI", QColor(0x00, 0x70, 0x00), true},
        {"resultadoNO", QColor(0xC0, 0x00, 0x00), true},
    };
    for (const Look& look : looks)
        if (kind == QLatin1String(look.kind)) return &look;
    return nullptr;
}

constexpr int kNumberRole = Qt::UserRole;
constexpr int kKindRole = Qt::UserRole + 1;

}  // namespace

QListWidget* journalList(QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(QStringLiteral("ListRegistres"));
    list->setFocusPolicy(Qt::ClickFocus);
    list->setMinimumWidth(280);
    return list;
}

void writeJournalRow(QListWidget* list, const JournalRow& row) {
    auto* item = new QListWidgetItem(row.text, list);
    item->setData(kNumberRole, QVariant::fromValue<qint64>(row.number));
    item->setData(kKindRole, row.kind);
    QFont font = list->font();
    if (const Look* look = lookOf(row.kind)) {
        item->setForeground(look->colour);
        font.setBold(look->bold);
        item->setFont(font);
    } else if (row.opensChange()) {
        item->setForeground(QColor(0x00, 0x00, 0xFF));
        font.setUnderline(true);
        item->setFont(font);
        item->setToolTip(QString::number(row.number));
    }
    list->scrollToItem(item);
}

std::optional<std::int64_t> reopenNumber(const QListWidget* list) {
    const QListWidgetItem* item = list->currentItem();
    if (!item || modifyCaption(item->data(kKindRole).toString()).isEmpty()) return std::nullopt;
    return item->data(kNumberRole).toLongLong();
}

QString reopenKind(const QListWidget* list) {
    const QListWidgetItem* item = list->currentItem();
    return item ? item->data(kKindRole).toString() : QString();
}

}  // namespace tallora::ui
