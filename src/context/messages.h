#pragma once
// The message catalogue: every caption, question and message in Spanish and Catalan.
//
// Message n of the current language is the entry BaseIdioma + n (20000 + n Spanish,
// 10000 + n Catalan). There is no fallback from one language to the other: a number
// missing from the catalogue is a program error, and a test scans the sources for it.
#include <QString>

#include <map>
#include <stdexcept>

namespace tallora {

class WorkingContext;

class UnknownMessage : public std::logic_error {
public:
    explicit UnknownMessage(int key);
};

class MessageCatalogue {
public:
    // Reads the tab-separated text "number<TAB>Spanish<TAB>Catalan"; lines starting with '#'
    // are comments. \n, \t and \\ in a text stand for a line break, a tab and a backslash.
    // Throws std::runtime_error naming the line on a malformed row.
    static MessageCatalogue parse(const QString& tsv);
    // The catalogue compiled into the program.
    static const MessageCatalogue& builtIn();

    // The entry BaseIdioma + n; throws UnknownMessage when there is none.
    const QString& text(int key) const;
    bool contains(int key) const { return entries_.count(key) != 0; }
    const std::map<int, QString>& entries() const { return entries_; }

private:
    std::map<int, QString> entries_;
};

// Message n in the language of the context.
QString Missatge(const WorkingContext& ctx, int n);
// A text the catalogue lacks, given in both languages: the one of the context.
QString fixedText(const WorkingContext& ctx, const QString& spanish, const QString& catalan);
// The same for UTF-8 literals.
QString fixedText(const WorkingContext& ctx, const char* spanish, const char* catalan);

}  // namespace tallora
