#pragma once
// Bringing the databases of an exercise and its company to the current schema.
//
// There is no version number anywhere: every step looks at the database itself and does
// nothing when what it would add is there, so the whole driver runs at each opening.
#include "context/fwd.h"

#include <QString>


namespace tallora::schema {

// All steps, in order, on the exercise of ctx.Directori and its company folder. Each step
// runs with errors ignored: a failing one is skipped, the next one runs, and nothing
// creates a database that a step only adds to.
void Actualitza_Bases(const WorkingContext& ctx);

// The treasury set-up: treasury and portfolio databases and tables, the cash account, the
// customers' and suppliers' balances, the three other accounts, and the paid/collected flags
// held at False. Leaves at the first failure, which is shown through `dialogs` when given;
// gives false then.
bool Prepara_Tesoreria(const WorkingContext& ctx, Dialogs* dialogs);

// The sales fields of upgrade step 2 (FrasOut: NIF, address, town, concept lines).
void upgradeSalesFields(const WorkingContext& ctx);
// Upgrade step 5: the billing database of the company and its tables (billing module on).
void upgradeBilling(const WorkingContext& ctx);
// What the journal builder runs on a new LLibre.mdb: Clasificacion, num_fra and Id of Diari.
void upgradeJournal(const QString& llibrePath);
// What the account statement runs before each query: the work table and its contrapartida.
void prepareStatementTable(const WorkingContext& ctx);

}  // namespace tallora::schema
