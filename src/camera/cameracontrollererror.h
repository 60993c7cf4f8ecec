#pragma once

#include <QString>

#include <exception>

namespace kestrum {

/// Why the camera could not be set up or could not capture.
enum class CameraControllerError {
    sessionCantBeCreated,
    noCameraDevice,
    inputCantBeCreated,
    inputCantBeAdded,
    outputCantBeAdded,
    captureFailed,
    unknown,
};

/// The text the user reads in the error alert.
QString errorDescription(CameraControllerError error);

/// A camera failure thrown to the caller (set-up) or carried in a future (logging).
class CameraControllerException : public std::exception {
public:
    explicit CameraControllerException(CameraControllerError error);

    CameraControllerError error() const { return m_error; }
    QString errorDescription() const { return kestrum::errorDescription(m_error); }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    CameraControllerError m_error;
    std::string m_what;
};

} // namespace kestrum
