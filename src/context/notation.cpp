#include "notation.h"

#include "text_encoding.h"

#include <QFile>
#include <QSaveFile>

#include <charconv>

namespace tallora {
namespace {

bool isBlank(QChar c) { return c == u' ' || c == u'\t'; }
bool isLineBreak(QChar c) { return c == u'\r' || c == u'\n'; }

}  // namespace

std::optional<bool> NotationItem::toBool() const {
    const QString t = text.trimmed();
    if (t.compare(QStringLiteral("TRUE"), Qt::CaseInsensitive) == 0) return true;
    if (t.compare(QStringLiteral("FALSE"), Qt::CaseInsensitive) == 0) return false;
    if (const auto n = toNumber()) return *n != 0.0;
    return std::nullopt;
}

std::optional<double> NotationItem::toNumber() const {
    QString t = text.trimmed();
    t.replace(u',', u'.');
    if (t.isEmpty()) return std::nullopt;
    bool ok = false;
    const double value = t.toDouble(&ok);  // QString::toDouble is locale-independent
    if (!ok) return std::nullopt;
    return value;
}

void NotationWriter::separate() {
    if (lineOpen_) out_ += u',';
    lineOpen_ = true;
}

NotationWriter& NotationWriter::text(const QString& value) {
    separate();
    QString escaped = value;
    escaped.replace(u'"', QStringLiteral("\"\""));
    out_ += u'"' + escaped + u'"';
    return *this;
}

NotationWriter& NotationWriter::boolean(bool value) {
    separate();
    out_ += value ? QStringLiteral("#TRUE#") : QStringLiteral("#FALSE#");
    return *this;
}

NotationWriter& NotationWriter::number(std::int64_t value) {
    separate();
    out_ += QString::number(value);
    return *this;
}

NotationWriter& NotationWriter::number(double value) {
    separate();
    char buffer[64];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, value);
    out_ += QString::fromLatin1(buffer, r.ptr - buffer);
    return *this;
}

NotationWriter& NotationWriter::endLine() {
    out_ += QStringLiteral("\r\n");
    lineOpen_ = false;
    return *this;
}

QString NotationWriter::result() const {
    return lineOpen_ ? out_ + QStringLiteral("\r\n") : out_;
}

void NotationReader::skipBlanks(bool alsoLineBreaks) {
    while (pos_ < s_.size() && (isBlank(s_[pos_]) || (alsoLineBreaks && isLineBreak(s_[pos_]))))
        ++pos_;
}

// After an item: blanks, then one comma or one line ending; stray characters up to either
// are dropped.
void NotationReader::skipToItemEnd() {
    while (pos_ < s_.size() && s_[pos_] != u',' && !isLineBreak(s_[pos_])) ++pos_;
    if (pos_ >= s_.size()) return;
    if (s_[pos_] == u',') {
        ++pos_;
    } else {
        if (s_[pos_] == u'\r') ++pos_;
        if (pos_ < s_.size() && s_[pos_] == u'\n') ++pos_;
    }
}

bool NotationReader::atEnd() {
    skipBlanks(true);
    return pos_ >= s_.size();
}

std::optional<NotationItem> NotationReader::next() {
    if (atEnd()) return std::nullopt;
    NotationItem item;
    const QChar first = s_[pos_];
    if (first == u'"') {
        item.kind = NotationItem::Kind::Quoted;
        const qsizetype start = ++pos_;
        qsizetype p = start;
        bool closed = false;
        while (p < s_.size()) {
            if (s_[p] == u'"') {
                if (p + 1 < s_.size() && s_[p + 1] == u'"') {
                    item.text += u'"';
                    p += 2;
                    continue;
                }
                closed = true;
                break;
            }
            item.text += s_[p++];
        }
        if (closed) {
            pos_ = p + 1;
        } else {
            // No closing quote anywhere: the item is the rest of its first line.
            qsizetype end = start;
            while (end < s_.size() && !isLineBreak(s_[end])) ++end;
            item.text = s_.mid(start, end - start);
            item.unterminated = true;
            pos_ = end;
        }
    } else if (first == u'#') {
        item.kind = NotationItem::Kind::Hashed;
        qsizetype end = pos_ + 1;
        while (end < s_.size() && s_[end] != u'#' && !isLineBreak(s_[end]) && s_[end] != u',') ++end;
        item.text = s_.mid(pos_ + 1, end - pos_ - 1);
        item.unterminated = end >= s_.size() || s_[end] != u'#';
        pos_ = item.unterminated ? end : end + 1;
    } else {
        item.kind = NotationItem::Kind::Bare;
        qsizetype end = pos_;
        while (end < s_.size() && s_[end] != u',' && !isLineBreak(s_[end])) ++end;
        item.text = s_.mid(pos_, end - pos_).trimmed();
        pos_ = end;
    }
    skipToItemEnd();
    return item;
}

QString NotationReader::nextText() {
    const auto item = next();
    return item ? item->text : QString();
}

QStringList splitLines(const QString& content) {
    QString normalised = content;
    normalised.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    normalised.replace(u'\r', u'\n');
    QStringList lines = normalised.split(u'\n');
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

std::optional<QString> readTextFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return decodeUtf8OrWindows1252(file.readAll());
}

bool writeTextFile(const QString& path, const QString& content, QString* error) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(content.toUtf8());
        if (file.commit()) return true;
    }
    if (error) *error = file.errorString();
    return false;
}

bool appendTextFile(const QString& path, const QString& content, QString* error) {
    QString existing = readTextFile(path).value_or(QString());
    // A last line without its end (a file edited by hand) must not swallow the new record.
    if (!existing.isEmpty() && !existing.endsWith(u'\n')) existing += QStringLiteral("\r\n");
    return writeTextFile(path, existing + content, error);
}

}  // namespace tallora
