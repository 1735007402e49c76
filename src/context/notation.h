#pragma once
// The quoted comma notation of the list and settings files.
//
// A record is a line of items separated by commas: text in double quotes, Booleans as
// #TRUE# and #FALSE#, numbers bare with a point as decimal mark. The reader goes item by
// item, so line breaks between items do not matter and a record may be read in parts.
//
// Choices of ours where the notation is silent:
//  - a double quote inside a text is written doubled ("") and read back as one;
//  - a text may span lines; one whose closing quote never comes ends at the end of its
//    first line, so that a damaged line costs only that item;
//  - lines end with CR LF, as in files written by earlier versions; both endings are read.
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace tallora {

struct NotationItem {
    enum class Kind { Quoted, Bare, Hashed };  // "text", 12.5, #TRUE#
    Kind kind = Kind::Bare;
    QString text;               // without quotes or hash marks
    bool unterminated = false;  // a quoted text or #...# without its closing mark

    // Booleans: #TRUE#/#FALSE#, the words True/False in any case, or a number (non-zero
    // is true). nullopt for anything else.
    std::optional<bool> toBool() const;
    // A number written with '.' or ',' as decimal mark; nullopt when the text is not one.
    std::optional<double> toNumber() const;
};

class NotationWriter {
public:
    NotationWriter& text(const QString& value);
    NotationWriter& boolean(bool value);
    NotationWriter& number(std::int64_t value);
    NotationWriter& number(double value);
    NotationWriter& endLine();
    // Everything written; a record not ended with endLine() is ended here.
    QString result() const;

private:
    void separate();
    QString out_;
    bool lineOpen_ = false;
};

class NotationReader {
public:
    explicit NotationReader(QString content) : s_(std::move(content)) {}

    // The next item, or nullopt when only blanks and line breaks are left.
    std::optional<NotationItem> next();
    // The next item's text, or an empty text at the end (as a read past the end leaves
    // the variable empty).
    QString nextText();
    bool atEnd();

private:
    void skipBlanks(bool alsoLineBreaks);
    void skipToItemEnd();
    QString s_;
    qsizetype pos_ = 0;
};

// The lines of a text without their endings (CR LF, LF or CR); no empty last line.
QStringList splitLines(const QString& content);

// Reads a whole text file (UTF-8, or Windows-1252 from older installations). nullopt when
// the file is missing or unreadable.
std::optional<QString> readTextFile(const QString& path);
// Writes a whole file as UTF-8 through a temporary file that replaces the old one only
// when everything was written, so a crash never leaves half a file.
bool writeTextFile(const QString& path, const QString& content, QString* error = nullptr);
// Adds a text at the end of a file (created when missing), through the same safe write. A
// last line that lacks its line end gets one first, so the text starts on a line of its own.
bool appendTextFile(const QString& path, const QString& content, QString* error = nullptr);

}  // namespace tallora
