#include "field_grid.h"

#include "widgets/field_behaviour.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>

namespace tallora {

FieldGrid::FieldGrid(QWidget* panel) : panel_(panel), grid_(new QGridLayout(panel)) {
    grid_->setHorizontalSpacing(10);
    grid_->setVerticalSpacing(8);
    grid_->setColumnStretch(1, 1);
    grid_->setColumnStretch(3, 1);
}

QLabel* FieldGrid::add(QWidget* field, const QString& caption, bool wide) {
    if (wide && column_ != 0) endRow();
    auto* label = new QLabel(caption, panel_);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(field);
    label->setObjectName(QStringLiteral("lbl_") + field->objectName());
    grid_->addWidget(label, row_, column_ * 2);
    grid_->addWidget(field, row_, column_ * 2 + 1, 1, wide ? 3 : 1);
    if (wide || ++column_ == 2) endRow();
    return label;
}

QLineEdit* FieldGrid::line(const QString& name, const QString& caption, int maxLength,
                           const QString& hint, bool wide) {
    auto* edit = new QLineEdit(panel_);
    edit->setObjectName(name);
    edit->setMaxLength(maxLength);
    if (!hint.isEmpty()) edit->setToolTip(hint.trimmed());
    ui::colourOnFocus(edit);
    add(edit, caption, wide);
    return edit;
}

QLineEdit* FieldGrid::key(const QString& name, const QString& caption, const QString& hint) {
    QLineEdit* edit = line(name, caption, 10, hint);
    edit->setReadOnly(true);
    edit->setFocusPolicy(Qt::NoFocus);
    edit->setStyleSheet(QStringLiteral("QLineEdit { background: #ECEFF3; color: #333; }"));
    return edit;
}

void FieldGrid::endRow() {
    if (column_ == 0 && grid_->itemAtPosition(row_, 0) == nullptr) return;
    ++row_;
    column_ = 0;
}

void FieldGrid::finish() {
    endRow();
    grid_->setRowStretch(row_, 1);
}

}  // namespace tallora
