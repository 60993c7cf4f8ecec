#include "loggedphotomodel.h"

#include "album/photoalbum.h"
#include "app/loggedphotoimageprovider.h"
#include "app/placename.h"
#include "app/qmlsingleton.h"

#include <QQmlEngine>

namespace kestrum {

LoggedPhotoModel::LoggedPhotoModel(PhotoAlbum& album, LocationManager& locationManager,
                                   QObject* parent)
    : SyncedListModel(parent)
    , m_album(album)
    , m_locationManager(locationManager)
{
    connect(&album, &PhotoAlbum::loggedExposuresChanged, this, &LoggedPhotoModel::refresh);
    refresh();
}

LoggedPhotoModel* LoggedPhotoModel::create(QQmlEngine* engine, QJSEngine*)
{
    const QString providerId = QLatin1String(LoggedPhotoImageProvider::kProviderId);
    if (s_instance && !engine->imageProvider(providerId))
        engine->addImageProvider(providerId, new LoggedPhotoImageProvider(s_instance->m_album));
    return offeredSingleton(s_instance, "LoggedPhotos");
}

void LoggedPhotoModel::refresh()
{
    QList<Row> rows;
    for (const LoggedExposure& exposure : m_album.loggedExposures()) {
        const auto coordinate = exposure.coordinate();
        rows.append({exposure.localIdentifier(), exposure.aperture(), exposure.speed(),
                     exposure.iso(), exposure.compensation(), exposure.date(),
                     coordinate.has_value(), coordinate ? coordinate->latitude : 0.0,
                     coordinate ? coordinate->longitude : 0.0});
    }
    sync(m_rows, rows, [](const Row& row) { return row.localIdentifier; });
    const std::optional<MapRegion> region = browserMapRegion(m_album.loggedExposures());
    const bool moved = region.has_value() != m_mapRegion.has_value() ||
                       (region && (region->centerLatitude != m_mapRegion->centerLatitude ||
                                   region->centerLongitude != m_mapRegion->centerLongitude));
    m_mapRegion = region;
    if (moved)
        emit mapRegionChanged();
}

QVariantMap LoggedPhotoModel::photoAt(int row) const
{
    QVariantMap photo;
    if (row < 0 || row >= rowCount())
        return photo;
    const QHash<int, QByteArray> roles = roleNames();
    for (auto role = roles.cbegin(); role != roles.cend(); ++role)
        photo.insert(QString::fromLatin1(role.value()), data(index(row), role.key()));
    return photo;
}

int LoggedPhotoModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QUrl LoggedPhotoModel::pictureUrl(const char* kind, const QString& localIdentifier)
{
    return QUrl(QStringLiteral("image://%1/%2/%3")
                    .arg(QLatin1String(LoggedPhotoImageProvider::kProviderId), QLatin1String(kind),
                         QString::fromLatin1(QUrl::toPercentEncoding(localIdentifier))));
}

QVariant LoggedPhotoModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (Role(role)) {
    case LocalIdentifierRole:
        return row.localIdentifier;
    case ApertureRole:
        return row.aperture;
    case SpeedRole:
        return row.speed;
    case IsoRole:
        return row.iso;
    case CompensationRole:
        return row.compensation;
    case DateRole:
        return row.date;
    case HasCoordinateRole:
        return row.hasCoordinate;
    case LatitudeRole:
        return row.latitude;
    case LongitudeRole:
        return row.longitude;
    case PreviewSourceRole:
        return pictureUrl(LoggedPhotoImageProvider::kPreviewPath, row.localIdentifier);
    case FullSizeSourceRole:
        return pictureUrl(LoggedPhotoImageProvider::kFullSizePath, row.localIdentifier);
    }
    return {};
}

QHash<int, QByteArray> LoggedPhotoModel::roleNames() const
{
    return {{LocalIdentifierRole, "localIdentifier"},
            {ApertureRole, "aperture"},
            {SpeedRole, "speed"},
            {IsoRole, "iso"},
            {CompensationRole, "compensation"},
            {DateRole, "date"},
            {HasCoordinateRole, "hasCoordinate"},
            {LatitudeRole, "latitude"},
            {LongitudeRole, "longitude"},
            {PreviewSourceRole, "previewSource"},
            {FullSizeSourceRole, "fullSizeSource"}};
}

PlaceName* LoggedPhotoModel::placeName(double latitude, double longitude)
{
    auto* place = new PlaceName(m_locationManager, latitude, longitude);
    QJSEngine::setObjectOwnership(place, QJSEngine::JavaScriptOwnership);
    return place;
}

} // namespace kestrum
