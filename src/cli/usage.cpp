#include "usage.h"

namespace tallora::cli {

QString usageText() {
    return QStringLiteral(R"(Usage: tallora5-cli [OPTIONS] COMMAND [ARGUMENTS] [OPTIONS]

Works on the companies and exercises of a working unit with the same rules as the
program's screens, printing the program's own messages. It never asks: every question
the screens ask is answered Yes only when --yes is given; otherwise it is shown, taken
as No, and nothing is done.

Global options (before or after the command):
  --unit DIR          the working unit (default: the unit the program starts on)
  --program-dir DIR   the writable program folder (default: ~/.config/tallora5/)
  --yes               answer Yes (or OK) to every question
  --help, help        show this text

Commands (NIF8 is the company key that "companies" shows):
  units               the available units, one a line, the default first
  companies           one line a company: NIF8, a tab, the name
  company-create --name N [--address A] [--town T] [--postal-code CP] --nif NIF [--treasury]
                      saves a new company and prints the tax number it was saved under.
                      A tax number already kept gets a "-" before it (asks, needs --yes),
                      at most five companies on one number. --treasury turns treasury
                      control on. The name has at most 40 characters; the tax number
                      at least 8 characters, only digits, letters and "-".
  company-change NIF8 YYYY [--name N] [--address A] [--town T] [--postal-code CP]
                  [--nif NIF] [--treasury | --no-treasury]
                      changes the data of a company, its exercise YYYY open (asks, needs
                      --yes); what is not given stays. A new tax number keeps the folder
                      and the key NIF8. --treasury or --no-treasury switch treasury control.
  company-remove NIF8 removes a company without exercises (asks, needs --yes)
  exercises NIF8      one line an exercise of the company
  exercise-create NIF8 --year YYYY [--kind FACTURES|TICKETS] [--currency Euros]
                  [--iva1 R --iva2 R --iva3 R --re1 R --re2 R --re3 R
                   --ivas1 R --ivas2 R --ivas3 R --ivas4 R]
                      creates an exercise (asks, needs --yes), carrying customers,
                      suppliers, chart and treasury accounts over from the year before.
                      --kind TICKETS is a shop without breakdown of IVA. Rates are written
                      as in their fields ("21", "5,2"): --iva1..3 sales, --re1..3 recargo
                      de equivalencia, --ivas1..4 purchases; a rate "0" is refused.
                      Defaults: FACTURES, Euros, IVA 16 7 4, RE 4 1 0,5, purchases 16 7 4 4,5.
  exercise-remove NIF8 YYYY
                      removes an exercise and its files (asks, needs --yes)
  exercise-open NIF8 YYYY
                      opens an exercise as the program does (safety copy, upgrades of the
                      databases, month lock, treasury set-up) and prints its folder
  exercise-rates NIF8 YYYY [--iva1 R ... --ivas4 R]
                      changes the rates of an exercise (asks, needs --yes); rates not
                      given stay, a rate "0" is refused. Invoices keep the rates they have.
  months NIF8 YYYY    the twelve months of the exercise, locked or open
  month-lock NIF8 YYYY M [M...]
  month-unlock NIF8 YYYY M [M...]
                      locks or opens the months given (1 to 12) against new entries
  repair NIF8 YYYY    checks and rebuilds the databases of the exercise and its company
  compact NIF8 YYYY   compacts the databases of the exercise and its company
  export NIF8 YYYY FILE [--customers] [--suppliers] [--chart]
                      writes the exercise to an interchange file (Windows-1252, CR LF):
                      everything, or only the customers, suppliers or chart given; a
                      line per record is printed. FILE may not end in YYYY.dat.
  import NIF8 YYYY FILE [--whole [--record-invoices] | --customers --suppliers --chart]
                      reads an interchange file into the exercise (asks, needs --yes).
                      --whole replaces all the data of the exercise and of the company's
                      portfolio and billing; --customers, --suppliers add them with new
                      numbers and --chart replaces the chart. Without these the file's
                      header decides. All or nothing: a refused line leaves every file
                      as it was, and its number is printed. Safety copies (_gest.bck ...)
                      are made beside the files first. --record-invoices gives each sale of
                      a whole import its VERI*FACTU record, in the same transaction: only
                      for invoices no other installation has recorded.

Master files of an exercise. They work on an exercise as its screens find it: one that was
never opened since its creation (or since an option was turned on) is refused until
exercise-open has run once. Lists print one record a line, fields separated by tabs, in the
order of the screen's list; "-add" prints the number the new record got. A "-change" keeps
every field whose option is not given. Deletions ask, and need --yes. Amounts are typed
with "," or "." as decimal mark ("1250,5", "-30.25"), without thousands marks.
  customers NIF8 YYYY number, name, NIF, address, town, province, postal code, phone, fax,
                      e-mail, web, RE (yes/no), balance (with treasury), payment, bank and
                      CCC (with the billing module)
  customer-add NIF8 YYYY --name N [--address A] [--town T] [--province P]
                  [--postal-code CP] [--nif NIF] [--phone T] [--fax F] [--email E] [--web W]
                  [--re yes|no] [--balance AMOUNT] [--payment P] [--bank B] [--ccc CCC]
                  [--mandate REFERENCE --mandate-date DD/MM/YYYY]
                  [--mandate-recurrent yes|no]
  customer-change NIF8 YYYY NUMBER [the options of customer-add]
                      --nif takes digits and letters only; --balance needs treasury
                      control, --payment, --bank, --ccc and the mandate the billing module.
                      A new name must be free; a change spreads the name to the sales.
                      --ccc takes a CCC or an IBAN (a Spanish one is kept as its CCC).
                      The SEPA mandate (kept in the company's banco.mdb) needs its date;
                      an empty --mandate removes it; --mandate-recurrent yes when a first
                      collection has gone already.
  customer-remove NIF8 YYYY NUMBER
                      refused while the customer has sales, treasury entries or documents
  suppliers NIF8 YYYY number, name, NIF, address, town, province, postal code, phone, fax,
                      e-mail, web, balance (with treasury)
  supplier-add NIF8 YYYY --name N [--address A] [--town T] [--province P]
                  [--postal-code CP] [--nif NIF] [--phone T] [--fax F] [--email E] [--web W]
                  [--balance AMOUNT] [--iban IBAN] [--bic BIC]
  supplier-change NIF8 YYYY NUMBER [the options of supplier-add]
                      --iban (a CCC is taken as its IBAN) and --bic need treasury control:
                      the account SEPA transfers go to, refused when its check fails
  supplier-remove NIF8 YYYY NUMBER
                      refused while the supplier has purchases, treasury entries or receipts
  accounts NIF8 YYYY FAMILY
                      number, name, class of the accounts of a family. FAMILY is one of
                      Ingresos, Compres, Serveis, Tributs, Personal, Amortitzacions,
                      Inversions
  account-add NIF8 YYYY FAMILY --name N --class C
                      the name must be free in the whole chart; the class is the line of
                      the operating statement
  account-change NIF8 YYYY FAMILY NUMBER [--name N] [--class C]
                      also renames the account in the invoices that carry it
  account-remove NIF8 YYYY FAMILY NUMBER
                      refused while an invoice of the exercise carries the account
With treasury control only:
  treasury-accounts NIF8 YYYY
                      number, kind (cash or bank), name, CCC, opening balance
  treasury-account-add NIF8 YYYY --name N [--kind cash|bank] [--ccc CCC] [--balance AMOUNT]
                      --kind defaults to cash
  treasury-account-change NIF8 YYYY NUMBER [the options of treasury-account-add]
  treasury-account-remove NIF8 YYYY NUMBER
                      refused while a treasury movement uses the account
  other-accounts NIF8 YYYY
                      number, group, group name, name, opening balance, kind
  other-account-add NIF8 YYYY --name N [--group NUMBER] [--group-name G]
                  [--balance AMOUNT] [--kind asset|liability|none]
  other-account-change NIF8 YYYY NUMBER [the options of other-account-add]
  other-account-remove NIF8 YYYY NUMBER
                      refused while a treasury movement crosses the account
  portfolio NIF8 YYYY [--suppliers] [--party NUMBER] [--order date|due]
                      the receipts still to collect from the customers (or to pay to the
                      suppliers), of every exercise of the company, one a line: number,
                      party, date, due date, invoice, total, settled on account; --party
                      keeps one customer's (or supplier's), --order due orders by due date.
                      Then the two totals still due, over every party.
  collection-run NIF8 YYYY [RECEIPT[:AMOUNT]...] --account NUMBER [--date DD/MM/YYYY]
  payment-run NIF8 YYYY [RECEIPT[:AMOUNT]...] --account NUMBER [--date DD/MM/YYYY]
                      settles the draft of the collection (or payment) screen on the
                      treasury account NUMBER on --date (default today in the exercise):
                      the receipts named (numbers of "draft ... --open") go to the draft
                      first, each with all that is due or with AMOUNT settled on account,
                      and the whole draft becomes one movement a receipt, in one piece.
                      Prints movement, receipt, concept, amount and settled or partial.
  sepa-debit NIF8 YYYY [RECEIPT[:AMOUNT]...] --account NUMBER --out FILE
                  [--date DD/MM/YYYY] [--collection-date DD/MM/YYYY]
  sepa-transfer NIF8 YYYY [RECEIPT[:AMOUNT]...] --account NUMBER --out FILE
                  [--date DD/MM/YYYY] [--execution-date DD/MM/YYYY]
                      the run of collection-run (or payment-run), sent to the bank as a
                      SEPA file: a direct debit (pain.008) of the receipts whose customers
                      have a mandate and a valid account, or a transfer (pain.001) to the
                      suppliers with an IBAN, for the bank to execute on the collection
                      (execution) date, --date by default. The receipts that cannot go
                      are listed first and, with --yes, taken back to the open list;
                      without it nothing is written. The movements, the run's record and
                      FILE are written together or not at all. Prints the settlements,
                      then "remittance", its number, count, total and the file.
  sepa-runs NIF8 YYYY the runs sent as files: number, debit or transfer, date, bank's
                      date, format, count, total
  sepa-file NIF8 YYYY RUN FILE
                      writes the file of run RUN again, as it was sent
  sepa-parties NIF8 YYYY
                      the bank side of the parties: "customer", number, name, IBAN (or
                      the account as typed), mandate, date of signature, FRST or RCUR;
                      then "supplier", number, name, IBAN, BIC
  sepa-settings NIF8 YYYY [--suffix XXX] [--versions classic|current]
                      the creditor identifier's suffix (000 by default) and the file
                      versions (classic: pain.008.001.02 and pain.001.001.03; current:
                      .08 and .09); prints the creditor identifier and both versions
  draft NIF8 YYYY collections|payments [--empty] [--open]
                      the draft of a run screen and its total; --empty takes every
                      receipt back out of it first; --open lists the open receipts instead.
  statement NIF8 YYYY [ACCOUNT] [--from DD/MM/YYYY] [--to DD/MM/YYYY]
                      the movements of treasury account ACCOUNT (of all without it) with
                      the running balance: id, date, concept, counterpart, in, out,
                      balance; first the opening balance line. The dates cut lines, never
                      the balance.
  movement-remove NIF8 YYYY MOVEMENT
                      deletes a movement as the statement does (asks, needs --yes): an
                      invoice's every settlement with it, the invoice then offered back
                      to the portfolio; a provision's only the provision.
  return-receipt NIF8 YYYY MOVEMENT [--date DD/MM/YYYY]
                      the collected (or paid) receipt comes back unpaid (asks, needs
                      --yes): the contrary movement, the receipt in the portfolio again.
                      Prints the new movement.
  other-movement-add NIF8 YYYY --concept TEXT --amount AMOUNT [--date DD/MM/YYYY]
                  (--from-treasury N | --from-other N) (--to-treasury N | --to-other N)
                      money from one account to another: treasury accounts and other
                      accounts by the numbers of their lists. Prints the entry's number.
  other-movement-change NIF8 YYYY NUMBER [the options of other-movement-add]
  other-movement-remove NIF8 YYYY NUMBER
                      deletes the entry and its movements (asks, needs --yes)
  other-movements NIF8 YYYY [--from D] [--to D] [--operator OP --amount A] [--account N]
                      number, date, concept, amount, account in, account out; --account
                      keeps the entries of one other account.
Sales, as the sales screen enters them. Amounts as above; --day and --month are one or two
digits.
  post-sale NIF8 YYYY --day D [--month M] --customer NAME --account NAME --total AMOUNT
                  [--description TEXT] [--series /Abon|/Rect] [--rate R|otros]
                  [--irpf-base AMOUNT] [--irpf-percent P] [--irpf-amount AMOUNT]
                  [--base1 AMOUNT --base2 AMOUNT --base3 AMOUNT]
                  [--iva1 AMOUNT ... --iva3 AMOUNT] [--re1 AMOUNT ... --re3 AMOUNT]
                  [--treasury-account NAME] [--due DD/MM/YYYY]
                  [--classification intra|canarias] [--concept1 TEXT ... --concept5 TEXT]
                      posts a new sale and prints the journal of the screen, its line
                      "MODIFICAR" followed by the invoice number. The date is checked
                      against the month lock; without --month the only open month is
                      taken. Customer and sales account are names of their lists (any
                      case); in kind TICKETS there is no customer, rate, withholding or
                      amounts panel. The total is split by --rate, one of the exercise's
                      rates, "0" or "otros" (default: the first rate; with a base typed,
                      "otros"); a base typed takes its IVA and RE, a quota typed
                      overrides. --irpf-amount overrides base x percent. The description
                      defaults to "-", the invoice number; --series goes behind it.
                      --treasury-account names the account that collected it (treasury
                      control only); without it the sale waits in the portfolio, due on
                      --due (default today). --classification needs that option of the
                      company. The program's questions (same invoice, a difference taken
                      as exempt) need --yes; every refusal prints its message, exit 1.
  change-sale NIF8 YYYY NUMBER [the options of post-sale but --rate] [--pending]
                      changes a posted sale: only the fields given change, with no split
                      and no automatic quotas; a new customer recomputes quotas and
                      total from the bases, as the screen does. --pending leaves it to
                      collect again. A sale settled in a collection run keeps its
                      treasury rows and takes neither --treasury-account nor --pending.
  sales NIF8 YYYY [--customer NAME] [--account NAME] [--from DD/MM/YYYY] [--to DD/MM/YYYY]
                  [--operator =|<>|<=|>=] [--amount AMOUNT]
                  [--order id|date|account|customer|amount]
                      the sales inquiry: number, date, customer, account, invoice, total, one
                      a line; then the total and the count. The amount's commas become
                      points and nothing else changes.
  sale-remove NIF8 YYYY NUMBER
                      deletes a sale with its treasury movements and receipt (asks, needs
                      --yes); neither a collection nor the month lock stops it
  sale-to-portfolio NIF8 YYYY NUMBER
                      (treasury control only) the sale's movements go and a receipt of its
                      whole total waits in the portfolio again (asks, needs --yes)
Billing documents (billing module only). TYPE is invoice, draft, quote, proforma or
delivery-note.
  post-document NIF8 YYYY TYPE [the options of post-sale]
                  [--line "QTY|CONCEPT|PRICE|DTO|RATE" ...]
                  [--payment TEXT] [--bank-name TEXT] [--ccc TEXT]
                      saves a new document as the billing tab does: each --line is added
                      in order (discount and rate may be empty: 0), the bases, quotas and
                      total follow from the lines, the payment terms come from the
                      customer's commercial data unless given. Only an invoice is a sale
                      with its treasury rows; the others take the next number of their
                      type. post-sale takes --line too and is post-document invoice.
  convert-document NIF8 YYYY TYPE NUMBER TO-TYPE [the options of post-document]
                      opens the document and saves it as TO-TYPE: a quote, draft,
                      proforma or delivery note turned into an invoice becomes a new sale
                      and the source is gone; saved as its own type it keeps its number
                      and its lines are replaced; --line adds lines.
  documents NIF8 YYYY TYPE [--customer NAME] [--from DD/MM/YYYY] [--to DD/MM/YYYY]
                      the inquiry of quotes, drafts, proformas or delivery notes: Id,
                      date, customer, number, one a line, then the count. Dates left at
                      the exercise's limits add no condition, so other years' documents
                      show too.
  document-remove NIF8 YYYY TYPE NUMBER
                      deletes the document and its lines (asks, needs --yes); the counter
                      stays, so the number is not given again
  print-document NIF8 YYYY TYPE NUMBER --pdf FILE
                      prints the document with the company's template (f01.rpt unless
                      the billing settings name another) to a PDF file
Purchases, as the purchases screen enters them. Amounts as above.
  post-purchase NIF8 YYYY --group GROUP --day D [--month M] --supplier NAME --account NAME
                  --total AMOUNT [--description TEXT] [--series /Abon|/Rect]
                  [--rate R|otros] [--irpf-base AMOUNT] [--irpf-percent P]
                  [--base1 AMOUNT ... --base4 AMOUNT] [--iva1 AMOUNT ... --iva4 AMOUNT]
                  [--treasury-account NAME] [--due DD/MM/YYYY]
                  [--classification intra|canarias]
                      posts a new purchase or expense and prints the day log of the
                      screen, its line "MODIFICAR" followed by the number. GROUP is the
                      table of the expense group: Compres, Serveis, Tributs, Personal,
                      Amortitzacions or Inversions; the account is a name of that group
                      (any case), the supplier a name of the suppliers' list (any case);
                      both are stored in capitals, as the lists show them. The total and
                      the withholding (base x percent) are split by --rate, one of the four
                      purchase rates, "0" or "otros" (default: the first rate; with a base
                      typed, "otros"); the last of two equal rates takes the split. A base
                      typed takes its IVA, a quota typed overrides. A difference of one cent
                      is taken as exempt; a larger one is a question (--yes). In kind
                      TICKETS there is no rate nor IVA panel: the total and the withholding
                      are exempt. --treasury-account names the account that paid it
                      (treasury control only); without it the purchase waits in the
                      portfolio, due on --due (default today).
  change-purchase NIF8 YYYY NUMBER [the options of post-purchase but --rate] [--pending]
                      changes a posted purchase: only the fields given change, with no
                      split; its rates stay those it was posted with. --pending leaves it
                      to pay again. A purchase settled in a payment run keeps its money
                      rows and takes neither --treasury-account nor --pending.
  purchases NIF8 YYYY [--supplier NAME] [--account NAME] [--from DD/MM/YYYY]
                  [--to DD/MM/YYYY] [--operator =|<>|<=|>=] [--amount AMOUNT]
                  [--order id|date|account|supplier|amount]
                      the purchases inquiry: number, date, supplier, account, invoice,
                      total, one a line; then the total and the count. The amount's commas
                      become points and nothing else changes.
  purchase-remove NIF8 YYYY NUMBER
                      deletes a purchase with its treasury movements and receipt (--yes)
Provisions (money received from a customer) and disbursements (paid to a supplier on a
customer's behalf); with treasury control an account is required.
  post-provision NIF8 YYYY --day D [--month M] --customer NAME --total AMOUNT
                  [--description TEXT] [--treasury-account NAME]
  post-disbursement NIF8 YYYY --day D [--month M] --supplier NAME --total AMOUNT
                  [--description TEXT] [--treasury-account NAME]
                      post an entry and print its day log; the movement of a provision
                      brings the money in (D), a disbursement's takes it out (H).
  change-provision NIF8 YYYY NUMBER [--kind provision|disbursement] [--customer NAME]
                  [--supplier NAME] [the other options of post-provision]
                      changes an entry; its movement is written anew.
  provisions NIF8 YYYY [--party NAME] [--kind provision|disbursement] [--from DD/MM/YYYY]
                  [--to DD/MM/YYYY] [--operator =|<>|<=|>=] [--amount AMOUNT]
                  [--order date|kind|party|amount]
                      number, date, party, kind, description, total, one a line; then the
                      total and the count
  provision-remove NIF8 YYYY NUMBER
                      deletes an entry with its movement (--yes)
Sample data, for trying the program on a realistic volume:
  sample-exercise NIF8 YYYY --invoices N [--seed S]
                      fills an exercise (opened once, as the master files need) with
                      made-up customers, suppliers, accounts and N invoices over the whole
                      year, posted by the rules of the sales and purchases screens: about
                      55% sales, at the exercise's rates, with recargo de equivalencia,
                      IRPF withheld (professional services sold, professionals paid) and
                      credit notes ("/Abon"); purchases in the five expense groups and a
                      few investments. With treasury control about half are settled
                      through a treasury account, the rest wait in the portfolio. Records
                      of the sample's names already there are used as they are. The same
                      seed (a whole number, default 1) gives the same invoices. Refused
                      with the billing module, for a TICKETS exercise and while a month
                      is locked. Prints the counts of customers, suppliers, sales,
                      purchases, credit notes and settled invoices, tab-separated.
Books, as the books dialog launches them (--pdf FILE prints to a PDF file; --xlsx FILE and
--csv FILE save what the pages print as a spreadsheet: the title and period, the column
headings, the rows with amounts and dates as values, the groups' and the report's totals;
the CSV separated by ';' with the exercise's decimal mark; --text prints the book's rows,
tab-separated with the column names first, then a blank line and the footer summary, one
"name<TAB>value" a line):
  book NAME NIF8 YYYY [--from M] [--to M] [--series all|normal|abonos|rect|intra|canarias]
                  [--irpf] [--date DD/MM/YYYY] (--pdf|--xlsx|--csv FILE | --text)
                      NAME is sales, purchases (the general book), purchases-vat (only
                      what has a VAT number), investments, provisions or 347 (the
                      declaration of operations with third parties, the whole year). The
                      months run from --from to --to (1 to 12, by default the year); a
                      from-month after the to-month is refused before anything is
                      rebuilt. --irpf gives the withholding list by customer (sales) or by
                      supplier (purchases; it reads the journal as the last purchases book
                      left it). --date is the print date (default today).
  book ledger-customers|ledger-suppliers NIF8 YYYY [--party NUMBER] [--invoices]
                  [--date DD/MM/YYYY] (--pdf|--xlsx|--csv FILE | --text)
  book ledger-expenses|ledger-sales NIF8 YYYY [--date DD/MM/YYYY]
                  (--pdf|--xlsx|--csv FILE | --text)
                      the extracts: a customer's or supplier's account with its running
                      balance (one party with --party, else all; with treasury control it
                      is rebuilt from the opening balance, the invoices and the movements,
                      without it the last one built is printed), or with --invoices the
                      list of their invoices; every purchase by expense account; every sale
                      by income account. --text prints the rows, one a line.
  book operating-statement NIF8 YYYY [--from M] [--to M] [--level 1|2|3]
                  [--date DD/MM/YYYY] (--pdf|--xlsx|--csv FILE | --text)
                      the profit and loss of the months from --from to --to, month by
                      month: by account (level 1, the default), by type (2) or by group (3).
                      It first makes every purchase's exempt part the share of its total
                      that no base and no IVA explain.
  book trial-balance NIF8 YYYY [--date DD/MM/YYYY] (--pdf|--xlsx|--csv FILE | --text)
                      (treasury control only) the summary of balances: one line a large
                      group of accounts with its debit or credit balance, then the totals.
Bank statements (Norma 43, AEB cuaderno 43):
  n43-show FILE       reads and checks a statement (code page 850 or Latin-1): one
                      "account" line (number, name, from, to, opening and closing balance,
                      currency), then its movements: line, date, value date, common and own
                      concept, amount (money out negative), document, references, concepts.
                      A file whose totals do not hold is refused, saying which and where.
  n43-import NIF8 YYYY ACCOUNT FILE [--accept-matches] [--other-account NUMBER]
                      (treasury control) the lines of FILE's account that is treasury
                      account ACCOUNT (by its CCC or IBAN), each with what it is proposed
                      as: line, date, amount, kind (receipt collected, invoice paid,
                      receipt returned, a SEPA file's total whose run is already written,
                      other movement, already imported), receipt, movement or file, party,
                      invoice, other account. --other-account puts the
                      other movements without a suggestion on that account. With
                      --accept-matches every line that can be written is, in one
                      transaction (an other movement without an account is left), and
                      "imported" is printed with the counts of receipts, payments,
                      returns, other movements, SEPA files and lines left. A line imported before is
                      never written again.
VERI*FACTU invoicing records (of the whole company, every exercise in one chain). Every
invoice posted, changed or deleted leaves its record in the company's verifactu.mdb, in the
same transaction as the invoice's rows:
  verifactu-records NIF8
                      the records in the order written: number, kind (alta,
                      alta-subsanacion, anulacion), invoice type (F1, F2, R1, R5),
                      invoice number with its series, date, total, time of the record,
                      hash, state (pendiente until the tax agency has answered)
  verifactu-check NIF8
                      recomputes every hash and follows the chain; prints the count, or
                      the first record that breaks it (exit 1)
  verifactu-xml NIF8 FILE
                      writes the next submission to the tax agency (the records waiting,
                      at most 1,000, in their SOAP envelope) to FILE, and prints its count
  verifactu-send NIF8 --certificate FILE.p12
                      sends the records waiting to the tax agency's service (test or
                      production, as the company's settings say) with the company's
                      certificate, whose password is read from standard input and never
                      kept; waits between submissions as each answer asks; prints each
                      step and the count of records correct, accepted with errors and
                      incorrect. What was not accepted waits for the next time.
With the billing module only (the references belong to the company):
  references NIF8 YYYY
                      code, description, price
  reference-add NIF8 YYYY --code C [--description D] [--price AMOUNT]
  reference-change NIF8 YYYY CODE [--code C] [--description D] [--price AMOUNT]
  reference-remove NIF8 YYYY CODE

A key that starts with "--" (a duplicated tax number) can follow a lone "--", after which
every word is an argument: tallora5-cli company-remove --yes -- --b12345

Exit status: 0 done, 1 refused (a stop message, a question answered No, a step that
failed), 2 wrong command line.

Examples:
  tallora5-cli --unit /srv/llibres --yes company-create --name "Fusteria Pons" --nif B12345678
  tallora5-cli --unit /srv/llibres --yes exercise-create B1234567 --year 2025 --iva1 21 --iva2 10
  tallora5-cli --unit /srv/llibres month-lock B1234567 2025 1 2 3
  tallora5-cli --unit /srv/llibres customer-add B1234567 2025 --name "Maria Soler" --re yes
  tallora5-cli --unit /srv/llibres --yes account-remove B1234567 2025 Serveis 12
  tallora5-cli --unit /srv/llibres post-sale B1234567 2025 --day 15 --month 3 \
                  --customer "Maria Soler" --account "700 Ventas de mercaderías" --total 121,00
  tallora5-cli --unit /srv/llibres change-sale B1234567 2025 7 --treasury-account "Caja efectivo"
)");
}

}  // namespace tallora::cli
