#include "facedetectorfacade.h"

#include "app/qmlsingleton.h"
#include "camera/facedetector.h"

namespace kestrum {

FaceDetectorFacade::FaceDetectorFacade(FaceDetector* detector, QObject* parent)
    : QObject(parent)
    , m_detector(detector)
{
    if (!detector)
        return;
    connect(detector, &FaceDetector::isActiveChanged, this, &FaceDetectorFacade::activeChanged);
    connect(detector, &FaceDetector::faceObserved, this,
            [this](const FaceObservation& observation) {
                m_arriving.append(observation);
                emit faceObserved(observation);
            });
    connect(detector, &FaceDetector::frameAnalysed, this, &FaceDetectorFacade::frameAnalysed);
}

FaceDetectorFacade* FaceDetectorFacade::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "FaceDetector");
}

bool FaceDetectorFacade::active() const
{
    return m_detector && m_detector->isActive();
}

void FaceDetectorFacade::setActive(bool active)
{
    if (m_detector)
        m_detector->setIsActive(active);
}

QSizeF FaceDetectorFacade::imageSize() const
{
    return m_detector ? QSizeF(m_detector->imageSize().value_or(QSize())) : QSizeF();
}

void FaceDetectorFacade::frameAnalysed()
{
    const QList<FaceObservation> observed = std::exchange(m_arriving, {});
    if (observed == m_observations)
        return;
    m_observations = observed;
    emit observationsChanged();
}

} // namespace kestrum
