#pragma once
// An exercise with the invoices the books tests write straight into FrasOut and FrasIN, with
// an empty classification as the posting screens store it: a
// sale of up to three rates (21, 10 and 4 %, recargo 5,2 % on the first) and a purchase of
// up to four bases at 21 %, and the journal's rows read back.
#include "../master/master_fixture.h"
#include "schema/creation.h"

#include <array>

namespace tallora::testing {

class BooksData : public MasterData {
protected:
    void SetUp() override {
        MasterData::SetUp();
        f.ctx.ModeExercici = QStringLiteral("FACTURES");
        f.ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        f.ctx.EmpresaNIF = QStringLiteral("B12345674");
        f.ctx.TipusIVA = {21, 10, 4};
        f.ctx.TipusIVAText = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4")};
        f.ctx.TipusRE = {5.2, 1.4, 0.5};
        f.ctx.TipusREText = {QStringLiteral("5.2"), QStringLiteral("1.4"), QStringLiteral("0.5")};
        f.ctx.TipusIVAs = {21, 10, 4, 0};
        f.ctx.TipusIVAsText = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4"),
                               QStringLiteral("0")};
    }

    QString llibre() const { return f.exercise + schema::db::Llibre; }

    // A sale: ordre, date, description, total, then base, rate and quota of up to three rates.
    void sale(int ordre, const char* date, const char* descripcio, std::int64_t total,
              std::array<std::int64_t, 3> bases, std::int64_t retencio = 0,
              std::int64_t baseIRPF = 0) {
        exec(frasOut(),
             QStringLiteral("insert into FrasOut (Ordre, data, Client, NomClient, Descripcio, "
                            "Grup, NomGrup, TOTAL, Base1, TIva1, Iva1, Base2, TIva2, Iva2, "
                            "Base3, TIva3, Iva3, RE1, TRE1, Retencio, BaseIRPF, TipusIRPF, "
                            "Clasificacion) "
                            "values (%1, '%2', 1, 'Bar Centre', '%3', 70, 'Ventas', %4, %5, "
                            "210000, %6, %7, 100000, %8, %9, 40000, %10, %11, 52000, %12, %13, "
                            "%14, '')")
                 .arg(ordre)
                 .arg(QLatin1String(date), QLatin1String(descripcio))
                 .arg(total)
                 .arg(bases[0])
                 .arg(bases[0] * 21 / 100)
                 .arg(bases[1])
                 .arg(bases[1] / 10)
                 .arg(bases[2])
                 .arg(bases[2] * 4 / 100)
                 .arg(bases[0] * 52 / 1000)
                 .arg(retencio)
                 .arg(baseIRPF)
                 .arg(baseIRPF ? 150000 : 0));
    }

    // A purchase of group `grup`: up to four bases at 21 %, and a withholding.
    void purchase(int ordre, const char* date, int grup, std::int64_t total,
                  std::array<std::int64_t, 4> bases, std::int64_t retencio = 0) {
        exec(frasIn(),
             QStringLiteral(
                 "insert into FrasIN (Ordre, data, Proveidor, NomProveidor, descripcio, "
                 "Grup, NomGrup, TOTAL, Base1, TipusIva1, Iva1, Base2, TipusIva2, Iva2, "
                 "Base3, TipusIva3, Iva3, Base4, TipusIva4, Iva4, Retencio, BaseIRPF, "
                 "TipusIRPF, Clasificacion) values (%1, '%2', 1, 'Olis del Camp', 'A-%1', %3, "
                 "'G', "
                 "%4, %5, 210000, %6, %7, 210000, %8, %9, 210000, %10, %11, 210000, "
                 "%12, %13, 0, 0, '')")
                 .arg(ordre)
                 .arg(QLatin1String(date))
                 .arg(grup)
                 .arg(total)
                 .arg(bases[0])
                 .arg(bases[0] * 21 / 100)
                 .arg(bases[1])
                 .arg(bases[1] * 21 / 100)
                 .arg(bases[2])
                 .arg(bases[2] * 21 / 100)
                 .arg(bases[3])
                 .arg(bases[3] * 21 / 100)
                 .arg(retencio));
    }

    QStringList diari(const char* side, const char* columns) const {
        return rows(llibre(), QStringLiteral("select %1 from Diari where Debe_Haber = '%2' "
                                             "order by Apunt")
                                  .arg(QLatin1String(columns), QLatin1String(side)));
    }
};

}  // namespace tallora::testing
