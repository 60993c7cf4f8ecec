#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

/// How the preview maps between what the view shows and what the camera sees, for its
/// QML: the picture (frame) fills the view (aspect fill), taps become
/// device points, and a face's normalised box becomes its outline and its metering point.
class PreviewGeometry : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double frameWidth READ frameWidth WRITE setFrameWidth NOTIFY changed)
    Q_PROPERTY(double frameHeight READ frameHeight WRITE setFrameHeight NOTIFY changed)
    Q_PROPERTY(double viewWidth READ viewWidth WRITE setViewWidth NOTIFY changed)
    Q_PROPERTY(double viewHeight READ viewHeight WRITE setViewHeight NOTIFY changed)
    /// View points per point of the 1080 × 1440 reference frame of face geometry.
    Q_PROPERTY(double referenceScale READ referenceScale NOTIFY changed)

public:
    using QObject::QObject;

    double frameWidth() const { return m_frameSize.width(); }
    void setFrameWidth(double width);
    double frameHeight() const { return m_frameSize.height(); }
    void setFrameHeight(double height);
    double viewWidth() const { return m_viewSize.width(); }
    void setViewWidth(double width);
    double viewHeight() const { return m_viewSize.height(); }
    void setViewHeight(double height);
    double referenceScale() const;

    /// The device point (0…1 on each axis) under a tap at `viewPoint`.
    Q_INVOKABLE QPointF devicePoint(QPointF viewPoint) const;
    /// The outline of the face whose normalised box is `box`, in view coordinates.
    Q_INVOKABLE QRectF faceOutline(QRectF box) const;
    /// The corner radius of a face outline of `outline`.
    Q_INVOKABLE double faceCornerRadius(QRectF outline) const;
    /// The device point the face of normalised box `box` meters at.
    Q_INVOKABLE QPointF faceMeteringPoint(QRectF box) const;

signals:
    void changed();

private:
    void setSizes(QSizeF frameSize, QSizeF viewSize);
    /// The whole picture in view coordinates; it overhangs the view on one axis.
    QRectF frameRect() const;

    QSizeF m_frameSize;
    QSizeF m_viewSize;
};

} // namespace kestrum
