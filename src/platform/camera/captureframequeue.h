#pragma once

#include "cameraframe.h"

#include <QImage>
#include <QObject>
#include <QThreadPool>
#include <QVideoFrame>

#include <chrono>
#include <functional>
#include <optional>

namespace kestrum {

/// Turns the frames of a capture source into CameraFrames on a worker thread, so that
/// decoding and colour conversion never hold up the main thread.
///
/// One frame is turned at a time. A frame pushed meanwhile waits, replacing any frame
/// already waiting: a slow machine drops frames instead of falling behind. Finished
/// frames come back on the queue's own thread, in a format that consumers can read
/// word by word (32-bit RGB).
class CaptureFrameQueue : public QObject {
    Q_OBJECT

public:
    /// Produces one frame's image on the worker; a null image drops the frame.
    using Job = std::function<QImage()>;

    explicit CaptureFrameQueue(QObject* parent = nullptr);
    /// Waits for the frame being turned.
    ~CaptureFrameQueue() override;

    void push(Job job, std::optional<std::chrono::microseconds> presentationTime);
    /// Pushes a video frame of Qt Multimedia; holding the frame keeps its buffer, and its
    /// conversion to an image happens on the worker.
    void pushVideoFrame(const QVideoFrame& frame);

signals:
    void frameReady(const kestrum::CameraFrame& frame);

private:
    struct Pending {
        Job job;
        std::optional<std::chrono::microseconds> presentationTime;
    };

    void start(Pending pending);

    QThreadPool m_worker;
    std::optional<Pending> m_waiting;
    bool m_busy = false;
};

} // namespace kestrum
