#pragma once

#include <QObject>
#include <QUrl>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class DesktopServices;

/// The desktop around the app, for the screens (`Desktop`): links and the system's
/// settings pages. Each call says whether something opened.
class DesktopFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Desktop)
    QML_SINGLETON

public:
    explicit DesktopFacade(DesktopServices& services, QObject* parent = nullptr);

    static DesktopFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(DesktopFacade* instance) { s_instance = instance; }

    Q_INVOKABLE bool openUrl(const QUrl& url);
    Q_INVOKABLE bool openCameraSettings();
    Q_INVOKABLE bool openLocationSettings();

private:
    static inline DesktopFacade* s_instance = nullptr;

    DesktopServices& m_services;
};

} // namespace kestrum
