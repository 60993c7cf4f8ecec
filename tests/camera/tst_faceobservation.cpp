#include "camera/faceobservation.h"

#include <QTest>

using namespace kestrum;

class FaceObservationTest : public QObject {
    Q_OBJECT

private slots:
    void mapsLandscapeFrameToPortraitBox_data()
    {
        QTest::addColumn<QRectF>("frameRect");
        QTest::addColumn<QRectF>("box");
        // A 640 × 480 frame; boxes are transposed, with y measured from the right edge.
        QTest::newRow("whole frame") << QRectF(0, 0, 640, 480) << QRectF(0, 0, 1, 1);
        QTest::newRow("top-left corner is high up")
            << QRectF(0, 0, 64, 48) << QRectF(0, 0.9, 0.1, 0.1);
        QTest::newRow("top-right corner is the origin")
            << QRectF(576, 0, 64, 48) << QRectF(0, 0, 0.1, 0.1);
        QTest::newRow("bottom edge is the far x")
            << QRectF(576, 432, 64, 48) << QRectF(0.9, 0, 0.1, 0.1);
        QTest::newRow("wide face becomes a tall box")
            << QRectF(160, 120, 320, 120) << QRectF(0.25, 0.25, 0.25, 0.5);
    }

    void mapsLandscapeFrameToPortraitBox()
    {
        QFETCH(QRectF, frameRect);
        QFETCH(QRectF, box);
        const QSizeF frame(640, 480);
        const FaceObservation observation = FaceObservation::fromFrameRect(frameRect, frame, 0.7f);
        QCOMPARE(observation.boundingBox, box);
        QCOMPARE(observation.confidence, 0.7f);
        QCOMPARE(observation.frameRect(frame), frameRect);
    }
};

QTEST_GUILESS_MAIN(FaceObservationTest)
#include "tst_faceobservation.moc"
