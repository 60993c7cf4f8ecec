#include "captureframequeue.h"

#include <QFuture>

namespace kestrum {

namespace {

// Formats that consumers can read word by word without converting again.
bool isPlainRgb(QImage::Format format)
{
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32 ||
           format == QImage::Format_ARGB32_Premultiplied;
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
    Pending pending{std::move(job), presentationTime};
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
              [job = std::move(pending.job)] {
                  const QImage image = job();
                  if (image.isNull() || isPlainRgb(image.format()))
                      return image;
                  return image.convertToFormat(QImage::Format_RGB32);
              })
        .then(this, [this, time](const QImage& image) {
            m_busy = false;
            if (!image.isNull())
                emit frameReady(CameraFrame{image, time});
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
