#include "names_by_id.h"

#include "context/working_context.h"
#include "store/database.h"

namespace tallora::treasury {

QHash<std::int64_t, QString> namesById(const WorkingContext& ctx, const QString& file,
                                       const QString& sql) {
    store::Database db = store::Database::open(ctx.exerciseFile(file));
    store::Statement st = db.prepare(sql);
    QHash<std::int64_t, QString> names;
    while (st.next()) names.insert(st.int64(0), st.isNull(1) ? QString() : st.text(1));
    return names;
}

}  // namespace tallora::treasury
