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
        // Only the enabled looks: a disabled field keeps the style's grey.
        const QColor colour = QColor::fromRgb(rgb.value_or(0xFFFFFF));
        palette.setColor(QPalette::Active, QPalette::Base, colour);
        palette.setColor(QPalette::Inactive, QPalette::Base, colour);
        widget->setPalette(palette);
    }
};

// The decimal key of rate and amount fields; what happens on leaving differs.
class NumberFilter : public QObject {
public:
    enum class Kind { Rate, Amount, Quantity };
    NumberFilter(const WorkingContext& ctx, Kind kind, QObject* parent)
        : QObject(parent), ctx_(ctx), kind_(kind) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* field = static_cast<QLineEdit*>(watched);
        if (event->type() == QEvent::FocusOut) leave(field);
        if (event->type() != QEvent::KeyPress) return false;
        const int pressed = static_cast<QKeyEvent*>(event)->key();
        if (kind_ == Kind::Amount && (pressed == Qt::Key_Return || pressed == Qt::Key_Enter))
            leave(field);
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->text() != QStringLiteral(",") && key->text() != QStringLiteral(".")) return false;
        int code = key->text().at(0).unicode();
        Tecla_Decimal(ctx_, code);
        field->insert(QString(QChar(code)));
        return true;
    }

private:
    void leave(QLineEdit* field) const {
        if (kind_ == Kind::Quantity) return;
        if (kind_ == Kind::Rate) {
            if (field->text().isEmpty()) field->setText(QStringLiteral("0"));
            return;
        }
        if (const auto value = Money::parse(field->text(), ctx_.decimalMark()))
            field->setText(Format_Import(ctx_, *value));
    }

    const WorkingContext& ctx_;
    Kind kind_;
};

class LettersDigitsFilter : public QObject {
public:
    LettersDigitsFilter(std::function<void()> beep, QObject* parent)
        : QObject(parent), beep_(std::move(beep)) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const QString text = static_cast<QKeyEvent*>(event)->text();
        if (text.size() != 1 || !text.at(0).isPrint()) return false;  // editing keys pass
        const char16_t c = text.at(0).unicode();
        if ((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'))
            return false;
        beep_();
        return true;
    }

private:
    std::function<void()> beep_;
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

namespace {
constexpr const char* kHelpKey = "helpKey";
}  // namespace

QString helpKeyOf(const QWidget* widget, const QWidget* top) {
    for (const QWidget* w = widget; w; w = w->parentWidget()) {
        const QVariant key = w->property(kHelpKey);
        if (key.isValid()) return key.toString();
        if (w == top) break;
    }
    return {};
}

void helpOnF1(const WorkingContext& ctx, QWidget* form, const QString& key) {
    form->setProperty(kHelpKey, key);
    auto* f1 = new QShortcut(QKeySequence(Qt::Key_F1), form);
    f1->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(f1, &QShortcut::activated, form, [&ctx, key] { Obre_Ajuda(ctx, key); });
}

namespace {

void makeNumberField(const WorkingContext& ctx, QLineEdit* field, NumberFilter::Kind kind) {
    field->installEventFilter(new NumberFilter(ctx, kind, field));
    QObject::connect(field, &QLineEdit::textEdited, field, [&ctx, field](const QString& text) {
        if (!text.isEmpty() && !Es_Numeric(ctx, text)) field->clear();
    });
    colourOnFocus(field);
}

}  // namespace

void makeRateField(const WorkingContext& ctx, QLineEdit* field) {
    makeNumberField(ctx, field, NumberFilter::Kind::Rate);
}

QLineEdit* rateEdit(const WorkingContext& ctx, const QString& name, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setMaxLength(6);
    edit->setAlignment(Qt::AlignRight);
    edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("000000000")));
    makeRateField(ctx, edit);
    return edit;
}

void makeQuantityField(const WorkingContext& ctx, QLineEdit* field) {
    field->setAlignment(Qt::AlignRight);
    makeNumberField(ctx, field, NumberFilter::Kind::Quantity);
}

void makeAmountField(const WorkingContext& ctx, QLineEdit* field) {
    field->setAlignment(Qt::AlignRight);
    makeNumberField(ctx, field, NumberFilter::Kind::Amount);
}

void lettersAndDigitsOnly(QLineEdit* field, std::function<void()> beep) {
    field->installEventFilter(new LettersDigitsFilter(std::move(beep), field));
}

}  // namespace tallora::ui
