#pragma once

#include <QString>

#include <optional>

namespace kestrum {

/// What a reverse geocoder says about a coordinate, as far as the app shows it.
struct Placemark {
    std::optional<QString> name;     ///< the place itself: a landmark, or a street address
    std::optional<QString> locality; ///< the city, town or village it lies in

    friend bool operator==(const Placemark&, const Placemark&) = default;
};

/// The place as one line for people: name and locality joined with ", ", absent or
/// empty parts dropped; the empty text when neither is known.
QString humanReadableLocation(const Placemark& placemark);

} // namespace kestrum
