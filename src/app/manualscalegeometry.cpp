#include "manualscalegeometry.h"

#include "app/manualexposurescale.h"

namespace kestrum {

void ManualScaleGeometry::setCount(int count)
{
    if (count == m_count)
        return;
    m_count = count;
    emit changed();
}

void ManualScaleGeometry::setCurrentIndex(int index)
{
    if (index == m_currentIndex)
        return;
    m_currentIndex = index;
    emit changed();
}

void ManualScaleGeometry::setError(ExposureEnums::Error error)
{
    if (error == m_error)
        return;
    m_error = error;
    emit changed();
}

double ManualScaleGeometry::entryPoints()
{
    return ManualExposureScale::kEntryPoints;
}

double ManualScaleGeometry::markerOffset() const
{
    return ManualExposureScale(m_count).markerOffset(m_currentIndex);
}

bool ManualScaleGeometry::hasErrorMark() const
{
    return ManualExposureScale(m_count).errorMarkOffset(errorFromQml(m_error)).has_value();
}

double ManualScaleGeometry::errorMarkOffset() const
{
    return ManualExposureScale(m_count).errorMarkOffset(errorFromQml(m_error)).value_or(0.0);
}

} // namespace kestrum
