#include "app/facedetectorfacade.h"
#include "camera/facedetector.h"

#include <QSignalSpy>
#include <QTest>

#include <chrono>

using namespace kestrum;

namespace {

// Finds the faces it is given and follows each where it was, fully confident.
class FixedFacesAnalyser final : public FaceAnalyser {
public:
    QList<QRect> faces;

    QImage analysisImage(const QImage& frame, CameraFrame::Orientation, int) const override
    {
        return frame.convertToFormat(QImage::Format_Grayscale8);
    }
    QList<QRect> detectFaces(const QImage&) override { return faces; }
    std::optional<FaceTrackingResult> track(const QImage&,
                                            const FaceTrackingTarget& target) override
    {
        return FaceTrackingResult{target.box, 1.0f};
    }
    QRect refine(const QImage&, const QRect& box) override { return box; }
};

// Frames 80 × 60 on even milliseconds, all of which are analysed.
CameraFrame frame(int index)
{
    QImage image(80, 60, QImage::Format_RGB32);
    image.fill(Qt::gray);
    return {image, std::chrono::milliseconds(2 * index)};
}

} // namespace

class FaceDetectorFacadeTest : public QObject {
    Q_OBJECT

private slots:
    void observationsAreTheLatestFramesFaces()
    {
        auto analyser = std::make_shared<FixedFacesAnalyser>();
        analyser->faces = {QRect(0, 0, 20, 30), QRect(40, 30, 20, 30)};
        FaceDetector detector(analyser, [](std::function<void()> work) { work(); });
        FaceDetectorFacade facade(&detector);
        QSignalSpy observed(&facade, &FaceDetectorFacade::faceObserved);
        facade.setActive(true);
        QVERIFY(detector.isActive());

        for (int i = 0; i < 3; ++i) // detect, then follow twice
            detector.process(frame(i));

        QCOMPARE(observed.count(), 4);
        QCOMPARE(facade.observations().size(), 2);
        // The frame's top-left 20 × 30 pixels in the upright (transposed) picture:
        // x = 0 / 60, y = (80 − 20) / 80, width = 30 / 60, height = 20 / 80.
        QCOMPARE(facade.observations().front().boundingBox, QRectF(0.0, 0.75, 0.5, 0.25));
        QCOMPARE(facade.imageSize(), QSizeF(60, 80));
    }

    void withoutDetectorNothingIsObserved()
    {
        FaceDetectorFacade facade(nullptr);
        facade.setActive(true);
        QVERIFY(!facade.available());
        QVERIFY(!facade.active());
        QVERIFY(facade.observations().isEmpty());
    }
};

QTEST_GUILESS_MAIN(FaceDetectorFacadeTest)
#include "tst_facedetectorfacade.moc"
