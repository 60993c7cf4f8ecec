#include "platform/location/placemark.h"

#include <QTest>

using namespace kestrum;

class LocationTextTest : public QObject {
    Q_OBJECT

private slots:
    void humanReadableLocation_data()
    {
        QTest::addColumn<Placemark>("placemark");
        QTest::addColumn<QString>("expected");
        QTest::newRow("both") << Placemark{"Tour Eiffel", "Paris"} << "Tour Eiffel, Paris";
        QTest::newRow("name only") << Placemark{"Mont Blanc", {}} << "Mont Blanc";
        QTest::newRow("locality only") << Placemark{{}, "Chamonix"} << "Chamonix";
        QTest::newRow("neither") << Placemark{} << "";
        QTest::newRow("empty name") << Placemark{"", "Paris"} << "Paris";
    }

    void humanReadableLocation()
    {
        QFETCH(Placemark, placemark);
        QTEST(kestrum::humanReadableLocation(placemark), "expected");
    }
};

QTEST_GUILESS_MAIN(LocationTextTest)
#include "tst_locationtext.moc"
