#pragma once

#include "platform/location/reversegeocoder.h"

#include <QList>

#include <variant>

namespace kestrum {

/// A geocoder with one scripted outcome (a placemark, no placemark, or an error) that
/// records the coordinates it was asked about.
class FakeReverseGeocoder final : public ReverseGeocoder {
public:
    using Outcome = std::variant<std::optional<Placemark>, Error>;

    void setOutcome(Outcome outcome) { m_outcome = std::move(outcome); }
    const QList<Location>& requests() const { return m_requests; }

    QFuture<std::optional<Placemark>> reverseGeocode(const Location& location) override
    {
        m_requests.append(location);
        if (const auto* error = std::get_if<Error>(&m_outcome)) {
            return QtFuture::makeExceptionalFuture<std::optional<Placemark>>(
                std::make_exception_ptr(ReverseGeocoderException(*error)));
        }
        return QtFuture::makeReadyFuture(std::get<std::optional<Placemark>>(m_outcome));
    }

private:
    Outcome m_outcome;
    QList<Location> m_requests;
};

} // namespace kestrum
