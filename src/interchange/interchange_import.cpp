#include "interchange_import.h"
#include "verifactu/record_chain.h"
#include "verifactu/record_file.h"

#include "context/dialogs.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "interchange_files.h"
#include "interchange_record.h"
#include "schema/creation.h"
#include "store/sql_text.h"

#include <QFile>
#include <QFileInfo>

#include <map>

namespace tallora::interchange {
namespace {

// A file made by the sibling product holds customers only: a whole import replaces them
// and leaves everything else.
const QString kSiblingOrigin = QStringLiteral("Brolan");
// A sale's number is changed at most this many times before the import gives up on it.
constexpr int kMaxRenumbering = 20;

// A plain copy of a database file, through a temporary file so that a fault never leaves
// half a copy in place of the former one.
void copyFile(const QString& from, const QString& to) {
    const QString temporary = to + QStringLiteral(".tmp");
    QFile::remove(temporary);
    if (!QFile::copy(from, temporary))
        throw ImportError(0, {}, QStringLiteral("the safety copy %1 could not be made").arg(to));
    QFile::remove(to);
    if (!QFile::rename(temporary, to)) {
        QFile::remove(temporary);
        throw ImportError(0, {}, QStringLiteral("the safety copy %1 could not be made").arg(to));
    }
}

void safetyCopy(const WorkingContext& ctx, const InterchangeFiles& files, const QString& database) {
    if (!files.has(database)) return;
    const Area area = areaOf(database);
    const QString name = u'_' + database.section(u'.', 0, 0) + QStringLiteral(".bck");
    copyFile(files.path(database, area), databaseFile(ctx, name, area));
}

// The copies Limpia_Tot leaves beside the files it wipes. gest.mdb is copied twice, the
// second time without its customers, which the first step has just deleted; here the
// customers are deleted from the second copy itself, the file being wiped later in the
// import's transaction.
void wholeSafetyCopies(const WorkingContext& ctx, const InterchangeFiles& files, bool siblingFile) {
    safetyCopy(ctx, files, schema::db::Gest);
    if (siblingFile) return;
    safetyCopy(ctx, files, schema::db::Gest);
    {
        store::Database copy =
            store::Database::open(databaseFile(ctx, QStringLiteral("_gest.bck"), Area::Exercise));
        copy.execute(QStringLiteral("delete from Clients"));
    }
    for (const QString& database :
         {schema::db::Comptes, schema::db::FrasOut, schema::db::FrasIn, schema::db::Supl,
          schema::db::Tesorer, schema::db::Cartera, schema::db::Fact})
        safetyCopy(ctx, files, database);
}

void deleteAll(InterchangeFiles& files, const QString& database, const QString& table) {
    if (files.hasTable(database, table))
        files.db().execute(QStringLiteral("delete from ") + files.tableRef(database, table));
}

void IMPORTA_LIMPIA_CUENTAS(InterchangeFiles& files) {
    for (const QString& table : interchangeAccountTables())
        deleteAll(files, schema::db::Comptes, table);
}

// The records of every sale the import wrote, in their order, in the import's transaction.
void recordImportedSales(const WorkingContext& ctx, InterchangeFiles& files) {
    const QString table = files.tableRef(schema::db::FrasOut, QStringLiteral("FrasOut"));
    std::vector<std::int64_t> numbers;
    auto st = files.db().prepare(QStringLiteral("select Ordre from %1 order by Ordre").arg(table));
    while (st.next()) numbers.push_back(st.int64(0));
    for (const std::int64_t ordre : numbers) verifactu::recordSale(ctx, files.db(), ordre, table);
}

void Limpia_Tot(InterchangeFiles& files, bool siblingFile) {
    deleteAll(files, schema::db::Gest, QStringLiteral("Clients"));
    if (siblingFile) return;
    deleteAll(files, schema::db::Gest, QStringLiteral("Proveidors"));
    IMPORTA_LIMPIA_CUENTAS(files);
    deleteAll(files, schema::db::FrasOut, QStringLiteral("FrasOut"));
    deleteAll(files, schema::db::FrasIn, QStringLiteral("FrasIN"));
    deleteAll(files, schema::db::Supl, QStringLiteral("Suplidos"));
    for (const char* table : {"entidades", "movimientos", "otros_movimientos"})
        deleteAll(files, schema::db::Tesorer, QString::fromLatin1(table));
    deleteAll(files, schema::db::Cartera, QStringLiteral("cartera"));
    for (const char* table :
         {"comercial_clientes", "detalle", "documentos", "Numeracion_Documentos"})
        deleteAll(files, schema::db::Fact, QString::fromLatin1(table));
}

// The record readers: one insert per record, prepared once per record, table and mode.
class Merger {
public:
    Merger(InterchangeFiles& files, const ImportChoice& choice, const RunReport& report)
        : files_(files), choice_(choice), report_(report) {}

