#pragma once
// The bank statement file of the Spanish banks, "Norma 43" (AEB cuaderno 43): accounts (11),
// their movements (22) with up to five concept lines (23) and a currency line (24), each
// account closed by its totals (33), the file by its count (88).
//
// Records are 80 characters; a line some bank trimmed is padded back, and the 0x1A some add
// at the end is dropped. Text comes in code page 850 or Latin-1: the reader tells them apart
// by the bytes it finds, or takes the one it is told. Every total is checked against the
// movements, and a file that does not add up is refused saying where.
#include "context/fwd.h"
#include "context/money.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>

#include <stdexcept>
#include <vector>

namespace tallora::banking {

struct N43Movement {
    int line = 0;  // of the file, from 1
    QString office;
    QDate operationDate, valueDate;
    QString commonConcept, ownConcept;
    Money amount;  // credits (money in) positive, debits (money out) negative
    QString document, reference1, reference2;
    QStringList concepts;  // the texts of its 23 records, each trimmed
};

struct N43Account {
    int line = 0;
    QString entity, office, account;  // 4, 4 and 10 digits
    QDate start, end;
    Money opening, closing;  // credit balances positive
    QString currency;        // "978" for euros
    int mode = 0;
    QString name;
    std::vector<N43Movement> movements;
    // The account's number as the bank writes it: entity + office + account (18 digits).
    QString number() const { return entity + office + account; }
};

struct N43File {
    std::vector<N43Account> accounts;
};

enum class N43Encoding { Detect, Cp850, Latin1 };

// Why a file was refused: the line, and what did not hold, in the user's words.
class N43Error : public std::runtime_error {
public:
    N43Error(int line, const QString& reason)
        : std::runtime_error(reason.toStdString()), line_(line), reason_(reason) {}
    int line() const { return line_; }
    const QString& reason() const { return reason_; }

private:
    int line_;
    QString reason_;
};

// Reads and checks a whole file; throws N43Error with the reason in the user's language.
N43File readNorma43(const WorkingContext& ctx, const QByteArray& bytes,
                    N43Encoding encoding = N43Encoding::Detect);

// Code page 850 to text.
QString decodeCp850(const QByteArray& bytes);

}  // namespace tallora::banking
