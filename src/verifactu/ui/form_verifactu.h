#pragma once
// FormVerifactu: the company's VERI*FACTU records with their state and the tax agency's
// answers; the company's setting (records on or off, test or production service); the
// check of the chain; and the sending of the records that wait, with the certificate the
// user chooses and a password that is asked for and never kept.
//
// Keys: Up and Down move through the records, Enter shows the selected record's answer,
// F5 checks the chain, Ctrl+E sends, Esc closes, F1 opens the help page "verifactu".
#include "context/fwd.h"
#include "verifactu/service_client.h"

#include <QWidget>

#include <functional>
#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace tallora {

class FormVerifactu : public QWidget {
    Q_OBJECT
public:
    FormVerifactu(WorkingContext& ctx, Dialogs& dialogs, QWidget* parent = nullptr);

    // The records read again.
    void refresh();
    // Where the certificate comes from: by default a file dialog and a password box; tests
    // give their own. Nothing means the user cancelled.
    using CertificateSource = std::function<std::optional<verifactu::ServiceSettings>()>;
    void setCertificateSource(CertificateSource source) { certificate_ = std::move(source); }

    void checkChain();
    void sendPending();

    // Wide enough for every column of a record without scrolling.
    QSize sizeHint() const override { return {900, 480}; }

signals:
    void statusChanged(const QString& text);
    // Records were sent: the shell counts what still waits.
    void recordsSent();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString t(const char* spanish, const char* catalan) const;
    QWidget* buildSettings();
    std::optional<verifactu::ServiceSettings> askCertificate();
    void showAnswer();
    void saveSettings();

    WorkingContext& ctx_;
    Dialogs& dialogs_;
    QString path_;
    CertificateSource certificate_;
    QCheckBox* chkActivo_;
    QComboBox* cmbEntorno_;
    QTableWidget* GridRegistros_;
    QLabel* lblPendientes_;
    QPushButton *cmdComprobar_, *cmdEnviar_, *cmdCerrar_;
};

}  // namespace tallora
