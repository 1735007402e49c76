#include "paginator.h"

#include "band_values.h"

#include "report_error.h"

namespace tallora::report {
namespace {

// Stands for the number of pages until every page is laid out.
constexpr QChar kPageCountMark(0xE000);

class Paginator {
public:
    Paginator(CompiledLayout& layout, const ReportRows& rows, const PageGeometry& geometry,
              const FontBook& fonts, const WorkingContext& ctx, const QString& path)
        : l_(layout),
          rows_(rows),
          g_(geometry),
          fonts_(fonts),
          ctx_(ctx),
          path_(path),
          values_(layout, rows, ctx),
          n_(rows.rowCount()),
          levels_(values_.levels()) {
        footerHeight_ = l_.pageFooter ? fixedHeight(*l_.pageFooter) : 0;
    }

    RenderedReport run() {
        startPage(0);
        for (int r = 0; r < n_; ++r) {
            const int changed = r == 0 ? 0 : values_.changeLevel(r);
            if (r > 0)
                for (int level = levels_ - 1; level >= changed; --level) groupFooter(level, r - 1);
            headersAndDetail(r, changed);
        }
        if (n_ > 0)
            for (int level = levels_ - 1; level >= 0; --level) groupFooter(level, n_ - 1);
        if (l_.reportFooter) place(*l_.reportFooter, {n_ - 1, innermost()}, 0);
        finishPage();
        resolvePageCounts();
        out_.pageLayout = g_.pageLayout;
        out_.scale = g_.scale;
        out_.fonts = fonts_.fonts();
        return std::move(out_);
    }

private:
    using Where = BandPlace;
    struct Instance {
        const CompiledBand* band = nullptr;
        Where where;
        double height = 0;
        std::vector<TextRun> texts;
        std::vector<std::pair<QString, const CompiledText*>>
            pageCounts;  // texts waiting for #pages
    };
    struct WaitingText {
        int page;
        double top;
        QString text;
        const CompiledText* item;
    };

    int innermost() const { return levels_ - 1; }

    QString evaluate(const CompiledText& t, const Where& where) const {
        QString s;
        for (const CompiledPiece& p : t.pieces) {
            if (p.kind == TextPiece::Kind::PageNumber)
                s += QString::number(out_.pages.size());
            else if (p.kind == TextPiece::Kind::PageCount)
                s += kPageCountMark;
            else
                s += values_.text(p, where, {pageFirstRow_, printed_});
        }
        return s;
    }

    Instance build(const CompiledBand& band, const Where& where) {
        Instance in;
        in.band = &band;
        in.where = where;
        in.height = band.minHeight;
        for (const CompiledText& t : band.texts) {
            double bottom = 0;
            if (t.usesPageCount) {
                in.pageCounts.emplace_back(evaluate(t, where), &t);
                bottom = t.box.top() +
                         std::max(t.box.height(), fonts_.metrics(t.style.font).lineSpacing());
            } else if (!t.changes) {
                if (!t.fixedRuns) {
                    t.fixedRuns.emplace();
                    t.fixedBottom =
                        layText(evaluate(t, where), t.box, t.style, fonts_, *t.fixedRuns);
                }
                in.texts.insert(in.texts.end(), t.fixedRuns->begin(), t.fixedRuns->end());
                bottom = t.fixedBottom;
            } else {
                bottom = layText(evaluate(t, where), t.box, t.style, fonts_, in.texts);
            }
            in.height = std::max(in.height, bottom);
        }
        return in;
    }

    double fixedHeight(const CompiledBand& band) { return build(band, {}).height; }

    void put(const Instance& in, double top) {
        RenderedPage& page = out_.pages.back();
        for (const BoxRun& b : in.band->boxes)
            page.boxes.push_back({b.box.translated(0, top), b.fill, b.border, b.color});
        for (const LineRun& l : in.band->lines)
            page.lines.push_back(
                {l.from + QPointF(0, top), l.to + QPointF(0, top), l.width, l.color});
        for (const TextRun& t : in.texts)
            page.texts.push_back({t.baseline + QPointF(0, top), t.text, t.font, t.color});
        for (const auto& [text, item] : in.pageCounts)
            waiting_.push_back({static_cast<int>(out_.pages.size() - 1), top, text, item});
    }

    double bodyBottom() const { return g_.contentHeight - footerHeight_; }

    void tooTall(const CompiledBand& band) const {
        throw ReportError(
            QStringLiteral("%1:%2: the band is taller than the room a page leaves for it")
                .arg(path_)
                .arg(band.line));
    }

