#include "previewvideoframe.h"

#include <QVideoFrameFormat>

#include <algorithm>
#include <cstring>

namespace kestrum {

namespace {

QVideoFrame::RotationAngle rotationAngle(CameraFrame::Orientation orientation)
{
    switch (orientation) {
    case CameraFrame::Orientation::right:
        return QVideoFrame::Rotation90;
    case CameraFrame::Orientation::down:
        return QVideoFrame::Rotation180;
    case CameraFrame::Orientation::left:
        return QVideoFrame::Rotation270;
    case CameraFrame::Orientation::up:
        break;
    }
    return QVideoFrame::Rotation0;
}

} // namespace

QVideoFrame previewVideoFrame(const CameraFrame& frame)
{
    if (frame.image.isNull())
        return {};
    QImage image = frame.image;
    auto pixelFormat = QVideoFrameFormat::pixelFormatFromImageFormat(image.format());
    if (pixelFormat == QVideoFrameFormat::Format_Invalid) {
        image = image.convertToFormat(QImage::Format_RGB32);
        pixelFormat = QVideoFrameFormat::pixelFormatFromImageFormat(image.format());
    }
    QVideoFrame video(QVideoFrameFormat(image.size(), pixelFormat));
    if (!video.map(QVideoFrame::WriteOnly))
        return {};
    const qsizetype lineBytes = std::min<qsizetype>(image.bytesPerLine(), video.bytesPerLine(0));
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(video.bits(0) + qsizetype(y) * video.bytesPerLine(0), image.constScanLine(y),
                    size_t(lineBytes));
    }
    video.unmap();
    video.setRotationAngle(rotationAngle(frame.orientation));
    return video;
}

} // namespace kestrum
