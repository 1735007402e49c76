#pragma once
// The exercises of the open company, and the frame of a new exercise. It ends accepted
// when an exercise was opened (Directori is then its folder), rejected to go back to the
// company list.
#include <QDialog>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QToolBar;

namespace tallora {

class Dialogs;
class WorkingContext;

class FormMenu : public QDialog {
    Q_OBJECT
public:
    FormMenu(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Exercicis();
    // Shows FrameAlta with its defaults, the focus on the year.
    void Nou_Exercici();
    void Graba_Exercici();
    void Elimina_Exercici();
    void Obre_Exercici();
    // Hides the frame when it shows; otherwise back to the company list.
    void Cancela();

protected:
    // Esc is "Cancela", after a question when the frame holds what the user typed.
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void setDefaults();
    // The frame shows values other than those it opened with.
    bool frameTyped() const;
    // True when nothing typed would be lost, or the user agrees to lose it (message 6622).
    bool mayDropTyped();
    void hideFrame();
    void stepYear(int delta);

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QListWidget* ListExercicis_;
    QLabel *lblEmpresa_, *lblNIF_, *lblDirectori_;
    QToolBar* Toolbar3_;
    QGroupBox* FrameAlta_;
    QLineEdit* txtExercici_;
    QComboBox* cmbMoneda_;
    QRadioButton *OpBotiga_, *Option1_;
    QLineEdit *txtIVA_[3], *txtRE_[3], *txtIVAs_[4];
    QSize listSize_;
};

}  // namespace tallora
