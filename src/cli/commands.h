#pragma once
// The commands of tallora5-cli. Each checks its own words first (throwing UsageError), then
// starts the session and runs the logic of the screens; it gives the exit code.
#include "cli.h"
#include "cli_options.h"
#include "session.h"

namespace tallora::cli {

// company_commands.cpp
int unitsCommand(Session& s, const CliOptions& o);
int companiesCommand(Session& s, const CliOptions& o);
int companyCreateCommand(Session& s, const CliOptions& o);
int companyRemoveCommand(Session& s, const CliOptions& o);

// exercise_commands.cpp
int exercisesCommand(Session& s, const CliOptions& o);
int exerciseCreateCommand(Session& s, const CliOptions& o);
int exerciseRemoveCommand(Session& s, const CliOptions& o);
int exerciseOpenCommand(Session& s, const CliOptions& o);

// month_commands.cpp
int monthsCommand(Session& s, const CliOptions& o);
int monthLockCommand(Session& s, const CliOptions& o);
int monthUnlockCommand(Session& s, const CliOptions& o);

// maintenance_commands.cpp
int repairCommand(Session& s, const CliOptions& o);
int compactCommand(Session& s, const CliOptions& o);

}  // namespace tallora::cli
