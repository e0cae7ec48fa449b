// The tables, by the subjects of the members; rows() puts them together.
#pragma once

#include "host/validate/rows.h"

namespace validate {

using Rows = std::vector<Row>;

Rows lifecycleRows();
Rows scalarRows();
Rows textRows();
Rows dataRows();
Rows collectionRows();
Rows variantGetterRows();
Rows variantSetterRows();
Rows domainRows();

} // namespace validate
