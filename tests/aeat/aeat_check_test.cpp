// A generated year against its invoices: for each quarter the tax agency's VAT books add up,
// rate by rate, to what FrasOut and FrasIN hold (summed here by SQL of the test's own) and to
// the printed books' footer summaries; the 303's accrued and deductible totals equal those
// sums; the XLSX read back by openpyxl holds the same lines and sums; and the models of the
// fixed year match their golden files.
#include "aeat/aeat_books.h"
#include "aeat/model_figures.h"
#include "books/vat_book_queries.h"
#include "books/vat_books.h"
#include "context/dialogs.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "shell/sample_exercise.h"
#include "store/database.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>
#include <memory>

using namespace tallora;
using namespace tallora::aeat;

namespace {

struct Sums {
    std::int64_t base = 0, quota = 0, surcharge = 0;
    bool operator==(const Sums&) const = default;
};
std::ostream& operator<<(std::ostream& os, const Sums& s) {
    return os << '{' << s.base << ", " << s.quota << ", " << s.surcharge << '}';
}
using ByRate = std::map<std::int64_t, Sums>;

struct GeneratedYear {
    GeneratedYear() {
        ctx.resourcesDir = QStringLiteral(TALLORA_SOURCE_DIR "/resources/");
        shell::openSampleCompany(ctx, dialogs, tmp.path(), QDate(2026, 3, 2));
        shell::SampleOptions options;
        options.invoices = 3000;
        options.seed = 11;
        shell::fillSampleExercise(ctx, options);
    }
    QTemporaryDir tmp;
    WorkingContext ctx;
    ScriptedDialogs dialogs;
};

class AeatCheck : public ::testing::Test {
protected:
    static void SetUpTestSuite() { year_ = std::make_unique<GeneratedYear>(); }
    static void TearDownTestSuite() { year_.reset(); }
    const WorkingContext& ctx() const { return year_->ctx; }

    // Per rate, straight from the invoices' rate slots.
    ByRate fromInvoices(bool sales, int from, int to) const {
        QStringList unions;
        for (int i = 1; i <= (sales ? 3 : 4); ++i)
            unions << (sales ? QStringLiteral("select TIva%1 as rate, Base%1 as base, Iva%1 as "
                                              "quota, RE%1 as surcharge, data from FrasOut "
                                              "where Base%1 <> 0")
                             : QStringLiteral("select TipusIva%1 as rate, Base%1 as base, Iva%1 "
                                              "as quota, 0 as surcharge, data from FrasIN "
                                              "where Base%1 <> 0"))
                          .arg(i);
        store::Database d = store::Database::open(
            ctx().exerciseFile(sales ? schema::db::FrasOut : schema::db::FrasIn));
        store::Statement st = d.prepare(
            QStringLiteral("select rate, sum(base), sum(quota), sum(surcharge) from (%1) where "
                           "cast(strftime('%m', data) as integer) between ? and ? group by rate")
                .arg(unions.join(QStringLiteral(" union all "))));
        st.bind(1, from).bind(2, to);
        ByRate sums;
        while (st.next()) sums[st.int64(0)] = {st.int64(1), st.int64(2), st.int64(3)};
        return sums;
    }

    static ByRate fromLines(const std::vector<RegisterLine>& lines) {
        ByRate sums;
        for (const RegisterLine& l : lines) {
            Sums& s = sums[l.rate.units()];
            s.base += l.base.units();
            s.quota += l.quota.units();
            s.surcharge += l.surcharge.units();
        }
        return sums;
    }

    static std::int64_t quotas(const ByRate& r, bool surcharge) {
        std::int64_t t = 0;
        for (const auto& [rate, s] : r) t += s.quota + (surcharge ? s.surcharge : 0);
        return t;
    }

    static inline std::unique_ptr<GeneratedYear> year_;
};

constexpr std::pair<int, int> kQuarters[] = {{1, 3}, {4, 6}, {7, 9}, {10, 12}};

}  // namespace

TEST_F(AeatCheck, TheBooksAddUpToTheInvoicesAndToThePrintedSummaries) {
    for (const auto& [from, to] : kQuarters) {
        const auto issued = issuedLines(ctx(), from, to);
        const auto received = receivedLines(ctx(), from, to);
        ASSERT_FALSE(issued.empty());
        ASSERT_FALSE(received.empty());
        const ByRate sales = fromLines(issued), purchases = fromLines(received);
        EXPECT_EQ(sales, fromInvoices(true, from, to)) << "quarter from " << from;
        EXPECT_EQ(purchases, fromInvoices(false, from, to)) << "quarter from " << from;

        books::BookRequest r;
        r.fromMonth = from;
        r.toMonth = to;
        ASSERT_TRUE(books::prepareBook(ctx(), year_->dialogs, books::Book::Sales, r));
        const books::SalesSummary printed = books::salesSummary(ctx());
        for (const books::RateSums& p : printed.rates) {
            const Sums s = sales.count(p.rate.units()) ? sales.at(p.rate.units()) : Sums{};
            EXPECT_EQ(s, (Sums{p.base.units(), p.quota.units(), p.surcharge.units()}));
        }
        ASSERT_TRUE(books::prepareBook(ctx(), year_->dialogs, books::Book::PurchasesVat, r));
        const books::PurchasesSummary bought = books::purchasesSummary(ctx());
        for (const books::RateSums& p : bought.rates) {
            if (!purchases.count(p.rate.units())) continue;
            const Sums& s = purchases.at(p.rate.units());
            EXPECT_EQ(s.base, p.base.units());
            EXPECT_EQ(s.quota, p.quota.units());
        }

        const QString code = QStringLiteral("%1T").arg(to / 3);
        const ModelFigures m303 = computeModel(ctx(), Model::M303, *taxPeriod(2026, code));
        EXPECT_TRUE(m303.warnings.isEmpty()) << m303.warnings.join(u' ').toStdString();
        EXPECT_EQ(m303.value(QStringLiteral("27")).units(), quotas(sales, true));
        EXPECT_EQ(m303.value(QStringLiteral("45")).units(), quotas(purchases, false));
        EXPECT_EQ(m303.value(QStringLiteral("46")).units(),
                  quotas(sales, true) - quotas(purchases, false));
    }
}

