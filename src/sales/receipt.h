#pragma once
// The receipt of a sale: the texts of the receipt frame on the sales screen (Mostra_Rebut),
// the stored query it prints from (Prepara_SelFras) and its print (Imprimeix_Rebut).
//
// recibo.rpt reads the row of SelFras in FrasOUT.mdb and four formulas:
//   nom, nif, dom   the company's name, tax number and address
//   pob             the company's postal code, "-", and its town
// all four empty when the paper carries its own header (DocsFactura false).
#include "context/fwd.h"
#include "report/report_helpers.h"
#include "report/report_job.h"

#include <QDate>
#include <QString>

#include <cstdint>
#include <optional>

namespace tallora::sales {

// The captions Mostra_Rebut puts on FRAME_recibos.
struct ReceiptFrameTexts {
    QString title;               // "RECIBO: " and the description
    QString lbl_rebut_client;    // number, two blanks, name
    QString lbl_rebut_domicili;  // direccio
    QString lbl_rebut_poblacio;  // poblacio
    QString lbl_rebut_nif;       // NIF
    QString lbl_rebut_data;      // "FECHA: " and dd/mm/yyyy
};

// The frame's texts for the customer named `customerName` (the text of ListClients), the
// description `txtdescripcio` ("-" for a number still to be given) and the entry's date.
// Nothing when gest.mdb has no customer of that name: the frame does not open.
// Throws store::StoreError when gest.mdb cannot be read.
std::optional<ReceiptFrameTexts> Mostra_Rebut(const WorkingContext& ctx,
                                              const QString& customerName,
                                              const QString& txtdescripcio, const QDate& date);

// Makes the stored query SelFras of FrasOUT.mdb give the sale `number` alone.
// Throws store::StoreError when FrasOUT.mdb cannot be opened or the query cannot be made.
void Prepara_SelFras(const WorkingContext& ctx, std::int32_t number);

// Prints the receipt of sale `number` on the printer, through `job` (the shell's) and
// `output`. Without a printer, message 6640 and nothing is printed (Cancelled).
// Throws store::StoreError when SelFras cannot be prepared.
report::ReportResult Imprimeix_Rebut(
    const WorkingContext& ctx, Dialogs& dialogs, report::ReportJob& job,
    report::ReportOutput* output, std::int32_t number,
    const report::PrintCapabilities& capabilities = report::systemPrintCapabilities());

}  // namespace tallora::sales
