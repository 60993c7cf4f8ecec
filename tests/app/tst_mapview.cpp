#include "app/mappin.h"
#include "app/mapview.h"
#include "support/faketilesource.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(KestrumPlugin)

using namespace kestrum;

Q_DECLARE_METATYPE(Coordinate)

namespace {
// At zoom 1 the 512-point view shows the whole world; the pin, made as the browser makes
// them, stands at 90° E on the equator, 128 points right of the middle.
const QByteArray kWorldMap = R"(
import QtQuick
import Kestrum
MapView {
    width: 512; height: 512
    zoomLevel: 1
    Repeater {
        model: ListModel { ListElement { latitude: 0; longitude: 90 } }
        delegate: MapPin {
            required latitude
            required longitude
        }
    }
})";
// atan(sinh(π/2)): the latitude a quarter of the world below the top edge.
constexpr double kQuarterLatitude = 66.51326;
const QColor kRed(255, 0, 0);
const QColor kBackground(0xF2, 0xEF, 0xE9);

QImage filled(const QColor& colour)
{
    QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

QSet<TileId> tileSet(std::initializer_list<TileId> tiles)
{
    return QSet<TileId>(tiles);
}

QSet<TileId> tileSet(const QList<TileId>& tiles)
{
    return QSet<TileId>(tiles.cbegin(), tiles.cend());
}
} // namespace

// The map item as QML makes it: gestures, pins, the tiles it asks for and what it draws.
class MapViewTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        MapView::setSharedTileSource(&m_source);
        m_source.requested.clear();
        m_source.cancelled.clear();
    }

    void cleanup()
    {
        m_window.reset();
        MapView::setSharedTileSource(nullptr);
    }

    void gesturesMoveTheMapAndItsPins_data()
    {
        QTest::addColumn<QString>("gesture");
        QTest::addColumn<bool>("interactive");
        QTest::addColumn<Coordinate>("center");
        QTest::addColumn<double>("zoomLevel");
        QTest::addColumn<QPointF>("pin");
        QTest::newRow("mouse drag right: the west comes in")
            << "mouse" << true << Coordinate{0, -45} << 1.0 << QPointF(448, 256);
        // 90° E stays under the pointer.
        QTest::newRow("wheel notch over the pin")
            << "wheel" << true << Coordinate{0, 26.36039} << 1.5 << QPointF(384, 256);
        QTest::newRow("finger drag down: the north comes in")
            << "finger" << true << Coordinate{kQuarterLatitude, 0} << 1.0 << QPointF(384, 384);
        QTest::newRow("fingers spread twice as far")
            << "pinch" << true << Coordinate{0, 0} << 2.0 << QPointF(512, 256);
        QTest::newRow("two fingers drag right")
            << "two fingers" << true << Coordinate{0, -45} << 1.0 << QPointF(448, 256);
        QTest::newRow("not interactive: mouse drag")
            << "mouse" << false << Coordinate{0, 0} << 1.0 << QPointF(384, 256);
        QTest::newRow("not interactive: wheel")
            << "wheel" << false << Coordinate{0, 0} << 1.0 << QPointF(384, 256);
        QTest::newRow("not interactive: pinch")
            << "pinch" << false << Coordinate{0, 0} << 1.0 << QPointF(384, 256);
    }

    void gesturesMoveTheMapAndItsPins()
    {
        QFETCH(QString, gesture);
        QFETCH(bool, interactive);
        QFETCH(Coordinate, center);
        QFETCH(double, zoomLevel);
        QFETCH(QPointF, pin);
        MapView* map = show(kWorldMap);
        map->setInteractive(interactive);
        perform(gesture);
        QVERIFY2(
            qAbs(map->centerLatitude() - center.latitude) < 1e-4 &&
                qAbs(map->centerLongitude() - center.longitude) < 1e-4,
            qPrintable(
                QStringLiteral("%1, %2").arg(map->centerLatitude()).arg(map->centerLongitude())));
        QVERIFY2(qAbs(map->zoomLevel() - zoomLevel) < 1e-4,
                 qPrintable(QString::number(map->zoomLevel())));
        const auto children = map->childItems();
        const auto pinItem = std::find_if(children.cbegin(), children.cend(), [](auto* item) {
            return qobject_cast<MapPin*>(item) != nullptr;
        });
        QVERIFY(pinItem != children.cend());
        const QPointF pinAt = (*pinItem)->position();
        QVERIFY2((pinAt - pin).manhattanLength() < 1e-3,
                 qPrintable(QStringLiteral("%1, %2").arg(pinAt.x()).arg(pinAt.y())));
    }

    void spanSetsTheZoomForTheSize()
    {
        MapView* map = show(R"(
import Kestrum
MapView { width: 400; height: 400; spanDegrees: 0.01 })");
        // 360 · 400 / (256 · 0.01) = 2^15.7796 at the equator.
        QVERIFY(qAbs(map->zoomLevel() - 15.77957) < 1e-4);
        map->setWidth(800);
        map->setHeight(200); // half the height: one level out
        QVERIFY2(qAbs(map->zoomLevel() - 14.77957) < 1e-4,
                 qPrintable(QString::number(map->zoomLevel())));
    }

    void asksForTheTilesInViewOnly()
    {
        // ±128 points about the middle of a 1024-point world.
        MapView* map = show(R"(
import Kestrum
MapView { width: 256; height: 256; zoomLevel: 2 })");
        QCOMPARE(tileSet(m_source.requested),
                 tileSet({{2, 1, 1}, {2, 2, 1}, {2, 1, 2}, {2, 2, 2}}));
        m_source.answer({2, 2, 2}, QImage()); // not to be had
        m_source.requested.clear();

        map->setCenterLongitude(67.5); // ¾ of a tile east: column 3 comes in, 1 leaves
        QCOMPARE(tileSet(m_source.requested), tileSet({{2, 3, 1}, {2, 3, 2}}));
        QCOMPARE(tileSet(m_source.cancelled), tileSet({{2, 1, 1}, {2, 1, 2}}));

        map->setVisible(false);
        QCOMPARE(tileSet(m_source.cancelled),
                 tileSet({{2, 1, 1}, {2, 1, 2}, {2, 2, 1}, {2, 3, 1}, {2, 3, 2}}));
        m_source.requested.clear();
        map->setCenterLongitude(0);
        QVERIFY(m_source.requested.isEmpty());
        // Back in view, the missing tile is tried again.
        map->setVisible(true);
        QCOMPARE(tileSet(m_source.requested),
                 tileSet({{2, 1, 1}, {2, 2, 1}, {2, 1, 2}, {2, 2, 2}}));
    }

    void drawsTilesOverItsBackground()
    {
        MapView* map = show(kWorldMap);
        m_source.answer({1, 0, 0}, filled(kRed));
        QImage picture = m_window->grabWindow();
        QCOMPARE(picture.pixelColor(100, 100), kRed);
        QCOMPARE(picture.pixelColor(400, 100), kBackground); // not come yet
        // The attribution's dark letters at the bottom right, on the background elsewhere.
        const auto hasLetters = [&picture](QRect area) {
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x) {
                    if (qGray(picture.pixel(x, y)) < 100)
                        return true;
                }
            }
            return false;
        };
        QVERIFY(hasLetters(QRect(412, 496, 100, 16)));
        QVERIFY(!hasLetters(QRect(300, 300, 100, 16)));

        // One zoom in, its missing children show it enlarged.
        map->setZoomLevel(2);
        picture = m_window->grabWindow();
        QCOMPARE(picture.pixelColor(100, 100), kRed);
        QCOMPARE(picture.pixelColor(400, 100), kBackground);
    }

