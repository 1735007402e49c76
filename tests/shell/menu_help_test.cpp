#include "context/help_map.h"
#include "context/messages.h"
#include "shell/menu_tree.h"
#include "start_fixture.h"

#include <algorithm>
#include <set>

using namespace tallora;
using namespace tallora::shell;
using namespace tallora::testing;

TEST(HelpMap, KeysLeadToTheirPages) {
    EXPECT_EQ(helpPage("bloqmeses"), "9/9_1.html");
    EXPECT_EQ(helpPage("empresas"), "2/2.html");
    EXPECT_EQ(helpPage("Ejercicios"), "3/3.html");
    EXPECT_EQ(helpPage("opciones"), "2/2_5.html");
    EXPECT_EQ(helpPage("CarteraCobra"), "10/10_3_5.html");
    EXPECT_EQ(helpPage("tesoreria_OtrasCuentas"), "10/10_5_1.html");
    EXPECT_EQ(helpPage("TesoreriaOtros"), "10/10_5_3.html");
    for (const QString key : {"consIN", "consOUT", "consSUPL"})
        EXPECT_EQ(helpPage(key), "5/5_1.html");
}

TEST(HelpMap, AnyOtherKeyLeadsToTheIndex) {
    EXPECT_EQ(helpPage("indice"), "indice.html");
    EXPECT_EQ(helpPage("nobody"), "indice.html");
    EXPECT_EQ(helpPage(QString()), "indice.html");
    // Keys are matched as written.
    EXPECT_EQ(helpPage("EMPRESAS"), "indice.html");
}

TEST(HelpMap, APageNotInstalledFallsBackToTheIndex) {
    WorkingContext ctx;
    ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
    const QString index = ctx.resourcesDir + "esp_help/indice.html";
    ASSERT_TRUE(QFileInfo::exists(index));
    EXPECT_EQ(helpPath(ctx, "indice"), index);
    QTemporaryDir dir;
    ctx.resourcesDir = dir.path();
    writeRaw(dir.filePath("esp_help/2/2.html"), "<html/>");
    EXPECT_EQ(helpPath(ctx, "empresas"), dir.filePath("esp_help/2/2.html"));
    EXPECT_EQ(helpPath(ctx, "Ejercicios"), dir.filePath("esp_help/indice.html"));
}

TEST(HelpMap, TheLanguagePicksTheFolderWithSpanishBehindIt) {
    QTemporaryDir dir;
    WorkingContext ctx;
    ctx.resourcesDir = dir.path();
    ctx.Idioma = "cat";
    writeRaw(dir.filePath("esp_help/indice.html"), "<html/>");
    writeRaw(dir.filePath("esp_help/2/2.html"), "<html/>");
    writeRaw(dir.filePath("esp_help/3/3.html"), "<html/>");
    writeRaw(dir.filePath("cat_help/indice.html"), "<html/>");
    writeRaw(dir.filePath("cat_help/2/2.html"), "<html/>");
    EXPECT_EQ(helpPath(ctx, "empresas"), dir.filePath("cat_help/2/2.html"));
    // Not yet translated: the Spanish page rather than the index.
    EXPECT_EQ(helpPath(ctx, "Ejercicios"), dir.filePath("esp_help/3/3.html"));
    EXPECT_EQ(helpPath(ctx, "bloqmeses"), dir.filePath("cat_help/indice.html"));
    EXPECT_EQ(helpPath(ctx, "nobody"), dir.filePath("cat_help/indice.html"));
    ctx.Idioma = "esp";
    EXPECT_EQ(helpPath(ctx, "empresas"), dir.filePath("esp_help/2/2.html"));
    EXPECT_EQ(helpPath(ctx, "bloqmeses"), dir.filePath("esp_help/indice.html"));
}

namespace {

const QStringList kTreasury{
    "mnu_Tesoreria", "mnu_movimientos", "mnuConsOtros", "mnu_contrapartidas", "msn", "mns2",
    "mssnu"};

}  // namespace

