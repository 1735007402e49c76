#include "store/collation.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tallora;
using namespace tallora::store;

namespace {

TableDef clientsTable() {
    return {"Clients",
            {{"client", FieldType::Long, 0, true, false, ""},
             {"nom", FieldType::Text, 40, false, true, ""},
             {"NomClient", FieldType::Text, 40, false, false, ""},
             {"RE", FieldType::Boolean, 0, false, false, "0"},
             {"saldo", FieldType::Currency, 0, false, false, "0"},
             {"data", FieldType::Date, 0, false, false, ""},
             {"Marca", FieldType::Integer, 0, false, false, "0"},
             {"Factor", FieldType::Double, 0, false, false, ""},
             {"Notes", FieldType::Memo, 0, false, true, ""}},
            {{"client"}, {"nom"}}};
}

class Store : public ::testing::Test {
protected:
    void SetUp() override {
        path = dir.filePath("gest.mdb");
        Database db = Database::open(path, Database::Mode::CreateIfMissing);
        createTable(db, clientsTable());
    }
    Database open() { return Database::open(path); }
    void insertName(Database& db, const QString& nom) {
        db.prepare("insert into Clients (nom, NomClient) values (?, 'x')").bind(1, nom).execute();
    }
    QString errorOf(const QString& sql) {
        Database db = open();
        try {
            db.execute(sql);
        } catch (const StoreError& e) {
            return e.message();
        }
        return QString();
    }
    QTemporaryDir dir;
    QString path;
};

}  // namespace

TEST_F(Store, OpeningAMissingFileIsRefusedAndCreatesNothing) {
    const QString missing = dir.filePath("none.mdb");
    EXPECT_THROW(Database::open(missing), StoreError);
    EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(Store, CurrencyRoundTripIsExactToTheTenThousandth) {
    Database db = open();
    const Money amount = Money::fromUnits(1234567891234);  // 123.456.789,1234
    db.prepare("insert into Clients (nom, NomClient, saldo) values ('a', 'x', ?)").bind(1, amount).execute();
    Statement st = db.prepare("select saldo, sum(saldo) from Clients");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.money(0), amount);
    EXPECT_EQ(st.money(1), amount);
}

TEST_F(Store, TypedReadsAndNulls) {
    Database db = open();
    db.prepare("insert into Clients (nom, NomClient, RE, data, Marca, Factor, Notes) values (?,?,?,?,?,?,?)")
        .bind(1, "Bar")
        .bind(2, "x")
        .bind(3, true)
        .bind(4, QDate(2026, 3, 31))
        .bind(5, -1)
        .bind(6, 1.5)
        .bind(7, QString())
        .execute();
    Statement st = db.prepare("select client, nom, RE, data, Marca, Factor, Notes, saldo from Clients");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.int32(0), 1);
    EXPECT_EQ(st.text(1), QStringLiteral("Bar"));
    EXPECT_TRUE(st.boolean(2));
    EXPECT_EQ(st.int64(2), -1) << "True is stored as -1";
    EXPECT_EQ(st.date(3), QDate(2026, 3, 31));
    EXPECT_EQ(st.text(3), QStringLiteral("2026-03-31"));
    EXPECT_EQ(st.int32(4), -1);
    EXPECT_DOUBLE_EQ(st.real(5), 1.5);
    EXPECT_TRUE(st.isNull(6));
    EXPECT_EQ(st.money(7), Money()) << "the default";
    EXPECT_EQ(st.columnIndex("NOM"), 1);
    EXPECT_FALSE(st.next());
    EXPECT_TRUE(st.atEnd());
}

TEST_F(Store, EqualityIgnoresCaseAlsoForSpanishAndCatalanLetters) {
    Database db = open();
    insertName(db, "ñandú, s.l.");
    insertName(db, "plaça");
    Statement st = db.prepare("select count(*) from Clients where nom = ?");
    st.bind(1, "ÑANDÚ, S.L.");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.int32(0), 1);
    st.reset();
    st.bind(1, "PLAÇA");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.int32(0), 1);
    st.reset();
    st.bind(1, "nandu, s.l.");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.int32(0), 0) << "accents still count";
}

