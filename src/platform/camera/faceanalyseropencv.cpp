#include "faceanalyseropencv.h"

#include "faceanalysisimage.h"
#include "faceoctavesearch.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace kestrum {

namespace {

// The smallest face refinement looks for, in analysed pixels: the cascade's own window.
constexpr int kMinimumFaceSidePx = 20;

// The tracker searches this fraction of the box's size beyond each of its sides: far
// enough for a face moving across the picture between two analysed frames.
constexpr double kSearchMarginOfBox = 0.5;
// The face as detected is then sought this far around the spot found.
constexpr int kAnchorRadiusPx = 2;

// Refinement looks this fraction of the box beyond each side, for faces between these
// fractions of the tracked box's size; a looser vote suffices with the place known.
constexpr double kRefineMarginOfBox = 0.25;
constexpr double kRefineMinimumSizeOfBox = 0.6;
constexpr double kRefineMaximumSizeOfBox = 1.5;
constexpr int kRefineMinNeighbours = 2;
// 15 % steps between window sizes: the few sizes near the box, finely.
constexpr double kRefineScaleStep = 1.15;

cv::Mat matOf(const QImage& grey)
{
    if (grey.isNull() || grey.format() != QImage::Format_Grayscale8)
        throw FaceAnalyserException(FaceAnalyserError::frameRejected,
                                    QStringLiteral("the frame is empty or not grey"));
    return cv::Mat(grey.height(), grey.width(), CV_8UC1, const_cast<uchar*>(grey.constBits()),
                   static_cast<size_t>(grey.bytesPerLine()));
}

cv::Rect rectOf(const QRect& r)
{
    return cv::Rect(r.x(), r.y(), r.width(), r.height());
}

QRect rectOf(const cv::Rect& r)
{
    return QRect(r.x, r.y, r.width, r.height);
}

// `box` grown by `margin` of its size on each side, cut to the frame.
cv::Rect grown(const cv::Rect& box, double margin, const cv::Size& frame)
{
    const int dx = int(std::lround(box.width * margin));
    const int dy = int(std::lround(box.height * margin));
    return cv::Rect(box.x - dx, box.y - dy, box.width + 2 * dx, box.height + 2 * dy) &
           cv::Rect(0, 0, frame.width, frame.height);
}

// The best spot of `patch` within `window` of `frame`, as a box, and its score.
std::optional<std::pair<cv::Rect, double>> bestMatch(const cv::Mat& frame, const cv::Rect& window,
                                                     const cv::Mat& patch)
{
    if (patch.empty() || window.width < patch.cols || window.height < patch.rows) {
        return std::nullopt;
    }
    cv::Mat scores;
    cv::matchTemplate(frame(window), patch, scores, cv::TM_CCOEFF_NORMED);
    double best = 0.0;
    cv::Point at;
    cv::minMaxLoc(scores, nullptr, &best, nullptr, &at);
    if (!std::isfinite(best)) {
        return std::nullopt;
    }
    return std::pair{cv::Rect(window.x + at.x, window.y + at.y, patch.cols, patch.rows), best};
}

template <typename Work> auto guarded(Work work)
{
    try {
        return work();
    } catch (const cv::Exception& e) {
        throw FaceAnalyserException(FaceAnalyserError::analysisFailed,
                                    QString::fromStdString(e.what()));
    }
}

} // namespace

FaceAnalyserOpenCv::FaceAnalyserOpenCv(const QString& cascadePath)
    : m_cascade(std::make_unique<cv::CascadeClassifier>())
{
    bool loaded = false;
    try {
        loaded = m_cascade->load(cascadePath.toStdString());
    } catch (const cv::Exception&) {
        loaded = false;
    }
    if (!loaded) {
        throw FaceAnalyserException(
            FaceAnalyserError::modelMissing,
            QStringLiteral("Cannot load the face cascade %1").arg(cascadePath));
    }
}

FaceAnalyserOpenCv::~FaceAnalyserOpenCv() = default;

QList<QRect> FaceAnalyserOpenCv::detectFaces(const QImage& frame)
{
    return guarded([&] {
        const std::vector<cv::Rect> faces = faceOctaveSearch(*m_cascade, matOf(frame));
        QList<QRect> boxes;
        boxes.reserve(qsizetype(faces.size()));
        for (const cv::Rect& face : faces) {
            boxes.append(rectOf(face));
        }
        return boxes;
    });
}

QImage FaceAnalyserOpenCv::analysisImage(const QImage& frame, CameraFrame::Orientation orientation,
                                         int longSidePx) const
{
    return faceAnalysisImage(frame, orientation, longSidePx);
}

std::optional<FaceTrackingResult> FaceAnalyserOpenCv::track(const QImage& frame,
                                                            const FaceTrackingTarget& target)
{
    return guarded([&]() -> std::optional<FaceTrackingResult> {
        const cv::Mat image = matOf(frame);
        const cv::Mat patch = matOf(target.patch);
        const cv::Rect window = grown(rectOf(target.box), kSearchMarginOfBox, image.size());
        const auto match = bestMatch(image, window, patch);
        if (!match) {
            return std::nullopt;
        }
        // Settle on the face as detected, close to the spot found: a patch cut again at
        // whole pixels every frame walks off the face by rounding alone.
        const auto& [found, score] = *match;
        const cv::Rect anchorWindow =
            cv::Rect(found.x - kAnchorRadiusPx, found.y - kAnchorRadiusPx,
                     found.width + 2 * kAnchorRadiusPx, found.height + 2 * kAnchorRadiusPx) &
            cv::Rect(0, 0, image.cols, image.rows);
        const auto anchored = bestMatch(image, anchorWindow, matOf(target.detectedPatch));
        const cv::Rect box = anchored ? anchored->first : found;
        const double confidence =
            std::clamp(std::min(score, anchored ? anchored->second : 0.0), 0.0, 1.0);
        return FaceTrackingResult{rectOf(box), float(confidence)};
    });
}

QRect FaceAnalyserOpenCv::refine(const QImage& frame, const QRect& trackedBox)
{
    return guarded([&] {
        const cv::Mat image = matOf(frame);
        const cv::Rect tracked = rectOf(trackedBox);
        const cv::Rect region = grown(tracked, kRefineMarginOfBox, image.size());
        const int side = std::min(tracked.width, tracked.height);
        const int minimum = std::max(kMinimumFaceSidePx, int(side * kRefineMinimumSizeOfBox));
        const int maximum = int(std::max(tracked.width, tracked.height) * kRefineMaximumSizeOfBox);
        if (region.width < minimum || region.height < minimum || maximum < minimum) {
            return trackedBox;
        }
        std::vector<cv::Rect> faces;
        m_cascade->detectMultiScale(image(region), faces, kRefineScaleStep, kRefineMinNeighbours, 0,
                                    cv::Size(minimum, minimum), cv::Size(maximum, maximum));
        if (faces.empty()) {
            return trackedBox;
        }
        // Of several fits, the one centred nearest the tracked box.
        const auto centreOf = [](const cv::Rect& r, const cv::Point& offset) {
            return cv::Point2d(offset.x + r.x + r.width / 2.0, offset.y + r.y + r.height / 2.0);
        };
        const cv::Point2d centre = centreOf(tracked, cv::Point());
        const auto distance = [&](const cv::Rect& face) {
            return cv::norm(centreOf(face, region.tl()) - centre);
        };
        const cv::Rect best = *std::min_element(
            faces.begin(), faces.end(),
            [&](const cv::Rect& a, const cv::Rect& b) { return distance(a) < distance(b); });
        return rectOf(best + region.tl());
    });
}

} // namespace kestrum
