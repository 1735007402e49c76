#pragma once
// What a save or a deletion of a master record came to, so that a screen knows whether to
// go back to browsing, keep the edit open and focus a field, or do nothing.
#include <QString>

namespace tallora::master {

struct Outcome {
    enum class Kind {
        Done,      // written; `affected` rows of the main statement
        Refused,   // a message said why; nothing was written
        Declined,  // the user answered No to the question; nothing was asked of the store
    };
    Kind kind = Kind::Done;
    int affected = 0;
    // On a refusal, the control the screen puts the focus on (its objectName); empty when
    // the refusal is not about one field.
    QString field;

    bool done() const { return kind == Kind::Done; }
    static Outcome wrote(int rows) { return {Kind::Done, rows, {}}; }
    static Outcome refused(const QString& focus = {}) { return {Kind::Refused, 0, focus}; }
    static Outcome declined() { return {Kind::Declined, 0, {}}; }
};

}  // namespace tallora::master
