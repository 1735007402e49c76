#include "sample_exercise.h"

#include "context/common_helpers.h"
#include "context/dialogs.h"
#include "context/entry_fields.h"
#include "context/file_tree.h"
#include "context/month_lock.h"
#include "context/working_context.h"
#include "master/accounts.h"
#include "master/customers.h"
#include "master/suppliers.h"
#include "master/treasury_accounts.h"
#include "purchases/purchase_entry.h"
#include "purchases/purchase_posting.h"
#include "purchases/purchase_validation.h"
#include "sales/sale_entry.h"
#include "sales/sale_posting.h"
#include "sales/sale_validation.h"
#include "shell/company_list.h"
#include "shell/exercises.h"
#include "shell/startup.h"
#include "store/database.h"

#include <QDate>
#include <QDir>
#include <QString>

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tallora::shell {
namespace {

using master::Family;
using purchases::ExpenseAccount;
using purchases::PurchaseEntry;
using sales::SaleEntry;
using sales::SalesAccount;

// Invoices per transaction: a commit per invoice takes hours for a large sample, a single
// one keeps the files locked for as long.
constexpr int kBatch = 2000;

// Draws from the raw output of std::mt19937_64, whose sequence the standard fixes; the
// library's distributions differ between implementations, and a seed must give the same
// exercise everywhere.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}
    // 0 to n - 1, n > 0. The modulo's bias is far below anything sample data show.
    std::size_t below(std::size_t n) { return static_cast<std::size_t>(engine_() % n); }
    std::int64_t between(std::int64_t low, std::int64_t high) {
        const auto span = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<std::int64_t>(engine_() % span);
    }

private:
    std::mt19937_64 engine_;
};

// Kinds dealt from a shuffled deck that holds each kind as often as its weight: every kind
// turns up once a round, so that a few hundred invoices already show them all.
class Deck {
public:
    Deck(std::initializer_list<int> weights) {
        int kind = 0;
        for (int weight : weights)
            cards_.insert(cards_.end(), static_cast<std::size_t>(weight), kind++);
    }
    int deal(Dice& dice) {
        if (next_ == cards_.size()) next_ = 0;
        if (next_ == 0)
            for (std::size_t i = cards_.size() - 1; i > 0; --i)
                std::swap(cards_[i], cards_[dice.below(i + 1)]);
        return cards_[next_++];
    }

private:
    std::vector<int> cards_;
    std::size_t next_ = 0;
};

// An amount in cents from `low` to `high`, small ones more often: six draws in ten fall in
// the lowest tenth of the range, three more in its lower half.
std::int64_t skewed(Dice& dice, std::int64_t low, std::int64_t high) {
    const std::int64_t span = high - low;
    const std::size_t band = dice.below(10);
    const std::int64_t top = band < 6 ? span / 10 : band < 9 ? span / 2 : span;
    return low + dice.between(0, top);
}

QString amountText(const WorkingContext& ctx, std::int64_t cents) {
    return Format_Import(ctx, Money::fromUnits(cents * 100));
}

// --- The kinds of invoice ----------------------------------------------------------------

enum class SaleKind {
    Goods,
    ToRetailer,    // a customer with recargo de equivalencia
    TwoRates,      // goods at two IVA rates
    Professional,  // a professional service: the customer withholds IRPF
    CreditNote,
    RetailerCreditNote,
    ProfessionalCreditNote
};
// Per hundred sales, in the order of SaleKind.
Deck saleKinds() {
    return {57, 14, 8, 12, 5, 2, 2};
}

// The kinds of expense, each with suppliers and accounts of its own.
enum class Expense { Goods, Services, Professional, Taxes, Staff, Depreciation, Investment };
constexpr std::size_t kExpenses = 7;
constexpr std::size_t at(Expense e) {
    return static_cast<std::size_t>(e);
}
// Per hundred purchases: the seven expenses in their order, then credit notes for goods.
constexpr int kPurchaseCreditNote = 7;
Deck purchaseKinds() {
    return {48, 20, 8, 5, 8, 4, 3, 4};
}

// Taxes, wages and depreciation carry no IVA: only their total is typed.
bool withoutIva(Expense e) {
    return e == Expense::Taxes || e == Expense::Staff || e == Expense::Depreciation;
}

// The range of an expense's amount, in cents.
std::pair<std::int64_t, std::int64_t> expenseRange(Expense e) {
    switch (e) {
        case Expense::Goods:
            return {5000, 900000};
        case Expense::Services:
            return {2000, 120000};
        case Expense::Professional:
            return {15000, 150000};
        case Expense::Taxes:
            return {5000, 150000};
        case Expense::Staff:
            return {80000, 600000};
        case Expense::Depreciation:
            return {20000, 250000};
        case Expense::Investment:
            return {100000, 3000000};
    }
    return {1000, 10000};
}

// --- Names and numbers of the master data ------------------------------------------------

constexpr std::array<const char*, 24> kSurnames{
    "Puig",   "García", "Martí",     "López",   "Ferrer", "Soler",   "Vidal",  "Serra",
    "Roca",   "Costa",  "Fernández", "Sánchez", "Pujol",  "Navarro", "Romero", "Castells",
    "Molina", "Ortega", "Font",      "Prats",   "Gil",    "Vila",    "Marín",  "Domènech"};
constexpr std::array<const char*, 12> kFirstNames{"Jordi",  "Marta",  "Antonio", "Laura",
                                                  "Josep",  "Carmen", "David",   "Núria",
                                                  "Javier", "Elena",  "Pau",     "Lucía"};
// Shops kept by a person, under recargo de equivalencia; then trades run by companies.
constexpr std::array<const char*, 6> kRetailTrades{"Ferretería", "Papelería", "Panadería",
                                                   "Librería",   "Droguería", "Bazar"};
constexpr std::array<const char*, 6> kBusinessTrades{
    "Construcciones", "Talleres", "Instalaciones", "Reformas", "Restaurante", "Hotel"};
constexpr std::array<const char*, 6> kWholesaleTrades{"Almacenes",     "Distribuciones",
                                                      "Mayorista",     "Suministros Industriales",
                                                      "Importaciones", "Comercial"};

struct Town {
    const char* poblacio;
    const char* provincia;
    const char* cp;  // the first three digits
};
constexpr std::array<Town, 12> kTowns{{{"Reus", "Tarragona", "432"},
                                       {"Tarragona", "Tarragona", "430"},
                                       {"Lleida", "Lleida", "250"},
                                       {"Girona", "Girona", "170"},
                                       {"Sabadell", "Barcelona", "082"},
                                       {"Manresa", "Barcelona", "082"},
                                       {"Zaragoza", "Zaragoza", "500"},
                                       {"Huesca", "Huesca", "220"},
                                       {"Castellón de la Plana", "Castellón", "120"},
                                       {"Valencia", "Valencia", "460"},
                                       {"Logroño", "La Rioja", "260"},
                                       {"Teruel", "Teruel", "440"}}};
constexpr std::array<const char*, 8> kStreets{"C/ Mayor",     "Av. de la Constitución",
                                              "C/ Sant Joan", "Pl. de la Iglesia",
                                              "C/ Nueva",     "Rambla Nova",
                                              "C/ del Sol",   "Av. de Catalunya"};

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

template <std::size_t N>
QString pick(Dice& dice, const std::array<const char*, N>& names) {
    return text(names[dice.below(N)]);
}

// A company's tax number: its letter, seven digits and the control, a letter for public
// bodies and a digit for the rest.
QString companyNif(Dice& dice, QChar letter) {
    const QString digits = QString::number(dice.between(1000000, 9999999));
    int sum = 0;
    for (int i = 0; i < 7; ++i) {
        const int digit = digits[i].digitValue();
        // The odd places count twice, as the sum of the product's digits.
        sum += i % 2 == 1 ? digit : 2 * digit / 10 + 2 * digit % 10;
    }
    const int control = (10 - sum % 10) % 10;
    const QChar mark = QStringLiteral("PQSNWR").contains(letter)
                           ? QStringLiteral("JABCDEFGHI")[control]
                           : QChar(u'0' + control);
    return QString(letter) + digits + mark;
}

// A person's tax number: eight digits and their letter.
QString personNif(Dice& dice) {
    const std::int64_t number = dice.between(10000000, 79999999);
    return QString::number(number) +
           QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKE")[static_cast<qsizetype>(number % 23)];
}

// Address, town, province, postal code and phone, as both master files have them.
struct Address {
    QString direccio, poblacio, provincia, cp, telefon;
};
Address address(Dice& dice) {
    const Town& town = kTowns[dice.below(kTowns.size())];
    Address a;
    a.direccio =
        pick(dice, kStreets) + QStringLiteral(", ") + QString::number(dice.between(1, 120));
    a.poblacio = text(town.poblacio);
    a.provincia = text(town.provincia);
    a.cp = text(town.cp) + QStringLiteral("%1").arg(dice.between(1, 20), 2, 10, QChar(u'0'));
    a.telefon = QString::number(dice.between(900000000, 999999999));
    return a;
}

// --- Master data -------------------------------------------------------------------------

// Nobody reads the master files' message boxes here: a refusal is kept to be raised.
class QuietDialogs : public Dialogs {
public:
    void information(const QString&, const QString&) override {}
    void stop(const QString& text, const QString&) override { lastStop = text; }
    Answer yesNo(const QString&, const QString&) override { return Answer::No; }
    Answer okCancel(const QString&, const QString&, Icon) override { return Answer::Cancel; }
    void beep() override {}

    QString lastStop;
};

[[noreturn]] void refusedRecord(const QuietDialogs& dialogs, const QString& what) {
    throw std::runtime_error(
        QStringLiteral("sample: %1 refused: %2").arg(what, dialogs.lastStop).toStdString());
}

struct SampleCustomer {
    QString name;
    std::int64_t number = 0;
    bool re = false;
};

struct SampleSupplier {
    QString name;
    std::int64_t number = 0;
    Expense expense = Expense::Goods;
    std::size_t account = 0;  // which of the expense's accounts it is booked to
    std::int64_t nextInvoice = 1;
};

// The master files are written by their screens' own saves, one connection a record: a
// sample has a few hundred records at most, and so their checks and sanitising stay the
// only ones. A name the file has already is taken as it is, so that a second sample on the
// same exercise adds invoices to the first one's customers.
SampleCustomer ensureCustomer(const WorkingContext& ctx, QuietDialogs& dialogs,
                              master::Customer c) {
    if (const auto found = master::customerByName(ctx, c.nom))
        return {found->nom, found->client.toLongLong(), found->re};
    if (!master::saveCustomer(ctx, dialogs, c, true).done())
        refusedRecord(dialogs, QStringLiteral("customer \"%1\"").arg(c.nom));
    return {c.nom, c.client.toLongLong(), c.re};
}

std::int64_t ensureSupplier(const WorkingContext& ctx, QuietDialogs& dialogs, master::Supplier s) {
    if (const auto found = master::supplierByName(ctx, s.nom)) return found->proveidor.toLongLong();
    if (!master::saveSupplier(ctx, dialogs, s, true).done())
        refusedRecord(dialogs, QStringLiteral("supplier \"%1\"").arg(s.nom));
    return s.proveidor.toLongLong();
}

// Half of the customers are shops kept by a person, under recargo; the others companies.
std::vector<SampleCustomer> makeCustomers(const WorkingContext& ctx, QuietDialogs& dialogs,
                                          Dice& dice, int count) {
    std::vector<SampleCustomer> customers;
    for (int i = 0; i < count; ++i) {
        const bool retail = i % 2 == 0;
        const auto trade = static_cast<std::size_t>(i / 2) % kRetailTrades.size();
        // Six trades by 24 surnames: more names than the largest sample takes.
        const auto surname = static_cast<std::size_t>(i / 12) % kSurnames.size();
        master::Customer c;
        c.nom = text(retail ? kRetailTrades[trade] : kBusinessTrades[trade]) + u' ' +
                text(kSurnames[surname]) + (retail ? QString() : QStringLiteral(" SL"));
        const Address a = address(dice);
        c.direccio = a.direccio;
        c.poblacio = a.poblacio;
        c.provincia = a.provincia;
        c.cp = a.cp;
        c.telefon = a.telefon;
        c.nif = retail ? personNif(dice) : companyNif(dice, u'B');
        c.re = retail;
        customers.push_back(ensureCustomer(ctx, dialogs, c));
    }
    return customers;
}

struct SupplierSeed {
    Expense expense;
    const char* name;
    QChar nifLetter;  // 0: a person
    std::size_t account;
};
// The suppliers every sample has; the wholesalers and the professionals grow with it.
const std::vector<SupplierSeed>& fixedSuppliers() {
    static const std::vector<SupplierSeed> seeds{
        {Expense::Services, "Eléctrica del Camp SA", u'A', 0},
        {Expense::Services, "Telecomunicaciones Delta SA", u'A', 1},
        {Expense::Services, "Seguros La Previsora SA", u'A', 2},
        {Expense::Services, "Transportes Ràpids SL", u'B', 3},
        {Expense::Services, "Aguas del Municipio SA", u'A', 0},
        {Expense::Taxes, "Agencia Tributaria", u'Q', 1},
        {Expense::Staff, "Personal en nómina", u'\0', 0},
        {Expense::Staff, "Tesorería de la Seguridad Social", u'Q', 1},
        {Expense::Depreciation, "Dotación de amortizaciones", u'B', 0},
        {Expense::Investment, "Informática Delta SL", u'B', 0},
        {Expense::Investment, "Muebles de Oficina Serra SL", u'B', 1},
        {Expense::Investment, "Maquinaria Industrial Roca SA", u'A', 2}};
    return seeds;
}

std::vector<SampleSupplier> makeSuppliers(const WorkingContext& ctx, QuietDialogs& dialogs,
                                          Dice& dice, int wholesalers, int professionals) {
    std::vector<SampleSupplier> suppliers;
    const auto add = [&](Expense expense, const QString& name, QChar nifLetter,
                         std::size_t account) {
        master::Supplier s;
        s.nom = name;
        const Address a = address(dice);
        s.direccio = a.direccio;
        s.poblacio = a.poblacio;
        s.provincia = a.provincia;
        s.cp = a.cp;
        s.telefon = a.telefon;
        s.nif = nifLetter.isNull() ? personNif(dice) : companyNif(dice, nifLetter);
        const std::int64_t number = ensureSupplier(ctx, dialogs, s);
        // Each supplier numbers its own invoices, from somewhere in its year.
        suppliers.push_back({name, number, expense, account, dice.between(1, 900)});
    };
    for (int i = 0; i < wholesalers; ++i) {
        const auto trade = static_cast<std::size_t>(i) % kWholesaleTrades.size();
        const auto surname =
            static_cast<std::size_t>(i) / kWholesaleTrades.size() % kSurnames.size();
        const bool anonima = i % 3 == 0;
        add(Expense::Goods,
            text(kWholesaleTrades[trade]) + u' ' + text(kSurnames[surname]) +
                (anonima ? QStringLiteral(" SA") : QStringLiteral(" SL")),
            anonima ? u'A' : u'B', static_cast<std::size_t>(i));
    }
    for (int i = 0; i < professionals; ++i) {
        // 7 and 11 are prime to 24: no two professionals of a sample share both surnames.
        const auto k = static_cast<std::size_t>(i);
        add(Expense::Professional,
            text(kFirstNames[k % kFirstNames.size()]) + u' ' +
                text(kSurnames[k * 7 % kSurnames.size()]) + u' ' +
                text(kSurnames[(k * 11 + 3) % kSurnames.size()]),
            QChar(), 0);
    }
    for (const SupplierSeed& seed : fixedSuppliers())
        add(seed.expense, text(seed.name), seed.nifLetter, seed.account);
    // The town hall of the company's own town.
    const QString town = ctx.EmpresaPoblacio.trimmed();
    add(Expense::Taxes,
        (town.isEmpty() ? QStringLiteral("Ayuntamiento")
                        : QStringLiteral("Ayuntamiento de ") + town)
            .left(40),
        u'P', 0);
    return suppliers;
}

// --- Accounts ----------------------------------------------------------------------------

struct IncomeSeed {
    bool services;
    const char* name;
};
constexpr std::array<IncomeSeed, 3> kIncomeAccounts{{{false, "Ventas al por menor"},
                                                     {false, "Ventas al por mayor"},
                                                     {true, "Servicios prestados"}}};
constexpr const char* kIncomeClass = "Importe neto de la cifra de negocios";

struct ExpenseSeed {
    Expense expense;
    Family family;
    const char* name;
    const char* tipus;  // the line of the operating statement
};
constexpr std::array<ExpenseSeed, 15> kExpenseAccounts{{
    {Expense::Goods, Family::Compres, "Mercaderías", "Aprovisionamientos"},
    {Expense::Goods, Family::Compres, "Envases y embalajes", "Aprovisionamientos"},
    {Expense::Services, Family::Serveis, "Suministros", "Servicios exteriores"},
    {Expense::Services, Family::Serveis, "Comunicaciones", "Servicios exteriores"},
    {Expense::Services, Family::Serveis, "Primas de seguros", "Servicios exteriores"},
    {Expense::Services, Family::Serveis, "Transportes de ventas", "Servicios exteriores"},
    {Expense::Professional, Family::Serveis, "Honorarios de profesionales", "Servicios exteriores"},
    {Expense::Taxes, Family::Tributs, "Tasas municipales", "Tributos"},
    {Expense::Taxes, Family::Tributs, "Impuesto de actividades económicas", "Tributos"},
    {Expense::Staff, Family::Personal, "Sueldos del personal", "Sueldos, salarios y asimilados"},
    {Expense::Staff, Family::Personal, "Seguridad Social de la empresa", "Cargas sociales"},
    {Expense::Depreciation, Family::Amortitzacions, "Amortización del inmovilizado material",
     "Amortización del inmovilizado"},
    {Expense::Investment, Family::Inversions, "Equipos informáticos", "Inmovilizado material"},
    {Expense::Investment, Family::Inversions, "Mobiliario", "Inmovilizado material"},
    {Expense::Investment, Family::Inversions, "Maquinaria", "Inmovilizado material"},
}};

// The account of that name in the family, made when the family lacks it. False when it
// cannot be made: the chart keeps names unique, and another family may hold it.
bool ensureAccount(const WorkingContext& ctx, QuietDialogs& dialogs, Family family,
                   const QString& name, const QString& tipus) {
    for (const master::AccountItem& item : master::accountList(ctx, family))
        if (item.nomCompte.compare(name, Qt::CaseInsensitive) == 0) return true;
    master::Account a;
    a.nomCompte = name;
    a.tipus = tipus;
    return master::saveAccount(ctx, dialogs, family, a, true).done();
}

// The accounts as the screens' checks find them, ready for their postings.
struct Chart {
    std::vector<SalesAccount> goods, services;
    std::array<std::vector<ExpenseAccount>, kExpenses> expense;
    std::array<int, kExpenses> group{};  // the ComboOP index of each expense's family
};

Chart makeChart(const WorkingContext& ctx, QuietDialogs& dialogs) {
    Chart chart;
    for (const IncomeSeed& seed : kIncomeAccounts) {
        const QString name = text(seed.name);
        if (!ensureAccount(ctx, dialogs, Family::Ingresos, name, text(kIncomeClass))) continue;
        if (const auto account = sales::Verifica_compte_venda(ctx, name))
            (seed.services ? chart.services : chart.goods).push_back(*account);
    }
    for (const ExpenseSeed& seed : kExpenseAccounts) {
        const int group = purchases::groupOfGrup(master::familyGrup(seed.family));
        chart.group[at(seed.expense)] = group;
        const QString name = text(seed.name);
        if (!ensureAccount(ctx, dialogs, seed.family, name, text(seed.tipus))) continue;
        if (const auto account = purchases::Verifica_compte_Despesa(ctx, group, name))
            chart.expense[at(seed.expense)].push_back(*account);
    }
    bool complete = !chart.goods.empty() && !chart.services.empty();
    for (const auto& accounts : chart.expense) complete = complete && !accounts.empty();
    if (!complete) refusedRecord(dialogs, QStringLiteral("an account of the chart"));
    return chart;
}

// --- Treasury ----------------------------------------------------------------------------

struct Till {
    QString name;
    std::int64_t id = 0;
};

struct Treasury {
    std::vector<Till> cash, banks;
};

// Every treasury account of the exercise, after two banks of the sample's own.
Treasury makeTreasury(const WorkingContext& ctx, QuietDialogs& dialogs, Dice& dice) {
    for (const char* bank : {"Banco de Poniente", "Caixa Comarcal"}) {
        const QString name = text(bank);
        if (master::treasuryAccountByName(ctx, name)) continue;
        master::TreasuryAccount t;
        t.grup = master::kGrupBancos;
        t.entidad = name;
        t.ccc = QString::number(dice.between(1000000000, 9999999999)) +
                QString::number(dice.between(1000000000, 9999999999));
        if (!master::saveTreasuryAccount(ctx, dialogs, t, true).done())
            refusedRecord(dialogs, QStringLiteral("treasury account \"%1\"").arg(name));
    }
    Treasury treasury;
    for (const QString& name : master::treasuryAccountNames(ctx)) {
        const auto account = master::treasuryAccountByName(ctx, name);
        if (!account) continue;
        Till till{account->entidad, account->id.toLongLong()};
        (account->grup == master::kGrupCaja ? treasury.cash : treasury.banks).push_back(till);
    }
    return treasury;
}

// --- Invoices ----------------------------------------------------------------------------

struct PlannedSale {
    SaleEntry entry;
    SalesAccount account;
};

struct PlannedPurchase {
    PurchaseEntry entry;
    ExpenseAccount account;
};

// The invoices, one at a time, as a person would type them into the screens: bases typed,
// quotas, withholding and totals worked out by the screens' own procedures.
class InvoiceMaker {
public:
    InvoiceMaker(const WorkingContext& ctx, Dice& dice, std::vector<SampleCustomer> customers,
                 std::vector<SampleSupplier> suppliers, Chart chart, Treasury treasury,
                 std::int64_t firstSale)
        : ctx_(ctx),
          dice_(dice),
          suppliers_(std::move(suppliers)),
          chart_(std::move(chart)),
          treasury_(std::move(treasury)),
          nextSale_(firstSale) {
        for (const SampleCustomer& c : customers) (c.re ? retailers_ : companies_).push_back(c);
        // Customers of both kinds exist whatever their flags say in a reused file.
        if (retailers_.empty()) retailers_ = companies_;
        if (companies_.empty()) companies_ = retailers_;
    }

    bool nextIsSale() { return sides_.deal(dice_) == 0; }
    PlannedSale sale(const QDate& date);
    PlannedPurchase purchase(const QDate& date);
    SampleSummary& summary() { return summary_; }

private:
    // Some customers buy far more often than others.
    const SampleCustomer& customer(bool retailer) {
        const auto& pool = retailer ? retailers_ : companies_;
        return pool[dice_.below(dice_.below(pool.size()) + 1)];
    }
    SampleSupplier& supplier(Expense expense);
    void settle(QString& entitat, std::optional<std::int64_t>& entitatId, Money total);
    void check(bool balanced, const QString& invoice) const;

    const WorkingContext& ctx_;
    Dice& dice_;
    std::vector<SampleCustomer> retailers_, companies_;
    std::vector<SampleSupplier> suppliers_;
    Chart chart_;
    Treasury treasury_;
    std::int64_t nextSale_;
    QuietDialogs dialogs_;
    SampleSummary summary_;
    // 55 sales in a hundred invoices.
    Deck sides_{11, 9};
    Deck saleKinds_ = saleKinds();
    Deck purchaseKinds_ = purchaseKinds();
    // The slots of the exercise's rates: the first, the general one, most of the time.
    Deck saleSlots_{7, 2, 1};
    Deck purchaseSlots_{6, 2, 1, 1};
    Deck settled_{1, 1};
};

SampleSupplier& InvoiceMaker::supplier(Expense expense) {
    std::vector<SampleSupplier*> pool;
    for (SampleSupplier& s : suppliers_)
        if (s.expense == expense) pool.push_back(&s);
    return *pool[dice_.below(pool.size())];
}

// About half of the invoices are settled as they are posted: small amounts through the cash
// box, the rest through a bank. The others go to the portfolio, as the posting does.
void InvoiceMaker::settle(QString& entitat, std::optional<std::int64_t>& entitatId, Money total) {
    if (!ctx_.Tesoreria || settled_.deal(dice_) != 0) return;
    const Money limit = Money::fromUnits(3000000);
    const bool small = total < limit && -limit < total;
    const bool cash = !treasury_.cash.empty() && (small || treasury_.banks.empty());
    const auto& pool = cash ? treasury_.cash : treasury_.banks;
    if (pool.empty()) return;
    const Till& till = pool[dice_.below(pool.size())];
    entitat = till.name;
    entitatId = till.id;
    ++summary_.settled;
}

// The check of the entry takes the amounts as the screens' procedures left them; a
// difference would be a fault of this sample, never a question for anybody.
void InvoiceMaker::check(bool balanced, const QString& invoice) const {
    if (!balanced)
        throw std::logic_error(
            QStringLiteral("sample: the amounts of %1 do not balance").arg(invoice).toStdString());
}

PlannedSale InvoiceMaker::sale(const QDate& date) {
    const auto kind = static_cast<SaleKind>(saleKinds_.deal(dice_));
    const bool retailer = kind == SaleKind::ToRetailer || kind == SaleKind::RetailerCreditNote;
    const bool professional =
        kind == SaleKind::Professional || kind == SaleKind::ProfessionalCreditNote;
    const bool credit = kind == SaleKind::CreditNote || kind == SaleKind::RetailerCreditNote ||
                        kind == SaleKind::ProfessionalCreditNote;
    const SampleCustomer& c = customer(retailer);
    const auto& accounts = professional ? chart_.services : chart_.goods;
    // Retailers buy wholesale.
    const SalesAccount& account = accounts[(retailer ? 1u : 0u) % accounts.size()];

    SaleEntry e;
    showDate(date, e.lblFecha, e.txtDia, e.txtMes);
    e.txtClient = e.listClientsText = c.name;
    e.clientNumber = c.number;
    e.reEnabled = c.re;
    e.txtTipus = e.listVendesText = account.NomCompte;
    e.txtdescripcio = QStringLiteral("A-%1").arg(nextSale_++);
    if (credit) e.cmbSerie = QStringLiteral("/Abon");
    e.venciment = date.addDays(30);
    const std::int64_t sign = credit ? -1 : 1;
    if (professional) {
        e.txtBase[0] = amountText(ctx_, sign * skewed(dice_, 15000, 300000));
        e.txtBaseIRPF = e.txtBase[0];
        // Seven per cent in a professional's first years.
        e.Text1 = dice_.below(5) == 0 ? QStringLiteral("7") : QStringLiteral("15");
    } else {
        const std::int64_t cents = credit     ? skewed(dice_, 1000, 50000)
                                   : retailer ? skewed(dice_, 5000, 400000)
                                              : skewed(dice_, 1500, 600000);
        const auto slot = static_cast<std::size_t>(saleSlots_.deal(dice_));
        e.txtBase[slot] = amountText(ctx_, sign * cents);
        if (kind == SaleKind::TwoRates) {
            const std::size_t other = slot == 0 ? 1 + dice_.below(2) : 0;
            e.txtBase[other] = amountText(ctx_, skewed(dice_, 1000, 100000));
        }
    }
    sales::Recalcula_Apunt(ctx_, e, c.re);
    check(sales::balanceCheck(ctx_, dialogs_, e), e.txtdescripcio);
    settle(e.entitat, e.entitatId, amountOf(ctx_, e.txtTotal));
    if (credit) ++summary_.creditNotes;
    ++summary_.sales;
    return {std::move(e), account};
}

PlannedPurchase InvoiceMaker::purchase(const QDate& date) {
    const int kind = purchaseKinds_.deal(dice_);
    const bool credit = kind == kPurchaseCreditNote;
    const Expense expense = credit ? Expense::Goods : static_cast<Expense>(kind);
    SampleSupplier& s = supplier(expense);
    const auto& accounts = chart_.expense[at(expense)];
    const ExpenseAccount& account = accounts[s.account % accounts.size()];

    PurchaseEntry e;
    e.group = chart_.group[at(expense)];
    showDate(date, e.lblFecha, e.txtDia, e.txtMes);
    e.txtProveidor = s.name;
    e.listProvText = s.name.toUpper();
    e.supplierNumber = s.number;
    e.txtDespesa = account.NomCompte;
    e.listDespesesText = account.NomCompte.toUpper();
    e.txtdescripcio = QStringLiteral("F%1-%2")
                          .arg(date.year() % 100, 2, 10, QChar(u'0'))
                          .arg(s.nextInvoice++, 4, 10, QChar(u'0'));
    if (credit) e.cmbSerie = QStringLiteral("/Abon");
    e.venciment = date.addDays(expense == Expense::Investment ? 60 : 30);
    const auto [low, high] = expenseRange(expense);
    const std::int64_t cents = credit ? -skewed(dice_, 1000, 60000) : skewed(dice_, low, high);
    if (withoutIva(expense)) {
        e.txtTotal = amountText(ctx_, cents);
    } else {
        const std::size_t slot =
            expense == Expense::Goods ? static_cast<std::size_t>(purchaseSlots_.deal(dice_)) : 0;
        e.txtBase[slot] = amountText(ctx_, cents);
        purchases::baseLeft(ctx_, e, static_cast<int>(slot));
        if (expense == Expense::Professional) {
            e.txtBaseIRPF = e.txtBase[slot];
            e.txtTipus = QStringLiteral("15");
            purchases::Calcula_Retencio(ctx_, e, std::nullopt);
        }
        // The invoice's total: bases and quotas less the withholding, nothing exempt.
        e.txtTotal =
            Format_Import(ctx_, amountOf(ctx_, e.txtBase[slot]) + amountOf(ctx_, e.txtIVA[slot]) -
                                    amountOf(ctx_, e.txtRetencio));
    }
    check(purchases::balanceCheck(ctx_, dialogs_, e), e.txtdescripcio);
    settle(e.entitat, e.entitatId, amountOf(ctx_, e.txtTotal));
    if (credit) ++summary_.creditNotes;
    ++summary_.purchases;
    return {std::move(e), account};
}

// Invoice i of n, dated so that the year fills evenly and the dates never go back.
QDate invoiceDate(Dice& dice, const QDate& first, std::int64_t i, std::int64_t n) {
    const std::int64_t days = first.daysInYear();
    const auto jitter = static_cast<std::int64_t>(dice.below(static_cast<std::size_t>(days)));
    return first.addDays((i * days + jitter) / n);
}

[[noreturn]] void failedPosting(const QString& invoice, const QString& error) {
    throw std::runtime_error(
        QStringLiteral("sample: %1 was not posted: %2").arg(invoice, error).toStdString());
}

}  // namespace

