#include "messages.h"

#include "working_context.h"

#include <QFile>

namespace tallora {
namespace {

constexpr int kSpanishBase = 20000;
constexpr int kCatalanBase = 10000;

QString unescape(const QString& field) {
    QString out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == u'\\' && i + 1 < field.size()) {
            const QChar c = field[++i];
            out += c == u'n' ? QChar(u'\n') : c == u't' ? QChar(u'\t') : c;
        } else {
            out += field[i];
        }
    }
    return out;
}

}  // namespace

UnknownMessage::UnknownMessage(int key)
    : std::logic_error("unknown message " + std::to_string(key)) {}

MessageCatalogue MessageCatalogue::parse(const QString& tsv) {
    MessageCatalogue catalogue;
    const QStringList lines = tsv.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString line = lines[i];
        if (line.endsWith(u'\r')) line.chop(1);
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        const QStringList fields = line.split(u'\t');
        bool ok = false;
        const int n = fields.value(0).toInt(&ok);
        if (fields.size() != 3 || !ok || n < 0 || n >= kCatalanBase)
            throw std::runtime_error("messages: malformed line " + std::to_string(i + 1));
        catalogue.entries_[kSpanishBase + n] = unescape(fields[1]);
        catalogue.entries_[kCatalanBase + n] = unescape(fields[2]);
    }
    return catalogue;
}

const MessageCatalogue& MessageCatalogue::builtIn() {
    static const MessageCatalogue catalogue = [] {
        QFile file(QStringLiteral(":/messages/messages.tsv"));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("messages: the built-in catalogue is missing");
        return parse(QString::fromUtf8(file.readAll()));
    }();
    return catalogue;
}

const QString& MessageCatalogue::text(int key) const {
    const auto it = entries_.find(key);
    if (it == entries_.end()) throw UnknownMessage(key);
    return it->second;
}

QString Missatge(const WorkingContext& ctx, int n) {
    return MessageCatalogue::builtIn().text(ctx.BaseIdioma + n);
}

QString fixedText(const WorkingContext& ctx, const QString& spanish, const QString& catalan) {
    return ctx.Idioma == QStringLiteral("cat") ? catalan : spanish;
}

QString fixedText(const WorkingContext& ctx, const char* spanish, const char* catalan) {
    return fixedText(ctx, QString::fromUtf8(spanish), QString::fromUtf8(catalan));
}

}  // namespace tallora
