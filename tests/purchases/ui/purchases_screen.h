#pragma once
// The exercise of the purchases screens: purchase rates 21 / 10 / 4 / 0 (the fourth slot
// unused), two suppliers, two customers, an account in Compres and one in Serveis, the cash
// account and a bank; and what the tests read back.
#include "../../master/ui/screen_fixture.h"
#include "context/messages.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace tallora::testing {

class PurchasesScreen : public ScreenExercise {
public:
    PurchasesScreen() {
        ctx.Facturacio = false;
        ctx.Tesoreria = false;
        ctx.ModeExercici = QStringLiteral("FACTURES");
        ctx.TipusIVAs = {21, 10, 4, 0};
        exec(exerciseFile("gest.mdb"),
             "insert into Proveidors (proveidor, nom, NIF) values "
             "(1, 'Maderas Soler', 'B11111111'), (2, 'Gestoria Puig', '22222222J')");
        exec(exerciseFile("gest.mdb"),
             "insert into Clients (client, nom) values (1, 'Ferreteria Puig'), "
             "(2, 'Colmado Ruiz')");
        exec(exerciseFile("Comptes.mdb"),
             "insert into Compres (Grup, NomGrup, Compte, NomCompte) values "
             "(60, 'Compras', 6000001, 'Compras mercaderias')");
        exec(exerciseFile("Comptes.mdb"),
             "insert into Serveis (Grup, NomGrup, Compte, NomCompte) values "
             "(62, 'Servicios', 6230001, 'Asesoria')");
        exec(exerciseFile("tesorer.mdb"),
             "insert into entidades (Id, Grup, entidad) values (2, 572, 'Banco Sabadell')");
    }
    static void exec(const QString& path, const char* sql) {
        store::Database::open(path).execute(QString::fromUtf8(sql));
    }
    QStringList purchases(const char* columns) const {
        return rows(exerciseFile("FrasIN.mdb"),
                    QStringLiteral("select %1 from FrasIN order by Ordre").arg(columns));
    }
    QStringList provisions(const char* columns) const {
        return rows(exerciseFile("Supl.mdb"),
                    QStringLiteral("select %1 from Suplidos order by Ordre").arg(columns));
    }
    QStringList movements() const {
        return rows(exerciseFile("tesorer.mdb"),
                    "select data, entidad, proveedor, cliente, FrasIn, Supl, concepto, D, H "
                    "from movimientos order by Id");
    }
    QStringList receipts() const {
        return rows(companyFile("cartera.mdb"),
                    "select data, proveedor, In_Out, Ejercicio, Factura, Total, FrasIn, "
                    "Vencimiento from cartera order by Id");
    }
    QString M(int n) const { return Missatge(ctx, n); }
};

template <typename W>
W* child(QWidget* form, const char* name) {
    return form->findChild<W*>(QString::fromLatin1(name));
}
inline QString text(QWidget* form, const char* name) {
    return child<QLineEdit>(form, name)->text();
}
inline QStringList journalLines(QWidget* form) {
    return listTexts(child<QListWidget>(form, "ListRegistres"));
}
// Double-clicks the day log's only "MODIFICAR" row.
inline void reopenFromJournal(QWidget* form) {
    auto* list = child<QListWidget>(form, "ListRegistres");
    const auto found = list->findItems(QStringLiteral("MODIFICAR"), Qt::MatchExactly);
    QCOMPARE(found.size(), 1);
    list->setCurrentItem(found[0]);
    const QPoint at = list->visualItemRect(found[0]).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
}

}  // namespace tallora::testing
