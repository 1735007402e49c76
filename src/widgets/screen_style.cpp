#include "screen_style.h"

#include <QAction>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolBar>

namespace tallora::ui {

QWidget* bandTitle(const QString& title, const QString& right, QWidget* parent,
                   const QString& titleName, const QString& rightName) {
    auto* band = new QFrame(parent);
    band->setObjectName(QStringLiteral("Band"));
    band->setStyleSheet(QStringLiteral("#Band { background: #1F3A56; } QLabel { color: white; }"));
    auto* left = new QLabel(title, band);
    left->setObjectName(titleName);
    QFont font = left->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    left->setFont(font);
    auto* layout = new QHBoxLayout(band);
    layout->setContentsMargins(16, 10, 16, 10);
    layout->addWidget(left);
    layout->addStretch();
    if (!right.isEmpty()) {
        auto* label = new QLabel(right, band);
        label->setObjectName(rightName);
        layout->addWidget(label);
    }
    return band;
}

QAction* addTool(QToolBar* bar, const QString& key, const QString& caption,
                 const QKeySequence& shortcut, std::function<void()> action) {
    QAction* a = bar->addAction(caption);
    a->setObjectName(key);
    if (!shortcut.isEmpty()) {
        a->setShortcut(shortcut);
        a->setToolTip(
            QStringLiteral("%1 (%2)").arg(caption, shortcut.toString(QKeySequence::NativeText)));
    }
    QObject::connect(a, &QAction::triggered, bar, std::move(action));
    return a;
}

}  // namespace tallora::ui
