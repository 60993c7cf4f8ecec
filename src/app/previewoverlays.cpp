#include "previewoverlays.h"

#include "app/qmlsingleton.h"

namespace kestrum {

PreviewOverlays::PreviewOverlays(Clock& clock, QObject* parent)
    : QObject(parent)
    , m_marker(clock)
    , m_faceOutline(clock)
{
    connect(&m_marker, &TapMarker::changed, this, &PreviewOverlays::markerChanged);
    connect(&m_faceOutline, &FaceOutlineVisibility::visibleChanged, this,
            &PreviewOverlays::faceOutlineVisibleChanged);
}

PreviewOverlays* PreviewOverlays::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "PreviewOverlays");
}

PreviewOverlays::MarkerPhase PreviewOverlays::markerPhase() const
{
    switch (m_marker.phase()) {
    case TapMarker::Phase::shown:
        return MarkerPhase::Shown;
    case TapMarker::Phase::fading:
        return MarkerPhase::Fading;
    case TapMarker::Phase::hidden:
        break;
    }
    return MarkerPhase::Hidden;
}

void PreviewOverlays::tap(QPointF viewPoint)
{
    m_marker.tap(viewPoint);
}

void PreviewOverlays::faceSeen()
{
    m_faceOutline.faceSeen();
}

void PreviewOverlays::subjectAreaChanged()
{
    m_marker.subjectAreaChanged();
}

} // namespace kestrum
