#pragma once
// An exercise ready for sales: rates 21 / 10 / 4 with recargo 5,2 / 1,4 / 0,5, two customers
// (one with recargo), two sales accounts, the cash account and a bank, and helpers to fill an entry
// the way the screen leaves it after the typing.
#include "../master/master_fixture.h"
#include "context/common_helpers.h"
#include "context/messages.h"
#include "sales/sale_entry.h"

namespace tallora::testing {

using sales::SaleEntry;
using sales::SalesAccount;

class SalesData : public MasterData {
protected:
    void SetUp() override {
        MasterData::SetUp();
        auto& c = f.ctx;
        c.ModeExercici = "FACTURES";
        c.Decimal = ',';
        c.TipusIVA = {21, 10, 4};
        c.TipusRE = {5.2, 1.4, 0.5};
        exec(gest(), "insert into Clients (client, nom, direccio, poblacio, NIF, RE) values "
                     "(1, 'Ferreteria Puig', 'C/ Major 1', 'Vic', 'B11111111', 0), "
                     "(2, 'Colmado Ruiz', 'Pl. Nova 3', 'Olot', '22222222J', -1)");
        exec(comptes(), "insert into Ingresos (Grup, NomGrup, Compte, NomCompte) values "
                        "(700, 'Ventas', 7000001, 'Ventas mercaderias'), "
                        "(705, 'Servicios', 7050001, 'Servicios prestados')");
        // Account 1 is the cash account the opening makes.
        exec(tesorer(), "insert into entidades (Id, Grup, entidad) values "
                        "(2, 572, 'Banco Sabadell')");
    }

    // A new entry of customer 1 on 15/03 with account "Ventas mercaderias", as typed.
    SaleEntry entry(const QString& total = "121,00") const {
        SaleEntry e;
        e.txtDia = "15";
        e.txtMes = "3";
        e.lblFecha = "15/03/2026";
        e.txtClient = e.listClientsText = "Ferreteria Puig";
        e.clientNumber = 1;
        e.txtTipus = e.listVendesText = "Ventas mercaderias";
        e.txtdescripcio = "F-1";
        e.txtTotal = total;
        e.venciment = QDate(2026, 4, 15);
        return e;
    }
    SaleEntry reEntry(const QString& total) const {
        SaleEntry e = entry(total);
        e.txtClient = e.listClientsText = "Colmado Ruiz";
        e.clientNumber = 2;
        e.reEnabled = true;
        return e;
    }

    SalesAccount ventas() const { return {700, "Ventas", 7000001, "Ventas mercaderias"}; }

    QString M(int n) const { return Missatge(f.ctx, n); }
};

}  // namespace tallora::testing