TEST_F(Store, OrderPutsAccentedLettersWithTheirBaseAndEnyeAfterN) {
    Database db = open();
    for (const char* n : {"Zapata", "Ñoño", "Árbol", "abeto", "Nuez", "Ávila", "azul", "Óscar", "oso"})
        insertName(db, n);
    Statement st = db.prepare("select nom from Clients order by nom");
    QStringList names;
    while (st.next()) names << st.text(0);
    EXPECT_EQ(names, (QStringList{"abeto", "Árbol", "Ávila", "azul", "Nuez", "Ñoño", "Óscar", "oso", "Zapata"}));
}

TEST_F(Store, LikeAgreesWithEquality) {
    Database db = open();
    insertName(db, "Ñandú, S.L.");
    insertName(db, "Construcciones Pérez");
    auto count = [&](const QString& pattern) {
        Statement st = db.prepare("select count(*) from Clients where nom like ?");
        st.bind(1, pattern);
        st.next();
        return st.int32(0);
    };
    EXPECT_EQ(count("ñan%"), 1);
    EXPECT_EQ(count("%PÉREZ"), 1);
    EXPECT_EQ(count("%perez"), 0);
    EXPECT_EQ(count("_ANDÚ%"), 1);
    EXPECT_EQ(count("%"), 2);
    EXPECT_TRUE(likeText(u"a\\%b", u"a%b", u'\\'));
    EXPECT_FALSE(likeText(u"a\\%b", u"axb", u'\\'));
    EXPECT_TRUE(likeText(u"%a%b%", u"xxAyyBzz"));
    EXPECT_FALSE(likeText(u"%a%b", u"xxAyyBzz"));
}

TEST_F(Store, CompareTextIsAConsistentOrder) {
    EXPECT_EQ(compareText(u"ÑANDÚ", u"ñandú"), 0);
    EXPECT_LT(compareText(u"nz", u"ña"), 0);
    EXPECT_LT(compareText(u"a", u"á"), 0);
    EXPECT_GT(compareText(u"á", u"a"), 0);
    EXPECT_LT(compareText(u"á", u"b"), 0);
    EXPECT_EQ(compareText(u"Plaça", u"PLAÇA"), 0);
    EXPECT_LT(compareText(u"ABC", u"abd"), 0);
}

TEST_F(Store, OverLongTextIsRefusedNamingTableAndField) {
    const QString error =
        errorOf(QStringLiteral("insert into Clients (nom, NomClient) values ('%1', 'x')").arg(QString(41, u'a')));
    EXPECT_TRUE(error.contains("Clients.nom")) << error.toStdString();
    EXPECT_TRUE(error.contains("40")) << error.toStdString();
    Database db = open();
    EXPECT_NO_THROW(insertName(db, QString(40, u'ñ')));
}

TEST_F(Store, EmptyTextRefusedWhereZeroLengthIsNotAllowed) {
    const QString error = errorOf("insert into Clients (nom, NomClient) values ('a', '')");
    EXPECT_TRUE(error.contains("Clients.NomClient: empty text not allowed")) << error.toStdString();
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient) values ('', 'x')").isEmpty());
}

TEST_F(Store, NonNumbersAreRefusedInNumberColumns) {
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient, saldo) values ('a', 'x', 'mucho')").contains("Clients.saldo"));
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient, saldo) values ('a', 'x', 1.5)").contains("Clients.saldo"));
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient, Marca) values ('a', 'x', 40000)").contains("Clients.Marca"));
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient, RE) values ('a', 'x', 1)").contains("Clients.RE"));
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient, data) values ('a', 'x', '31/03/2026')").contains("Clients.data"));
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient, Factor) values ('a', 'x', 'x')").contains("Clients.Factor"));
    EXPECT_TRUE(errorOf("insert into Clients (nom, NomClient, Factor) values ('a', 'x', 2)").isEmpty());
}

TEST_F(Store, TransactionRollsBackUnlessCommitted) {
    Database db = open();
    {
        Transaction tx(db, Transaction::Kind::Immediate);
        insertName(db, "lost");
    }
    {
        Transaction tx(db);
        insertName(db, "kept");
        tx.commit();
    }
    Statement st = db.prepare("select nom from Clients");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.text(0), QStringLiteral("kept"));
    EXPECT_FALSE(st.next());
}

