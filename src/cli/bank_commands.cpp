// Bank statements in the Norma 43 format: read and checked, and matched against a treasury
// account of the exercise.
#include "banking/norma43.h"
#include "commands.h"
#include "context/common_helpers.h"

#include <QFile>

namespace tallora::cli {

namespace {

// The file's accounts, or a refusal saying where it does not hold.
std::optional<banking::N43File> readStatement(Session& s, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        s.refuse(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
        return std::nullopt;
    }
    try {
        return banking::readNorma43(s.ctx, file.readAll());
    } catch (const banking::N43Error& e) {
        s.refuse(QStringLiteral("%1, line %2: %3").arg(path).arg(e.line()).arg(e.reason()));
        return std::nullopt;
    }
}

}  // namespace

int n43ShowCommand(Session& s, const CliOptions& o) {
    s.start();
    const auto statement = readStatement(s, o.arguments[0]);
    if (!statement) return kRefused;
    for (const banking::N43Account& a : statement->accounts) {
        s.out << "account\t" << a.number() << '\t' << a.name << '\t' << Format_Data(a.start) << '\t'
              << Format_Data(a.end) << '\t' << Format_Import(s.ctx, a.opening) << '\t'
              << Format_Import(s.ctx, a.closing) << '\t' << a.currency << '\n';
        for (const banking::N43Movement& m : a.movements)
            s.out << m.line << '\t' << Format_Data(m.operationDate) << '\t'
                  << Format_Data(m.valueDate) << '\t' << m.commonConcept << '\t' << m.ownConcept
                  << '\t' << Format_Import(s.ctx, m.amount) << '\t' << m.document << '\t'
                  << m.reference1 << '\t' << m.reference2 << '\t'
                  << m.concepts.join(QStringLiteral(" | ")) << '\n';
    }
    return s.finish(true);
}

}  // namespace tallora::cli
