#pragma once

#include "exposure/exposurecomponent.h"

#include <vector>

namespace kestrum {

/// The entries that the profile editor offers for a component's minimum and maximum: the
/// scale of the component's step, cut at a fixed pivot on each side so that a minimum can
/// never pass a maximum. The minimum runs from the scale's first entry through the entry
/// nearest the lower pivot, the maximum from the entry nearest the upper pivot through the
/// last entry. Pivots: ISO 100 and 400; f-number 4 and 16; speed 1/8 s and 1/500 s (the
/// slowest time is the speed's minimum).
template <typename C> std::vector<C> minimumChoices(Fraction step);
template <typename C> std::vector<C> maximumChoices(Fraction step);

} // namespace kestrum