TEST_F(Store, APostingThatFailsOnItsSecondFileLeavesNothingInTheFirst) {
    const QString second = dir.filePath("tesorer.mdb");
    {
        Database t = Database::open(second, Database::Mode::CreateIfMissing);
        createTable(t, {"movimientos", {{"Id", FieldType::Long, 0, true}, {"concepto", FieldType::Text, 10, false, false, ""}}, {}});
    }
    Database db = open();
    db.attach(second, "tes");
    try {
        Transaction tx(db, Transaction::Kind::Immediate);
        insertName(db, "posted");
        db.execute("insert into tes.movimientos (concepto) values ('far too long a concept')");
        tx.commit();
        FAIL() << "the second write should have been refused";
    } catch (const StoreError& e) {
        EXPECT_TRUE(e.message().contains("movimientos.concepto"));
    }
    Statement st = db.prepare("select count(*) from Clients");
    st.next();
    EXPECT_EQ(st.int32(0), 0);
}

TEST_F(Store, SchemaObjectsByNameWithoutRegardToCase) {
    Database db = open();
    EXPECT_TRUE(tableExists(db, "CLIENTS"));
    EXPECT_EQ(actualTableName(db, "clients"), QStringLiteral("Clients"));
    EXPECT_FALSE(tableExists(db, "Proveidors"));
    EXPECT_TRUE(fieldExists(db, "clients", "NOM"));
    EXPECT_FALSE(fieldExists(db, "clients", "fax"));
    EXPECT_TRUE(indexExists(db, "clients", "Nom"));
    EXPECT_FALSE(indexExists(db, "clients", "RE"));
    addField(db, "clients", {"fax", FieldType::Text, 12, false, true, ""});
    addIndex(db, "CLIENTS", "RE");
    EXPECT_TRUE(fieldExists(db, "Clients", "Fax"));
    EXPECT_TRUE(indexExists(db, "Clients", "re"));
}

TEST_F(Store, DescribeGivesBackTheDefinition) {
    Database db = open();
    const TableDef def = clientsTable();
    EXPECT_EQ(describeFields(db, "Clients"), def.fields);
    EXPECT_EQ(describeIndexes(db, "Clients"), def.indexes);
    EXPECT_EQ(tableNames(db), QStringList{"Clients"});
}

TEST_F(Store, AnAddedFieldTakesItsDefaultAndAnAddedCounterNumbersTheRows) {
    Database db = open();
    insertName(db, "uno");
    insertName(db, "dos");
    addField(db, "Clients", {"Pagada", FieldType::Boolean, 0, false, false, "-1"});
    createTable(db, {"Diari", {{"Apunt", FieldType::Text, 10, false, true, ""}}, {{"Apunt"}}});
    for (const char* a : {"c", "a", "b"}) db.prepare("insert into Diari (Apunt) values (?)").bind(1, a).execute();
    addField(db, "Diari", {"Id", FieldType::Long, 0, true});
    Statement st = db.prepare("select Id, Apunt from Diari order by Id");
    QStringList rows;
    while (st.next()) rows << QString::number(st.int32(0)) + st.text(1);
    EXPECT_EQ(rows, (QStringList{"1c", "2a", "3b"}));
    EXPECT_TRUE(indexExists(db, "Diari", "Apunt"));
    db.execute("insert into Diari (Apunt) values ('d')");
    EXPECT_EQ(db.lastInsertId(), 4);
    Statement paid = db.prepare("select count(*) from Clients where Pagada = -1");
    paid.next();
    EXPECT_EQ(paid.int32(0), 2);
}

TEST_F(Store, StoredQueriesAreViewsMadeAnew) {
    Database db = open();
    insertName(db, "uno");
    insertName(db, "dos");
    createQuery(db, "SelFras", "select nom from Clients where nom = " + quoteLiteral("it's"));
    EXPECT_TRUE(queryExists(db, "selfras"));
    createQuery(db, "SelFras", "select nom from Clients where nom = 'UNO'");
    Statement st = db.prepare("select * from SelFras");
    ASSERT_TRUE(st.next());
    EXPECT_EQ(st.text(0), QStringLiteral("uno"));
    st = db.prepare("select 1");
    dropQuery(db, "SELFRAS");
    EXPECT_FALSE(queryExists(db, "SelFras"));
    EXPECT_NO_THROW(dropQuery(db, "SelFras"));
    EXPECT_EQ(quoteLiteral("it's"), QStringLiteral("'it''s'"));
    EXPECT_EQ(quoteIdentifier("01"), QStringLiteral("\"01\""));
}

TEST_F(Store, ADamagedFileIsReportedOnOpening) {
    const QString broken = dir.filePath("broken.mdb");
    QFile f(broken);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(QByteArray(4096, 'x'));
    f.close();
    EXPECT_THROW(Database::open(broken), StoreError);
}
