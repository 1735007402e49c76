#include "journal_builder.h"

#include "context/common_helpers.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/upgrades.h"
#include "store/database.h"
#include "store/store_error.h"

#include <QDate>

#include <array>
#include <functional>
#include <optional>

namespace tallora::books {
namespace {

using schema::db::Llibre;

// A row of Diari as the builders fill it; what a row is not given keeps the table's default.
struct Row {
    std::int64_t ordre = 0, ordreGral = 0, ordreIVAs = 0, ordreIVAr = 0, apunt = 0;
    std::int64_t party = 0, grup = 0, compte = 0, numFra = 0;
    QDate data;
    QString nif, nom, descripcio, clasificacion, nomGrup, nomCompte, debeHaber;
    Money debe, haber, total, baseIVA, tipusIVA, iva, tipusREC, rec, baseRET, tipusRET, ret;
    std::array<Money, 6> families{};  // COMPRES SERVEIS TRIBUTS PERSONAL AMORTITZACIONS INVERSIONS
};

class Writer {
public:
    Writer(store::Database& db, bool sale)
        : insert_(db.prepare(
              QStringLiteral("insert into Diari (Ordre, OrdreGRAL, OrdreIVAs, OrdreIVAr, Apunt, "
                             "%1, nif, %2, descripcio, Clasificacion, Grup, NomGrup, Compte, "
                             "NomCompte, data, Debe_Haber, Debe, Haber, TOTAL, BaseIVA, "
                             "TipusIVA, IVA, TipusREC, REC, BaseRET, TipusRET, RET, COMPRES, "
                             "SERVEIS, TRIBUTS, PERSONAL, AMORTITZACIONS, INVERSIONS, num_fra) "
                             "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                             "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                  .arg(sale ? QStringLiteral("Client") : QStringLiteral("Proveidor"),
                       sale ? QStringLiteral("NomClient") : QStringLiteral("NomProveidor")))) {}

    void save(const Row& r) {
        insert_.reset();
        int i = 0;
        for (std::int64_t n : {r.ordre, r.ordreGral, r.ordreIVAs, r.ordreIVAr, r.apunt, r.party})
            insert_.bind(++i, n);
        for (const QString& t : {r.nif, r.nom, r.descripcio, r.clasificacion}) insert_.bind(++i, t);
        insert_.bind(++i, r.grup);
        insert_.bind(++i, r.nomGrup);
        insert_.bind(++i, r.compte);
        insert_.bind(++i, r.nomCompte);
        if (r.data.isValid())
            insert_.bind(++i, r.data);
        else
            insert_.bind(++i, nullptr);
        insert_.bind(++i, r.debeHaber);
        for (Money m : {r.debe, r.haber, r.total, r.baseIVA, r.tipusIVA, r.iva, r.tipusREC, r.rec,
                        r.baseRET, r.tipusRET, r.ret})
            insert_.bind(++i, m);
        for (Money m : r.families) insert_.bind(++i, m);
        insert_.bind(++i, r.numFra);
        insert_.execute();
    }

private:
    store::Statement insert_;
};

// The run's connection: LLibre.mdb, with the invoices and gest.mdb attached.
store::Database openRun(const WorkingContext& ctx, const QString& invoices) {
    prepareJournal(ctx);
    store::Database db = store::Database::open(ctx.exerciseFile(Llibre));
    db.attach(ctx.exerciseFile(invoices), QStringLiteral("fras"));
    db.attach(ctx.exerciseFile(schema::db::Gest), QStringLiteral("gest"));
    return db;
}

// A fault of the run: it stops at that invoice and keeps what is built.
struct Stop {};

class Reader {
public:
    explicit Reader(const store::Statement& st) : st_(st) {}
    QString text(int c) const { return st_.isNull(c) ? QString() : st_.text(c); }
    std::int64_t number(int c) const { return st_.isNull(c) ? 0 : st_.int64(c); }
    Money amount(int c) const {
        if (st_.isNull(c)) throw Stop{};
        return st_.money(c);
    }

private:
    const store::Statement& st_;
};

// The expense family of a purchase's group, or none.
std::optional<std::size_t> family(std::int64_t grup) {
    switch (grup) {
        case 60:
            return 0;
        case 62:
            return 1;
        case 63:
            return 2;
        case 64:
            return 3;
        case 68:
            return 4;
        case 20:
            return 5;
        default:
            return std::nullopt;
    }
}

void run(const WorkingContext& ctx, bool sale,
         const std::function<void(store::Statement&, Writer&)>& build) {
    store::Database db = openRun(ctx, sale ? schema::db::FrasOut : schema::db::FrasIn);
    store::Transaction tx(db, store::Transaction::Kind::Immediate);
    db.execute(sale ? QStringLiteral("delete from Diari where Debe_Haber = 'D'")
                    : QStringLiteral("delete from Diari where Debe_Haber = 'H'"));
    Writer writer(db, sale);
    store::Statement st = db.prepare(
        sale ? QStringLiteral(
                   "select f.Ordre, f.data, f.Client, f.NomClient, f.Descripcio, f.Clasificacion, "
                   "f.Grup, f.NomGrup, f.Compte, f.NomCompte, f.TOTAL, f.BaseIRPF, f.TipusIRPF, "
                   "f.Retencio, (select nif from gest.Clients where client = f.Client limit 1), "
                   "f.Base1, f.TIva1, f.Iva1, f.TRE1, f.RE1, f.Base2, f.TIva2, f.Iva2, f.TRE2, "
                   "f.RE2, f.Base3, f.TIva3, f.Iva3, f.TRE3, f.RE3 "
                   "from fras.FrasOut f order by f.data asc, f.Ordre asc, f.Descripcio asc")
             : QStringLiteral(
                   "select f.Ordre, f.data, f.Proveidor, f.NomProveidor, f.descripcio, "
                   "f.Clasificacion, f.Grup, f.NomGrup, f.Compte, f.NomCompte, f.TOTAL, "
                   "f.BaseIRPF, f.TipusIRPF, f.Retencio, (select nif from gest.Proveidors where "
                   "proveidor = f.Proveidor limit 1), f.Base1, f.TipusIva1, f.Iva1, f.Base2, "
                   "f.TipusIva2, f.Iva2, f.Base3, f.TipusIva3, f.Iva3, f.Base4, f.TipusIva4, "
                   "f.Iva4 from fras.FrasIN f order by f.data asc, f.Ordre asc, f.descripcio asc"));
    try {
        build(st, writer);
    } catch (const Stop&) {
    } catch (const store::StoreError&) {
    }
    // Whatever stopped the run, the rows built stay.
    tx.commit();
}

// The columns every row of an invoice copies (steps 4 and 6a of both sides).
Row invoiceRow(const Reader& f, const QString& descripcio) {
    Row r;
    r.party = f.number(2);
    r.nom = f.text(3);
    r.descripcio = descripcio;
    r.clasificacion = f.text(5);
    r.grup = f.number(6);
    r.nomGrup = f.text(7);
    r.compte = f.number(8);
    r.nomCompte = f.text(9);
    r.nif = f.text(14);
    return r;
}

}  // namespace

void prepareJournal(const WorkingContext& ctx) {
    const QString path = ctx.exerciseFile(Llibre);
    schema::createTables(path, Llibre, {QStringLiteral("Diari")});
    schema::upgradeJournal(path);
}

void Genera_Diari_Compres(const WorkingContext& ctx) {
    run(ctx, false, [](store::Statement& st, Writer& writer) {
        std::int64_t ordreGral = 1, ordreIVAs = 1, apunt = 1;
        while (st.next()) {
            const Reader f(st);
            const std::int64_t ordre = f.number(0);
            const QDate data = st.isNull(1) ? QDate() : st.date(1);
            const QString descripcio = f.text(4);
            Row first = invoiceRow(f, descripcio);
            first.ordre = ordre;
            first.ordreGral = ordreGral;
            first.data = data;
            first.haber = first.total = f.amount(10);
            first.debeHaber = QStringLiteral("H");
            first.baseRET = f.amount(11);
            first.tipusRET = f.amount(12);
            first.ret = f.amount(13);
            Money net = first.total + first.ret;
            for (int i = 0; i < 4; ++i) net -= f.amount(17 + 3 * i);
            if (const auto column = family(first.grup)) first.families[*column] = net;

            bool written = false;
            for (int i = 0; i < 4; ++i) {
                const Money base = f.amount(15 + 3 * i);
                if (base == Money{}) continue;
                // The first rate used lands on the invoice's first row, whatever its index.
                Row r = written ? invoiceRow(f, descripcio) : first;
                r.baseIVA = base;
                r.tipusIVA = f.amount(16 + 3 * i);
                r.iva = f.amount(17 + 3 * i);
                r.ordre = ordre;
                r.debeHaber = QStringLiteral("H");
                r.data = data;
                r.apunt = apunt++;
                r.ordreIVAs = ordreIVAs;
                r.ordreGral = ordreGral;
                writer.save(r);
                written = true;
            }
            if (written) {
                ++ordreIVAs;
            } else {
                // No rate: in the journal, but with no place in the VAT book.
                first.apunt = apunt++;
                writer.save(first);
            }
            ++ordreGral;
        }
    });
}

void Genera_Diari_Vendes(const WorkingContext& ctx) {
    run(ctx, true, [](store::Statement& st, Writer& writer) {
        std::int64_t ordreGral = 1, ordreIVAr = 1, apunt = 1;
        while (st.next()) {
            const Reader f(st);
            const std::int64_t ordre = f.number(0);
            const QDate data = st.isNull(1) ? QDate() : st.date(1);
            const QString full = f.text(4);
            // A long description keeps its last six characters: a series prefix is lost.
            const QString descripcio = full.size() > 6 ? full.right(6) : full;
            const std::int64_t numFra = Nomes_Digits(full);
            const auto copied = [&] {
                Row r = invoiceRow(f, descripcio);
                r.numFra = numFra;
                return r;
            };
            Row first = copied();
            first.ordre = ordre;
            first.ordreGral = ordreGral;
            first.data = data;
            const Money total = f.amount(10);
            first.debe = total;
            first.debeHaber = QStringLiteral("D");
            const Money retencio = f.amount(13);
            if (f.amount(11) != Money{}) {
                first.baseRET = f.amount(11);
                first.tipusRET = f.amount(12);
                first.ret = retencio;
            }
            std::array<Money, 3> bases{};
            int last = -1;  // the last rate used, whose row takes the total
            for (int i = 0; i < 3; ++i) {
                bases[static_cast<std::size_t>(i)] = f.amount(15 + 5 * i);
                if (bases[static_cast<std::size_t>(i)] != Money{}) last = i;
            }

            bool written = false;
            for (int i = 0; i < 3; ++i) {
                const Money base = bases[static_cast<std::size_t>(i)];
                if (base == Money{}) continue;
                Row r = written ? copied() : first;
                r.baseIVA = base;
                r.tipusIVA = f.amount(16 + 5 * i);
                r.iva = f.amount(17 + 5 * i);
                if (f.amount(19 + 5 * i) != Money{}) {
                    r.tipusREC = f.amount(18 + 5 * i);
                    r.rec = f.amount(19 + 5 * i);
                }
                r.ordre = ordre;
                r.debeHaber = QStringLiteral("D");
                r.data = data;
                r.apunt = apunt++;
                r.ordreIVAr = ordreIVAr++;
                r.ordreGral = ordreGral;
                if (i == last) r.total = total;
                writer.save(r);
                written = true;
            }
            if (bases[0] + bases[1] + bases[2] == Money{}) {
                // Bases that cancel each other: the row is already saved, and the run ends.
                if (written) throw Stop{};
                // No VAT line: the whole amount before withholding as base, at no rate.
                first.baseIVA = total + retencio;
                first.total = total;
            }
            if (!written) {
                first.apunt = apunt++;
                writer.save(first);
            }
            ++ordreGral;
        }
    });
}

}  // namespace tallora::books
