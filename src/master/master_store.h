#pragma once
// What the master-data operations share: the one trap that shows a fault of the store,
// the tests of use against files that may not exist yet, amount and number fields read
// from the text the screens show, and reading a row's columns by name.
#include "context/dialogs.h"
#include "context/fwd.h"
#include "context/money.h"
#include "outcome.h"
#include "store/database.h"
#include "store/store_error.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <initializer_list>
#include <optional>

namespace tallora::master::detail {

// A refusal: message `message` with the stop icon, the focus going to `field`.
Outcome refuse(const WorkingContext& ctx, Dialogs& dialogs, int message, const QString& field = {});

// Tells "<message><count>" of a write that was done (314 saved, 311 deleted) and gives the
// outcome as it came.
Outcome told(const WorkingContext& ctx, Dialogs& dialogs, int message, const Outcome& outcome);

// The refusal shown when an amount or number field holds text that is not one: the
// field's caption (message `caption`), "INCORRECTO" (655) and the text as typed.
Outcome refuseBadNumber(const WorkingContext& ctx, Dialogs& dialogs, int caption,
                        const QString& text, const QString& field);

// An amount as the screen shows it ("1.234,50" with Decimal 44); nothing when it is not.
std::optional<Money> amountOf(const WorkingContext& ctx, const QString& text);
// A whole number field (a Grup), blanks around ignored; nothing when it is not one.
std::optional<std::int64_t> wholeNumberOf(const QString& text);

// Binds the key of a row (client, proveidor, Id, Compte) as the number it holds. Text that
// is not a number is bound as text, which no numeric key equals: it finds no row.
void bindKey(store::Statement& st, int index, const QString& key);

// Whether `sql` with `key` bound finds a row in the database at `path`. A file that does
// not exist holds no rows: a company without a portfolio or billing file yet.
bool anyRowIn(const QString& path, const QString& sql, const QString& key);
// The same on an open connection.
bool anyRow(store::Database& d, const QString& sql, const QString& key);

// A rename spread to a file that carries the name: `sql` with the name and the key bound,
// run when the file is attached. Gives the rows changed; 0 when the file isn't there.
int spreadName(store::Database& d, bool attached, const QString& sql, const QString& name,
               const QString& key);

// Attaches the file as `alias` when it exists; false, and nothing attached, when not.
bool attachIfPresent(store::Database& d, const QString& path, const QString& alias);

// Sanitises each text in place (Neteja_Text).
void sanitise(std::initializer_list<QString*> texts);

// A text column of the current row by name; empty when null or when the table has no such
// column (a file not yet upgraded).
QString textOf(const store::Statement& st, const QString& column);
// An amount column by name, as Format_Import shows it; empty when the column is missing.
QString amountTextOf(const WorkingContext& ctx, const store::Statement& st, const QString& column);
// The text as it goes into a column: an empty one is stored as an empty text, never null.
QString stored(const QString& text);
// Binds an empty text as null: columns that refuse a zero-length text store null instead.
void bindTextOrNull(store::Statement& st, int index, const QString& text);

// The first column of every row of `sql` on the database at `path`.
QStringList firstColumn(const QString& path, const QString& sql);

// "<message a><message 25>" asked Yes/No; true for Yes.
bool confirmDeletion(const WorkingContext& ctx, Dialogs& dialogs, int question);

// Notices to show once the store is committed and closed, each with the information icon.
class Notices {
public:
    // Message `n` followed by the count.
    void add(const WorkingContext& ctx, int n, int count);
    void show(Dialogs& dialogs) const;

private:
    QStringList texts_;
};

// Runs `operation`, which gives the outcome. A fault of the store inside it (over-long
// text, missing table, unreadable file ...) is shown with its description, stop icon, and
// gives a refusal; its open transaction has rolled back, so nothing is half-written.
template <typename Operation>
Outcome guarded(Dialogs& dialogs, Operation&& operation) {
    try {
        return operation();
    } catch (const store::StoreError& e) {
        dialogs.stop(e.message());
        return Outcome::refused();
    }
}

// A save: `operation` under the store trap, then "Registros guardados: n" (314).
template <typename Operation>
Outcome saving(const WorkingContext& ctx, Dialogs& dialogs, Operation&& operation) {
    return told(ctx, dialogs, 314, guarded(dialogs, std::forward<Operation>(operation)));
}

// A deletion: the question `question` + 25; on Yes `remove` under the store trap, then
// "Se ha eliminado: n" (311).
template <typename Remove>
Outcome deletion(const WorkingContext& ctx, Dialogs& dialogs, int question, Remove&& remove) {
    if (!confirmDeletion(ctx, dialogs, question)) return Outcome::declined();
    return told(ctx, dialogs, 311, guarded(dialogs, std::forward<Remove>(remove)));
}

}  // namespace tallora::master::detail
