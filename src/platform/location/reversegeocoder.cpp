#include "reversegeocoder.h"

namespace kestrum {

ReverseGeocoderException::ReverseGeocoderException(ReverseGeocoder::Error error)
    : m_error(error)
{}

const char* ReverseGeocoderException::what() const noexcept
{
    switch (m_error) {
    case ReverseGeocoder::Error::requestFailed:
        return "the geocoding request failed";
    case ReverseGeocoder::Error::malformedAnswer:
        return "the geocoder's answer could not be read";
    case ReverseGeocoder::Error::timedOut:
        return "the geocoder did not answer in time";
    }
    return "the geocoder failed";
}

} // namespace kestrum
