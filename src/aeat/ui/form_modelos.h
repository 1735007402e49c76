#pragma once
// The tax agency's returns on one screen: the model and its period chosen at the top, the
// form's boxes below in its sections (the ones the user must type are editable, the rest are
// worked out from the books), the declared parties of the 347 and 349, and what was left
// out. From here the return is printed, its file written for the agency's filing service,
// and the VAT books of the same months saved in the agency's XLSX format.
#include "aeat/model_figures.h"
#include "context/fwd.h"

#include <QWidget>

#include <functional>
#include <map>

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QTextDocument;
class QVBoxLayout;

namespace tallora {

class FormModelos : public QWidget {
    Q_OBJECT
public:
    FormModelos(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    void chooseModel(aeat::Model model);
    void choosePeriod(const QString& code);
    // Works the figures out anew, with what is typed in the editable boxes.
    void Calcular();
    // The agency's file and the VAT books' workbook, written where askFilePath says.
    bool GuardarFichero();
    bool GuardarLibros();
    // The figures as a printable document; Imprimir sends it to the print dialog.
    void fillDocument(QTextDocument& document) const;
    void Imprimir();

    const aeat::ModelFigures& figures() const { return figures_; }
    QLineEdit* box(const QString& number) const;
    QTableWidget* parties() const { return GridTerceros_; }

    // Where a file goes: a save dialog, or what a test answers; empty cancels.
    std::function<QString(const QString& proposed)> askFilePath;

signals:
    void statusChanged(const QString& text);

private:
    // `error` shown, or, without one, where the file at `path` went: true when saved.
    bool told(const QString& error, const QString& path);
    aeat::Model model() const;
    void fillPeriods();
    void showFigures();
    bool eventFilter(QObject* watched, QEvent* event) override;

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QComboBox *cmbModelo_, *cmbPeriodo_;
    QPushButton *btnCalcular_, *btnFichero_, *btnLibros_, *btnImprimir_, *btnCerrar_;
    QWidget* boxesArea_;
    QGridLayout* boxesGrid_ = nullptr;
    QTableWidget* GridTerceros_;
    QLabel* lblAvisos_;
    QLabel* lblResultado_;
    std::map<QString, QLineEdit*> fields_;
    aeat::ModelFigures figures_;
};

}  // namespace tallora
