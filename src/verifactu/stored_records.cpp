#include "stored_records.h"

#include "store/database.h"

#include <QFile>

namespace tallora::verifactu {

void forEachRecord(const QString& path, const std::function<bool(const StoredRecord&)>& each) {
    if (!QFile::exists(path)) return;
    store::Database db = store::Database::open(path);
    auto st = db.prepare(QStringLiteral(
        "select r.Id, r.Emisor, r.Clase, r.Ejercicio, r.Ordre, r.NumSerie, r.Fecha, "
        "r.TipoFactura, r.Subsanacion, r.ImporteTotal, r.FechaHora, r.Huella, r.Xml, r.Sello, "
        "(select a.Estado from Respuestas a where a.Registro = r.Id order by a.Id desc limit 1) "
        "from Registros r order by r.Id"));
    const auto text = [&](int c) { return st.isNull(c) ? QString() : st.text(c); };
    while (st.next()) {
        StoredRecord r;
        r.id = st.int64(0);
        r.emisor = text(1);
        r.alta = text(2) == QLatin1String("A");
        r.ejercicio = text(3);
        r.ordre = st.int64(4);
        r.numSerie = text(5);
        r.fecha = text(6);
        r.tipoFactura = text(7);
        r.subsanacion = st.boolean(8);
        r.importeTotal = text(9);
        r.fechaHora = text(10);
        r.huella = text(11);
        r.xml = text(12);
        r.sello = text(13);
        r.estado = text(14);
        if (!each(r)) return;
    }
}

}  // namespace tallora::verifactu
