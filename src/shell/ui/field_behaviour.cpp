#include "field_behaviour.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "obre_ajuda.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPalette>
#include <QPointer>
#include <QShortcut>
#include <QWidget>

namespace tallora::ui {
namespace {

class EnterFilter : public QObject {
public:
    EnterFilter(const QList<QWidget*>& ring, QObject* parent) : QObject(parent) {
        for (QWidget* w : ring) ring_.append(w);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
        const auto at = std::find(ring_.begin(), ring_.end(), watched);
        if (at == ring_.end()) return false;
        for (qsizetype step = 1; step <= ring_.size(); ++step) {
            QWidget* next = ring_[((at - ring_.begin()) + step) % ring_.size()];
            if (next && next->isEnabled() && next->isVisible()) {
                next->setFocus(Qt::TabFocusReason);
                break;
            }
        }
        return true;
    }

private:
    QList<QPointer<QWidget>> ring_;
};

class FocusColourFilter : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) paint(watched, QStringLiteral("focus"));
        if (event->type() == QEvent::FocusOut) paint(watched, QStringLiteral("nofocus"));
        return false;
    }

private:
    static void paint(QObject* watched, const QString& state) {
        auto* widget = static_cast<QWidget*>(watched);
        const auto rgb = rgbFromBgrText(Color_Focus(state));
        QPalette palette = widget->palette();
        palette.setColor(QPalette::Base, QColor::fromRgb(rgb.value_or(0xFFFFFF)));
        widget->setPalette(palette);
    }
};

class RateFilter : public QObject {
public:
    RateFilter(const WorkingContext& ctx, QObject* parent) : QObject(parent), ctx_(ctx) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* field = static_cast<QLineEdit*>(watched);
        if (event->type() == QEvent::FocusOut && field->text().isEmpty())
            field->setText(QStringLiteral("0"));
        if (event->type() != QEvent::KeyPress) return false;
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->text() != QStringLiteral(",") && key->text() != QStringLiteral(".")) return false;
        int code = key->text().at(0).unicode();
        Tecla_Decimal(ctx_, code);
        field->insert(QString(QChar(code)));
        return true;
    }

private:
    const WorkingContext& ctx_;
};

}  // namespace

void enterMovesAlong(const QList<QWidget*>& ring) {
    if (ring.isEmpty()) return;
    auto* filter = new EnterFilter(ring, ring.front());
    for (QWidget* w : ring) w->installEventFilter(filter);
}

void colourOnFocus(QWidget* field) {
    field->setAutoFillBackground(true);
    field->installEventFilter(new FocusColourFilter(field));
}

void helpOnF1(const WorkingContext& ctx, QWidget* form, const QString& key) {
    auto* f1 = new QShortcut(QKeySequence(Qt::Key_F1), form);
    f1->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(f1, &QShortcut::activated, form, [&ctx, key] { Obre_Ajuda(ctx, key); });
}

void makeRateField(const WorkingContext& ctx, QLineEdit* field) {
    field->installEventFilter(new RateFilter(ctx, field));
    QObject::connect(field, &QLineEdit::textEdited, field, [&ctx, field](const QString& text) {
        if (!text.isEmpty() && !Es_Numeric(ctx, text)) field->clear();
    });
    colourOnFocus(field);
}

}  // namespace tallora::ui
