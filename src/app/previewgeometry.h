#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

/// How the preview maps between what the view shows and what the camera sees, for its
/// QML: the picture of `frameSize` fills a view of `viewSize` (aspect fill), taps become
/// device points, and a face's normalised box becomes its outline and its metering point.
class PreviewGeometry : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QSizeF frameSize READ frameSize WRITE setFrameSize NOTIFY changed)
    Q_PROPERTY(QSizeF viewSize READ viewSize WRITE setViewSize NOTIFY changed)
    /// The whole picture in view coordinates; it overhangs the view on one axis.
    Q_PROPERTY(QRectF frameRect READ frameRect NOTIFY changed)

public:
    using QObject::QObject;

    QSizeF frameSize() const { return m_frameSize; }
    void setFrameSize(QSizeF size);
    QSizeF viewSize() const { return m_viewSize; }
    void setViewSize(QSizeF size);
    QRectF frameRect() const;

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
    QSizeF m_frameSize;
    QSizeF m_viewSize;
};

} // namespace kestrum
