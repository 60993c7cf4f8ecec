#include "faceanalysisimage.h"

#include <QSysInfo>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <optional>

namespace kestrum {

namespace {

// How the common camera formats lay out their bytes, as an OpenCV colour conversion to
// grey; nothing for formats that go through Qt's own conversion first.
std::optional<int> greyConversion(QImage::Format format)
{
    constexpr bool kLittleEndian = QSysInfo::ByteOrder == QSysInfo::LittleEndian;
    switch (format) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        // 0xAARRGGBB words: B, G, R, A in memory on little-endian machines.
        return kLittleEndian ? std::optional<int>(cv::COLOR_BGRA2GRAY) : std::nullopt;
    case QImage::Format_RGBX8888:
    case QImage::Format_RGBA8888:
    case QImage::Format_RGBA8888_Premultiplied:
        return cv::COLOR_RGBA2GRAY;
    case QImage::Format_RGB888:
        return cv::COLOR_RGB2GRAY;
    case QImage::Format_BGR888:
        return cv::COLOR_BGR2GRAY;
    default:
        return std::nullopt;
    }
}

int channelCount(int conversion)
{
    return conversion == cv::COLOR_RGB2GRAY || conversion == cv::COLOR_BGR2GRAY ? 3 : 4;
}

// The frame in grey at full size, as a header over its own or the frame's pixels.
cv::Mat fullSizeGrey(const QImage& frame, QImage& keepAlive)
{
    if (frame.format() == QImage::Format_Grayscale8) {
        keepAlive = frame;
    } else if (const auto conversion = greyConversion(frame.format())) {
        const cv::Mat colour(frame.height(), frame.width(), CV_8UC(channelCount(*conversion)),
                             const_cast<uchar*>(frame.constBits()),
                             static_cast<size_t>(frame.bytesPerLine()));
        cv::Mat grey;
        cv::cvtColor(colour, grey, *conversion);
        return grey;
    } else {
        keepAlive = frame.convertToFormat(QImage::Format_Grayscale8);
    }
    return cv::Mat(keepAlive.height(), keepAlive.width(), CV_8UC1,
                   const_cast<uchar*>(keepAlive.constBits()),
                   static_cast<size_t>(keepAlive.bytesPerLine()));
}

// `grey` turned the way its orientation asks a viewer to turn it.
QImage upright(const QImage& grey, CameraFrame::Orientation orientation)
{
    int rotation = 0;
    switch (orientation) {
    case CameraFrame::Orientation::up:
        return grey;
    case CameraFrame::Orientation::right:
        rotation = cv::ROTATE_90_CLOCKWISE;
        break;
    case CameraFrame::Orientation::down:
        rotation = cv::ROTATE_180;
        break;
    case CameraFrame::Orientation::left:
        rotation = cv::ROTATE_90_COUNTERCLOCKWISE;
        break;
    }
    const bool quarter = orientation != CameraFrame::Orientation::down;
    QImage turned(quarter ? grey.height() : grey.width(), quarter ? grey.width() : grey.height(),
                  QImage::Format_Grayscale8);
    const cv::Mat from(grey.height(), grey.width(), CV_8UC1, const_cast<uchar*>(grey.constBits()),
                       static_cast<size_t>(grey.bytesPerLine()));
    cv::Mat to(turned.height(), turned.width(), CV_8UC1, turned.bits(),
               static_cast<size_t>(turned.bytesPerLine()));
    cv::rotate(from, to, rotation);
    return turned;
}

} // namespace

QImage faceAnalysisImage(const QImage& frame, CameraFrame::Orientation orientation, int longSidePx)
{
    if (frame.isNull()) {
        return {};
    }
    const double scale =
        std::min(1.0, double(longSidePx) / double(std::max(frame.width(), frame.height())));
    const int width = std::max(1, int(std::lround(frame.width() * scale)));
    const int height = std::max(1, int(std::lround(frame.height() * scale)));

    QImage keepAlive;
    const cv::Mat grey = fullSizeGrey(frame, keepAlive);

    QImage result(width, height, QImage::Format_Grayscale8);
    cv::Mat target(height, width, CV_8UC1, result.bits(),
                   static_cast<size_t>(result.bytesPerLine()));
    if (width == frame.width() && height == frame.height()) {
        grey.copyTo(target);
    } else {
        // Area averaging keeps the small detail that a face cascade looks for.
        cv::resize(grey, target, target.size(), 0, 0, cv::INTER_AREA);
    }
    return upright(result, orientation);
}

} // namespace kestrum
