#include "qt_dialogs.h"

#include <QApplication>
#include <QMessageBox>

namespace tallora {
namespace {

QMessageBox::Icon qtIcon(Dialogs::Icon icon) {
    switch (icon) {
        case Dialogs::Icon::Information:
            return QMessageBox::Information;
        case Dialogs::Icon::Stop:
            return QMessageBox::Critical;
        case Dialogs::Icon::Question:
            return QMessageBox::Question;
        case Dialogs::Icon::Exclamation:
            return QMessageBox::Warning;
    }
    return QMessageBox::NoIcon;
}

int run(QWidget* parent, Dialogs::Icon icon, const QString& title, const QString& text,
        QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton) {
    QMessageBox box(qtIcon(icon), title, text, buttons, parent);
    box.setDefaultButton(defaultButton);
    return box.exec();
}

}  // namespace

QtDialogs::QtDialogs(QWidget* parent, QString defaultTitle)
    : parent_(parent), defaultTitle_(std::move(defaultTitle)) {}

QString QtDialogs::titleOr(const QString& title) const {
    return title.isEmpty() ? defaultTitle_ : title;
}

void QtDialogs::information(const QString& text, const QString& title) {
    run(parent_, Icon::Information, titleOr(title), text, QMessageBox::Ok, QMessageBox::Ok);
}

void QtDialogs::stop(const QString& text, const QString& title) {
    run(parent_, Icon::Stop, titleOr(title), text, QMessageBox::Ok, QMessageBox::Ok);
}

Dialogs::Answer QtDialogs::yesNo(const QString& text, const QString& title) {
    const int r = run(parent_, Icon::Question, titleOr(title), text,
                      QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    return r == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

Dialogs::Answer QtDialogs::okCancel(const QString& text, const QString& title, Icon icon) {
    const int r = run(parent_, icon, titleOr(title), text, QMessageBox::Ok | QMessageBox::Cancel,
                      QMessageBox::Ok);
    return r == QMessageBox::Ok ? Answer::Ok : Answer::Cancel;
}

void QtDialogs::beep() {
    QApplication::beep();
}

}  // namespace tallora
