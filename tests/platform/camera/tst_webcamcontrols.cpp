#include "platform/camera/v4l2controls.h"
#include "platform/camera/webcamcontrols.h"

#include <QTest>

#include <linux/videodev2.h>

using namespace kestrum;
using OptI = std::optional<qint32>;
using OptF = std::optional<float>;

Q_DECLARE_METATYPE(std::optional<qint32>)
Q_DECLARE_METATYPE(std::optional<float>)

// A webcam's exposure controls: the exposure time they read and the auto-exposure menu.
class WebcamControlsTest : public QObject {
    Q_OBJECT

private slots:
    void durationFromExposureUnits_data()
    {
        QTest::addColumn<OptI>("units");
        QTest::addColumn<OptF>("seconds");
        QTest::newRow("1/100 s") << OptI(100) << OptF(0.01f);
        QTest::newRow("unknown") << OptI() << OptF();
        QTest::newRow("zero means nothing") << OptI(0) << OptF();
        QTest::newRow("negative") << OptI(-3) << OptF();
    }

    void durationFromExposureUnits()
    {
        QFETCH(OptI, units);
        QTEST(webcamcontrols::durationFromExposureUnits(units), "seconds");
    }

    void autoExposureEntry_data()
    {
        using enum ExposureMode;
        QTest::addColumn<ExposureMode>("mode");
        QTest::addColumn<QList<qint32>>("offers");
        QTest::addColumn<OptI>("entry");
        const QList<qint32> uvc{V4L2_EXPOSURE_MANUAL, V4L2_EXPOSURE_APERTURE_PRIORITY};
        const QList<qint32> full{V4L2_EXPOSURE_AUTO, V4L2_EXPOSURE_MANUAL};
        QTest::newRow("continuous on a usual webcam")
            << continuousAutoExposure << uvc << OptI(V4L2_EXPOSURE_APERTURE_PRIORITY);
        QTest::newRow("one-shot on a usual webcam")
            << autoExpose << uvc << OptI(V4L2_EXPOSURE_APERTURE_PRIORITY);
        QTest::newRow("locked") << locked << uvc << OptI(V4L2_EXPOSURE_MANUAL);
        QTest::newRow("custom") << custom << full << OptI(V4L2_EXPOSURE_MANUAL);
        QTest::newRow("full auto only")
            << continuousAutoExposure << full << OptI(V4L2_EXPOSURE_AUTO);
        QTest::newRow("menu unknown")
            << continuousAutoExposure << QList<qint32>() << OptI(V4L2_EXPOSURE_APERTURE_PRIORITY);
        QTest::newRow("no manual entry") << locked << QList<qint32>{V4L2_EXPOSURE_AUTO} << OptI();
    }

    void autoExposureEntry()
    {
        QFETCH(ExposureMode, mode);
        QFETCH(QList<qint32>, offers);
        QTEST(webcamcontrols::autoExposureEntry(mode, offers), "entry");
    }

    // Without a video node the controls say why and answer nothing.
    void controlsOfNoCamera_data()
    {
        QTest::addColumn<QString>("node");
        QTest::addColumn<bool>("open");
        QTest::newRow("missing node") << "/dev/kestrum-no-such-video" << false;
        QTest::newRow("not a video node") << "/dev/null" << true;
    }

    void controlsOfNoCamera()
    {
        QFETCH(QString, node);
        V4l2Controls controls(node);
        QTEST(controls.isOpen(), "open");
        QVERIFY(!controls.isAccessDenied());
        QCOMPARE(controls.value(V4L2_CID_GAIN), std::nullopt);
        QVERIFY(!controls.setValue(V4L2_CID_EXPOSURE_AUTO, V4L2_EXPOSURE_MANUAL));
        QVERIFY(!controls.range(V4L2_CID_GAIN));
        QVERIFY(controls.menuEntries(V4L2_CID_EXPOSURE_AUTO).isEmpty());
        if (!controls.isOpen())
            QVERIFY(controls.errorText().startsWith(node));
        else
            QVERIFY(!controls.errorText().isEmpty());
    }
};

QTEST_GUILESS_MAIN(WebcamControlsTest)
#include "tst_webcamcontrols.moc"
