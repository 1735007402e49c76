#pragma once
// The month lock screen: twelve boxes mirroring the lock of the open exercise. It lives
// hidden in the shell from the opening of the exercise; "guardar" writes the file and the
// context, "cancelar" (after a question when something changed) goes back to the file.
#include <QWidget>

class QCheckBox;

namespace tallora {

class Dialogs;
class WorkingContext;

class blockmes : public QWidget {
    Q_OBJECT
public:
    blockmes(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    // Reads the file into the context and the boxes; nothing is changed afterwards.
    void Carrega();
    void Guardar();
    void Cancelar();
    // The boxes changed since the last load or save (Pic_canvis).
    bool changed() const { return Pic_canvis_; }
    QCheckBox* chkmesos(int month) const { return chkmesos_[month - 1]; }
    // The shell is closing: the screen goes with it, without its own question.
    void closeWithShell() { closingWithShell_ = true; }

signals:
    // The screen wants to be hidden (after saving or leaving).
    void hideRequested();

protected:
    // The window's close box is "cancelar": the screen stays alive, only hidden.
    void closeEvent(QCloseEvent* event) override;

private:
    void setAll(bool locked);

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QCheckBox* chkmesos_[12];
    bool Pic_canvis_ = false;
    bool closingWithShell_ = false;
};

}  // namespace tallora
