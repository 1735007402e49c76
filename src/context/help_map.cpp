#include "help_map.h"

#include "file_tree.h"
#include "working_context.h"

#include <QFileInfo>
#include <QHash>

namespace tallora {

namespace {

const QHash<QString, QString>& helpMap() {
    static const QHash<QString, QString> pages{
        {"bloqmeses", "9/9_1.html"},
        {"editaEmpresa", "2/2_4.html"},
        {"CarteraCobra", "10/10_3_5.html"},
        {"libros", "6/6.html"},
        {"CarteraPaga", "10/10_3_2.html"},
        {"Ejercicios", "3/3.html"},
        {"Compras", "4/4_6.html"},
        {"empresas", "2/2.html"},
        {"cuentas", "4/4_4.html"},
        {"suplidos", "4/4_7.html"},
        {"opciones", "2/2_5.html"},
        {"ventas", "4/4_5.html"},
        {"Facturacion", "11/11.html"},
        {"verifactu", "11/11_2.html"},
        {"banco", "10/10_6.html"},
        {"modelos", "5/5_3.html"},
        {"clientes", "4/4_2.html"},
        {"consEXTRACTO", "10/10_4_2.html"},
        {"importa", "7/7.html"},
        {"consIN", "5/5_1.html"},
        {"consOUT", "5/5_1.html"},
        {"consSUPL", "5/5_1.html"},
        {"proveedores", "4/4_3.html"},
        {"consOtros", "10/10_5_3.html"},
        {"tesoreria_cuentas", "10/10_4_1.html"},
        {"TesoreriaOtros", "10/10_5_3.html"},
        {"tesoreria_OtrasCuentas", "10/10_5_1.html"},
    };
    return pages;
}

}  // namespace

QString helpPage(const QString& key) {
    return helpMap().value(key, QStringLiteral("indice.html"));
}

QStringList helpPages() {
    QStringList pages = helpMap().values();
    pages.append(QStringLiteral("indice.html"));
    pages.sort();
    pages.removeDuplicates();
    return pages;
}

QString helpPath(const WorkingContext& ctx, const QString& key) {
    const QString root = withTrailingSlash(ctx.resourcesDir);
    const QString own = root + (ctx.Idioma == QLatin1String("cat") ? QStringLiteral("cat_help/")
                                                                   : QStringLiteral("esp_help/"));
    const QString spanish = root + QStringLiteral("esp_help/");
    for (const QString& path :
         {own + helpPage(key), spanish + helpPage(key), own + QStringLiteral("indice.html")})
        if (QFileInfo::exists(path)) return path;
    return spanish + QStringLiteral("indice.html");
}

}  // namespace tallora
