#include "sale_qr.h"

#include "record_file.h"

#include "context/working_context.h"
#include "store/database.h"

#include <QFile>

namespace tallora::verifactu {
namespace {

Environment environmentOf(store::Database& db) {
    return setting(db, QStringLiteral("Entorno")) == QLatin1String("pruebas")
               ? Environment::Test
               : Environment::Production;
}

}  // namespace

Environment recordsEnvironment(const WorkingContext& ctx) {
    const QString path = recordsPath(ctx);
    if (!QFile::exists(path)) return Environment::Production;
    store::Database db = store::Database::open(path);
    return environmentOf(db);
}

QString saleQrAddress(const WorkingContext& ctx, std::int64_t ordre) {
    const QString path = recordsPath(ctx);
    if (!QFile::exists(path)) return {};
    store::Database db = store::Database::open(path);
    auto st =
        db.prepare(QStringLiteral("select Clase, Emisor, NumSerie, Fecha, ImporteTotal from "
                                  "Registros where Ejercicio = ? and Ordre = ? "
                                  "order by Id desc limit 1"));
    st.bind(1, ctx.Exercici).bind(2, ordre);
    if (!st.next() || st.text(0) != QLatin1String("A")) return {};
    return qrAddress({st.text(1), st.text(2), st.text(3)}, st.text(4), environmentOf(db));
}

}  // namespace tallora::verifactu
