#pragma once
// The menu tree and tool bar of the main shell, as data: names, captions, and which
// entries show for the open exercise. The shell window builds its menus from this list.
#include "context/fwd.h"

#include <QString>

#include <vector>

namespace tallora::shell {

struct MenuEntry {
    enum class Kind { Menu, Item, Separator };
    Kind kind = Kind::Item;
    QString name;          // the entry's name, also the QAction's objectName
    QString menu;          // the top menu it belongs to; empty for a top menu
    int caption = 0;       // message number; 0 with a fixed caption
    QString fixedCaption;  // the caption of the few entries not in the message catalogue:
                           // one text, or "Spanish|Catalan"
    bool built = false;    // false while the screen it opens is not in the program yet
};

// Every entry in order: each top menu is followed by its entries.
const std::vector<MenuEntry>& menuTree();
const MenuEntry* findMenuEntry(const QString& name);
// The caption in the language of the context.
QString menuCaption(const WorkingContext& ctx, const MenuEntry& entry);

// False for the treasury entries with treasury off, and for customers in a shop exercise.
bool menuEntryVisible(const WorkingContext& ctx, const QString& name);
// Whether the entry can be chosen: its screen is in the program and what it needs is on.
bool menuEntryAvailable(const WorkingContext& ctx, const MenuEntry& entry);

// The tool bar BarraMDI, by position 1 to 9; positions 4, 6 and 8 are separators.
struct ToolButton {
    int position = 0;
    QString key;  // the button's key; empty for a separator
    int caption = 0;
    QString menuEntry;  // the menu entry it does the same as; empty for help
};
const std::vector<ToolButton>& toolBar();

}  // namespace tallora::shell
