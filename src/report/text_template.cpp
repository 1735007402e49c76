#include "text_template.h"

#include <algorithm>
#include <stdexcept>

namespace tallora::report {
namespace {

[[noreturn]] void bad(const QString& why) {
    throw std::invalid_argument(why.toStdString());
}

ValueFormat formatNamed(const QString& name) {
    if (name == u"money") return ValueFormat::Money;
    if (name == u"amount") return ValueFormat::Amount;
    if (name == u"quantity") return ValueFormat::Quantity;
    if (name == u"date") return ValueFormat::Date;
    if (name == u"plain") return ValueFormat::Plain;
    bad(QStringLiteral("unknown format \"%1\" (money, amount, quantity, date or plain)").arg(name));
}

SumScope scopeNamed(const QString& name) {
    if (name == u"group") return SumScope::Group;
    if (name == u"page") return SumScope::Page;
    if (name == u"carried") return SumScope::Carried;
    if (name == u"report") return SumScope::Report;
    bad(QStringLiteral("unknown scope \"%1\" (group, page, carried or report)").arg(name));
}

bool isName(const QString& s) {
    if (s.isEmpty()) return false;
    for (QChar c : s)
        if (!c.isLetterOrNumber() && c != u'_' && c != u'.') return false;
    return true;
}

// What stands between braces.
TextPiece parsePlaceholder(const QString& inside) {
    TextPiece p;
    QString body = inside.trimmed();
    const qsizetype bar = body.indexOf(u'|');
    if (bar >= 0) {
        p.format = formatNamed(body.mid(bar + 1).trimmed());
        body = body.left(bar).trimmed();
    }
    if (body.startsWith(u'@')) {
        p.kind = TextPiece::Kind::Formula;
        p.text = body.mid(1).trimmed();
        if (!isName(p.text))
            bad(QStringLiteral("\"{%1}\": a formula name is expected after @").arg(inside));
        return p;
    }
    if (body.startsWith(u'#')) {
        const QString what = body.mid(1).trimmed();
        if (what == u"page")
            p.kind = TextPiece::Kind::PageNumber;
        else if (what == u"pages")
            p.kind = TextPiece::Kind::PageCount;
        else
            bad(QStringLiteral("\"{%1}\": only {#page} and {#pages} are known").arg(inside));
        return p;
    }
    const qsizetype open = body.indexOf(u'(');
    if (open >= 0) {
        const QString function = body.left(open).trimmed();
        if (!body.endsWith(u')')) bad(QStringLiteral("\"{%1}\": ')' is missing").arg(inside));
        const QStringList args = body.mid(open + 1, body.size() - open - 2).split(u',');
        if (function == u"sum") {
            // sum(field, scope) or sum(field - field, scope): names hold no '-'.
            const QStringList terms = args[0].split(u'-');
            const bool named = std::all_of(terms.begin(), terms.end(),
                                           [](const QString& t) { return isName(t.trimmed()); });
            if (args.size() != 2 || terms.size() > 2 || !named)
                bad(QStringLiteral("\"{%1}\": write sum(field, scope)").arg(inside));
            p.kind = TextPiece::Kind::Sum;
            p.text = terms[0].trimmed();
            if (terms.size() == 2) p.minus = terms[1].trimmed();
            p.scope = scopeNamed(args[1].trimmed());
        } else if (function == u"count") {
            if (args.size() != 1) bad(QStringLiteral("\"{%1}\": write count(scope)").arg(inside));
            p.kind = TextPiece::Kind::Count;
            p.scope = scopeNamed(args[0].trimmed());
        } else {
            bad(QStringLiteral("\"{%1}\": unknown function \"%2\" (sum or count)")
                    .arg(inside, function));
        }
        return p;
    }
    if (!isName(body)) bad(QStringLiteral("\"{%1}\" is not a field name").arg(inside));
    p.kind = TextPiece::Kind::Field;
    p.text = body;
    return p;
}

}  // namespace

std::vector<TextPiece> parseTextTemplate(const QString& value) {
    std::vector<TextPiece> pieces;
    QString literal;
    const auto flush = [&] {
        if (literal.isEmpty()) return;
        pieces.push_back({TextPiece::Kind::Literal, literal});
        literal.clear();
    };
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value[i];
        if (c == u'}') {
            if (i + 1 < value.size() && value[i + 1] == u'}')
                ++i;
            else
                bad(QStringLiteral("a lone '}': write }} for a brace"));
            literal += c;
        } else if (c != u'{') {
            literal += c;
        } else if (i + 1 < value.size() && value[i + 1] == u'{') {
            literal += c;
            ++i;
        } else {
            const qsizetype close = value.indexOf(u'}', i + 1);
            if (close < 0) bad(QStringLiteral("'{' without its '}'"));
            flush();
            pieces.push_back(parsePlaceholder(value.mid(i + 1, close - i - 1)));
            i = close;
        }
    }
    flush();
    return pieces;
}

}  // namespace tallora::report
