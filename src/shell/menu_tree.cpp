#include "menu_tree.h"

#include "context/messages.h"
#include "context/working_context.h"

#include <QStringList>

#include <algorithm>

namespace tallora::shell {
namespace {

using Kind = MenuEntry::Kind;

MenuEntry menu(const char* name, int caption) {
    return {Kind::Menu, name, {}, caption, {}, true};
}
MenuEntry item(const char* parent, const char* name, int caption, bool built = false) {
    return {Kind::Item, name, parent, caption, {}, built};
}
MenuEntry fixed(const char* parent, const char* name, const char* caption, bool built) {
    return {Kind::Item, name, parent, 0, QString::fromUtf8(caption), built};
}
MenuEntry separator(const char* parent, const char* name) {
    return {Kind::Separator, name, parent, 0, {}, true};
}

}  // namespace

const std::vector<MenuEntry>& menuTree() {
    static const std::vector<MenuEntry> entries{
        menu("Mnu1", 201),
        item("Mnu1", "empresa", 202, true),
        item("Mnu1", "Nova", 203, true),
        separator("Mnu1", "sss"),
        item("Mnu1", "mnuEditarEmpresa", 6762, true),
        item("Mnu1", "mnubloc", 205, true),
        separator("Mnu1", "s4"),
        fixed("Mnu1", "mnuimportar", "Importar / Exportar", true),
        fixed("Mnu1", "mnuVerifactu", "VERI*FACTU", true),
        separator("Mnu1", "ssss"),
        item("Mnu1", "mnuConfiguracio", 208, true),
        item("Mnu1", "mnuAsistente", 6951, true),
        separator("Mnu1", "mnusepa"),
        item("Mnu1", "mnuRepara", 6763, true),
        item("Mnu1", "mnuCompactar", 6764, true),
        separator("Mnu1", "mnutt"),
        item("Mnu1", "sortir", 227, true),

        menu("Mnu2", 209),
        item("Mnu2", "Clients", 210, true),
        item("Mnu2", "Proveidorsbd", 211, true),
        separator("Mnu2", "sepbbdd"),
        item("Mnu2", "Comptesbd", 212, true),
        separator("Mnu2", "msn"),
        item("Mnu2", "mnu_contrapartidas", 6648, true),
        separator("Mnu2", "SSE"),
        item("Mnu2", "mnuReferencias", 7006, true),

        menu("Mnu3", 213),
        item("Mnu3", "frasemes", 214, true),
        item("Mnu3", "frasreb", 215, true),
        separator("Mnu3", "s6"),
        item("Mnu3", "MnuSuplidos", 6503, true),
        separator("Mnu3", "mns2"),
        item("Mnu3", "mnu_movimientos", 6650, true),

        menu("Mnu4", 216),
        item("Mnu4", "consing", 217, true),
        item("Mnu4", "consdes", 218, true),
        separator("Mnu4", "mnusepref"),
        item("Mnu4", "mnuconsSupl", 6505, true),
        separator("Mnu4", "s7"),
        item("Mnu4", "mnuconsPre", 6849, true),
        item("Mnu4", "mnuconsPro", 6850, true),
        item("Mnu4", "mnuconsBor", 6851, true),
        item("Mnu4", "mnuconsAlb", 7017, true),
        separator("Mnu4", "mssnu"),
        item("Mnu4", "mnuConsOtros", 6744, true),

        menu("mnu_Tesoreria", 6643),
        item("mnu_Tesoreria", "mnu_cuentas", 6647, true),
        item("mnu_Tesoreria", "mnu_extractos", 6651, true),
        fixed("mnu_Tesoreria", "mnuNorma43",
              "Extracto del banco (Norma 43)...|Extracte del banc (Norma 43)...", true),
        separator("mnu_Tesoreria", "mnuspe"),
        item("mnu_Tesoreria", "mnucartera", 6662, true),
        separator("mnu_Tesoreria", "s8"),
        item("mnu_Tesoreria", "mnu_entradas", 6649, true),
        item("mnu_Tesoreria", "mnu_salidas", 6652, true),

        menu("Mnu5", 219),
        item("Mnu5", "mnullibres", 220, true),
        fixed("Mnu5", "mnuModelos", "Modelos de Hacienda...|Models d'Hisenda...", true),

        menu("Mnu6", 221),

        menu("Mnu7", 222),
        item("Mnu7", "contingut", 6630, true),
        separator("Mnu7", "SSEP"),
        fixed("Mnu7", "Sobreombrelsoft", "Tallora 5 ...", true),
    };
    return entries;
}

const MenuEntry* findMenuEntry(const QString& name) {
    const auto& entries = menuTree();
    const auto it = std::find_if(entries.begin(), entries.end(),
                                 [&](const MenuEntry& e) { return e.name == name; });
    return it == entries.end() ? nullptr : &*it;
}

QString menuCaption(const WorkingContext& ctx, const MenuEntry& entry) {
    if (entry.caption) return Missatge(ctx, entry.caption);
    // A caption of our own carries its Catalan after a bar.
    const qsizetype bar = entry.fixedCaption.indexOf(u'|');
    if (bar < 0) return entry.fixedCaption;
    return fixedText(ctx, entry.fixedCaption.left(bar), entry.fixedCaption.mid(bar + 1));
}

bool menuEntryVisible(const WorkingContext& ctx, const QString& name) {
    static const QStringList treasury{
        "mnu_Tesoreria", "mnu_movimientos", "mnuConsOtros", "mnu_contrapartidas", "msn", "mns2",
        "mssnu"};
    if (!ctx.Tesoreria && treasury.contains(name)) return false;
    if (ctx.ModeExercici == QStringLiteral("TICKETS") && name == QStringLiteral("Clients"))
        return false;
    return true;
}

bool menuEntryAvailable(const WorkingContext& ctx, const MenuEntry& entry) {
    if (!entry.built) return false;
    // Price references live in the billing database, which exists only with billing.
    if (entry.name == QStringLiteral("mnuReferencias")) return ctx.Facturacio;
    // So do the documents that are not invoices.
    static const QStringList documents{"mnuconsPre", "mnuconsPro", "mnuconsBor", "mnuconsAlb"};
    if (documents.contains(entry.name)) return ctx.Facturacio;
    return true;
}

const std::vector<ToolButton>& toolBar() {
    static const std::vector<ToolButton> buttons{
        {1, "Clients", 228, "Clients"},
        {2, "Proveidors", 229, "Proveidorsbd"},
        {3, "Comptes", 230, "Comptesbd"},
        {4, {}, 0, {}},
        {5, "Despeses", 231, "frasreb"},
        {6, {}, 0, {}},
        {7, "Vendes", 232, "frasemes"},
        {8, {}, 0, {}},
        {9, "Ayuda", 233, {}},
    };
    return buttons;
}

}  // namespace tallora::shell
