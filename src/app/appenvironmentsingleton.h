#pragma once

#include "app/appenvironment.h"
#include "app/qmlsingleton.h"

#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

namespace kestrum {

/// The window's environment as QML sees it (`AppEnvironment`): safe areas, and closing
/// whatever is presented.
struct AppEnvironmentSingleton {
    Q_GADGET
    QML_FOREIGN(kestrum::AppEnvironment)
    QML_NAMED_ELEMENT(AppEnvironment)
    QML_SINGLETON

public:
    static AppEnvironment* create(QQmlEngine*, QJSEngine*)
    {
        return offeredSingleton(s_instance, "AppEnvironment");
    }
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(AppEnvironment* instance) { s_instance = instance; }

private:
    static inline AppEnvironment* s_instance = nullptr;
};

} // namespace kestrum
