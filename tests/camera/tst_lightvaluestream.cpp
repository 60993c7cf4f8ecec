#include "camera/lightvaluestream.h"
#include "camera/lightvaluesubject.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace kestrum;

class LightValueStreamTest : public QObject {
    Q_OBJECT

private slots:
    void filteredStreamPassesNewTenthsOnly_data()
    {
        QTest::addColumn<QList<double>>("sent");
        QTest::addColumn<QList<double>>("received");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("same tenth") << QList<double>{8.04, 8.07} << QList<double>{8.04};
        QTest::newRow("next tenth") << QList<double>{8.04, 8.11} << QList<double>{8.04, 8.11};
        QTest::newRow("both sides of zero truncate to 0")
            << QList<double>{-0.05, 0.05} << QList<double>{-0.05};
        QTest::newRow("not finite never passes")
            << QList<double>{nan, 5.0, inf, -inf, nan} << QList<double>{5.0};
        QTest::newRow("a return passes again")
            << QList<double>{5.0, 6.0, 5.0} << QList<double>{5.0, 6.0, 5.0};
        QTest::newRow("negatives truncate toward zero")
            << QList<double>{-1.19, -1.11, -1.2} << QList<double>{-1.19, -1.2};
    }

    void filteredStreamPassesNewTenthsOnly()
    {
        QFETCH(QList<double>, sent);
        QFETCH(QList<double>, received);
        LightValueSubject subject(sent.takeFirst());
        const LightValueStream stream(&subject, LightValueStream::Filter::finiteDistinctTenths);
        QList<double> heard;
        QObject context;
        stream.subscribe(&context, [&heard](double v) { heard.append(v); });
        for (double v : sent)
            subject.send(v);
        QCOMPARE(heard, received);
    }

    void everySubscriberHearsTheCurrentValueFirst()
    {
        LightValueSubject subject(10.0);
        const LightValueStream stream(&subject, LightValueStream::Filter::finiteDistinctTenths);
        QObject context;
        QList<double> first;
        stream.subscribe(&context, [&first](double v) { first.append(v); });
        subject.send(12.0);
        QList<double> second;
        stream.subscribe(&context, [&second](double v) { second.append(v); });
        subject.send(12.01); // no news for either
        QCOMPARE(first, (QList<double>{10.0, 12.0}));
        QCOMPARE(second, (QList<double>{12.0}));
    }

    void unfilteredStreamPassesRepeatsUntilItsContextEnds()
    {
        LightValueSubject subject(1.0);
        const LightValueStream stream(&subject, LightValueStream::Filter::none);
        int heard = 0;
        {
            QObject context;
            stream.subscribe(&context, [&heard](double) { ++heard; });
            subject.send(1.0);
            QCOMPARE(heard, 2);
        }
        subject.send(2.0);
        QCOMPARE(heard, 2);
    }
};

QTEST_GUILESS_MAIN(LightValueStreamTest)
#include "tst_lightvaluestream.moc"
