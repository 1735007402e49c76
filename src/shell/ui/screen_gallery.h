#pragma once
// Every screen the program has, built on a sample installation, for the screenshots
// program and its test.
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QSize;
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

// The smallest screen the program must work on, 1366×768, less a title bar and a panel.
QSize smallScreenArea();
// What `screen` needs beyond smallScreenArea ("needs 1366×812"); empty when it fits.
QString overflowOnSmallScreen(const QWidget* screen);
// Sizes `screen` as it shows on that screen: a dialog keeps its own size within the area,
// any other screen takes the whole area, as a maximised window does.
void fitToSmallScreen(QWidget* screen);

}  // namespace tallora
