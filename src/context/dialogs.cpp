#include "dialogs.h"

#include <stdexcept>

namespace tallora {

void ScriptedDialogs::clear() {
    answers_.clear();
    shown_.clear();
    beeps_ = 0;
}

void ScriptedDialogs::information(const QString& text, const QString& title) {
    shown_.push_back({Shown::Kind::Information, Icon::Information, text, title});
}

void ScriptedDialogs::stop(const QString& text, const QString& title) {
    shown_.push_back({Shown::Kind::Stop, Icon::Stop, text, title});
}

Dialogs::Answer ScriptedDialogs::yesNo(const QString& text, const QString& title) {
    shown_.push_back({Shown::Kind::YesNo, Icon::Question, text, title});
    return take(text, Answer::Yes, Answer::No);
}

Dialogs::Answer ScriptedDialogs::okCancel(const QString& text, const QString& title, Icon icon) {
    shown_.push_back({Shown::Kind::OkCancel, icon, text, title});
    return take(text, Answer::Ok, Answer::Cancel);
}

Dialogs::Answer ScriptedDialogs::take(const QString& text, Answer first, Answer second) {
    if (answers_.empty())
        throw std::logic_error("no answer queued for the question: " + text.toStdString());
    const Answer answer = answers_.front();
    answers_.pop_front();
    if (answer != first && answer != second)
        throw std::logic_error("the queued answer does not fit the question: " + text.toStdString());
    return answer;
}

}  // namespace tallora
