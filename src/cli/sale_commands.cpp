// post-sale and change-sale: the sales screen's fields given as options, typed into the
// entry in the screen's order, then verified, written and journalled by the screen's logic.
#include "commands.h"
#include "context/list_files.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "entry_common.h"
#include "master/accounts.h"
#include "master/customers.h"
#include "master_common.h"
#include "sales/billing_document.h"
#include "sales/billing_lines.h"
#include "sales/sale_change.h"
#include "sales/sale_entry.h"
#include "sales/sale_journal.h"
#include "sales/sale_posting.h"
#include "sales/sale_validation.h"

#include <optional>

namespace tallora::cli {
namespace {

using sales::SaleEntry;

// Every word checked before anything is opened.
void checkWords(const CliOptions& o) {
    QStringList amounts{"total", "irpf-base", "irpf-amount"};
    for (std::size_t i = 0; i < 3; ++i)
        amounts << optionName("base", i) << optionName("iva", i) << optionName("re", i);
    checkPostingWords(o, amounts);
}

// What an exercise, a company or the billing module leave out of the screen.
bool fieldsExist(Session& s, const CliOptions& o) {
    const WorkingContext& ctx = s.ctx;
    // The lines and the commercial fields live on the billing tab.
    if (!ctx.Facturacio)
        for (const char* option : {"line", "payment", "bank-name", "ccc"})
            if (o.given(QString::fromLatin1(option))) {
                s.refuse(QStringLiteral("--%1: the company works without the billing module")
                             .arg(QString::fromLatin1(option)));
                return false;
            }
    // A shop's takings have no customer, no split, no amounts panel and no withholding.
    QStringList hidden{"customer", "rate", "irpf-base", "irpf-percent", "irpf-amount"};
    for (std::size_t i = 0; i < 3; ++i)
        hidden << optionName("base", i) << optionName("iva", i) << optionName("re", i);
    return postingOptionsExist(s, o, hidden);
}

// The customer taken from the list: the name found without regard to case gives the row's
// own name, its number and its recargo. A name the list lacks is left for the validation
// to refuse (640), as on the screen.
void takeCustomer(const WorkingContext& ctx, const QString& typed, SaleEntry& e) {
    const auto customer = master::customerByName(ctx, typed);
    e.txtClient = e.listClientsText = customer ? customer->nom : typed;
    e.clientNumber.reset();
    if (customer) e.clientNumber = customer->client.toLongLong();
    // As the screen takes a customer: Activa_RE, then a posted sale's quotas and total follow.
    sales::Activa_RE(e, customer && customer->re);
    if (!e.isNew()) sales::Recalcula_Apunt(ctx, e, e.reEnabled);
}

// The sales account from ListVendes; an unknown name is refused by the validation (642).
void takeAccount(const WorkingContext& ctx, const QString& typed, SaleEntry& e) {
    e.txtTipus = e.listVendesText = typed;
    for (const master::AccountItem& item : master::accountList(ctx, master::Family::Ingresos))
        if (item.nomCompte.compare(typed, Qt::CaseInsensitive) == 0) {
            e.txtTipus = e.listVendesText = item.nomCompte;
            return;
        }
}

// A number typed in a field of the lines: either decimal mark becomes the program's.
QString typedNumber(const WorkingContext& ctx, const QString& typed) {
    QString text = typed.trimmed();
    return text.replace(u',', ctx.decimalMark()).replace(u'.', ctx.decimalMark());
}

// --line "QTY|CONCEPT|PRICE|DTO|RATE", each added as btnFacturacionAlta adds it, in order.
bool takeLines(Session& s, const CliOptions& o, SaleEntry& e) {
    const WorkingContext& ctx = s.ctx;
    QStringList rates{QStringLiteral("0")};
    for (double rate : ctx.TipusIVA) rates << QString::number(rate);
    for (const QString& text : o.all(QStringLiteral("line"))) {
        const QStringList parts = text.split(u'|');
        if (parts.size() < 3 || parts.size() > 5)
            throw UsageError{QStringLiteral("--line \"%1\": QTY|CONCEPT|PRICE|DTO|RATE").arg(text)};
        sales::LineFields line;
        line.cantidad = typedNumber(ctx, parts[0]);
        line.concepto = parts[1];
        line.precio = fieldAmount(ctx, parts[2].trimmed());
        line.dto = parts.size() > 3 ? typedNumber(ctx, parts[3]) : QString();
        line.iva = parts.size() > 4 ? parts[4].trimmed() : QString();
        if (!line.iva.isEmpty()) {
            const auto rate = rateValue(line.iva);
            if (!rate || !rates.contains(QString::number(*rate))) {
                s.refuse(QStringLiteral("--line \"%1\": the rate is none of %2")
                             .arg(text, rates.join(QStringLiteral(", "))));
                return false;
            }
            line.iva = QString::number(*rate);
        }
        static const int messages[] = {0, 638, 6793, 6794};
        if (const auto refusal = sales::checkLine(ctx, e, line);
            refusal != sales::LineRefusal::None) {
            s.dialogs.stop(Missatge(ctx, messages[static_cast<int>(refusal)]));
            return false;
        }
        sales::saveLine(ctx, e, line);
    }
    return true;
}

// The billing tab: the commercial fields of the customer (Carrega_Comercial) unless given,
// the lines, and the amounts that follow from them.
bool takeBilling(Session& s, const CliOptions& o, SaleEntry& e, bool customerTaken) {
    const WorkingContext& ctx = s.ctx;
    if (customerTaken) {
        const sales::Commercial c = sales::Carrega_Comercial(ctx, e.clientNumber);
        e.billing.formaPago = c.formaPago;
        e.billing.entidad = c.entidad;
        e.billing.ccc = c.ccc;
    }
    takeText(o, "payment", e.billing.formaPago);
    takeText(o, "bank-name", e.billing.entidad);
    takeText(o, "ccc", e.billing.ccc);
    if (!takeLines(s, o, e)) return false;
    if (!o.given(QStringLiteral("line"))) return true;
    if (o.given(QStringLiteral("irpf-base")))
        e.txtBaseIRPF = fieldAmount(ctx, o.value(QStringLiteral("irpf-base")));
    if (o.given(QStringLiteral("irpf-percent")))
        e.Text1 = percentField(ctx, o.value(QStringLiteral("irpf-percent")));
    sales::sumLines(ctx, e, e.reEnabled);
    return true;
}

// IRPF and the amounts panel. A new entry is split by the rate first (leaving CmbIva); a base
// typed afterwards takes its quotas as leaving txtBase(i) does, and a quota typed overrides.
bool takeAmounts(Session& s, const CliOptions& o, SaleEntry& e) {
    const WorkingContext& ctx = s.ctx;
    if (o.given(QStringLiteral("total")))
        e.txtTotal = fieldAmount(ctx, o.value(QStringLiteral("total")));
    const bool irpfBase = o.given(QStringLiteral("irpf-base"));
    const bool irpfPercent = o.given(QStringLiteral("irpf-percent"));
    if (irpfBase) e.txtBaseIRPF = fieldAmount(ctx, o.value(QStringLiteral("irpf-base")));
    if (irpfPercent) e.Text1 = percentField(ctx, o.value(QStringLiteral("irpf-percent")));
    if (e.isNew()) {
        const auto rate = isTickets(ctx)
                              ? std::optional<double>(0.0)
                              : splitRate(s, o, {ctx.TipusIVA.begin(), ctx.TipusIVA.end()},
                                          anyBaseTyped(o, 3), QStringLiteral("rate"));
        if (!rate) return false;
        sales::Reparteix_Total(ctx, e, *rate, e.reEnabled);
    } else if (irpfBase || irpfPercent) {
        // A change of Text1 or of the base recomputes the amount withheld.
        e.txtRetencio = sales::irpfOf(ctx, e.txtBaseIRPF, e.Text1);
    }
    if (o.given(QStringLiteral("irpf-amount")))
        e.txtRetencio = fieldAmount(ctx, o.value(QStringLiteral("irpf-amount")));
    for (std::size_t i = 0; i < 3; ++i) {
        const QString base = optionName("base", i);
        if (!o.given(base)) continue;
        e.txtBase[i] = fieldAmount(ctx, o.value(base));
        sales::baseTyped(ctx, e, static_cast<int>(i));
    }
    for (std::size_t i = 0; i < 3; ++i) {
        const QString iva = optionName("iva", i);
        const QString re = optionName("re", i);
        if (o.given(iva)) e.txtIVA[i] = fieldAmount(ctx, o.value(iva));
        if (!o.given(re)) continue;
        // The recargo fields show only for a customer with recargo.
        if (!e.reEnabled) {
            s.refuse(QStringLiteral("--%1: the customer \"%2\" has no recargo de equivalencia")
                         .arg(re, e.txtClient));
            return false;
        }
        e.txtRE[i] = fieldAmount(ctx, o.value(re));
    }
    return true;
}

bool takeTreasury(Session& s, const CliOptions& o, SaleEntry& e) {
    if (!takeTreasuryAccount(s, o, e.entitat, e.entitatId)) return false;
    if (o.given(QStringLiteral("due"))) e.venciment = dueArgument(o.value(QStringLiteral("due")));
    return true;
}

void takeTexts(const Session& s, const CliOptions& o, SaleEntry& e) {
    takeText(o, "description", e.txtdescripcio);
    takeText(o, "series", e.cmbSerie);
    if (o.given(QStringLiteral("classification"))) e.clasificacion = classificationText(s.ctx, o);
    for (std::size_t i = 0; i < e.concepte.size(); ++i)
        if (o.given(optionName("concept", i))) e.concepte[i] = o.value(optionName("concept", i));
}

void printSaleJournal(Session& s, const SaleEntry& e, const sales::PostingResult& result,
                      bool change) {
    sales::JournalPosting posting;
    posting.ordre = result.ordre;
    posting.affected = result.affected;
    posting.change = change;
    posting.type = sales::journalType(e.billing.type);
    posting.classification = s.ctx.Intra;
    printJournal(s, sales::Diari_Apunt(s.ctx, e, posting));
}

// The entry typed, verified and written: the screen's steps in its order.
int post(Session& s, const CliOptions& o, SaleEntry& e) {
    EntryDialogs dialogs(s.dialogs);
    takeText(o, "day", e.txtDia);
    takeText(o, "month", e.txtMes);
    if (!dateChecked(s.ctx, dialogs, e.txtDia, e.txtMes, e.lblFecha)) return kRefused;
    const bool customer = o.given(QStringLiteral("customer"));
    if (customer) takeCustomer(s.ctx, o.value(QStringLiteral("customer")), e);
    if (o.given(QStringLiteral("account")))
        takeAccount(s.ctx, o.value(QStringLiteral("account")), e);
    takeTexts(s, o, e);
    if (s.ctx.Facturacio && !takeBilling(s, o, e, customer)) return kRefused;
    const bool fromLines = s.ctx.Facturacio && o.given(QStringLiteral("line"));
    if ((!fromLines && !takeAmounts(s, o, e)) || !takeTreasury(s, o, e)) return kRefused;

    sales::VerifyOptions options;
    options.classification = s.ctx.Intra;
    options.invoice = e.billing.type == sales::DocType::Factura;
    const sales::Verdict verdict = sales::Verifica_Apunt(s.ctx, dialogs, e, options);
    if (!verdict.ok) return kRefused;
    const bool change = e.isChange();
    const sales::PostingResult result = sales::GrabaApunt(s.ctx, e, *verdict.account);
    if (!result.error.isEmpty()) s.err << result.error << '\n';
    printSaleJournal(s, e, result, change);
    return s.finish(result.ok());
}

bool enterSales(Session& s, const CliOptions& o, const ExerciseWords& w) {
    return enterPostingScreen(s, w) && fieldsExist(s, o);
}

// A new entry of `type`: with the billing module its lines start empty, as on a fresh screen.
int postNew(Session& s, const CliOptions& o, sales::DocType type) {
    const ExerciseWords w = exerciseWords(o);
    checkWords(o);
    if (!enterSales(s, o, w)) return kRefused;
    if (type != sales::DocType::Factura && !s.ctx.Facturacio)
        return s.refuse(QStringLiteral("%1: quotes, drafts, proformas and delivery notes need the "
                                       "billing module")
                            .arg(o.command));
    SaleEntry e;
    e.txtdescripcio = QStringLiteral("-");
    e.venciment = QDate::currentDate();
    e.billing.type = type;
    if (s.ctx.Facturacio) {
        sales::Verifica_Numeracion(s.ctx);
        sales::clearLines(s.ctx);
    }
    offerOpenMonth(s.ctx, o, e.txtMes);
    return post(s, o, e);
}

}  // namespace

sales::DocType documentTypeArgument(const QString& text) {
    const auto type = sales::docTypeFrom(text);
    if (!type || text.trimmed().isEmpty())
        throw UsageError{QStringLiteral("\"%1\" is no document type: invoice, draft, quote, "
                                        "proforma or delivery-note")
                             .arg(text)};
    return *type;
}

namespace {

// The document `number` of `type` opened as the billing tab opens it; an invoice through
// Modifica_Venda. Nothing, after the refusal, when there is none.
std::optional<SaleEntry> openDocument(Session& s, sales::DocType type, const QString& number) {
    if (type == sales::DocType::Factura) {
        auto loaded = sales::Modifica_Venda(s.ctx, number);
        if (!loaded) {
            noSuchRecord(s, QStringLiteral("invoice"), number);
            return std::nullopt;
        }
        loaded->entry.reEnabled = sales::Client_RE(s.ctx, loaded->entry.txtClient);
        return loaded->entry;
    }
    auto e = sales::openDocument(s.ctx, type, number.toLongLong());
    if (!e) noSuchRecord(s, sales::docInfo(type).word, number);
    return e;
}

}  // namespace

int postSaleCommand(Session& s, const CliOptions& o) {
    return postNew(s, o, sales::DocType::Factura);
}

int postDocumentCommand(Session& s, const CliOptions& o) {
    return postNew(s, o, documentTypeArgument(o.arguments[2]));
}

int convertDocumentCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const sales::DocType from = documentTypeArgument(o.arguments[2]);
    const QString number = numberArgument(o.arguments[3]);
    const sales::DocType to = documentTypeArgument(o.arguments[4]);
    checkWords(o);
    if (!enterSales(s, o, w)) return kRefused;
    if (!s.ctx.Facturacio)
        return s.refuse(QStringLiteral("%1: documents need the billing module").arg(o.command));
    auto e = openDocument(s, from, number);
    if (!e) return kRefused;
    e->billing.type = to;
    return post(s, o, *e);
}

int changeSaleCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    checkWords(o);
    if (!enterSales(s, o, w)) return kRefused;
    auto loaded = sales::Modifica_Venda(s.ctx, number);
    if (!loaded) return noSuchRecord(s, QStringLiteral("sale"), number);
    // A sale settled in a collection run hides the treasury frame: its money rows stay.
    if (loaded->settled &&
        refusedForSettled(
            s, o, QStringLiteral("the sale %1 was settled in a collection run").arg(number)))
        return kRefused;
    SaleEntry& e = loaded->entry;
    e.reEnabled = sales::Client_RE(s.ctx, e.txtClient);
    return post(s, o, e);
}

}  // namespace tallora::cli
