#include "screen_gallery.h"

#include "form_mdi.h"

#include <QWidget>

namespace tallora {

std::vector<GalleryScreen> screenGallery() {
    return {
        {QStringLiteral("FormMDI"),
         [](WorkingContext& ctx) -> std::unique_ptr<QWidget> { return std::make_unique<FormMDI>(ctx); }},
    };
}

}  // namespace tallora
