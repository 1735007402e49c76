// book: a book of the books dialog printed to a PDF file or saved as a spreadsheet (XLSX or
// CSV), or its rows and footer summary as text, through the dialog's own launch: the same
// period check, rebuild and formulas.
#include "books/ledger_reports.h"
#include "books/operating_statement.h"
#include "books/trial_balance.h"
#include "books/vat_books.h"
#include "commands.h"
#include "inquiry_options.h"
#include "master_common.h"
#include "report/report_job.h"

#include <QDate>

namespace tallora::cli {
namespace {

using books::Book;
using books::Series;

Book bookArgument(const QString& name, bool irpf) {
    const QString n = name.toLower();
    if (n == u"sales") return irpf ? Book::SalesWithholding : Book::Sales;
    if (n == u"purchases") return irpf ? Book::PurchasesWithholding : Book::Purchases;
    if (irpf)
        throw UsageError{
            QStringLiteral("--irpf: only the sales and purchases books have a withholding list")};
    if (n == u"purchases-vat") return Book::PurchasesVat;
    if (n == u"investments") return Book::Investments;
    if (n == u"provisions") return Book::Provisions;
    if (n == u"347") return Book::Declaration;
    throw UsageError{QStringLiteral("\"%1\" is not a book: sales, purchases, purchases-vat, "
                                    "investments, provisions, 347, ledger-customers, "
                                    "ledger-suppliers, ledger-expenses, ledger-sales")
                         .arg(name)};
}

Series seriesArgument(const QString& text) {
    static const std::pair<const char*, Series> names[] = {
        {"all", Series::All},         {"normal", Series::Normal}, {"abonos", Series::CreditNotes},
        {"rect", Series::Rectifying}, {"intra", Series::Intra},   {"canarias", Series::Canarias}};
    for (const auto& [name, series] : names)
        if (text.compare(QLatin1String(name), Qt::CaseInsensitive) == 0) return series;
    throw UsageError{QStringLiteral("--series: \"%1\" is not one of all, normal, abonos, rect, "
                                    "intra, canarias")
                         .arg(text)};
}

// --pdf FILE, --xlsx FILE, --csv FILE or --text, exactly one: where the book goes; none for
// the text on the output.
std::optional<report::PrintRequest> bookOutput(const CliOptions& o) {
    static const std::pair<const char*, int> files[] = {{"pdf", report::Destination::File},
                                                        {"xlsx", report::Destination::Xlsx},
                                                        {"csv", report::Destination::Csv}};
    int given = o.flags.contains(QStringLiteral("text")) ? 1 : 0;
    std::optional<report::PrintRequest> output;
    for (const auto& [option, destination] : files) {
        const QString file = o.value(QString::fromLatin1(option));
        if (file.isEmpty()) continue;
        ++given;
        output = report::PrintRequest{destination, file};
    }
    if (given != 1)
        throw UsageError{
            QStringLiteral("give one of --pdf FILE, --xlsx FILE, --csv FILE or --text")};
    return output;
}

// The options a statement has no use for, refused with `why`.
void refuseOptions(const CliOptions& o, std::initializer_list<const char*> options,
                   const QString& why) {
    for (const char* option : options)
        if (o.given(QString::fromLatin1(option)))
            throw UsageError{QStringLiteral("--%1: %2").arg(QString::fromLatin1(option), why)};
}

// The extracts of the "listados" tab: ledger-customers and ledger-suppliers (with --party and
// --invoices), ledger-expenses, ledger-sales.
std::optional<books::Extract> extractArgument(const QString& name) {
    const QString n = name.toLower();
    if (n == u"ledger-customers") return books::Extract::Customers;
    if (n == u"ledger-suppliers") return books::Extract::Suppliers;
    if (n == u"ledger-expenses") return books::Extract::Expenses;
    if (n == u"ledger-sales") return books::Extract::Sales;
    return std::nullopt;
}

int ledgerCommand(Session& s, const CliOptions& o, books::Extract extract) {
    const ExerciseWords w{o.arguments[1], yearArgument(o.arguments[2])};
    const auto output = bookOutput(o);
    const bool text = !output;
    const bool parties =
        extract == books::Extract::Customers || extract == books::Extract::Suppliers;
    refuseOptions(o, {"from", "to", "series", "irpf"},
                  QStringLiteral("the extracts cover the year"));
    if (!parties && (o.given(QStringLiteral("party")) || o.given(QStringLiteral("invoices"))))
        throw UsageError{
            QStringLiteral("--party and --invoices go with ledger-customers and "
                           "ledger-suppliers")};
    books::LedgerRequest request;
    request.extract = extract;
    request.ledger = !o.flags.contains(QStringLiteral("invoices"));
    if (o.given(QStringLiteral("party")))
        request.party = numberArgument(o.value(QStringLiteral("party"))).toLongLong();
    request.printDate = dateOption(o, QStringLiteral("date"), QDate::currentDate());
    request.print = output.value_or(report::PrintRequest{});
    if (!enterMasterFiles(s, w)) return kRefused;
    if (text) {
        for (const QString& line : books::ledgerRows(s.ctx, request)) s.out << line << '\n';
        return s.finish(true);
    }
    report::ReportJob job;
    return s.finish(books::launchLedger(s.ctx, s.dialogs, job, nullptr, request).ok());
}

int trialBalanceCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w{o.arguments[1], yearArgument(o.arguments[2])};
    const auto output = bookOutput(o);
    const bool text = !output;
    refuseOptions(o, {"from", "to", "series", "irpf", "party", "invoices"},
                  QStringLiteral("the summary of balances covers the exercise"));
    const QDate date = dateOption(o, QStringLiteral("date"), QDate::currentDate());
    if (!enterMasterFiles(s, w)) return kRefused;
    if (text) {
        const auto totals = books::Genera_Saldos(s.ctx, s.dialogs);
        if (!totals) return kRefused;
        for (const QString& line : books::trialBalanceRows(s.ctx, *totals)) s.out << line << '\n';
        return s.finish(true);
    }
    report::ReportJob job;
    return s.finish(books::launchTrialBalance(s.ctx, s.dialogs, job, nullptr, date,
                                              output.value_or(report::PrintRequest{}))
                        .ok());
}

int operatingStatementCommand(Session& s, const CliOptions& o) {
    const ExerciseWords w{o.arguments[1], yearArgument(o.arguments[2])};
    const auto output = bookOutput(o);
    const bool text = !output;
    refuseOptions(o, {"series", "irpf", "party", "invoices"},
                  QStringLiteral("the operating statement has no such choice"));
    books::OperatingRequest request;
    if (o.given(QStringLiteral("level"))) {
        const QString level = o.value(QStringLiteral("level"));
        if (level != u"1" && level != u"2" && level != u"3")
            throw UsageError{QStringLiteral("--level: \"%1\" is not 1, 2 or 3").arg(level)};
        request.level = level.toInt();
    }
    request.fromMonth = monthOption(o, QStringLiteral("from"), 1);
    request.toMonth = monthOption(o, QStringLiteral("to"), 12);
    request.printDate = dateOption(o, QStringLiteral("date"), QDate::currentDate());
    request.print = output.value_or(report::PrintRequest{});
    if (!enterMasterFiles(s, w)) return kRefused;
    if (text) {
        if (!books::prepareOperatingStatement(s.ctx, s.dialogs, request)) return kRefused;
        for (const QString& line : books::operatingStatementRows(s.ctx)) s.out << line << '\n';
        return s.finish(true);
    }
    report::ReportJob job;
    return s.finish(books::launchOperatingStatement(s.ctx, s.dialogs, job, nullptr, request).ok());
}

}  // namespace

