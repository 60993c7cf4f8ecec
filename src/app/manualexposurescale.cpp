#include "manualexposurescale.h"

namespace kestrum {

double ManualExposureScale::markerOffset(int index) const
{
    return (index - (m_count - 1) / 2.0) * kEntryPoints;
}

ManualExposureScale::MarkerState
ManualExposureScale::markerState(std::optional<ExposureError> error)
{
    return error ? MarkerState::error : MarkerState::normal;
}

std::optional<double> ManualExposureScale::errorMarkOffset(std::optional<ExposureError> error) const
{
    if (!error)
        return std::nullopt;
    const double distance = m_count * kEntryPoints / 2.0 + kErrorMarkGapPoints;
    return *error == ExposureError::overexposed ? distance : -distance;
}

} // namespace kestrum
