#include "mappin.h"

#include "app/mapview.h"

namespace kestrum {

void MapPin::setLatitude(double latitude)
{
    moveTo({latitude, m_coordinate.longitude});
}

void MapPin::setLongitude(double longitude)
{
    moveTo({m_coordinate.latitude, longitude});
}

void MapPin::itemChange(ItemChange change, const ItemChangeData& value)
{
    QQuickItem::itemChange(change, value);
    if (change != ItemParentHasChanged)
        return;
    if (auto* map = qobject_cast<MapView*>(value.item))
        map->place(this);
}

void MapPin::moveTo(Coordinate coordinate)
{
    if (coordinate == m_coordinate)
        return;
    m_coordinate = coordinate;
    emit coordinateChanged();
    if (auto* map = qobject_cast<MapView*>(parentItem()))
        map->place(this);
}

} // namespace kestrum
