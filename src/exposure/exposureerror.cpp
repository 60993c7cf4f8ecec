#include "exposureerror.h"

namespace kestrum {

QString rawValue(ExposureError error)
{
    return error == ExposureError::underexposed ? QStringLiteral("underexposed")
                                                : QStringLiteral("overexposed");
}

QString accessibilityKey(ExposureError error)
{
    return QStringLiteral("accessibility.") + rawValue(error);
}

} // namespace kestrum
