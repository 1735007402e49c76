#pragma once
// The QR address printed on a posted sale: that of its last record, when it has one.
#include "qr_address.h"

#include "context/fwd.h"

#include <cstdint>

namespace tallora::verifactu {

// The address of sale `ordre` of the open exercise, from its last alta; empty when the sale
// has no record (records off, or cancelled).
QString saleQrAddress(const WorkingContext& ctx, std::int64_t ordre);

}  // namespace tallora::verifactu
