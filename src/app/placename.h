#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

class LocationManager;

/// The name of the place at one coordinate, as the detail view of a logged photo shows it
/// ("name, locality", the parts that are known), looked up once when it is made.
/// `text` stays empty until the answer comes, and when no place is known there.
class PlaceName : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by LoggedPhotos.placeName(latitude, longitude)")
    Q_PROPERTY(QString text READ text NOTIFY finishedChanged)
    Q_PROPERTY(bool finished READ finished NOTIFY finishedChanged)

public:
    PlaceName(LocationManager& locationManager, double latitude, double longitude,
              QObject* parent = nullptr);

    const QString& text() const { return m_text; }
    /// Whether the lookup has ended, with a name or without one.
    bool finished() const { return m_finished; }

signals:
    void finishedChanged();

private:
    void finish(const QString& text);

    QString m_text;
    bool m_finished = false;
};

} // namespace kestrum
