#pragma once

#include "location.h"
#include "placemark.h"

#include <QFuture>

#include <exception>
#include <optional>
#include <string>

namespace kestrum {

/// The service that names the place at a coordinate.
class ReverseGeocoder {
public:
    /// Why a place could not be looked up.
    enum class Error {
        requestFailed,   ///< no connection, or the service answered with an error status
        malformedAnswer, ///< the answer is not what the service is documented to send
        timedOut,        ///< no answer in time
    };

    virtual ~ReverseGeocoder() = default;

    /// The place at `location`, or nothing when the service knows none there. Fails with
    /// a ReverseGeocoderException when the service could not be asked or understood.
    virtual QFuture<std::optional<Placemark>> reverseGeocode(const Location& location) = 0;
};

/// A failed look-up, carried in the future of `ReverseGeocoder::reverseGeocode`.
class ReverseGeocoderException : public std::exception {
public:
    explicit ReverseGeocoderException(ReverseGeocoder::Error error);

    ReverseGeocoder::Error error() const { return m_error; }
    const char* what() const noexcept override;

private:
    ReverseGeocoder::Error m_error;
};

} // namespace kestrum
