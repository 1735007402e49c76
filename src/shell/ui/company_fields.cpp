#include "company_fields.h"

#include "context/messages.h"
#include "widgets/field_behaviour.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>

namespace tallora::ui {

CompanyFields companyFields(const WorkingContext& ctx, QWidget* parent, int treasuryCaption) {
    const auto field = [&](const char* name, int maxLength) {
        auto* edit = new QLineEdit(parent);
        edit->setObjectName(QString::fromLatin1(name));
        edit->setMaxLength(maxLength);
        colourOnFocus(edit);
        return edit;
    };
    CompanyFields f{};
    f.txtnom = field("txtnom", 40);
    f.txtDomicili = field("txtDomicili", 50);
    f.txtpoblacio = field("txtpoblacio", 25);
    f.txtCP = field("txtCP", 5);
    f.txtNIF = field("txtNIF", 15);
    QLineEdit* nom = f.txtnom;
    QObject::connect(nom, &QLineEdit::textEdited, nom, [nom](const QString& text) {
        if (!text.contains(u'\'')) return;
        const int at = nom->cursorPosition();
        nom->setText(QString(text).replace(u'\'', QChar(0x00B4)));
        nom->setCursorPosition(at);
    });
    f.chk_tesoreria = new QCheckBox(Missatge(ctx, treasuryCaption), parent);
    f.chk_tesoreria->setObjectName(QStringLiteral("chk_tesoreria"));
    f.form = new QFormLayout;
    // Outside a group box the style leaves the captions touching their fields.
    f.form->setHorizontalSpacing(12);
    f.form->addRow(Missatge(ctx, 13), f.txtnom);
    f.form->addRow(Missatge(ctx, 14), f.txtDomicili);
    f.form->addRow(Missatge(ctx, 15), f.txtpoblacio);
    f.form->addRow(QStringLiteral("C.P."), f.txtCP);
    f.form->addRow(QStringLiteral("NIF"), f.txtNIF);
    f.form->addRow(QString(), f.chk_tesoreria);
    enterMovesAlong({f.txtnom, f.txtDomicili, f.txtpoblacio, f.txtCP, f.txtNIF});
    return f;
}

shell::NewCompany CompanyFields::values() const {
    return {txtnom->text(), txtDomicili->text(), txtpoblacio->text(),
            txtCP->text(),  txtNIF->text(),      chk_tesoreria->isChecked()};
}

void CompanyFields::show(const shell::NewCompany& company) const {
    txtnom->setText(company.nom);
    txtDomicili->setText(company.domicili);
    txtpoblacio->setText(company.poblacio);
    txtCP->setText(company.cp);
    txtNIF->setText(company.nif);
    chk_tesoreria->setChecked(company.tesoreria);
}

}  // namespace tallora::ui
