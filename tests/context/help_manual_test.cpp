// The manual as installed: every page the help map leads to exists in both languages, every
// link and image of every page resolves, and each index links every page.
#include "context/help_map.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

using namespace tallora;

namespace {

const QString kResources = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");

struct Language {
    const char* folder;
    const char* lang;
};
const Language kLanguages[] = {{"esp_help", "es"}, {"cat_help", "ca"}};

QString readAll(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll());
}

QStringList htmlFiles(const QString& folder) {
    QStringList files;
    QDirIterator it(folder, {QStringLiteral("*.html")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) files << it.next();
    return files;
}

// The relative targets of href= and src= in `html`, without their #anchor.
QStringList localLinks(const QString& html) {
    static const QRegularExpression link(
        QStringLiteral(R"re((?:href|src)="([^"#]*)(?:#[^"]*)?")re"));
    QStringList targets;
    for (auto m = link.globalMatch(html); m.hasNext();) {
        const QString target = m.next().captured(1);
        if (target.isEmpty() || target.contains(QLatin1Char(':')))
            continue;  // anchors, http:, mailto:
        targets << target;
    }
    return targets;
}

}  // namespace

TEST(HelpManual, EveryPageOfTheMapExistsInBothLanguages) {
    ASSERT_GT(helpPages().size(), 15);
    for (const Language& language : kLanguages)
        for (const QString& page : helpPages())
            EXPECT_TRUE(QFileInfo::exists(kResources + language.folder + '/' + page))
                << language.folder << '/' << page.toStdString();
}

TEST(HelpManual, EveryLinkAndImageResolves) {
    for (const Language& language : kLanguages) {
        const QStringList files = htmlFiles(kResources + language.folder);
        ASSERT_FALSE(files.isEmpty()) << language.folder;
        for (const QString& file : files) {
            const QString html = readAll(file);
            EXPECT_TRUE(
                html.contains(QStringLiteral("lang=\"%1\"").arg(QLatin1String(language.lang))))
                << file.toStdString();
            EXPECT_TRUE(html.contains(QStringLiteral("<meta charset=\"utf-8\">")))
                << file.toStdString();
            const QDir here = QFileInfo(file).dir();
            for (const QString& target : localLinks(html))
                EXPECT_TRUE(QFileInfo::exists(here.filePath(target)))
                    << file.toStdString() << " -> " << target.toStdString();
        }
    }
}

TEST(HelpManual, EachIndexLinksEveryPage) {
    for (const Language& language : kLanguages) {
        const QString folder = kResources + language.folder + '/';
        QSet<QString> linked;
        for (const QString& target : localLinks(readAll(folder + "indice.html")))
            linked.insert(QDir::cleanPath(target));
        for (const QString& page : helpPages()) {
            if (page == QLatin1String("indice.html")) continue;
            EXPECT_TRUE(linked.contains(page))
                << language.folder << " lacks " << page.toStdString();
        }
    }
}

TEST(HelpManual, APageOfABuiltScreenShowsIt) {
    // A page for a screen the program shows carries its screenshot.
    for (const Language& language : kLanguages)
        for (const char* page :
             {"2/2.html", "2/2_4.html", "2/2_5.html", "3/3.html", "4/4_2.html", "4/4_3.html",
              "4/4_4.html", "4/4_5.html", "4/4_6.html", "4/4_7.html", "5/5_1.html", "9/9_1.html",
              "10/10_3_2.html", "10/10_3_5.html", "10/10_4_1.html", "10/10_5_1.html"})
            EXPECT_TRUE(readAll(kResources + language.folder + '/' + page)
                            .contains("<img class=\"pantalla\""))
                << language.folder << '/' << page;
}
