#pragma once
// The VAT books in the tax agency's common electronic format: an XLSX of type "C" with the
// sheets EXPEDIDAS (columns A–AJ) and RECIBIDAS (A–AP), two heading rows (group, column)
// and one line per invoice and rate from row 3, built from the VAT register's lines (the
// printed books' journal).
//
// Each value is a text cell written as the format spells it: amounts with a comma and two
// decimals, no thousands mark, "-" before a negative; rates likewise ("21,00", "0,00");
// dates dd/mm/yyyy. That is what the agency's own workbooks hold and what its import reads.
//
// Decisions where the program knows less than the format asks:
// - Invoice type: R1 for a line of a negative invoice or one whose number carries "/Abon"
//   or "/Rect"; F4 for a shop's summary entries (TICKETS exercise); F2 for a sale without a
//   customer's tax number; F1 otherwise. A sale without tax number is named "VENTAS A
//   CONSUMIDOR FINAL".
// - Operation key 01; 02 (export) for sales to the Canary Islands; 09 for intra-community
//   acquisitions. Rated lines are S1; a line at 0 % is exempt: E5 intra-community delivery,
//   E2 export, E1 otherwise.
// - A foreign tax number (two letters of a country first) goes as type 02 with its country
//   and whole number; a Spanish one in the identification column alone.
// - The activity columns and the income-tax concept are left empty: the program keeps no
//   activity code. The income-tax withholding columns are filled when the invoice has one,
//   except for a legal person, whose books leave the income-tax columns empty.
// - Purchases of group 20 are marked as investment goods in RECIBIDAS; the separate sheet of
//   investment goods, which asks for the goods' years of use, is not written.
#include "context/fwd.h"
#include "report/spreadsheet.h"
#include "vat_register.h"

#include <QString>

#include <vector>

namespace tallora::aeat {

struct AeatBookRequest {
    int fromMonth = 1, toMonth = 12;
    bool monthly = false;  // the period column by month ("01".."12") instead of quarter
};

// The two sheets.
report::Sheet issuedSheet(const WorkingContext& ctx, const std::vector<RegisterLine>& lines,
                          bool monthly);
report::Sheet receivedSheet(const WorkingContext& ctx, const std::vector<RegisterLine>& lines,
                            bool monthly);
std::vector<report::Sheet> aeatBookSheets(const WorkingContext& ctx,
                                          const AeatBookRequest& request);

// "2026B12345674CCOMERCIAL BRENWICK SL.xlsx": exercise, tax number, type C, name.
QString aeatBookFileName(const WorkingContext& ctx);

// Writes the book; an empty text when done, else the reason.
QString writeAeatBooks(const WorkingContext& ctx, const AeatBookRequest& request,
                       const QString& path);

// An amount or rate as the format writes it: "-502,36".
QString aeatDecimal(Money m);

}  // namespace tallora::aeat
