#include "platform/webcamexposure.h"

#include <QTest>

#include <linux/videodev2.h>

using namespace kestrum;
using Range = V4l2Controls::Range;
using OptI = std::optional<qint32>;
using OptR = std::optional<Range>;
using OptF = std::optional<float>;

Q_DECLARE_METATYPE(std::optional<qint32>)
Q_DECLARE_METATYPE(std::optional<V4l2Controls::Range>)
Q_DECLARE_METATYPE(std::optional<float>)

// A webcam's controls read as a light meter's exposure, and its auto-exposure menu.
class WebcamExposureTest : public QObject {
    Q_OBJECT

private slots:
    void isoFromGain_data()
    {
        QTest::addColumn<OptI>("gain");
        QTest::addColumn<OptR>("range");
        QTest::addColumn<float>("iso");
        const OptR typical = Range{0, 255, 32};
        QTest::newRow("no gain control") << OptI() << OptR() << 100.0f;
        QTest::newRow("unreadable value") << OptI() << typical << 100.0f;
        QTest::newRow("lowest gain") << OptI(0) << typical << 100.0f;
        QTest::newRow("highest gain, four stops up") << OptI(255) << typical << 1600.0f;
        QTest::newRow("halfway, two stops up") << OptI(50) << OptR(Range{0, 100, 0}) << 400.0f;
        QTest::newRow("offset range") << OptI(16) << OptR(Range{16, 48, 16}) << 100.0f;
        QTest::newRow("below the range clamps") << OptI(-5) << typical << 100.0f;
        QTest::newRow("above the range clamps") << OptI(999) << typical << 1600.0f;
        QTest::newRow("a control of one value") << OptI(7) << OptR(Range{7, 7, 7}) << 100.0f;
    }

    void isoFromGain()
    {
        QFETCH(OptI, gain);
        QFETCH(OptR, range);
        QFETCH(float, iso);
        QCOMPARE(webcamexposure::isoFromGain(gain, range), iso);
    }

    void durationFromExposureUnits_data()
    {
        QTest::addColumn<OptI>("units");
        QTest::addColumn<OptF>("seconds");
        QTest::newRow("1/100 s") << OptI(100) << OptF(0.01f);
        QTest::newRow("shortest") << OptI(1) << OptF(0.0001f);
        QTest::newRow("unknown") << OptI() << OptF();
        QTest::newRow("zero means nothing") << OptI(0) << OptF();
        QTest::newRow("negative") << OptI(-3) << OptF();
    }

    void durationFromExposureUnits()
    {
        QFETCH(OptI, units);
        QTEST(webcamexposure::durationFromExposureUnits(units), "seconds");
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
        QTEST(webcamexposure::autoExposureEntry(mode, offers), "entry");
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

QTEST_GUILESS_MAIN(WebcamExposureTest)
#include "tst_webcamexposure.moc"
