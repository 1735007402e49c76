#pragma once
// Message boxes on screen, with the icons the program uses.
#include "context/dialogs.h"

class QWidget;

namespace tallora {

class QtDialogs : public Dialogs {
public:
    // `parent` owns the boxes (they are centred on it); `defaultTitle` stands when a box is
    // given no title of its own.
    QtDialogs(QWidget* parent, QString defaultTitle);

    void information(const QString& text, const QString& title = {}) override;
    void stop(const QString& text, const QString& title = {}) override;
    Answer yesNo(const QString& text, const QString& title = {}) override;
    Answer okCancel(const QString& text, const QString& title = {},
                    Icon icon = Icon::Question) override;
    void beep() override;

private:
    QString titleOr(const QString& title) const;
    QWidget* parent_;
    QString defaultTitle_;
};

}  // namespace tallora