SampleSummary fillSampleExercise(const WorkingContext& ctx, const SampleOptions& options,
                                 const std::function<void(int done, int total)>& progress) {
    if (options.invoices < 1)
        throw std::invalid_argument("sample: the number of invoices must be positive");
    if (ctx.Facturacio)
        throw std::invalid_argument(
            "sample: with the billing module the sales are billing "
            "documents, which the sample does not make");
    if (isTickets(ctx))
        throw std::invalid_argument("sample: a shop's exercise has no customers and no IVA split");
    const QDate first(ctx.Exercici.toInt(), 1, 1);
    if (!first.isValid()) throw std::invalid_argument("sample: the exercise has no year");
    // The invoices fill every month, and the posting screens refuse a locked one.
    for (int month = 1; month <= 12; ++month)
        if (Mes_Bloquejat(ctx, month))
            throw std::invalid_argument(
                QStringLiteral("sample: the month %1 is locked").arg(month).toStdString());

    const int n = options.invoices;
    Dice dice(options.seed);
    QuietDialogs dialogs;
    std::vector<SampleCustomer> customers =
        makeCustomers(ctx, dialogs, dice, std::clamp(n / 25, 10, 200));
    std::vector<SampleSupplier> suppliers =
        makeSuppliers(ctx, dialogs, dice, std::clamp(n / 100, 3, 60), std::clamp(n / 500, 2, 20));
    Chart chart = makeChart(ctx, dialogs);
    Treasury treasury = ctx.Tesoreria ? makeTreasury(ctx, dialogs, dice) : Treasury{};

    const auto customerCount = static_cast<int>(customers.size());
    const auto supplierCount = static_cast<int>(suppliers.size());
    // Sales are described by the number the posting gives them.
    InvoiceMaker maker(ctx, dice, std::move(customers), std::move(suppliers), std::move(chart),
                       std::move(treasury), sales::Seguent_Ordre(ctx));

    // Two connections, each with the files its postings attach; their batches take turns,
    // so that one never waits for the other's lock.
    store::Database salesDb = sales::openPosting(ctx);
    store::Database purchasesDb = purchases::openPosting(ctx);
    for (std::int64_t start = 0; start < n; start += kBatch) {
        const std::int64_t end = std::min<std::int64_t>(n, start + kBatch);
        std::vector<PlannedSale> saleBatch;
        std::vector<PlannedPurchase> purchaseBatch;
        for (std::int64_t i = start; i < end; ++i) {
            const QDate date = invoiceDate(dice, first, i, n);
            if (maker.nextIsSale())
                saleBatch.push_back(maker.sale(date));
            else
                purchaseBatch.push_back(maker.purchase(date));
        }
        {
            store::Transaction tx(salesDb, store::Transaction::Kind::Immediate);
            for (PlannedSale& p : saleBatch) {
                const sales::PostingResult r = sales::postSale(ctx, salesDb, p.entry, p.account);
                if (r.affected != 1) failedPosting(p.entry.txtdescripcio, r.error);
            }
            tx.commit();
        }
        {
            store::Transaction tx(purchasesDb, store::Transaction::Kind::Immediate);
            for (PlannedPurchase& p : purchaseBatch) {
                const purchases::PostingResult r =
                    purchases::postPurchase(ctx, purchasesDb, p.entry, p.account);
                if (r.affected != 1) failedPosting(p.entry.txtdescripcio, r.error);
            }
            tx.commit();
        }
        if (progress) progress(static_cast<int>(end), n);
    }

    SampleSummary summary = maker.summary();
    summary.customers = customerCount;
    summary.suppliers = supplierCount;
    return summary;
}

