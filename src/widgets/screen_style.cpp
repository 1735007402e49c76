#include "screen_style.h"

#include "context/messages.h"

#include <QAction>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

namespace tallora::ui {

QPushButton* dialogButton(const char* name, const QString& caption, QWidget* parent) {
    auto* b = named(new QPushButton(caption, parent), name);
    b->setAutoDefault(true);
    b->setMinimumHeight(30);
    return b;
}

QLabel* boldLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text.trimmed(), parent);
    QFont f = label->font();
    f.setBold(true);
    label->setFont(f);
    return label;
}

void closeScreen(QWidget* screen) {
    if (auto* window = qobject_cast<QMdiSubWindow*>(screen->parentWidget()))
        window->close();
    else
        screen->close();
}

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

QAction* addSpreadsheetTool(QToolBar* bar, const WorkingContext& ctx,
                            std::function<void()> action) {
    QAction* a =
        addTool(bar, QStringLiteral("Exportar"),
                fixedText(ctx, "Hoja de cálculo", "Full de càlcul"), {}, std::move(action));
    a->setToolTip(fixedText(ctx, "Guardar la lista como hoja de cálculo (XLSX o CSV)",
                            "Desar la llista com a full de càlcul (XLSX o CSV)"));
    return a;
}

void turnTabsFromKeyboard(QTabWidget* tabs, QWidget* form) {
    const auto turn = [tabs](int step) {
        const int n = tabs->count();
        tabs->setCurrentIndex((tabs->currentIndex() + step + n) % n);
        tabs->tabBar()->setFocus();
    };
    for (const auto& [keys, step] :
         {std::pair{QKeySequence(Qt::CTRL | Qt::Key_Tab), 1},
          std::pair{QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1},
          std::pair{QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), -1},
          std::pair{QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), -1},
          std::pair{QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1}}) {
        auto* shortcut = new QShortcut(keys, form);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, form, [turn, step] { turn(step); });
    }
}

}  // namespace tallora::ui
