#include "company_list.h"

#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "schema/creation.h"
#include "schema/maintenance.h"
#include "store/database.h"
#include "store/store_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <functional>

namespace tallora::shell {
namespace {

constexpr int kRowWidth = 52;

// The folder of company `nif8` as it is spelled on disk: older trees spell it freely.
QString companyFolderOnDisk(const QString& unit, const QString& nif8) {
    return withTrailingSlash(findFileNoCase(llibresDir(unit), nif8 + QStringLiteral(".EMP")));
}

// Whether a company is already kept under the first eight characters of `nif`.
bool companyExists(const QString& unit, const QString& nif) {
    const QString nif8 = nif8Of(nif);
    return QFileInfo::exists(findFileNoCase(companyFolderOnDisk(unit, nif8), nif8 + QStringLiteral(".dat")));
}

QString confirmationText(const WorkingContext& ctx, const NewCompany& c) {
    return Missatge(ctx, 36) + QStringLiteral("\n\n") + c.nom + u'\n' + c.domicili + u'\n' +
           c.cp + u' ' + c.poblacio + u'\n' + QStringLiteral("NIF:  ") + c.nif +
           QStringLiteral("\n\n") + Missatge(ctx, 37);
}

// The duplicate rule: each company already on the number puts one more "-" before it. The
// fifth is "----" + number; a sixth is refused. Gives false when the user or the limit
// stops the saving.
bool applyDuplicateRule(const WorkingContext& ctx, Dialogs& dialogs, const QString& unit,
                        QString& nif) {
    while (companyExists(unit, nif)) {
        if (nif.startsWith(QStringLiteral("----"))) {
            dialogs.information(Missatge(ctx, 38));
            return false;
        }
        const auto answer =
            dialogs.okCancel(Missatge(ctx, 36) + QStringLiteral("\n\n") + Missatge(ctx, 39));
        if (answer != Dialogs::Answer::Ok) return false;
        nif.prepend(u'-');
    }
    return true;
}

}  // namespace

QString companyRow(const CompanyEntry& entry) {
    const qsizetype blanks = std::max<qsizetype>(0, kRowWidth - entry.name.size() - entry.nif8.size());
    return entry.name + QString(blanks, u' ') + entry.nif8;
}

QString nif8OfRow(const QString& row) { return row.right(12).trimmed(); }

QStringList OMPLE_LLISTA_Empreses(const QString& unit) {
    QStringList rows;
    for (const auto& entry : readEmpresesLst(findFileNoCase(llibresDir(unit), files::EmpresesLst)))
        rows << companyRow(entry);
    return rows;
}

QString readUnitatCfg(const QString& programDir) {
    const QString path = findFileNoCase(withTrailingSlash(programDir), schema::db::Cfg);
    try {
        QDir().mkpath(programDir);
        schema::createTables(path, schema::db::Cfg, {QStringLiteral("unitat")});
        auto db = store::Database::open(path);
        auto st = db.prepare(QStringLiteral("select unitat from unitat"));
        QStringList rows;
        while (st.next()) rows << st.text(0);
        if (rows.size() == 1 && !rows.front().isEmpty()) return rows.front();
    } catch (const store::StoreError&) {
        // An unreadable cfg.mdb is as good as an empty one: the default unit serves.
    }
    return defaultUnit();
}

void clearUnitatCfg(const QString& programDir) {
    try {
        auto db = store::Database::open(findFileNoCase(withTrailingSlash(programDir), schema::db::Cfg));
        db.execute(QStringLiteral("delete from unitat"));
    } catch (const store::StoreError&) {
        // Errors ignored: the next start takes the default unit all the same.
    }
}

bool Verifica_Empresa(const WorkingContext& ctx, Dialogs& dialogs, const QString& unit,
                      NewCompany& company) {
    if (company.nif.isEmpty() || company.nif.size() < 8) {
        dialogs.beep();
        dialogs.stop(Missatge(ctx, 34));
        return false;
    }
    if (company.nom.isEmpty()) {
        dialogs.beep();
        dialogs.stop(Missatge(ctx, 35));
        return false;
    }
    if (dialogs.yesNo(confirmationText(ctx, company)) != Dialogs::Answer::Yes) return false;
    QString nif = company.nif;
    if (!applyDuplicateRule(ctx, dialogs, unit, nif)) return false;
    company.nif = nif;

    const QString nif8 = nif8Of(nif);
    const QString folder = companyDir(unit, nif8);
    QDir().mkpath(folder);
    const CompanyData data{company.nom, company.domicili, company.poblacio, company.cp, nif};
    const QString lst = findFileNoCase(llibresDir(unit), files::EmpresesLst);
    QString failed;
    QString error;
    if (!writeCompanyData(folder + nif8 + QStringLiteral(".Dat"), data, &error))
        failed = folder + nif8 + QStringLiteral(".Dat");
    else if (!writeOptionFlag(folder + files::TesorerCfg, company.tesoreria, &error))
        failed = folder + files::TesorerCfg;
    else if (!appendEmpresesLst(lst, CompanyEntry{company.nom, nif8}, &error))
        failed = lst;
    if (!failed.isEmpty()) {
        dialogs.stop(error + QStringLiteral(": ") + failed);
        return false;
    }
    return true;
}

bool Elimina_Empresa(const WorkingContext& ctx, Dialogs& dialogs, const QString& unit,
                     const QString& row) {
    if (row.isEmpty()) return false;
    const QString question = Missatge(ctx, 24) + Missatge(ctx, 25) + QStringLiteral("\n\n") +
                             QString(7, u' ') + row;
    if (dialogs.yesNo(question) != Dialogs::Answer::Yes) return false;
    const QString nif8 = nif8OfRow(row);
    // The folder as it is spelled on disk, for the check and the removal alike.
    const QString folder = companyFolderOnDisk(unit, nif8);
    if (!readExerciciLst(findFileNoCase(folder, files::ExerciciLst)).empty()) {
        dialogs.information(Missatge(ctx, 26) + Missatge(ctx, 27));
        return false;
    }
    schema::Esborra_Carpeta(folder);
    return Treu_de_Llista(dialogs, unit, nif8);
}

namespace {

// Empreses.Lst rewritten through its copy Empreses.cop, its companies as `change` leaves
// them. Nothing to do without the list; failures are shown through `dialogs`.
bool rewriteEmpresesLst(Dialogs& dialogs, const QString& unit,
                        const std::function<void(std::vector<CompanyEntry>&)>& change) {
    const QString dir = llibresDir(unit);
    const QString lst = findFileNoCase(dir, files::EmpresesLst);
    const QString cop = findFileNoCase(dir, files::EmpresesCop);
    QFile::remove(cop);
    if (!QFile::exists(lst)) return true;
    QFile source(lst);
    if (!source.copy(cop)) {
        dialogs.stop(source.errorString() + QStringLiteral(": ") + cop);
        return false;
    }
    std::vector<CompanyEntry> entries = readEmpresesLst(cop);
    change(entries);
    QString error;
    if (!writeEmpresesLst(lst, entries, &error)) {
        dialogs.stop(error + QStringLiteral(": ") + lst);
        return false;
    }
    return true;
}

}  // namespace

bool Treu_de_Llista(Dialogs& dialogs, const QString& unit, const QString& nif8) {
    if (nif8.isEmpty()) return false;
    return rewriteEmpresesLst(dialogs, unit, [&](std::vector<CompanyEntry>& entries) {
        std::erase_if(entries, [&](const CompanyEntry& e) { return e.nif8 == nif8; });
    });
}

bool Cambia_Nom_Llista(Dialogs& dialogs, const QString& unit, const QString& nif8,
                       const QString& name) {
    return rewriteEmpresesLst(dialogs, unit, [&](std::vector<CompanyEntry>& entries) {
        for (CompanyEntry& entry : entries)
            if (entry.nif8 == nif8) entry.name = name;
    });
}

bool Obre_Empresa(WorkingContext& ctx, Dialogs& dialogs, const QString& unit,
                  const QString& row) {
    if (row.isEmpty()) {
        dialogs.beep();
        return false;
    }
    const QString nif8 = nif8OfRow(row);
    const QString folder = companyFolderOnDisk(unit, nif8);
    const auto data = readCompanyData(findFileNoCase(folder, nif8 + QStringLiteral(".Dat")));
    if (!data) {
        dialogs.stop(Missatge(ctx, 6995));
        return false;
    }
    ctx.Unitat = unit;
    ctx.Directori = folder;
    ctx.EmpresaNom = data->nom;
    ctx.EmpresaDomicili = data->domicili;
    ctx.EmpresaPoblacio = data->poblacio;
    ctx.EmpresaCP = data->cp;
    ctx.EmpresaNIF = data->nif;
    const CompanyFlags flags = readCompanyFlags(folder);
    ctx.Tesoreria = flags.tesoreria;
    ctx.Facturacio = flags.facturacio;
    ctx.Intra = flags.intra;
    return true;
}

}  // namespace tallora::shell
