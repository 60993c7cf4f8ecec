#pragma once

#include "camera/faceoutlinevisibility.h"
#include "camera/tapmarker.h"

#include <QObject>
#include <QRectF>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class Clock;

/// What the preview draws over the picture, and when (`PreviewOverlays`): the tap
/// marker, which fades out 2.0 s after the tap and goes at once when the camera reports
/// a new scene, and the face outline, hidden 0.5 s after the last face. The times run on
/// the app's clock.
class PreviewOverlays : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(
        kestrum::PreviewOverlays::MarkerPhase markerPhase READ markerPhase NOTIFY markerChanged)
    /// The 60 × 60 square around the last tap, in view coordinates: its top-left corner
    /// and side.
    Q_PROPERTY(double markerX READ markerX NOTIFY markerChanged)
    Q_PROPERTY(double markerY READ markerY NOTIFY markerChanged)
    Q_PROPERTY(double markerSide READ markerSide CONSTANT)
    Q_PROPERTY(int markerFadeMs READ markerFadeMs CONSTANT)
    Q_PROPERTY(bool faceOutlineVisible READ faceOutlineVisible NOTIFY faceOutlineVisibleChanged)

public:
    enum class MarkerPhase {
        Hidden,
        Shown,
        Fading, ///< the view fades the marker out over `markerFadeMs`
    };
    Q_ENUM(MarkerPhase)

    explicit PreviewOverlays(Clock& clock, QObject* parent = nullptr);

    static PreviewOverlays* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(PreviewOverlays* instance) { s_instance = instance; }

    MarkerPhase markerPhase() const;
    double markerX() const { return m_marker.rect().x(); }
    double markerY() const { return m_marker.rect().y(); }
    static double markerSide() { return TapMarker::kSidePoints; }
    static int markerFadeMs() { return int(TapMarker::kFadeMs); }
    bool faceOutlineVisible() const { return m_faceOutline.visible(); }

    /// A tap at `viewPoint`.
    Q_INVOKABLE void tap(QPointF viewPoint);
    /// A face was drawn.
    Q_INVOKABLE void faceSeen();
    /// The camera reports that the metered scene changed.
    void subjectAreaChanged();

signals:
    void markerChanged();
    void faceOutlineVisibleChanged();

private:
    static inline PreviewOverlays* s_instance = nullptr;

    TapMarker m_marker;
    FaceOutlineVisibility m_faceOutline;
};

} // namespace kestrum
