#include "qt_translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <memory>

namespace tallora::ui {

bool useQtTranslations(const QString& idioma) {
    static std::unique_ptr<QTranslator> current;
    static QString currentIdioma;
    if (current && idioma == currentIdioma) return true;
    if (current) QCoreApplication::removeTranslator(current.get());
    current.reset();
    currentIdioma.clear();
    auto translator = std::make_unique<QTranslator>();
    const QString locale =
        idioma == QStringLiteral("cat") ? QStringLiteral("ca") : QStringLiteral("es");
    if (!translator->load(QStringLiteral("qtbase_") + locale,
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return false;
    QCoreApplication::installTranslator(translator.get());
    current = std::move(translator);
    currentIdioma = idioma;
    return true;
}

}  // namespace tallora::ui
