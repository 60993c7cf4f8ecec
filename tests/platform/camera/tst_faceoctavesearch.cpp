// The face search by octaves: how the octaves' boxes come together, and, on the footage
// that scripts/bootstrap extracts, that it finds each face once, where OpenCV's own search
// over every size finds it.
#include "platform/camera/faceanalyseropencv.h"
#include "platform/camera/faceoctavesearch.h"

#include <QImage>
#include <QTest>

#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>
#include <opencv2/videoio.hpp>

#include <algorithm>

using namespace kestrum;
using Boxes = std::vector<cv::Rect>;

Q_DECLARE_METATYPE(Boxes)

namespace {

const std::string kFootage = KESTRUM_FOOTAGE_DIR;
// OpenCV's own search, for reference: finer size steps than the octave search, with the
// same smallest face (the cascade's window) and the same hits per face.
constexpr double kReferenceScaleStep = 1.1;
constexpr int kReferenceMinNeighbours = 3;
constexpr int kCascadeWindowPx = 20;
// Boxes of the same face, found with different steps, share at least this much.
constexpr double kSameFaceOverlap = 0.6;

// A frame as face analysis sees it: grey, with the longer side `longSidePx` (320 in the
// face detector; the photograph is also searched larger, for its face to reach the higher
// octaves).
cv::Mat analysed(const cv::Mat& colour, int longSidePx, bool quarterTurned)
{
    cv::Mat grey;
    cv::cvtColor(colour, grey, cv::COLOR_BGR2GRAY);
    if (quarterTurned) {
        cv::rotate(grey, grey, cv::ROTATE_90_CLOCKWISE);
    }
    const double scale = double(longSidePx) / std::max(grey.cols, grey.rows);
    cv::Mat scaled;
    cv::resize(grey, scaled, cv::Size(), scale, scale,
               scale < 1 ? cv::INTER_AREA : cv::INTER_LINEAR);
    return scaled;
}

double overlap(const cv::Rect& a, const cv::Rect& b)
{
    const double shared = (a & b).area();
    return shared / (a.area() + b.area() - shared);
}

} // namespace

class FaceOctaveSearchTest : public QObject {
    Q_OBJECT

    cv::CascadeClassifier m_cascade;
    std::vector<cv::Mat> m_clip;
    cv::Mat m_photo;

private slots:
    void initTestCase()
    {
        QVERIFY(m_cascade.load(FaceAnalyserOpenCv::kFrontalFaceCascadePath));
        QCOMPARE(m_cascade.getOriginalWindowSize(), cv::Size(kCascadeWindowPx, kCascadeWindowPx));
        cv::VideoCapture capture(kFootage + "/Megamind.avi");
        cv::Mat frame;
        while (capture.read(frame)) {
            m_clip.push_back(frame.clone());
        }
        QCOMPARE(m_clip.size(), std::size_t(270));
        const QImage photo = QImage(QString::fromStdString(kFootage + "/messi5.jpg"))
                                 .convertToFormat(QImage::Format_BGR888);
        QVERIFY(!photo.isNull());
        m_photo =
            cv::Mat(photo.height(), photo.width(), CV_8UC3, const_cast<uchar*>(photo.constBits()),
                    static_cast<size_t>(photo.bytesPerLine()))
                .clone();
    }

