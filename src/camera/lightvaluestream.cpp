#include "lightvaluestream.h"

#include "lightvaluesubject.h"

#include <cmath>
#include <memory>
#include <optional>

namespace kestrum {

namespace {
constexpr double kTenthsPerUnit = 10.0;
} // namespace

bool sameTenths(double a, double b)
{
    return std::trunc(a * kTenthsPerUnit) == std::trunc(b * kTenthsPerUnit);
}

LightValueStream::LightValueStream(LightValueSubject* subject, Filter filter)
    : m_subject(subject)
    , m_filter(filter)
{}

QMetaObject::Connection LightValueStream::subscribe(const QObject* context,
                                                    std::function<void(double)> receiver) const
{
    if (!m_subject)
        return {};

    std::function<void(double)> deliver = std::move(receiver);
    if (m_filter == Filter::finiteDistinctTenths) {
        auto last = std::make_shared<std::optional<double>>();
        deliver = [last, inner = std::move(deliver)](double value) {
            if (!std::isfinite(value))
                return;
            if (*last && sameTenths(**last, value))
                return;
            *last = value;
            inner(value);
        };
    }
    deliver(m_subject->value());
    return QObject::connect(m_subject, &LightValueSubject::sent, context, deliver);
}

} // namespace kestrum
