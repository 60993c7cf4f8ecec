#pragma once

#include "platform/camera/exposuremode.h"

#include <QImage>
#include <QPointF>

#include <optional>

namespace kestrum {

/// The part of a frame whose brightness sets the exposure.
struct MeteringRegion {
    enum class Shape {
        centreWeighted, ///< the whole frame, the middle counting most
        spot,           ///< a small square around `point`
    };
    Shape shape = Shape::centreWeighted;
    QPointF point{0.5, 0.5}; ///< the spot's centre, 0…1 on each axis

    friend bool operator==(const MeteringRegion&, const MeteringRegion&) = default;
};

/// How far a frame's brightness is from the exposure target, measured from its pixels,
/// for cameras that do not report it: the metered mean of linear (sRGB-decoded)
/// luminance against 18 % grey, in stops.
namespace exposuretarget {

/// The mean that lies exactly on target.
inline constexpr double kMiddleGrey = 0.18;
/// A change of the whole frame's mean luminance by this many stops or more counts as a
/// new subject.
inline constexpr double kSubjectAreaChangeEV = 1.0;

/// The linear light of an sRGB-encoded component value (0…255).
double linearFromSrgb(int encoded);
/// The linear luminance (0…1) of an sRGB pixel.
double linearLuminance(QRgb pixel);

/// The metered mean luminance of `region` in `frame`. Centre-weighted: the middle half
/// of each axis gives three quarters of the mean, the whole frame the rest. Spot: a
/// square a tenth of each axis wide around the point, moved inward to stay whole.
double meteredLuminance(const QImage& frame, const MeteringRegion& region);
/// The plain mean luminance of the whole frame.
double frameLuminance(const QImage& frame);
/// log2(luminance / 18 %). A black frame reads as a little darker than the darkest
/// non-black pixel, not as minus infinity.
double offsetEV(double luminance);
/// Whether the frame's mean luminance moved far enough to count as a new subject.
bool isSubjectAreaChange(double luminanceBefore, double luminanceAfter);

} // namespace exposuretarget

/// The exposure state of a camera that meters its own frames: where it meters, what the
/// latest frame reads there, and whether the scene changed since metering at a point.
///
/// Continuous auto-exposure meters centre-weighted; a one-shot auto-exposure meters a
/// spot at the point of interest until the mode changes again (the camera controller
/// goes back to continuous when the subject area changes).
class ExposureTarget {
public:
    void setMode(ExposureMode mode) { m_mode = mode; }
    ExposureMode mode() const { return m_mode; }
    void setPointOfInterest(QPointF point) { m_pointOfInterest = point; }
    /// Starts or stops watching for subject changes, from the scene as it is now.
    void setSubjectAreaMonitoring(bool enabled);

    /// Takes the newest frame and its whole-frame mean luminance. True when monitoring
    /// is on and the scene changed by at least kSubjectAreaChangeEV since monitoring
    /// began or since the last change reported.
    bool takeFrame(const QImage& frame, double frameLuminance);

    MeteringRegion region() const;
    /// The offset of the newest frame in the current region; nothing before a frame.
    std::optional<float> offsetEV() const;

private:
    ExposureMode m_mode = ExposureMode::continuousAutoExposure;
    QPointF m_pointOfInterest{0.5, 0.5};
    bool m_monitoring = false;
    std::optional<double> m_referenceLuminance;
    std::optional<double> m_lastLuminance;
    QImage m_lastFrame;
};

} // namespace kestrum
