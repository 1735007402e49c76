#pragma once
// tallora5-cli: the companion for scripted and batch work on companies and exercises. It
// runs the logic of the screens, prints the program's own messages and never asks: the
// questions of the screens are answered Yes only by the option --yes.
#include <QStringList>
#include <QTextStream>

namespace tallora::cli {

// What the program gives back to the shell.
enum ExitCode { kDone = 0, kRefused = 1, kUsageError = 2 };

// Runs one command line (without the program name). Messages go to `out`, refusals,
// unanswered questions and usage errors to `err`.
int runCli(const QStringList& args, QTextStream& out, QTextStream& err);

// True when the command line prints a report, which measures text and so needs a Gui
// application; the other commands run on a core one, quicker to start and silent.
bool printsReport(const QStringList& args);

}  // namespace tallora::cli
