#pragma once

#include "platform/location/coordinate.h"

#include <QQuickItem>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

/// A place on a map (`MapPin`): a child of a `MapView` that the map keeps at its
/// `latitude` and `longitude` (degrees) through every pan and zoom. The pin has no size;
/// its point (0, 0) is the coordinate, so what it holds centres on the place with
/// `anchors.centerIn: parent`, or stands on it with `anchors.bottom: parent.top`.
/// Pins may come from a Repeater inside the map; nested deeper, they stay where they are.
class MapPin : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double latitude READ latitude WRITE setLatitude NOTIFY coordinateChanged)
    Q_PROPERTY(double longitude READ longitude WRITE setLongitude NOTIFY coordinateChanged)

public:
    using QQuickItem::QQuickItem;

    const Coordinate& coordinate() const { return m_coordinate; }
    double latitude() const { return m_coordinate.latitude; }
    void setLatitude(double latitude);
    double longitude() const { return m_coordinate.longitude; }
    void setLongitude(double longitude);

signals:
    void coordinateChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    void moveTo(Coordinate coordinate);

    Coordinate m_coordinate;
};

} // namespace kestrum
