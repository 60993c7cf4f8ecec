#pragma once

#include <QObject>

namespace kestrum {

/// Holds the latest light value and tells its subscribers of every new one.
/// A subject lives on the main thread, as do its subscribers.
class LightValueSubject : public QObject {
    Q_OBJECT

public:
    explicit LightValueSubject(double initial, QObject* parent = nullptr);

    double value() const { return m_value; }
    /// Stores `value` and passes it on, also when it equals the last one.
    void send(double value);

signals:
    void sent(double value);

private:
    double m_value;
};

} // namespace kestrum
