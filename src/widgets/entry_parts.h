#pragma once
// Pieces of the posting screens (sales, purchases, provisions): framed panels, the bold label
// of the field in hand (NEGRETES), and the name field whose list follows what is typed.
#include <QHash>
#include <QString>

class QFrame;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QWidget;

namespace tallora::ui {

bool isEnter(int key);

// A framed panel of the work area, named `name`.
QFrame* panelFrame(const QString& name, QWidget* parent);
// A bold caption.
QLabel* heading(const QString& text, QWidget* parent);
void setBold(QWidget* w, bool bold);

// The labels that go bold with their field.
class BoldLabels {
public:
    void add(QWidget* field, QLabel* label) { labels_.insert(field, label); }
    bool contains(QWidget* field) const { return labels_.contains(field); }
    // NEGRETES: every label plain, the label of `focused` bold, and its text selected.
    void mark(QWidget* focused) const;

private:
    QHash<QWidget*, QLabel*> labels_;
};

// The list's prefix search: the first row that starts with `text` (in any case) is made
// current and selected; no row for an empty text or no match.
void selectPrefix(QListWidget* list, const QString& text);
// Moves the current row by `step`, kept inside the list.
void moveListSelection(QListWidget* list, int step);
// The current row when it is selected; none otherwise.
QListWidgetItem* selectedItem(const QListWidget* list);

// The keys of a name field and its list: Down moves in the list, Right at the end of the
// text goes into it, Left in the list comes back to the field. True when the key was used.
bool listFieldKey(QWidget* watched, const QKeyEvent* key, QLineEdit* field, QListWidget* list);

}  // namespace tallora::ui
