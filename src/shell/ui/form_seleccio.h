#pragma once
// The first screen: the working unit, its companies, and the panel of a new company. It
// ends accepted when a company was opened, rejected when the user leaves the program.
#include "company_fields.h"

#include <QDialog>

class QAction;
class QComboBox;
class QGroupBox;
class QLabel;
class QListWidget;
class QToolBar;

namespace tallora {

class Dialogs;
class WorkingContext;

class FormSeleccio : public QDialog {
    Q_OBJECT
public:
    FormSeleccio(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    void OMPLE_LLISTA_Empreses();
    void Verifica_Empresa();
    void Elimina_Empresa();
    void Obre_Empresa();
    // Shows the panel of a new company, the focus on its name.
    void Nova_Empresa();
    // Hides the panel and empties its fields.
    void Desfes_Empresa();

protected:
    void done(int result) override;
    // Esc hides the panel of a new company (after a question when something was typed) and
    // does nothing on the list: leaving the program takes "Salir" or the close box.
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // True when the panel holds nothing typed, or the user agrees to lose it (message 6622).
    bool mayDropTyped();
    void changeUnit(const QString& unit);
    QString selectedRow() const;

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QComboBox* txtUnitat_;
    QListWidget* ListEmpreses_;
    QToolBar* Toolbar1_;
    QGroupBox* PanelDades_;
    ui::CompanyFields fields_;
    QToolBar* Toolbar3_;
};

}  // namespace tallora
