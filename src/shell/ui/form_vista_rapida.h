#pragma once
// FormVistaRapida, the assistant: the exercise's main figures and links to the screens used
// most, in three columns (customers, suppliers, accounts). A link runs its menu entry, so
// that it opens exactly what the menu opens. Shown on opening an exercise while splash.cfg
// says 1, and from the menu; closing it writes Check1 there.
//
// Keys: Tab moves between the links, Enter or Space follows one, Esc closes, F1 opens the
// help page its key names ("bloqmeses").
#include "context/fwd.h"

#include <QWidget>

class QCheckBox;
class QLineEdit;

namespace tallora {

class FormVistaRapida : public QWidget {
    Q_OBJECT
public:
    FormVistaRapida(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    // The figures, computed again.
    void refresh();
    QCheckBox* check() const { return Check1; }

signals:
    // A link was followed: the menu entry it stands for.
    void entryRequested(const QString& menuEntry);
    void statusChanged(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* buildLinks();
    QWidget* buildFigures();

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QLineEdit *txtVentas, *txtGastos, *txtRecibosPendientes, *txtFacturasPendientes,
        *txtsaldobancos;
    QCheckBox* Check1;
};

}  // namespace tallora
