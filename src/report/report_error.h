#pragma once
#include <QString>

#include <stdexcept>

namespace tallora::report {

// A report that cannot be made: a layout that does not read, a data file or field that is not
// there, an output that cannot be written. The message names the file, and the line or the
// field, so that whoever edits the layout finds the fault at once.
class ReportError : public std::runtime_error {
public:
    explicit ReportError(const QString& message)
        : std::runtime_error(message.toStdString()), message_(message) {}
    const QString& message() const { return message_; }

private:
    QString message_;
};

}  // namespace tallora::report
