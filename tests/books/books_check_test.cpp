// The VAT books of a generated year of 20,000 invoices against sums taken straight from the
// invoices: for each quarter and each rate, the bases, quotas and recargos of the footer
// summaries and of the books' views equal those of FrasOut and FrasIN, worked out here by SQL
// of the test's own (the rate slots of an invoice side by side, by month of the date), and
// every invoice of the quarter is in its book once. The operating statement and the customers'
// ledgers of the same year against the invoices and movements summed by the test's own SQL.
#include "books/ledgers.h"
#include "books/operating_statement.h"
#include "books/vat_book_queries.h"
#include "books/vat_books.h"
#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/list_files.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "shell/sample_exercise.h"
#include "store/database.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>

using namespace tallora;
using namespace tallora::books;

namespace {

namespace db = schema::db;

constexpr int kInvoices = 20000;
constexpr std::uint64_t kSeed = 7;

// The rates the exercise is made with, in ten-thousandths of a percent as Currency holds them.
constexpr std::array<std::int64_t, 3> kSalesRates{210000, 100000, 40000};
constexpr std::array<std::int64_t, 4> kPurchaseRates{210000, 100000, 40000, 0};

struct Quarter {
    int from, to;
};
constexpr std::array<Quarter, 4> kQuarters{{{1, 3}, {4, 6}, {7, 9}, {10, 12}}};

// What the rows of one rate add up to.
struct Sums {
    std::int64_t base = 0, quota = 0, surcharge = 0, rows = 0;
    bool operator==(const Sums&) const = default;
};

std::ostream& operator<<(std::ostream& os, const Sums& s) {
    return os << "{base " << s.base << ", quota " << s.quota << ", surcharge " << s.surcharge
              << ", rows " << s.rows << '}';
}

using ByRate = std::map<std::int64_t, Sums>;

// A company with treasury, its exercise 2026 made and opened as the start leaves it, and the
// sample year posted into it. Made once for the suite: the posting is what takes the time.
struct GeneratedYear {
    GeneratedYear() {
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");

        shell::openSampleCompany(ctx, dialogs, tmp.path(), QDate(2026, 3, 2));

        shell::SampleOptions options;
        options.invoices = kInvoices;
        options.seed = kSeed;
        sample = shell::fillSampleExercise(ctx, options);
    }

