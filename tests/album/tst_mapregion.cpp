#include "album/mapregion.h"

#include <QTest>

using namespace kestrum;

using Positions = QList<std::optional<Coordinate>>;
Q_DECLARE_METATYPE(Positions)

// The browser's map opens on the newest photo that has a position.
class MapRegionTest : public QObject {
    Q_OBJECT

private slots:
    void region_data()
    {
        QTest::addColumn<Positions>("positions"); // newest first
        QTest::addColumn<bool>("shown");
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");

        const Coordinate sydney{-33.8568, 151.2153};
        const Coordinate reykjavik{64.1466, -21.9426};
        QTest::newRow("empty album") << Positions{} << false << 0.0 << 0.0;
        QTest::newRow("none positioned")
            << Positions{std::nullopt, std::nullopt} << false << 0.0 << 0.0;
        QTest::newRow("only the oldest of three")
            << Positions{std::nullopt, std::nullopt, sydney} << true << -33.8568 << 151.2153;
        QTest::newRow("the newest positioned, not a fit of all")
            << Positions{std::nullopt, reykjavik, sydney} << true << 64.1466 << -21.9426;
    }
    void region()
    {
        QFETCH(Positions, positions);
        QList<LoggedExposure> exposures;
        namespace key = imageproperty;
        const ImageProperties properties{
            {key::kExifDictionary, QVariantMap{{key::kISOSpeed, qint64(100)},
                                               {key::kFNumber, 2.8},
                                               {key::kExposureTime, 0.01},
                                               {key::kExposureBiasValue, 0.0}}}};
        for (const auto& position : positions) {
            auto exposure = LoggedExposure::fromProperties(QString::number(exposures.size()), {},
                                                           {}, properties);
            exposure->setCoordinate(position);
            exposures.append(*exposure);
        }
        const std::optional<MapRegion> region = browserMapRegion(exposures);
        QFETCH(bool, shown);
        QCOMPARE(region.has_value(), shown);
        if (!region)
            return;
        QTEST(region->centerLatitude, "latitude");
        QTEST(region->centerLongitude, "longitude");
        QCOMPARE(region->latitudeSpan, 0.01);
        QCOMPARE(region->longitudeSpan, 0.01);
    }
};

QTEST_GUILESS_MAIN(MapRegionTest)
#include "tst_mapregion.moc"
