#include "album/mapviewport.h"
#include "platform/map/tileid.h"

#include <QTest>

using namespace kestrum;
namespace view = mapviewport;

Q_DECLARE_METATYPE(Coordinate)
Q_DECLARE_METATYPE(MapViewport)
Q_DECLARE_METATYPE(TileRange)

namespace {
const QSizeF kSquare(512, 512); // the whole world at zoom 1
// atan(sinh(π/2)): the latitude a quarter of the world below the top edge.
constexpr double kQuarterLatitude = 66.51326;

MapViewport at(Coordinate center, double zoomLevel, QSizeF size = kSquare)
{
    return {center, zoomLevel, size};
}

bool near(QPointF a, QPointF b)
{
    return qAbs(a.x() - b.x()) < 1e-3 && qAbs(a.y() - b.y()) < 1e-3;
}

void compareViews(const MapViewport& found, const MapViewport& expected)
{
    QVERIFY2(qAbs(found.center.latitude - expected.center.latitude) < 1e-4 &&
                 qAbs(found.center.longitude - expected.center.longitude) < 1e-4 &&
                 qAbs(found.zoomLevel - expected.zoomLevel) < 1e-4,
             qPrintable(QStringLiteral("%1, %2 at %3")
                            .arg(found.center.latitude)
                            .arg(found.center.longitude)
                            .arg(found.zoomLevel)));
}
} // namespace

// A map view's arithmetic. The figures are worked out by hand on worlds of 256 · 2^z
// pixels: at zoom 1 a 512-point square view shows the whole world, a degree of longitude
// being 512 / 360 points.
class MapViewportTest : public QObject {
    Q_OBJECT

private slots:
    void tilesInView_data()
    {
        QTest::addColumn<MapViewport>("viewport");
        QTest::addColumn<TileRange>("tiles");
        QTest::newRow("whole world") << at({0, 0}, 1) << TileRange{1, 0, 1, 0, 1};
        // Centre (512, 512) of a 1024-pixel world, ±150 across and ±100 down.
        QTest::newRow("middle tiles") << at({0, 0}, 2, {300, 200}) << TileRange{2, 1, 2, 1, 2};
        // Zoom 2 tiles drawn at 2^−0.4 = 0.758: ±264 pixels of them either way.
        QTest::newRow("fractional zoom draws the nearest zoom")
            << at({0, 0}, 1.6, {400, 400}) << TileRange{2, 0, 3, 0, 3};
        QTest::newRow("across 180°, columns run on")
            << at({0, 180}, 1, {256, 256}) << TileRange{1, 1, 2, 0, 1};
        // 80° N lies 115 pixels below the top; the view reaches 141 above it.
        QTest::newRow("rows stop at the top edge")
            << at({80, 0}, 2, {256, 512}) << TileRange{2, 1, 2, 0, 1};
        // Sydney Opera House lies at (243.9, 129.9) in tile 30147, 19662.
        QTest::newRow("Sydney at zoom 15") << at({-33.8568, 151.2153}, 15, {100, 100})
                                           << TileRange{15, 30147, 30148, 19662, 19662};
        QTest::newRow("empty view") << at({0, 0}, 3, {0, 0}) << TileRange{3};
    }

    void tilesInView()
    {
        QFETCH(MapViewport, viewport);
        QTEST(view::visibleTiles(viewport), "tiles");
    }

    void whereTilesAreDrawn_data()
    {
        QTest::addColumn<MapViewport>("viewport");
        QTest::addColumn<TileId>("tile");
        QTest::addColumn<QRectF>("rect");
        QTest::newRow("south-east quarter")
            << at({0, 0}, 1) << TileId{1, 1, 1} << QRectF(256, 256, 256, 256);
        QTest::newRow("north-west quarter")
            << at({0, 0}, 1) << TileId{1, 0, 0} << QRectF(0, 0, 256, 256);
        // Zoom 2 tiles at 2^−0.5: 181.02 points a side.
        QTest::newRow("scaled, from the middle")
            << at({0, 0}, 1.5) << TileId{2, 2, 2} << QRectF(256, 256, 181.019, 181.019);
        QTest::newRow("scaled, up and left")
            << at({0, 0}, 1.5) << TileId{2, 1, 1} << QRectF(74.981, 74.981, 181.019, 181.019);
        QTest::newRow("the column east of the world")
            << at({0, 180}, 1, {256, 256}) << TileId{1, 2, 0} << QRectF(128, -128, 256, 256);
    }

    void whereTilesAreDrawn()
    {
        QFETCH(MapViewport, viewport);
        QFETCH(TileId, tile);
        QFETCH(QRectF, rect);
        const QRectF found = view::tileRect(viewport, tile.zoom, tile.x, tile.y);
        QVERIFY2(
            near(found.topLeft(), rect.topLeft()) && near(found.bottomRight(), rect.bottomRight()),
            qPrintable(
                QStringLiteral("%1, %2, %3").arg(found.x()).arg(found.y()).arg(found.width())));
    }