    QTemporaryDir tmp;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
    shell::SampleSummary sample;
};

// The quarter's condition on an invoice's date, by its year and month.
const char* const kInQuarter =
    "strftime('%Y', data) = ?1 and cast(strftime('%m', data) as integer) between ?2 and ?3";

class BooksCheck : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        try {
            year_ = std::make_unique<GeneratedYear>();
        } catch (const std::exception& e) {
            setupError_ = e.what();
        }
    }
    static void TearDownTestSuite() { year_.reset(); }

    void SetUp() override {
        ASSERT_NE(year_, nullptr) << "no generated year: " << setupError_;
        ASSERT_EQ(year_->sample.sales + year_->sample.purchases, kInvoices);
        ASSERT_TRUE(year_->ctx.Tesoreria);
        ASSERT_EQ(year_->ctx.TipusIVAText[0], QStringLiteral("21"));
        ASSERT_EQ(year_->ctx.TipusIVAsText[3], QStringLiteral("0"));
    }

    const WorkingContext& ctx() const { return year_->ctx; }

    // Rebuilds `book` for the quarter as its launch does, up to the report.
    void prepare(Book book, const Quarter& q) {
        BookRequest r;
        r.fromMonth = q.from;
        r.toMonth = q.to;
        r.printDate = QDate(2026, 12, 31);
        ASSERT_TRUE(prepareBook(ctx(), year_->dialogs, book, r));
    }

    static store::Statement inQuarter(store::Database& d, const QString& sql, const Quarter& q) {
        store::Statement st = d.prepare(sql);
        st.bind(1, QStringLiteral("2026")).bind(2, q.from).bind(3, q.to);
        return st;
    }

    // Per rate, the rate slots of the quarter's invoices whose base is not zero: `unions` is
    // one select a slot, joined by union all.
    ByRate fromInvoices(const QString& file, const QString& unions, const Quarter& q) const {
        store::Database d = store::Database::open(ctx().exerciseFile(file));
        store::Statement st = inQuarter(
            d,
            QStringLiteral("select rate, sum(base), sum(quota), sum(surcharge), count(*) from (") +
                unions + QStringLiteral(") where ") + QLatin1String(kInQuarter) +
                QStringLiteral(" group by rate"),
            q);
        ByRate sums;
        while (st.next()) sums[st.int64(0)] = {st.int64(1), st.int64(2), st.int64(3), st.int64(4)};
        return sums;
    }

    ByRate salesFromInvoices(const Quarter& q) const {
        QStringList unions;
        for (int i = 1; i <= 3; ++i)
            unions << QStringLiteral(
                          "select TIva%1 as rate, Base%1 as base, Iva%1 as quota, "
                          "RE%1 as surcharge, data from FrasOut where Base%1 <> 0")
                          .arg(i);
        return fromInvoices(db::FrasOut, unions.join(QStringLiteral(" union all ")), q);
    }

    ByRate purchasesFromInvoices(const Quarter& q) const {
        QStringList unions;
        for (int i = 1; i <= 4; ++i)
            unions << QStringLiteral(
                          "select TipusIva%1 as rate, Base%1 as base, Iva%1 as quota, "
                          "0 as surcharge, data from FrasIN where Base%1 <> 0")
                          .arg(i);
        return fromInvoices(db::FrasIn, unions.join(QStringLiteral(" union all ")), q);
    }

    // How many of the quarter's invoices there are, and how many have a non-zero base.
    std::pair<std::int64_t, std::int64_t> invoiceCounts(const QString& file, const QString& table,
                                                        int rates, const Quarter& q) const {
        QStringList based;
        for (int i = 1; i <= rates; ++i) based << QStringLiteral("Base%1 <> 0").arg(i);
        store::Database d = store::Database::open(ctx().exerciseFile(file));
        store::Statement st =
            inQuarter(d,
                      QStringLiteral("select count(*), coalesce(sum(%1), 0) from %2 where ")
                              .arg(based.join(QStringLiteral(" or ")), table) +
                          QLatin1String(kInQuarter),
                      q);
        if (!st.next()) throw std::runtime_error("no count");
        return {st.int64(0), st.int64(1)};
    }

    // A book's view read row by row and summed here.
    struct ViewSums {
        ByRate rates;
        std::int64_t zeroBaseWithAmounts = 0;  // rows without base that still carry a quota
        std::set<std::int64_t> invoices;       // every Ordre in the view
        std::set<std::int64_t> taxed;          // the Ordre of rows with a VAT book number
        std::set<std::int64_t> bookNumbers;    // the VAT book numbers themselves
    };

    ViewSums fromView(const QString& view, const QString& numberColumn, bool surcharge) const {
        store::Database d = store::Database::open(ctx().exerciseFile(db::Llibre));
        store::Statement st = d.prepare(
            QStringLiteral("select TipusIVA, BaseIVA, IVA, %1, Ordre, "
                           "%2 from %3")
                .arg(surcharge ? QStringLiteral("REC") : QStringLiteral("0"), numberColumn, view));
        ViewSums v;
        while (st.next()) {
            const std::int64_t base = st.int64(1), quota = st.int64(2), rec = st.int64(3);
            const std::int64_t ordre = st.int64(4), number = st.int64(5);
            v.invoices.insert(ordre);
            if (number != 0) {
                v.taxed.insert(ordre);
                v.bookNumbers.insert(number);
            }
            if (base == 0) {
                if (quota != 0 || rec != 0) ++v.zeroBaseWithAmounts;
                continue;
            }
            Sums& s = v.rates[st.int64(0)];
            s.base += base;
            s.quota += quota;
            s.surcharge += rec;
            ++s.rows;
        }
        return v;
    }

    static Sums summaryLine(const RateSums& r) {
        return {r.base.units(), r.quota.units(), r.surcharge.units(), 0};
    }
    static Sums withoutRows(Sums s) {
        s.rows = 0;
        return s;
    }

    inline static std::unique_ptr<GeneratedYear> year_;
    inline static std::string setupError_;
};

