#pragma once
// Editing the open company's data and the open exercise's rates (FormEditaEmpresa), apart
// from the window: the screen and the companion both save through these.
#include "company_list.h"
#include "context/fwd.h"

#include <QString>

#include <array>

namespace tallora::shell {

// The five data of the company and its treasury switch, as for a new company.
using CompanyEdit = NewCompany;
// What the screen opens with: the working context's values.
CompanyEdit currentCompany(const WorkingContext& ctx);

// Graba_Empresa: asks (36 … 37); refuses with 6406 when <NIF8>.Dat is not in the company
// folder; writes <NIF8>.Dat (a changed tax number keeps the folder and the key: the company
// stays where it is), tesorer.cfg (preparing the treasury when it goes on), and the
// company's line of Empreses.Lst with the new name (an error there shows its description);
// the context takes the new values; ends with 6405. Gives true when saved.
bool Graba_Empresa(WorkingContext& ctx, Dialogs& dialogs, const CompanyEdit& edit);

// The rates of the exercise as typed: sales, recargo, purchases.
struct ExerciseRates {
    std::array<QString, 3> iva;
    std::array<QString, 3> re;
    std::array<QString, 4> ivas;
};
ExerciseRates currentRates(const WorkingContext& ctx);

// btnGuardaIVA: refuses a rate written "0" (6997), asks (6990 … 37), writes <year>.DAT again
// (kind of book 1, as it stands), puts the rates in the context and ends with 6405. Rates
// already stored in invoices do not change. Gives true when saved.
bool Graba_Tipus(WorkingContext& ctx, Dialogs& dialogs, const ExerciseRates& rates);

}  // namespace tallora::shell
