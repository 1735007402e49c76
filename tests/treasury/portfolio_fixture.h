#pragma once
// An exercise 2026 with treasury, its customers and suppliers, and receipts written straight
// into the company's portfolio, for the tests of the portfolio logic and its list.
#include "../master/master_fixture.h"

#include <QDate>

#include <optional>

namespace tallora::testing {

// A row of cartera as a posting or a run leaves it. Amounts in ten-thousandths.
struct ReceiptRow {
    QString inOut = QStringLiteral("Out");
    std::int64_t party = 0;
    QDate data;
    std::optional<QDate> vencimiento;
    QString ejercicio = QStringLiteral("2026");
    QString factura;
    std::int64_t total = 0;
    std::int64_t pendiente = 0;
    std::int64_t frasOut = 0;
    std::int64_t frasIn = 0;
};

class PortfolioData : public MasterData {
protected:
    void SetUp() override {
        MasterData::SetUp();
        f.ctx.Tesoreria = true;
        f.ctx.ModeExercici = QStringLiteral("FACTURES");
        f.ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
    }

    // The number the store gave the new customer or supplier.
    std::int64_t customer(const QString& nom) { return person(QStringLiteral("Clients"), nom); }
    std::int64_t supplier(const QString& nom) { return person(QStringLiteral("Proveidors"), nom); }

    // Gives the Id of the new row.
    std::int64_t receipt(const ReceiptRow& r) {
        store::Database d = store::Database::open(cartera());
        store::Statement st = d.prepare(QStringLiteral(
            "insert into cartera (data, cliente, proveedor, In_Out, Ejercicio, Factura, Total, "
            "Pendiente, FrasOut, FrasIn, Vencimiento) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
        const bool out = r.inOut == QStringLiteral("Out");
        st.bind(1, r.data).bind(2, out ? r.party : 0).bind(3, out ? 0 : r.party);
        st.bind(4, r.inOut).bind(5, r.ejercicio).bind(6, r.factura);
        st.bind(7, Money::fromUnits(r.total)).bind(8, Money::fromUnits(r.pendiente));
        st.bind(9, r.frasOut).bind(10, r.frasIn);
        if (r.vencimiento)
            st.bind(11, *r.vencimiento);
        else
            st.bind(11, nullptr);
        st.execute();
        return d.lastInsertId();
    }

private:
    std::int64_t person(const QString& table, const QString& nom) {
        store::Database d = store::Database::open(gest());
        d.prepare(QStringLiteral("insert into %1 (nom) values (?)").arg(table))
            .bind(1, nom)
            .execute();
        return d.lastInsertId();
    }
};

}  // namespace tallora::testing
