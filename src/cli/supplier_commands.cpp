#include "commands.h"
#include "context/working_context.h"
#include "master/suppliers.h"
#include "master_common.h"

#include <utility>
#include <vector>

namespace tallora::cli {
namespace {

using master::Supplier;

const std::vector<std::pair<const char*, QString Supplier::*>>& textFields() {
    static const std::vector<std::pair<const char*, QString Supplier::*>> fields{
        {"name", &Supplier::nom},       {"address", &Supplier::direccio},
        {"town", &Supplier::poblacio},  {"province", &Supplier::provincia},
        {"postal-code", &Supplier::cp}, {"nif", &Supplier::nif},
        {"phone", &Supplier::telefon},  {"fax", &Supplier::fax},
        {"email", &Supplier::email},    {"web", &Supplier::web},
        {"iban", &Supplier::iban},      {"bic", &Supplier::bic}};
    return fields;
}

void takeFields(const Session& s, const CliOptions& o, Supplier& p) {
    for (const auto& [option, field] : textFields()) takeText(o, option, p.*field);
    if (o.given(QStringLiteral("balance")))
        p.saldo = fieldAmount(s.ctx, o.value(QStringLiteral("balance")));
}

// The balance and the bank account show only with treasury.
bool fieldsExist(Session& s, const CliOptions& o) {
    for (const char* option : {"balance", "iban", "bic"})
        if (o.given(QString::fromLatin1(option)) &&
            !needsTreasury(s, QStringLiteral("--") + QString::fromLatin1(option)))
            return false;
    return true;
}

}  // namespace

int suppliersCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    if (!enterMasterFiles(s, w)) return kRefused;
    for (const Supplier& p : master::supplierRecords(s.ctx)) {
        for (const QString* text : {&p.proveidor, &p.nom, &p.nif, &p.direccio, &p.poblacio,
                                    &p.provincia, &p.cp, &p.telefon, &p.fax, &p.email, &p.web})
            s.out << *text << '\t';
        s.out << p.saldo << '\n';
    }
    return s.finish(true);
}

int supplierAddCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    amountArgument(QStringLiteral("balance"), o.value(QStringLiteral("balance")));
    if (!enterMasterFiles(s, w) || !fieldsExist(s, o)) return kRefused;
    Supplier p;
    takeFields(s, o, p);
    const master::Outcome outcome = master::saveSupplier(s.ctx, s.dialogs, p, true);
    if (outcome.done()) s.out << p.proveidor << '\n';
    return outcomeCode(s, outcome);
}

int supplierChangeCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    amountArgument(QStringLiteral("balance"), o.value(QStringLiteral("balance")));
    if (!enterMasterFiles(s, w) || !fieldsExist(s, o)) return kRefused;
    auto p = master::supplierByNumber(s.ctx, number);
    if (!p) return noSuchRecord(s, QStringLiteral("supplier"), number);
    takeFields(s, o, *p);
    return outcomeCode(s, master::saveSupplier(s.ctx, s.dialogs, *p, false));
}

int supplierRemoveCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w = exerciseWords(o);
    const QString number = numberArgument(o.arguments[2]);
    if (!enterMasterFiles(s, w)) return kRefused;
    if (!master::supplierByNumber(s.ctx, number))
        return noSuchRecord(s, QStringLiteral("supplier"), number);
    return outcomeCode(s, master::deleteSupplier(s.ctx, s.dialogs, number));
}

}  // namespace tallora::cli
