#pragma once
// Message boxes on a terminal. Nothing waits for a person: a question is answered Yes (or
// OK) only when the command line said --yes; otherwise it is shown, answered No, and the
// run counts as refused, as does every stop.
#include "context/dialogs.h"

#include <QTextStream>

namespace tallora::cli {

class CliDialogs : public Dialogs {
public:
    CliDialogs(QTextStream& out, QTextStream& err, bool assumeYes)
        : out_(out), err_(err), assumeYes_(assumeYes) {}

    // True once a stop was shown or a question was answered No or Cancel.
    bool refused() const { return refused_; }

    void information(const QString& text, const QString& title = {}) override;
    void stop(const QString& text, const QString& title = {}) override;
    Answer yesNo(const QString& text, const QString& title = {}) override;
    Answer okCancel(const QString& text, const QString& title = {},
                    Icon icon = Icon::Question) override;
    void beep() override {}

private:
    // Shows an unanswered question and the answer it got.
    void declined(const QString& text, const QString& answer, const QString& wanted);

    QTextStream& out_;
    QTextStream& err_;
    bool assumeYes_;
    bool refused_ = false;
};

}  // namespace tallora::cli
