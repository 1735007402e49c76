#pragma once
// Message boxes. Logic asks and tells through this interface; the program shows Qt boxes,
// tests queue the answers beforehand and read back every text that was shown.
#include <QString>

#include <deque>
#include <vector>

namespace tallora {

class Dialogs {
public:
    enum class Icon { Information, Stop, Question, Exclamation };
    enum class Answer { Ok, Cancel, Yes, No };

    virtual ~Dialogs() = default;
    // A notice with the information icon.
    virtual void information(const QString& text, const QString& title = {}) = 0;
    // A refusal with the stop icon.
    virtual void stop(const QString& text, const QString& title = {}) = 0;
    // A Yes/No question with the question icon; Yes or No.
    virtual Answer yesNo(const QString& text, const QString& title = {}) = 0;
    // OK and Cancel; Ok or Cancel.
    virtual Answer okCancel(const QString& text, const QString& title = {},
                            Icon icon = Icon::Question) = 0;
    // The warning sound that goes with a refused key or a refusal.
    virtual void beep() = 0;
};

// For tests: answers come from a queue filled beforehand; every box is recorded.
// A question with no answer queued is a failing test, never a blocked one: it throws.
class ScriptedDialogs : public Dialogs {
public:
    struct Shown {
        enum class Kind { Information, Stop, YesNo, OkCancel };
        Kind kind;
        Icon icon;
        QString text;
        QString title;
    };

    void setNextAnswer(Answer answer) { answers_.push_back(answer); }
    const std::vector<Shown>& shown() const { return shown_; }
    // The text of the last box shown, or an empty text when none was.
    QString lastText() const { return shown_.empty() ? QString() : shown_.back().text; }
    std::size_t pendingAnswers() const { return answers_.size(); }
    void clear();

    void information(const QString& text, const QString& title = {}) override;
    void stop(const QString& text, const QString& title = {}) override;
    Answer yesNo(const QString& text, const QString& title = {}) override;
    Answer okCancel(const QString& text, const QString& title = {},
                    Icon icon = Icon::Question) override;
    void beep() override { ++beeps_; }
    int beeps() const { return beeps_; }

private:
    Answer take(const QString& text, Answer first, Answer second);
    std::deque<Answer> answers_;
    std::vector<Shown> shown_;
    int beeps_ = 0;
};

}  // namespace tallora
