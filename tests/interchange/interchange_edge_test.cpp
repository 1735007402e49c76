// The interchange file at its edges: field columns and cuts, the header, the checks before
// an export or an import, renumbering, safety copies and the all-or-nothing import.
#include "../master/master_fixture.h"
#include "context/messages.h"
#include "context/text_encoding.h"
#include "interchange/interchange_export.h"
#include "interchange/interchange_header.h"
#include "interchange/interchange_import.h"
#include "interchange/interchange_layout.h"
#include "interchange/interchange_record.h"
#include "interchange/interchange_values.h"
#include "verifactu/chain_check.h"
#include "verifactu/record_file.h"
#include "verifactu/stored_records.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <map>
#include <utility>

using namespace tallora;

namespace {

// A fixed moment, so that the header's first line can be compared.
const QDateTime kNow(QDate(2026, 3, 5), QTime(14, 7, 9));

// What the hand-made files say in their header.
struct Header {
    QString content = QStringLiteral("ALL");
    QString cli = QStringLiteral("---");
    QString pro = QStringLiteral("---");
    QString plc = QStringLiteral("---");
    QString origin = QStringLiteral("/home/gestor/empresa/2026/");
    QString version = QStringLiteral("V5.0");
};

class Interchange : public tallora::testing::MasterData {
protected:
    void SetUp() override {
        MasterData::SetUp();
        ASSERT_TRUE(out.isValid());
        f.ctx.EmpresaNom = QStringLiteral("Comercial Brenwick S.L.");
        f.ctx.EmpresaNIF = QStringLiteral("B12345674");
    }

    // --- Files made by hand -------------------------------------------------------------

    // Writes `text` at column `from` (counted from 1), padded and cut to `width`, growing the
    // line with blanks as needed.
    static void put(QByteArray& line, int from, int width, const QString& text) {
        QByteArray field;
        interchange::appendField(field, text, width);
        const qsizetype end = from - 1 + width;
        if (line.size() < end) line.append(end - line.size(), ' ');
        line.replace(from - 1, width, field);
    }

    // A data line of record `key` with these field texts at their own columns and blanks
    // elsewhere; "table" stands for the account table a 5CTA line names.
    static QByteArray recordLine(const QString& key, const std::map<QString, QString>& values) {
        const QString trimmed = key.trimmed();
        const interchange::RecordLayout* layout = interchange::layoutFor(trimmed);
        EXPECT_NE(layout, nullptr) << key.toStdString();
        if (!layout) return {};
        QByteArray line = encodeWindows1252(layout->key);
        for (const auto& [column, text] : values) {
            const interchange::FieldLayout* field =
                column == u"table" ? &layout->fields.front() : layout->field(column);
            EXPECT_NE(field, nullptr) << column.toStdString();
            if (field) put(line, field->from, field->width, text);
        }
        const int length = layout->lineLength(true);
        if (line.size() < length) line.append(length - line.size(), ' ');
        return line;
    }

    static QByteArray customerLine(const QString& client, const QString& nom) {
        return recordLine("5CLI", {{"client", client}, {"nom", nom}, {"RE", "0"}});
    }

    static QByteArray saleLine(const QString& ordre, const QString& descripcio,
                               const QString& total = QStringLiteral("121"),
                               const QString& data = QStringLiteral("10/01/2026")) {
        return recordLine("5OUT", {{"Ordre", ordre},
                                   {"Data", data},
                                   {"Client", "1"},
                                   {"NomClient", "Bar Centre"},
                                   {"Base1", "100"},
                                   {"Iva1", "21"},
                                   {"TIva1", "21"},
                                   {"TOTAL", total},
                                   {"Descripcio", descripcio},
                                   {"Grup", "70"},
                                   {"NomGrup", "Ventas"}});
    }

    static QByteArray purchaseLine(const QString& ordre) {
        return recordLine("5IN", {{"Ordre", ordre},
                                  {"Data", "12/01/2026"},
                                  {"proveidor", "1"},
                                  {"nomproveidor", "Olis del Camp"},
                                  {"Base1", "100"},
                                  {"Iva1", "21"},
                                  {"TipusIva1", "21"},
                                  {"TOTAL", "121"},
                                  {"Descripcio", "A-" + ordre},
                                  {"Grup", "60"},
                                  {"NomGrup", "Compras"},
                                  {"Periode", "1T"},
                                  {"Pagada", "True"}});
    }

