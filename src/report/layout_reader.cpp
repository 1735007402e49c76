#include "layout_reader.h"

#include "report_error.h"
#include "text_template.h"

#include "context/notation.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <map>
#include <set>
#include <stdexcept>

namespace tallora::report {
namespace {

struct Attribute {
    QString name;
    QString value;
    bool hasValue = false;
};

// One statement of the layout, with the attributes it has not used yet.
class Statement {
public:
    Statement(QString path, int line) : path_(std::move(path)), line_(line) {}

    [[noreturn]] void fail(const QString& why) const {
        throw ReportError(QStringLiteral("%1:%2: %3").arg(path_).arg(line_).arg(why));
    }
    int line() const { return line_; }
    const QString& keyword() const { return keyword_; }

    // Splits the line; false when it holds only blanks or a comment.
    bool read(const QString& text) {
        qsizetype i = 0;
        const qsizetype n = text.size();
        while (true) {
            while (i < n && text[i].isSpace()) ++i;
            if (i >= n || text[i] == u'#') break;
            Attribute a;
            while (i < n && !text[i].isSpace() && text[i] != u'=') a.name += text[i++];
            if (i < n && text[i] == u'=') {
                a.hasValue = true;
                ++i;
                if (i < n && text[i] == u'"') {
                    ++i;
                    bool closed = false;
                    while (i < n) {
                        if (text[i] == u'"') {
                            if (i + 1 < n && text[i + 1] == u'"') {
                                a.value += u'"';
                                i += 2;
                                continue;
                            }
                            closed = true;
                            ++i;
                            break;
                        }
                        a.value += text[i++];
                    }
                    if (!closed)
                        fail(QStringLiteral("the quoted value of \"%1\" has no closing quote")
                                 .arg(a.name));
                    if (i < n && !text[i].isSpace())
                        fail(QStringLiteral("a blank is expected after the quoted value of \"%1\"")
                                 .arg(a.name));
                } else {
                    while (i < n && !text[i].isSpace()) a.value += text[i++];
                }
            }
            if (a.name.isEmpty()) fail(QStringLiteral("a name is expected before '='"));
            attributes_.push_back(std::move(a));
        }
        if (attributes_.empty()) return false;
        if (attributes_.front().hasValue)
            fail(QStringLiteral("a statement starts with its keyword"));
        keyword_ = attributes_.front().name;
        attributes_.erase(attributes_.begin());
        return true;
    }

    // The first bare word, as the kind of a band; empty when there is none.
    QString takeWord() {
        for (auto it = attributes_.begin(); it != attributes_.end(); ++it)
            if (!it->hasValue) {
                QString word = it->name;
                attributes_.erase(it);
                return word;
            }
        return {};
    }

    std::optional<QString> take(const QString& name) {
        for (auto it = attributes_.begin(); it != attributes_.end(); ++it)
            if (it->name == name) {
                if (!it->hasValue) fail(QStringLiteral("\"%1\" needs a value: %1=...").arg(name));
                QString value = it->value;
                attributes_.erase(it);
                return value;
            }
        return std::nullopt;
    }

    QString required(const QString& name) {
        auto v = take(name);
        if (!v) fail(QStringLiteral("\"%1\" is missing").arg(name));
        return *v;
    }

    bool flag(const QString& name) {
        for (auto it = attributes_.begin(); it != attributes_.end(); ++it)
            if (it->name == name) {
                if (it->hasValue)
                    fail(QStringLiteral("\"%1\" is a flag and takes no value").arg(name));
                attributes_.erase(it);
                return true;
            }
        return false;
    }

    double number(const QString& name, std::optional<double> fallback = std::nullopt,
                  double minimum = 0) {
        const auto v = take(name);
        if (!v) {
            if (!fallback) fail(QStringLiteral("\"%1\" is missing").arg(name));
            return *fallback;
        }
        bool ok = false;
        const double d = v->toDouble(&ok);
        if (!ok) fail(QStringLiteral("%1=%2: a number is expected").arg(name, *v));
        if (d < minimum)
            fail(QStringLiteral("%1=%2: at least %3 is expected").arg(name, *v).arg(minimum));
        return d;
    }

