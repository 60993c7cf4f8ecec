#pragma once

#include "album/mapregion.h"

#include "app/placename.h"
#include "app/syncedlistmodel.h"

#include <QDateTime>
#include <QUrl>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class LocationManager;
class PhotoAlbum;

/// The logged photos, newest first, for the browser (`LoggedPhotos`): one row per photo
/// with its exposure texts, date and position, and the URLs of its pictures.
///
/// The pictures come from the "loggedphotos" image provider, which `create()` installs in
/// the engine that asks for this singleton. `placeName` names the place of a position.
/// The base is named in full because QML tools match base classes by their full names.
class LoggedPhotoModel : public kestrum::SyncedListModel {
    Q_OBJECT
    QML_NAMED_ELEMENT(LoggedPhotos)
    QML_SINGLETON
    /// Where the map opens: on the newest photo with a position, spanning `mapSpanDegrees`
    /// each way; `hasPositionedPhoto` is false when no photo has a position.
    Q_PROPERTY(bool hasPositionedPhoto READ hasPositionedPhoto NOTIFY mapRegionChanged)
    Q_PROPERTY(double mapCenterLatitude READ mapCenterLatitude NOTIFY mapRegionChanged)
    Q_PROPERTY(double mapCenterLongitude READ mapCenterLongitude NOTIFY mapRegionChanged)
    Q_PROPERTY(double mapSpanDegrees READ mapSpanDegrees CONSTANT)

public:
    enum Role {
        LocalIdentifierRole = Qt::UserRole + 1, ///< the photo's identity in the library
        ApertureRole,                           ///< "2.8"
        SpeedRole,                              ///< "1/500s", "2.0s"
        IsoRole,                                ///< "200"
        CompensationRole,                       ///< "+0.33 EV", "±0 EV"
        DateRole,                               ///< when it was taken
        HasCoordinateRole,                      ///< whether it carries a position
        LatitudeRole,                           ///< degrees, south negative; 0 without position
        LongitudeRole,                          ///< degrees, west negative; 0 without position
        PreviewSourceRole,                      ///< image URL of the preview
        FullSizeSourceRole,                     ///< image URL of the full-size picture
    };
    Q_ENUM(Role)

    /// Both must outlive the model.
    LoggedPhotoModel(PhotoAlbum& album, LocationManager& locationManager,
                     QObject* parent = nullptr);

    static LoggedPhotoModel* create(QQmlEngine* engine, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(LoggedPhotoModel* instance) { s_instance = instance; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The name of the place at a position, looked up now; the caller (QML) owns it.
    Q_INVOKABLE kestrum::PlaceName* placeName(double latitude, double longitude);
    /// The photo in `row`, every role by its name; empty for a row that is not there.
    Q_INVOKABLE QVariantMap photoAt(int row) const;

    bool hasPositionedPhoto() const { return m_mapRegion.has_value(); }
    double mapCenterLatitude() const { return m_mapRegion ? m_mapRegion->centerLatitude : 0.0; }
    double mapCenterLongitude() const { return m_mapRegion ? m_mapRegion->centerLongitude : 0.0; }
    static double mapSpanDegrees() { return MapRegion::kPhotoSpanDegrees; }

signals:
    void mapRegionChanged();

private:
    struct Row {
        QString localIdentifier;
        QString aperture;
        QString speed;
        QString iso;
        QString compensation;
        QDateTime date;
        bool hasCoordinate = false;
        double latitude = 0.0;
        double longitude = 0.0;
        friend bool operator==(const Row&, const Row&) = default;
    };
    void refresh();
    static QUrl pictureUrl(const char* kind, const QString& localIdentifier);

    static inline LoggedPhotoModel* s_instance = nullptr;

    PhotoAlbum& m_album;
    LocationManager& m_locationManager;
    QList<Row> m_rows;
    std::optional<MapRegion> m_mapRegion;
};

} // namespace kestrum
