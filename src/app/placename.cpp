#include "placename.h"

#include "album/locationmanager.h"

namespace kestrum {

PlaceName::PlaceName(LocationManager& locationManager, double latitude, double longitude,
                     QObject* parent)
    : QObject(parent)
{
    locationManager.placemark(Location{latitude, longitude, 0.0})
        .then(this,
              [this](const std::optional<Placemark>& placemark) {
                  finish(placemark ? humanReadableLocation(*placemark) : QString());
              })
        .onCanceled(this, [this] { finish(QString()); });
}

void PlaceName::finish(const QString& text)
{
    m_text = text;
    m_finished = true;
    emit finishedChanged();
}

} // namespace kestrum
