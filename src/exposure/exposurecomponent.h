#pragma once

#include "fraction.h"
#include "shortestdecimaltext.h"

#include <QHashFunctions>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <functional>

namespace kestrum {

/// The value of a component multiplied by 1000 and rounded half away from zero:
/// the number that identities and hashes use. A value that is not finite, or that
/// does not fit a signed 64-bit integer once scaled, stops the program.
std::int64_t roundedThousandths(double value, QStringView typeName);

/// One entry of an exposure scale: an aperture, a shutter speed, an ISO speed or a
/// compensation. `Kind` names the component and says whether it shows a sign.
///
/// Equality compares the step, the exact value and the display text; the identity
/// and the hash use the value rounded to thousandths (every table value differs in
/// its thousandths, so the two never disagree on table entries).
template <typename Kind> struct ExposureComponent {
    Fraction type = Fraction::full;
    double value = 0.0; ///< f-number, seconds, ISO speed or stops
    QString display;    ///< the text shown to the user

    /// Whether the scales of this component run from the largest value down.
    static constexpr bool scaleDescending = Kind::scaleDescending;

    static QStringView typeName() { return Kind::typeName; }

    /// The display text with a leading "+" for a positive compensation; every
    /// other component shows its display text unchanged.
    QString signedDisplay() const
    {
        if constexpr (Kind::showsPlusSign) {
            if (value > 0)
                return QLatin1Char('+') + display;
        }
        return display;
    }

    /// Type name, step, display text and rounded thousandths, e.g. "Aperturefull1.41410".
    QString id() const
    {
        return typeName().toString() + rawValue(type) + display +
               QString::number(roundedThousandths(value, typeName()));
    }

    /// Type name and shortest value text, e.g. "Aperture 1.41".
    QString description() const
    {
        return typeName().toString() + QLatin1Char(' ') + shortestDecimalText(value);
    }

    friend bool operator==(const ExposureComponent&, const ExposureComponent&) = default;
};

struct ApertureKind {
    static constexpr QStringView typeName = u"Aperture";
    static constexpr bool scaleDescending = false;
    static constexpr bool showsPlusSign = false;
};
struct ShutterSpeedKind {
    static constexpr QStringView typeName = u"ShutterSpeed";
    static constexpr bool scaleDescending = true;
    static constexpr bool showsPlusSign = false;
};
struct ISOKind {
    static constexpr QStringView typeName = u"ISO";
    static constexpr bool scaleDescending = false;
    static constexpr bool showsPlusSign = false;
};
struct CompensationKind {
    static constexpr QStringView typeName = u"Compensation";
    static constexpr bool scaleDescending = false;
    static constexpr bool showsPlusSign = true;
};

using Aperture = ExposureComponent<ApertureKind>;         ///< value: f-number
using ShutterSpeed = ExposureComponent<ShutterSpeedKind>; ///< value: exposure time in seconds
using ISO = ExposureComponent<ISOKind>;                   ///< value: ISO arithmetic speed
using Compensation = ExposureComponent<CompensationKind>; ///< value: stops, positive is brighter

/// Feeds display text, rounded thousandths, step text and type name, in that order.
template <typename Kind> size_t qHash(const ExposureComponent<Kind>& component, size_t seed = 0)
{
    QtPrivate::QHashCombine combine;
    seed = combine(seed, component.display);
    seed = combine(seed, static_cast<qint64>(roundedThousandths(
                             component.value, ExposureComponent<Kind>::typeName())));
    seed = combine(seed, rawValue(component.type));
    seed = combine(seed, ExposureComponent<Kind>::typeName());
    return seed;
}

} // namespace kestrum

template <typename Kind> struct std::hash<kestrum::ExposureComponent<Kind>> {
    size_t operator()(const kestrum::ExposureComponent<Kind>& component) const
    {
        return kestrum::qHash(component);
    }
};
