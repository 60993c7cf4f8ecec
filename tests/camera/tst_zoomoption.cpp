#include "camera/zoomoption.h"

#include <QTest>

using namespace kestrum;

class ZoomOptionTest : public QObject {
    Q_OBJECT

private slots:
    void titles_data()
    {
        QTest::addColumn<float>("factor");
        QTest::addColumn<bool>("halve");
        QTest::addColumn<bool>("active");
        QTest::addColumn<QString>("title");
        QTest::newRow("fraction without leading zero") << 0.5f << false << false << ".5";
        QTest::newRow("active fraction keeps the zero") << 0.5f << false << true << u"0.5×"_qs;
        QTest::newRow("halved ultra-wide factor 1") << 1.0f << true << false << "0.5";
        QTest::newRow("halved active") << 1.0f << true << true << u"0.5×"_qs;
        QTest::newRow("floor, not nearest") << 2.75f << false << false << "2.7";
        QTest::newRow("whole number has no decimal") << 2.0f << true << false << "1";
        QTest::newRow("decimal as it reads") << 2.3f << false << false << "2.3";
        QTest::newRow("ten") << 20.0f << true << true << u"10×"_qs;
    }

    void titles()
    {
        QFETCH(float, factor);
        QFETCH(bool, halve);
        QFETCH(bool, active);
        QTEST(zoomTitle(factor, halve, active), "title");
    }
};

QTEST_GUILESS_MAIN(ZoomOptionTest)
#include "tst_zoomoption.moc"
