#pragma once

#include "album/mapviewport.h"
#include "app/maptiles.h"

#include <QPointF>
#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

class MapPin;
class TileSource;

/// A map of OpenStreetMap tiles for the screens (`MapView`).
///
/// It shows the world around `centerLatitude`, `centerLongitude` (degrees) at
/// `zoomLevel` (0, the whole world in 256 points, to 19; fractional levels scale the
/// nearest level's tiles). With `spanDegrees` above 0 the zoom level is the one at which
/// that many degrees of latitude and of longitude around the centre fit into the view,
/// worked out again whenever the size, the centre (set from QML) or the span changes.
///
/// While `interactive` (the default), a drag pans the map, a pinch zooms about the
/// fingers, and the mouse wheel zooms about the pointer; the centre and zoom level follow.
///
/// Tiles come from the tile source the composition root offers
/// (`setSharedTileSource`), only while the map is visible in a window, and are drawn as
/// they come; a tile still missing shows a kept tile of a lower zoom enlarged, or the
/// plain background. "© OpenStreetMap contributors" stands at the bottom right.
///
/// A `MapPin` child stays at its coordinate:
///
///     MapView {
///         centerLatitude: photo.latitude; centerLongitude: photo.longitude
///         spanDegrees: 0.01
///         MapPin { latitude: photo.latitude; longitude: photo.longitude
///                  Rectangle { anchors.centerIn: parent; width: 12; height: 12; radius: 6 } }
///     }
class MapView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        double centerLatitude READ centerLatitude WRITE setCenterLatitude NOTIFY centerChanged)
    Q_PROPERTY(
        double centerLongitude READ centerLongitude WRITE setCenterLongitude NOTIFY centerChanged)
    Q_PROPERTY(double zoomLevel READ zoomLevel WRITE setZoomLevel NOTIFY zoomLevelChanged)
    Q_PROPERTY(double spanDegrees READ spanDegrees WRITE setSpanDegrees NOTIFY spanDegreesChanged)
    Q_PROPERTY(bool interactive READ interactive WRITE setInteractive NOTIFY interactiveChanged)

public:
    /// One notch of a mouse wheel.
    static constexpr double kZoomLevelsPerWheelNotch = 0.5;
    /// How many zooms out a kept tile may stand in for a missing one (16 times enlarged).
    static constexpr int kStandInLevels = 4;

    /// The tiles every map view draws from; the composition root sets it before QML loads.
    /// Null: maps show their background only.
    static void setSharedTileSource(TileSource* source) { s_tileSource = source; }

    explicit MapView(QQuickItem* parent = nullptr);
    ~MapView() override;

    double centerLatitude() const { return m_viewport.center.latitude; }
    void setCenterLatitude(double latitude);
    double centerLongitude() const { return m_viewport.center.longitude; }
    void setCenterLongitude(double longitude);
    double zoomLevel() const { return m_viewport.zoomLevel; }
    void setZoomLevel(double zoomLevel);
    double spanDegrees() const { return m_spanDegrees; }
    void setSpanDegrees(double spanDegrees);
    bool interactive() const { return m_interactive; }
    void setInteractive(bool interactive);

    /// Moves `pin` (a child) to its coordinate.
    void place(MapPin* pin) const;

signals:
    void centerChanged();
    void zoomLevelChanged();
    void spanDegreesChanged();
    void interactiveChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void touchEvent(QTouchEvent* event) override;
    void touchUngrabEvent() override;
    void wheelEvent(QWheelEvent* event) override;

private:
    /// Where the fingers were at the last touch event.
    struct Touch {
        qsizetype count = 0;
        QPointF midpoint;
        double spread = 0.0; // between the first two fingers
    };

    /// `viewport` normalised, at the zoom level that shows the span when one is set.
    MapViewport fitted(MapViewport viewport) const;
    void setViewport(const MapViewport& viewport);
    /// Asks for the tiles in view, places the pins and repaints.
    void refresh();
    QList<TileId> tilesInView() const;

    static inline TileSource* s_tileSource = nullptr;

    MapViewport m_viewport;
    double m_spanDegrees = 0.0;
    bool m_interactive = true;
    QPointF m_lastMousePoint;
    Touch m_touch;
    MapTiles m_tiles;
};

} // namespace kestrum
