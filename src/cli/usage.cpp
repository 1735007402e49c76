#include "usage.h"

namespace tallora::cli {

QString usageText() {
    return QStringLiteral(R"(Usage: tallora5-cli [OPTIONS] COMMAND [ARGUMENTS] [OPTIONS]

Works on the companies and exercises of a working unit with the same rules as the
program's screens, printing the program's own messages. It never asks: every question
the screens ask is answered Yes only when --yes is given; otherwise it is shown, taken
as No, and nothing is done.

Global options (before or after the command):
  --unit DIR          the working unit (default: the unit the program starts on)
  --program-dir DIR   the writable program folder (default: ~/.config/tallora5/)
  --yes               answer Yes (or OK) to every question
  --help, help        show this text

Commands (NIF8 is the company key that "companies" shows):
  units               the available units, one a line, the default first
  companies           one line a company: NIF8, a tab, the name
  company-create --name N [--address A] [--town T] [--postal-code CP] --nif NIF [--treasury]
                      saves a new company and prints the tax number it was saved under.
                      A tax number already kept gets a "-" before it (asks, needs --yes),
                      at most five companies on one number. --treasury turns treasury
                      control on. The name has at most 40 characters; the tax number
                      at least 8 characters, only digits, letters and "-".
  company-remove NIF8 removes a company without exercises (asks, needs --yes)
  exercises NIF8      one line an exercise of the company
  exercise-create NIF8 --year YYYY [--kind FACTURES|TICKETS] [--currency Euros]
                  [--iva1 R --iva2 R --iva3 R --re1 R --re2 R --re3 R
                   --ivas1 R --ivas2 R --ivas3 R --ivas4 R]
                      creates an exercise (asks, needs --yes), carrying customers,
                      suppliers, chart and treasury accounts over from the year before.
                      --kind TICKETS is a shop without breakdown of IVA. Rates are written
                      as in their fields ("21", "5,2"): --iva1..3 sales, --re1..3 recargo
                      de equivalencia, --ivas1..4 purchases; a rate "0" is refused.
                      Defaults: FACTURES, Euros, IVA 16 7 4, RE 4 1 0,5, purchases 16 7 4 4,5.
  exercise-remove NIF8 YYYY
                      removes an exercise and its files (asks, needs --yes)
  exercise-open NIF8 YYYY
                      opens an exercise as the program does (safety copy, upgrades of the
                      databases, month lock, treasury set-up) and prints its folder
  months NIF8 YYYY    the twelve months of the exercise, locked or open
  month-lock NIF8 YYYY M [M...]
  month-unlock NIF8 YYYY M [M...]
                      locks or opens the months given (1 to 12) against new entries
  repair NIF8 YYYY    checks and rebuilds the databases of the exercise and its company
  compact NIF8 YYYY   compacts the databases of the exercise and its company

A key that starts with "--" (a duplicated tax number) can follow a lone "--", after which
every word is an argument: tallora5-cli company-remove --yes -- --b12345

Exit status: 0 done, 1 refused (a stop message, a question answered No, a step that
failed), 2 wrong command line.

Examples:
  tallora5-cli --unit /srv/llibres --yes company-create --name "Fusteria Pons" --nif B12345678
  tallora5-cli --unit /srv/llibres --yes exercise-create B1234567 --year 2025 --iva1 21 --iva2 10
  tallora5-cli --unit /srv/llibres month-lock B1234567 2025 1 2 3
)");
}

}  // namespace tallora::cli
