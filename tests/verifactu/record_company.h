#pragma once
// A company folder with its exercise 2026 and its record file, and altas written into it as
// a posting writes them, for the tests of the submission and of the records screen.
#include "context/working_context.h"
#include "store/database.h"
#include "verifactu/record_chain.h"
#include "verifactu/record_file.h"

#include <QDir>
#include <QTemporaryDir>

namespace tallora::testing {

struct RecordCompany {
    RecordCompany() {
        QDir().mkpath(dir.filePath("company/2026"));
        ctx.Directori = dir.filePath("company/2026/");
        ctx.Exercici = "2026";
        ctx.EmpresaNIF = "89890001K";
        ctx.EmpresaNom = "Empresa & Prueba";
        ctx.EmpresaCP = "28001";
        ctx.Decimal = ',';
        path = verifactu::recordsPath(ctx);
        verifactu::ensureRecordsFile(path);
    }

    // `n` altas of 121,00 numbered F-1 .. F-n, dated 15-03-2026, in one transaction.
    void addRecords(int n) {
        store::Database db =
            store::Database::open(dir.filePath("sales.db"), store::Database::Mode::CreateIfMissing);
        db.attach(path, verifactu::kRecordsAlias);
        store::Transaction tx(db, store::Transaction::Kind::Immediate);
        for (int i = 1; i <= n; ++i) {
            verifactu::InvoiceRecord r;
            r.id = {"89890001K", "F-" + QString::number(i), "15-03-2026"};
            r.nombreEmisor = ctx.EmpresaNom;
            r.tipoFactura = "F1";
            r.descripcion = "Ventas";
            r.desglose = {{"01", "S1", "", "21.00", "100.00", "21.00", "", ""}};
            r.cuotaTotal = "21.00";
            r.importeTotal = "121.00";
            verifactu::appendRecord(ctx, db, r, {"2026", ++sales});
        }
        tx.commit();
    }

    // The service the company sends to: the test one, at `address`.
    void sendTo(const QString& address) const {
        store::Database db = store::Database::open(path);
        verifactu::setSetting(db, "Entorno", "pruebas");
        verifactu::setSetting(db, "DireccionPruebas", address);
    }

    QTemporaryDir dir;
    WorkingContext ctx;
    QString path;
    std::int64_t sales = 0;
};

}  // namespace tallora::testing