private:
    MapView* show(const QByteArray& qml)
    {
        m_window = std::make_unique<QQuickView>();
        m_window->engine()->addImportPath(QStringLiteral("qrc:/"));
        QQmlComponent component(m_window->engine());
        component.setData(qml, QUrl(QStringLiteral("qrc:/tst_mapview/Map.qml")));
        auto* map = qobject_cast<MapView*>(component.create());
        if (!map)
            qFatal("%s", qPrintable(component.errorString()));
        m_window->setContent(QUrl(), &component, map);
        m_window->resize(int(map->width()), int(map->height()));
        m_window->show();
        if (!QTest::qWaitForWindowExposed(m_window.get()))
            qFatal("the map's window never showed");
        return map;
    }

    void perform(const QString& gesture)
    {
        QQuickView* window = m_window.get();
        if (gesture == u"mouse") {
            QTest::mousePress(window, Qt::LeftButton, {}, QPoint(256, 256));
            QTest::mouseMove(window, QPoint(288, 256));
            QTest::mouseMove(window, QPoint(320, 256));
            QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(320, 256));
        } else if (gesture == u"wheel") {
            QWheelEvent wheel(QPointF(384, 256), window->mapToGlobal(QPointF(384, 256)), {},
                              QPoint(0, QWheelEvent::DefaultDeltasPerStep), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QGuiApplication::sendEvent(window, &wheel);
        } else if (gesture == u"finger") {
            QTest::touchEvent(window, m_touchScreen).press(0, {256, 256});
            QTest::touchEvent(window, m_touchScreen).move(0, {256, 320});
            QTest::touchEvent(window, m_touchScreen).move(0, {256, 384});
            QTest::touchEvent(window, m_touchScreen).release(0, {256, 384});
        } else {
            const int to = gesture == u"pinch" ? 128 : 256;
            const int spread = gesture == u"pinch" ? 256 : 128;
            QTest::touchEvent(window, m_touchScreen).press(0, {192, 256}).press(1, {320, 256});
            QTest::touchEvent(window, m_touchScreen).move(0, {to, 256}).move(1, {to + spread, 256});
            QTest::touchEvent(window, m_touchScreen)
                .release(0, {to, 256})
                .release(1, {to + spread, 256});
        }
    }

    FakeTileSource m_source;
    QPointingDevice* m_touchScreen = QTest::createTouchDevice();
    std::unique_ptr<QQuickView> m_window;
};

QTEST_MAIN(MapViewTest)
#include "tst_mapview.moc"
