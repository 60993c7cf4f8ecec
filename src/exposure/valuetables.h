#pragma once

#include "exposurecomponent.h"

#include <vector>

namespace kestrum {

/// The three static tables of a component: the full stops (step `full`), the
/// half-stop extras (`half`) and the third-stop extras (`third`). The extras hold
/// only the in-between values, never the full stops. Values and display texts are
/// the meter's own data and stay exactly as listed, odd labels included.
template <typename C> struct ValueTables {
    static const std::vector<C>& full();
    static const std::vector<C>& halfExtras();
    static const std::vector<C>& thirdExtras();
};

template <> const std::vector<Aperture>& ValueTables<Aperture>::full();
template <> const std::vector<Aperture>& ValueTables<Aperture>::halfExtras();
template <> const std::vector<Aperture>& ValueTables<Aperture>::thirdExtras();
template <> const std::vector<ShutterSpeed>& ValueTables<ShutterSpeed>::full();
template <> const std::vector<ShutterSpeed>& ValueTables<ShutterSpeed>::halfExtras();
template <> const std::vector<ShutterSpeed>& ValueTables<ShutterSpeed>::thirdExtras();
template <> const std::vector<ISO>& ValueTables<ISO>::full();
template <> const std::vector<ISO>& ValueTables<ISO>::halfExtras();
template <> const std::vector<ISO>& ValueTables<ISO>::thirdExtras();
template <> const std::vector<Compensation>& ValueTables<Compensation>::full();
template <> const std::vector<Compensation>& ValueTables<Compensation>::halfExtras();
template <> const std::vector<Compensation>& ValueTables<Compensation>::thirdExtras();

} // namespace kestrum
