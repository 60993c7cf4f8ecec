#pragma once

#include "exposure/exposureerror.h"
#include "exposure/fraction.h"
#include "exposure/mode.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace kestrum {

/// The meter's enumerations as QML names them: `Exposure.ShutterPriority`,
/// `Exposure.Third`, `Exposure.Overexposed`. Each mirrors its C++ counterpart case by
/// case, in the same order.
namespace ExposureEnums {
Q_NAMESPACE
QML_NAMED_ELEMENT(Exposure)

enum class Mode {
    AperturePriority, ///< av: the user picks the aperture, the speed is computed
    ShutterPriority,  ///< tv: the user picks the speed, the aperture is computed
    Manual,           ///< m: the user picks both, the meter shows the deviation
};
Q_ENUM_NS(Mode)

/// The step of a value scale.
enum class Step { Full, Half, Third };
Q_ENUM_NS(Step)

/// Why the shown exposure cannot be right; `NoError` while it can.
enum class Error { NoError, Underexposed, Overexposed };
Q_ENUM_NS(Error)

} // namespace ExposureEnums

static_assert(int(ExposureEnums::Mode::Manual) == int(kestrum::Mode::m));
static_assert(int(ExposureEnums::Mode::ShutterPriority) == int(kestrum::Mode::tv));
static_assert(int(ExposureEnums::Step::Third) == int(Fraction::third));
static_assert(int(ExposureEnums::Step::Half) == int(Fraction::half));

inline ExposureEnums::Mode qmlMode(Mode mode)
{
    return ExposureEnums::Mode(int(mode));
}

inline Mode modeFromQml(ExposureEnums::Mode mode)
{
    return Mode(int(mode));
}

inline ExposureEnums::Step qmlStep(Fraction fraction)
{
    return ExposureEnums::Step(int(fraction));
}

inline Fraction fractionFromQml(ExposureEnums::Step step)
{
    return Fraction(int(step));
}

inline ExposureEnums::Error qmlError(std::optional<ExposureError> error)
{
    if (!error)
        return ExposureEnums::Error::NoError;
    return *error == ExposureError::overexposed ? ExposureEnums::Error::Overexposed
                                                : ExposureEnums::Error::Underexposed;
}

inline std::optional<ExposureError> errorFromQml(ExposureEnums::Error error)
{
    switch (error) {
    case ExposureEnums::Error::Underexposed:
        return ExposureError::underexposed;
    case ExposureEnums::Error::Overexposed:
        return ExposureError::overexposed;
    case ExposureEnums::Error::NoError:
        break;
    }
    return std::nullopt;
}

} // namespace kestrum
