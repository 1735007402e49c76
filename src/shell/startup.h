#pragma once
// The start of the program and the start of the main shell, apart from their windows.
#include "context/fwd.h"

namespace tallora::shell {

// What the program does before its first screen lists companies: the language from
// idioma.cfg (an empty or unknown code leaves Spanish), the working unit from cfg.mdb, and
// the templates the writable program folder lacks. Whether this is the first run (and
// Settings comes first) is settings::isFirstRun, asked before this.
void Inicia_Programa(WorkingContext& ctx);

// What the shell reads and prepares as it starts, in its order: the decimal mark, the screen
// mode, the messaging flag, the document flags (with the sales upgrade step when
// gnradoc.dat exists), the treasury set-up when treasury is on, and the margins. Gives
// false when pantalla.cfg is absent: the window then decides by the screen's height
// (pantallaMaxForHeight) and keeps that in ctx.PantallaMax itself.
bool Inicia_MDI(WorkingContext& ctx, Dialogs* dialogs);

// Without pantalla.cfg: maximised on a screen at least 768 pixels high.
bool pantallaMaxForHeight(int pixels);

}  // namespace tallora::shell