    static QByteArray accountLine(const QString& table, const QString& compte, const QString& nom,
                                  const QString& tipus) {
        return recordLine("5CTA", {{"table", table},
                                   {"Grup", "600"},
                                   {"NomGrup", "Compras"},
                                   {"Compte", compte},
                                   {"NomCompte", nom},
                                   {"Tipus", tipus}});
    }

    static QStringList headerLines(const Header& h) {
        return {QStringLiteral("INF 05/03/2026   14:07:09"),
                QStringLiteral("INF Empresa de Origen S.A."),
                QStringLiteral("INF ") + h.origin,
                QStringLiteral("INF A08000000"),
                QStringLiteral("INF ") + h.version,
                QStringLiteral("CNT ") + h.content,
                QStringLiteral("DAT ") + h.cli,
                QStringLiteral("DAT ") + h.pro,
                QStringLiteral("DAT ") + h.plc};
    }

    // The nine header lines and the records, each ended by CR LF, in Windows-1252.
    QString writeFile(const QString& name, const QList<QByteArray>& records, const Header& h = {}) {
        QByteArray bytes =
            encodeWindows1252(headerLines(h).join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
        for (const QByteArray& r : records) bytes += r + "\r\n";
        const QString path = out.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    // --- Export and import --------------------------------------------------------------

    bool exportTo(const QString& path, const interchange::ExportChoice& choice = {}) {
        return interchange::Exporta(f.ctx, dialogs, path, choice, {}, kNow);
    }

    // An import agreed to at its question.
    bool importFile(const QString& path, const interchange::ImportChoice& choice = {}) {
        dialogs.setNextAnswer(Dialogs::Answer::Yes);
        return interchange::Importa(f.ctx, dialogs, path, interchange::readHeader(f.ctx, path),
                                    choice);
    }

    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) return {};
        return file.readAll();
    }

    // The lines of a file split at CR LF, decoded.
    static QStringList linesOf(const QString& path) {
        const QByteArray bytes = bytesOf(path);
        QStringList lines;
        qsizetype start = 0;
        qsizetype end = bytes.indexOf("\r\n", start);
        while (end >= 0) {
            lines << decodeWindows1252(bytes.mid(start, end - start));
            start = end + 2;
            end = bytes.indexOf("\r\n", start);
        }
        if (start < bytes.size()) lines << decodeWindows1252(bytes.mid(start));
        return lines;
    }

    static QStringList recordsOf(const QString& path, const QString& key) {
        QStringList found;
        for (const QString& line : linesOf(path))
            if (line.startsWith(key)) found << line;
        return found;
    }

    // --- Data already in the exercise ---------------------------------------------------

    void customer(int client, const QString& nom) {
        exec(gest(), QStringLiteral("insert into Clients (client, nom) values (%1, '%2')")
                         .arg(client)
                         .arg(nom));
    }
    void supplier(int proveidor, const QString& nom) {
        exec(gest(), QStringLiteral("insert into Proveidors (proveidor, nom) values (%1, '%2')")
                         .arg(proveidor)
                         .arg(nom));
    }
    void sale(int ordre) {
        exec(frasOut(),
             QStringLiteral("insert into FrasOut (Ordre, data, Client, NomClient, TOTAL, "
                            "Descripcio) values (%1, '2026-01-10', 1, 'Bar Centre', 121000, "
                            "'F-%1')")
                 .arg(ordre));
    }
    void purchase(int ordre) {
        exec(frasIn(),
             QStringLiteral("insert into FrasIN (Ordre, data, Proveidor, NomProveidor, TOTAL, "
                            "Periode) values (%1, '2026-01-12', 1, 'Olis del Camp', 121000, '1T')")
                 .arg(ordre));
    }
    void account(const QString& table, const QString& nom) {
        exec(comptes(), QStringLiteral("insert into %1 (Grup, NomGrup, NomCompte, Tipus) "
                                       "values (600, 'Grupo', '%2', 'X')")
                            .arg(table, nom));
    }
    void receipt() {
        exec(cartera(),
             QStringLiteral("insert into cartera (data, cliente, In_Out, Ejercicio, Factura, "
                            "Total, Pendiente) values ('2026-01-10', 1, 'OUT', '2026', 'F-1', "
                            "121000, 121000)"));
    }