    // Places a band at the current position, first on a new page when it does not fit.
    void place(const CompiledBand& band, const Where& where, int continuing) {
        Instance in = build(band, where);
        if (y_ + in.height > bodyBottom() && !bodyEmpty_) {
            newPage(continuing);
            in = build(band, where);
        }
        if (y_ + in.height > bodyBottom()) tooTall(band);
        put(in, y_);
        y_ += in.height;
        bodyEmpty_ = false;
    }

    // The group headers that open at row r and its detail, kept on one page.
    void headersAndDetail(int r, int changed) {
        const auto buildAll = [&] {
            std::vector<Instance> all;
            for (int level = changed; level < levels_; ++level)
                if (l_.groupHeaders[level])
                    all.push_back(build(*l_.groupHeaders[level], {r, level}));
            printed_ = r + 1;
            if (l_.detail) all.push_back(build(*l_.detail, {r, innermost()}));
            printed_ = r;
            return all;
        };
        std::vector<Instance> all = buildAll();
        double total = 0;
        for (const Instance& in : all) total += in.height;
        if (y_ + total > bodyBottom() && !bodyEmpty_) {
            newPage(changed);
            all = buildAll();
        }
        for (Instance& in : all) {
            if (y_ + in.height > bodyBottom()) {
                if (bodyEmpty_) tooTall(*in.band);
                newPage(levels_);
                printed_ = in.band->kind == BandKind::Detail ? r + 1 : r;
                in = build(*in.band, in.where);
                printed_ = r;
            }
            put(in, y_);
            y_ += in.height;
            bodyEmpty_ = false;
        }
        printed_ = r + 1;
    }

    void groupFooter(int level, int lastRow) {
        if (l_.groupFooters[level]) place(*l_.groupFooters[level], {lastRow, level}, level + 1);
    }

    void startPage(int continuing) {
        out_.pages.emplace_back();
        y_ = 0;
        pageFirstRow_ = printed_;
        bodyEmpty_ = true;
        const int next = printed_ < n_ ? printed_ : n_ - 1;
        const auto header = [&](const CompiledBand& band, const Where& where) {
            const Instance in = build(band, where);
            put(in, y_);
            y_ += in.height;
        };
        const bool first = out_.pages.size() == 1 && l_.reportHeader;
        if (first && !l_.reportHeaderBelow) header(*l_.reportHeader, {next, innermost()});
        if (l_.pageHeader) header(*l_.pageHeader, {next, innermost()});
        if (l_.columnHeader) header(*l_.columnHeader, {next, innermost()});
        if (first && l_.reportHeaderBelow) header(*l_.reportHeader, {next, innermost()});
        for (int level = 0; level < continuing && level < levels_; ++level)
            if (l_.groupRepeats[level] && l_.groupHeaders[level])
                header(*l_.groupHeaders[level], {printed_ - 1, level});
        if (y_ > bodyBottom())
            throw ReportError(
                QStringLiteral("%1: the headers and the page footer leave no room on the page")
                    .arg(path_));
    }

    void finishPage() {
        if (!l_.pageFooter) return;
        const Instance in = build(*l_.pageFooter, {printed_ - 1, innermost()});
        put(in, g_.contentHeight - footerHeight_);
    }

    void newPage(int continuing) {
        finishPage();
        startPage(continuing);
    }

    void resolvePageCounts() {
        const QString pages = QString::number(out_.pages.size());
        for (WaitingText& w : waiting_) {
            std::vector<TextRun> runs;
            CompiledText item = *w.item;
            item.style.wrap = false;
            layText(w.text.replace(kPageCountMark, pages), item.box, item.style, fonts_, runs);
            for (TextRun& t : runs) {
                t.baseline += QPointF(0, w.top);
                out_.pages[w.page].texts.push_back(std::move(t));
            }
        }
    }

    CompiledLayout& l_;
    const ReportRows& rows_;
    const PageGeometry& g_;
    const FontBook& fonts_;
    const WorkingContext& ctx_;
    const QString& path_;
    BandValues values_;
    const int n_;
    const int levels_;
    double footerHeight_ = 0;
    RenderedReport out_;
    std::vector<WaitingText> waiting_;
    double y_ = 0;
    int printed_ = 0;
    int pageFirstRow_ = 0;
    bool bodyEmpty_ = true;
};

}  // namespace

RenderedReport paginate(CompiledLayout& layout, const ReportRows& rows,
                        const PageGeometry& geometry, const FontBook& fonts,
                        const WorkingContext& ctx, const QString& layoutPath) {
    return Paginator(layout, rows, geometry, fonts, ctx, layoutPath).run();
}

}  // namespace tallora::report
