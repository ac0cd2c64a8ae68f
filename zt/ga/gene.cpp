#include "zt/ga/gene.h"

GA_Gene* GA_Gene::Clone() const { return nullptr; }

GA_Gene::~GA_Gene() = default;
