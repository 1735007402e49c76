#pragma once
// How text compares in every database: without regard to case, also for the Spanish and
// Catalan letters (á = Á, ñ = Ñ, ç = Ç), but with regard to accents (a ≠ á). Ordering puts
// accented letters with their base letter (Á with A) and ñ right after n, as a Spanish
// reader expects. LIKE follows the same equality.
#include <QString>

struct sqlite3;

namespace tallora::store {

// The name every text column declares: COLLATE ES_CI.
inline constexpr const char* kTextCollation = "ES_CI";

// <0, 0 or >0; 0 exactly when the two texts are equal without regard to case.
int compareText(QStringView a, QStringView b);
// SQL LIKE with % and _, under the same equality; `escape` (or none) escapes a wildcard.
bool likeText(QStringView pattern, QStringView text, QChar escape = QChar());

// Registers the collation and the LIKE function on a connection.
void registerTextRules(sqlite3* db);

}  // namespace tallora::store
