#include "camera/facetrackingrequest.h"

#include <QTest>

#include <cmath>

using namespace kestrum;

namespace {

// A grey frame whose every patch differs, so that a patch shows where it was cut.
QImage patternFrame()
{
    QImage frame(40, 30, QImage::Format_Grayscale8);
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            frame.scanLine(y)[x] = uchar(x * 5 + y * 3);
        }
    }
    return frame;
}

const QRect kDetected(4, 4, 10, 10);
const QRect kMoved(8, 6, 10, 10);

} // namespace

class FaceTrackingRequestTest : public QObject {
    Q_OBJECT

private slots:
    void confidenceRule_data()
    {
        QTest::addColumn<bool>("alreadyLastFrame");
        QTest::addColumn<float>("confidence");
        QTest::addColumn<bool>("kept");
        QTest::addColumn<bool>("lastFrame");
        QTest::addColumn<bool>("movedToResult");
        QTest::newRow("confident result becomes the input")
            << false << 0.9f << true << false << true;
        QTest::newRow("exactly 0.3 marks last frame") << false << 0.3f << true << true << false;
        QTest::newRow("just above 0.3 is trusted")
            << false << std::nextafter(0.3f, 1.0f) << true << false << true;
        QTest::newRow("last frame is dropped however good")
            << true << 1.0f << false << true << false;
    }

    void confidenceRule()
    {
        QFETCH(bool, alreadyLastFrame);
        QFETCH(float, confidence);
        QFETCH(bool, kept);
        QFETCH(bool, lastFrame);
        QFETCH(bool, movedToResult);
        const QImage frame = patternFrame();
        FaceTrackingRequest request(7, kDetected, frame);
        if (alreadyLastFrame) {
            QCOMPARE(request.take({kDetected, 0.2f}, frame), FaceTrackingRequest::Fate::keep);
        }

        const auto fate = request.take({kMoved, confidence}, frame);

        QCOMPARE(fate == FaceTrackingRequest::Fate::keep, kept);
        QCOMPARE(request.isLastFrame(), lastFrame);
        QCOMPARE(request.box(), movedToResult ? kMoved : kDetected);
        QCOMPARE(request.patch(), frame.copy(movedToResult ? kMoved : kDetected));
        QCOMPARE(request.confidence(), movedToResult ? confidence : 1.0f);
        QCOMPARE(request.detectedPatch(), frame.copy(kDetected));
    }
};

QTEST_GUILESS_MAIN(FaceTrackingRequestTest)
#include "tst_facetrackingrequest.moc"
