#pragma once
// Spanish tax numbers: their form for the AEAT and the check of their control character
// (DNI, NIE, the K, L and M forms, and the CIF of legal persons).
#include "context/fwd.h"

#include <QString>

namespace tallora::verifactu {

// compactCode of the text, without a leading "ES" before a Spanish form.
QString normalisedTaxId(const QString& text);

// True when `text` looks like a Spanish tax number (after normalisedTaxId).
bool looksSpanish(const QString& normalised);

// True when a Spanish tax number's control character is right.
bool validSpanishTaxId(const QString& text);

// The warning a typed tax number deserves: empty for none, for a foreign number (two letters
// of a country first) and for a right Spanish one.
QString taxIdWarning(const WorkingContext& ctx, const QString& text);

}  // namespace tallora::verifactu
