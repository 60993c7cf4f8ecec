#include "album/slippymap.h"

#include <QTest>

using namespace kestrum;
using slippymap::TileArea;

Q_DECLARE_METATYPE(Coordinate)
Q_DECLARE_METATYPE(TileArea)

// Tiles and pixels of the Web Mercator world; the figures are the standard slippy-map
// formulas worked out by hand: x = (lon + 180) / 360 · 2^z,
// y = (1 − ln(tan φ + sec φ) / π) / 2 · 2^z tiles.
class SlippyMapTest : public QObject {
    Q_OBJECT

private slots:
    void tileAndPixelOfCoordinate_data()
    {
        QTest::addColumn<Coordinate>("coordinate");
        QTest::addColumn<int>("zoom");
        QTest::addColumn<TileId>("tile");
        QTest::addColumn<QPointF>("pixelInTile");
        const auto row = [](const char* tag, Coordinate coordinate, int zoom, TileId tile,
                            QPointF pixel) {
            QTest::newRow(tag) << coordinate << zoom << tile << pixel;
        };
        row("null island, top-left corner of a tile", {0, 0}, 1, {1, 1, 1}, {0, 0});
        row("Sydney Opera House", {-33.8568, 151.2153}, 15, {15, 30147, 19662}, {243.876, 129.921});
        row("London", {51.5, -0.1276}, 10, {10, 511, 340}, {163.085, 138.227});
        row("north-west corner of the world", {85.0511287798066, -180}, 3, {3, 0, 0}, {0, 0});
        row("beyond the northern edge", {89.9, 0}, 2, {2, 2, 0}, {0, 0});
        // Its world point stays a world east of that column.
        row("180° east wraps to the first column", {0, 180}, 2, {2, 0, 2}, {1024, 0});
        row("south-east corner", {-85.1, 179.99}, 2, {2, 3, 3}, {255.972, 256});
    }

    void tileAndPixelOfCoordinate()
    {
        QFETCH(Coordinate, coordinate);
        QFETCH(int, zoom);
        QFETCH(TileId, tile);
        QFETCH(QPointF, pixelInTile);
        QCOMPARE(slippymap::tileAt(coordinate, zoom), tile);
        const QPointF pixel = slippymap::worldPoint(coordinate, zoom) -
                              QPointF(tile.x, tile.y) * slippymap::kTileSizePx;
        QVERIFY2(qAbs(pixel.x() - pixelInTile.x()) < 1e-3 &&
                     qAbs(pixel.y() - pixelInTile.y()) < 1e-3,
                 qPrintable(QStringLiteral("%1, %2").arg(pixel.x()).arg(pixel.y())));
    }

    void coordinateOfPixel_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<double>("zoomLevel");
        QTest::addColumn<Coordinate>("coordinate");
        QTest::newRow("middle of the world") << QPointF(256, 256) << 1.0 << Coordinate{0, 0};
        // atan(sinh(π/2)) = 66.5133°
        QTest::newRow("a quarter in") << QPointF(128, 128) << 1.0 << Coordinate{66.51326, -90};
        QTest::newRow("top-left corner") << QPointF(0, 0) << 0.0 << Coordinate{85.05113, -180};
        QTest::newRow("west of the world, below it")
            << QPointF(-64, 300) << 0.0 << Coordinate{-85.05113, 90};
        QTest::newRow("fractional zoom") << QPointF(543.0580, 362.0387) << 1.5 << Coordinate{0, 90};
    }

    void coordinateOfPixel()
    {
        QFETCH(QPointF, point);
        QFETCH(double, zoomLevel);
        QFETCH(Coordinate, coordinate);
        const Coordinate found = slippymap::coordinateAt(point, zoomLevel);
        QVERIFY2(qAbs(found.latitude - coordinate.latitude) < 1e-4 &&
                     qAbs(found.longitude - coordinate.longitude) < 1e-4,
                 qPrintable(QStringLiteral("%1, %2").arg(found.latitude).arg(found.longitude)));
    }

    void wrappedColumn_data()
    {
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("zoom");
        QTest::addColumn<int>("wrapped");
        QTest::newRow("in the world") << 2 << 2 << 2;
        QTest::newRow("one west of it") << -1 << 2 << 3;
        QTest::newRow("one east of it") << 4 << 2 << 0;
        QTest::newRow("a world and more east") << 9 << 3 << 1;
    }

    void wrappedColumn()
    {
        QFETCH(int, x);
        QFETCH(int, zoom);
        QTEST(slippymap::wrappedColumn(x, zoom), "wrapped");
    }

    void ancestorStandsIn_data()
    {
        QTest::addColumn<TileId>("tile");
        QTest::addColumn<int>("levels");
        QTest::addColumn<TileArea>("area");
        QTest::newRow("itself") << TileId{3, 5, 6} << 0 << TileArea{{3, 5, 6}, {0, 0, 256, 256}};
        QTest::newRow("parent: right, upper half")
            << TileId{3, 5, 6} << 1 << TileArea{{2, 2, 3}, {128, 0, 128, 128}};
        QTest::newRow("grandparent: second column, third row of quarters")
            << TileId{3, 5, 6} << 2 << TileArea{{1, 1, 1}, {64, 128, 64, 64}};
        QTest::newRow("no further than the whole world")
            << TileId{1, 1, 0} << 3 << TileArea{{0, 0, 0}, {128, 0, 128, 128}};
    }

    void ancestorStandsIn()
    {
        QFETCH(TileId, tile);
        QFETCH(int, levels);
        QTEST(slippymap::ancestorArea(tile, levels), "area");
    }
};

QTEST_GUILESS_MAIN(SlippyMapTest)
#include "tst_slippymap.moc"
