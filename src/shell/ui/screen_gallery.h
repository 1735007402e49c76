#pragma once
// Every screen the program has, built on a sample installation, for the screenshots
// program and its test.
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace tallora {

class WorkingContext;

struct GalleryScreen {
    QString name;  // file name stem of its picture
    // Builds the screen on the sample installation: `ctx` is pointed at it (its language
    // is kept) and set as the screen needs.
    std::function<std::unique_ptr<QWidget>(WorkingContext&)> make;
};

std::vector<GalleryScreen> screenGallery();

}  // namespace tallora
