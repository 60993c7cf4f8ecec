#include "limitchoices.h"

#include "exposure/scale.h"

namespace kestrum {

namespace {

template <typename C> struct Pivots;
template <> struct Pivots<ISO> {
    static constexpr double kMinimumThrough = 100.0;
    static constexpr double kMaximumFrom = 400.0;
};
template <> struct Pivots<Aperture> {
    static constexpr double kMinimumThrough = 4.0;
    static constexpr double kMaximumFrom = 16.0;
};
template <> struct Pivots<ShutterSpeed> {
    static constexpr double kMinimumThrough = 0.125;    // 1/8 s
    static constexpr double kMaximumFrom = 0.001953125; // 1/512 s, shown as 1/500
};

} // namespace

template <typename C> std::vector<C> minimumChoices(Fraction step)
{
    const std::vector<C>& entries = scale<C>(step);
    return cutScale<C>(entries, entries.front().value, Pivots<C>::kMinimumThrough);
}

template <typename C> std::vector<C> maximumChoices(Fraction step)
{
    const std::vector<C>& entries = scale<C>(step);
    return cutScale<C>(entries, Pivots<C>::kMaximumFrom, entries.back().value);
}

template std::vector<ISO> minimumChoices<ISO>(Fraction);
template std::vector<ISO> maximumChoices<ISO>(Fraction);
template std::vector<Aperture> minimumChoices<Aperture>(Fraction);
template std::vector<Aperture> maximumChoices<Aperture>(Fraction);
template std::vector<ShutterSpeed> minimumChoices<ShutterSpeed>(Fraction);
template std::vector<ShutterSpeed> maximumChoices<ShutterSpeed>(Fraction);

} // namespace kestrum
