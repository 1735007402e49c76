#pragma once
// The panel of captioned fields of a master screen: rows of one or two caption-field pairs,
// captions right-aligned, fields growing with the window.
#include <QString>

class QGridLayout;
class QLabel;
class QLineEdit;
class QWidget;

namespace tallora {

class FieldGrid {
public:
    explicit FieldGrid(QWidget* panel);

    // `field` with its caption in the next of the two columns of the row; a wide field takes
    // the whole row. Gives the caption's label.
    QLabel* add(QWidget* field, const QString& caption, bool wide = false);
    // A text field of that name and length, coloured on focus, with its hint as tip.
    QLineEdit* line(const QString& name, const QString& caption, int maxLength,
                    const QString& hint = {}, bool wide = false);
    // The record's number, given by the store: read only, out of the Enter order, shaded.
    QLineEdit* key(const QString& name, const QString& caption, const QString& hint = {});
    // Ends the current row even when it has only one pair.
    void endRow();
    // Pushes the rows to the top.
    void finish();

private:
    QWidget* panel_;
    QGridLayout* grid_;
    int row_ = 0;
    int column_ = 0;
};

}  // namespace tallora
