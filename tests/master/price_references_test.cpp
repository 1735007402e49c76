#include "master/price_references.h"
#include "master_fixture.h"

using namespace tallora;
using namespace tallora::master;

namespace {

class PriceReferences : public tallora::testing::MasterData {
protected:
    void SetUp() override {
        MasterData::SetUp();
        f.ctx.Facturacio = true;
    }

    QString add(const QString& code, const QString& text = "Article", const QString& price = {}) {
        PriceReference r{{}, code, text, price};
        EXPECT_TRUE(saveReference(f.ctx, dialogs, r, true).done());
        dialogs.clear();
        return r.id;
    }

    QStringList referencias() const {
        return rows(fact(),
                    "select Id, Referencia, Descripcion, Precio from referencias order by Id");
    }
};

TEST_F(PriceReferences, ANewReferenceKeepsItsCodeAsTypedAndSanitisesTheRest) {
    PriceReference r{{}, "R'1", "Hora d'oficina + desplaçament", "1.234,5"};
    const Outcome out = saveReference(f.ctx, dialogs, r, true);
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    EXPECT_EQ(r.id, "1");
    EXPECT_EQ(r.descripcion, QString::fromUtf8("Hora d´oficina  desplaçament"));
    EXPECT_EQ(referencias(),
              QStringList{QString::fromUtf8("1|R'1|Hora d´oficina  desplaçament|12345000")});
    const auto shownBack = referenceByCode(f.ctx, "r'1");
    ASSERT_TRUE(shownBack);
    EXPECT_EQ(shownBack->precio, "1.234,50");
}

TEST_F(PriceReferences, AnEmptyPriceIsSavedAsZero) {
    PriceReference r{{}, "R1", "Article", ""};
    ASSERT_TRUE(saveReference(f.ctx, dialogs, r, true).done());
    EXPECT_EQ(r.precio, "0");
    EXPECT_EQ(referencias(), QStringList{"1|R1|Article|0"});
}

TEST_F(PriceReferences, AnEmptyCodeIsRefused) {
    PriceReference r{{}, "", "Article", "1"};
    const Outcome out = saveReference(f.ctx, dialogs, r, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtReferencia");
    EXPECT_EQ(
        shown(),
        QStringList{QString::fromUtf8("S:Es obligatorio indicar la descripción de la referencia")});
    EXPECT_TRUE(referencias().isEmpty());
}

TEST_F(PriceReferences, ARepeatedCodeIsRefusedOnlyForANewReference) {
    add("R1");
    add("R2");
    PriceReference again{{}, "r1", "Un altre", "2"};
    const Outcome out = saveReference(f.ctx, dialogs, again, true);
    EXPECT_EQ(out.kind, Outcome::Kind::Refused);
    EXPECT_EQ(out.field, "txtReferencia");
    EXPECT_EQ(shown(), QStringList{"S:Alta imposible, el nombre ya existe."});
    EXPECT_EQ(referencias().size(), 2);
    dialogs.clear();
    PriceReference second = *referenceByCode(f.ctx, "R2");
    second.referencia = "R1";
    second.precio = "3";
    ASSERT_TRUE(saveReference(f.ctx, dialogs, second, false).done());
    EXPECT_EQ(shown(), QStringList{"I:Registros guardados: 1"});
    EXPECT_EQ(referencias(), (QStringList{"1|R1|Article|0", "2|R1|Article|30000"}));
    EXPECT_EQ(referenceCodes(f.ctx), (QStringList{"R1", "R1"}));
    EXPECT_EQ(referenceByCode(f.ctx, "R1")->id, "1");
}

TEST_F(PriceReferences, APriceThatIsNotAnAmountIsRefused) {
    PriceReference r{{}, "R1", "Article", "deu"};
    const Outcome out = saveReference(f.ctx, dialogs, r, true);
    EXPECT_EQ(out.field, "txtPrecio");
    EXPECT_EQ(dialogs.lastText(), "Precio INCORRECTO: deu");
    EXPECT_TRUE(referencias().isEmpty());
}

TEST_F(PriceReferences, ADescriptionLeftBlankIsStoredAsNull) {
    add("R1", "");
    EXPECT_EQ(referencias(), QStringList{"1|R1|<null>|0"});
    EXPECT_EQ(referenceByCode(f.ctx, "R1")->descripcion, "");
}

TEST_F(PriceReferences, CodesAreListedInOrder) {
    add("B2");
    add("a1");
    add("C3");
    EXPECT_EQ(referenceCodes(f.ctx), (QStringList{"a1", "B2", "C3"}));
    EXPECT_FALSE(referenceByCode(f.ctx, "Z"));
}

TEST_F(PriceReferences, DeletingAReferenceUsedInLinesLeavesTheLines) {
    add("R1", "Hora", "40");
    exec(fact(),
         "insert into detalle (FrasOut, concepto, unidades, pvp, importe) "
         "values (7, 'Hora', 2, 400000, 800000)");
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    const Outcome out = deleteReference(f.ctx, dialogs, "1");
    ASSERT_TRUE(out.done());
    EXPECT_EQ(shown(),
              (QStringList{QString::fromUtf8("Q:Se eliminará la referencia. ¿Esta seguro/a?"),
                           "I:Se ha eliminado: 1"}));
    EXPECT_TRUE(referencias().isEmpty());
    EXPECT_EQ(rows(fact(), "select FrasOut, concepto, unidades, pvp, importe from detalle"),
              QStringList{"7|Hora|2.0|400000|800000"});
}

TEST_F(PriceReferences, TheQuestionAnsweredNoTouchesNothing) {
    add("R1");
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_EQ(deleteReference(f.ctx, dialogs, "1").kind, Outcome::Kind::Declined);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(referencias().size(), 1);
}

TEST_F(PriceReferences, AnOverLongCodeIsRefusedWithNothingWritten) {
    PriceReference r{{}, QString(31, u'r'), "Article", "1"};
    EXPECT_EQ(saveReference(f.ctx, dialogs, r, true).kind, Outcome::Kind::Refused);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(dialogs.lastText().contains("Referencias.Referencia: longer than 30 characters"))
        << dialogs.lastText().toStdString();
    EXPECT_TRUE(referencias().isEmpty());
}

}  // namespace
