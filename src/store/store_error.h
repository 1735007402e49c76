#pragma once
#include <QString>

#include <stdexcept>

namespace tallora::store {

// A failure of the store, with the engine's message (and the file it concerns).
class StoreError : public std::runtime_error {
public:
    StoreError(const QString& message, int code = 0)
        : std::runtime_error(message.toStdString()), message_(message), code_(code) {}
    const QString& message() const { return message_; }
    int code() const { return code_; }

private:
    QString message_;
    int code_;
};

}  // namespace tallora::store
