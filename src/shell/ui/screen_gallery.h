#pragma once
// Every screen the program has, built with sample data, for the screenshots program.
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace tallora {

class WorkingContext;

struct GalleryScreen {
    QString name;  // file name stem of its picture
    std::function<std::unique_ptr<QWidget>(WorkingContext&)> make;
};

std::vector<GalleryScreen> screenGallery();

}  // namespace tallora