TEST(MenuTree, TreasuryEntriesHideWithTreasuryOff) {
    WorkingContext ctx;
    ctx.ModeExercici = "FACTURES";
    ctx.Tesoreria = false;
    for (const QString& name : kTreasury) {
        ASSERT_NE(findMenuEntry(name), nullptr) << name.toStdString();
        EXPECT_FALSE(menuEntryVisible(ctx, name)) << name.toStdString();
    }
    for (const auto& entry : menuTree()) {
        if (!kTreasury.contains(entry.name)) {
            EXPECT_TRUE(menuEntryVisible(ctx, entry.name)) << entry.name.toStdString();
        }
    }
    ctx.Tesoreria = true;
    for (const auto& entry : menuTree())
        EXPECT_TRUE(menuEntryVisible(ctx, entry.name)) << entry.name.toStdString();
}

TEST(MenuTree, CustomersHideInAShopExercise) {
    WorkingContext ctx;
    ctx.Tesoreria = true;
    ctx.ModeExercici = "TICKETS";
    EXPECT_FALSE(menuEntryVisible(ctx, "Clients"));
    EXPECT_TRUE(menuEntryVisible(ctx, "Proveidorsbd"));
    EXPECT_TRUE(menuEntryVisible(ctx, "frasemes"));
    ctx.ModeExercici = "FACTURES";
    EXPECT_TRUE(menuEntryVisible(ctx, "Clients"));
}

TEST(MenuTree, EveryCaptionIsAMessageOfBothLanguages) {
    const auto& catalogue = MessageCatalogue::builtIn();
    WorkingContext esp;
    WorkingContext cat;
    ASSERT_TRUE(cat.setIdioma("cat"));
    for (const auto& entry : menuTree()) {
        if (entry.kind == MenuEntry::Kind::Separator) continue;
        if (entry.caption == 0) {
            EXPECT_FALSE(entry.fixedCaption.isEmpty()) << entry.name.toStdString();
            continue;
        }
        EXPECT_TRUE(catalogue.contains(20000 + entry.caption)) << entry.caption;
        EXPECT_TRUE(catalogue.contains(10000 + entry.caption)) << entry.caption;
        EXPECT_EQ(menuCaption(esp, entry), catalogue.text(20000 + entry.caption));
        EXPECT_EQ(menuCaption(cat, entry), catalogue.text(10000 + entry.caption));
    }
    for (const auto& button : toolBar()) {
        if (button.key.isEmpty()) continue;
        EXPECT_TRUE(catalogue.contains(20000 + button.caption)) << button.caption;
        EXPECT_TRUE(catalogue.contains(10000 + button.caption)) << button.caption;
    }
    EXPECT_EQ(menuCaption(esp, *findMenuEntry("Mnu1")), "&Archivo");
    EXPECT_EQ(menuCaption(esp, *findMenuEntry("mnuConfiguracio")), "OPCIONES");
}

TEST(MenuTree, EntriesAreUniqueAndEachBelongsToAMenuBeforeIt) {
    std::set<QString> names;
    QStringList menus;
    for (const auto& entry : menuTree()) {
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name.toStdString();
        if (entry.kind == MenuEntry::Kind::Menu) {
            EXPECT_TRUE(entry.menu.isEmpty());
            menus << entry.name;
        } else {
            EXPECT_EQ(entry.menu, menus.value(menus.size() - 1)) << entry.name.toStdString();
        }
    }
    EXPECT_EQ(menus, (QStringList{"Mnu1", "Mnu2", "Mnu3", "Mnu4", "mnu_Tesoreria", "Mnu5", "Mnu6",
                                  "Mnu7"}));
    EXPECT_EQ(findMenuEntry("nowhere"), nullptr);
    EXPECT_EQ(findMenuEntry("sortir")->caption, 227);
    EXPECT_EQ(findMenuEntry("contingut")->caption, 6630);
}

