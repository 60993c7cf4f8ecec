#include "platform/location/placemark.h"

#include <QTest>

using namespace kestrum;

class LocationTextTest : public QObject {
    Q_OBJECT

private slots:
    void humanReadableLocation_data()
    {
        QTest::addColumn<std::optional<QString>>("name");
        QTest::addColumn<std::optional<QString>>("locality");
        QTest::addColumn<QString>("expected");
        const std::optional<QString> absent;
        QTest::newRow("both") << std::optional<QString>("Tour Eiffel")
                              << std::optional<QString>("Paris") << "Tour Eiffel, Paris";
        QTest::newRow("name only")
            << std::optional<QString>("Mont Blanc") << absent << "Mont Blanc";
        QTest::newRow("locality only")
            << absent << std::optional<QString>("Chamonix") << "Chamonix";
        QTest::newRow("neither") << absent << absent << "";
        QTest::newRow("empty name")
            << std::optional<QString>("") << std::optional<QString>("Paris") << "Paris";
    }

    void humanReadableLocation()
    {
        QFETCH(std::optional<QString>, name);
        QFETCH(std::optional<QString>, locality);
        QFETCH(QString, expected);
        QCOMPARE(kestrum::humanReadableLocation(Placemark{name, locality}), expected);
    }
};

QTEST_GUILESS_MAIN(LocationTextTest)
#include "tst_locationtext.moc"
