#include "captureframequeue.h"

#include "exposuretarget.h"

#include <QFuture>

#include <algorithm>

namespace kestrum {

namespace {

struct Turned {
    QImage image;
    double luminance = 0;
};

// Formats that consumers can read word by word without converting again.
bool isPlainRgb(QImage::Format format)
{
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32 ||
           format == QImage::Format_ARGB32_Premultiplied;
}

// The middle of `image` that a lens zoomed in by `factor` would see.
QImage zoomedIn(const QImage& image, float factor)
{
    if (!(factor > 1.0f) || image.isNull())
        return image;
    const QSize size(std::max(1, qRound(image.width() / factor)),
                     std::max(1, qRound(image.height() / factor)));
    const QPoint corner((image.width() - size.width()) / 2, (image.height() - size.height()) / 2);
    return image.copy(QRect(corner, size));
}

} // namespace

CaptureFrameQueue::CaptureFrameQueue(QObject* parent)
    : QObject(parent)
{
    m_worker.setMaxThreadCount(1);
}

CaptureFrameQueue::~CaptureFrameQueue()
{
    m_worker.waitForDone();
}

void CaptureFrameQueue::push(Job job, std::optional<std::chrono::microseconds> presentationTime)
{
    Pending pending{std::move(job), presentationTime, m_zoomFactor};
    if (m_busy)
        m_waiting = std::move(pending);
    else
        start(std::move(pending));
}

void CaptureFrameQueue::start(Pending pending)
{
    m_busy = true;
    const auto time = pending.presentationTime;
    QtFuture::makeReadyFuture()
        .then(&m_worker,
              [job = std::move(pending.job), zoom = pending.zoomFactor] {
                  Turned turned{zoomedIn(job(), zoom), 0};
                  if (turned.image.isNull())
                      return turned;
                  if (!isPlainRgb(turned.image.format()))
                      turned.image = turned.image.convertToFormat(QImage::Format_RGB32);
                  turned.luminance = exposuretarget::frameLuminance(turned.image);
                  return turned;
              })
        .then(this, [this, time](const Turned& turned) {
            m_busy = false;
            if (!turned.image.isNull())
                emit frameReady(CameraFrame{turned.image, time}, turned.luminance);
            if (m_waiting) {
                Pending next = std::move(*m_waiting);
                m_waiting.reset();
                start(std::move(next));
            }
        });
}

void CaptureFrameQueue::pushVideoFrame(const QVideoFrame& frame)
{
    if (!frame.isValid())
        return;
    const std::optional<std::chrono::microseconds> time =
        frame.startTime() >= 0 ? std::optional(std::chrono::microseconds(frame.startTime()))
                               : std::nullopt;
    push([frame] { return frame.toImage(); }, time);
}

} // namespace kestrum
