#include "account_field.h"

#include "banking/account_numbers.h"
#include "context/messages.h"
#include "field_grid.h"

#include <QEvent>

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>

namespace tallora {

namespace {

// Follows the field's enabled state, which the screen changes between browsing and editing.
class EnabledWatch : public QObject {
public:
    EnabledWatch(QLineEdit* field, std::function<void()> changed)
        : QObject(field), changed_(std::move(changed)) {
        field->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange) changed_();
        return false;
    }

private:
    std::function<void()> changed_;
};

}  // namespace

QPushButton* addAccountChecks(const WorkingContext& ctx, FieldGrid& grid, QLineEdit* field) {
    auto* row = new QWidget(field->parentWidget());
    row->setObjectName(field->objectName() + QStringLiteral("Checks"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* warning = new QLabel(row);
    warning->setObjectName(field->objectName() + QStringLiteral("Aviso"));
    warning->setStyleSheet(QStringLiteral("color: #b00020;"));
    warning->setWordWrap(true);
    auto* toIban = new QPushButton(fixedText(ctx, "Convertir en IBAN", "Convertir en IBAN"), row);
    toIban->setObjectName(QStringLiteral("btn") + field->objectName() + QStringLiteral("IBAN"));
    toIban->setFocusPolicy(Qt::ClickFocus);
    toIban->setAutoDefault(false);
    // The button keeps its size at the right whether a warning shows beside it or not.
    toIban->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    layout->addWidget(warning, 1);
    layout->addStretch();
    layout->addWidget(toIban);
    grid.add(row, QString(), true);

    const auto refresh = [&ctx, field, warning, toIban] {
        const QString text = banking::accountWarning(ctx, field->text());
        warning->setText(text);
        warning->setVisible(!text.isEmpty());
        toIban->setEnabled(field->isEnabled() && banking::validCcc(field->text()));
    };
    QObject::connect(field, &QLineEdit::textChanged, toIban, refresh);
    new EnabledWatch(field, refresh);
    QObject::connect(toIban, &QPushButton::clicked, field, [field] {
        if (const auto iban = banking::ibanOfCcc(field->text())) {
            field->setText(banking::groupedAccount(*iban));
            field->setFocus(Qt::OtherFocusReason);
        }
    });
    refresh();
    return toIban;
}

}  // namespace tallora
