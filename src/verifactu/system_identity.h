#pragma once
// SistemaInformatico: who made this invoicing system and which installation wrote a record.
// The same values make the declaration of conformity shown in the about screen.
#include <QString>

namespace tallora::verifactu {

struct SystemIdentity {
    QString productorNombre;
    QString productorNif;
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

}  // namespace tallora::verifactu
