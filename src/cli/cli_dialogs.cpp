#include "cli_dialogs.h"

namespace tallora::cli {

void CliDialogs::information(const QString& text, const QString& /*title*/) {
    out_ << text << '\n';
    out_.flush();
}

void CliDialogs::stop(const QString& text, const QString& /*title*/) {
    refused_ = true;
    err_ << text << '\n';
    err_.flush();
}

Dialogs::Answer CliDialogs::yesNo(const QString& text, const QString& /*title*/) {
    if (assumeYes_) return Answer::Yes;
    declined(text, QStringLiteral("No"), QStringLiteral("Yes"));
    return Answer::No;
}

Dialogs::Answer CliDialogs::okCancel(const QString& text, const QString& /*title*/, Icon /*icon*/) {
    if (assumeYes_) return Answer::Ok;
    declined(text, QStringLiteral("Cancel"), QStringLiteral("OK"));
    return Answer::Cancel;
}

void CliDialogs::declined(const QString& text, const QString& answer, const QString& wanted) {
    refused_ = true;
    err_ << text << '\n'
         << QStringLiteral("(answered %1: give --yes to answer %2)").arg(answer, wanted) << '\n';
    err_.flush();
}

}  // namespace tallora::cli
