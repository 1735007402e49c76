#include "master_store.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"

#include <QFileInfo>

namespace tallora::master::detail {

Outcome refuse(const WorkingContext& ctx, Dialogs& dialogs, int message, const QString& field) {
    dialogs.stop(Missatge(ctx, message));
    return Outcome::refused(field);
}

Outcome told(const WorkingContext& ctx, Dialogs& dialogs, int message, const Outcome& outcome) {
    if (outcome.done())
        dialogs.information(Missatge(ctx, message) + QString::number(outcome.affected));
    return outcome;
}

Outcome refuseBadNumber(const WorkingContext& ctx, Dialogs& dialogs, int caption,
                        const QString& text, const QString& field) {
    dialogs.stop(Missatge(ctx, caption) + u' ' + Missatge(ctx, 655) + QStringLiteral(": ") + text);
    return Outcome::refused(field);
}

std::optional<Money> amountOf(const WorkingContext& ctx, const QString& text) {
    return Money::parse(text, ctx.decimalMark());
}

std::optional<std::int64_t> wholeNumberOf(const QString& text) {
    bool ok = false;
    const std::int64_t value = text.trimmed().toLongLong(&ok);
    if (!ok) return std::nullopt;
    return value;
}

void bindKey(store::Statement& st, int index, const QString& key) {
    if (const auto number = wholeNumberOf(key))
        st.bind(index, *number);
    else
        st.bind(index, key);
}

bool anyRow(store::Database& d, const QString& sql, const QString& key) {
    store::Statement st = d.prepare(sql);
    bindKey(st, 1, key);
    return st.next();
}

bool anyRowIn(const QString& path, const QString& sql, const QString& key) {
    if (!QFileInfo(path).isFile()) return false;
    store::Database d = store::Database::open(path);
    return anyRow(d, sql, key);
}

int spreadName(store::Database& d, bool attached, const QString& sql, const QString& name,
               const QString& key) {
    if (!attached) return 0;
    store::Statement up = d.prepare(sql);
    up.bind(1, name);
    bindKey(up, 2, key);
    return up.execute();
}

bool attachIfPresent(store::Database& d, const QString& path, const QString& alias) {
    if (!QFileInfo(path).isFile()) return false;
    d.attach(path, alias);
    return true;
}

void sanitise(std::initializer_list<QString*> texts) {
    for (QString* text : texts) Neteja_Text(*text);
}

QString textOf(const store::Statement& st, const QString& column) {
    const int i = st.columnIndex(column);
    return i < 0 ? QString() : st.text(i);
}

QString amountTextOf(const WorkingContext& ctx, const store::Statement& st, const QString& column) {
    const int i = st.columnIndex(column);
    return i < 0 ? QString() : Format_Import(ctx, st.money(i));
}

QString stored(const QString& text) {
    return text.isNull() ? QStringLiteral("") : text;
}

void bindTextOrNull(store::Statement& st, int index, const QString& text) {
    if (text.isEmpty())
        st.bind(index, nullptr);
    else
        st.bind(index, text);
}

QStringList firstColumn(const QString& path, const QString& sql) {
    store::Database d = store::Database::open(path);
    store::Statement st = d.prepare(sql);
    QStringList values;
    while (st.next()) values << st.text(0);
    return values;
}

bool confirmDeletion(const WorkingContext& ctx, Dialogs& dialogs, int question) {
    return dialogs.yesNo(Missatge(ctx, question) + Missatge(ctx, 25)) == Dialogs::Answer::Yes;
}

void Notices::add(const WorkingContext& ctx, int n, int count) {
    texts_ << Missatge(ctx, n) + QString::number(count);
}

void Notices::show(Dialogs& dialogs) const {
    for (const QString& text : texts_) dialogs.information(text);
}

}  // namespace tallora::master::detail
