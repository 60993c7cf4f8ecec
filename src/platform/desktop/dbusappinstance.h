#pragma once

#include "appinstance.h"

#include <QDBusConnection>

namespace kestrum {

/// The one running instance, found by its well-known name on the session bus: the app
/// id. The primary instance owns that name and serves `HandOver(as arguments)` on the
/// object named after it (`/org/kestrum/Kestrum` for `org.kestrum.Kestrum`); a later
/// start calls it and exits. Without a session bus every start is primary.
class DBusAppInstance final : public AppInstance {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", KESTRUM_APP_ID ".Instance")

public:
    /// How long a later start waits for the primary to take its command line.
    static constexpr int kHandOverTimeoutMs = 5000;

    /// Claims `name` (normally the app id) on `connection`.
    DBusAppInstance(QDBusConnection connection, QString name, QObject* parent = nullptr);

    bool becomePrimary() override;
    bool handOver(const QStringList& arguments) override;

    /// The object path that serves the hand-over for `name`.
    static QString objectPath(const QString& name);

public slots:
    /// Called over the bus by a later start.
    Q_SCRIPTABLE void HandOver(const QStringList& arguments);

private:
    QDBusConnection m_connection;
    QString m_name;
};

} // namespace kestrum
