#pragma once

#include <QObject>
#include <QStringList>

namespace kestrum {

/// The one running instance of the app. The first start becomes the primary instance;
/// a later start hands its command line to the primary, which raises its window, and
/// exits. Where the system offers no way to find a running instance, every start is
/// primary.
class AppInstance : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Tries to become the primary instance; false when another instance already is.
    virtual bool becomePrimary() = 0;
    /// From a start that is not primary: hands `arguments` to the primary instance.
    /// True once the primary has taken them.
    virtual bool handOver(const QStringList& arguments) = 0;

signals:
    /// On the primary: another start handed over its command line. The window should
    /// come to the front.
    void handedOver(const QStringList& arguments);
};

} // namespace kestrum
