#include "sale_journal.h"

#include "context/common_helpers.h"
#include "context/messages.h"
#include "context/working_context.h"

namespace tallora::sales {
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

class Rows {
public:
    void add(const QString& kind, const QString& text = {}) { rows_.push_back({kind, text, 0}); }
    void amount(const QString& text, Money value) {
        add(value > Money{} ? journal::ImportVerd : journal::ImportVermell, text);
    }
    std::vector<JournalRow> take() { return std::move(rows_); }
    void push(JournalRow row) { rows_.push_back(std::move(row)); }

private:
    std::vector<JournalRow> rows_;
};

QString rateCaption(double rate) {
    return QString::number(rate) + QStringLiteral(" %");
}

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
    Rows rows;
    rows.add(journal::Titol, Missatge(ctx, 614));
    rows.add(journal::Titol, Missatge(ctx, 621) + now.toString(QStringLiteral("dd/MM/yy")) +
                                 QStringLiteral("   Hora: ") +
                                 now.toString(QStringLiteral("hh:mm:ss")));
    rows.add(journal::Blank);
    return rows.take();
}

std::vector<JournalRow> Diari_Apunt(const WorkingContext& ctx, const SaleEntry& e,
                                    const JournalPosting& p) {
    Rows rows;
    rows.add(journal::Start, Missatge(ctx, p.change ? 651 : 649));
    rows.add(journal::Desc, Missatge(ctx, 650) + e.lblFecha);
    rows.add(journal::Desc, e.txtClient);
    if (e.rebut) {
        for (const QString& line : {e.rebutDomicili, e.rebutPoblacio, e.rebutNif})
            rows.add(journal::Desc, line);
        for (const QString& line : e.concepte)
            if (!line.isEmpty()) rows.add(journal::Desc, line);
    }
    rows.add(journal::Desc, e.txtTipus);
    rows.add(journal::Desc, QStringLiteral("Descrip.: ") + e.txtdescripcio + e.cmbSerie);
    if (p.classification && !e.clasificacion.isEmpty()) rows.add(journal::Desc, e.clasificacion);
    rows.add(journal::Desc, p.type.caption);
    if (p.type.modifyKind == journal::Modificar && e.entitat != QStringLiteral("Marca") &&
        !e.rebut)
        rows.add(journal::Desc, e.entitat.isEmpty() ? Missatge(ctx, 6676)
                                                    : Missatge(ctx, 6677) + e.entitat);
    for (std::size_t i = 0; i < 3; ++i) {
        const Money base = amountOf(ctx, e.txtBase[i]);
        if (base == Money{}) continue;
        rows.amount(QStringLiteral("BASE: ") + rateCaption(ctx.TipusIVA[i]) + QStringLiteral(" ") +
                        Format_Import(ctx, base),
                    base);
        const Money iva = amountOf(ctx, e.txtIVA[i]);
        rows.amount(QStringLiteral("IVA: ") + Format_Import(ctx, iva), iva);
        const Money re = amountOf(ctx, e.txtRE[i]);
        if (re != Money{}) rows.amount(QStringLiteral("R.E. ") + Format_Import(ctx, re), re);
        rows.add(journal::Blank);
    }
    if (e.Exempta != Money{})
        rows.amount(QStringLiteral(" BASE IVA NO APLICABLE: ") + Format_Import(ctx, e.Exempta),
                    e.Exempta);
    const Money withholding = amountOf(ctx, e.txtRetencio);
    if (withholding != Money{})
        rows.amount(QStringLiteral("BASE IRPF: ") + Format_Import(ctx, amountOf(ctx, e.txtBaseIRPF)) +
                        QStringLiteral(" ") + e.Text1 + QStringLiteral("% ") + Missatge(ctx, 653) +
                        QStringLiteral(": ") + Format_Import(ctx, withholding),
                    withholding);
    const Money total = amountOf(ctx, e.txtTotal);
    rows.amount(QStringLiteral("TOTAL: ") + Format_Import(ctx, total), total);
    if (p.affected != 1) {
        rows.add(journal::Blank);
        rows.add(journal::ResultadoNO, Missatge(ctx, 655));
        rows.add(journal::ResultadoNO, Missatge(ctx, 656));
    } else {
        rows.push({p.type.modifyKind, modifyCaption(p.type.modifyKind), p.ordre});
        rows.add(journal::Blank);
        rows.add(journal::ResultadoSI, Missatge(ctx, 654));
        rows.add(journal::Final, QString(40, QChar(0x00B7)));
        rows.add(journal::Blank);
    }
    return rows.take();
}

}  // namespace tallora::sales
