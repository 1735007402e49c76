#include "interchange_layout.h"

#include "schema/creation.h"

namespace tallora::interchange {
namespace {

using R = FieldRole;

// Fields of equal width one after another: (prefix1, prefix2 ...) from `from`.
void series(std::vector<FieldLayout>& fields, const QString& prefix, int count, int from,
            int width) {
    for (int i = 1; i <= count; ++i)
        fields.push_back({prefix + QString::number(i), from + (i - 1) * width, width});
}

RecordLayout customers() {
    return {"5CLI",
            "CLI: ",
            schema::db::Gest,
            Area::Exercise,
            "Clients",
            "client",
            {{"client", 5, 11},
             {"nom", 16, 45},
             {"direccio", 61, 55},
             {"poblacio", 116, 30},
             {"telefon", 146, 13},
             {"RE", 159, 12, R::ReFlag},
             {"NIF", 171, 17},
             {"fax", 188, 13},
             {"email", 201, 105},
             {"web", 306, 105},
             {"cp", 411, 10},
             {"provincia", 421, 80},
             {"saldo", 501, 20, R::TreasuryOnly}},
            "nom"};
}

RecordLayout suppliers() {
    return {"5PRO",
            "PRO: ",
            schema::db::Gest,
            Area::Exercise,
            "Proveidors",
            "proveidor",
            {{"proveidor", 5, 11},
             {"nom", 16, 45},
             {"direccio", 61, 55},
             {"poblacio", 116, 30},
             {"telefon", 146, 25},
             {"NIF", 171, 17},
             {"fax", 188, 13},
             {"email", 201, 105},
             {"web", 306, 105},
             {"cp", 411, 10},
             {"provincia", 421, 80},
             {"Retencio", 501, 20, R::WrittenOnly},
             {"saldo", 521, 20, R::TreasuryOnly}},
            "nom"};
}

RecordLayout accounts() {
    return {"5CTA",
            "CTA: ",
            schema::db::Comptes,
            Area::Exercise,
            QString(),
            "Compte",
            {{QString(), 5, 26, R::TableName},
             {"Grup", 31, 10},
             {"NomGrup", 41, 50},
             {"Compte", 91, 10},
             {"NomCompte", 101, 50},
             {"Debe", 151, 15},
             {"Haber", 166, 15},
             {"Saldo", 181, 15},
             {"Tipus", 196, 50}},
            "NomCompte"};
}

RecordLayout sales() {
    std::vector<FieldLayout> f{
        {"Ordre", 5, 11}, {"Data", 16, 15}, {"Client", 31, 10}, {"NomClient", 41, 50}};
    series(f, "Base", 3, 91, 15);
    series(f, "Iva", 3, 136, 15);
    series(f, "RE", 3, 181, 15);
    f.insert(f.end(), {{"TOTAL", 226, 15},
                       {"Venciment", 241, 15},
                       {"Descripcio", 256, 50},
                       {"en reserva", 306, 10, R::Reserved},
                       {"Grup", 316, 10},
                       {"NomGrup", 326, 50},
                       {"Compte", 376, 10},
                       {"NomCompte", 386, 50},
                       {"BaseIRPF", 436, 15},
                       {"TipusIRPF", 451, 10},
                       {"Retencio", 461, 15}});
    series(f, "TIva", 3, 476, 10);
    series(f, "TRE", 3, 506, 10);
    f.insert(f.end(), {{"Marca", 536, 10}, {"Cobrada", 546, 10}, {"Clasificacion", 556, 55}});
    return {"5OUT",  "VEN: ", schema::db::FrasOut, Area::Exercise, "FrasOut",
            "Ordre", f,       "NomClient"};
}

RecordLayout purchases() {
    std::vector<FieldLayout> f{
        {"Ordre", 5, 11}, {"Data", 16, 15}, {"proveidor", 31, 10}, {"nomproveidor", 41, 50}};
    series(f, "Base", 4, 91, 15);
    series(f, "Iva", 4, 151, 15);
    series(f, "TipusIva", 4, 211, 10);
    f.insert(f.end(), {{"TOTAL", 251, 15},
                       {"Descripcio", 266, 30},
                       {"en reserva", 296, 25, R::Reserved},
                       {"NumIva", 321, 10, R::WrittenOnly},
                       {"Grup", 331, 10},
                       {"NomGrup", 341, 50},
                       {"Compte", 391, 10},
                       {"NomCompte", 401, 50},
                       {"BaseIRPF", 451, 15},
                       {"TipusIRPF", 466, 10},
                       {"Retencio", 476, 15},
                       {"Exempta", 491, 15},
                       {"Periode", 506, 5},
                       {"Marca", 511, 10},
                       {"Pagada", 521, 10},
                       {"Venciment", 531, 15},
                       {"Protegit", 546, 15},
                       {"Clasificacion", 561, 55}});
    return {"5IN ",  "REC: ", schema::db::FrasIn, Area::Exercise, "FrasIN",
            "Ordre", f,       "nomproveidor"};
}

RecordLayout provisions() {
    return {"5SUP",
            "SUP: ",
            schema::db::Supl,
            Area::Exercise,
            "Suplidos",
            "Ordre",
            {{"Ordre", 5, 11},
             {"Data", 16, 15},
             {"proveidor", 31, 10},
             {"nomproveidor", 41, 50},
             {"TOTAL", 91, 15},
             {"Descripcio", 106, 30},
             {"Periode", 136, 5, R::WrittenOnly},
             {"Tipus", 141, 5},
             {"nomTipus", 146, 15},
             {"Marca", 161, 15},
             {"Protegit", 176, 15}},
            "nomproveidor"};
}

RecordLayout treasuryAccounts() {
    return {"5TSE",
            "TSE: ",
            schema::db::Tesorer,
            Area::Exercise,
            "entidades",
            "Id",
            {{"Id", 5, 11},
             {"Grup", 16, 10},
             {"entidad", 26, 45},
             {"Debe", 71, 15},
             {"Haber", 86, 15},
             {"Saldo", 101, 15},
             {"ccc", 116, 25}},
            "entidad"};
}

RecordLayout movements() {
    return {"5TSM",
            "TSM: ",
            schema::db::Tesorer,
            Area::Exercise,
            "movimientos",
            "Id",
            {{"Id", 5, 11},
             {"data", 16, 20},
             {"entidad", 36, 10},
             {"cliente", 46, 10},
             {"proveedor", 56, 10},
             {"cuenta", 66, 10},
             {"FrasIn", 76, 10},
             {"FrasOut", 86, 10},
             {"Supl", 96, 10},
             {"Otros", 106, 10},
             {"concepto", 116, 45},
             {"D", 161, 15},
             {"H", 176, 15}},
            "concepto"};
}

RecordLayout otherMovements() {
    return {"5TSO",
            "TSO: ",
            schema::db::Tesorer,
            Area::Exercise,
            "otros_movimientos",
            "Id",
            {{"Id", 5, 11},
             {"data", 16, 20},
             {"cta_sale_tesoreria", 36, 15},
             {"cta_sale_otra", 51, 15},
             {"cta_entra_tesoreria", 66, 15},
             {"cta_entra_otra", 81, 15},
             {"asiento", 96, 15},
             {"concepto", 111, 45},
             {"Importe", 156, 20}},
            "concepto"};
}

RecordLayout receipts() {
    return {"5CAR",
            "CAR: ",
            schema::db::Cartera,
            Area::Company,
            "cartera",
            "Id",
            {{"Id", 5, 11},
             {"Data", 16, 15},
             {"cliente", 31, 10},
             {"proveedor", 41, 10},
             {"apunte", 51, 10},
             {"In_Out", 61, 10},
             {"Ejercicio", 71, 10},
             {"Factura", 81, 45},
             {"Total", 126, 15},
             {"Pendiente", 141, 15},
             {"FrasIn", 156, 15},
             {"FrasOut", 171, 15},
             {"Temporal", 186, 15},
             {"Borrador", 201, 15}},
            "Factura"};
}

RecordLayout commercialData() {
    // The reader takes ccc from column 111, five columns into Entidad: its old step is kept.
    return {"5FTC",
            "FTC: ",
            schema::db::Fact,
            Area::Company,
            "comercial_clientes",
            "Id",
            {{"Id", 5, 11},
             {"Client", 16, 10},
             {"FormaPago", 26, 45},
             {"Entidad", 71, 45},
             {"ccc", 116, 25, R::Plain, 111}},
            "FormaPago"};
}

RecordLayout documentLines() {
    return {"5FTD",
            "FTD: ",
            schema::db::Fact,
            Area::Company,
            "detalle",
            "Id",
            {{"Id", 5, 11},
             {"FrasOut", 16, 10},
             {"fecha", 26, 20},
             {"concepto", 46, 500, R::LineBreaks},
             {"unidades", 546, 15},
             {"pvp", 561, 15},
             {"dto", 576, 15},
             {"precio_neto", 591, 15},
             {"importe", 606, 15},
             {"iva", 621, 15},
             {"Client", 636, 15},
             {"Presupuesto", 651, 20},
             {"Proforma", 671, 20},
             {"Albaran", 691, 20},
             {"Ejercicio", 711, 10},
             {"Borrador", 721, 20}},
            "concepto"};
}

RecordLayout documents() {
    return {"5FTM",
            "FTM: ",
            schema::db::Fact,
            Area::Company,
            "documentos",
            "Id",
            {{"Id", 5, 11},
             {"FrasOut", 16, 15},
             {"Client", 31, 15},
             {"Presupuesto", 46, 20},
             {"Proforma", 66, 20},
             {"Albaran", 86, 20},
             {"fecha", 106, 20},
             {"Vencimiento", 126, 20},
             {"FormaPago", 146, 45},
             {"Entidad", 191, 45},
             {"ccc", 236, 25},
             {"Ejercicio", 261, 10},
             {"Temp", 271, 10},
             {"Borrador", 281, 15},
             {"Compte", 296, 15},
             {"NomCompte", 311, 45},
             {"BaseIRPF", 356, 15},
             {"TipusIRPF", 371, 15},
             {"Retencio", 386, 15}},
            "Client"};
}

RecordLayout numbering() {
    return {"5FTN",
            "FTN: ",
            schema::db::Fact,
            Area::Company,
            "Numeracion_Documentos",
            "Id",
            {{"Id", 5, 11},
             {"FrasOut", 16, 15},
             {"Presupuesto", 31, 15},
             {"Proforma", 46, 15},
             {"Albaran", 61, 15},
             {"Ejercicio", 76, 15},
             {"Borrador", 91, 15}},
            "Ejercicio"};
}

}  // namespace

const FieldLayout* RecordLayout::field(const QString& column) const {
    for (const FieldLayout& f : fields)
        if (f.column.compare(column, Qt::CaseInsensitive) == 0) return &f;
    return nullptr;
}

int RecordLayout::lineLength(bool treasury) const {
    int end = 5;
    for (const FieldLayout& f : fields)
        if (f.role != FieldRole::TreasuryOnly || treasury) end = std::max(end, f.from + f.width);
    return end - 1;
}

const std::vector<RecordLayout>& recordLayouts() {
    static const std::vector<RecordLayout> layouts{
        customers(),      suppliers(),        accounts(),  sales(),          purchases(),
        provisions(),     treasuryAccounts(), movements(), otherMovements(), receipts(),
        commercialData(), documentLines(),    documents(), numbering()};
    return layouts;
}

const RecordLayout* layoutFor(QStringView trimmedKey) {
    for (const RecordLayout& r : recordLayouts())
        if (r.trimmedKey() == trimmedKey) return &r;
    return nullptr;
}

const QStringList& interchangeAccountTables() {
    static const QStringList tables{"Amortitzacions", "Compres", "Ingresos", "Inversions",
                                    "Personal",       "Serveis", "Tributs",  "Otras"};
    return tables;
}

}  // namespace tallora::interchange
