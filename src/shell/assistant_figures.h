#pragma once
// The figures of the assistant (FormVistaRapida): what the exercise sold and spent, what its
// customers still owe and what is still to pay to its suppliers (from the company's
// portfolio, so the same in every exercise of the company), and the money in the treasury
// accounts. Each figure is one grouped statement, whatever the size of the year.
#include "context/fwd.h"

#include <QString>

namespace tallora::shell {

struct AssistantFigures {
    QString txtVentas, txtGastos;
    // With treasury off these three read "Activar tesoreria".
    QString txtRecibosPendientes, txtFacturasPendientes, txtsaldobancos;
};

// Through Format_Import; an empty sum shows as 0.
AssistantFigures assistantFigures(const WorkingContext& ctx);

// The links of the assistant: the menu entry each runs, and whether the exercise offers it
// (a shop's exercise has no customers' links; treasury off hides the treasury links).
struct AssistantLink {
    const char* name;       // lbl1 ... lbl18
    int caption;            // its message
    const char* menuEntry;  // the menu entry it runs
    int column;             // 0 customers, 1 suppliers, 2 accounts
    bool treasury;          // offered only with treasury control
};
const AssistantLink (&assistantLinks())[18];
bool assistantLinkShown(const WorkingContext& ctx, const AssistantLink& link);

}  // namespace tallora::shell
