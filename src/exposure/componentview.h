#pragma once

#include "exposurecomponent.h"

#include <QMetaType>
#include <QString>

namespace kestrum {

/// An exposure component as QML reads it.
class ComponentView {
    Q_GADGET
    Q_PROPERTY(QString type MEMBER m_type CONSTANT)
    Q_PROPERTY(double value MEMBER m_value CONSTANT)
    Q_PROPERTY(QString display MEMBER m_display CONSTANT)
    Q_PROPERTY(QString signedDisplay MEMBER m_signedDisplay CONSTANT)

public:
    ComponentView() = default;
    // Only from components: QML looks for constructors of value types from its own types.
    template <typename C>
    requires requires(const C& c) { c.signedDisplay(); }
    explicit ComponentView(const C& component)
        : m_type(rawValue(component.type))
        , m_value(component.value)
        , m_display(component.display)
        , m_signedDisplay(component.signedDisplay())
    {}

private:
    QString m_type;
    double m_value = 0.0;
    QString m_display;
    QString m_signedDisplay;
};

} // namespace kestrum

Q_DECLARE_METATYPE(kestrum::ComponentView)
