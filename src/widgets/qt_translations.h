#pragma once
// Qt's own texts (the buttons of a message box, the standard dialogs) in the program's
// language, from the translations Debian installs with Qt.
#include <QString>

namespace tallora::ui {

// Puts Qt's translation of `idioma` ("esp" or "cat") in force in place of the one before;
// asking again for the language in force does nothing. False when the translation is not
// installed: Qt then speaks English.
bool useQtTranslations(const QString& idioma);

}  // namespace tallora::ui
