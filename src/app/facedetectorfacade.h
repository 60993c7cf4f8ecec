#pragma once

#include "camera/faceobservation.h"

#include <QList>
#include <QObject>
#include <QSizeF>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class FaceDetector;

/// The faces in the preview (`FaceDetector`): every face of every analysed frame as it is
/// observed (`faceObserved`, the signal the face outline and face metering follow), and
/// the faces of the latest analysed frame as a list (`observations`).
///
/// Boxes are normalised to the upright picture of `imageSize`, origin at its lower-left
/// corner (see FaceObservation). Without a face detector (mock camera, no face model)
/// `available` is false and nothing is ever observed.
class FaceDetectorFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(FaceDetector)
    QML_SINGLETON
    Q_PROPERTY(bool available READ available CONSTANT)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(
        QList<kestrum::FaceObservation> observations READ observations NOTIFY observationsChanged)
    Q_PROPERTY(QSizeF imageSize READ imageSize NOTIFY observationsChanged)

public:
    /// `detector` may be null.
    explicit FaceDetectorFacade(FaceDetector* detector, QObject* parent = nullptr);

    static FaceDetectorFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(FaceDetectorFacade* instance) { s_instance = instance; }

    bool available() const { return m_detector != nullptr; }
    /// Whether frames are analysed; only while the preview is shown.
    bool active() const;
    void setActive(bool active);
    const QList<FaceObservation>& observations() const { return m_observations; }
    /// The upright picture the boxes refer to; empty until the first analysed frame.
    QSizeF imageSize() const;

signals:
    void activeChanged();
    void observationsChanged();
    void faceObserved(const kestrum::FaceObservation& observation);

private:
    void frameAnalysed();

    static inline FaceDetectorFacade* s_instance = nullptr;

    FaceDetector* m_detector;
    QList<FaceObservation> m_observations;
    QList<FaceObservation> m_arriving; // the faces of the frame being reported
};

} // namespace kestrum
