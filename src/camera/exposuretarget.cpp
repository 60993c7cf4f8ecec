#include "exposuretarget.h"

#include <QRectF>

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrum {

namespace exposuretarget {

namespace {

// Rec. 709 weights of linear red, green and blue in luminance.
constexpr double kRedWeight = 0.2126;
constexpr double kGreenWeight = 0.7152;
constexpr double kBlueWeight = 0.0722;

// A regular grid of at most this many samples per axis meters a region: enough for a
// stable mean, cheap enough to read on every measurement.
constexpr int kMaxSamplesPerAxis = 64;

// Centre weighting: the middle half of each axis gives three quarters of the mean.
constexpr double kCentreSpan = 0.5;
constexpr double kCentreShare = 0.75;

// A spot is a tenth of each axis wide.
constexpr double kSpotSpan = 0.1;

constexpr int kLevels = 256;

const std::array<double, kLevels>& srgbTable()
{
    static const std::array<double, kLevels> table = [] {
        std::array<double, kLevels> values{};
        for (int i = 0; i < kLevels; ++i) {
            const double c = i / 255.0;
            values[i] = c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        }
        return values;
    }();
    return table;
}

// Half the luminance of the darkest grey an 8-bit frame can hold above black.
double darkestLuminance()
{
    return linearFromSrgb(1) / 2;
}

// The mean luminance of the samples of a grid over `rect`, in normalised coordinates.
double meanOver(const QImage& frame, const QRectF& rect)
{
    const double left = rect.left() * frame.width();
    const double top = rect.top() * frame.height();
    const double width = rect.width() * frame.width();
    const double height = rect.height() * frame.height();
    const int columns = std::clamp(int(std::lround(width)), 1, kMaxSamplesPerAxis);
    const int rows = std::clamp(int(std::lround(height)), 1, kMaxSamplesPerAxis);
    double sum = 0;
    for (int row = 0; row < rows; ++row) {
        const int y = std::clamp(int(top + (row + 0.5) * height / rows), 0, frame.height() - 1);
        for (int column = 0; column < columns; ++column) {
            const int x =
                std::clamp(int(left + (column + 0.5) * width / columns), 0, frame.width() - 1);
            sum += linearLuminance(frame.pixel(x, y));
        }
    }
    return sum / (double(rows) * columns);
}

QRectF spotAround(QPointF point)
{
    const double half = kSpotSpan / 2;
    const double x = std::clamp(point.x(), half, 1 - half);
    const double y = std::clamp(point.y(), half, 1 - half);
    return {x - half, y - half, kSpotSpan, kSpotSpan};
}

} // namespace

double linearFromSrgb(int encoded)
{
    return srgbTable()[std::clamp(encoded, 0, kLevels - 1)];
}

double linearLuminance(QRgb pixel)
{
    return kRedWeight * linearFromSrgb(qRed(pixel)) + kGreenWeight * linearFromSrgb(qGreen(pixel)) +
           kBlueWeight * linearFromSrgb(qBlue(pixel));
}

double meteredLuminance(const QImage& frame, const MeteringRegion& region)
{
    if (frame.isNull())
        return 0;
    if (region.shape == MeteringRegion::Shape::spot)
        return meanOver(frame, spotAround(region.point));
    const double inset = (1 - kCentreSpan) / 2;
    const QRectF centre(inset, inset, kCentreSpan, kCentreSpan);
    return kCentreShare * meanOver(frame, centre) +
           (1 - kCentreShare) * meanOver(frame, QRectF(0, 0, 1, 1));
}

double frameLuminance(const QImage& frame)
{
    return frame.isNull() ? 0 : meanOver(frame, QRectF(0, 0, 1, 1));
}

double offsetEV(double luminance)
{
    return std::log2(std::max(luminance, darkestLuminance()) / kMiddleGrey);
}

bool isSubjectAreaChange(double luminanceBefore, double luminanceAfter)
{
    return std::fabs(offsetEV(luminanceAfter) - offsetEV(luminanceBefore)) >= kSubjectAreaChangeEV;
}

} // namespace exposuretarget

void ExposureTarget::setSubjectAreaMonitoring(bool enabled)
{
    m_monitoring = enabled;
    m_referenceLuminance = enabled ? m_lastLuminance : std::nullopt;
}

bool ExposureTarget::takeFrame(const QImage& frame, double frameLuminance)
{
    m_lastFrame = frame;
    m_lastLuminance = frameLuminance;
    if (!m_monitoring)
        return false;
    if (!m_referenceLuminance) {
        m_referenceLuminance = frameLuminance;
        return false;
    }
    if (!exposuretarget::isSubjectAreaChange(*m_referenceLuminance, frameLuminance))
        return false;
    m_referenceLuminance = frameLuminance;
    return true;
}

MeteringRegion ExposureTarget::region() const
{
    if (m_mode == ExposureMode::autoExpose)
        return {MeteringRegion::Shape::spot, m_pointOfInterest};
    return {};
}

std::optional<float> ExposureTarget::offsetEV() const
{
    if (m_lastFrame.isNull())
        return std::nullopt;
    return float(exposuretarget::offsetEV(exposuretarget::meteredLuminance(m_lastFrame, region())));
}

} // namespace kestrum
