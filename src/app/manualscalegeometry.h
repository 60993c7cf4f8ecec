#pragma once

#include "app/exposureenums.h"

#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kestrum {

/// Where the manual deviation display draws its marker and its red error mark, for its
/// QML: offsets in points from the scale's centre, positive to the right.
class ManualScaleGeometry : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int count READ count WRITE setCount NOTIFY changed)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY changed)
    Q_PROPERTY(kestrum::ExposureEnums::Error error READ error WRITE setError NOTIFY changed)
    Q_PROPERTY(double entryPoints READ entryPoints CONSTANT)
    Q_PROPERTY(double markerOffset READ markerOffset NOTIFY changed)
    /// Whether the red mark beyond the scale shows (with an exposure error).
    Q_PROPERTY(bool hasErrorMark READ hasErrorMark NOTIFY changed)
    Q_PROPERTY(double errorMarkOffset READ errorMarkOffset NOTIFY changed)

public:
    using QObject::QObject;

    int count() const { return m_count; }
    void setCount(int count);
    int currentIndex() const { return m_currentIndex; }
    void setCurrentIndex(int index);
    ExposureEnums::Error error() const { return m_error; }
    void setError(ExposureEnums::Error error);
    static double entryPoints();
    double markerOffset() const;
    bool hasErrorMark() const;
    double errorMarkOffset() const;

signals:
    void changed();

private:
    int m_count = 0;
    int m_currentIndex = 0;
    ExposureEnums::Error m_error = ExposureEnums::Error::NoError;
};

} // namespace kestrum
