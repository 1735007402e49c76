#include "system_identity.h"

#include "context/messages.h"

#include <QStringList>

namespace tallora::verifactu {

// The producer's name and tax number come from the build, so that a distributor who
// registers the program writes its own (TALLORA_PRODUCER_NAME, TALLORA_PRODUCER_NIF,
// TALLORA_PRODUCER_ADDRESS, TALLORA_DECLARATION_PLACE, TALLORA_DECLARATION_DATE).
SystemIdentity programIdentity(const QString& installation) {
    SystemIdentity id;
    id.productorNombre = QStringLiteral(TALLORA_PRODUCER_NAME);
    id.productorNif = QStringLiteral(TALLORA_PRODUCER_NIF);
    id.productorDireccion = QStringLiteral(TALLORA_PRODUCER_ADDRESS);
    id.nombreSistema = QStringLiteral("Tallora 5");
    id.idSistema = QStringLiteral("T5");
    id.version = QStringLiteral(TALLORA_VERSION);
    id.numeroInstalacion = installation;
    return id;
}

QString declarationOfConformity(const WorkingContext& ctx) {
    const SystemIdentity id = programIdentity(QString());
    const auto t = [&](const char* es, const char* ca) { return fixedText(ctx, es, ca); };
    const QString yes = t("Sí", "Sí"), no = t("No", "No");
    QStringList lines;
    lines << t("DECLARACIÓN RESPONSABLE DEL SISTEMA INFORMÁTICO DE FACTURACIÓN",
               "DECLARACIÓ RESPONSABLE DEL SISTEMA INFORMÀTIC DE FACTURACIÓ")
          << QString() << t("Nombre del sistema: ", "Nom del sistema: ") + id.nombreSistema
          << t("Código identificador: ", "Codi identificador: ") + id.idSistema
          << t("Versión: ", "Versió: ") + id.version
          << t("Componentes: programa de escritorio (Qt 6, SQLite) que registra cada factura "
               "emitida y la envía a la AEAT; funciona en un ordenador personal con Linux",
               "Components: programa d'escriptori (Qt 6, SQLite) que registra cada factura "
               "emesa i l'envia a l'AEAT; funciona en un ordinador personal amb Linux")
          << t("Solo puede funcionar como VERI*FACTU: ", "Només pot funcionar com a VERI*FACTU: ") +
                 (id.soloVerifactu ? yes : no)
          << t("Permite llevar la facturación de varios obligados tributarios: ",
               "Permet portar la facturació de diversos obligats tributaris: ") +
                 (id.multiOT ? yes : no)
          << t("Tipos de firma: no se firman los registros, porque se remiten a la AEAT",
               "Tipus de signatura: no se signen els registres, perquè es trameten a l'AEAT")
          << t("Productor: ", "Productor: ") + id.productorNombre +
                 (id.productorNif.isEmpty() ? QString()
                                            : QStringLiteral(", NIF ") + id.productorNif)
          << t("Dirección: ", "Adreça: ") + id.productorDireccion << QString()
          << t("El productor declara que este sistema informático de facturación cumple lo "
               "dispuesto en el artículo 29.2.j) de la Ley 58/2003, General Tributaria, en el "
               "Reglamento aprobado por el Real Decreto 1007/2023 y en la Orden HAC/1177/2024.",
               "El productor declara que aquest sistema informàtic de facturació compleix el que "
               "disposa l'article 29.2.j) de la Llei 58/2003, General Tributària, el Reglament "
               "aprovat pel Reial Decret 1007/2023 i l'Ordre HAC/1177/2024.")
          << QStringLiteral(TALLORA_DECLARATION_PLACE) + QStringLiteral(", ") +
                 QStringLiteral(TALLORA_DECLARATION_DATE);
    return lines.join(u'\n');
}

}  // namespace tallora::verifactu
