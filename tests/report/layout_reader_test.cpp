// The text form of layouts: what a well-formed file gives.
#include "report/layout_reader.h"
#include "report/report_error.h"
#include "report_fixture.h"

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::report;
using tallora::testing::sourcePath;

namespace {

Layout parse(const QString& text) {
    return parseLayout(text, QStringLiteral("t.rpt"));
}

QString errorOf(const QString& text) {
    try {
        parse(text);
    } catch (const ReportError& e) {
        return e.message();
    }
    return {};
}

}  // namespace

TEST(LayoutReader, ReadsPageDataBandsAndItems) {
    const Layout l = parse(QStringLiteral(
        "# a comment\n"
        "page size=A4 orientation=landscape left=20 right=10 top=8 bottom=9\n"
        "font family=\"DejaVu Sans Mono\" size=8\n"
        "data file=3 source=SelFras order=\"+data, -Ordre\"\n"
        "\n"
        "band group-header field=Client height=6 repeat  # after a blank, a comment\n"
        "  text x=1 y=2 w=30 h=4 size=12 bold italic color=#336699 align=right overflow=wrap "
        "value=\"Cliente {Client} \"\"{NomClient}\"\" {sum(Total, group)|money} {#page}\"\n"
        "  line x1=0 y1=5 x2=180 y2=5 width=0.5 color=#000080\n"
        "  box x=0 y=0 w=180 h=6 fill=#eeeeee border=0.1\n"
        "band detail height=5\n"
        "band group-footer field=client\n"));
    EXPECT_EQ(l.pageSize.id(), QPageSize::A4);
    EXPECT_EQ(l.orientation, QPageLayout::Landscape);
    EXPECT_EQ(l.margins, QMarginsF(20, 8, 10, 9));
    EXPECT_EQ(l.font, (FontSpec{QStringLiteral("DejaVu Sans Mono"), 8, false, false}));
    ASSERT_TRUE(l.data.has_value());
    EXPECT_EQ(l.data->file, 3);
    EXPECT_EQ(l.data->source, QStringLiteral("SelFras"));
    EXPECT_EQ(l.data->order, (QStringList{QStringLiteral("+data"), QStringLiteral("-Ordre")}));
    ASSERT_EQ(l.bands.size(), 3u);
    const Band& g = l.bands[0];
    EXPECT_EQ(g.kind, BandKind::GroupHeader);
    EXPECT_EQ(g.line, 6);
    EXPECT_TRUE(g.repeat);
    EXPECT_EQ(l.groupFields(), QStringList{QStringLiteral("Client")});
    ASSERT_EQ(g.texts.size(), 1u);
    const TextItem& t = g.texts[0];
    EXPECT_EQ(t.box, QRectF(1, 2, 30, 4));
    EXPECT_EQ(t.font, (FontSpec{QStringLiteral("DejaVu Sans Mono"), 12, true, true}));
    EXPECT_EQ(t.color, QColor(0x33, 0x66, 0x99));
    EXPECT_EQ(t.align, Qt::AlignRight);
    EXPECT_TRUE(t.wrap);
    using K = TextPiece::Kind;
    ASSERT_EQ(t.pieces.size(), 8u);
    EXPECT_EQ(t.pieces[0].text, QStringLiteral("Cliente "));
    EXPECT_EQ(t.pieces[1].kind, K::Field);
    EXPECT_EQ(t.pieces[2].text, QStringLiteral(" \""));
    EXPECT_EQ(t.pieces[3].text, QStringLiteral("NomClient"));
    EXPECT_EQ(t.pieces[5].kind, K::Sum);
    EXPECT_EQ(t.pieces[5].text, QStringLiteral("Total"));
    EXPECT_EQ(t.pieces[5].scope, SumScope::Group);
    EXPECT_EQ(t.pieces[5].format, ValueFormat::Money);
    EXPECT_EQ(t.pieces[7].kind, K::PageNumber);
    ASSERT_EQ(g.lines.size(), 1u);
    EXPECT_EQ(g.lines[0].width, 0.5);
    ASSERT_EQ(g.boxes.size(), 1u);
    EXPECT_EQ(g.boxes[0].fill, QColor(0xee, 0xee, 0xee));
    EXPECT_EQ(l.bands[2].kind, BandKind::GroupFooter);
}

