#pragma once

#include "fixedlenscapturedevice.h"

#include <QStringList>

#include <optional>

class QMediaPlayer;
class QTimer;
class QVideoFrame;
class QVideoSink;

namespace kestrum {

/// A camera that plays recorded footage, for demonstrations and tests on machines
/// without a camera: a video file (looping), one still image, or a folder of still
/// images (in name order, looping), stills at kStillFramesPerSecond.
///
/// The exposure the footage was taken with comes from a sidecar file beside it, the
/// media path with ".json" appended (`clip.avi.json`, or `frames.json` for a folder
/// `frames`): {"iso": 100, "exposureDuration": 0.01, "aperture": 2.0}. A missing or
/// malformed entry reads as unknown.
class FileCaptureDevice final : public FixedLensCaptureDevice {
    Q_OBJECT

public:
    static constexpr int kStillFramesPerSecond = 30;
    /// Per-camera preferences of footage are kept under this id.
    static constexpr auto kDeviceId = "file";

    /// The exposure written beside the footage.
    struct Sidecar {
        std::optional<float> iso;
        std::optional<float> exposureDurationS;
        std::optional<float> aperture;

        static QString pathFor(const QString& mediaPath);
        /// The sidecar of `mediaPath`; all unknown when there is none or it is not JSON.
        static Sidecar read(const QString& mediaPath);
    };

    explicit FileCaptureDevice(const QString& path, QObject* parent = nullptr);
    ~FileCaptureDevice() override;

    QString id() const override;
    AuthorizationStatus authorizationStatus() const override;
    QFuture<bool> requestAccess() override;
    bool createSession() override { return true; }
    bool findCamera() override;
    void createInput() override;
    bool canAddInput() const override { return true; }
    bool canAddOutput() const override { return true; }
    void startRunning() override;
    bool isRunning() const override { return m_running; }
    bool lockForConfiguration(QString*) override { return true; }
    void unlockForConfiguration() override {}
    void setContinuousAutoFocus() override {}
    std::optional<float> iso() const override { return m_sidecar.iso; }
    std::optional<float> exposureDurationS() const override { return m_sidecar.exposureDurationS; }
    std::optional<float> lensAperture() const override { return m_sidecar.aperture; }

private:
    enum class Media { none, stills, video };

    void run();
    void setRunning(bool running);
    void nextStill();

    QString m_path;
    Sidecar m_sidecar;
    Media m_media = Media::none;
    QStringList m_stills;
    QImage m_onlyStill; // decoded once when there is a single image
    qint64 m_stillIndex = 0;
    QTimer* m_stillTimer = nullptr;
    QMediaPlayer* m_player = nullptr;
    QVideoSink* m_sink = nullptr;
    bool m_running = false;
};

} // namespace kestrum
