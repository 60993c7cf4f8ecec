#pragma once

// The services that C++ owns, offered to QML as singletons read from the container.

#include "app/appenvironment.h"
#include "app/dependencycontainer.h"
#include "exposure/calculationcontroller.h"
#include "settings/settings.h"

#include <QJSEngine>
#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

namespace kestrum {

template <typename T> T* ownedByCpp(T* object)
{
    QJSEngine::setObjectOwnership(object, QJSEngine::CppOwnership);
    return object;
}

/// The meter: the calculation controller of the main screen.
struct MeterSingleton {
    Q_GADGET
    QML_FOREIGN(kestrum::CalculationController)
    QML_NAMED_ELEMENT(Meter)
    QML_SINGLETON

public:
    static CalculationController* create(QQmlEngine*, QJSEngine*)
    {
        return ownedByCpp(&DependencyContainer::shared().calculationController());
    }
};

/// The app-wide settings and the profile list.
struct SettingsSingleton {
    Q_GADGET
    QML_FOREIGN(kestrum::Settings)
    QML_NAMED_ELEMENT(AppSettings)
    QML_SINGLETON

public:
    static Settings* create(QQmlEngine*, QJSEngine*)
    {
        return ownedByCpp(&DependencyContainer::shared().settings());
    }
};

/// What the window tells its views: safe areas, and closing what is presented.
struct AppEnvironmentSingleton {
    Q_GADGET
    QML_FOREIGN(kestrum::AppEnvironment)
    QML_NAMED_ELEMENT(AppEnvironment)
    QML_SINGLETON

public:
    static AppEnvironment* create(QQmlEngine*, QJSEngine*)
    {
        return ownedByCpp(&DependencyContainer::shared().environment());
    }
};

} // namespace kestrum