    void insert(const ParsedRecord& r) {
        const QStringView key = r.layout->trimmedKey();
        const bool keep = keepsNumber(key);
        const RecordField* numberField = r.numberField();
        QString number = numberField ? numberField->text : QString();
        // The number a sale takes must be free in FrasOut.
        if (key == u"5OUT") number = freeSaleNumber(number);
        // A purchase keeps its number: a repeated one refuses the import.
        if (key == u"5IN" &&
            exists(purchaseExists_, schema::db::FrasIn, QStringLiteral("FrasIN"), number))
            throw ValueError(ValueError::Kind::RepeatedPurchase, number, QStringLiteral("Ordre"));
        store::Statement& st = statement(r, keep);
        int n = 0;
        for (const RecordField& f : r.fields) {
            if (&f != numberField)
                bindValue(st, ++n, f.value);
            else if (!keep)
                continue;
            else if (key == u"5OUT")
                bindValue(st, ++n, parseNumber(number));
            else
                bindValue(st, ++n, f.value);
        }
        st.execute();
        if (!keep) number = QString::number(files_.db().lastInsertId());
        if (report_.log) {
            const RecordField* text =
                r.layout->logText.isEmpty() ? nullptr : r.find(r.layout->logText);
            report_.log(r.layout->tag + number + u' ' + (text ? text->text : QString()));
        }
    }

private:
    bool keepsNumber(QStringView key) const {
        if (choice_.whole) return true;
        if (key == u"5CLI") return !choice_.customers;
        if (key == u"5PRO") return !choice_.suppliers;
        if (key == u"5CTA") return !choice_.chart;
        return true;
    }

    static std::int64_t parseNumber(const QString& number) {
        bool ok = false;
        const qlonglong n = number.toLongLong(&ok);
        if (!ok) throw ValueError(ValueError::Kind::WholeNumber, number, QStringLiteral("Ordre"));
        return n;
    }

    // True when `table` of `database` has a row of that Ordre.
    bool exists(std::optional<store::Statement>& query, const QString& database,
                const QString& table, const QString& number) {
        if (!query)
            query.emplace(files_.db().prepare(QStringLiteral("select Ordre from %1 where Ordre = ?")
                                                  .arg(files_.tableRef(database, table))));
        query->reset();
        query->bind(1, parseNumber(number.isEmpty() ? QStringLiteral("0") : number));
        return query->next();
    }

    // A repeated number takes "77777" before it, or, when it has one of the marks already,
    // "66666" in place of its first five digits; cut to eleven characters.
    QString freeSaleNumber(QString number) {
        for (int tries = 0;
             exists(saleExists_, schema::db::FrasOut, QStringLiteral("FrasOut"), number); ++tries) {
            if (tries == kMaxRenumbering)
                throw ValueError(ValueError::Kind::NoFreeNumber, number, QStringLiteral("Ordre"));
            const QString head = number.left(5);
            if (head == u"88888" || head == u"99999" || head == u"77777")
                number = QStringLiteral("66666") + number.mid(5);
            else
                number = QStringLiteral("77777") + number;
            number = number.left(11);
        }
        return number;
    }

    store::Statement& statement(const ParsedRecord& r, bool keep) {
        const std::pair<std::size_t, bool> id{r.shape, keep};
        auto it = inserts_.find(id);
        if (it != inserts_.end()) return it->second;
        if (!files_.hasTable(r.layout->database, r.table))
            throw ValueError(ValueError::Kind::MissingTable, r.table);
        QStringList columns;
        for (const RecordField& f : r.fields)
            if (keep || &f != r.numberField()) columns << store::quoteIdentifier(f.field->column);
        store::Statement st = files_.db().prepare(
            store::insertInto(files_.tableRef(r.layout->database, r.table), columns));
        return inserts_.emplace(id, std::move(st)).first->second;
    }

    InterchangeFiles& files_;
    const ImportChoice& choice_;
    const RunReport& report_;
    std::map<std::pair<std::size_t, bool>, store::Statement> inserts_;
    std::optional<store::Statement> saleExists_;
    std::optional<store::Statement> purchaseExists_;
};

// The data lines of the file, for the progress: every line after the header.
qint64 countLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return 0;
    qint64 lines = 0;
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(1 << 20);
        lines += chunk.count('\n');
    }
    return std::max<qint64>(0, lines - 9);
}

}  // namespace

ImportChoice presetFor(const FileHeader& header) {
    ImportChoice c;
    c.whole = header.isWhole();
    if (!c.whole) {
        c.customers = header.customers;
        c.suppliers = header.suppliers;
        c.chart = header.chart;
    }
    return c;
}

