#include "camera/isofromgain.h"

#include <QTest>

using namespace kestrum;

Q_DECLARE_METATYPE(kestrum::SensorGain)

// A webcam's gain read as an ISO speed: four stops evenly across the control.
class IsoFromGainTest : public QObject {
    Q_OBJECT

private slots:
    void isoFromGain_data()
    {
        QTest::addColumn<SensorGain>("gain");
        QTest::addColumn<float>("iso");
        QTest::newRow("no gain control") << SensorGain{} << 100.0f;
        QTest::newRow("unreadable value") << SensorGain{{}, 0, 255} << 100.0f;
        QTest::newRow("lowest gain") << SensorGain{0, 0, 255} << 100.0f;
        QTest::newRow("highest gain, four stops up") << SensorGain{255, 0, 255} << 1600.0f;
        QTest::newRow("one stop up") << SensorGain{40, 16, 112} << 200.0f;
        QTest::newRow("below the range clamps") << SensorGain{-5, 0, 255} << 100.0f;
        QTest::newRow("above the range clamps") << SensorGain{999, 0, 255} << 1600.0f;
        QTest::newRow("a control of one value") << SensorGain{7, 7, 7} << 100.0f;
    }

    void isoFromGain()
    {
        QFETCH(SensorGain, gain);
        QTEST(isofromgain::isoFromGain(gain), "iso");
    }
};

QTEST_GUILESS_MAIN(IsoFromGainTest)
#include "tst_isofromgain.moc"
