#pragma once
// The bank's statement in the Norma 43 format laid against one treasury account: each line
// with its date, concept, amount and what it is proposed as (a receipt collected, an invoice
// paid, a receipt returned, an other movement on an account the user picks). Nothing is
// written until "Importar": then the ticked lines go in one transaction, and a line imported
// before shows as such and cannot be ticked.
#include "context/fwd.h"
#include "treasury/statement_matching.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace tallora {

class FormExtractoBanco : public QWidget {
    Q_OBJECT
public:
    FormExtractoBanco(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    // Reads the file and proposes its lines for the chosen account; a file that does not
    // add up is refused saying where.
    void Carga_Fichero(const QString& path);
    // The lines of the statement account laid against the chosen treasury account, anew.
    void Proponer();
    // Writes the ticked lines.
    void Importar();

    // Accounts added in another window appear when the screen comes back.
    void refreshLists();

    // Where the statement is read from: an open dialog, or what a test answers.
    std::function<QString()> askFilePath;
    QTableWidget* grid() const { return GridApuntes_; }
    QComboBox* accounts() const { return cmbEntitats_; }

signals:
    void statusChanged(const QString& text);

private:
    void fill();
    void closeScreen();
    bool eventFilter(QObject* watched, QEvent* event) override;

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QLineEdit* txtFichero_;
    QPushButton *btnFichero_, *btnImportar_, *btnCerrar_;
    QComboBox* cmbEntitats_;
    QLabel* lblCuenta_;
    QTableWidget* GridApuntes_;
    std::optional<banking::N43File> file_;
    std::vector<treasury::LineProposal> proposals_;
    std::vector<treasury::AccountItem> others_;
};

}  // namespace tallora
