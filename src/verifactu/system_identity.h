#pragma once
// SistemaInformatico: who made this invoicing system and which installation wrote a record.
// The same values make the declaration of conformity shown in the about screen.
#include "context/fwd.h"

#include <QString>

namespace tallora::verifactu {

struct SystemIdentity {
    QString productorNombre;
    QString productorNif;
    QString productorDireccion;
    QString nombreSistema;  // at most 30 characters
    QString idSistema;      // at most 2 characters
    QString version;
    QString numeroInstalacion;  // at most 100 characters
    bool soloVerifactu = true;  // the program cannot work without sending its records
    bool multiOT = true;        // one installation may keep the books of several taxpayers
    bool indicadorMultiplesOT = true;
};

// This program's identity; `installation` is the number of the installation writing.
SystemIdentity programIdentity(const QString& installation);

// The declaration of conformity of the system (art. 13 of Real Decreto 1007/2023), shown in
// the program: name, identifier, version, components, the modes it can work in, the producer
// and the statement of compliance, in the user's language.
QString declarationOfConformity(const WorkingContext& ctx);

}  // namespace tallora::verifactu