int bookCommand(Session& s, const CliOptions& o) {
    if (const auto extract = extractArgument(o.arguments[0])) return ledgerCommand(s, o, *extract);
    if (o.arguments[0].compare(QStringLiteral("trial-balance"), Qt::CaseInsensitive) == 0)
        return trialBalanceCommand(s, o);
    if (o.arguments[0].compare(QStringLiteral("operating-statement"), Qt::CaseInsensitive) == 0)
        return operatingStatementCommand(s, o);
    if (o.given(QStringLiteral("level")))
        throw UsageError{QStringLiteral("--level goes with operating-statement")};
    const bool irpf = o.flags.contains(QStringLiteral("irpf"));
    const Book book = bookArgument(o.arguments[0], irpf);
    const ExerciseWords w{o.arguments[1], yearArgument(o.arguments[2])};
    const auto output = bookOutput(o);
    const bool text = !output;
    const bool periodic = book != Book::Declaration;
    if (!periodic && (o.given(QStringLiteral("from")) || o.given(QStringLiteral("to"))))
        throw UsageError{QStringLiteral("--from, --to: the 347 declaration covers the year")};
    const bool withSeries = book != Book::Declaration && book != Book::Provisions;
    if (!withSeries && o.given(QStringLiteral("series")))
        throw UsageError{QStringLiteral("--series: this book has no series")};

    books::BookRequest request;
    request.fromMonth = monthOption(o, QStringLiteral("from"), 1);
    request.toMonth = monthOption(o, QStringLiteral("to"), 12);
    if (o.given(QStringLiteral("series")))
        request.series = seriesArgument(o.value(QStringLiteral("series")));
    request.printDate = dateOption(o, QStringLiteral("date"), QDate::currentDate());
    request.print = output.value_or(report::PrintRequest{});

    if (!enterMasterFiles(s, w)) return kRefused;
    if (irpf && s.ctx.ModeExercici == QStringLiteral("TICKETS"))
        return s.refuse(
            QStringLiteral("--irpf: an exercise of kind TICKETS has no withholding "
                           "lists"));
    if (text) {
        if (!books::prepareBook(s.ctx, s.dialogs, book, request)) return kRefused;
        for (const QString& line : books::bookRows(s.ctx, book)) s.out << line << '\n';
        const QStringList summary = books::bookSummary(s.ctx, book);
        if (!summary.isEmpty()) s.out << '\n';
        for (const QString& line : summary) s.out << line << '\n';
        return s.finish(true);
    }
    report::ReportJob job;
    return s.finish(books::launchBook(s.ctx, s.dialogs, job, nullptr, book, request).ok());
}

}  // namespace tallora::cli