TEST(MenuTree, TheToolBarHasItsButtonsByPosition) {
    const auto& buttons = toolBar();
    ASSERT_EQ(buttons.size(), 9u);
    for (std::size_t i = 0; i < buttons.size(); ++i)
        EXPECT_EQ(buttons[i].position, static_cast<int>(i + 1));
    for (int separator : {4, 6, 8}) EXPECT_TRUE(buttons[separator - 1].key.isEmpty());
    EXPECT_EQ(buttons[0].caption, 228);
    EXPECT_EQ(buttons[0].menuEntry, "Clients");
    EXPECT_EQ(buttons[4].menuEntry, "frasreb");
    EXPECT_EQ(buttons[6].menuEntry, "frasemes");
    EXPECT_EQ(buttons[8].caption, 233);
    EXPECT_TRUE(buttons[8].menuEntry.isEmpty());
    for (const auto& b : buttons) {
        if (!b.menuEntry.isEmpty()) {
            EXPECT_NE(findMenuEntry(b.menuEntry), nullptr) << b.menuEntry.toStdString();
        }
    }
}

TEST(MenuTree, TheEntriesComeInTheirOrderWithTheirCaptions) {
    const std::vector<std::pair<QString, int>> expected{{"Mnu1", 201},
                                                        {"empresa", 202},
                                                        {"Nova", 203},
                                                        {"mnuEditarEmpresa", 6762},
                                                        {"mnubloc", 205},
                                                        {"mnuimportar", 0},
                                                        {"mnuVerifactu", 0},
                                                        {"mnuConfiguracio", 208},
                                                        {"mnuAsistente", 6951},
                                                        {"mnuRepara", 6763},
                                                        {"mnuCompactar", 6764},
                                                        {"sortir", 227},
                                                        {"Mnu2", 209},
                                                        {"Clients", 210},
                                                        {"Proveidorsbd", 211},
                                                        {"Comptesbd", 212},
                                                        {"mnu_contrapartidas", 6648},
                                                        {"mnuReferencias", 7006},
                                                        {"Mnu3", 213},
                                                        {"frasemes", 214},
                                                        {"frasreb", 215},
                                                        {"MnuSuplidos", 6503},
                                                        {"mnu_movimientos", 6650},
                                                        {"Mnu4", 216},
                                                        {"consing", 217},
                                                        {"consdes", 218},
                                                        {"mnuconsSupl", 6505},
                                                        {"mnuconsPre", 6849},
                                                        {"mnuconsPro", 6850},
                                                        {"mnuconsBor", 6851},
                                                        {"mnuconsAlb", 7017},
                                                        {"mnuConsOtros", 6744},
                                                        {"mnu_Tesoreria", 6643},
                                                        {"mnu_cuentas", 6647},
                                                        {"mnu_extractos", 6651},
                                                        {"mnuNorma43", 0},
                                                        {"mnucartera", 6662},
                                                        {"mnu_entradas", 6649},
                                                        {"mnu_salidas", 6652},
                                                        {"Mnu5", 219},
                                                        {"mnullibres", 220},
                                                        {"mnuModelos", 0},
                                                        {"Mnu6", 221},
                                                        {"Mnu7", 222},
                                                        {"contingut", 6630},
                                                        {"Sobreombrelsoft", 0}};
    std::vector<std::pair<QString, int>> actual;
    for (const auto& entry : menuTree())
        if (entry.kind != MenuEntry::Kind::Separator)
            actual.emplace_back(entry.name, entry.caption);
    EXPECT_EQ(actual, expected);
}

TEST(MenuTree, ACaptionOfOurOwnComesInTheProgramsLanguage) {
    WorkingContext ctx;
    const auto entry = std::find_if(menuTree().begin(), menuTree().end(),
                                    [](const MenuEntry& e) { return e.name == "mnuNorma43"; });
    ASSERT_NE(entry, menuTree().end());
    EXPECT_EQ(menuCaption(ctx, *entry), QString::fromUtf8("Extracto del banco (Norma 43)..."));
    ctx.setIdioma("cat");
    EXPECT_EQ(menuCaption(ctx, *entry), QString::fromUtf8("Extracte del banc (Norma 43)..."));
}