    void addingAnOctave_data()
    {
        QTest::addColumn<Boxes>("found");
        QTest::addColumn<Boxes>("octave");
        QTest::addColumn<Boxes>("expected");

        QTest::newRow("first octave") << Boxes{} << Boxes{{10, 10, 20, 20}, {100, 40, 30, 30}}
                                      << Boxes{{10, 10, 20, 20}, {100, 40, 30, 30}};
        QTest::newRow("another face") << Boxes{{10, 10, 20, 20}} << Boxes{{100, 100, 40, 40}}
                                      << Boxes{{10, 10, 20, 20}, {100, 100, 40, 40}};
        // Sharing all 38 × 38 of the smaller box.
        QTest::newRow("same face, larger box stands")
            << Boxes{{100, 100, 38, 38}} << Boxes{{98, 98, 44, 44}} << Boxes{{98, 98, 44, 44}};
        QTest::newRow("part of a known face is dropped")
            << Boxes{{0, 0, 40, 40}} << Boxes{{5, 5, 30, 30}} << Boxes{{0, 0, 40, 40}};
        // Sharing 30 × 40 = 1200 of 1600.
        QTest::newRow("same size, the first stands")
            << Boxes{{0, 0, 40, 40}} << Boxes{{10, 0, 40, 40}} << Boxes{{0, 0, 40, 40}};
        // Sharing 20 × 40 = 800, exactly half of 1600: two faces side by side.
        QTest::newRow("half shared is two faces") << Boxes{{0, 0, 40, 40}} << Boxes{{20, 0, 40, 40}}
                                                  << Boxes{{0, 0, 40, 40}, {20, 0, 40, 40}};
        // Sharing 21 × 40 = 840 of 1600.
        QTest::newRow("more than half shared is one face")
            << Boxes{{0, 0, 40, 40}} << Boxes{{19, 0, 40, 40}} << Boxes{{0, 0, 40, 40}};
        QTest::newRow("only the face it shares is touched")
            << Boxes{{0, 0, 20, 20}, {200, 0, 20, 20}} << Boxes{{195, 0, 50, 50}}
            << Boxes{{0, 0, 20, 20}, {195, 0, 50, 50}};
    }

    void addingAnOctave()
    {
        QFETCH(Boxes, found);
        QFETCH(Boxes, octave);
        QFETCH(Boxes, expected);
        kestrum::addOctave(found, octave);
        QCOMPARE(found, expected);
    }

    void findsEachFaceOnce_data()
    {
        QTest::addColumn<int>("clipFrame"); // -1: the photograph
        QTest::addColumn<int>("longSidePx");
        QTest::addColumn<bool>("quarterTurned");
        QTest::addColumn<int>("faces");

        // Face widths as OpenCV's own search finds them.
        QTest::newRow("photograph, 22 px face: first octave") << -1 << 320 << false << 1;
        QTest::newRow("photograph, 40 px face: where two octaves meet") << -1 << 548 << false << 1;
        QTest::newRow("photograph, 50 px face: second octave") << -1 << 700 << false << 1;
        QTest::newRow("clip, 62 px face: second octave") << 29 << 320 << false << 1;
        QTest::newRow("clip, 77 px face: second octave") << 47 << 320 << false << 1;
        QTest::newRow("clip, 85 px face: third octave") << 150 << 320 << false << 1;
        QTest::newRow("clip, 132 px face: third octave") << 240 << 320 << false << 1;
        QTest::newRow("clip, 161 px face: fourth octave") << 208 << 320 << false << 1;
        QTest::newRow("photograph on its side: no upright face") << -1 << 320 << true << 0;
        QTest::newRow("close-up on its side: no upright face") << 240 << 320 << true << 0;
    }

    void findsEachFaceOnce()
    {
        QFETCH(int, clipFrame);
        QFETCH(int, longSidePx);
        QFETCH(bool, quarterTurned);
        QFETCH(int, faces);
        const cv::Mat frame = analysed(clipFrame < 0 ? m_photo : m_clip.at(std::size_t(clipFrame)),
                                       longSidePx, quarterTurned);

        Boxes reference;
        m_cascade.detectMultiScale(frame, reference, kReferenceScaleStep, kReferenceMinNeighbours,
                                   0, cv::Size(kCascadeWindowPx, kCascadeWindowPx));

        const Boxes found = faceOctaveSearch(m_cascade, frame);
        QCOMPARE(int(found.size()), faces);
        for (const cv::Rect& box : found) {
            const bool alsoFound =
                std::any_of(reference.begin(), reference.end(), [&box](const cv::Rect& face) {
                    return overlap(box, face) >= kSameFaceOverlap;
                });
            QVERIFY2(alsoFound, qPrintable(QStringLiteral("%1,%2 %3x%4")
                                               .arg(box.x)
                                               .arg(box.y)
                                               .arg(box.width)
                                               .arg(box.height)));
        }
    }
};

QTEST_GUILESS_MAIN(FaceOctaveSearchTest)
#include "tst_faceoctavesearch.moc"
