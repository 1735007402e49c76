#include "sale_qr.h"

#include "record_chain.h"
#include "record_file.h"

#include "context/working_context.h"
#include "store/database.h"

#include <QFile>

namespace tallora::verifactu {

QString saleQrAddress(const WorkingContext& ctx, std::int64_t ordre) {
    const QString path = recordsPath(ctx);
    if (!QFile::exists(path)) return {};
    store::Database db = store::Database::open(path);
    const auto last = lastRecordOf(db, QStringLiteral("Registros"), {ctx.Exercici, ordre});
    if (!last || !last->alta) return {};
    return qrAddress(last->id, last->importeTotal, recordsEnvironment(db));
}

}  // namespace tallora::verifactu