TEST_F(AeatCheck, TheWorkbookReadBackByOpenpyxlHoldsTheSameLines) {
    QTemporaryDir out;
    const QString path = out.filePath(aeatBookFileName(ctx()));
    AeatBookRequest request;
    request.fromMonth = 4;
    request.toMonth = 6;
    ASSERT_EQ(writeAeatBooks(ctx(), request, path), QString());
    EXPECT_TRUE(
        aeatBookFileName(ctx()).startsWith(QStringLiteral("2026") + ctx().EmpresaNIF.right(9)));
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral(TALLORA_SOURCE_DIR "/tests/aeat/read_xlsx.py"), path});
    ASSERT_TRUE(python.waitForFinished(60000));
    ASSERT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    const QJsonObject book = QJsonDocument::fromJson(python.readAllStandardOutput()).object();

    const auto check = [&](const char* sheetName, const std::vector<RegisterLine>& lines,
                           int width) -> QJsonObject {
        const QJsonObject sheet = book.value(QLatin1String(sheetName)).toObject();
        EXPECT_EQ(sheet.value(u"width").toInt(), width);
        EXPECT_EQ(sheet.value(u"rows").toInt(), static_cast<int>(lines.size()));
        const QJsonObject sums = sheet.value(u"sums").toObject();
        const ByRate expected = fromLines(lines);
        EXPECT_EQ(sums.size(), static_cast<qsizetype>(expected.size()));
        for (const auto& [rate, s] : expected) {
            const QJsonArray got = sums.value(aeatDecimal(Money::fromUnits(rate))).toArray();
            const auto cents = [](std::int64_t units) {
                return aeatDecimal(Money::fromUnits(units)).replace(u',', u'.');
            };
            EXPECT_EQ(got.size(), 4) << sheetName << ' ' << rate;
            if (got.size() != 4) continue;
            EXPECT_EQ(got[0].toString(), cents(s.base));
            EXPECT_EQ(got[1].toString(), cents(s.quota));
            EXPECT_EQ(got[2].toString(), cents(s.surcharge));
        }
        return sheet;
    };
    const QJsonObject issued = check("EXPEDIDAS", issuedLines(ctx(), 4, 6), 36);
    check("RECIBIDAS", receivedLines(ctx(), 4, 6), 42);
    const QJsonArray headings = issued.value(u"headings").toArray();
    EXPECT_EQ(headings[1].toArray()[0].toString(), QStringLiteral("Ejercicio"));
    EXPECT_EQ(headings[1].toArray()[35].toString(), QStringLiteral("Referencia Externa"));
    EXPECT_EQ(headings[0].toArray()[26].toString(), QStringLiteral("Cobro"));
    const QJsonArray first = issued.value(u"first").toArray();
    EXPECT_EQ(first[0].toString(), QStringLiteral("2026"));
    EXPECT_EQ(first[1].toString(), QStringLiteral("2T"));
    EXPECT_TRUE(QDate::fromString(first[8].toString(), u"dd/MM/yyyy").isValid());
}

// The models of the fixed year (3.000 invoices, seed 11) against tests/data/aeat/: the lines
// the companion prints and the file. TALLORA_WRITE_GOLDEN=1 writes them anew, to be read
// before they are committed.
TEST_F(AeatCheck, TheModelsOfTheFixedYearMatchTheirGoldenFiles) {
    const QDir golden(QStringLiteral(TALLORA_SOURCE_DIR "/tests/data/aeat"));
    const bool write = qEnvironmentVariableIntValue("TALLORA_WRITE_GOLDEN") == 1;
    const std::pair<Model, const char*> cases[] = {{Model::M303, "2T"},
                                                   {Model::M111, "2T"},
                                                   {Model::M130, "3T"},
                                                   {Model::M347, "0A"},
                                                   {Model::M349, "1T"}};
    for (const auto& [model, period] : cases) {
        const ModelFigures f = computeModel(ctx(), model, *taxPeriod(2026, QLatin1String(period)));
        const QString base = modelCode(model) + u'_' + QLatin1String(period);
        const QByteArray text = modelLines(ctx(), f).join(u'\n').toUtf8() + '\n';
        const QByteArray file = modelFile(ctx(), f);
        if (write) {
            QDir().mkpath(golden.path());
            QFile t(golden.filePath(base + QStringLiteral(".txt")));
            ASSERT_TRUE(t.open(QIODevice::WriteOnly));
            t.write(text);
            if (!file.isEmpty()) {
                QFile d(golden.filePath(base + QStringLiteral(".dat")));
                ASSERT_TRUE(d.open(QIODevice::WriteOnly));
                d.write(file);
            }
            continue;
        }
        QFile t(golden.filePath(base + QStringLiteral(".txt")));
        ASSERT_TRUE(t.open(QIODevice::ReadOnly)) << base.toStdString();
        EXPECT_EQ(QString::fromUtf8(t.readAll()), QString::fromUtf8(text)) << base.toStdString();
        if (!file.isEmpty()) {
            QFile d(golden.filePath(base + QStringLiteral(".dat")));
            ASSERT_TRUE(d.open(QIODevice::ReadOnly)) << base.toStdString();
            EXPECT_EQ(d.readAll(), file) << base.toStdString();
        }
    }
}
