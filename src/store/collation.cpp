#include "collation.h"

#include <sqlite3.h>

namespace tallora::store {
namespace {

// A character as it compares: case folded.
QChar folded(QChar c) { return c.toCaseFolded(); }

// A character as it sorts first: case folded and without its accent; ñ sorts after n, so it
// gets a key of its own that comes after every other letter n can be followed by.
void appendPrimary(QString& key, QChar c) {
    const QChar f = folded(c);
    if (f == QChar(0x00F1)) {  // ñ
        key += u'n';
        key += QChar(0xFFFF);
        return;
    }
    if (f.unicode() >= 0x80 && f.decompositionTag() == QChar::Canonical) {
        const QString d = f.decomposition();
        if (!d.isEmpty()) {
            key += d[0];
            return;
        }
    }
    key += f;
}

bool isAscii(QStringView s) {
    for (QChar c : s)
        if (c.unicode() >= 0x80) return false;
    return true;
}

int asciiCompare(QStringView a, QStringView b) {
    const qsizetype n = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < n; ++i) {
        const int x = QChar::toLower(a[i].unicode());
        const int y = QChar::toLower(b[i].unicode());
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

int sign(int v) { return v < 0 ? -1 : (v > 0 ? 1 : 0); }

int collate(void*, int lengthA, const void* a, int lengthB, const void* b) {
    const QString x = QString::fromUtf8(static_cast<const char*>(a), lengthA);
    const QString y = QString::fromUtf8(static_cast<const char*>(b), lengthB);
    return compareText(x, y);
}

void likeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i) {
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) {
            sqlite3_result_null(ctx);
            return;
        }
    }
    auto textOf = [](sqlite3_value* v) {
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(v)),
                                 sqlite3_value_bytes(v));
    };
    const QString pattern = textOf(argv[0]);
    const QString text = textOf(argv[1]);
    QChar escape;
    if (argc == 3) {
        const QString e = textOf(argv[2]);
        if (e.size() != 1) {
            sqlite3_result_error(ctx, "ESCAPE expression must be a single character", -1);
            return;
        }
        escape = e[0];
    }
    sqlite3_result_int(ctx, likeText(pattern, text, escape) ? 1 : 0);
}

}  // namespace

int compareText(QStringView a, QStringView b) {
    if (isAscii(a) && isAscii(b)) return asciiCompare(a, b);
    QString pa, pb;
    for (QChar c : a) appendPrimary(pa, c);
    for (QChar c : b) appendPrimary(pb, c);
    if (const int primary = pa.compare(pb); primary != 0) return sign(primary);
    return sign(a.toString().toCaseFolded().compare(b.toString().toCaseFolded()));
}

bool likeText(QStringView pattern, QStringView text, QChar escape) {
    // Iterative matcher with one backtrack point for the last %.
    qsizetype p = 0, t = 0, starP = -1, starT = -1;
    while (t < text.size()) {
        if (p < pattern.size()) {
            QChar pc = pattern[p];
            if (pc == u'%' && pc != escape) {
                starP = ++p;
                starT = t;
                continue;
            }
            bool literal = false;
            if (!escape.isNull() && pc == escape && p + 1 < pattern.size()) {
                pc = pattern[p + 1];
                literal = true;
            }
            if ((!literal && pc == u'_') || folded(pc) == folded(text[t])) {
                p += literal ? 2 : 1;
                ++t;
                continue;
            }
        }
        if (starP < 0) return false;
        p = starP;
        t = ++starT;
    }
    while (p < pattern.size() && pattern[p] == u'%') ++p;
    return p == pattern.size();
}

void registerTextRules(sqlite3* db) {
    sqlite3_create_collation_v2(db, kTextCollation, SQLITE_UTF8, nullptr, collate, nullptr);
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(db, "like", 2, flags, nullptr, likeFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "like", 3, flags, nullptr, likeFunction, nullptr, nullptr, nullptr);
}

}  // namespace tallora::store
