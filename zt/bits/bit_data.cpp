#include "zt/bits/bit_data.h"

// Defined here so that the virtual table lives in the library.
ZtBitData::~ZtBitData() = default;