TEST_F(BooksCheck, SalesBookOfEachQuarterAddsUpToTheInvoicesRateByRate) {
    for (const Quarter& q : kQuarters) {
        SCOPED_TRACE(::testing::Message() << "months " << q.from << " to " << q.to);
        ASSERT_NO_FATAL_FAILURE(prepare(Book::Sales, q));
        const ByRate invoices = salesFromInvoices(q);
        const ViewSums view =
            fromView(QStringLiteral("SelIVAr"), QStringLiteral("OrdreIVAr"), true);
        const SalesSummary summary = salesSummary(ctx());

        // The sample uses the exercise's rates and no other: nothing for a difference line.
        for (const auto& [rate, sums] : invoices)
            EXPECT_NE(std::find(kSalesRates.begin(), kSalesRates.end(), rate), kSalesRates.end())
                << "rate " << rate;
        EXPECT_FALSE(summary.difference.has_value());

        for (std::size_t i = 0; i < kSalesRates.size(); ++i) {
            const std::int64_t rate = kSalesRates[i];
            SCOPED_TRACE(::testing::Message() << "rate " << rate);
            ASSERT_TRUE(invoices.count(rate)) << "no invoice of the quarter at this rate";
            const Sums& expected = invoices.at(rate);
            EXPECT_GT(expected.rows, 0);
            EXPECT_EQ(view.rates.count(rate) ? view.rates.at(rate) : Sums{}, expected);
            EXPECT_EQ(summary.rates[i].rate.units(), rate);
            EXPECT_EQ(summaryLine(summary.rates[i]), withoutRows(expected));
        }
        EXPECT_EQ(view.rates.size(), invoices.size());
        EXPECT_EQ(view.zeroBaseWithAmounts, 0);

        // Each sale of the quarter is in the book once, and a sale with VAT lines has a
        // number for each of them.
        const auto [sales, taxed] = invoiceCounts(db::FrasOut, QStringLiteral("FrasOut"), 3, q);
        EXPECT_GT(sales, 0);
        EXPECT_EQ(static_cast<std::int64_t>(view.invoices.size()), sales);
        EXPECT_EQ(static_cast<std::int64_t>(view.taxed.size()), taxed);
        std::int64_t lines = 0;
        for (const auto& [rate, sums] : invoices) lines += sums.rows;
        EXPECT_EQ(static_cast<std::int64_t>(view.bookNumbers.size()), lines);
    }
}

TEST_F(BooksCheck, PurchasesBookOfEachQuarterAddsUpToTheInvoicesRateByRate) {
    for (const Quarter& q : kQuarters) {
        SCOPED_TRACE(::testing::Message() << "months " << q.from << " to " << q.to);
        ASSERT_NO_FATAL_FAILURE(prepare(Book::Purchases, q));
        const ByRate invoices = purchasesFromInvoices(q);
        const ViewSums view =
            fromView(QStringLiteral("SelIVAs"), QStringLiteral("OrdreIVAs"), false);
        const PurchasesSummary summary = purchasesSummary(ctx());

        for (const auto& [rate, sums] : invoices)
            EXPECT_NE(std::find(kPurchaseRates.begin(), kPurchaseRates.end(), rate),
                      kPurchaseRates.end())
                << "rate " << rate;
        EXPECT_FALSE(summary.difference.has_value());

        for (std::size_t i = 0; i < kPurchaseRates.size(); ++i) {
            const std::int64_t rate = kPurchaseRates[i];
            SCOPED_TRACE(::testing::Message() << "rate " << rate);
            ASSERT_TRUE(invoices.count(rate)) << "no invoice of the quarter at this rate";
            const Sums& expected = invoices.at(rate);
            EXPECT_GT(expected.rows, 0);
            EXPECT_EQ(expected.surcharge, 0);
            EXPECT_EQ(view.rates.count(rate) ? view.rates.at(rate) : Sums{}, expected);
            EXPECT_EQ(summary.rates[i].rate.units(), rate);
            // The exempt line also takes the purchases without VAT, whose rows have no base:
            // they add nothing to it.
            EXPECT_EQ(summaryLine(summary.rates[i]), withoutRows(expected));
        }
        EXPECT_EQ(view.rates.size(), invoices.size());
        EXPECT_EQ(view.zeroBaseWithAmounts, 0);

        // Every purchase of the quarter is in the general book; those with a base have one
        // VAT book number each, whatever the number of their rates.
        const auto [purchases, taxed] = invoiceCounts(db::FrasIn, QStringLiteral("FrasIN"), 4, q);
        EXPECT_GT(purchases, taxed);
        EXPECT_EQ(static_cast<std::int64_t>(view.invoices.size()), purchases);
        EXPECT_EQ(static_cast<std::int64_t>(view.taxed.size()), taxed);
        EXPECT_EQ(static_cast<std::int64_t>(view.bookNumbers.size()), taxed);
    }
}

