#pragma once
// What the posting screens (sales, purchases, provisions and disbursements) share: the
// entry's fields and their bold captions, the date row, the day log column with its rows
// that reopen an entry, the hint and the two buttons, the focus moved by hand, the status
// text, and the keys, which every field hands to the screen.
//
// Keys: Enter and Up go to the screen's own flow; the "+" of the numeric pad posts from
// anywhere and "+" is never typed into a field; Esc is the screen's own way back.
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/fwd.h"
#include "entry_parts.h"
#include "store/store_error.h"

#include <QWidget>

#include <cstdint>
#include <optional>

class QCloseEvent;
class QComboBox;
class QDateEdit;
class QGridLayout;
class QFrame;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace tallora::ui {

class EntryScreen : public QWidget {
    Q_OBJECT
public:
    QString statusText() const { return status_; }

signals:
    // For the status panel of the shell.
    void statusChanged(const QString& text);

protected:
    EntryScreen(WorkingContext& ctx, Dialogs& dialogs, const QString& name, const QString& title,
                QWidget* parent);

    // A field of the entry: its keys and focus come to this screen, its colour follows the
    // focus.
    QLineEdit* field(const QString& name, int maxLength = 0);
    // The caption of `buddy`, bold while it has the focus.
    QLabel* caption(const QString& name, const QString& text, QWidget* buddy);
    // txtDia and txtMes, two digits each, a digit only, with lblFecha beside them; the
    // screen adds what it shows on the right.
    QHBoxLayout* dateRow(QLineEdit*& day, QLineEdit*& month, QLabel*& date);
    // The right end of the date row: what the screen is doing (lblproces) and the number of
    // the entry being changed (lblOrdre, made here).
    void addNumber(QHBoxLayout* row, QLabel* process, QLabel*& ordre);
    // The treasury frame FrameTesoreria: the account (ListEntitats, captioned `account`) and
    // the due date (named `dueName`), shown with the treasury option.
    QFrame* treasuryFrame(const QString& account, QComboBox*& list, const QString& dueName,
                          QDateEdit*& due);
    // ListEntitats with the treasury accounts in order of name, after a blank row (no
    // account), keeping the row in hand when it is still there. `blankAlways` keeps the
    // blank row also for a company without accounts.
    void fillTreasuryAccounts(QComboBox* list, bool blankAlways);
    // The description txtdescripcio and its series cmbSerie ("", "/Abon", "/Rect") on `row`
    // of `grid`: both share the `length` characters of the column, so a series takes its
    // characters from the description's.
    void descriptionRow(QGridLayout* grid, int row, int length, QLineEdit*& description,
                        QComboBox*& series);
    // txtTotal, then the rate list CmbIva with its caption.
    QHBoxLayout* totalRow(QLineEdit*& total, QComboBox*& rate, QLabel*& rateCaption);
    // Enter on a name field or its list: the selected row's text into `field`; with none
    // selected, a beep and the focus back on the field. False when nothing was taken.
    bool takeFromList(QLineEdit* field, const QListWidget* list);
    // The IVA panel PanelIVA: its title over `columns` columns, then the headings "% IVA",
    // "Base" and the quota; the slots go from row 2 of the grid returned.
    QGridLayout* amountsPanel(QFrame*& panel, const QString& title, int columns);
    // The first empty one of `fields` takes the focus, with a beep; false when none is.
    bool backToEmpty(const QList<QLineEdit*>& fields);
    // The day log column: heading and ListRegistres, the title of the day written.
    QVBoxLayout* journalColumn();
    // The hint on the left, btnGuardar and btnTancar on the right.
    QWidget* buttonRow(const QString& hint, QPushButton*& save, QPushButton*& close);

    // Moves the focus; a window that is not active gets no focus events, so the fields are
    // left and entered here.
    void focus(QWidget* w);
    void beep();
    void setStatus(const QString& text);
    void closeScreen();
    // A change opened from elsewhere brings the screen to the front.
    void bringToFront();
    // Up: the nearest earlier field of `order` that is shown and enabled; false when `w` is not
    // in it.
    bool focusPrevious(const QList<QWidget*>& order, QWidget* w);
    // The start of a change of posted entry `number`: refused while an entry is typed
    // (`entryOpen`), then loaded by `load`; a store error is shown. Nothing when it stops.
    template <class Load>
    auto loadChange(const QString& number, bool entryOpen, Load load) -> decltype(load()) {
        if (number.trimmed().isEmpty()) return std::nullopt;
        if (entryOpen) {
            refuseChangeInProgress(ctx_, dialogs_);
            return std::nullopt;
        }
        setStatus(QStringLiteral("Procesando..."));
        decltype(load()) loaded;
        try {
            loaded = load();
        } catch (const store::StoreError& error) {
            dialogs_.stop(error.message());
        }
        if (!loaded) setStatus(QString());
        return loaded;
    }
    QString m(int n) const;
    QString fixed(const char* spanish, const char* catalan) const;

    bool eventFilter(QObject* watched, QEvent* event) override;
    // The window's close box, or the shell closing its children: a typed entry is dropped
    // only after the question (618, 25).
    void closeEvent(QCloseEvent* event) override;
    // Something is typed that closing would lose.
    virtual bool entryTyped() const = 0;
    virtual void fieldEntered(QWidget* w) = 0;
    virtual void leaveField(QWidget*) {}
    virtual bool enterPressed(QWidget* w) = 0;
    virtual bool upPressed(QWidget* w) = 0;
    // Any other key of a field (the lists' arrows); true when used.
    virtual bool otherKey(QWidget*, const QKeyEvent*) { return false; }
    virtual void post() = 0;
    virtual void escape() = 0;
    // A day log row that reopens entry `number` was double-clicked; `kind` is the row's
    // "modificar" kind, which tells a billing document's type.
    virtual void reopen(std::int64_t number, const QString& kind) = 0;

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    BoldLabels labels_;
    QListWidget* ListRegistres = nullptr;

private:
    QString status_;
};

}  // namespace tallora::ui
