#include "master_common.h"

#include "cli.h"
#include "context/common_helpers.h"
#include "context/money.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "shell/settings_files.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <QRegularExpression>

namespace tallora::cli {
namespace {

// True when the file holds the table with every one of the fields.
bool hasFields(const QString& path, const QString& table, const QStringList& fields) {
    try {
        store::Database db = store::Database::open(path);
        if (!store::tableExists(db, table)) return false;
        for (const QString& field : fields)
            if (!store::fieldExists(db, table, field)) return false;
        return true;
    } catch (const store::StoreError&) {
        return false;
    }
}

// What the opening of an exercise (its upgrades and, with treasury, the treasury set-up)
// leaves in the databases that the master files and their refusals read.
bool openedForScreens(const WorkingContext& ctx) {
    using namespace schema;
    QStringList people{"fax", "email", "web", "cp", "provincia"};
    if (ctx.Tesoreria) people << QStringLiteral("saldo");
    bool ready = hasFields(ctx.exerciseFile(db::Gest), "Clients", people) &&
                 hasFields(ctx.exerciseFile(db::Gest), "Proveidors", people) &&
                 hasFields(ctx.exerciseFile(db::Supl), "Suplidos", {"Tipus"});
    if (ready && ctx.Tesoreria)
        ready = hasFields(ctx.exerciseFile(db::Tesorer), "entidades", {"ccc"}) &&
                hasFields(ctx.exerciseFile(db::Tesorer), "movimientos", {"cuenta"}) &&
                hasFields(ctx.exerciseFile(db::Comptes), "Otras", {"Tipus"}) &&
                hasFields(ctx.companyFile(db::Cartera), "cartera", {"cliente"});
    if (ready && ctx.Facturacio)
        ready = hasFields(ctx.companyFile(db::Fact), "comercial_clientes", {"ccc"}) &&
                hasFields(ctx.companyFile(db::Fact), "documentos", {"Client"}) &&
                hasFields(ctx.companyFile(db::Fact), "Referencias", {"Precio"});
    return ready;
}

}  // namespace

ExerciseWords exerciseWords(const CliOptions& o) {
    return {o.arguments[0], yearArgument(o.arguments[1])};
}

QString numberArgument(const QString& text) {
    static const QRegularExpression number(QStringLiteral("^[0-9]{1,9}$"));
    if (!number.match(text).hasMatch())
        throw UsageError{QStringLiteral("\"%1\" is not a record number").arg(text)};
    // Without leading zeros, as the store gives numbers.
    return QString::number(text.toLongLong());
}

QString amountArgument(const QString& option, const QString& text) {
    static const QRegularExpression amount(QStringLiteral("^-?[0-9]+([.,][0-9]+)?$"));
    if (text.isEmpty()) return text;
    QString plain = text;
    plain.replace(u',', u'.');
    // The range of the store's amounts is checked here too, so that nothing is touched for it.
    if (!amount.match(text).hasMatch() || !Money::parse(plain, u'.'))
        throw UsageError{QStringLiteral("--%1: \"%2\" is not an amount").arg(option, text)};
    return text;
}

bool yesNoArgument(const QString& option, const QString& text) {
    return choiceArgument(option, text, {"yes", "no"}) == 0;
}

qsizetype choiceArgument(const QString& option, const QString& text, const QStringList& words) {
    const qsizetype at = words.indexOf(text);
    if (at < 0)
        throw UsageError{QStringLiteral("--%1: \"%2\" is not one of: %3")
                             .arg(option, text, words.join(QStringLiteral(", ")))};
    return at;
}

bool enterMasterFiles(Session& s, const ExerciseWords& w, Needs needs, const QString& what) {
    s.start();
    if (!s.enterExercise(w.nif8, w.year)) return false;
    if (needs == Needs::Treasury && !needsTreasury(s, what)) return false;
    if (needs == Needs::Billing && !needsBilling(s, what)) return false;
    // The shell reads the decimal mark as it starts; every amount field follows it.
    s.ctx.Decimal = settings::readDecimal(s.ctx.programDir);
    if (openedForScreens(s.ctx)) return true;
    s.refuse(QStringLiteral("the databases of the exercise %1 lack what its opening adds; "
                            "open it once: tallora5-cli exercise-open %2 %1")
                 .arg(w.year, w.nif8));
    return false;
}

bool needsTreasury(Session& s, const QString& what) {
    if (s.ctx.Tesoreria) return true;
    s.refuse(QStringLiteral("%1 needs treasury control, which the company \"%2\" does not have")
                 .arg(what, s.ctx.EmpresaNom));
    return false;
}

bool needsBilling(Session& s, const QString& what) {
    if (s.ctx.Facturacio) return true;
    s.refuse(QStringLiteral("%1 needs the billing module, which the company \"%2\" does not have")
                 .arg(what, s.ctx.EmpresaNom));
    return false;
}

QString fieldAmount(const WorkingContext& ctx, const QString& typed) {
    if (typed.isEmpty()) return typed;
    QString text = typed;
    // As the decimal key of the field does (Tecla_Decimal): either mark becomes the program's.
    text.replace(u',', ctx.decimalMark()).replace(u'.', ctx.decimalMark());
    const auto amount = Money::parse(text, ctx.decimalMark());
    return amount ? Format_Import(ctx, *amount) : typed;
}

void takeText(const CliOptions& o, const char* option, QString& field) {
    const QString name = QString::fromLatin1(option);
    if (o.given(name)) field = o.value(name);
}

int outcomeCode(const Session& s, const master::Outcome& outcome) {
    return s.finish(outcome.done());
}

int noSuchRecord(Session& s, const QString& what, const QString& key) {
    return s.refuse(
        QStringLiteral("the exercise %1 has no %2 \"%3\"").arg(s.ctx.Exercici, what, key));
}

}  // namespace tallora::cli
