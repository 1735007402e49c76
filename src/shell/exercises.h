#pragma once
// The exercises of the open company: their list, and the creation (with the carry-over
// from the year before), removal and opening of an exercise. FormMenu and the command-line
// companion both work through these. While they run, ctx.Directori is the company folder.
#include "context/fwd.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace tallora::shell {

// What the frame of a new exercise holds, with the values it opens with.
struct NewExercise {
    QString exercici;
    QString moneda = QStringLiteral("Euros");
    bool botiga = false;  // OpBotiga: a shop that books its takings without IVA breakdown
    std::array<QString, 3> iva{QStringLiteral("16"), QStringLiteral("7"), QStringLiteral("4")};
    std::array<QString, 3> re{QStringLiteral("4"), QStringLiteral("1"), QStringLiteral("0,5")};
    std::array<QString, 4> ivas{QStringLiteral("16"), QStringLiteral("7"), QStringLiteral("4"),
                                QStringLiteral("4,5")};
};
NewExercise defaultNewExercise(QDate today = QDate::currentDate());
// The rows of cmbMoneda.
QStringList currencies();

// The rows of ListExercicis: the exercises of the company's exercici.lst, in its order.
QStringList exerciseRows(const WorkingContext& ctx);

// Whether any rate is written "0" (a rate may be "0,0": only the text "0" is refused).
bool anyRateWrittenZero(const std::array<QString, 3>& iva, const std::array<QString, 3>& re,
                        const std::array<QString, 4>& ivas);

// An exercise is a calendar year written with four digits: nothing else names a folder,
// a <year>.DAT and a line of exercici.lst.
bool isExerciseYear(const QString& text);

// Creates an exercise (Graba_Exercici): refuses a year that is not of four digits (message
// 114 with 655, "AÑO EXERCICIO INCORRECTO: …", before anything is made), a rate written
// "0" (message 6997) and a year already listed (128), asks for confirmation, makes the folder and
// its databases with the starting chart, carries customers, suppliers, chart and treasury accounts
// over from the year before when there is one, and writes <year>.DAT and the line of exercici.lst.
// Sets ctx.Exercici to the year. Gives true when the exercise was created.
bool Graba_Exercici(WorkingContext& ctx, Dialogs& dialogs, const NewExercise& exercise);

// Removes the exercise of `row` (Elimina_Exercici) after one question, two when it holds
// data. Gives true when it was removed.
bool Elimina_Exercici(const WorkingContext& ctx, Dialogs& dialogs, const QString& row);

// Rewrites exercici.lst without `year`, keeping the old list in exercici.cop.
bool Treu_Exercici_de_Llista(const WorkingContext& ctx, Dialogs& dialogs, const QString& year);

// The opening steps of an exercise up to the shell (Obre_Exercici): the safety copy,
// <year>.DAT into the context, Directori into the exercise folder, every schema upgrade and
// the month lock. A row without a year beeps and gives false. A <year>.DAT that is missing
// leaves the exercise with its year from the row and no rates.
bool Obre_Exercici(WorkingContext& ctx, Dialogs& dialogs, const QString& row,
                   QDate today = QDate::currentDate());

// The part of the opening that sets the context: <year>.DAT into it and Directori into the
// exercise folder. Without <year>.DAT the exercise keeps `year` and has no rates.
void enterExercise(WorkingContext& ctx, const QString& year);

// Back from an open exercise to its company: Directori loses the exercise folder.
void restoreCompanyFolder(WorkingContext& ctx);

}  // namespace tallora::shell
