#include "dbusappinstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QMetaClassInfo>

namespace kestrum {

namespace {
const char* interfaceName(const QObject& object)
{
    const QMetaObject& meta = *object.metaObject();
    return meta.classInfo(meta.indexOfClassInfo("D-Bus Interface")).value();
}
} // namespace

DBusAppInstance::DBusAppInstance(QDBusConnection connection, QString name, QObject* parent)
    : AppInstance(parent)
    , m_connection(std::move(connection))
    , m_name(std::move(name))
{}

QString DBusAppInstance::objectPath(const QString& name)
{
    return u'/' + QString(name).replace(u'.', u'/');
}

bool DBusAppInstance::becomePrimary()
{
    if (!m_connection.isConnected())
        return true;
    // Serve the hand-over before taking the name, so that a start that sees the name
    // finds the object.
    if (!m_connection.registerObject(objectPath(m_name), this,
                                     QDBusConnection::ExportScriptableSlots)) {
        qWarning("could not serve %s on the session bus", qPrintable(objectPath(m_name)));
        return true;
    }
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        m_connection.interface()->registerService(m_name,
                                                  QDBusConnectionInterface::DontQueueService,
                                                  QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) {
        qWarning("could not claim %s on the session bus: %s", qPrintable(m_name),
                 qPrintable(reply.error().message()));
        return true;
    }
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return true;
    m_connection.unregisterObject(objectPath(m_name));
    return false;
}

bool DBusAppInstance::handOver(const QStringList& arguments)
{
    if (!m_connection.isConnected())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(m_name, objectPath(m_name),
                                                       QString::fromLatin1(interfaceName(*this)),
                                                       QStringLiteral("HandOver"));
    call << arguments;
    const QDBusMessage reply = m_connection.call(call, QDBus::Block, kHandOverTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        qWarning("the running instance did not take the command line: %s",
                 qPrintable(reply.errorMessage()));
        return false;
    }
    return true;
}

void DBusAppInstance::HandOver(const QStringList& arguments)
{
    emit handedOver(arguments);
}

} // namespace kestrum
