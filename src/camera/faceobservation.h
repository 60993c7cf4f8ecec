#pragma once

#include <QMetaType>
#include <QRectF>
#include <QSizeF>

namespace kestrum {

/// One face as the detector reports it to the preview: where it is and how sure the
/// tracker is that it is still on it.
///
/// The camera delivers landscape frames while the app is portrait, so the box is given
/// in the portrait picture that the frame becomes when it is transposed (its rows become
/// columns): that picture is the frame's height wide and the frame's width high, which is
/// the detector's `imageSize`. The box is normalised to 0…1 with the origin at the
/// picture's lower-left corner and y growing upward. In terms of the landscape frame, a
/// W × H frame with a face at pixels (x, y, w, h), origin at the frame's top-left:
///
///     box.x      = y / H             (distance from the frame's top edge)
///     box.y      = (W − x − w) / W   (distance from the frame's right edge)
///     box.width  = h / H
///     box.height = w / W
///
/// so the box's x axis runs down the frame's rows and its y axis runs from the frame's
/// right edge toward its left edge; the origin (0, 0) is the frame's top-right corner.
/// `fromFrameRect` and `frameRect` convert between the two.
struct FaceObservation {
    Q_GADGET
    Q_PROPERTY(QRectF boundingBox MEMBER boundingBox)
    Q_PROPERTY(float confidence MEMBER confidence)

public:
    QRectF boundingBox;
    /// The tracker's confidence for this frame, 0…1.
    float confidence = 0.0f;

    /// The observation of a face at `frameRect`, in pixels of a landscape frame of
    /// `frameSize` (origin top-left).
    static FaceObservation fromFrameRect(const QRectF& frameRect, const QSizeF& frameSize,
                                         float confidence);

    /// The box in pixels of a landscape frame of `frameSize` (origin top-left).
    QRectF frameRect(const QSizeF& frameSize) const;

    friend bool operator==(const FaceObservation&, const FaceObservation&) = default;
};

} // namespace kestrum

Q_DECLARE_METATYPE(kestrum::FaceObservation)