    void whereCoordinatesAppear_data()
    {
        QTest::addColumn<MapViewport>("viewport");
        QTest::addColumn<Coordinate>("coordinate");
        QTest::addColumn<QPointF>("point");
        QTest::newRow("the centre") << at({-33.8568, 151.2153}, 15, {390, 300})
                                    << Coordinate{-33.8568, 151.2153} << QPointF(195, 150);
        QTest::newRow("90° east") << at({0, 0}, 1) << Coordinate{0, 90} << QPointF(384, 256);
        QTest::newRow("north-west")
            << at({0, 0}, 1) << Coordinate{kQuarterLatitude, -90} << QPointF(128, 128);
        // 2° east, across 180°: 2 / 360 · 1024 = 5.69 points right of the middle.
        QTest::newRow("the nearer copy of the world")
            << at({0, 179}, 2, {256, 256}) << Coordinate{0, -179} << QPointF(133.689, 128);
    }

    void whereCoordinatesAppear()
    {
        QFETCH(MapViewport, viewport);
        QFETCH(Coordinate, coordinate);
        QFETCH(QPointF, point);
        const QPointF found = view::itemPoint(viewport, coordinate);
        QVERIFY2(near(found, point),
                 qPrintable(QStringLiteral("%1, %2").arg(found.x()).arg(found.y())));
    }

    void gesturesMoveTheView_data()
    {
        QTest::addColumn<MapViewport>("before");
        QTest::addColumn<QString>("gesture");
        QTest::addColumn<QPointF>("from");
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<double>("zoomOrScale");
        QTest::addColumn<MapViewport>("after");
        const auto row = [](const char* tag, MapViewport before, const char* gesture, QPointF from,
                            QPointF to, double zoomOrScale, MapViewport after) {
            QTest::newRow(tag) << before << QString::fromLatin1(gesture) << from << to
                               << zoomOrScale << after;
        };
        const MapViewport world = at({0, 0}, 1);
        row("drag right: west comes into view", world, "pan", {0, 0}, {128, 0}, 0, at({0, -90}, 1));
        row("drag down: north", world, "pan", {0, 0}, {0, 128}, 0, at({kQuarterLatitude, 0}, 1));
        row("drag left across 180°", at({0, 170}, 1), "pan", {0, 0}, {-64, 0}, 0, at({0, -145}, 1));
        row("dragged past the pole stops at the edge", at({80, 0}, 0, {256, 256}), "pan", {0, 0},
            {0, 200}, 0, at({85.05113, 0}, 0));
        row("zoom about the middle", world, "zoom", {256, 256}, {}, 2, at({0, 0}, 2));
        // 90° E stays at x 384: the centre comes to 45° E.
        row("zoom about a point east", world, "zoom", {384, 256}, {}, 2, at({0, 45}, 2));
        row("half a level about it", world, "zoom", {384, 256}, {}, 1.5, at({0, 26.36039}, 1.5));
        row("no deeper than tiles go", world, "zoom", {256, 256}, {}, 25, at({0, 0}, 19));
        row("no further out than the world", world, "zoom", {256, 256}, {}, -3, at({0, 0}, 0));
        row("fingers spread twice as far", world, "pinch", {256, 256}, {256, 256}, 2,
            at({0, 0}, 2));
        row("two fingers drag", world, "pinch", {256, 256}, {384, 256}, 1, at({0, -90}, 1));
        row("pinch east of the middle", world, "pinch", {384, 256}, {384, 256}, 2, at({0, 45}, 2));
    }

    void gesturesMoveTheView()
    {
        QFETCH(MapViewport, before);
        QFETCH(QString, gesture);
        QFETCH(QPointF, from);
        QFETCH(QPointF, to);
        QFETCH(double, zoomOrScale);
        QFETCH(MapViewport, after);
        const MapViewport moved = gesture == u"pan" ? view::panned(before, to - from)
                                  : gesture == u"zoom"
                                      ? view::zoomedAbout(before, zoomOrScale, from)
                                      : view::pinched(before, from, to, zoomOrScale);
        compareViews(moved, after);
    }

    void zoomThatShowsASpan_data()
    {
        QTest::addColumn<double>("spanDegrees");
        QTest::addColumn<double>("latitude");
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<double>("zoomLevel");
        // 360 · 400 / (256 · 0.01) = 56250 = 2^15.7796 at the equator, both ways.
        QTest::newRow("a hundredth of a degree") << 0.01 << 0.0 << QSizeF(400, 400) << 15.77957;
        // At 60° a degree of latitude takes twice the pixels: one level less.
        QTest::newRow("at 60° north") << 0.01 << 60.0 << QSizeF(400, 400) << 14.77957;
        QTest::newRow("a wide view fits the height") << 0.01 << 0.0 << QSizeF(800, 200) << 14.77957;
        QTest::newRow("the whole world in a tile") << 360.0 << 0.0 << QSizeF(256, 256) << 0.0;
        QTest::newRow("a millionth: the deepest zoom") << 1e-6 << 0.0 << QSizeF(400, 400) << 19.0;
        QTest::newRow("no view yet") << 0.01 << 0.0 << QSizeF(0, 0) << 0.0;
        QTest::newRow("no span") << 0.0 << 0.0 << QSizeF(400, 400) << 0.0;
    }

    void zoomThatShowsASpan()
    {
        QFETCH(double, spanDegrees);
        QFETCH(double, latitude);
        QFETCH(QSizeF, size);
        QFETCH(double, zoomLevel);
        const double found = view::zoomLevelForSpan(spanDegrees, latitude, size);
        QVERIFY2(qAbs(found - zoomLevel) < 1e-4, qPrintable(QString::number(found)));
    }
};

QTEST_GUILESS_MAIN(MapViewportTest)
#include "tst_mapviewport.moc"
