#include "day_log.h"

#include "common_helpers.h"
#include "messages.h"
#include "working_context.h"

namespace tallora {
namespace {

struct Modify {
    const char* kind;
    const char* caption;
};
constexpr Modify kModify[] = {{"modificar", "MODIFICAR"},
                              {"Bor-modificar", "MODIFICAR (BOR)"},
                              {"Pro-modificar", "MODIFICAR (PRO)"},
                              {"Pre-modificar", "MODIFICAR (PRE)"},
                              {"Alb-modificar", "MODIFICAR (ALB)"}};

}  // namespace

QString modifyCaption(const QString& kind) {
    for (const Modify& m : kModify)
        if (kind == QLatin1String(m.kind)) return QString::fromLatin1(m.caption);
    return {};
}

bool JournalRow::opensChange() const {
    return !modifyCaption(kind).isEmpty();
}

std::vector<JournalRow> journalTitle(const WorkingContext& ctx, const QDateTime& now) {
    JournalRows rows;
    rows.add(journal::Titol, Missatge(ctx, 614));
    rows.add(journal::Titol, Missatge(ctx, 621) + now.toString(QStringLiteral("dd/MM/yy")) +
                                 QStringLiteral("   Hora: ") +
                                 now.toString(QStringLiteral("hh:mm:ss")));
    rows.add(journal::Blank);
    return rows.take();
}

void JournalRows::settledBy(const WorkingContext& ctx, const QString& account) {
    // Paid or pending only means something where the company keeps treasury.
    if (!ctx.Tesoreria) return;
    add(journal::Desc, account.isEmpty() ? Missatge(ctx, 6676) : Missatge(ctx, 6677) + account);
}

void JournalRows::closingAmounts(const WorkingContext& ctx, Money exempt, Money irpfBase,
                                 const QString& irpfPercent, Money withholding, Money total) {
    if (exempt != Money{})
        amount(QStringLiteral(" BASE IVA NO APLICABLE: ") + Format_Import(ctx, exempt), exempt);
    if (withholding != Money{})
        amount(QStringLiteral("BASE IRPF: ") + Format_Import(ctx, irpfBase) + QStringLiteral(" ") +
                   irpfPercent + QStringLiteral("% ") + Missatge(ctx, 653) + QStringLiteral(": ") +
                   Format_Import(ctx, withholding),
               withholding);
    amount(QStringLiteral("TOTAL: ") + Format_Import(ctx, total), total);
}

void JournalRows::result(const WorkingContext& ctx, int affected, std::int64_t number,
                         const QString& modifyKind) {
    if (affected != 1) {
        add(journal::Blank);
        add(journal::ResultadoNO, Missatge(ctx, 655));
        add(journal::ResultadoNO, Missatge(ctx, 656));
        return;
    }
    push({modifyKind, modifyCaption(modifyKind), number});
    add(journal::Blank);
    add(journal::ResultadoSI, Missatge(ctx, 654));
    add(journal::Final, QString(40, QChar(0x00B7)));
    add(journal::Blank);
}

}  // namespace tallora
