#include "mapview.h"

#include "album/slippymap.h"
#include "app/mappin.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>
#include <QSGTexture>

#include <algorithm>
#include <cmath>

namespace kestrum {

namespace {
// The tile policy asks for this wording, visible on the map.
const QString kAttribution = QStringLiteral("© OpenStreetMap contributors");
constexpr int kAttributionPixelSize = 11;
constexpr double kAttributionPaddingPt = 3.0;
const QColor kAttributionText(0x33, 0x33, 0x33);
const QColor kAttributionBox(255, 255, 255, 200);
// OpenStreetMap's land colour, so that missing tiles do not flash.
const QColor kBackground(0xF2, 0xEF, 0xE9);

/// What the map draws: the background, the tiles in view and the attribution, with the
/// textures of the tiles drawn, which it deletes on the render thread. Image nodes join
/// the tree with their texture set: the software renderer draws them at once.
class MapNode final : public QSGNode {
public:
    explicit MapNode(QQuickWindow& window)
        : background(window.createRectangleNode())
        , attribution(window.createImageNode())
    {
        background->setColor(kBackground);
        appendChildNode(background);
        appendChildNode(tiles);
    }
    ~MapNode() override
    {
        if (!attribution->parent())
            delete attribution;
        qDeleteAll(textures);
        delete attributionTexture;
    }

