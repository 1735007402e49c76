#pragma once
// The program's icon, drawn rather than shipped as pictures: the windows, the desktop entry's
// icons of every size and the help pages all come from this one drawing.
#include <QIcon>
#include <QImage>

namespace tallora::ui {

// The icon drawn at `size` × `size` pixels on a transparent ground.
QImage appIconImage(int size);
// The icon in the sizes a window manager asks for.
QIcon appIcon();

}  // namespace tallora::ui