// Each account's months and total in explota against the invoices summed here by account
// name and month: a sale's total less IVA and recargo plus its withholding, a purchase's total
// plus its withholding less IVA (what its bases and made-good exempt part come to).
TEST_F(BooksCheck, TheOperatingStatementOfTheYearEqualsTheInvoicesByAccountAndMonth) {
    OperatingRequest r;
    r.fromMonth = 1;
    r.toMonth = 12;
    ASSERT_TRUE(prepareOperatingStatement(ctx(), year_->dialogs, r));
    using Months = std::array<std::int64_t, 13>;
    const auto direct = [&](const QString& file, const QString& sql) {
        std::map<QString, Months> sums;
        store::Database d = store::Database::open(ctx().exerciseFile(file));
        store::Statement st = d.prepare(sql);
        while (st.next()) {
            Months& m = sums[st.text(0).toCaseFolded()];
            const int month = st.int32(1);
            m[static_cast<std::size_t>(month - 1)] += st.int64(2);
            m[12] += st.int64(2);
        }
        return sums;
    };
    const auto income =
        direct(db::FrasOut, QStringLiteral("select NomCompte, cast(strftime('%m', data) as "
                                           "integer), sum(TOTAL - Iva1 - Iva2 - Iva3 - RE1 - "
                                           "RE2 - RE3 + Retencio) from FrasOut group by 1, 2"));
    const auto costs =
        direct(db::FrasIn, QStringLiteral("select NomCompte, cast(strftime('%m', data) as "
                                          "integer), sum(TOTAL + Retencio - Iva1 - Iva2 - "
                                          "Iva3 - Iva4) from FrasIN group by 1, 2"));
    store::Database e = store::Database::open(ctx().exerciseFile(db::Explota));
    store::Statement rows = e.prepare(QStringLiteral(
        "select x.NomCompte, c.VoD, \"01\", \"02\", \"03\", \"04\", \"05\", \"06\", "
        "\"07\", \"08\", \"09\", \"10\", \"11\", \"12\", x.TOTAL from explota x join "
        "COMPTES c on c.NomCompte = x.NomCompte group by x.Ordre"));
    int accounts = 0, withInvoices = 0;
    while (rows.next()) {
        ++accounts;
        const QString name = rows.text(0);
        const auto& source = rows.text(1) == u"0" ? income : costs;
        const auto found = source.find(name.toCaseFolded());
        const Months expected = found == source.end() ? Months{} : found->second;
        if (found != source.end()) ++withInvoices;
        for (int i = 0; i < 13; ++i)
            EXPECT_EQ(rows.int64(2 + i), expected[static_cast<std::size_t>(i)])
                << name.toStdString() << " column " << i + 1;
    }
    EXPECT_GT(accounts, 10);
    EXPECT_GT(withInvoices, 5);
}

// Each customer's last balance in mayor against opening + invoices - collections summed here.
TEST_F(BooksCheck, EachCustomersLedgerEndsAtOpeningPlusInvoicesLessCollections) {
    Genera_Mayor_Clients(ctx(), std::nullopt);
    store::Database d = store::Database::open(ctx().exerciseFile(db::Tesorer));
    d.attach(ctx().exerciseFile(db::Gest), QStringLiteral("gest"));
    d.attach(ctx().exerciseFile(db::FrasOut), QStringLiteral("fout"));
    store::Statement st = d.prepare(QStringLiteral(
        "select c.client, coalesce(c.saldo, 0) + coalesce((select sum(TOTAL) from fout.FrasOut f "
        "where f.Client = c.client), 0) + coalesce((select sum(H - D) from movimientos m where "
        "m.cliente = c.client), 0), (select saldo from mayor y where y.cuenta = c.client order "
        "by y.data desc, y.Id desc limit 1) from gest.clients c order by c.client"));
    int customers = 0;
    while (st.next()) {
        ++customers;
        EXPECT_EQ(st.int64(2), st.int64(1)) << "customer " << st.int64(0);
    }
    EXPECT_GT(customers, 10);
    store::Statement moved =
        d.prepare(QStringLiteral("select count(*) from movimientos where "
                                 "cliente <> 0"));
    ASSERT_TRUE(moved.next());
    EXPECT_GT(moved.int64(0), 100);
}

}  // namespace
