#include "platform/camera/qtcapturedevice.h"

#include <QCameraDevice>
#include <QMediaDevices>
#include <QTest>

using namespace kestrum;

// The system camera where there is none, as on build machines: finding the camera fails
// and nothing is read from a device that is not there.
class QtCaptureDeviceTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        if (!QMediaDevices::videoInputs().isEmpty())
            QSKIP("a camera is attached; this checks the machine without one");
    }

    void deviceWithoutCamera()
    {
        QtCaptureDevice device;
        QCOMPARE(device.authorizationStatus(), AuthorizationStatus::authorized);
        QVERIFY(device.createSession());
        QVERIFY(!device.findCamera());
        QVERIFY(device.id().isEmpty());
        QCOMPARE(device.iso(), std::nullopt);
        QCOMPARE(device.exposureDurationS(), std::nullopt);
        QCOMPARE(device.exposureTargetOffsetEV(), std::nullopt);
        QCOMPARE(device.lensAperture(), std::nullopt);
        QCOMPARE(device.gain(), std::nullopt);
        QString why;
        QVERIFY(!device.lockForConfiguration(&why));
        QVERIFY(!why.isEmpty());
    }
};

QTEST_MAIN(QtCaptureDeviceTest)
#include "tst_qtcapturedevice.moc"