    // Every row of the tables an import touches, by table.
    QStringList snapshot() const {
        const std::pair<QString, const char*> tables[] = {
            {gest(), "Clients"},  {gest(), "Proveidors"},        {comptes(), "Compres"},
            {comptes(), "Otras"}, {frasOut(), "FrasOut"},        {frasIn(), "FrasIN"},
            {supl(), "Suplidos"}, {tesorer(), "entidades"},      {cartera(), "cartera"},
            {fact(), "detalle"},  {fact(), "comercial_clientes"}};
        QStringList all;
        for (const auto& [path, table] : tables)
            for (const QString& row :
                 rows(path,
                      QStringLiteral("select * from %1 order by rowid").arg(QLatin1String(table))))
                all << QString(QLatin1String(table) + QStringLiteral(": ") + row);
        return all;
    }

    QString info(int n) const { return QStringLiteral("I:") + Missatge(f.ctx, n); }
    QString stopBox(int n) const { return QStringLiteral("S:") + Missatge(f.ctx, n); }
    QString question(int n) const { return QStringLiteral("Q:") + Missatge(f.ctx, n); }

    QTemporaryDir out;
};

TEST_F(Interchange, ACustomerNameIsCutTo45ColumnsAndAFullOneFillsItsColumns) {
    QByteArray cut;
    const QString text46 = QStringLiteral("Cooperativa Agricola de la Ribera Alta del Ebr");
    ASSERT_EQ(text46.size(), 46);
    interchange::appendField(cut, text46, 45);
    EXPECT_EQ(cut, QByteArray("Cooperativa Agricola de la Ribera Alta del Eb"));

    const QString nom = QStringLiteral("Distribuciones y Suministros del Levante");
    ASSERT_EQ(nom.size(), 40);
    exec(gest(),
         QStringLiteral("insert into Clients (client, nom, direccio) values (1, '%1', 'C/ Major')")
             .arg(nom));
    const QString path = out.filePath("copia.dat");
    ASSERT_TRUE(exportTo(path));
    EXPECT_EQ(shown(), QStringList{info(32)});
    const QStringList lines = recordsOf(path, "5CLI");
    ASSERT_EQ(lines.size(), 1);
    // Columns 16 to 60: the name and five blanks; the address starts at 61.
    EXPECT_EQ(lines[0].mid(15, 45), nom + QStringLiteral("     "));
    EXPECT_EQ(lines[0].mid(60, 8), QStringLiteral("C/ Major"));
}

TEST_F(Interchange, TheExerciseSettingsNameIsRefusedInAnyCase) {
    for (const char* name : {"copia2026.DAT", "copia2026.dat"}) {
        dialogs.clear();
        const QString path = out.filePath(QLatin1String(name));
        EXPECT_FALSE(exportTo(path)) << name;
        EXPECT_EQ(shown(), QStringList{stopBox(6996)}) << name;
        EXPECT_FALSE(QFile::exists(path)) << name;
    }
    dialogs.clear();
    const QString other = out.filePath("copia2025.dat");
    EXPECT_TRUE(exportTo(other));
    EXPECT_EQ(shown(), QStringList{info(32)});
    EXPECT_TRUE(QFile::exists(other));
}

TEST_F(Interchange, APartialExportWithNothingChosenIsRefusedAndAnEmptyPathDoesNothing) {
    const QString path = out.filePath("copia.dat");
    interchange::ExportChoice none;
    none.whole = false;
    EXPECT_FALSE(exportTo(path, none));
    EXPECT_EQ(shown(), QStringList{stopBox(6891)});
    EXPECT_FALSE(QFile::exists(path));

    dialogs.clear();
    EXPECT_FALSE(exportTo(QString()));
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(Interchange, TheHeaderHasItsNineLinesInWindows1252WithCrLf) {
    f.ctx.EmpresaNom = QString::fromUtf8("Peñalba Comercial S.L.");
    const QString whole = out.filePath("todo.dat");
    ASSERT_TRUE(exportTo(whole));
    const QStringList expected{QStringLiteral("INF 05/03/2026   14:07:09"),
                               QString::fromUtf8("INF Peñalba Comercial S.L."),
                               QStringLiteral("INF ") + f.ctx.Directori,
                               QStringLiteral("INF B12345674"),
                               QStringLiteral("INF V5.0"),
                               QStringLiteral("CNT ALL"),
                               QStringLiteral("DAT ---"),
                               QStringLiteral("DAT ---"),
                               QStringLiteral("DAT ---")};
    const QByteArray bytes = bytesOf(whole);
    const QByteArray head =
        encodeWindows1252(expected.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
    EXPECT_EQ(bytes.left(head.size()), head);
    // "ñ" is the one byte 0xF1, not UTF-8.
    EXPECT_TRUE(
        bytes.contains(QByteArray("\r\nINF Pe\xF1"
                                  "alba Comercial S.L.\r\n")));
    EXPECT_FALSE(bytes.contains(QByteArray("\xC3\xB1")));
    // Every line ends in CR LF, the last one too.
    EXPECT_TRUE(bytes.endsWith("\r\n"));
    EXPECT_EQ(bytes.count('\n'), bytes.count(QByteArrayView("\r\n")));
    EXPECT_EQ(bytes.count('\r'), bytes.count(QByteArrayView("\r\n")));

    const QString part = out.filePath("parte.dat");
    interchange::ExportChoice choice;
    choice.whole = false;
    choice.customers = true;
    choice.chart = true;
    ASSERT_TRUE(exportTo(part, choice));
    const QStringList lines = linesOf(part);
    ASSERT_GE(lines.size(), 9);
    EXPECT_EQ(lines.mid(5, 4), (QStringList{"CNT PAR", "DAT CLI", "DAT ---", "DAT PLC"}));
    EXPECT_EQ(lines.mid(0, 5), expected.mid(0, 5));
}

TEST_F(Interchange, TheSaldoColumnsGoOnlyWithTreasury) {
    exec(gest(), "insert into Clients (client, nom, saldo) values (1, 'Bar Centre', 125000)");
    exec(gest(), "insert into Clients (client, nom, saldo) values (2, 'Forn Vell', 0)");

    f.ctx.Tesoreria = false;
    const QString without = out.filePath("sin.dat");
    ASSERT_TRUE(exportTo(without));
    QStringList lines = recordsOf(without, "5CLI");
    ASSERT_EQ(lines.size(), 2);
    for (const QString& line : lines) EXPECT_EQ(line.size(), 500) << line.toStdString();

    f.ctx.Tesoreria = true;
    const QString with = out.filePath("con.dat");
    ASSERT_TRUE(exportTo(with));
    lines = recordsOf(with, "5CLI");
    ASSERT_EQ(lines.size(), 2);
    for (const QString& line : lines) EXPECT_EQ(line.size(), 520) << line.toStdString();
    EXPECT_EQ(lines[0].mid(500), QStringLiteral("12,5").leftJustified(20));
}

TEST_F(Interchange, AMissingAccountTableIsPassedOverByExportAndPartialImport) {
    exec(comptes(), "drop table Otras");
    account("Compres", "Compra antigua");
    const QString path = out.filePath("copia.dat");
    ASSERT_TRUE(exportTo(path));
    EXPECT_EQ(shown(), QStringList{info(32)});
    QStringList tables;
    for (const QString& line : recordsOf(path, "5CTA"))
        tables << interchange::fieldText(line, 5, 26);
    EXPECT_TRUE(tables.contains(QStringLiteral("Compres")));
    EXPECT_FALSE(tables.contains(QStringLiteral("Otras"), Qt::CaseInsensitive));

    const QStringList others{"Amortitzacions", "Ingresos", "Inversions",
                             "Personal",       "Serveis",  "Tributs"};
    for (const QString& table : others) account(table, "Antigua de " + table);
    Header h;
    h.content = "PAR";
    h.plc = "PLC";
    const QString chart =
        writeFile("plan.dat", {accountLine("Compres", "6000001", "Compra nueva", "X")}, h);
    dialogs.clear();
    interchange::ImportChoice choice;
    choice.whole = false;
    choice.chart = true;
    choice.exportChart = true;
    ASSERT_TRUE(importFile(chart, choice)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(comptes(), "select NomCompte from Compres"), QStringList{"Compra nueva"});
    for (const QString& table : others)
        EXPECT_EQ(rows(comptes(), "select count(*) from " + table), QStringList{"0"})
            << table.toStdString();
    const QString copy = f.exercise + "_Comptes.bck";
    ASSERT_TRUE(QFile::exists(copy));
    EXPECT_EQ(rows(copy, "select NomCompte from Compres"), QStringList{"Compra antigua"});
    EXPECT_EQ(rows(copy, "select NomCompte from Serveis"), QStringList{"Antigua de Serveis"});
}

TEST_F(Interchange, LineBreaksOfADocumentLineTravelAsDollarSigns) {
    exec(fact(),
         "insert into detalle (Id, FrasOut, fecha, concepto) "
         "values (1, 1, '2026-01-10', 'uno' || char(13) || char(10) || 'dos')");
    exec(fact(),
         "insert into detalle (Id, FrasOut, fecha, concepto) values (2, 1, '2026-01-10', 'a$b')");
    const QString path = out.filePath("copia.dat");
    ASSERT_TRUE(exportTo(path));
    const QStringList lines = recordsOf(path, "5FTD");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(interchange::fieldText(lines[0], 46, 500), QStringLiteral("uno$dos"));
    EXPECT_EQ(interchange::fieldText(lines[1], 46, 500), QStringLiteral("a$b"));

    dialogs.clear();
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(fact(), "select Id, concepto from detalle order by Id"),
              (QStringList{"1|uno\r\ndos", "2|a\r\nb"}));
}

TEST_F(Interchange, TheHeaderIsShownWithItsCaptionsAndMarks) {
    const QStringList lines{"INF 05/03/2026   14:07:09",
                            "INF Peluqueria Sol",
                            "INF C:\\Pro\\Brolan\\x",
                            "INF B12345674",
                            "INF V5.0",
                            "CNT PAR",
                            "DAT CLI",
                            "DAT ---",
                            "DAT PLC"};
    const interchange::FileHeader h = interchange::parseHeader(f.ctx, lines);
    EXPECT_EQ(h.ListArchivo,
              (QStringList{Missatge(f.ctx, 6614) + "05/03/2026   14:07:09",
                           "EMPRESA: Peluqueria Sol", "ORIGEN EN: C:\\Pro\\Brolan\\x",
                           "NIF: B12345674", Missatge(f.ctx, 6615) + "V5.0"}));
    EXPECT_EQ(h.content, QStringLiteral("PAR"));
    EXPECT_FALSE(h.isWhole());
    EXPECT_TRUE(h.customers);
    EXPECT_FALSE(h.suppliers);
    EXPECT_TRUE(h.chart);
    EXPECT_EQ(h.version(), QStringLiteral("V5.0"));
    EXPECT_EQ(h.originWord(), QStringLiteral("Brolan"));

    // From a file: Windows-1252 is decoded, CR LF dropped.
    Header made;
    made.content = "PAR";
    made.pro = "PRO";
    made.origin = QString::fromUtf8("D:\\Compañía\\");
    const interchange::FileHeader read =
        interchange::readHeader(f.ctx, writeFile("cab.dat", {}, made));
    ASSERT_EQ(read.ListArchivo.size(), 5);
    EXPECT_EQ(read.ListArchivo[2], QString::fromUtf8("ORIGEN EN: D:\\Compañía\\"));
    EXPECT_EQ(read.version(), QStringLiteral("V5.0"));
    EXPECT_FALSE(read.customers);
    EXPECT_TRUE(read.suppliers);
    EXPECT_FALSE(read.chart);

    EXPECT_TRUE(
        interchange::readHeader(f.ctx, out.filePath("no_existe.dat")).ListArchivo.isEmpty());
}

TEST_F(Interchange, AnImportIsRefusedOnABadHeaderAnOldVersionOrANo) {
    customer(1, "Viejo");
    const QStringList before = snapshot();
    const QString good = writeFile("bueno.dat", {customerLine("57", "Nuevo")});

    // An empty header, given or read from an empty file: no question is asked.
    EXPECT_FALSE(interchange::Importa(f.ctx, dialogs, good, interchange::FileHeader{}, {}));
    EXPECT_EQ(shown(), QStringList{stopBox(6612)});
    dialogs.clear();
    const QString empty = out.filePath("vacio.dat");
    {
        QFile file(empty);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    EXPECT_FALSE(
        interchange::Importa(f.ctx, dialogs, empty, interchange::readHeader(f.ctx, empty), {}));
    EXPECT_EQ(shown(), QStringList{stopBox(6612)});

    dialogs.clear();
    Header old;
    old.version = "V4.0";
    const QString v4 = writeFile("v4.dat", {customerLine("57", "Nuevo")}, old);
    EXPECT_FALSE(interchange::Importa(f.ctx, dialogs, v4, interchange::readHeader(f.ctx, v4), {}));
    EXPECT_EQ(shown(), QStringList{stopBox(6613)});
    EXPECT_EQ(snapshot(), before);

    dialogs.clear();
    dialogs.setNextAnswer(Dialogs::Answer::No);
    EXPECT_FALSE(
        interchange::Importa(f.ctx, dialogs, good, interchange::readHeader(f.ctx, good), {}));
    EXPECT_EQ(shown(), QStringList{question(6890)});
    EXPECT_EQ(snapshot(), before);
    EXPECT_FALSE(QFile::exists(f.exercise + "_gest.bck"));
}

TEST_F(Interchange, ASelectionWithoutBoxesIsRefusedReadingTheExportChartBox) {
    customer(1, "Viejo");
    account("Compres", "Compra antigua");
    const QStringList before = snapshot();
    Header h;
    h.content = "PAR";
    h.cli = "CLI";
    h.plc = "PLC";
    const QString path = writeFile(
        "parte.dat",
        {customerLine("57", "Nuevo"), accountLine("Compres", "6000001", "Compra nueva", "X")}, h);
    interchange::ImportChoice choice;
    choice.whole = false;
    EXPECT_FALSE(importFile(path, choice));
    EXPECT_EQ(shown(), (QStringList{question(6890), stopBox(6891)}));
    EXPECT_EQ(snapshot(), before);

    // The import tab's chart box alone does not do: the check reads the export tab's.
    dialogs.clear();
    choice.chart = true;
    choice.exportChart = false;
    EXPECT_FALSE(importFile(path, choice));
    EXPECT_EQ(shown(), (QStringList{question(6890), stopBox(6891)}));
    EXPECT_EQ(snapshot(), before);
    EXPECT_FALSE(QFile::exists(f.exercise + "_Comptes.bck"));
}

TEST_F(Interchange, AWholeImportKeepsCustomerNumbersAndAPartialOneGivesNewOnes) {
    // A selection of customers is added after the ones there are, with numbers of its own.
    customer(1, "Antiguo");
    customer(2, "Segundo");
    Header h;
    h.content = "PAR";
    h.cli = "CLI";
    const QString part =
        writeFile("parte.dat", {customerLine("57", "Nuevo A"), customerLine("58", "Nuevo B")}, h);
    interchange::ImportChoice choice;
    choice.whole = false;
    choice.customers = true;
    ASSERT_TRUE(importFile(part, choice)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(gest(), "select client, nom from Clients order by client"),
              (QStringList{"1|Antiguo", "2|Segundo", "3|Nuevo A", "4|Nuevo B"}));

    // A whole exercise brings its own numbers.
    dialogs.clear();
    const QString whole = writeFile("todo.dat", {customerLine("57", "Cliente 57")});
    ASSERT_TRUE(importFile(whole)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(gest(), "select client, nom from Clients"), QStringList{"57|Cliente 57"});
}

TEST_F(Interchange, ARepeatedSaleNumberIsMarkedWith77777Then66666) {
    const QString path = writeFile(
        "ventas.dat",
        {saleLine("123", "primera"), saleLine("123", "segunda"), saleLine("123", "tercera")});
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(frasOut(), "select Ordre, Descripcio from FrasOut order by rowid"),
              (QStringList{"123|primera", "77777123|segunda", "66666123|tercera"}));
}

TEST_F(Interchange, ImportedSalesTakeTheirRecordsOnlyWhenAskedInTheImportsTransaction) {
    const QString path = writeFile("ventas.dat", {customerLine("9", "Cliente 9"),
                                                  saleLine("20", "F-20"), saleLine("21", "F-21")});
    const QString records = f.company + verifactu::kRecordsFile;
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(verifactu::checkChain(records).records, 0) << "not asked: no records";

    interchange::ImportChoice choice;
    choice.recordInvoices = true;
    ASSERT_TRUE(importFile(path, choice)) << shown().join(u'\n').toStdString();
    QStringList numbers;
    verifactu::forEachRecord(records, [&](const verifactu::StoredRecord& r) {
        numbers << QString::number(r.ordre) + u'|' + r.numSerie + u'|' + r.emisor;
        return true;
    });
    EXPECT_EQ(numbers, (QStringList{"20|F-20|B12345674", "21|F-21|B12345674"}));
    EXPECT_FALSE(verifactu::checkChain(records).broken);

    // A fault of the records leaves the import undone, sales and all.
    exec(records,
         "create trigger fault before insert on Registros "
         "begin select raise(abort, 'disk full'); end");
    const QStringList before = snapshot();
    const QString other = writeFile("otras.dat", {saleLine("30", "F-30")});
    EXPECT_FALSE(importFile(other, choice));
    EXPECT_EQ(snapshot(), before);
}

TEST_F(Interchange, ARepeatedPurchaseNumberRefusesTheWholeImport) {
    customer(1, "Viejo");
    purchase(5);
    const QStringList before = snapshot();
    const QString path = writeFile(
        "compras.dat", {customerLine("9", "Nuevo"), purchaseLine("8"), purchaseLine("8")});
    EXPECT_FALSE(importFile(path));
    ASSERT_FALSE(dialogs.shown().empty());
    EXPECT_EQ(dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_EQ(rows(frasIn(), "select Ordre from FrasIN"), QStringList{"5"});
    EXPECT_EQ(rows(gest(), "select client, nom from Clients"), QStringList{"1|Viejo"});
    EXPECT_EQ(snapshot(), before);
}

TEST_F(Interchange, AFileOfTheSiblingProductReplacesTheCustomersOnly) {
    customer(1, "Viejo");
    supplier(1, "Olis del Camp");
    account("Compres", "Compra antigua");
    sale(3);
    purchase(4);
    const QStringList suppliers = rows(gest(), "select * from Proveidors");
    const QStringList accounts = rows(comptes(), "select * from Compres");
    const QStringList sales = rows(frasOut(), "select * from FrasOut");
    const QStringList purchases = rows(frasIn(), "select * from FrasIN");

    Header h;
    h.origin = "C:\\Pro\\Brolan\\";
    const QString path = writeFile("brolan.dat", {customerLine("7", "Cliente Brolan")}, h);
    ASSERT_EQ(interchange::readHeader(f.ctx, path).originWord(), QStringLiteral("Brolan"));
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(gest(), "select client, nom from Clients"), QStringList{"7|Cliente Brolan"});
    EXPECT_EQ(rows(gest(), "select * from Proveidors"), suppliers);
    EXPECT_EQ(rows(comptes(), "select * from Compres"), accounts);
    EXPECT_EQ(rows(frasOut(), "select * from FrasOut"), sales);
    EXPECT_EQ(rows(frasIn(), "select * from FrasIN"), purchases);
}

TEST_F(Interchange, AWholeImportLeavesSafetyCopiesOfTheFormerData) {
    customer(1, "Viejo");
    sale(3);
    const QString path =
        writeFile("todo.dat", {customerLine("10", "Nuevo"), saleLine("20", "nueva")});
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    const QString gestCopy = f.exercise + "_gest.bck";
    const QString salesCopy = f.exercise + "_FrasOUT.bck";
    ASSERT_TRUE(QFile::exists(gestCopy));
    ASSERT_TRUE(QFile::exists(salesCopy));
    EXPECT_EQ(rows(gestCopy, "select count(*) from Clients"), QStringList{"0"});
    EXPECT_EQ(rows(gest(), "select client, nom from Clients"), QStringList{"10|Nuevo"});
    EXPECT_EQ(rows(salesCopy, "select Ordre from FrasOut"), QStringList{"3"});
    EXPECT_EQ(rows(frasOut(), "select Ordre from FrasOut"), QStringList{"20"});
}

TEST_F(Interchange, ABadRecordNamesItsLineAndChangesNothing) {
    customer(1, "Viejo");
    sale(3);
    receipt();
    const QStringList before = snapshot();
    const QStringList clients = rows(gest(), "select * from Clients");
    const QStringList sales = rows(frasOut(), "select * from FrasOut");
    const QStringList receipts = rows(cartera(), "select * from cartera");

    // Lines 10 to 12 are good; line 13 has a day February lacks.
    const QByteArray goodReceipt = recordLine("5CAR", {{"Id", "1"},
                                                       {"Data", "10/01/2026"},
                                                       {"cliente", "10"},
                                                       {"In_Out", "OUT"},
                                                       {"Ejercicio", "2026"},
                                                       {"Factura", "F-20"},
                                                       {"Borrador", "n"}});
    const QString badDate =
        writeFile("fecha.dat", {customerLine("10", "Nuevo"), saleLine("20", "buena"), goodReceipt,
                                saleLine("21", "mala", "121", "31/02/2026")});
    EXPECT_FALSE(importFile(badDate));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_TRUE(dialogs.lastText().contains(QRegularExpression(QStringLiteral("\\b13\\b"))))
        << dialogs.lastText().toStdString();
    EXPECT_EQ(rows(gest(), "select * from Clients"), clients);
    EXPECT_EQ(rows(frasOut(), "select * from FrasOut"), sales);
    EXPECT_EQ(rows(cartera(), "select * from cartera"), receipts);
    EXPECT_EQ(snapshot(), before);

    // Line 11 has a total that is no amount.
    dialogs.clear();
    const QString badTotal =
        writeFile("total.dat", {customerLine("10", "Nuevo"), saleLine("20", "mala", "abc")});
    EXPECT_FALSE(importFile(badTotal));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown().back().kind, ScriptedDialogs::Shown::Kind::Stop);
    EXPECT_TRUE(dialogs.lastText().contains(QRegularExpression(QStringLiteral("\\b11\\b"))))
        << dialogs.lastText().toStdString();
    EXPECT_EQ(rows(gest(), "select * from Clients"), clients);
    EXPECT_EQ(rows(frasOut(), "select * from FrasOut"), sales);
    EXPECT_EQ(rows(cartera(), "select * from cartera"), receipts);
    EXPECT_EQ(snapshot(), before);
}

TEST_F(Interchange, AnAmountIsReadWithAPointOrAComma) {
    const QString path =
        writeFile("importes.dat", {saleLine("1", "punto", "12.5"), saleLine("2", "coma", "12,5")});
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(frasOut(), "select Ordre, TOTAL from FrasOut order by Ordre"),
              (QStringList{"1|125000", "2|125000"}));
}

