// nav::RangeBearing as compiled for a processor with fused multiply-add.
#pragma once

#include <array>
#include <optional>

// Range and bearing; nothing where the computation raises DivisionByZero.
std::optional<std::array<double, 2>> FusedRangeBearing(double dLatitude1, double dLongitude1, double dLatitude2,
                                                       double dLongitude2);
