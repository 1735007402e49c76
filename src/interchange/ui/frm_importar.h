#pragma once
// frmImportar: the export of the open exercise to an interchange file and the import of
// one, on two tabs (EXPORTACION, IMPORTACION). It is modal to the shell's window.
//
// A run shows its records in the tab's log and a progress bar with the count of records,
// and serves the event loop as it goes, so the screen repaints; meanwhile the tabs and
// buttons are greyed and the window does not close. After an import the shell closes its
// other windows, whose data are stale (importFinished).
//
// Keys: Tab moves along, Enter on a button runs it, Ctrl+Tab turns the tabs, Esc closes
// (not during a run), F1 opens help "importa".
#include "context/fwd.h"
#include "interchange/interchange_export.h"
#include "interchange/interchange_header.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QElapsedTimer;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace tallora {

class frmImportar : public QDialog {
    Q_OBJECT
public:
    frmImportar(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmImportar() override;

    // What the file choosers give (tests set them): the path, or an empty text when the
    // user cancels.
    std::function<QString()> chooseExportPath;
    std::function<QString()> chooseImportPath;

    // The buttons' actions.
    void btnBuscaExp();
    void btnBuscaImp();
    void btn_Exporta();
    void btn_Importa();
    // Takes the file at `path` for the import: its header into ListArchivo, the options set.
    void setImportFile(const QString& path);

    QTabWidget* TabStrip1() const { return TabStrip1_; }

signals:
    // An import ended: the other windows must close.
    void importFinished();

protected:
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* exportTab();
    QWidget* importTab();
    void showExportBoxes();
    // Runs `work` with the screen greyed, its log and progress bar fed as it goes; every
    // message box it shows comes after the log is up to date.
    using Work = std::function<void(Dialogs& dialogs, const interchange::RunReport& report)>;
    void running(QListWidget* log, QProgressBar* bar, const Work& work);

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    interchange::FileHeader header_;
    bool running_ = false;

    QTabWidget* TabStrip1_ = nullptr;
    QLineEdit* txtDirExporta = nullptr;
    QPushButton* btnBuscaExp_ = nullptr;
    QRadioButton* OpExportaTodo = nullptr;
    QRadioButton* OpExportaParcial = nullptr;
    QCheckBox* OpChkClientes = nullptr;
    QCheckBox* OpChkProveedores = nullptr;
    QCheckBox* OpChkCuentas = nullptr;
    QPushButton* btn_Exporta_ = nullptr;
    QListWidget* List_exporta = nullptr;
    QProgressBar* ProgExporta = nullptr;

    QLineEdit* txtDirImporta = nullptr;
    QPushButton* btnBuscaImp_ = nullptr;
    QListWidget* ListArchivo = nullptr;
    QRadioButton* OpImportaTodo = nullptr;
    QRadioButton* OpImportaParcial = nullptr;
    QCheckBox* OpChkClientesImporta = nullptr;
    QCheckBox* OpChkProveedoresImporta = nullptr;
    QCheckBox* OpChkCuentasImporta = nullptr;
    QCheckBox* chkVerifactu = nullptr;
    QPushButton* btn_Importa_ = nullptr;
    QListWidget* List1 = nullptr;
    QProgressBar* ProgImporta = nullptr;
};

}  // namespace tallora
