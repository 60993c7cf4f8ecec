#pragma once

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class Haptics;

/// The device's feedback in the hand, for the screens (`Haptics`): a tick when a value
/// or option changes under the finger, and the outcome of an action.
class HapticsFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Haptics)
    QML_SINGLETON

public:
    explicit HapticsFacade(Haptics& haptics, QObject* parent = nullptr);

    static HapticsFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(HapticsFacade* instance) { s_instance = instance; }

    Q_INVOKABLE void selectionChanged();
    Q_INVOKABLE void notifySuccess();
    Q_INVOKABLE void notifyError();

private:
    static inline HapticsFacade* s_instance = nullptr;

    Haptics& m_haptics;
};

} // namespace kestrum
