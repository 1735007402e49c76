#include "commands.h"
#include "schema/maintenance.h"

namespace tallora::cli {

int repairCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    return s.finish(schema::Repara_Bases(s.ctx, s.dialogs));
}

int compactCommand(Session& s, const CliOptions& o) {
    const QString year = yearArgument(o.arguments[1]);
    s.start();
    if (!s.enterExercise(o.arguments[0], year)) return kRefused;
    return s.finish(schema::Compacta_Bases(s.ctx, s.dialogs));
}

}  // namespace tallora::cli
