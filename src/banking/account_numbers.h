#pragma once
// Bank account numbers: the IBAN (ISO 13616) and the old Spanish 20-digit CCC, their checks
// and the conversion of a CCC into its IBAN; and the SEPA creditor identifier of a company.
#include "context/fwd.h"

#include <QString>

#include <optional>

namespace tallora::banking {

// Account numbers are compared as compactCode gives them (context/common_helpers.h): a
// number typed in groups is the same number.

// True for an IBAN whose check digits hold (mod 97 = 1); a Spanish one must have 24
// characters and a valid CCC inside.
bool validIban(const QString& text);

// True for a CCC of 20 digits whose two check digits hold.
bool validCcc(const QString& text);

// The two check digits of a CCC's entity + office and account ("45" of 2100 0418 45 …).
QString cccCheckDigits(const QString& entityOffice, const QString& account);

// The IBAN of a valid CCC ("ES" + check digits + CCC); nothing for an invalid one.
std::optional<QString> ibanOfCcc(const QString& ccc);

// The IBAN an account field stands for: an IBAN as it is, a CCC as its IBAN; nothing for a
// text that is neither (compact, without blanks).
std::optional<QString> ibanOfAccount(const QString& text);

// What an account field of the exercise files (Text(20), entidades.ccc and
// comercial_clientes.ccc) keeps of what was typed: a Spanish IBAN as the CCC inside it, from
// which the IBAN follows exactly; any other text as it was typed.
QString storedAccount(const QString& text);

// The account field's state as a person should hear it: empty for a blank field or a valid
// CCC or IBAN; otherwise why the number is wrong ("the check digits do not hold"), in the
// program's language. Such a number is stored all the same, as the user typed it.
QString accountWarning(const WorkingContext& ctx, const QString& text);

// The IBAN or CCC written in groups of four, as people read it.
QString groupedAccount(const QString& text);

// The SEPA creditor identifier of a Spanish tax number with its business code (suffix,
// "000" by default): "ES" + check digits + suffix + tax number.
QString creditorIdentifier(const QString& taxId, const QString& suffix = QStringLiteral("000"));

// True when the check digits of a Spanish creditor identifier hold (the suffix does not
// count).
bool validCreditorIdentifier(const QString& text);

}  // namespace tallora::banking
