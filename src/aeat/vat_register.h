#pragma once
// The lines of the VAT books as the tax agency's files and returns read them: one line per
// invoice and rate, taken from the journal (Diari of LLibre.mdb) that the printed VAT books
// print from, joined to the invoice for what the journal cuts or leaves out (the whole
// number, the invoice's total, its classification). The journal is rebuilt first, so that
// both always show the same invoices with the same figures.
//
// The sales side takes every row of the journal's sales in the period. The purchases side
// takes the rows with a place in the VAT book (OrdreIVAs): a purchase with no rate at all is
// in the journal but not in the VAT book, and stays out here too.
//
// As in the journal, the withholding is on the invoice's first line only, so that a sum of
// the column counts each invoice once.
#include "context/fwd.h"
#include "context/money.h"

#include <QDate>
#include <QString>

#include <vector>

namespace tallora::aeat {

// What the invoice's classification says about where it goes.
enum class Territory { Domestic, IntraCommunity, Canarias };

struct RegisterLine {
    qint64 ordre = 0;
    QDate date;
    QString number;  // the invoice's whole number or description
    QString nif, name;
    qint64 party = 0;
    Territory territory = Territory::Domestic;
    bool firstOfInvoice = false;
    Money invoiceTotal;  // bases and taxes, before the withholding
    Money base, rate, quota, surchargeRate, surcharge, withholdingRate, withholding;
    // Purchases only.
    qint64 bookNumber = 0;  // OrdreIVAs
    qint64 grup = 0;
    bool investment() const { return grup == 20; }
};

// The issued and the received invoices of the months `fromMonth`..`toMonth` of the exercise,
// in the books' order, after rebuilding that side of the journal.
std::vector<RegisterLine> issuedLines(const WorkingContext& ctx, int fromMonth, int toMonth);
std::vector<RegisterLine> receivedLines(const WorkingContext& ctx, int fromMonth, int toMonth);

Territory territoryOf(const QString& clasificacion);

// True when the company's tax number is a legal person's (a CIF), whose books leave the
// income-tax columns empty.
bool legalPerson(const QString& nif);

}  // namespace tallora::aeat
