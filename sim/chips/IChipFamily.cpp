#include "chips/IChipFamily.h"

IChipFamily::~IChipFamily() = default;

void IChipFamily::select(const Bytes& /*block*/) {}
