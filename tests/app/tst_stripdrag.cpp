#include "app/stripdrag.h"

#include <QList>
#include <QTest>

using namespace kestrum;

class StripDragTest : public QObject {
    Q_OBJECT

private slots:
    void releaseSteps_data()
    {
        QTest::addColumn<double>("translation");
        QTest::addColumn<double>("predictedEnd");
        QTest::addColumn<int>("steps");
        QTest::newRow("30 left rounds to one step on") << -30.0 << -30.0 << -1;
        QTest::newRow("24 right, a half, one step back") << 24.0 << 24.0 << 1;
        QTest::newRow("23 right is nothing") << 23.0 << 23.0 << 0;
        QTest::newRow("23 left is nothing") << -23.0 << -23.0 << 0;
        QTest::newRow("a fling left floors to three on") << -20.0 << -130.0 << -3;
        QTest::newRow("a fling right floors to two back") << 20.0 << 130.0 << 2;
        QTest::newRow("outrunning by 100 is no fling") << -20.0 << -120.0 << 0;
        QTest::newRow("a reversing release rounds") << 100.0 << -40.0 << 2;
    }

    void releaseSteps()
    {
        QFETCH(double, translation);
        QFETCH(double, predictedEnd);
        QTEST(StripDrag::releaseSteps(translation, predictedEnd), "steps");
    }

    void predictedEnd() { QCOMPARE(StripDrag::predictedEndPoints(-20.0, -550.0), -130.0); }

    void releasedIndex_data()
    {
        QTest::addColumn<std::optional<int>>("current");
        QTest::addColumn<int>("steps");
        QTest::addColumn<std::optional<int>>("index");
        QTest::newRow("one step on") << std::optional(4) << -1 << std::optional(5);
        QTest::newRow("three steps back") << std::optional(4) << 3 << std::optional(1);
        QTest::newRow("held at the start") << std::optional(1) << 5 << std::optional(0);
        QTest::newRow("held at the end") << std::optional(8) << -4 << std::optional(9);
        QTest::newRow("value not in the list") << std::optional<int>() << 1 << std::optional<int>();
    }

    void releasedIndex()
    {
        QFETCH(std::optional<int>, current);
        QFETCH(int, steps);
        QTEST(StripDrag::releasedIndex(current, 10, steps), "index");
    }

    void ticks_data()
    {
        QTest::addColumn<QList<double>>("path");
        QTest::addColumn<QList<double>>("ticks");
        QList<double> onAndBack;
        for (int x = 1; x <= 100; ++x)
            onAndBack << x;
        QTest::newRow("slowly on to 100") << onAndBack << QList<double>{48, 96};
        for (int x = 99; x >= 40; --x)
            onAndBack << x;
        QTest::newRow("on to 100, back to 40") << onAndBack << QList<double>{48, 96, 48};
        QTest::newRow("jumps tick where they land")
            << QList<double>{-60, -70, -120} << QList<double>{-60, -120};
    }

    void ticks()
    {
        QFETCH(QList<double>, path);
        StripDrag drag;
        QList<double> ticks;
        for (const double x : path) {
            if (drag.moveTo(x))
                ticks << x;
        }
        QTEST(ticks, "ticks");
    }
};

QTEST_GUILESS_MAIN(StripDragTest)
#include "tst_stripdrag.moc"
