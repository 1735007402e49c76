#pragma once
// What the treasury screens' tests share: a named child, a screen shown and active, and a
// column of a grid as text.
#include <QString>
#include <QStringList>
#include <QTableWidget>
#include <QWidget>
#include <QtTest>

namespace tallora::testing {

template <class T>
T* child(QWidget* form, const char* name) {
    T* w = form->findChild<T*>(QLatin1String(name));
    if (!w) qFatal("no child %s", name);
    return w;
}

// Shown at `size` and active, so that the focus moves as it does for a user.
inline void show(QWidget& form, QSize size) {
    form.resize(size);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
}

// The texts of column `c`; an empty cell is an empty text.
inline QStringList column(const QTableWidget* grid, int c) {
    QStringList out;
    for (int r = 0; r < grid->rowCount(); ++r)
        out << (grid->item(r, c) ? grid->item(r, c)->text() : QString());
    return out;
}

}  // namespace tallora::testing
