#pragma once

#include "valuetables.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <vector>

namespace kestrum {

/// The merged scale of a component for a step, built once per process: the full
/// stops as stored for `full`; the full stops plus the half-stop or third-stop
/// extras, sorted, for `half` and `third`. Every scale runs the way its full-stop
/// table does: ascending, except shutter speeds (longest time first).
template <typename C> const std::vector<C>& scale(Fraction fraction)
{
    static const auto merged = [](const std::vector<C>& extras) {
        std::vector<C> entries = ValueTables<C>::full();
        entries.insert(entries.end(), extras.begin(), extras.end());
        std::stable_sort(entries.begin(), entries.end(), [](const C& a, const C& b) {
            if constexpr (C::scaleDescending)
                return a.value > b.value;
            else
                return a.value < b.value;
        });
        return entries;
    };
    static const std::vector<C> half = merged(ValueTables<C>::halfExtras());
    static const std::vector<C> third = merged(ValueTables<C>::thirdExtras());
    switch (fraction) {
    case Fraction::half:
        return half;
    case Fraction::third:
        return third;
    case Fraction::full:
        break;
    }
    return ValueTables<C>::full();
}

/// The entries that a stored limit snaps to: the full stops, then the half-stop
/// extras, then the third-stop extras, concatenated and not sorted, so that of two
/// equally near entries the full stop wins.
template <typename C> const std::vector<C>& limitCandidates()
{
    static const std::vector<C> entries = [] {
        std::vector<C> all = ValueTables<C>::full();
        const auto& half = ValueTables<C>::halfExtras();
        const auto& third = ValueTables<C>::thirdExtras();
        all.insert(all.end(), half.begin(), half.end());
        all.insert(all.end(), third.begin(), third.end());
        return all;
    }();
    return entries;
}

/// The entry nearest to `target` by linear distance; of two equally near entries
/// the earlier one wins. An empty list stops the program.
template <typename C> const C& nearestEntry(std::span<const C> entries, double target)
{
    if (entries.empty())
        qFatal("nearest entry asked of an empty %s scale", qPrintable(C::typeName().toString()));
    const C* best = nullptr;
    double bestDistance = std::numeric_limits<double>::max();
    for (const C& entry : entries) {
        const double distance = std::fabs(target - entry.value);
        if (distance < bestDistance) {
            best = &entry;
            bestDistance = distance;
        }
    }
    // A target of NaN is never strictly nearer than the largest double: keep the walk's
    // start then, as a best entry that never got replaced would.
    return best ? *best : entries.front();
}

/// The part of `entries` from the entry nearest to `first` through the entry
/// nearest to `second`, both included. Bounds are given in the scale's own order;
/// a pair that lands in reverse order stops the program.
template <typename C>
std::vector<C> cutScale(std::span<const C> entries, double first, double second)
{
    const C& lower = nearestEntry(entries, first);
    const C& upper = nearestEntry(entries, second);
    const auto from = std::find(entries.begin(), entries.end(), lower);
    const auto through = std::find(entries.begin(), entries.end(), upper);
    if (from == entries.end() || through == entries.end())
        return {entries.begin(), entries.end()};
    if (through < from) {
        qFatal("%s limits in reverse order: the first bound %s comes after the second bound %s",
               qPrintable(C::typeName().toString()), qPrintable(lower.display),
               qPrintable(upper.display));
    }
    return {from, through + 1};
}

} // namespace kestrum
