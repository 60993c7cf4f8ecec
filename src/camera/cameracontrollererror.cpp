#include "cameracontrollererror.h"

namespace kestrum {

QString errorDescription(CameraControllerError error)
{
    switch (error) {
    case CameraControllerError::sessionCantBeCreated:
        return QStringLiteral("Unable to create capture session.");
    case CameraControllerError::noCameraDevice:
        return QStringLiteral("No camera device found.");
    case CameraControllerError::inputCantBeCreated:
        return QStringLiteral("Unable to create capture input.");
    case CameraControllerError::inputCantBeAdded:
        return QStringLiteral("Unable to add capture input.");
    case CameraControllerError::outputCantBeAdded:
        return QStringLiteral("Unable to add capture output.");
    case CameraControllerError::captureFailed:
        return QStringLiteral("Capture failed.");
    case CameraControllerError::unknown:
        break;
    }
    // The spelling is the app's own text.
    return QStringLiteral("Unknown error occured.");
}

CameraControllerException::CameraControllerException(CameraControllerError error)
    : m_error(error)
    , m_what(kestrum::errorDescription(error).toStdString())
{}

} // namespace kestrum
