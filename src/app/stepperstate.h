#pragma once

#include "app/compensationstepper.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

/// The minus and plus buttons of a compensation control, for its QML: which are enabled
/// and which row each selects, from the current row (−1 when the value is not in the
/// list) and the number of rows.
class StepperState : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY changed)
    Q_PROPERTY(int count READ count WRITE setCount NOTIFY changed)
    Q_PROPERTY(bool incrementEnabled READ incrementEnabled NOTIFY changed)
    Q_PROPERTY(bool decrementEnabled READ decrementEnabled NOTIFY changed)
    /// The rows plus and minus select; −1 when pressing it does nothing.
    Q_PROPERTY(int incrementedIndex READ incrementedIndex NOTIFY changed)
    Q_PROPERTY(int decrementedIndex READ decrementedIndex NOTIFY changed)

public:
    using QObject::QObject;

    int currentIndex() const { return m_stepper.currentIndex.value_or(-1); }
    void setCurrentIndex(int index);
    int count() const { return m_stepper.count; }
    void setCount(int count);
    bool incrementEnabled() const { return m_stepper.incrementEnabled(); }
    bool decrementEnabled() const { return m_stepper.decrementEnabled(); }
    int incrementedIndex() const { return m_stepper.incremented().value_or(-1); }
    int decrementedIndex() const { return m_stepper.decremented().value_or(-1); }

signals:
    void changed();

private:
    CompensationStepper m_stepper;
};

} // namespace kestrum
