#pragma once
// The main window: the frame that holds every working screen of an open exercise.
#include <QMainWindow>

class QLabel;
class QMdiArea;

namespace tallora {

class WorkingContext;

class FormMDI : public QMainWindow {
    Q_OBJECT
public:
    explicit FormMDI(WorkingContext& ctx, QWidget* parent = nullptr);

    QMdiArea* mdiArea() const { return mdi_; }
    // Panel 1 to 3 of the status bar `Barra`.
    QLabel* statusPanel(int n) const;
    QLabel* lblEmpresa() const { return lblEmpresa_; }

private:
    WorkingContext& ctx_;
    QMdiArea* mdi_;
    QLabel* lblEmpresa_;
    QLabel* panels_[3];
};

}  // namespace tallora
