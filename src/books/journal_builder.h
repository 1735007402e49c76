#pragma once
// The journal (Diari of LLibre.mdb) the VAT books, the purchases book and the summaries read:
// each invoice of the exercise spread over one row per VAT rate and numbered. Each builder
// replaces its side entirely: Genera_Diari_Vendes the sales ("D"), Genera_Diari_Compres the
// purchases ("H"); the table is never more than a picture of the invoices at the last run.
//
// The two sides differ on purpose and the books depend on it: a purchase has up to four
// rates and one VAT book number (OrdreIVAs) for the whole invoice, a sale up to three and a
// number per row (OrdreIVAr); TOTAL falls on a purchase's first row and on a sale's last;
// only an invoice's first row carries Debe or Haber, the withholding and the expense family,
// so that summing those columns counts each invoice once. A sale's description keeps its
// last six characters; its num_fra is the digits of the whole description.
//
// One connection with FrasIN/FrasOUT and gest.mdb attached, the tax numbers joined, one
// prepared insert and one transaction. A fault (a null amount, a sale whose bases cancel to
// 0) ends the run at that invoice with the rows already built kept, and says nothing: the
// book then prints what is there.
#include "context/fwd.h"

namespace tallora::books {

// LLibre.mdb with Diari and its later columns, made when missing.
void prepareJournal(const WorkingContext& ctx);

void Genera_Diari_Vendes(const WorkingContext& ctx);
void Genera_Diari_Compres(const WorkingContext& ctx);

}  // namespace tallora::books
