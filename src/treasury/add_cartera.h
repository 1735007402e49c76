#pragma once
// Putting an invoice of the open exercise back into the portfolio: its treasury movements
// are deleted and its receipt is made anew, unsettled and without a due date. The purchases
// inquiry (toolbar key "AddCartera") and the account statement, after deleting a movement,
// call these.
//
// The three files it writes (tesorer.mdb, FrasOUT.mdb or FrasIN.mdb read, and the company's
// cartera.mdb) are attached to one connection and committed once: an interruption leaves
// either the movements deleted and the receipt made, or nothing changed, never an invoice
// that is neither paid nor in the portfolio.
//
// Errors of the store are trapped and their description shown with the stop icon; an
// invoice that is not there shows message 811 the same way. Nothing is written then.
#include "context/fwd.h"

#include <QString>

namespace tallora::treasury {

// With `Ordre` blank, 0 or not a number, or an exercise in TICKETS mode, nothing happens.
// Otherwise the question 6869; on Yes the movements of the sale (FrasOut = Ordre) go, the
// rows of cartera with FrasOut = Ordre go, and one row 'Out' is made from the sale's date,
// customer, description and total, of exercise Exercici; message 6870 when it was made.
// True when the row was made.
bool AddCartera_Venda(const WorkingContext& ctx, Dialogs& dialogs, const QString& Ordre);

// The same for a purchase: question 6871, FrasIn, the supplier, 'In'. Not bound to the mode
// of the exercise.
bool AddCartera_Compra(const WorkingContext& ctx, Dialogs& dialogs, const QString& Ordre);

}  // namespace tallora::treasury
