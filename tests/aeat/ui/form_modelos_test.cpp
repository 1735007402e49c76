// The returns' screen: the boxes of the chosen model and period from the books, a typed box
// taken into the result with Enter, the 347's parties listed, the file and the VAT books
// written where the user says, Esc closing, and the print document holding the boxes.
#include "aeat/ui/form_modelos.h"
#include "../../books/books_fixture.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>

using namespace tallora;
using namespace tallora::testing;

namespace {

class FormModelosTest : public BooksData {
protected:
    void SetUp() override {
        BooksData::SetUp();
        f.ctx.Exercici = QStringLiteral("2026");
        f.ctx.clock = [] { return QDateTime(QDate(2026, 5, 10), QTime(9, 0), Qt::UTC); };
        sale(1, "2026-01-10", "F-1", 126200000, {100000000, 0, 0});  // 10.000 at 21 % + 5,2 %
        purchase(1, "2026-02-01", 60, 36300000, {30000000, 0, 0, 0});
    }
};

}  // namespace

TEST_F(FormModelosTest, ShowsTheQuarterBeforeTodaysAndTakesATypedBox) {
    FormModelos form(f.ctx, dialogs);
    EXPECT_EQ(form.findChild<QComboBox*>("cmbPeriodo")->currentData().toString(),
              QStringLiteral("1T"));
    ASSERT_NE(form.box("09"), nullptr);
    EXPECT_EQ(form.box("09")->text(), QStringLiteral("2.100,00"));
    EXPECT_EQ(form.box("71")->text(), QStringLiteral("1.990,00"));
    EXPECT_TRUE(form.box("09")->isReadOnly());
    QLineEdit* compensation = form.box("67");
    ASSERT_FALSE(compensation->isReadOnly());
    compensation->setText(QStringLiteral("470"));
    QTest::keyClick(compensation, Qt::Key_Return);
    EXPECT_EQ(form.box("71")->text(), QStringLiteral("1.520,00"));
    EXPECT_EQ(form.box("67")->text(), QStringLiteral("470,00"));

    QTextDocument document;
    form.fillDocument(document);
    EXPECT_TRUE(document.toPlainText().contains(QStringLiteral("[71]")));
    EXPECT_TRUE(document.toPlainText().contains(QStringLiteral("1.520,00")));
}

TEST_F(FormModelosTest, WritesTheFileAndTheBooksWhereTheUserSays) {
    QTemporaryDir out;
    FormModelos form(f.ctx, dialogs);
    QString proposed;
    form.askFilePath = [&](const QString& name) {
        proposed = name;
        return out.filePath(name);
    };
    ASSERT_TRUE(form.GuardarFichero());
    EXPECT_EQ(proposed, QStringLiteral("303_2026_1T_B12345674.txt"));
    QFile file(out.filePath(proposed));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("<T303020261T0000><AUX>"));
    ASSERT_TRUE(form.GuardarLibros());
    EXPECT_TRUE(QFile::exists(out.filePath(proposed)));
    EXPECT_TRUE(proposed.endsWith(QStringLiteral(".xlsx")));
    // Cancelled: nothing written, nothing said.
    const auto before = dialogs.shown().size();
    form.askFilePath = [](const QString&) { return QString(); };
    EXPECT_FALSE(form.GuardarFichero());
    EXPECT_EQ(dialogs.shown().size(), before);
}

TEST_F(FormModelosTest, The347ListsItsPartiesAndThe130HasNoFile) {
    FormModelos form(f.ctx, dialogs);
    form.chooseModel(aeat::Model::M347);
    EXPECT_EQ(form.figures().period.code, QStringLiteral("0A"));
    EXPECT_TRUE(form.parties()->isVisibleTo(&form));
    EXPECT_EQ(form.parties()->rowCount(), 2);  // the customer and the supplier, both above
    form.chooseModel(aeat::Model::M130);
    EXPECT_FALSE(form.findChild<QPushButton*>("btnFichero")->isEnabled());
    EXPECT_FALSE(form.parties()->isVisibleTo(&form));
}

TEST_F(FormModelosTest, EscapeCloses) {
    auto* form = new FormModelos(f.ctx, dialogs);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->show();
    QPointer<FormModelos> alive(form);
    QTest::keyClick(form->findChild<QComboBox*>("cmbModelo"), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_TRUE(alive.isNull() || !alive->isVisible());
}

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