    QSGRectangleNode* background;
    QSGNode* tiles = new QSGNode;
    QSGImageNode* attribution;
    QSGTexture* attributionTexture = nullptr;
    qreal attributionPixelRatio = 0.0;
    QHash<TileId, QSGTexture*> textures;
};

QImage attributionImage(qreal pixelRatio)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(kAttributionPixelSize);
    const QSizeF size = QFontMetricsF(font).size(Qt::TextSingleLine, kAttribution) +
                        QSizeF(2 * kAttributionPaddingPt, 2 * kAttributionPaddingPt);
    QImage image((size * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(kAttributionBox);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(kAttributionText);
    painter.drawText(QRectF(QPointF(), size), Qt::AlignCenter, kAttribution);
    return image;
}

void drawTile(QSGNode& tiles, int index, QQuickWindow& window, QSGTexture* texture,
              const QRectF& rect, const QRectF& sourceRect)
{
    const bool added = index >= tiles.childCount();
    QSGImageNode* node =
        added ? window.createImageNode() : static_cast<QSGImageNode*>(tiles.childAtIndex(index));
    node->setFiltering(QSGTexture::Linear);
    node->setTexture(texture);
    node->setRect(rect);
    node->setSourceRect(sourceRect);
    if (added)
        tiles.appendChildNode(node);
}
} // namespace

MapView::MapView(QQuickItem* parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setClip(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptTouchEvents(true);
    m_tiles.setSource(s_tileSource);
    connect(&m_tiles, &MapTiles::arrived, this, &QQuickItem::update);
}

MapView::~MapView() = default;

void MapView::setCenterLatitude(double latitude)
{
    MapViewport moved = m_viewport;
    moved.center.latitude = latitude;
    setViewport(fitted(moved));
}

void MapView::setCenterLongitude(double longitude)
{
    MapViewport moved = m_viewport;
    moved.center.longitude = longitude;
    setViewport(fitted(moved));
}

void MapView::setZoomLevel(double zoomLevel)
{
    MapViewport zoomed = m_viewport;
    zoomed.zoomLevel = zoomLevel;
    setViewport(mapviewport::normalised(zoomed));
}

void MapView::setSpanDegrees(double spanDegrees)
{
    if (spanDegrees == m_spanDegrees)
        return;
    m_spanDegrees = spanDegrees;
    emit spanDegreesChanged();
    setViewport(fitted(m_viewport));
}

void MapView::setInteractive(bool interactive)
{
    if (interactive == m_interactive)
        return;
    m_interactive = interactive;
    setAcceptedMouseButtons(interactive ? Qt::LeftButton : Qt::NoButton);
    setAcceptTouchEvents(interactive);
    m_touch = {};
    emit interactiveChanged();
}

void MapView::place(MapPin* pin) const
{
    pin->setPosition(mapviewport::itemPoint(m_viewport, pin->coordinate()));
}

QSGNode* MapView::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData*)
{
    QQuickWindow& view = *window();
    auto* node = static_cast<MapNode*>(oldNode);
    if (!node)
        node = new MapNode(view);
    node->background->setRect(boundingRect());

    const TileRange range = mapviewport::visibleTiles(m_viewport);
    QSet<TileId> drawn;
    int used = 0;
    for (int y = range.firstY; y <= range.lastY; ++y) {
        for (int x = range.firstX; x <= range.lastX; ++x) {
            const TileId tile{range.zoom, slippymap::wrappedColumn(x, range.zoom), y};
            const QImage* image = nullptr;
            slippymap::TileArea area;
            for (int up = 0; !image && up <= std::min(kStandInLevels, tile.zoom); ++up) {
                area = slippymap::ancestorArea(tile, up);
                image = m_tiles.image(area.tile);
            }
            if (!image)
                continue;
            QSGTexture*& texture = node->textures[area.tile];
            if (!texture)
                texture = view.createTextureFromImage(*image);
            drawn.insert(area.tile);
            // Servers may send tiles of more than 256 pixels for sharp screens.
            const double pixelsPerTilePx = texture->textureSize().width() / slippymap::kTileSizePx;
            drawTile(*node->tiles, used++, view, texture,
                     mapviewport::tileRect(m_viewport, range.zoom, x, y),
                     QRectF(area.sourcePx.topLeft() * pixelsPerTilePx,
                            area.sourcePx.size() * pixelsPerTilePx));
        }
    }
    while (node->tiles->childCount() > used) {
        QSGNode* spare = node->tiles->lastChild();
        node->tiles->removeChildNode(spare);
        delete spare;
    }
    for (auto texture = node->textures.begin(); texture != node->textures.end();) {
        if (drawn.contains(texture.key())) {
            ++texture;
            continue;
        }
        delete texture.value();
        texture = node->textures.erase(texture);
    }

    const qreal pixelRatio = view.effectiveDevicePixelRatio();
    if (pixelRatio != node->attributionPixelRatio) {
        const QImage image = attributionImage(pixelRatio);
        delete node->attributionTexture;
        node->attributionTexture = view.createTextureFromImage(image);
        node->attributionPixelRatio = pixelRatio;
        node->attribution->setTexture(node->attributionTexture);
    }
    const QSizeF attributionSize =
        QSizeF(node->attributionTexture->textureSize()) / node->attributionPixelRatio;
    node->attribution->setRect(QRectF(
        QPointF(width(), height()) - QPointF(attributionSize.width(), attributionSize.height()),
        attributionSize));
    if (!node->attribution->parent())
        node->appendChildNode(node->attribution);
    return node;
}

void MapView::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    MapViewport resized = m_viewport;
    resized.size = newGeometry.size();
    setViewport(fitted(resized));
}

void MapView::itemChange(ItemChange change, const ItemChangeData& value)
{
    QQuickItem::itemChange(change, value);
    switch (change) {
    case ItemChildAddedChange:
        if (auto* pin = qobject_cast<MapPin*>(value.item))
            place(pin);
        break;
    case ItemVisibleHasChanged:
        refresh();
        break;
    case ItemSceneChange:
        if (value.window)
            refresh();
        else
            m_tiles.show({}); // leaving its window
        break;
    default:
        break;
    }
}

void MapView::mousePressEvent(QMouseEvent* event)
{
    m_lastMousePoint = event->position();
    setKeepMouseGrab(true);
    event->accept();
}

void MapView::mouseMoveEvent(QMouseEvent* event)
{
    setViewport(mapviewport::panned(m_viewport, event->position() - m_lastMousePoint));
    m_lastMousePoint = event->position();
}

void MapView::mouseReleaseEvent(QMouseEvent*)
{
    setKeepMouseGrab(false);
}

void MapView::touchEvent(QTouchEvent* event)
{
    event->accept();
    QList<QPointF> down;
    for (const QEventPoint& point : event->points()) {
        if (point.state() != QEventPoint::Released)
            down.append(point.position());
    }
    if (down.isEmpty()) {
        touchUngrabEvent();
        return;
    }
    Touch now{down.size(), {}, 0.0};
    for (const QPointF& point : std::as_const(down))
        now.midpoint += point / double(down.size());
    if (down.size() >= 2)
        now.spread = QLineF(down[0], down[1]).length();
    // A finger put down or lifted starts the gesture afresh, so the map does not jump.
    if (now.count == m_touch.count) {
        const bool pinch = now.spread > 0.0 && m_touch.spread > 0.0;
        setViewport(pinch ? mapviewport::pinched(m_viewport, m_touch.midpoint, now.midpoint,
                                                 now.spread / m_touch.spread)
                          : mapviewport::panned(m_viewport, now.midpoint - m_touch.midpoint));
    }
    m_touch = now;
    setKeepTouchGrab(true);
}

void MapView::touchUngrabEvent()
{
    m_touch = {};
    setKeepTouchGrab(false);
}

void MapView::wheelEvent(QWheelEvent* event)
{
    if (!m_interactive || event->angleDelta().y() == 0) {
        event->ignore();
        return;
    }
    const double notches = event->angleDelta().y() / double(QWheelEvent::DefaultDeltasPerStep);
    setViewport(mapviewport::zoomedAbout(
        m_viewport, m_viewport.zoomLevel + notches * kZoomLevelsPerWheelNotch, event->position()));
}

MapViewport MapView::fitted(MapViewport viewport) const
{
    if (m_spanDegrees > 0.0) {
        viewport.zoomLevel =
            mapviewport::zoomLevelForSpan(m_spanDegrees, viewport.center.latitude, viewport.size);
    }
    return mapviewport::normalised(viewport);
}

void MapView::setViewport(const MapViewport& viewport)
{
    if (viewport == m_viewport)
        return;
    const bool moved = viewport.center != m_viewport.center;
    const bool zoomed = viewport.zoomLevel != m_viewport.zoomLevel;
    m_viewport = viewport;
    refresh();
    if (moved)
        emit centerChanged();
    if (zoomed)
        emit zoomLevelChanged();
}

void MapView::refresh()
{
    m_tiles.show(isVisible() && window() ? tilesInView() : QList<TileId>());
    const auto children = childItems();
    for (QQuickItem* child : children) {
        if (auto* pin = qobject_cast<MapPin*>(child))
            place(pin);
    }
    update();
}

QList<TileId> MapView::tilesInView() const
{
    const TileRange range = mapviewport::visibleTiles(m_viewport);
    const QPointF middle(width() / 2.0, height() / 2.0);
    QList<std::pair<double, TileId>> byDistance;
    for (int y = range.firstY; y <= range.lastY; ++y) {
        for (int x = range.firstX; x <= range.lastX; ++x) {
            const QPointF offset =
                mapviewport::tileRect(m_viewport, range.zoom, x, y).center() - middle;
            byDistance.append({QPointF::dotProduct(offset, offset),
                               {range.zoom, slippymap::wrappedColumn(x, range.zoom), y}});
        }
    }
    // The middle of the view comes first.
    std::stable_sort(byDistance.begin(), byDistance.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QList<TileId> tiles;
    for (const auto& entry : std::as_const(byDistance))
        tiles.append(entry.second);
    return tiles;
}

} // namespace kestrum
