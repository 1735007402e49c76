#include "document_type.h"

namespace tallora::sales {

const DocTypeInfo& docInfo(DocType type) {
    static const std::array<DocTypeInfo, 5> infos{{
        {DocType::Factura, "FrasOut", "", "(Factura)", "modificar", 6906, 0, "OpFacturacionFactura",
         "invoice"},
        {DocType::Borrador, "Borrador", "BORRADOR", "(Factura Borrador)", "Bor-modificar", 6909,
         6791, "OpFacturacionBorrador", "draft"},
        {DocType::Presupuesto, "Presupuesto", "PRESUPUESTO", "(Presupuesto)", "Pre-modificar", 6908,
         6792, "OpFacturacionPresupuesto", "quote"},
        {DocType::Proforma, "Proforma", "PROFORMA", "(Factura Proforma)", "Pro-modificar", 6907, 0,
         "OpFacturacionProforma", "proforma"},
        {DocType::Albaran, "Albaran", "ALBARAN", "(Albaran)", "Alb-modificar", 7015, 7014,
         "OpFacturacionAlbaran", "delivery-note"},
    }};
    return infos[static_cast<std::size_t>(type)];
}

const std::array<DocType, 5>& allDocTypes() {
    static const std::array<DocType, 5> types{DocType::Factura, DocType::Borrador,
                                              DocType::Presupuesto, DocType::Proforma,
                                              DocType::Albaran};
    return types;
}

const std::array<DocType, 4>& otherDocTypes() {
    static const std::array<DocType, 4> types{DocType::Borrador, DocType::Proforma,
                                              DocType::Presupuesto, DocType::Albaran};
    return types;
}

std::optional<DocType> docTypeFrom(const QString& name) {
    const QString n = name.trimmed();
    if (n.isEmpty()) return DocType::Factura;
    for (DocType t : allDocTypes()) {
        const DocTypeInfo& info = docInfo(t);
        for (const QString& known : {info.column, info.printType, info.journalKind, info.word})
            if (!known.isEmpty() && n.compare(known, Qt::CaseInsensitive) == 0) return t;
    }
    if (n.compare(QStringLiteral("FACTURA"), Qt::CaseInsensitive) == 0) return DocType::Factura;
    return std::nullopt;
}

}  // namespace tallora::sales