void openSampleCompany(WorkingContext& ctx, ScriptedDialogs& dialogs, const QString& folder,
                       const QDate& today) {
    const QString unit = folder + QStringLiteral("/unit");
    ctx.Unitat = unit;
    ctx.programDir = folder + QStringLiteral("/program/");
    QDir().mkpath(unit);
    QDir().mkpath(ctx.programDir);
    NewCompany company{QStringLiteral("Comercial Brenwick S.L."),
                       QStringLiteral("C/ Major, 1"),
                       QStringLiteral("Reus"),
                       QStringLiteral("43201"),
                       QStringLiteral("B1234567"),
                       true};
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    if (!Verifica_Empresa(ctx, dialogs, unit, company))
        throw std::runtime_error("the company was refused: " + dialogs.lastText().toStdString());
    if (!Obre_Empresa(ctx, dialogs, unit,
                      companyRow(CompanyEntry{QStringLiteral("x"), nif8Of(company.nif)})))
        throw std::runtime_error("the company did not open");
    NewExercise exercise;
    exercise.exercici = QStringLiteral("2026");
    exercise.iva = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4")};
    exercise.re = {QStringLiteral("5,2"), QStringLiteral("1,4"), QStringLiteral("0,5")};
    // The text "0" alone is refused by the exercise's creation.
    exercise.ivas = {QStringLiteral("21"), QStringLiteral("10"), QStringLiteral("4"),
                     QStringLiteral("0,0")};
    dialogs.setNextAnswer(Dialogs::Answer::Yes);
    if (!Graba_Exercici(ctx, dialogs, exercise))
        throw std::runtime_error("the exercise was refused: " + dialogs.lastText().toStdString());
    if (!Obre_Exercici(ctx, dialogs, exercise.exercici, today))
        throw std::runtime_error("the exercise did not open");
    Inicia_MDI(ctx, &dialogs);
}

}  // namespace tallora::shell