TEST_F(Interchange, TheCustomerBankAccountIsReadFromColumn111) {
    const QString entidad = QStringLiteral("Caja Rural de la Comarca del Bajo Segura");
    const QString ccc = QStringLiteral("30580123451234567890");
    ASSERT_EQ(entidad.size(), 40);
    ASSERT_EQ(ccc.size(), 20);
    exec(fact(),
         QStringLiteral("insert into comercial_clientes (Id, Client, FormaPago, Entidad, ccc) "
                        "values (1, 57, 'Transferencia', '%1', '%2')")
             .arg(entidad, ccc));
    const QStringList before = rows(fact(), "select * from comercial_clientes");
    const QString path = out.filePath("copia.dat");
    ASSERT_TRUE(exportTo(path));
    const QStringList lines = recordsOf(path, "5FTC");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0].mid(70, 45), entidad.leftJustified(45));
    EXPECT_EQ(lines[0].mid(115, 25), ccc.leftJustified(25));
    dialogs.clear();
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(fact(), "select * from comercial_clientes"), before);

    // The reader's field starts five columns before the writer's.
    QByteArray line = recordLine("5FTC", {{"Id", "2"}, {"Client", "3"}, {"FormaPago", "Contado"}});
    put(line, 111, 5, "ABCDE");
    put(line, 116, 25, "FGHIJ");
    const auto r = interchange::RecordReader(false, false).read(decodeWindows1252(line));
    ASSERT_TRUE(r.has_value());
    ASSERT_NE(r->find("ccc"), nullptr);
    EXPECT_EQ(r->find("ccc")->text, QStringLiteral("ABCDEFGHIJ"));
}

TEST_F(Interchange, ASupplierWithholdingIsWrittenButNotReadBack) {
    exec(gest(),
         "insert into Proveidors (proveidor, nom, Retencio) values (4, 'Olis del Camp', -1)");
    const QString path = out.filePath("copia.dat");
    ASSERT_TRUE(exportTo(path));
    const QStringList lines = recordsOf(path, "5PRO");
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(interchange::fieldText(lines[0], 501, 20), QStringLiteral("True"));
    dialogs.clear();
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(gest(), "select proveidor, nom, Retencio from Proveidors"),
              QStringList{"4|Olis del Camp|0"});
}

TEST_F(Interchange, AnAccountWithoutKindComesBackAsDash) {
    const QString path =
        writeFile("plan.dat", {accountLine("Compres", "6000001", "Sin tipo", ""),
                               accountLine("Compres", "6000002", "Con tipo", "X")});
    ASSERT_TRUE(importFile(path)) << shown().join(u'\n').toStdString();
    EXPECT_EQ(rows(comptes(), "select Compte, NomCompte, Tipus from Compres order by Compte"),
              (QStringList{"6000001|Sin tipo|-", "6000002|Con tipo|X"}));
}

}  // namespace
