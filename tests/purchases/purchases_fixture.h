#pragma once
// An exercise ready for purchases: purchase rates 21 / 10 / 4 / 21 (two equal on purpose),
// two suppliers, two customers, expense accounts in Compres and Serveis, the cash account
// and a bank, and an entry filled the way the screen leaves it after the typing.
#include "../master/master_fixture.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "purchases/purchase_entry.h"

namespace tallora::testing {

using purchases::ExpenseAccount;
using purchases::PurchaseEntry;

class PurchasesData : public MasterData {
protected:
    void SetUp() override {
        MasterData::SetUp();
        auto& c = f.ctx;
        c.ModeExercici = "FACTURES";
        c.Decimal = ',';
        c.TipusIVAs = {21, 10, 4, 21};
        exec(gest(),
             "insert into Proveidors (proveidor, nom, NIF) values "
             "(1, 'Maderas Soler', 'B11111111'), (2, 'Gestoria Puig', '22222222J')");
        exec(gest(),
             "insert into Clients (client, nom) values "
             "(1, 'Ferreteria Puig'), (2, 'Colmado Ruiz')");
        exec(comptes(),
             "insert into Compres (Grup, NomGrup, Compte, NomCompte) values "
             "(60, 'Compras', 6000001, 'Compras mercaderias')");
        exec(comptes(),
             "insert into Serveis (Grup, NomGrup, Compte, NomCompte) values "
             "(62, 'Servicios', 6230001, 'Asesoria')");
        // Account 1 is the cash account the opening makes.
        exec(tesorer(),
             "insert into entidades (Id, Grup, entidad) values "
             "(2, 572, 'Banco Sabadell')");
    }

    // A new entry of supplier 1 on 15/03 in Compres, as typed.
    PurchaseEntry entry(const QString& total = "121,00") const {
        PurchaseEntry e;
        e.group = 0;
        e.txtDia = "15";
        e.txtMes = "3";
        e.lblFecha = "15/03/2026";
        e.txtProveidor = e.listProvText = "MADERAS SOLER";
        e.supplierNumber = 1;
        e.txtDespesa = e.listDespesesText = "COMPRAS MERCADERIAS";
        e.txtdescripcio = "F-1";
        e.txtTotal = total;
        e.venciment = QDate(2026, 4, 15);
        return e;
    }
    // The same, split by `rate` as leaving CmbIva does.
    PurchaseEntry split(const QString& total, double rate = 21) const {
        PurchaseEntry e = entry(total);
        purchases::Calcula_Bases(f.ctx, e, rate);
        return e;
    }

    ExpenseAccount compras() const { return {60, "Compras", 6000001, "Compras mercaderias"}; }

    QString M(int n) const { return Missatge(f.ctx, n); }
};

}  // namespace tallora::testing
