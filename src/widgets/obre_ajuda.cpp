#include "obre_ajuda.h"

#include "context/help_map.h"

#include <QDesktopServices>
#include <QUrl>

namespace tallora::ui {
namespace {

std::function<void(const QString&)>& opener() {
    static std::function<void(const QString&)> current;
    return current;
}

}  // namespace

void Obre_Ajuda(const WorkingContext& ctx, const QString& key) {
    const QString path = helpPath(ctx, key);
    if (opener())
        opener()(path);
    else
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void setPageOpener(std::function<void(const QString& path)> replacement) {
    opener() = std::move(replacement);
}

}  // namespace tallora::ui
