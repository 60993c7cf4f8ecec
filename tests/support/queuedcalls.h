#pragma once

#include <QMetaObject>
#include <QObject>
#include <QSignalSpy>
#include <QTest>

namespace kestrum {

/// Waits until the event loop has run every call queued so far: a marker queued after
/// them arrives last.
inline void finishQueuedCalls()
{
    QObject marker;
    QSignalSpy arrived(&marker, &QObject::objectNameChanged);
    QMetaObject::invokeMethod(
        &marker, [&marker] { marker.setObjectName("arrived"); }, Qt::QueuedConnection);
    QVERIFY(arrived.wait());
}

} // namespace kestrum
