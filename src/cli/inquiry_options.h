#pragma once
// The filters every inquiry command shares (--from, --to, --operator, --amount) and the two
// lines that close its list.
#include "cli_options.h"
#include "context/money.h"
#include "master_common.h"
#include "schema/inquiry_filter.h"
#include "session.h"

#include <cstddef>

namespace tallora::cli {

// A date option DD/MM/YYYY, `fallback` when it is not given.
QDate dateOption(const CliOptions& o, const QString& option, const QDate& fallback);

// A date field of a treasury screen: DD/MM/YYYY inside the exercise of `w`, today's day and
// month in that year when it is not given.
QDate exerciseDate(const ExerciseWords& w, const CliOptions& o, const QString& option);

// Dtdata1 and Dtdata2 (DD/MM/YYYY; by default 1 January and 31 December of the exercise),
// cmbOperacio (=, <>, <=, >=) and txtImport as typed.
schema::DateAmountFilter dateAmountFilter(const WorkingContext& ctx, const CliOptions& o);

// "TOTAL" and the sum, then message 807 and the count.
void printInquiryTotals(Session& s, Money total, std::size_t count);

}  // namespace tallora::cli
