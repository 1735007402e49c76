#pragma once
// A company with one exercise made in a temporary unit, and the schema of its databases
// written out line by line, for the schema tests.
#include "context/file_tree.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "store/database.h"
#include "store/schema_objects.h"

#include <QDir>
#include <QTemporaryDir>

#include <map>

namespace tallora::testing {

class ExerciseFixture {
public:
    ExerciseFixture() {
        ctx.Unitat = unit.path();
        company = companyDir(ctx.Unitat, "B1234567");
        exercise = company + "2026/";
        QDir().mkpath(exercise);
        ctx.Directori = exercise;
        ctx.Exercici = "2026";
        ctx.programDir = unit.filePath("program/");
        QDir().mkpath(ctx.programDir);
    }

    // "F<TAB>db<TAB>table<TAB>pos<TAB>field<TAB>type<TAB>size<TAB>flags<TAB>default" for each
    // field and "I<TAB>db<TAB>table<TAB>field" for each index, keyed by "db/table".
    static std::map<QString, QStringList> schemaOf(const QString& path, const QString& database) {
        std::map<QString, QStringList> out;
        store::Database d = store::Database::open(path);
        for (const QString& table : store::tableNames(d)) {
            QStringList& lines = out[database + u'/' + table];
            int pos = 0;
            for (const store::FieldDef& f : store::describeFields(d, table)) {
                QStringList flags;
                if (f.autoIncrement) flags << "auto";
                if (f.zeroLength) flags << "zero";
                lines << QStringList{"F", database, table, QString::number(++pos), f.name,
                                     store::typeName(f.type), f.size ? QString::number(f.size) : "",
                                     flags.join(u','), f.defaultSql}
                             .join(u'\t');
            }
            for (const store::IndexDef& i : store::describeIndexes(d, table))
                lines << QStringList{"I", database, table, i.field.toLower()}.join(u'\t');
        }
        return out;
    }

    // Row counts of every table of a database, keyed by table.
    static std::map<QString, int> rowCounts(const QString& path) {
        std::map<QString, int> counts;
        store::Database d = store::Database::open(path);
        for (const QString& table : store::tableNames(d)) {
            store::Statement st = d.prepare("select count(*) from " + store::quoteIdentifier(table));
            st.next();
            counts[table] = st.int32(0);
        }
        return counts;
    }

    QTemporaryDir unit;
    WorkingContext ctx;
    QString company;
    QString exercise;
};

}  // namespace tallora::testing