    QColor color(const QString& name, const QColor& fallback) {
        const auto v = take(name);
        if (!v) return fallback;
        const QColor c = QColor::fromString(*v);
        if (!c.isValid() || !v->startsWith(u'#'))
            fail(QStringLiteral("%1=%2: a colour is written #rrggbb").arg(name, *v));
        return c;
    }

    // Fails on what is left: attributes this statement does not know.
    void done() const {
        if (attributes_.empty()) return;
        const Attribute& a = attributes_.front();
        fail(QStringLiteral("unknown %1 \"%2\" in %3")
                 .arg(a.hasValue ? QStringLiteral("attribute") : QStringLiteral("word"), a.name,
                      keyword_));
    }

private:
    QString path_;
    int line_;
    QString keyword_;
    std::vector<Attribute> attributes_;
};

const std::map<QString, BandKind>& bandKinds() {
    static const std::map<QString, BandKind> kinds{
        {QStringLiteral("report-header"), BandKind::ReportHeader},
        {QStringLiteral("page-header"), BandKind::PageHeader},
        {QStringLiteral("column-header"), BandKind::ColumnHeader},
        {QStringLiteral("group-header"), BandKind::GroupHeader},
        {QStringLiteral("detail"), BandKind::Detail},
        {QStringLiteral("group-footer"), BandKind::GroupFooter},
        {QStringLiteral("page-footer"), BandKind::PageFooter},
        {QStringLiteral("report-footer"), BandKind::ReportFooter},
    };
    return kinds;
}

void readPage(Statement& s, Layout& layout) {
    if (auto size = s.take(QStringLiteral("size"))) {
        static const std::map<QString, QPageSize::PageSizeId> sizes{
            {QStringLiteral("A4"), QPageSize::A4},
            {QStringLiteral("A3"), QPageSize::A3},
            {QStringLiteral("A5"), QPageSize::A5},
            {QStringLiteral("Letter"), QPageSize::Letter},
            {QStringLiteral("Legal"), QPageSize::Legal},
        };
        const auto it = sizes.find(*size);
        if (it == sizes.end())
            s.fail(QStringLiteral("unknown page size \"%1\" (A4, A3, A5, Letter or Legal)")
                       .arg(*size));
        layout.pageSize = QPageSize(it->second);
    }
    if (auto o = s.take(QStringLiteral("orientation"))) {
        if (*o == u"portrait")
            layout.orientation = QPageLayout::Portrait;
        else if (*o == u"landscape")
            layout.orientation = QPageLayout::Landscape;
        else
            s.fail(QStringLiteral("orientation=%1: portrait or landscape").arg(*o));
    }
    QMarginsF& m = layout.margins;
    m.setLeft(s.number(QStringLiteral("left"), m.left()));
    m.setRight(s.number(QStringLiteral("right"), m.right()));
    m.setTop(s.number(QStringLiteral("top"), m.top()));
    m.setBottom(s.number(QStringLiteral("bottom"), m.bottom()));
}

void readFont(Statement& s, FontSpec& font) {
    if (auto family = s.take(QStringLiteral("family"))) font.family = *family;
    font.size = s.number(QStringLiteral("size"), font.size, 1);
    if (s.flag(QStringLiteral("bold"))) font.bold = true;
    if (s.flag(QStringLiteral("italic"))) font.italic = true;
}

// The index of one of the job's DataFiles.
int fileIndex(Statement& s) {
    const double file = s.number(QStringLiteral("file"), 0);
    if (file != static_cast<int>(file) || file > 9)
        s.fail(QStringLiteral("file=%1: a data file index is 0 to 9").arg(file));
    return static_cast<int>(file);
}

void readData(Statement& s, Layout& layout) {
    if (layout.data)
        s.fail(QStringLiteral("a layout has one data statement (line %1)").arg(layout.data->line));
    DataSpec d;
    d.line = s.line();
    d.file = fileIndex(s);
    d.source = s.required(QStringLiteral("source"));
    if (auto order = s.take(QStringLiteral("order")))
        for (const QString& part :
             order->split(QRegularExpression(QStringLiteral("[,\\s]+")), Qt::SkipEmptyParts))
            d.order << part;
    layout.data = d;
}

void readJoin(Statement& s, Layout& layout) {
    if (!layout.data) s.fail(QStringLiteral("a join comes after the data statement"));
    JoinRule j;
    j.line = s.line();
    j.file = fileIndex(s);
    j.source = s.required(QStringLiteral("source"));
    j.key = s.required(QStringLiteral("key"));
    j.field = s.required(QStringLiteral("field"));
    j.as = s.take(QStringLiteral("as")).value_or(QString());
    layout.joins.push_back(std::move(j));
}

void readBand(Statement& s, Layout& layout) {
    const QString word = s.takeWord();
    const auto it = bandKinds().find(word);
    if (it == bandKinds().end())
        s.fail(word.isEmpty() ? QStringLiteral("a band needs its kind, e.g. band detail")
                              : QStringLiteral("unknown band \"%1\"").arg(word));
    Band b;
    b.kind = it->second;
    b.line = s.line();
    b.height = s.number(QStringLiteral("height"), 0);
    const bool grouped = b.kind == BandKind::GroupHeader || b.kind == BandKind::GroupFooter;
    if (grouped) b.field = s.required(QStringLiteral("field"));
    if (b.kind == BandKind::GroupHeader) b.repeat = s.flag(QStringLiteral("repeat"));
    if (b.kind == BandKind::ReportHeader) b.below = s.flag(QStringLiteral("below"));
    for (const Band& other : layout.bands)
        if (other.kind == b.kind && other.field.compare(b.field, Qt::CaseInsensitive) == 0)
            s.fail(QStringLiteral("band %1%2 is already written at line %3")
                       .arg(word, grouped ? QStringLiteral(" field=") + b.field : QString())
                       .arg(other.line));
    if (b.kind == BandKind::GroupFooter && !layout.band(BandKind::GroupHeader, b.field))
        s.fail(QStringLiteral(
                   "group-footer field=%1 comes without a group-header of that field before it")
                   .arg(b.field));
    layout.bands.push_back(std::move(b));
}

Band& currentBand(Statement& s, Layout& layout) {
    if (layout.bands.empty())
        s.fail(QStringLiteral("%1 outside a band: write a band statement first").arg(s.keyword()));
    return layout.bands.back();
}

void readText(Statement& s, Layout& layout) {
    Band& band = currentBand(s, layout);
    TextItem t;
    t.line = s.line();
    t.font = layout.font;
    const double x = s.number(QStringLiteral("x"), 0), y = s.number(QStringLiteral("y"), 0);
    const double w = s.number(QStringLiteral("w"), std::nullopt, 0.1);
    const double h = s.number(QStringLiteral("h"), 0);
    t.box = QRectF(x, y, w, h);
    readFont(s, t.font);
    t.color = s.color(QStringLiteral("color"), t.color);
    if (auto align = s.take(QStringLiteral("align"))) {
        if (*align == u"left")
            t.align = Qt::AlignLeft;
        else if (*align == u"center")
            t.align = Qt::AlignHCenter;
        else if (*align == u"right")
            t.align = Qt::AlignRight;
        else
            s.fail(QStringLiteral("align=%1: left, center or right").arg(*align));
    }
    if (auto overflow = s.take(QStringLiteral("overflow"))) {
        if (*overflow == u"wrap")
            t.wrap = true;
        else if (*overflow != u"ellipsis")
            s.fail(QStringLiteral("overflow=%1: ellipsis or wrap").arg(*overflow));
    }
    try {
        t.pieces = parseTextTemplate(s.required(QStringLiteral("value")));
    } catch (const std::invalid_argument& e) {
        s.fail(QStringLiteral("value: %1").arg(QString::fromStdString(e.what())));
    }
    t.when = s.take(QStringLiteral("when")).value_or(QString());
    s.done();
    band.texts.push_back(std::move(t));
}

void readLine(Statement& s, Layout& layout) {
    Band& band = currentBand(s, layout);
    LineItem l;
    l.line = s.line();
    l.from = QPointF(s.number(QStringLiteral("x1")), s.number(QStringLiteral("y1")));
    l.to = QPointF(s.number(QStringLiteral("x2")), s.number(QStringLiteral("y2")));
    l.width = s.number(QStringLiteral("width"), l.width, 0.01);
    l.color = s.color(QStringLiteral("color"), l.color);
    l.when = s.take(QStringLiteral("when")).value_or(QString());
    s.done();
    band.lines.push_back(l);
}

void readBox(Statement& s, Layout& layout) {
    Band& band = currentBand(s, layout);
    BoxItem b;
    b.line = s.line();
    const double x = s.number(QStringLiteral("x"), 0), y = s.number(QStringLiteral("y"), 0);
    b.box = QRectF(x, y, s.number(QStringLiteral("w"), std::nullopt, 0.01),
                   s.number(QStringLiteral("h"), std::nullopt, 0.01));
    b.fill = s.color(QStringLiteral("fill"), QColor());
    b.border = s.number(QStringLiteral("border"), 0);
    b.color = s.color(QStringLiteral("color"), b.color);
    if (!b.fill.isValid() && b.border == 0) s.fail(QStringLiteral("a box needs fill= or border="));
    b.when = s.take(QStringLiteral("when")).value_or(QString());
    s.done();
    band.boxes.push_back(b);
}

void readQr(Statement& s, Layout& layout) {
    Band& band = currentBand(s, layout);
    QrItem q;
    q.line = s.line();
    q.at = QPointF(s.number(QStringLiteral("x"), 0), s.number(QStringLiteral("y"), 0));
    q.size = s.number(QStringLiteral("size"), std::nullopt, 5);
    try {
        q.pieces = parseTextTemplate(s.required(QStringLiteral("value")));
    } catch (const std::invalid_argument& e) {
        s.fail(QStringLiteral("value: %1").arg(QString::fromStdString(e.what())));
    }
    for (const TextPiece& p : q.pieces)
        if (p.kind != TextPiece::Kind::Literal && p.kind != TextPiece::Kind::Formula)
            s.fail(QStringLiteral("a QR code holds literal text and formulas only"));
    q.when = s.take(QStringLiteral("when")).value_or(QString());
    s.done();
    band.qrs.push_back(std::move(q));
}

}  // namespace

const Band* Layout::band(BandKind kind, const QString& field) const {
    for (const Band& b : bands)
        if (b.kind == kind && b.field.compare(field, Qt::CaseInsensitive) == 0) return &b;
    return nullptr;
}

QStringList Layout::groupFields() const {
    QStringList fields;
    for (const Band& b : bands)
        if (b.kind == BandKind::GroupHeader) fields << b.field;
    return fields;
}

Layout parseLayout(const QString& text, const QString& path) {
    Layout layout;
    layout.path = path;
    const QStringList lines = splitLines(text);
    for (int i = 0; i < lines.size(); ++i) {
        Statement s(path, i + 1);
        if (!s.read(lines[i])) continue;
        const QString& k = s.keyword();
        if (k == u"page") {
            readPage(s, layout);
            s.done();
        } else if (k == u"font") {
            readFont(s, layout.font);
            s.done();
        } else if (k == u"data") {
            readData(s, layout);
            s.done();
        } else if (k == u"join") {
            readJoin(s, layout);
            s.done();
        } else if (k == u"band") {
            readBand(s, layout);
            s.done();
        } else if (k == u"text") {
            readText(s, layout);
        } else if (k == u"line") {
            readLine(s, layout);
        } else if (k == u"box") {
            readBox(s, layout);
        } else if (k == u"qr") {
            readQr(s, layout);
        } else {
            s.fail(QStringLiteral("unknown statement \"%1\" (page, font, data, join, band, text, "
                                  "line, box or qr)")
                       .arg(k));
        }
    }
    return layout;
}

Layout readLayout(const QString& path) {
    if (!QFileInfo(path).isFile())
        throw ReportError(QStringLiteral("%1: report layout not found").arg(path));
    const auto text = readTextFile(path);
    if (!text) throw ReportError(QStringLiteral("%1: report layout cannot be read").arg(path));
    return parseLayout(*text, path);
}

}  // namespace tallora::report
