#pragma once

#include "exposure/exposureerror.h"

#include <optional>

namespace kestrum {

/// The geometry of the manual-mode deviation display: a row of compensation entries,
/// 16 points each and centred on the control, with a marker under the entry nearest to
/// the deviation. Offsets are in points from the scale's centre, positive to the right.
class ManualExposureScale {
public:
    /// Width of one entry along the scale.
    static constexpr double kEntryPoints = 16.0;
    /// Gap between the end of the scale and the red mark of an exposure error.
    static constexpr double kErrorMarkGapPoints = 10.0;

    enum class MarkerState {
        normal, ///< yellow: the deviation is within reach
        error,  ///< red: no entry gives a correct exposure
    };

    explicit ManualExposureScale(int count)
        : m_count(count)
    {}

    /// The marker's offset for the entry at `index`: the middle of its 16-point cell.
    double markerOffset(int index) const;

    static MarkerState markerState(std::optional<ExposureError> error);

    /// The offset of the red error mark, 10 points beyond the end of the scale: right for
    /// overexposed, left for underexposed; none without an error.
    std::optional<double> errorMarkOffset(std::optional<ExposureError> error) const;

private:
    int m_count = 0;
};

} // namespace kestrum