TEST(LayoutReader, ValuesInBracesAndFormats) {
    const Layout l = parse(QStringLiteral(
        "band report-footer\n"
        "text w=10 value=\"{@lbl_fecha}{{x}}{count(page)}{#pages}{data|date}{q|quantity}{sum(q, "
        "carried)}\"\n"));
    const auto& p = l.bands[0].texts[0].pieces;
    ASSERT_EQ(p.size(), 7u);
    EXPECT_EQ(p[0].kind, TextPiece::Kind::Formula);
    EXPECT_EQ(p[0].text, QStringLiteral("lbl_fecha"));
    EXPECT_EQ(p[1].text, QStringLiteral("{x}"));
    EXPECT_EQ(p[2].kind, TextPiece::Kind::Count);
    EXPECT_EQ(p[2].scope, SumScope::Page);
    EXPECT_EQ(p[3].kind, TextPiece::Kind::PageCount);
    EXPECT_EQ(p[4].format, ValueFormat::Date);
    EXPECT_EQ(p[5].format, ValueFormat::Quantity);
    EXPECT_EQ(p[6].scope, SumScope::Carried);
    EXPECT_EQ(p[6].format, ValueFormat::Plain);
}

TEST(LayoutReader, FaultsNameTheLine) {
    EXPECT_EQ(errorOf(QStringLiteral("page size=B7")),
              QStringLiteral("t.rpt:1: unknown page size \"B7\" (A4, A3, A5, Letter or Legal)"));
    EXPECT_EQ(errorOf(QStringLiteral("\n\ndata file=12 source=x")),
              QStringLiteral("t.rpt:3: file=12: a data file index is 0 to 9"));
    EXPECT_EQ(errorOf(QStringLiteral("band detail\nbox x=0 y=0 w=1 h=1")),
              QStringLiteral("t.rpt:2: a box needs fill= or border="));
    EXPECT_EQ(errorOf(QStringLiteral("band detail\ntext w=5 bold=yes value=\"\"")),
              QStringLiteral("t.rpt:2: \"bold\" is a flag and takes no value"));
    EXPECT_EQ(errorOf(QStringLiteral("band detail\ntext w=5 color=red value=\"\"")),
              QStringLiteral("t.rpt:2: color=red: a colour is written #rrggbb"));
    EXPECT_EQ(errorOf(QStringLiteral("band detail\ntext w=5 value=\"{sum(a)}\"")),
              QStringLiteral("t.rpt:2: value: \"{sum(a)}\": write sum(field, scope)"));
    EXPECT_EQ(errorOf(QStringLiteral("band detail\ntext w=5 value=\"a } b\"")),
              QStringLiteral("t.rpt:2: value: a lone '}': write }} for a brace"));
    EXPECT_EQ(errorOf(QStringLiteral("band group-header height=5")),
              QStringLiteral("t.rpt:1: \"field\" is missing"));
    EXPECT_EQ(errorOf(QStringLiteral("band")),
              QStringLiteral("t.rpt:1: a band needs its kind, e.g. band detail"));
    EXPECT_EQ(errorOf(QStringLiteral("band detail height=-2")),
              QStringLiteral("t.rpt:1: height=-2: at least 0 is expected"));
}

TEST(LayoutReader, TheDocumentedExampleReads) {
    const auto header = readTextFile(sourcePath(QStringLiteral("src/report/layout_reader.h")));
    ASSERT_TRUE(header.has_value());
    QStringList example;
    bool inside = false;
    for (const QString& line : splitLines(*header)) {
        if (line.startsWith(QStringLiteral("// A complete layout:")))
            inside = true;
        else if (inside && line.startsWith(QStringLiteral("// Faults")))
            break;
        else if (inside && line.startsWith(QStringLiteral("//")))
            example << line.mid(2);
    }
    ASSERT_GT(example.size(), 15);
    const Layout l = parse(example.join(u'\n'));
    EXPECT_EQ(l.bands.size(), 6u);
    EXPECT_EQ(l.groupFields(), QStringList{QStringLiteral("provincia")});
}

TEST(LayoutReader, TheInstalledListingsRead) {
    for (const char* name :
         {"cli_dom.rpt", "cli_con.rpt", "pro_dom.rpt", "pro_con.rpt", "teso_cli_2.rpt",
          "teso_cli_3.rpt", "teso_pro_2.rpt", "teso_pro_3.rpt", "llibrei1.rpt", "llibrei2.rpt",
          "llibrer1.rpt", "llibred1.rpt", "llibred3.rpt", "llibrem2.rpt", "llibrer2.rpt",
          "llibre_s.rpt", "500000.rpt", "llisvend.rpt", "llisven2.rpt"}) {
        const Layout l =
            readLayout(sourcePath(QStringLiteral("resources/reports/")) + QLatin1String(name));
        ASSERT_TRUE(l.data.has_value()) << name;
        EXPECT_TRUE(l.band(BandKind::ColumnHeader)) << name;
        EXPECT_TRUE(l.band(BandKind::PageFooter)) << name;
    }
}
