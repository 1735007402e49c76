#include "cli.h"

#include "cli_options.h"
#include "commands.h"
#include "session.h"
#include "store/store_error.h"
#include "usage.h"

#include <exception>

namespace tallora::cli {
namespace {

struct Command {
    QString name;
    QString arguments;  // as the usage shows them
    qsizetype minArguments;
    qsizetype maxArguments;  // -1: no limit
    QStringList options;     // besides the global ones
    int (*run)(Session&, const CliOptions&);
};

QStringList rateOptions() {
    return {"iva1", "iva2", "iva3", "re1", "re2", "re3", "ivas1", "ivas2", "ivas3", "ivas4"};
}

QStringList customerOptions() {
    return {"name",    "address", "town",  "province", "postal-code",  "nif",
            "phone",   "fax",     "email", "web",      "re",           "balance",
            "payment", "bank",    "ccc",   "mandate",  "mandate-date", "mandate-recurrent"};
}
QStringList supplierOptions() {
    return {"name", "address", "town", "province", "postal-code", "nif", "phone",
            "fax",  "email",   "web",  "balance",  "iban",        "bic"};
}
QStringList treasuryAccountOptions() {
    return {"name", "kind", "ccc", "balance"};
}
QStringList otherAccountOptions() {
    return {"name", "group", "group-name", "balance", "kind"};
}
QStringList referenceOptions() {
    return {"code", "description", "price"};
}

// The fields of the sales screen; a change takes them all but the rate of the split.
QStringList saleOptions() {
    return QStringLiteral(
               "day month customer account description series total irpf-base irpf-percent "
               "irpf-amount base1 base2 base3 iva1 iva2 iva3 re1 re2 re3 treasury-account due "
               "classification concept1 concept2 concept3 concept4 concept5")
        .split(u' ');
}

// The billing tab: the lines and the commercial fields of the document.
QStringList documentOptions() {
    return {"line", "payment", "bank-name", "ccc"};
}

// The fields of the purchases screen; a change takes them all but the rate of the split.
QStringList purchaseOptions() {
    return QStringLiteral(
               "group day month supplier account description series total irpf-base "
               "irpf-percent base1 base2 base3 base4 iva1 iva2 iva3 iva4 treasury-account due "
               "classification")
        .split(u' ');
}
QStringList provisionOptions() {
    return {"day", "month", "description", "total", "treasury-account"};
}
QStringList otherMovementOptions() {
    return {"date", "concept", "amount", "from-treasury", "from-other", "to-treasury", "to-other"};
}
QStringList inquiryOptions() {
    return {"from", "to", "operator", "amount", "order"};
}

const std::vector<Command>& commands() {
    static const std::vector<Command> table{
        {"units", "", 0, 0, {}, unitsCommand},
        {"companies", "", 0, 0, {}, companiesCommand},
        {"company-create",
         "",
         0,
         0,
         {"name", "address", "town", "postal-code", "nif", "treasury"},
         companyCreateCommand},
        {"company-change",
         "NIF8 YYYY",
         2,
         2,
         {"name", "address", "town", "postal-code", "nif", "treasury", "no-treasury"},
         companyChangeCommand},
        {"company-remove", "NIF8", 1, 1, {}, companyRemoveCommand},
        {"exercises", "NIF8", 1, 1, {}, exercisesCommand},
        {"exercise-create", "NIF8", 1, 1, QStringList{"year", "kind", "currency"} + rateOptions(),
         exerciseCreateCommand},
        {"exercise-remove", "NIF8 YYYY", 2, 2, {}, exerciseRemoveCommand},
        {"exercise-open", "NIF8 YYYY", 2, 2, {}, exerciseOpenCommand},
        {"exercise-rates", "NIF8 YYYY", 2, 2, rateOptions(), exerciseRatesCommand},
        {"months", "NIF8 YYYY", 2, 2, {}, monthsCommand},
        {"month-lock", "NIF8 YYYY M [M...]", 3, -1, {}, monthLockCommand},
        {"month-unlock", "NIF8 YYYY M [M...]", 3, -1, {}, monthUnlockCommand},
        {"repair", "NIF8 YYYY", 2, 2, {}, repairCommand},
        {"compact", "NIF8 YYYY", 2, 2, {}, compactCommand},
        {"customers", "NIF8 YYYY", 2, 2, {}, customersCommand},
        {"customer-add", "NIF8 YYYY", 2, 2, customerOptions(), customerAddCommand},
        {"customer-change", "NIF8 YYYY NUMBER", 3, 3, customerOptions(), customerChangeCommand},
        {"customer-remove", "NIF8 YYYY NUMBER", 3, 3, {}, customerRemoveCommand},
        {"suppliers", "NIF8 YYYY", 2, 2, {}, suppliersCommand},
        {"supplier-add", "NIF8 YYYY", 2, 2, supplierOptions(), supplierAddCommand},
        {"supplier-change", "NIF8 YYYY NUMBER", 3, 3, supplierOptions(), supplierChangeCommand},
        {"supplier-remove", "NIF8 YYYY NUMBER", 3, 3, {}, supplierRemoveCommand},
        {"accounts", "NIF8 YYYY FAMILY", 3, 3, {}, accountsCommand},
        {"account-add", "NIF8 YYYY FAMILY", 3, 3, {"name", "class"}, accountAddCommand},
        {"account-change",
         "NIF8 YYYY FAMILY NUMBER",
         4,
         4,
         {"name", "class"},
         accountChangeCommand},
        {"account-remove", "NIF8 YYYY FAMILY NUMBER", 4, 4, {}, accountRemoveCommand},
        {"treasury-accounts", "NIF8 YYYY", 2, 2, {}, treasuryAccountsCommand},
        {"treasury-account-add", "NIF8 YYYY", 2, 2, treasuryAccountOptions(),
         treasuryAccountAddCommand},
        {"treasury-account-change", "NIF8 YYYY NUMBER", 3, 3, treasuryAccountOptions(),
         treasuryAccountChangeCommand},
        {"treasury-account-remove", "NIF8 YYYY NUMBER", 3, 3, {}, treasuryAccountRemoveCommand},
        {"other-accounts", "NIF8 YYYY", 2, 2, {}, otherAccountsCommand},
        {"other-account-add", "NIF8 YYYY", 2, 2, otherAccountOptions(), otherAccountAddCommand},
        {"other-account-change", "NIF8 YYYY NUMBER", 3, 3, otherAccountOptions(),
         otherAccountChangeCommand},
        {"other-account-remove", "NIF8 YYYY NUMBER", 3, 3, {}, otherAccountRemoveCommand},
        {"references", "NIF8 YYYY", 2, 2, {}, referencesCommand},
        {"reference-add", "NIF8 YYYY", 2, 2, referenceOptions(), referenceAddCommand},
        {"reference-change", "NIF8 YYYY CODE", 3, 3, referenceOptions(), referenceChangeCommand},
        {"reference-remove", "NIF8 YYYY CODE", 3, 3, {}, referenceRemoveCommand},
        {"portfolio", "NIF8 YYYY", 2, 2, {"suppliers", "party", "order"}, portfolioCommand},
        {"collection-run",
         "NIF8 YYYY [RECEIPT[:AMOUNT]...]",
         2,
         -1,
         {"account", "date"},
         collectionRunCommand},
        {"payment-run",
         "NIF8 YYYY [RECEIPT[:AMOUNT]...]",
         2,
         -1,
         {"account", "date"},
         paymentRunCommand},
        {"sepa-debit",
         "NIF8 YYYY [RECEIPT[:AMOUNT]...]",
         2,
         -1,
         {"account", "date", "collection-date", "out"},
         sepaDebitCommand},
        {"sepa-transfer",
         "NIF8 YYYY [RECEIPT[:AMOUNT]...]",
         2,
         -1,
         {"account", "date", "execution-date", "out"},
         sepaTransferCommand},
        {"sepa-runs", "NIF8 YYYY", 2, 2, {}, sepaRunsCommand},
        {"sepa-parties", "NIF8 YYYY", 2, 2, {}, sepaPartiesCommand},
        {"sepa-settings", "NIF8 YYYY", 2, 2, {"suffix", "versions"}, sepaSettingsCommand},
        {"sepa-file", "NIF8 YYYY RUN FILE", 4, 4, {}, sepaFileCommand},
        {"draft", "NIF8 YYYY collections|payments", 3, 3, {"empty", "open"}, draftCommand},
        {"statement", "NIF8 YYYY [ACCOUNT]", 2, 3, {"from", "to"}, statementCommand},
        {"movement-remove", "NIF8 YYYY MOVEMENT", 3, 3, {}, movementRemoveCommand},
        {"return-receipt", "NIF8 YYYY MOVEMENT", 3, 3, {"date"}, returnReceiptCommand},
        {"other-movement-add", "NIF8 YYYY", 2, 2, otherMovementOptions(), otherMovementAddCommand},
        {"other-movement-change", "NIF8 YYYY NUMBER", 3, 3, otherMovementOptions(),
         otherMovementChangeCommand},
        {"other-movement-remove", "NIF8 YYYY NUMBER", 3, 3, {}, otherMovementRemoveCommand},
        {"other-movements",
         "NIF8 YYYY",
         2,
         2,
         {"from", "to", "operator", "amount", "account"},
         otherMovementsCommand},
        {"post-sale", "NIF8 YYYY", 2, 2, saleOptions() << "rate" << documentOptions(),
         postSaleCommand},
        {"post-document", "NIF8 YYYY TYPE", 3, 3, saleOptions() << "rate" << documentOptions(),
         postDocumentCommand},
        {"convert-document", "NIF8 YYYY TYPE NUMBER TO-TYPE", 5, 5,
         saleOptions() << documentOptions(), convertDocumentCommand},
        {"documents", "NIF8 YYYY TYPE", 3, 3, {"customer", "from", "to"}, documentsCommand},
        {"document-remove", "NIF8 YYYY TYPE NUMBER", 4, 4, {}, documentRemoveCommand},
        {"print-document", "NIF8 YYYY TYPE NUMBER", 4, 4, {"pdf"}, printDocumentCommand},
        {"change-sale", "NIF8 YYYY NUMBER", 3, 3, saleOptions() << "pending", changeSaleCommand},
        {"post-purchase", "NIF8 YYYY", 2, 2, purchaseOptions() << "rate", postPurchaseCommand},
        {"change-purchase", "NIF8 YYYY NUMBER", 3, 3, purchaseOptions() << "pending",
         changePurchaseCommand},
        {"purchases", "NIF8 YYYY", 2, 2,
         inquiryOptions() << "supplier"
                          << "account",
         purchasesCommand},
        {"purchase-remove", "NIF8 YYYY NUMBER", 3, 3, {}, purchaseRemoveCommand},
        {"post-provision", "NIF8 YYYY", 2, 2, provisionOptions() << "customer",
         postProvisionCommand},
        {"post-disbursement", "NIF8 YYYY", 2, 2, provisionOptions() << "supplier",
         postDisbursementCommand},
        {"change-provision", "NIF8 YYYY NUMBER", 3, 3,
         provisionOptions() << "kind"
                            << "customer"
                            << "supplier",
         changeProvisionCommand},
        {"provisions", "NIF8 YYYY", 2, 2,
         inquiryOptions() << "party"
                          << "kind",
         provisionsCommand},
        {"provision-remove", "NIF8 YYYY NUMBER", 3, 3, {}, provisionRemoveCommand},
        {"sales", "NIF8 YYYY", 2, 2,
         inquiryOptions() << "customer"
                          << "account",
         salesCommand},
        {"sale-remove", "NIF8 YYYY NUMBER", 3, 3, {}, saleRemoveCommand},
        {"sale-to-portfolio", "NIF8 YYYY NUMBER", 3, 3, {}, saleToPortfolioCommand},
        {"sample-exercise", "NIF8 YYYY", 2, 2, {"invoices", "seed"}, sampleExerciseCommand},
        {"export", "NIF8 YYYY FILE", 3, 3, {"customers", "suppliers", "chart"}, exportCommand},
        {"import",
         "NIF8 YYYY FILE",
         3,
         3,
         {"whole", "customers", "suppliers", "chart", "record-invoices"},
         importCommand},
        {"n43-show", "FILE", 1, 1, {}, n43ShowCommand},
        {"n43-import",
         "NIF8 YYYY ACCOUNT FILE",
         4,
         4,
         {"accept-matches", "other-account"},
         n43ImportCommand},
        {"verifactu-records", "NIF8", 1, 1, {}, verifactuRecordsCommand},
        {"verifactu-check", "NIF8", 1, 1, {}, verifactuCheckCommand},
        {"verifactu-xml", "NIF8 FILE", 2, 2, {}, verifactuXmlCommand},
        {"verifactu-send", "NIF8", 1, 1, {"certificate"}, verifactuSendCommand},
        {"book", "NAME NIF8 YYYY", 3, 3,
         QStringList{"from", "to", "series", "irpf", "date", "pdf", "xlsx", "csv", "text", "party",
                     "invoices", "level"},
         bookCommand},
        {"aeat-books", "NIF8 YYYY FILE", 3, 3, {"from", "to", "monthly"}, aeatBooksCommand},
        {"model-303", "NIF8 YYYY PERIOD", 3, 3, {"file", "box"}, modelCommand},
        {"model-347", "NIF8 YYYY", 2, 2, {"file"}, modelCommand},
        {"model-349", "NIF8 YYYY PERIOD", 3, 3, {"file"}, modelCommand},
        {"model-111", "NIF8 YYYY PERIOD", 3, 3, {"file", "box"}, modelCommand},
        {"model-130", "NIF8 YYYY PERIOD", 3, 3, {"box"}, modelCommand},
    };
    return table;
}

const Command& commandFor(const CliOptions& o) {
    if (o.command.isEmpty()) throw UsageError{QStringLiteral("no command given")};
    for (const Command& c : commands()) {
        if (c.name != o.command) continue;
        for (const QString& option : o.names())
            if (!globalOptions().contains(option) && !c.options.contains(option))
                throw UsageError{
                    QStringLiteral("option --%1 does not go with %2").arg(option, c.name)};
        const qsizetype n = o.arguments.size();
        if (n < c.minArguments || (c.maxArguments >= 0 && n > c.maxArguments)) {
            const QString expected =
                c.arguments.isEmpty() ? QStringLiteral("no arguments") : c.arguments;
            throw UsageError{QStringLiteral("%1 takes %2").arg(c.name, expected)};
        }
        return c;
    }
    throw UsageError{QStringLiteral("unknown command \"%1\"").arg(o.command)};
}

int usageError(QTextStream& err, const QString& reason) {
    err << QStringLiteral("tallora5-cli: ") << reason << '\n'
        << QStringLiteral("Try 'tallora5-cli --help'.") << '\n';
    err.flush();
    return kUsageError;
}

}  // namespace

bool printsReport(const QStringList& args) {
    try {
        const CliOptions o = parseCommandLine(args);
        if (o.command == QStringLiteral("book"))
            return o.given(QStringLiteral("pdf")) || o.given(QStringLiteral("xlsx")) ||
                   o.given(QStringLiteral("csv"));
        return o.command == QStringLiteral("print-document") && o.given(QStringLiteral("pdf"));
    } catch (const UsageError&) {
        return false;
    }
}

int runCli(const QStringList& args, QTextStream& out, QTextStream& err) {
    try {
        const CliOptions o = parseCommandLine(args);
        if (o.flags.contains(QStringLiteral("help")) || o.command == QStringLiteral("help")) {
            out << usageText();
            out.flush();
            return kDone;
        }
        const Command& command = commandFor(o);
        for (const QString& folder : {QStringLiteral("unit"), QStringLiteral("program-dir")})
            if (o.given(folder) && o.value(folder).isEmpty())
                throw UsageError{QStringLiteral("option --%1 needs a folder").arg(folder)};
        Session session(out, err, o.flags.contains(QStringLiteral("yes")),
                        o.value(QStringLiteral("unit")), o.value(QStringLiteral("program-dir")));
        try {
            const int code = command.run(session, o);
            out.flush();
            return code;
        } catch (const store::StoreError& e) {
            return session.refuse(e.message());
        } catch (const std::exception& e) {
            return session.refuse(QString::fromLocal8Bit(e.what()));
        }
    } catch (const UsageError& e) {
        return usageError(err, e.reason);
    }
}

}  // namespace tallora::cli
