#pragma once

#include <QMetaObject>
#include <QPointer>

#include <functional>

namespace kestrum {

class LightValueSubject;

/// The light values of a camera as its consumers subscribe to them: a subscriber
/// hears the current value at once, then every later one, in order.
///
/// A stream may pass only finite values that differ from the last passed one in
/// their first decimal (`finiteDistinctTenths`); each subscription keeps its own last
/// value, so every subscriber starts with the current reading.
class LightValueStream {
public:
    enum class Filter { none, finiteDistinctTenths };

    LightValueStream() = default;
    LightValueStream(LightValueSubject* subject, Filter filter);

    /// Calls `receiver` with the current value (when it passes the filter) and then with
    /// each new one, until `context` is destroyed or the connection is broken.
    QMetaObject::Connection subscribe(const QObject* context,
                                      std::function<void(double)> receiver) const;

private:
    QPointer<LightValueSubject> m_subject;
    Filter m_filter = Filter::none;
};

/// Whether two light values agree in their tenths (truncated toward zero), so that
/// the second adds nothing to the first: 8.04 and 8.07 agree; −0.05 and 0.05 agree.
bool sameTenths(double a, double b);

} // namespace kestrum
