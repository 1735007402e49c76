// Bank statements in the Norma 43 format: read and checked, and matched against a treasury
// account of the exercise.
#include "account_words.h"
#include "banking/norma43.h"
#include "commands.h"
#include "context/common_helpers.h"
#include "context/working_context.h"
#include "master_common.h"
#include "treasury/other_movements.h"
#include "treasury/statement_matching.h"

#include <QFile>

#include <algorithm>

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

// The statement's lines for one treasury account, each with what it is proposed as; with
// --accept-matches, those that can be written are, in one transaction.
int n43ImportCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString account = numberArgument(o.arguments[2]);
    const QString other = o.given(QStringLiteral("other-account"))
                              ? numberArgument(o.value(QStringLiteral("other-account")))
                              : QString();
    if (!enterMasterFiles(s, w, Needs::Treasury, o.command)) return kRefused;
    if (!accountListed(s, treasury::treasuryAccountItems(s.ctx), account,
                       QStringLiteral("treasury account")))
        return kRefused;
    const std::int64_t entitat = account.toLongLong();
    const auto statement = readStatement(s, o.arguments[3]);
    if (!statement) return kRefused;
    const banking::N43Account* lines = treasury::statementAccountFor(s.ctx, *statement, entitat);
    if (!lines)
        return s.refuse(
            QStringLiteral("no account of %1 is treasury account %2").arg(o.arguments[3], account));
    std::vector<treasury::LineProposal> proposals =
        treasury::proposeMatches(s.ctx, *lines, entitat);
    if (!other.isEmpty()) {
        const auto others = treasury::otherAccountItems(s.ctx);
        const auto found = std::find_if(others.begin(), others.end(),
                                        [&](const auto& i) { return i.id == other.toLongLong(); });
        if (found == others.end()) return noSuchRecord(s, QStringLiteral("other account"), other);
        for (treasury::LineProposal& p : proposals)
            if (p.kind == treasury::LineKind::Other && p.otherAccount == 0) {
                p.otherAccount = found->id;
                p.otherAccountName = found->name;
            }
    }
    for (const treasury::LineProposal& p : proposals) {
        const std::int64_t target = p.kind == treasury::LineKind::Returned ? p.movement : p.receipt;
        s.out << p.line.line << '\t' << Format_Data(p.line.operationDate) << '\t'
              << Format_Import(s.ctx, p.line.amount) << '\t' << treasury::kindText(s.ctx, p.kind)
              << '\t' << (target ? QString::number(target) : QString()) << '\t' << p.party << '\t'
              << p.factura << '\t' << (p.otherAccount ? QString::number(p.otherAccount) : QString())
              << '\t' << p.otherAccountName << '\n';
    }
    if (!o.flags.contains(QStringLiteral("accept-matches"))) return s.finish(true);
    // An other movement needs its account: one without it is left for the screen.
    std::vector<treasury::LineProposal> accepted;
    for (const treasury::LineProposal& p : proposals)
        if (p.kind != treasury::LineKind::Other || p.otherAccount != 0) accepted.push_back(p);
    const treasury::ImportResult r =
        treasury::importMatches(s.ctx, s.dialogs, *lines, entitat, accepted);
    if (r.refusal) return s.finish(false);
    s.out << "imported\t" << r.receipts << '\t' << r.payments << '\t' << r.returned << '\t'
          << r.others << '\t' << r.remittances << '\t'
          << r.skipped + static_cast<int>(proposals.size() - accepted.size()) << '\n';
    return s.finish(true);
}

}  // namespace tallora::cli