qint64 importInterchangeFile(const WorkingContext& ctx, const QString& path,
                             const FileHeader& header, const ImportChoice& choice,
                             const RunReport& report) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw ImportError(0, {}, file.errorString());
    const qint64 total = countLines(path);
    const bool sibling = header.originWord() == kSiblingOrigin;
    const bool partial = !choice.whole;
    qint64 lineNumber = 0;
    QString key;
    try {
        InterchangeFiles files(ctx);
        if (choice.whole)
            wholeSafetyCopies(ctx, files, sibling);
        else if (choice.chart)
            safetyCopy(ctx, files, schema::db::Comptes);
        const bool record = choice.whole && choice.recordInvoices &&
                            files.hasTable(schema::db::FrasOut, QStringLiteral("FrasOut")) &&
                            verifactu::attachRecords(ctx, files.db());
        store::Transaction transaction(files.db(), store::Transaction::Kind::Immediate);
        if (choice.whole)
            Limpia_Tot(files, sibling);
        else if (choice.chart)
            IMPORTA_LIMPIA_CUENTAS(files);
        Merger merger(files, choice, report);
        RecordReader reader(partial, ctx.Tesoreria);
        qint64 done = 0;
        if (report.progress) report.progress(0, total);
        while (!file.atEnd()) {
            const QString line = decodeLine(file.readLine());
            ++lineNumber;
            key = line.left(4);
            if (std::optional<ParsedRecord> r = reader.read(line)) merger.insert(*r);
            if (lineNumber > 9) ++done;
            if (report.progress) report.progress(done, total);
        }
        if (file.error() != QFileDevice::NoError)
            throw ImportError(lineNumber, {}, file.errorString());
        key.clear();
        lineNumber = 0;
        if (record) recordImportedSales(ctx, files);
        transaction.commit();
        return done;
    } catch (const ImportError&) {
        throw;
    } catch (const ValueError& e) {
        throw ImportError(lineNumber, key.trimmed(), reasonText(ctx, e));
    } catch (const std::exception& e) {
        throw ImportError(lineNumber, key.trimmed(), faultReason(e));
    }
}

QString importFailureText(const WorkingContext& ctx, const ImportError& e) {
    const QString reason = QString::fromUtf8(e.what());
    if (e.line() > 0)
        return fixedText(
            ctx,
            QStringLiteral("No se ha importado nada: la línea %1 del archivo (%2) no se puede "
                           "importar.\n%3\nLos datos del ejercicio están como antes.")
                .arg(e.line())
                .arg(e.key(), reason),
            QStringLiteral("No s'ha importat res: la línia %1 del fitxer (%2) no es pot "
                           "importar.\n%3\nLes dades de l'exercici estan com abans.")
                .arg(e.line())
                .arg(e.key(), reason));
    return fixedText(
        ctx,
        QStringLiteral("No se ha importado nada: %1\nLos datos del ejercicio están como antes.")
            .arg(reason),
        QStringLiteral("No s'ha importat res: %1\nLes dades de l'exercici estan com abans.")
            .arg(reason));
}

bool Importa(const WorkingContext& ctx, Dialogs& dialogs, const QString& path,
             const FileHeader& header, const ImportChoice& choice, const RunReport& report) {
    if (header.ListArchivo.isEmpty()) {
        dialogs.stop(Missatge(ctx, 6612));
        return false;
    }
    if (header.version() != QStringLiteral("V5.0")) {
        dialogs.stop(Missatge(ctx, 6613));
        return false;
    }
    if (dialogs.yesNo(Missatge(ctx, 6890)) != Dialogs::Answer::Yes) return false;
    // The third box looked at is the export tab's.
    if (!header.isWhole() && !choice.customers && !choice.suppliers && !choice.exportChart) {
        dialogs.stop(Missatge(ctx, 6891));
        return false;
    }
    if (!header.isWhole() && choice.whole) {
        dialogs.stop(
            fixedText(ctx,
                      QStringLiteral("El archivo sólo contiene datos seleccionados: no puede "
                                     "reemplazar todos los datos del ejercicio."),
                      QStringLiteral("El fitxer només conté dades seleccionades: no pot "
                                     "reemplaçar totes les dades de l'exercici.")));
        return false;
    }
    try {
        importInterchangeFile(ctx, path, header, choice, report);
    } catch (const ImportError& e) {
        dialogs.stop(importFailureText(ctx, e));
        return false;
    }
    if (report.log) report.log(Missatge(ctx, 6611));
    dialogs.information(Missatge(ctx, 6611));
    return true;
}

}  // namespace tallora::interchange
