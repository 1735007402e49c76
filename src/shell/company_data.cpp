#include "company_data.h"

#include "context/dialogs.h"
#include "context/file_tree.h"
#include "context/list_files.h"
#include "context/messages.h"
#include "context/working_context.h"
#include "exercises.h"
#include "schema/upgrades.h"

#include <QDir>
#include <QFileInfo>

namespace tallora::shell {
namespace {

// The key of the open company: its folder's name less ".EMP".
QString companyKey(const WorkingContext& ctx) {
    QString name = QDir(ctx.companyFolder()).dirName();
    if (name.endsWith(QStringLiteral(".EMP"), Qt::CaseInsensitive)) name.chop(4);
    return name;
}

// A text from the context's numbers, as the rate fields show it ("21", "5,2").
QString rateText(const WorkingContext& ctx, double rate) {
    QString text = rateSqlText(rate);
    if (ctx.Decimal == 44) text.replace(u'.', u',');
    return text;
}

}  // namespace

CompanyEdit currentCompany(const WorkingContext& ctx) {
    return {ctx.EmpresaNom, ctx.EmpresaDomicili, ctx.EmpresaPoblacio,
            ctx.EmpresaCP,  ctx.EmpresaNIF,      ctx.Tesoreria};
}

bool Graba_Empresa(WorkingContext& ctx, Dialogs& dialogs, const CompanyEdit& e) {
    const QString question = Missatge(ctx, 36) + QStringLiteral("\n\n") + e.nom + u'\n' +
                             e.domicili + u'\n' + e.cp + QStringLiteral(" - ") + e.poblacio +
                             u'\n' + QStringLiteral("NIF:  ") + e.nif + QStringLiteral("\n\n") +
                             Missatge(ctx, 37);
    if (dialogs.yesNo(question) != Dialogs::Answer::Yes) return false;
    const QString key = companyKey(ctx);
    const QString folder = ctx.companyFolder();
    const QString dat = findFileNoCase(folder, key + QStringLiteral(".Dat"));
    if (key.isEmpty() || !QFileInfo::exists(dat)) {
        dialogs.stop(Missatge(ctx, 6406));
        return false;
    }
    // Errors ignored, as the screen saves: each file is written whatever befell the one before.
    writeCompanyData(dat, {e.nom, e.domicili, e.poblacio, e.cp, e.nif});
    writeOptionFlag(ctx.companyFile(files::TesorerCfg), e.tesoreria);
    const bool treasuryOn = e.tesoreria && !ctx.Tesoreria;
    ctx.Tesoreria = e.tesoreria;
    if (treasuryOn) schema::Prepara_Tesoreria(ctx, &dialogs);

    Cambia_Nom_Llista(dialogs, ctx.Unitat, key, e.nom);

    ctx.EmpresaNom = e.nom;
    ctx.EmpresaDomicili = e.domicili;
    ctx.EmpresaPoblacio = e.poblacio;
    ctx.EmpresaCP = e.cp;
    ctx.EmpresaNIF = e.nif;
    dialogs.information(Missatge(ctx, 6405));
    return true;
}

ExerciseRates currentRates(const WorkingContext& ctx) {
    ExerciseRates r;
    for (int i = 0; i < 3; ++i) r.iva[i] = rateText(ctx, ctx.TipusIVA[i]);
    for (int i = 0; i < 3; ++i) r.re[i] = rateText(ctx, ctx.TipusRE[i]);
    for (int i = 0; i < 4; ++i) r.ivas[i] = rateText(ctx, ctx.TipusIVAs[i]);
    return r;
}

bool Graba_Tipus(WorkingContext& ctx, Dialogs& dialogs, const ExerciseRates& rates) {
    if (anyRateWrittenZero(rates.iva, rates.re, rates.ivas)) {
        dialogs.stop(Missatge(ctx, 6997));
        return false;
    }
    if (dialogs.yesNo(Missatge(ctx, 6990) + Missatge(ctx, 37)) != Dialogs::Answer::Yes)
        return false;
    ExerciseParams params;
    params.exercici = ctx.Exercici;
    params.moneda = ctx.Moneda;
    params.tipusLlibre = 1;  // always 1 here, whatever the book was
    params.iva = rates.iva;
    params.re = rates.re;
    params.modeExercici = ctx.ModeExercici;
    params.ivas = rates.ivas;
    QString error;
    const QString dat = findFileNoCase(ctx.companyFolder(), ctx.Exercici + QStringLiteral(".DAT"));
    if (!writeExerciseParams(dat, params, &error)) {
        dialogs.stop(error + QStringLiteral(": ") + dat);
        return false;
    }
    applyExerciseParams(ctx, params);
    dialogs.information(Missatge(ctx, 6405));
    return true;
}

}  // namespace tallora::shell
