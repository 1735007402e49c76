#include "banking/account_numbers.h"
#include "commands.h"
#include "context/working_context.h"
#include "master/customers.h"
#include "master/suppliers.h"
#include "master_common.h"

#include <utility>
#include <vector>

namespace tallora::cli {
namespace {

using master::Customer;

const std::vector<std::pair<const char*, QString Customer::*>>& textFields() {
    static const std::vector<std::pair<const char*, QString Customer::*>> fields{
        {"name", &Customer::nom},
        {"address", &Customer::direccio},
        {"town", &Customer::poblacio},
        {"province", &Customer::provincia},
        {"postal-code", &Customer::cp},
        {"nif", &Customer::nif},
        {"phone", &Customer::telefon},
        {"fax", &Customer::fax},
        {"email", &Customer::email},
        {"web", &Customer::web},
        {"payment", &Customer::formaPago},
        {"bank", &Customer::entidad},
        {"ccc", &Customer::ccc},
        {"mandate", &Customer::mandatoReferencia},
        {"mandate-date", &Customer::mandatoFirma}};
    return fields;
}

// The tax-number field drops every key but digits and the letters a-z.
void checkNif(const QString& nif) {
    for (const QChar c : nif)
        if (!((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z')))
            throw UsageError{
                QStringLiteral("--nif: \"%1\" holds a character other than digits and letters")
                    .arg(nif)};
}

// The words of the fields, checked before anything is opened.
void checkFields(const CliOptions& o) {
    checkNif(o.value(QStringLiteral("nif")));
    if (o.given(QStringLiteral("re"))) yesNoArgument(QStringLiteral("re"), o.value("re"));
    if (o.given(QStringLiteral("mandate-recurrent")))
        yesNoArgument(QStringLiteral("mandate-recurrent"), o.value("mandate-recurrent"));
    amountArgument(QStringLiteral("balance"), o.value(QStringLiteral("balance")));
}

// The balance shows only with treasury, the commercial tab only with billing.
bool fieldsExist(Session& s, const CliOptions& o) {
    if (o.given(QStringLiteral("balance")) && !needsTreasury(s, QStringLiteral("--balance")))
        return false;
    for (const char* option :
         {"payment", "bank", "ccc", "mandate", "mandate-date", "mandate-recurrent"})
        if (o.given(QString::fromLatin1(option)) &&
            !needsBilling(s, QStringLiteral("--") + QString::fromLatin1(option)))
            return false;
    return true;
}

void takeFields(const Session& s, const CliOptions& o, Customer& c) {
    for (const auto& [option, field] : textFields()) takeText(o, option, c.*field);
    if (o.given(QStringLiteral("re"))) c.re = yesNoArgument(QStringLiteral("re"), o.value("re"));
    if (o.given(QStringLiteral("mandate-recurrent")))
        c.mandatoRecurrente =
            yesNoArgument(QStringLiteral("mandate-recurrent"), o.value("mandate-recurrent"));
    if (o.given(QStringLiteral("balance")))
        c.saldo = fieldAmount(s.ctx, o.value(QStringLiteral("balance")));
}

QString yesNo(bool value) {
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

}  // namespace

int customersCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w)) return kRefused;
    for (const Customer& c : master::customerRecords(s.ctx)) {
        for (const QString* text : {&c.client, &c.nom, &c.nif, &c.direccio, &c.poblacio,
                                    &c.provincia, &c.cp, &c.telefon, &c.fax, &c.email, &c.web})
            s.out << *text << '\t';
        s.out << yesNo(c.re) << '\t' << c.saldo;
        for (const QString* text : {&c.formaPago, &c.entidad, &c.ccc}) s.out << '\t' << *text;
        s.out << '\n';
    }
    return s.finish(true);
}

// The bank side of the parties: each customer's account and mandate, each supplier's IBAN.
int sepaPartiesCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w)) return kRefused;
    if (s.ctx.Facturacio)
        for (const Customer& c : master::customerRecords(s.ctx)) {
            const auto iban = banking::ibanOfAccount(c.ccc);
            s.out << "customer\t" << c.client << '\t' << c.nom << '\t'
                  << (iban ? banking::groupedAccount(*iban) : c.ccc) << '\t' << c.mandatoReferencia
                  << '\t' << c.mandatoFirma << '\t'
                  << (c.mandatoReferencia.isEmpty() ? QString()
                      : c.mandatoRecurrente         ? QStringLiteral("RCUR")
                                                    : QStringLiteral("FRST"))
                  << '\n';
        }
    if (s.ctx.Tesoreria)
        for (const master::Supplier& p : master::supplierRecords(s.ctx))
            s.out << "supplier\t" << p.proveidor << '\t' << p.nom << '\t' << p.iban << '\t' << p.bic
                  << '\n';
    return s.finish(true);
}

int customerAddCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    checkFields(o);
    if (!enterMasterFiles(s, w) || !fieldsExist(s, o)) return kRefused;
    Customer c;
    takeFields(s, o, c);
    const master::Outcome outcome = master::saveCustomer(s.ctx, s.dialogs, c, true);
    if (outcome.done()) s.out << c.client << '\n';
    return outcomeCode(s, outcome);
}

int customerChangeCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    checkFields(o);
    if (!enterMasterFiles(s, w) || !fieldsExist(s, o)) return kRefused;
    auto c = master::customerByNumber(s.ctx, number);
    if (!c) return noSuchRecord(s, QStringLiteral("customer"), number);
    takeFields(s, o, *c);
    return outcomeCode(s, master::saveCustomer(s.ctx, s.dialogs, *c, false));
}

int customerRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    if (!master::customerByNumber(s.ctx, number))
        return noSuchRecord(s, QStringLiteral("customer"), number);
    return outcomeCode(s, master::deleteCustomer(s.ctx, s.dialogs, number));
}

}  // namespace tallora::cli
