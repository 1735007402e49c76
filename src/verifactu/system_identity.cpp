#include "system_identity.h"

namespace tallora::verifactu {

// The producer's name and tax number come from the build, so that a distributor who
// registers the program writes its own (TALLORA_PRODUCER_NAME, TALLORA_PRODUCER_NIF).
SystemIdentity programIdentity(const QString& installation) {
    SystemIdentity id;
    id.productorNombre = QStringLiteral(TALLORA_PRODUCER_NAME);
    id.productorNif = QStringLiteral(TALLORA_PRODUCER_NIF);
    id.nombreSistema = QStringLiteral("Tallora 5");
    id.idSistema = QStringLiteral("T5");
    id.version = QStringLiteral(TALLORA_VERSION);
    id.numeroInstalacion = installation;
    return id;
}

}  // namespace tallora::verifactu
