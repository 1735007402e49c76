#pragma once
// The commands of tallora5-cli. Each checks its own words first (throwing UsageError), then
// starts the session and runs the logic of the screens; it gives the exit code.
#include "cli.h"
#include "cli_options.h"
#include "session.h"

namespace tallora::cli {

// company_commands.cpp
int unitsCommand(Session& s, const CliOptions& o);
int companiesCommand(Session& s, const CliOptions& o);
int companyCreateCommand(Session& s, const CliOptions& o);
int companyChangeCommand(Session& s, const CliOptions& o);
int companyRemoveCommand(Session& s, const CliOptions& o);

// exercise_commands.cpp
int exercisesCommand(Session& s, const CliOptions& o);
int exerciseCreateCommand(Session& s, const CliOptions& o);
int exerciseRemoveCommand(Session& s, const CliOptions& o);
int exerciseOpenCommand(Session& s, const CliOptions& o);
int exerciseRatesCommand(Session& s, const CliOptions& o);

// month_commands.cpp
int monthsCommand(Session& s, const CliOptions& o);
int monthLockCommand(Session& s, const CliOptions& o);
int monthUnlockCommand(Session& s, const CliOptions& o);

// customer_commands.cpp
int customersCommand(Session& s, const CliOptions& o);
int customerAddCommand(Session& s, const CliOptions& o);
int customerChangeCommand(Session& s, const CliOptions& o);
int customerRemoveCommand(Session& s, const CliOptions& o);

// supplier_commands.cpp
int suppliersCommand(Session& s, const CliOptions& o);
int supplierAddCommand(Session& s, const CliOptions& o);
int supplierChangeCommand(Session& s, const CliOptions& o);
int supplierRemoveCommand(Session& s, const CliOptions& o);

// account_commands.cpp
int accountsCommand(Session& s, const CliOptions& o);
int accountAddCommand(Session& s, const CliOptions& o);
int accountChangeCommand(Session& s, const CliOptions& o);
int accountRemoveCommand(Session& s, const CliOptions& o);

// treasury_commands.cpp
int treasuryAccountsCommand(Session& s, const CliOptions& o);
int treasuryAccountAddCommand(Session& s, const CliOptions& o);
int treasuryAccountChangeCommand(Session& s, const CliOptions& o);
int treasuryAccountRemoveCommand(Session& s, const CliOptions& o);
int otherAccountsCommand(Session& s, const CliOptions& o);
int otherAccountAddCommand(Session& s, const CliOptions& o);
int otherAccountChangeCommand(Session& s, const CliOptions& o);
int otherAccountRemoveCommand(Session& s, const CliOptions& o);

// reference_commands.cpp
int referencesCommand(Session& s, const CliOptions& o);
int referenceAddCommand(Session& s, const CliOptions& o);
int referenceChangeCommand(Session& s, const CliOptions& o);
int referenceRemoveCommand(Session& s, const CliOptions& o);

// portfolio_commands.cpp
int portfolioCommand(Session& s, const CliOptions& o);
int collectionRunCommand(Session& s, const CliOptions& o);
int paymentRunCommand(Session& s, const CliOptions& o);
int sepaDebitCommand(Session& s, const CliOptions& o);
int sepaPartiesCommand(Session& s, const CliOptions& o);
int sepaTransferCommand(Session& s, const CliOptions& o);
int sepaRunsCommand(Session& s, const CliOptions& o);
int sepaSettingsCommand(Session& s, const CliOptions& o);
int sepaFileCommand(Session& s, const CliOptions& o);
int draftCommand(Session& s, const CliOptions& o);
int statementCommand(Session& s, const CliOptions& o);
int movementRemoveCommand(Session& s, const CliOptions& o);
int returnReceiptCommand(Session& s, const CliOptions& o);
int otherMovementAddCommand(Session& s, const CliOptions& o);
int otherMovementChangeCommand(Session& s, const CliOptions& o);
int otherMovementRemoveCommand(Session& s, const CliOptions& o);
int otherMovementsCommand(Session& s, const CliOptions& o);

// sale_commands.cpp
int postSaleCommand(Session& s, const CliOptions& o);
int postDocumentCommand(Session& s, const CliOptions& o);
int convertDocumentCommand(Session& s, const CliOptions& o);
int changeSaleCommand(Session& s, const CliOptions& o);

// purchase_commands.cpp
int postPurchaseCommand(Session& s, const CliOptions& o);
int changePurchaseCommand(Session& s, const CliOptions& o);
int purchasesCommand(Session& s, const CliOptions& o);
int purchaseRemoveCommand(Session& s, const CliOptions& o);

// provision_commands.cpp
int postProvisionCommand(Session& s, const CliOptions& o);
int postDisbursementCommand(Session& s, const CliOptions& o);
int changeProvisionCommand(Session& s, const CliOptions& o);
int provisionsCommand(Session& s, const CliOptions& o);
int provisionRemoveCommand(Session& s, const CliOptions& o);

// sale_inquiry_commands.cpp
int salesCommand(Session& s, const CliOptions& o);
int saleRemoveCommand(Session& s, const CliOptions& o);
int saleToPortfolioCommand(Session& s, const CliOptions& o);
// document_commands.cpp
int documentsCommand(Session& s, const CliOptions& o);
int documentRemoveCommand(Session& s, const CliOptions& o);
int printDocumentCommand(Session& s, const CliOptions& o);

// sample_commands.cpp
int sampleExerciseCommand(Session& s, const CliOptions& o);

// book_commands.cpp
int bookCommand(Session& s, const CliOptions& o);

// aeat_commands.cpp
int aeatBooksCommand(Session& s, const CliOptions& o);
int modelCommand(Session& s, const CliOptions& o);

// interchange_commands.cpp
int exportCommand(Session& s, const CliOptions& o);
int importCommand(Session& s, const CliOptions& o);

// maintenance_commands.cpp
int repairCommand(Session& s, const CliOptions& o);
int compactCommand(Session& s, const CliOptions& o);

// bank_commands.cpp
int n43ShowCommand(Session& s, const CliOptions& o);
int n43ImportCommand(Session& s, const CliOptions& o);

// verifactu_commands.cpp
int verifactuRecordsCommand(Session& s, const CliOptions& o);
int verifactuCheckCommand(Session& s, const CliOptions& o);
int verifactuXmlCommand(Session& s, const CliOptions& o);
int verifactuSendCommand(Session& s, const CliOptions& o);

}  // namespace tallora::cli
